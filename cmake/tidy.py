#!/usr/bin/env python3
"""clang-tidy over the sources of a build folder, those only that changed since they were last found clean.

usage: tidy.py BUILD_FOLDER
"""

import os
import subprocess
import sys
from concurrent.futures import ThreadPoolExecutor
from pathlib import Path

ROOT = Path(__file__).resolve().parents[1]
CONFIGURATIONS = (ROOT / ".clang-tidy", ROOT / "tests" / ".clang-tidy")
ROOMS = tuple(f"{ROOT / room}/" for room in ("src", "tests", "bench", "adapter"))


def sources(build):
    """Each source of the project, with all that its compilation read of the project, as ninja noted it."""
    found, files = {}, None
    for line in subprocess.check_output(["ninja", "-C", build, "-t", "deps"], text=True).splitlines():
        if not line.startswith("    "):
            files = None
            continue
        file = os.path.normpath(build / line.strip())
        if files is None:  # the first is what was compiled
            files = found[file] = []
        if file.startswith(ROOMS):
            files.append(file)
    return {source: files for source, files in found.items() if source in files and os.path.exists(source)}


def main(build):
    stale = []
    for source, files in sources(build).items():
        stamp = build / "tidy" / os.path.relpath(source, ROOT)
        newest = max(os.stat(file).st_mtime_ns for file in (*CONFIGURATIONS, *files) if os.path.exists(file))
        if not stamp.exists() or stamp.stat().st_mtime_ns < newest:
            stale.append((source, stamp))

    def check(job):
        source, stamp = job
        run = subprocess.run(["clang-tidy-19", "--quiet", "-p", build, source], capture_output=True, text=True)
        if run.returncode == 0:
            stamp.parent.mkdir(parents=True, exist_ok=True)
            stamp.touch()
        else:
            print(run.stdout or run.stderr, flush=True)
        return run.returncode == 0

    with ThreadPoolExecutor(os.cpu_count()) as pool:
        clean = list(pool.map(check, stale))
    print(f"clang-tidy: {len(clean)} files looked at, {clean.count(False)} with findings")
    return 1 if False in clean else 0


if __name__ == "__main__":
    sys.exit(main(Path(sys.argv[1]).resolve()))
