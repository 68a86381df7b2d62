"""Who may know whom: holds the includes and QML imports of src/ and adapter/ against one table of allowed arrows.

A room is a folder, or a few files of one. `violations(root)` answers one line for each arrow that the table does not
allow and for each circle of includes, with the mend.
"""

import re
from pathlib import Path

# Where the rooms are.
HOUSE = ("src", "adapter")

# What lies where; the longest matching path names the room.
ROOMS = {
    "src/foundation/": "foundation",
    "src/platform/": "ports",
    "src/platform/linux/": "linux",
    "src/platform/linux/dbus/BusMessages": "bus messages",
    "src/platform/macos/": "macos",
    "src/platform/fake/": "fake",
    "src/platform/null/": "null",
    "src/ui/": "ui",
    "src/core/": "core",
    "src/core/AppContainer": "container",
    "src/core/AppDelegate": "delegate",
    "src/activities/": "activities",
    "src/media/": "media",
    "src/assistant/": "assistant",
    "src/tools/": "tools",
    "src/shelf/": "shelf",
    "src/settings/": "settings",
    "src/island/": "island",
    "src/app/": "app",
    "adapter/": "adapter",  # a program of its own
}

SERVICES = {"activities", "media", "assistant", "tools", "shelf", "settings"}
GROUND = {"foundation", "ports"}

# The allowed arrows. A room always knows itself.
KNOWS = {
    "foundation": set(),
    "ports": {"foundation"},
    "bus messages": set(),
    "linux": GROUND | {"bus messages"},
    "macos": GROUND,
    "fake": GROUND,
    "null": GROUND,
    "ui": GROUND,
    "core": GROUND,
    **{service: GROUND | {"core", "ui"} for service in SERVICES},
    "container": GROUND | {"core"} | SERVICES,
    "island": GROUND | {"ui", "core", "container", "activities", "media"},
    "delegate": GROUND | {"core", "container", "island"},
    "app": set(ROOMS.values()) - {"adapter"},
    "adapter": {"foundation", "bus messages"},
}

# What to do instead, by the room that was reached for.
MENDS = {
    "linux": "take the port (src/platform/*.h) in the constructor; only src/app names concrete platform classes",
    "container": "name the services you need in your constructor; only island, the delegate and app know the container",
    "delegate": "nothing but src/app knows the delegate; announce what happened by a signal",
    "island": "a service knows no view: offer a property or a signal and let the island read it",
    "app": "nothing knows src/app; what it has to offer belongs in a port or in core",
    "adapter": "the adapter is another process; start it and read what it writes",
    "ui": "keep rules in C++ without a view; what both need belongs in foundation",
}
MENDS["macos"] = MENDS["fake"] = MENDS["null"] = MENDS["linux"]
ELSEWISE = "move what both need down into foundation, a port or core, or let AppContainer join the two"

INCLUDE = re.compile(r'^\s*#\s*(?:include|import)\s+["<]([^">]+)[">]')
QML_IMPORT = re.compile(r'^\s*import\s+(?:"([^"]+)"|(Brindle\.[\w.]+))')
URI = re.compile(r"\bURI\s+(Brindle\.[\w.]+)")


def room_of(path):
    prefixes = [prefix for prefix in ROOMS if path.startswith(prefix)]
    return ROOMS[max(prefixes, key=len)] if prefixes else None


def _lines(root, pattern):
    """(file, line number, text) of every matching file of the house, paths relative to the root."""
    for path in sorted(path for part in HOUSE for path in root.glob(f"{part}/**/{pattern}")):
        for number, text in enumerate(path.read_text(encoding="utf-8").splitlines(), 1):
            yield path.relative_to(root).as_posix(), number, text


def _qml_modules(root):
    """The folder behind each QML module of the project, from the CMake files."""
    modules = {}
    for file, _, text in _lines(root, "CMakeLists.txt"):
        for uri in URI.findall(text):
            modules[uri] = file.removesuffix("CMakeLists.txt")
    return modules


def _resolve(root, file, name):
    """The project's file that an include or relative import means; None where it is not ours, or is generated."""
    for base in ((root / file).parent, root / "src", root):
        target = (base / name).resolve()
        if target.exists() and target.is_relative_to(root):
            return target.relative_to(root).as_posix() + ("/" if target.is_dir() else "")
    return None


def arrows(root):
    """(file, line number, what it names) for every include and import that stays in the project."""
    for suffix in ("h", "cpp", "mm"):
        for file, number, text in _lines(root, f"*.{suffix}"):
            if found := INCLUDE.match(text):
                if target := _resolve(root, file, found[1]):
                    yield file, number, target
    modules = _qml_modules(root)
    for file, number, text in _lines(root, "*.qml"):
        if found := QML_IMPORT.match(text):
            target = _resolve(root, file, found[1]) if found[1] else modules.get(found[2], f"{found[2]}?")
            if target:
                yield file, number, target


def _judge(file, number, target):
    source, wanted = room_of(file), room_of(target)
    if source is None:
        return None  # told once for its folder
    if wanted is None:
        return f"{file}:{number}: {target} is in no room of the house. Mend: move it into the room that it belongs to"
    if wanted == source or wanted in KNOWS[source]:
        return None
    allowed = ", ".join(sorted(KNOWS[source])) or "nothing else"
    return (f"{file}:{number}: {source} must not know {wanted} ({target}); it may know {allowed}. "
            f"Mend: {MENDS.get(wanted, ELSEWISE)}")


def _circles(includes):
    """Every circle of files that include each other, each once, as the list of its files."""
    done, trail, found = set(), [], []

    def visit(file):
        if file in trail:
            found.append(trail[trail.index(file):] + [file])
        elif file not in done:
            trail.append(file)
            for target in sorted(includes.get(file, ())):
                visit(target)
            trail.pop()
            done.add(file)

    for file in sorted(includes):
        visit(file)
    return found


def violations(root):
    root = Path(root).resolve()
    all_arrows = list(arrows(root))
    folders = {f"{path.parent.relative_to(root).as_posix()}/"
               for part in HOUSE for path in root.glob(f"{part}/*/**/*.*")}
    complaints = [f"{folder}: no room has this folder. Mend: give it one in ROOMS and KNOWS of {Path(__file__).name}"
                  for folder in sorted(folders) if room_of(folder) is None]
    complaints += [complaint for arrow in all_arrows if (complaint := _judge(*arrow))]
    includes = {}
    for file, _, target in all_arrows:
        if not file.endswith(".qml"):
            includes.setdefault(file, set()).add(target)
    complaints += [f"{' -> '.join(circle)}: these include each other. Mend: forward-declare in one header, or move "
                   "what both need into a third" for circle in _circles(includes)]
    return complaints
