"""One private desktop, and the program in it."""

import json
import os
import shutil
import tempfile
from pathlib import Path

from .accessibility import ScreenReader
from .buses import AccessibilityBus, Bluetooth, Bus, Power
from .display import XServer
from .processes import Child, command_line, wait_until

PANEL = (940, 300)


class Session:
    """A desktop of its own: X server, window manager, and unless told otherwise compositor, tray, buses and scripted
    hardware. Use as a context, or call `end`."""

    def __init__(self, compositor=True, tray=True, buses=True, accessibility=True, touchpad=False, size=(1280, 800)):
        self.folder = Path(tempfile.mkdtemp(prefix="velmora-"))
        self._parts = []
        self.compositor = self.tray = self.reader = self.power = self.bluetooth = None
        try:
            self._start(compositor, tray, buses, accessibility, touchpad, size)
        except BaseException:
            self.end()
            raise

    def _start(self, compositor, tray, buses, accessibility, touchpad, size):
        self.environment = home_environment(self.folder / "home")
        self.environment |= {"DBUS_SESSION_BUS_ADDRESS": f"unix:path={self.folder}/absent",
                             "DBUS_SYSTEM_BUS_ADDRESS": f"unix:path={self.folder}/absent"}
        self.screen = self.keep(XServer(self.folder, self.environment, size, touchpad))
        self.environment["DISPLAY"] = self.screen.name
        self.pointer, self.keyboard = self.screen.pointer, self.screen.keyboard
        self.pointer.move(size[0] // 2, size[1] - 60)
        if buses:
            self._start_buses()
        self._run("openbox")
        wait_until(lambda: self.screen.property_of(self.screen.root, "_NET_SUPPORTING_WM_CHECK"), "the window manager")
        if compositor:
            self.start_compositor()
        if tray:
            self.tray = self._run("trayer", "--edge", "bottom", "--align", "right", "--widthtype", "request")
            wait_until(lambda: self._owner("_NET_SYSTEM_TRAY_S0"), "the tray")
        if buses and accessibility:
            self.keep(AccessibilityBus(self.folder, self.environment, self.session_bus))
            self.reader = self.keep(ScreenReader(self.folder, self.environment))

    def _start_buses(self):
        self.session_bus = self.keep(Bus(self.folder, self.environment, "session"))
        self.system_bus = self.keep(Bus(self.folder, self.environment, "system"))
        self.environment["DBUS_SESSION_BUS_ADDRESS"] = self.session_bus.address
        self.environment["DBUS_SYSTEM_BUS_ADDRESS"] = self.system_bus.address
        self.power = self.keep(Power(self.folder, self.environment, self.system_bus))
        self.power.start()
        self.bluetooth = self.keep(Bluetooth(self.folder, self.environment, self.system_bus))
        self.bluetooth.start()

    def start_compositor(self):
        self.compositor = self._run("picom", "--config", "/dev/null", "--backend", "xrender")
        wait_until(lambda: self._owner("_NET_WM_CM_S0"), "the compositor")

    def stop_compositor(self):
        self.compositor.end()
        wait_until(lambda: not self._owner("_NET_WM_CM_S0"), "the compositor to go")

    def _owner(self, selection):
        connection = self.screen.connection
        owner = connection.get_selection_owner(connection.intern_atom(selection))
        return getattr(owner, "id", owner)

    def _run(self, name, *arguments):
        return self.keep(Child([name, *arguments], self.environment, self.folder / f"{name}.log"))

    def keep(self, part):
        """Ends `part` with the session, and before what the session has already."""
        self._parts.append(part)
        return part

    def end(self):
        for part in reversed(self._parts):
            part.end()
        self._parts.clear()
        shutil.rmtree(self.folder, ignore_errors=True)

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.end()


class Program:
    """The program under test with a home of its own. Starting it again finds what it kept."""

    def __init__(self, session, path, name="program", scale=1):
        self.session, self.path, self.scale = session, Path(path), scale
        self.home = session.folder / f"{name}-home"
        shutil.rmtree(self.home, ignore_errors=True)
        self.config = self.home / ".config"
        self.defaults_file = self.config / "com.brindle.app" / "defaults.json"
        self.log = session.folder / f"{name}.log"
        self.environment = session.environment | home_environment(self.home)
        self.environment["QT_LINUX_ACCESSIBILITY_ALWAYS_ON"] = "1"
        if scale != 1:
            self.environment["QT_SCALE_FACTOR"] = str(scale)
        self.process = self.window = None

    @property
    def pid(self):
        return self.process.pid

    def prefer(self, **values):
        """Stores preferences; for a program that does not run."""
        self.defaults_file.parent.mkdir(parents=True, exist_ok=True)
        self.defaults_file.write_text(json.dumps(values))

    def preferences(self):
        """What is stored; None while there is no file. A half-written file is an error."""
        def plain(value):  # whole numbers stand in a wrapper that tells them from others
            return value["integer"] if value.keys() == {"integer"} else value
        if not self.defaults_file.exists():
            return None
        return json.loads(self.defaults_file.read_text(), object_hook=plain)

    def launch(self, **environment):
        """Starts it without waiting for its window."""
        self.end()
        self.window = None
        self.process = Child([self.path], self.environment | environment, self.log)

    def start(self, **environment):
        """Starts it and waits for the island."""
        self.launch(**environment)
        self.window = wait_until(self._panel, f"the island's window (its log: {self.log})", 20)
        wait_until(lambda: self.island.body() is not None, "the island to be drawn")

    def _panel(self):
        if self.process.returncode is not None:
            raise AssertionError(f"the program ended with {self.process.returncode}:\n{self.process.output[-4000:]}")
        panels = self.panels()
        return panels[0] if panels else None

    def panels(self):
        """Its windows that have the island's size."""
        def is_panel(window):
            geometry = window.get_geometry()
            return (geometry.width, geometry.height) == tuple(round(size * self.scale) for size in PANEL)
        return [window for window in self.session.screen.windows(self.pid) if is_panel(window)]

    @property
    def island(self):
        return Island(self.session.screen, self.window, self.scale)

    def tree(self):
        return self.session.reader.read(self.pid)

    def element(self, name=None, role=None, seconds=10.0):
        return self.session.reader.wait_for(self.pid, name, role, seconds)

    def middle_of(self, name, role):
        """Where a person would click on an element."""
        x, y, width, height = self.session.reader.wait_for_rest(self.pid, name, role).place
        return x + width // 2, y + height // 2

    def adapters(self):
        """The processes that it reads what plays from."""
        children = Path(f"/proc/{self.pid}/task/{self.pid}/children").read_text().split()
        return [int(child) for child in children if b"stream" in command_line(child)]

    def action(self, name):
        """What a desktop's own shortcut does."""
        self.session.session_bus.call("com.brindle.app", "/com/brindle/app", "org.freedesktop.Application",
                                      "ActivateAction", name, dbus_empty_list(), dbus_empty_map())

    def kill(self):
        self.process.kill()

    def end(self):
        if self.process:
            self.process.end()


class Island:
    """The island as a person sees it: black pixels at the top of the screen. Lengths are points, positions pixels of
    the screen."""

    CLOSED, OPEN = (260, 38), PANEL
    SHOULDER = 14  # on each side, when closed

    def __init__(self, screen, window, scale=1):
        self._screen, self.window, self._scale = screen, window, scale

    @property
    def place(self):
        """Position and size of its window, in pixels."""
        return self._screen.place(self.window)

    @property
    def centre(self):
        """The middle of the closed island."""
        return self.point(0, self.CLOSED[1] / 2)

    def point(self, dx, dy):
        """A place by its distance in points from the middle of the upper edge."""
        x, y, width, _ = self.place
        return round(x + width / 2 + dx * self._scale), round(y + dy * self._scale)

    def is_black(self, dx, dy):
        return self._screen.picture((*self.point(dx, dy), 1, 1)).is_black(0, 0)

    def picture(self):
        return self._screen.picture(self._visible())

    def _visible(self):
        x, y, width, height = self.place
        geometry = self._screen.root.get_geometry()
        left, top = max(x, 0), max(y, 0)
        return left, top, min(x + width, geometry.width) - left, min(y + height, geometry.height) - top

    def body(self):
        """The width of the black body at half the closed height; None while nothing is drawn."""
        left, _, width, _ = self._visible()
        run = self._screen.picture((left, self.centre[1], width, 1)).black_run(0)
        return run and (run[1] - run[0]) / self._scale

    def is_closed(self, width=260):
        """At rest with this width, to a pixel."""
        body = self.body()
        return body is not None and abs(body - (width - 2 * self.SHOULDER)) <= 1 and not self.is_black(0, 150)

    def is_open(self):
        """Fully, with the animation over but for its last pixel."""
        return self.is_black(0, 299) and self.is_black(-440, 150) and self.is_black(440, 150)

    def is_opening(self):
        """The shape has begun to grow below its closed height."""
        return self.is_black(0, 60)


def home_environment(home):
    """What a program needs to know of its user: a home that is empty but for the font that pictures are made with."""
    folders = {"XDG_CONFIG_HOME": home / ".config", "XDG_DATA_HOME": home / ".local" / "share",
               "XDG_CACHE_HOME": home / ".cache", "XDG_STATE_HOME": home / ".local" / "state",
               "XDG_RUNTIME_DIR": home / "run"}
    for folder in folders.values():
        folder.mkdir(parents=True, exist_ok=True)
    folders["XDG_RUNTIME_DIR"].chmod(0o700)
    fonts = folders["XDG_CONFIG_HOME"] / "fontconfig" / "fonts.conf"
    fonts.parent.mkdir(exist_ok=True)
    fonts.write_text(FONTS)
    (home / "Xauthority").touch()
    return {"PATH": os.environ["PATH"], "LC_ALL": "C.UTF-8", "TZ": "UTC", "HOME": str(home),
            "XAUTHORITY": str(home / "Xauthority"), "GSETTINGS_BACKEND": "memory",
            **{name: str(folder) for name, folder in folders.items()}}


def dbus_empty_list():
    import dbus
    return dbus.Array([], signature="v")


def dbus_empty_map():
    import dbus
    return dbus.Dictionary({}, signature="sv")


FONTS = """<?xml version="1.0"?>
<!DOCTYPE fontconfig SYSTEM "fonts.dtd">
<fontconfig>
  <match target="pattern">
    <edit name="family" mode="prepend" binding="strong"><string>Inter</string></edit>
  </match>
</fontconfig>
"""
