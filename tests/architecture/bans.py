"""What must not stand in the sources, each with the reason or the mend. One table; `violations(root)` answers one line
for each place."""

import re
from fnmatch import fnmatch
from pathlib import Path
from typing import NamedTuple

CODE = ("src/*.h", "src/*.cpp", "src/*.mm", "adapter/*.h", "adapter/*.cpp")
TESTS = ("tests/*.h", "tests/*.cpp")


class Ban(NamedTuple):
    pattern: str
    where: tuple  # globs; `*` crosses folders
    mend: str
    but: tuple = ()  # globs that are let off, each with its reason in a comment beside it
    ignore_case: bool = False


BANS = (
    Ban(r"\bQTimer\b|\bQBasicTimer\b|\bstartTimer\s*\(|\bQDeadlineTimer\b",
        CODE + TESTS, "take the Scheduler and keep the handle that after() or every() returns",
        but=("src/foundation/*",)),
    Ban(r"\bQThread::[mu]?sleep\b|\bstd::this_thread::sleep|\bQTest::q(Wait|Sleep)\s*\(|\b[mu]?sleep\s*\(\s*\d",
        CODE + TESTS, "nothing waits by sleeping: advance a ManualScheduler, or wait for the signal itself",
        but=("src/foundation/*",)),
    Ban(r"\bstd::chrono::\w*clock\b|\bQElapsedTimer\b|\bQ(DateTime|Date|Time)::current\w+|\bgettimeofday\b|\bclock_gettime\b",
        CODE, "ask the Scheduler for wall time and uptime, so that a test can say what time it is",
        but=("src/foundation/*",)),
    Ban(r"\bstd::chrono::\w*clock\b|\bQElapsedTimer\b|\bgettimeofday\b|\bclock_gettime\b",
        TESTS, "no test measures time, which depends on the machine's load: let `./dev bench` do it",
        but=("tests/fuzz/Driver.cpp",)),  # how long a run goes on that was asked to be long
    Ban(r"#\s*(if|ifdef|ifndef|elif)\b.*\b(Q_OS_\w+|__linux__|__APPLE__|_WIN32)\b",
        CODE, "what a machine lacks is a null object behind a port, chosen in src/app",
        but=("src/platform/*", "src/app/*")),
    Ban(r"\bqC?(Debug|Info|Warning|Critical)\b|\bstd::c(out|err|log)\b|(?<!\w)f?printf\s*\(|(?<!\w)f?puts\s*\(",
        CODE, "the program writes no log: hand the failure to the caller as a value, or let it leave no trace",
        # A start that cannot go on tells why, and a command line that makes no sense how it is used.
        but=("src/app/*", "adapter/linux/main.cpp")),
    Ban(r"<private/|<qpa/|_p\.h[\">]",
        CODE, "private Qt headers change without notice; find the public way, or list the file in `but` and say why"),
    Ban(r"\bTimer\s*\{|\bsetTimeout\b|\bsetInterval\b|\bnew Date\b|\bDate\.now\b",
        ("*.qml", "src/*.js"), "rules and time live in C++: bind to a property of the view model"),
    Ban(r"\bTO[D]O\b|\bFIX[M]E\b|\bX[X]X\b|\bHA[C]K\b",
        ("src/*", "tests/*", "adapter/*", "bench/*", "cmake/*", "dev"), "finish it, or open an issue and remove the note"),
    Ban(r"\bParts? [0-9]|\bspec(ification)?\.md\b|\bthe spec(ification)?\b|\bper spec\b|\bas specified\b",
        ("*",), "say what the program does and why, as its own developer would; only issues refer to other papers",
        but=("*.svg",),  # drawings hold no prose
        ignore_case=True),
)

# Folders that hold no source.
SKIPPED = {".git", "build", "out", ".cache", "__pycache__"}


def sources(root):
    """Every text file of the project: path relative to the root, and its lines."""
    for path in sorted(root.rglob("*")):
        name = path.relative_to(root)
        if SKIPPED.isdisjoint(name.parts) and path.is_file():
            try:
                yield name.as_posix(), path.read_text(encoding="utf-8").splitlines()
            except UnicodeDecodeError:
                pass  # a picture or a font


def violations(root):
    complaints = []
    for file, lines in sources(Path(root)):
        for ban in BANS:
            if any(fnmatch(file, glob) for glob in ban.where) and not any(fnmatch(file, glob) for glob in ban.but):
                pattern = re.compile(ban.pattern, re.IGNORECASE if ban.ignore_case else 0)
                complaints += [f"{file}:{number}: '{found[0]}' is banned here. Mend: {ban.mend}"
                               for number, text in enumerate(lines, 1) if (found := pattern.search(text))]
    return complaints
