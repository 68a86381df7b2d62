"""Holds a backlight device in a test bed and changes it, as told by one JSON request a line; answers the path of its
brightness. A process of its own, because it must run under the test bed's own library."""

import json
import mmap
import sys

import gi

gi.require_version("UMockdev", "1.0")
from gi.repository import UMockdev  # noqa: E402

testbed = UMockdev.Testbed.new()
device = None
for line in sys.stdin:
    request = json.loads(line)
    brightness = f"{request['brightness']:<4}"
    if device is None:
        attributes = ["type", "raw", "max_brightness", str(request["maximum"]), "brightness", brightness]
        device = testbed.add_device("backlight", "panel", None, attributes, [])
    else:
        # Written through memory, which nobody who watches the file is told of: only udev tells.
        with open(path, "r+b") as file, mmap.mmap(file.fileno(), 0) as attribute:
            attribute[:] = brightness.encode()
        testbed.uevent(device, "change")
    path = f"{testbed.get_root_dir()}{device}/brightness"
    print(path, flush=True)
