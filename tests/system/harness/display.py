"""A private X server, and what a person has before it: a pointer, a keyboard, eyes."""

import os
import socket
import struct
import subprocess
import time
import zlib
from contextlib import suppress

from Xlib import X, XK, Xatom, display
from Xlib.error import ConnectionClosedError
from Xlib.ext import shape, xtest
from Xlib.protocol import event

from .processes import Child, wait_until

XORG = "/usr/lib/xorg/Xorg"
INPUTTEST = "/usr/lib/xorg/modules/input/inputtest_drv.so"


class XServer:
    """An X server that chose its own number. `touchpad`: one with a device that scrolls in fractions of a notch, and
    with room for a second display."""

    SECOND_DISPLAY = "DUMMY1"

    def __init__(self, folder, environment, size=(1280, 800), touchpad=False):
        self.size = size
        self._socket = folder / "touchpad"
        reader, writer = os.pipe()
        self._server = Child(self._command(folder, writer, touchpad), environment, folder / "xserver.log",
                             pass_fds=(writer,))
        os.close(writer)
        with os.fdopen(reader) as answer:
            number = answer.readline().strip()
        if not number:
            raise AssertionError(f"no X server: {self._server.output}")
        self.name = f":{number}"
        self.connection = display.Display(self.name)
        self.root = self.connection.screen().root
        self.pointer = Pointer(self.connection)
        self.keyboard = Keyboard(self.connection)
        self.touchpad = Touchpad(self._socket) if touchpad else None

    def _command(self, folder, writer, touchpad):
        width, height = self.size
        if not touchpad:
            return ["Xvfb", "-displayfd", writer, "-screen", "0", f"{width}x{height}x24", "-dpi", "96", "-noreset",
                    "-nolisten", "tcp"]
        config = folder / "xorg.conf"
        config.write_text(XORG_CONFIG.format(width=width, height=height, socket=self._socket))
        (folder / "xorg.d").mkdir()
        return [XORG, "-displayfd", writer, "-config", config, "-configdir", folder / "xorg.d", "-logfile",
                folder / "xorg.log", "-noreset", "-nolisten", "tcp", "-novtswitch", "-sharevts"]

    def picture(self, area=None, pointer=False):
        """What the screen shows now; `area` is x, y, width, height. The pointer is no pixel of the screen: it is
        drawn in when asked for."""
        geometry = self.root.get_geometry()
        x, y, width, height = area or (0, 0, geometry.width, geometry.height)
        image = self.root.get_image(x, y, width, height, X.ZPixmap, 0xFFFFFFFF)
        picture = Picture(width, height, image.data)
        if pointer:
            self.connection.xfixes_query_version()
            picture.draw(self.connection.xfixes_get_cursor_image(self.root), x, y)
        return picture

    def wallpaper(self, light=(0xE9, 0xD8, 0xC4), dark=(0x6F, 0x8F, 0xA8)):
        """A plain slanting gradient in the place of the server's grey."""
        width, height = self.size
        length = width + height
        strip = b"".join(bytes(round(a + (b - a) * step / length) for a, b in zip(light[::-1], dark[::-1])) + b"\0"
                         for step in range(length))
        pixmap = self.root.create_pixmap(width, height, self.connection.screen().root_depth)
        context = pixmap.create_gc()
        for y in range(height):
            pixmap.put_image(context, 0, y, width, 1, X.ZPixmap, 24, 0, strip[4 * y:4 * (y + width)])
        self.root.change_attributes(background_pixmap=pixmap)
        for name in ("_XROOTPMAP_ID", "ESETROOT_PMAP_ID"):
            self.root.change_property(self.connection.intern_atom(name), Xatom.PIXMAP, 32, [pixmap.id])
        self.root.clear_area()
        self.connection.sync()

    def go_to_workspace(self, number):
        """Asks the window manager for another workspace and waits for it."""
        self.root.send_event(
            event.ClientMessage(window=self.root, client_type=self.connection.intern_atom("_NET_CURRENT_DESKTOP"),
                                data=(32, [number, X.CurrentTime, 0, 0, 0])),
            event_mask=X.SubstructureRedirectMask | X.SubstructureNotifyMask)
        self.connection.flush()
        wait_until(lambda: self.property_of(self.root, "_NET_CURRENT_DESKTOP") == [number], f"workspace {number}")

    def property_of(self, window, name, kind=X.AnyPropertyType):
        value = window.get_full_property(self.connection.intern_atom(name), kind)
        return list(value.value) if value else None

    def windows(self, process):
        """The windows of a process, in stacking order from below."""
        found = []

        def walk(window):
            for child in window.query_tree().children:
                try:
                    if self.property_of(child, "_NET_WM_PID", Xatom.CARDINAL) == [process]:
                        found.append(child)
                    walk(child)
                except Exception as gone:  # a window may vanish while it is looked at
                    if "BadWindow" not in type(gone).__name__ and "BadWindow" not in str(gone):
                        raise
        walk(self.root)
        return found

    def place(self, window):
        """Position and size on the screen."""
        geometry = window.get_geometry()
        corner = window.translate_coords(self.root, 0, 0)
        return -corner.x, -corner.y, geometry.width, geometry.height

    def input_area(self, window):
        """The rectangles, relative to the window, in which it takes the pointer."""
        return [(r.x, r.y, r.width, r.height) for r in window.shape_get_rectangles(shape.SK.Input).rectangles]

    def resize(self, width, height, environment):
        """Another resolution, as when a person chooses one in the settings of the display."""
        mode = f"{width}x{height}"
        horizontal, vertical = (width, width + 8, width + 16, width + 32), (height, height + 3, height + 6, height + 12)
        clock = horizontal[3] * vertical[3] * 60 / 1e6
        self._xrandr(environment, "--newmode", mode, f"{clock:.2f}", *horizontal, *vertical, needed=False)
        self._xrandr(environment, "--addmode", "screen", mode, needed=False)
        self._xrandr(environment, "--output", "screen", "--mode", mode)

    def plug_in(self, environment):
        """A second display to the right of the first, 1024 by 768."""
        self._xrandr(environment, "--addmode", self.SECOND_DISPLAY, "1024x768", needed=False)
        self._xrandr(environment, "--output", self.SECOND_DISPLAY, "--mode", "1024x768", "--right-of", "DUMMY0")

    def unplug(self, environment):
        self._xrandr(environment, "--output", self.SECOND_DISPLAY, "--off")

    def _xrandr(self, environment, *arguments, needed=True):
        subprocess.run(["xrandr", *map(str, arguments)], env=environment | {"DISPLAY": self.name}, check=needed,
                       capture_output=True)

    def kill(self):
        """Takes the display away from all who use it."""
        self._server.kill()

    def end(self):
        if self.touchpad:
            self.touchpad.end()
        with suppress(ConnectionClosedError):
            self.connection.close()
        self._server.end()


class Pointer:
    """Moves as a device does, so that programs that watch the device itself see it too."""

    def __init__(self, connection):
        self._display = connection

    @property
    def position(self):
        at = self._display.screen().root.query_pointer()
        return at.root_x, at.root_y

    def move(self, x, y):
        xtest.fake_input(self._display, X.MotionNotify, detail=0, x=round(x), y=round(y))
        self._display.sync()

    def glide(self, x, y, seconds=0.4):
        """On a straight way in many steps, slower at both ends, as a hand does."""
        (from_x, from_y), began = self.position, time.monotonic()
        while (part := (time.monotonic() - began) / seconds) < 1:
            eased = part * part * (3 - 2 * part)
            self.move(from_x + (x - from_x) * eased, from_y + (y - from_y) * eased)
            time.sleep(1 / 120)
        self.move(x, y)

    def press(self, button=1):
        xtest.fake_input(self._display, X.ButtonPress, button)
        self._display.sync()

    def release(self, button=1):
        xtest.fake_input(self._display, X.ButtonRelease, button)
        self._display.sync()

    def click(self, x=None, y=None, button=1):
        if x is not None:
            self.move(x, y)
        self.press(button)
        self.release(button)

    def wheel(self, notches):
        """Towards the user when positive."""
        for _ in range(abs(notches)):
            self.click(button=5 if notches > 0 else 4)


class Keyboard:
    def __init__(self, connection):
        self._display = connection
        XK.load_keysym_group("xf86")

    def tap(self, name, modifiers=()):
        """A key by its X name ("Down", "a", "space", "XF86_AudioMute"), with modifiers by theirs ("Shift_L")."""
        codes = [self._code(modifier) for modifier in modifiers] + [self._code(name)]
        for code in codes:
            xtest.fake_input(self._display, X.KeyPress, code)
        for code in reversed(codes):
            xtest.fake_input(self._display, X.KeyRelease, code)
        self._display.sync()

    def type(self, text):
        for letter in text:
            self.tap("space" if letter == " " else letter)

    def _code(self, name):
        return self._display.keysym_to_keycode(XK.string_to_keysym(name))


class Touchpad:
    """A device of the X server's own test driver. Its scroll axes count 120 to a notch of a wheel."""

    MOTION, VERSION = 2, 0
    VALUATORS = 64

    def __init__(self, path):
        wait_until(path.exists, "the test device's socket")
        self._socket = socket.socket(socket.AF_UNIX)
        self._socket.connect(str(path))
        self._socket.sendall(struct.pack("=IIHH", 12, self.VERSION, 1, 1))
        self._socket.recv(64)

    def move(self, dx, dy):
        """One report of a moving finger."""
        self._report({0: dx, 1: dy})

    def scroll(self, horizontal, vertical, steps=40):
        """Two fingers, in units of the axis over all; positive goes down and right. Reports at a device's pace."""
        for _ in range(steps):
            self._report({2: horizontal / steps, 3: vertical / steps})
            time.sleep(1 / 125)

    def end(self):
        self._socket.close()

    def _report(self, values):
        mask = sum(1 << axis for axis in values)
        data = [float(values.get(axis, 0)) for axis in range(self.VALUATORS)]
        # Length, kind, relative; then, aligned to eight: no raw values, which axes, their values, and room for raw ones.
        body = struct.pack(f"=I8s4x{2 * self.VALUATORS}d", 0, mask.to_bytes(8, "little"), *data,
                           *([0.0] * self.VALUATORS))
        self._socket.sendall(struct.pack("=III4x", 16 + len(body), self.MOTION, 0) + body)


class Picture:
    """Pixels of the screen, 4 bytes each: blue, green, red, nothing."""

    def __init__(self, width, height, data):
        self.width, self.height, self._data = width, height, data

    def __eq__(self, other):
        return isinstance(other, Picture) and (self.width, self._data) == (other.width, other._data)

    def at(self, x, y):
        offset = 4 * (y * self.width + x)
        blue, green, red = self._data[offset:offset + 3]
        return red, green, blue

    def draw(self, cursor, left, top):
        """Lays a pointer's image over a picture whose corner is at `left`, `top` of the screen."""
        data = bytearray(self._data)
        for index, pixel in enumerate(cursor.cursor_image):
            x = cursor.x - cursor.xhot + index % cursor.width - left
            y = cursor.y - cursor.yhot + index // cursor.width - top
            if 0 <= x < self.width and 0 <= y < self.height:
                offset, transparent = 4 * (y * self.width + x), 255 - (pixel >> 24)
                for channel in range(3):  # the colours are multiplied by their alpha already
                    data[offset + channel] = min(255, (pixel >> 8 * channel & 255)
                                                 + data[offset + channel] * transparent // 255)
        self._data = bytes(data)

    def is_black(self, x, y, tolerance=12):
        return max(self.at(x, y)) <= tolerance

    def black_run(self, y):
        """From the first to behind the last black pixel of a row; None without one."""
        black = [x for x in range(self.width) if self.is_black(x, y)]
        return (black[0], black[-1] + 1) if black else None

    def save(self, path):
        rgb = bytearray(3 * self.width * self.height)
        for channel in range(3):
            rgb[channel::3] = self._data[2 - channel::4]
        stride = 3 * self.width
        rows = b"".join(b"\0" + rgb[row * stride:(row + 1) * stride] for row in range(self.height))

        def chunk(kind, body):
            return struct.pack(">I", len(body)) + kind + body + struct.pack(">I", zlib.crc32(kind + body))
        header = struct.pack(">IIBBBBB", self.width, self.height, 8, 2, 0, 0, 0)
        path.write_bytes(b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", header) + chunk(b"IDAT", zlib.compress(rows, 6))
                         + chunk(b"IEND", b""))
        return path


# A screen in memory, and one pointing device that a socket drives.
XORG_CONFIG = """
Section "ServerFlags"
    Option "AutoAddDevices" "false"
    Option "AutoAddGPU" "false"
    Option "DontVTSwitch" "true"
EndSection
Section "Device"
    Identifier "memory"
    Driver "dummy"
    VideoRam 65536
EndSection
Section "Monitor"
    Identifier "monitor"
    HorizSync 1-200
    VertRefresh 1-200
EndSection
Section "Screen"
    Identifier "screen"
    Device "memory"
    Monitor "monitor"
    DefaultDepth 24
    SubSection "Display"
        Depth 24
        Modes "{width}x{height}"
        Virtual {width} {height}
    EndSubSection
EndSection
Section "InputDevice"
    Identifier "touchpad"
    Driver "inputtest"
    Option "SocketPath" "{socket}"
    Option "DeviceType" "Pointer"
EndSection
Section "InputDevice"
    Identifier "keyboard"
    Driver "inputtest"
    Option "SocketPath" "{socket}-keyboard"
    Option "DeviceType" "Keyboard"
EndSection
Section "ServerLayout"
    Identifier "layout"
    Screen "screen"
    InputDevice "touchpad" "CorePointer"
    InputDevice "keyboard" "CoreKeyboard"
EndSection
"""
