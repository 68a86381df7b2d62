"""The volume and the brightness on the closed island: a real sound server turned from outside, and a backlight."""

import unittest

from harness.backlight import Backlight
from harness.case import SystemTest
from harness.peer import Peer
from harness.processes import holds, wait_until
from harness.sound import SoundServer

WIDE = 368  # the closed island with an event on it


class LevelTest(SystemTest):
    PREFERENCES = {"systemControlsEnabled": True}

    def level(self):
        """The level that a screen reader finds, in its words; None while none is shown."""
        tree = self.program.tree()
        bar = tree and tree.find(role="progress bar")
        return bar and f"{bar.name}, {bar.value:g} percent"

    def shows(self, level, seconds=10.0):
        wait_until(lambda: self.level() == level, f"the island to show '{level}'", seconds)
        wait_until(lambda: self.island.is_closed(WIDE), "the island to widen for the level")

    def rests(self):
        wait_until(self.island.is_closed, "the level to end and the island to be narrow again")

    def stays_narrow(self, seconds=1.0):
        holds(self.island.is_closed, "a narrow island", seconds)


class SoundTest(LevelTest):
    """With a sound server of the class's own, anew for each test."""

    @classmethod
    def setUpClass(cls):
        super().setUpClass()
        cls.sound = SoundServer(cls.session.folder, cls.session.environment)
        cls.addClassCleanup(cls.sound.end)

    def setUp(self):
        self.sound.stop()
        self.sound.start("speakers", "headset")
        super().setUp()
        self.is_followed()

    def is_followed(self):
        """From here on the program can tell a change from a beginning."""
        wait_until(lambda: self.sound.has_client("Velmora"), "the program to listen to the sound server")
        self.stays_narrow(0.5)


class Sound(SoundTest):
    def test_a_change_from_outside_shows_the_level(self):
        self.sound.set_volume("33%")
        self.shows("Sound, 33 percent")
        self.rests()
        self.sound.set_volume("100%")
        self.shows("Sound, 100 percent")
        self.rests()

    def test_a_screen_reader_is_told_of_each_value(self):
        self.session.reader.follow()
        self.sound.set_volume("33%")
        self.shows("Sound, 33 percent")
        self.sound.set_volume("41%")

        def told():
            node = self.session.reader.changed(self.program.pid)
            return node and (node.role, node.name, node.value) == ("progress bar", "Sound", 41)
        wait_until(told, "the level to tell of its change")

    def test_muting_alone_shows(self):
        self.sound.mute(True)
        self.shows("Sound, 0 percent")
        self.rests()
        self.sound.mute(False)
        self.shows("Sound, 50 percent")

    def test_twenty_changes_in_a_second_leave_one_display_and_no_queue(self):
        for percent in range(51, 71):
            self.sound.set_volume(f"{percent}%")
        self.shows("Sound, 70 percent")
        self.rests()
        self.stays_narrow(2)

    def test_a_charger_event_during_it_comes_afterwards(self):
        self.sound.set_volume("20%")
        self.shows("Sound, 20 percent")
        self.session.power.unplug()
        self.addCleanup(self.session.power.plug)
        wait_until(lambda: "On Battery" in self.words() and self.level() is None, "the charger event in the level's place")
        self.rests()

    def words(self):
        tree = self.program.tree()
        return " ".join(node.name for node in tree.walk()) if tree else ""

    def test_an_output_that_vanishes_in_the_middle_gives_way_to_the_next(self):
        self.sound.set_volume("80%")
        self.shows("Sound, 80 percent")
        self.sound.remove("speakers")
        self.shows("Sound, 50 percent")
        self.sound.set_volume("25%")
        self.shows("Sound, 25 percent")
        self.rests()

    def test_a_change_within_the_noise_shows_nothing(self):
        self.sound.set_volume("32964")  # 0.503 of 65536
        self.stays_narrow()
        self.sound.set_volume("33300")
        self.shows("Sound, 51 percent")

    def test_a_server_that_restarts_is_followed_again(self):
        self.sound.stop()
        self.stays_narrow()
        self.sound.start("speakers")
        self.is_followed()
        self.sound.set_volume("60%")
        self.shows("Sound, 60 percent")

    def test_a_key_shows_the_level_also_when_it_changes_nothing(self):
        self.sound.set_volume("100%")
        self.shows("Sound, 100 percent")
        self.rests()
        self.keyboard.tap("XF86_AudioRaiseVolume")
        self.shows("Sound, 100 percent")
        self.rests()

    def test_a_brightness_key_is_guessed_without_a_display_that_says(self):
        self.keyboard.tap("XF86_MonBrightnessUp")
        self.shows("Display, 56 percent")
        self.keyboard.tap("XF86_MonBrightnessUp")
        self.shows("Display, 63 percent")

    def test_the_display_takes_the_keyboard_from_nobody(self):
        editor = self.keep(Peer(self.screen, 100, 420, 500, 250))
        self.sound.set_volume("40%")
        self.shows("Sound, 40 percent")
        self.assertTrue(editor.has_focus())
        self.keyboard.type("ab")
        self.assertEqual(editor.look().keys, "ab")

    def test_the_open_island_shows_the_level_in_its_status_bar(self):
        self.pointer.move(*self.island.centre)
        wait_until(self.island.is_open, "the island to open")
        self.sound.set_volume("45%")
        wait_until(lambda: self.level() == "Sound, 45 percent", "the level in the open island")


class SwitchedOff(SoundTest):
    PREFERENCES = {}

    def is_followed(self):
        self.stays_narrow(0.5)

    def test_nothing_shows(self):
        self.sound.set_volume("80%")
        self.sound.mute(True)
        self.keyboard.tap("XF86_AudioRaiseVolume")
        self.keyboard.tap("XF86_MonBrightnessUp")
        self.stays_narrow()


class Brightness(LevelTest):
    """A machine whose display the kernel dims."""

    STARTED = False

    def setUp(self):
        super().setUp()
        self.backlight = self.keep(Backlight(self.session.folder, self.session.environment, 50))
        self.program.start(**self.backlight.environment)
        self.stays_narrow(0.5)

    def test_a_program_that_dims_the_display_shows_the_level(self):
        self.backlight.write(30)
        self.shows("Display, 30 percent")
        self.rests()
        self.backlight.write(100)
        self.shows("Display, 100 percent")

    def test_a_key_that_the_firmware_obeys_by_itself_shows_the_level(self):
        self.backlight.turn(80)
        self.shows("Display, 80 percent")

    def test_a_brightness_key_shows_what_the_display_says(self):
        self.keyboard.tap("XF86_MonBrightnessDown")
        self.shows("Display, 50 percent")

    def test_a_change_within_the_noise_shows_nothing(self):
        self.backlight.write(50.2)
        self.stays_narrow()


if __name__ == "__main__":
    unittest.main()
