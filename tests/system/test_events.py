"""Power and Bluetooth events on the closed island, from scripted daemons on a real bus."""

import re
import unittest

from harness.case import SystemTest
from harness.processes import holds, wait_until

HEADSET = "00:1B:66:00:00:01"
WIDE = 368  # the closed island with an event on it


class EventTest(SystemTest):
    def setUp(self):
        self.session.power.stop()
        self.session.power.start(plugged=True, percentage=80.0)
        super().setUp()
        self.program.element(re.compile("80%"))  # from here on it can tell a change from a beginning

    def shows(self, title, detail, seconds=10.0):
        """Both lines are readable, and the island has widened."""
        def look():
            tree = self.program.tree()
            said = " ".join(node.name + " " + node.description for node in tree.walk()) if tree else ""
            return title in said and detail in said
        wait_until(look, f"'{title}' with '{detail}'", seconds)
        wait_until(lambda: self.island.is_closed(WIDE), "the island to widen for the event")

    def rests(self):
        wait_until(self.island.is_closed, "the event to end and the island to be narrow again")


class PowerEvents(EventTest):
    def test_the_start_posts_nothing(self):
        holds(self.island.is_closed, "a narrow island", 1.5)

    def test_unplugging_shows_on_battery_and_widens_the_island(self):
        self.session.power.unplug()
        self.shows("On Battery", "80%")
        self.rests()

    def test_plugging_in_shows_charging(self):
        self.session.power.unplug()
        self.shows("On Battery", "80%")
        self.session.power.plug()
        self.shows("Charging", "80%")
        self.rests()

    def test_a_change_of_the_charge_alone_shows_no_event(self):
        self.session.power.charge(42.0)
        self.program.element(re.compile("42%"))
        holds(self.island.is_closed, "a narrow island", 1.0)

    def test_a_restarted_power_daemon_is_followed_again(self):
        self.session.power.stop()
        holds(self.island.is_closed, "a narrow island", 0.5)
        self.session.power.start(plugged=True, percentage=77.0)
        self.program.element(re.compile("77%"))
        self.session.power.unplug()
        self.shows("On Battery", "77%")

    def test_a_daemon_that_comes_back_unplugged_is_an_unplugging(self):
        self.session.power.stop()
        self.session.power.start(plugged=False, percentage=50.0)
        self.shows("On Battery", "50%")


class BluetoothEvents(EventTest):
    def setUp(self):
        self.session.bluetooth.stop()
        self.session.bluetooth.start()
        super().setUp()

    def test_a_headset_connects_and_disconnects(self):
        self.session.bluetooth.pair(HEADSET, "Studio Headphones")
        self.session.bluetooth.connect(HEADSET)
        self.shows("Studio Headphones", "Connected")
        self.rests()
        self.session.bluetooth.disconnect(HEADSET)
        self.shows("Studio Headphones", "Disconnected")
        self.rests()

    def test_a_device_event_comes_before_a_power_event_that_then_returns(self):
        self.session.bluetooth.pair(HEADSET, "Studio Headphones")
        self.session.power.unplug()
        self.shows("On Battery", "80%")
        self.session.bluetooth.connect(HEADSET)
        self.shows("Studio Headphones", "Connected")
        self.shows("On Battery", "80%")
        self.rests()

    def test_a_restarted_bluetooth_daemon_is_followed_again(self):
        self.session.bluetooth.stop()
        self.session.bluetooth.start()
        self.session.bluetooth.pair(HEADSET, "Studio Headphones")
        self.session.bluetooth.connect(HEADSET)
        self.shows("Studio Headphones", "Connected")


class NoDaemons(SystemTest):
    """A desktop whose hardware daemons come only after the program."""

    def setUp(self):
        self.session.power.stop()
        self.session.bluetooth.stop()
        super().setUp()

    def test_daemons_that_come_later_are_followed(self):
        self.session.power.start(plugged=True, percentage=64.0)
        self.program.element(re.compile("64%"))
        self.session.power.unplug()
        wait_until(lambda: self.island.is_closed(WIDE), "the island to widen for the event")


if __name__ == "__main__":
    unittest.main()
