"""Private D-Bus daemons, the accessibility bus, and scripted hardware services on the system bus."""

import json
import subprocess

import dbus
import dbus.bus

from .processes import Child, wait_until

BUS_CONFIG = """<!DOCTYPE busconfig PUBLIC "-//freedesktop//DTD D-Bus Bus Configuration 1.0//EN"
 "http://www.freedesktop.org/standards/dbus/1.0/busconfig.dtd">
<busconfig>
  <type>{kind}</type>
  <keep_umask/>
  <listen>{address}</listen>
  <policy context="default">
    <allow send_destination="*" eavesdrop="true"/>
    <allow eavesdrop="true"/>
    <allow own="*"/>
    <allow user="*"/>
  </policy>
</busconfig>
"""


class Bus:
    """A message bus without service folders: nothing is activated behind a test's back. `kind`: session or system."""

    def __init__(self, folder, environment, kind):
        self.kind = kind
        self.address = f"unix:path={folder / (kind + '-bus')}"
        config = folder / f"{kind}-bus.conf"
        config.write_text(BUS_CONFIG.format(kind=kind, address=self.address))
        self._daemon = Child(["dbus-daemon", f"--config-file={config}", "--nofork", "--nopidfile", "--nosyslog"],
                             environment, folder / f"{kind}-bus.log")
        self.connection = wait_until(self._connect, f"the {kind} bus")

    def _connect(self):
        try:
            return dbus.bus.BusConnection(self.address)
        except dbus.DBusException:
            return None

    def wait_for(self, name, owned=True):
        wait_until(lambda: self.connection.name_has_owner(name) == owned,
                   f"{name} to {'come to' if owned else 'leave'} the {self.kind} bus")

    def call(self, name, path, interface, method, *arguments):
        return self.connection.get_object(name, path, introspect=False).get_dbus_method(method, interface)(*arguments)

    def end(self):
        self.connection.close()
        self._daemon.end()


class AccessibilityBus:
    """What a screen reader needs to be running."""

    def __init__(self, folder, environment, session_bus):
        self._launcher = Child(["/usr/libexec/at-spi-bus-launcher", "--launch-immediately"], environment,
                               folder / "accessibility.log")
        session_bus.wait_for("org.a11y.Bus")
        session_bus.call("org.a11y.Bus", "/org/a11y/bus", dbus.PROPERTIES_IFACE, "Set", "org.a11y.Status", "IsEnabled",
                         dbus.Boolean(True, variant_level=1))
        self.address = str(session_bus.call("org.a11y.Bus", "/org/a11y/bus", "org.a11y.Bus", "GetAddress"))

    def end(self):
        self._launcher.end()


class ScriptedService:
    """A hardware daemon's bus interface, played by a mock in a process of its own that can be killed and restarted."""

    template = name = ""

    def __init__(self, folder, environment, bus):
        self._folder, self._environment, self._bus = folder, environment, bus
        self._process = None

    def start(self, **parameters):
        self._run("--system", "--template", self.template, "--parameters", json.dumps(parameters))

    def _run(self, *arguments):
        self._process = Child(["/usr/bin/python3", "-m", "dbusmock", *arguments], self._environment,
                              self._folder / f"{self.name}.log", stdout=subprocess.DEVNULL)
        self._bus.wait_for(self.name)

    def stop(self):
        if self._process:
            self._process.end()
            self._process = None
            self._bus.wait_for(self.name, owned=False)

    end = stop


class Power(ScriptedService):
    """UPower with a battery and a mains adapter. Says all that the real daemon says when the plug moves."""

    template, name = "upower", "org.freedesktop.UPower"
    PATH = "/org/freedesktop/UPower"
    DISPLAY_DEVICE = f"{PATH}/devices/DisplayDevice"
    DEVICE = "org.freedesktop.UPower.Device"
    CHARGING, DISCHARGING, FULL = 1, 2, 4

    def start(self, plugged=True, percentage=80.0):
        self.percentage = percentage
        super().start(OnBattery=not plugged)
        state = self.CHARGING if plugged else self.DISCHARGING
        self._adapter = self._add("line_power_AC", Type=dbus.UInt32(1), PowerSupply=True, Online=plugged)
        self._battery = self._add(
            "battery_BAT0", Type=dbus.UInt32(2), PowerSupply=True, IsPresent=True, Percentage=percentage,
            State=dbus.UInt32(state), Energy=percentage / 2, EnergyFull=50.0, EnergyFullDesign=60.0,
            TimeToEmpty=dbus.Int64(7200), TimeToFull=dbus.Int64(3600))
        self._set(self.DISPLAY_DEVICE, Type=dbus.UInt32(2), State=dbus.UInt32(state), Percentage=percentage,
                  IsPresent=True)

    def plug(self):
        self._supply(True)

    def unplug(self):
        self._supply(False)

    def charge(self, percentage, state=None):
        self.percentage = percentage
        changes = {"Percentage": float(percentage)}
        if state:
            changes["State"] = dbus.UInt32(state)
        self._set(self._battery, **changes)
        self._set(self.DISPLAY_DEVICE, **changes)

    def _supply(self, plugged):
        self._set(self._adapter, Online=plugged)
        self.charge(self.percentage, self.CHARGING if plugged else self.DISCHARGING)
        self._mock("UpdateProperties", self.name, dbus.Dictionary({"OnBattery": not plugged}, signature="sv"))

    def _add(self, name, **properties):
        device = f"{self.PATH}/devices/{name}"
        self._mock("AddObject", device, self.DEVICE, dbus.Dictionary(properties, signature="sv"),
                   dbus.Array([], signature="(ssss)"))
        self._mock("EmitSignal", self.name, "DeviceAdded", "o",
                   dbus.Array([dbus.ObjectPath(device, variant_level=1)], signature="v"))
        return device

    def _set(self, device, **properties):
        self._mock("SetDeviceProperties", dbus.ObjectPath(device), dbus.Dictionary(properties, signature="sv"))

    def _mock(self, method, *arguments):
        return self._bus.call(self.name, self.PATH, "org.freedesktop.DBus.Mock", method, *arguments)


class Bluetooth(ScriptedService):
    """BlueZ with one adapter."""

    template, name = "bluez5", "org.bluez"
    HEADSET_CLASS = 0x240404

    def start(self):
        super().start()
        self._mock("AddAdapter", "hci0", "desk")

    def pair(self, address, name):
        self._mock("AddDevice", "hci0", address, name)
        self._mock("PairDevice", "hci0", address, self.HEADSET_CLASS)

    def connect(self, address):
        self._mock("ConnectDevice", "hci0", address)

    def disconnect(self, address):
        self._mock("DisconnectDevice", "hci0", address)

    def _mock(self, method, *arguments):
        return self._bus.call(self.name, "/", "org.bluez.Mock", method, *arguments)


class DesktopSettings(ScriptedService):
    """The settings portal of a desktop, with the one setting that matters here: whether animations are wanted."""

    name = "org.freedesktop.portal.Desktop"
    PATH, INTERFACE = "/org/freedesktop/portal/desktop", "org.freedesktop.portal.Settings"
    GROUP, KEY = "org.gnome.desktop.interface", "enable-animations"

    def start(self, animations=True):
        self._run("--session", self.name, self.PATH, self.INTERFACE)
        self._say(animations)

    def animate(self, animations):
        self._say(animations)
        self._mock("EmitSignal", self.INTERFACE, "SettingChanged", "ssv", dbus.Array(
            [self.GROUP, self.KEY, dbus.Boolean(animations, variant_level=1)], signature="v"))

    def _say(self, animations):
        value = f"dbus.Boolean({animations}, variant_level=1)"
        known = f"(args[0], args[1]) == ({self.GROUP!r}, {self.KEY!r})"
        missing = "dbus.exceptions.DBusException('no such setting', name='org.freedesktop.portal.Error.NotFound')"
        one = f"if not {known}:\n    raise {missing}\nret = {value}"
        wrapped = one.replace("variant_level=1", "variant_level=2")  # the portal's older call is known for it
        every = f"ret = {{{self.GROUP!r}: dbus.Dictionary({{{self.KEY!r}: {value}}}, signature='sv')}}"
        for method, reads, gives, code in (("Read", "ss", "v", wrapped), ("ReadOne", "ss", "v", one),
                                           ("ReadAll", "as", "a{sa{sv}}", every)):
            self._mock("AddMethod", self.INTERFACE, method, reads, gives, code)

    def _mock(self, method, *arguments):
        return self._bus.call(self.name, self.PATH, "org.freedesktop.DBus.Mock", method, *arguments)
