"""A backlight that is not there, as the kernel and udev would show it to one program."""

import json
import subprocess
from pathlib import Path

from .processes import Child

MAXIMUM = 1000


class Backlight:
    """A program that is started with `environment` sees one display; brightness in per cent."""

    def __init__(self, folder, environment, percent):
        script = Path(__file__).with_name("backlight_testbed.py")
        self._testbed = Child(["umockdev-wrapper", "/usr/bin/python3", "-B", script], environment,
                              folder / "backlight.log", stdin=subprocess.PIPE, stdout=subprocess.PIPE)
        self._attribute = Path(self._ask(maximum=MAXIMUM, brightness=round(percent * MAXIMUM / 100)))
        self.environment = {"LD_PRELOAD": "libumockdev-preload.so.0",
                            "UMOCKDEV_DIR": str(self._attribute).partition("/sys/")[0]}

    def write(self, percent):
        """As a program sets it: by writing the attribute, in place and at once."""
        with open(self._attribute, "r+b", buffering=0) as attribute:
            attribute.write(b"%-4d" % round(percent * MAXIMUM / 100))

    def turn(self, percent):
        """As the firmware does: udev tells of it."""
        self._ask(brightness=round(percent * MAXIMUM / 100))

    def end(self):
        self._testbed.end()

    def _ask(self, **request):
        self._testbed.stdin.write(json.dumps(request).encode() + b"\n")
        self._testbed.stdin.flush()
        return self._testbed.stdout.readline().decode().strip()
