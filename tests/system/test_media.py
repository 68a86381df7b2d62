"""What is playing, on the island of the running program: real players, moved by the island and by themselves."""

import os
import signal
import tempfile
from pathlib import Path

import dbus

from harness.case import SystemTest
from harness.players import DebuggedChromium, Mpv, make_picture, make_sound
from harness.processes import wait_until
from harness.sound import SoundServer

PLAYER = "org.mpris.MediaPlayer2.Player"
POLL, LEEWAY = 1.5, 3.0  # seconds: between two looks at the applications, and for a busy machine and the reading


class MediaTest(SystemTest):
    @classmethod
    def setUpClass(cls):
        super().setUpClass()
        folder = tempfile.TemporaryDirectory(prefix="velmora-media-")
        cls.addClassCleanup(folder.cleanup)
        cls.media = Path(folder.name)
        make_picture(cls.media / "cover.jpg")
        cls.sound = make_sound(cls.media / "one.flac", seconds=90, title="One", artist="Ann")
        cls.other = make_sound(cls.media / "two.flac", seconds=90, title="Two", artist="Bob")

    def mpv(self, *files):
        return self.keep(Mpv(self.session.folder, self.program.environment, *files))

    def property(self, name, player=Mpv.name):
        """What the player itself says."""
        return self.session.session_bus.call(player, "/org/mpris/MediaPlayer2", dbus.PROPERTIES_IFACE, "Get", PLAYER,
                                             name)

    def open(self):
        self.pointer.glide(*self.island.centre)
        wait_until(self.island.is_open, "the island to open")

    def press(self, button):
        self.pointer.glide(*self.program.middle_of(button, "push button"))
        self.pointer.click()

    def shows(self, song, status, seconds=10.0):
        def found():
            tree = self.program.tree()
            label = tree and tree.find(name=song, role="label")
            return label and label.description == status
        wait_until(found, f"the island to show '{song}', {status}", seconds)


class OnePlayer(MediaTest):
    def test_what_plays_stands_in_the_open_island(self):
        self.mpv(self.sound)
        self.open()
        self.shows("One, Ann", "Playing in mpv Media Player")
        self.assertRegex(self.program.element("Position", "slider").description, r"^\d:\d\d of 1:30$")
        x, y, width, height = self.program.element("One, Ann", "label").place
        wait_until(lambda: self.screen.picture((x - 90, y + height, 1, 1)).at(0, 0) == (254, 0, 0),
                   "the cover beside the title")

    def test_a_running_player_is_there_from_the_start(self):
        self.program.end()
        self.mpv(self.sound)
        self.session.session_bus.wait_for(Mpv.name)
        self.program.start()
        self.open()
        self.shows("One, Ann", "Playing in mpv Media Player")

    def test_the_buttons_move_the_player(self):
        self.mpv(self.sound, self.other)
        self.open()
        self.shows("One, Ann", "Playing in mpv Media Player")
        self.press("Pause")
        wait_until(lambda: self.property("PlaybackStatus") == "Paused", "the player to pause")
        self.shows("One, Ann", "Paused in mpv Media Player")
        self.press("Play")
        wait_until(lambda: self.property("PlaybackStatus") == "Playing", "the player to play")
        self.press("Next")
        self.shows("Two, Bob", "Playing in mpv Media Player")
        self.press("Previous")
        self.shows("One, Ann", "Playing in mpv Media Player")

    def test_space_moves_the_player(self):
        self.mpv(self.sound)
        self.open()
        self.shows("One, Ann", "Playing in mpv Media Player")
        self.keyboard.tap("space")
        wait_until(lambda: self.property("PlaybackStatus") == "Paused", "the player to pause")

    def test_a_press_on_the_slider_seeks_to_there(self):
        self.mpv(self.sound)
        self.open()
        self.shows("One, Ann", "Playing in mpv Media Player")
        self.press("Pause")
        wait_until(lambda: self.property("PlaybackStatus") == "Paused", "the player to pause")
        self.pointer.glide(*self.program.middle_of("Position", "slider"))
        self.pointer.click()
        wait_until(lambda: abs(self.property("Position") / 1e6 - 45) <= 1.25, "the player to be in the middle")
        wait_until(lambda: self.program.element("Position", "slider").description.startswith("0:4"),
                   "the island to stay there")

    def test_a_song_that_the_player_changes_is_followed(self):
        self.mpv(self.sound, self.other)
        self.open()
        self.shows("One, Ann", "Playing in mpv Media Player")
        self.session.session_bus.call(Mpv.name, "/org/mpris/MediaPlayer2", PLAYER, "Next")
        self.shows("Two, Bob", "Playing in mpv Media Player")

    def test_nothing_plays_once_the_player_is_killed(self):
        player = self.mpv(self.sound)
        self.open()
        self.shows("One, Ann", "Playing in mpv Media Player")
        player.kill()
        self.program.element("Nothing playing")


class ManyPlayers(MediaTest):
    def test_the_one_that_began_last_is_shown_and_the_other_when_it_has_gone(self):
        self.mpv(self.sound)
        self.open()
        self.shows("One, Ann", "Playing in mpv Media Player")
        later = self.mpv(self.other)
        self.shows("Two, Bob", "Playing in mpv Media Player")
        later.kill()
        self.shows("One, Ann", "Playing in mpv Media Player")

    def test_a_player_that_pauses_gives_way_to_one_that_plays(self):
        self.mpv(self.sound)
        self.open()
        self.shows("One, Ann", "Playing in mpv Media Player")
        later = self.mpv(self.other)
        self.shows("Two, Bob", "Playing in mpv Media Player")
        self.session.session_bus.call(f"{Mpv.name}.instance{later.pid}", "/org/mpris/MediaPlayer2", PLAYER, "Pause")
        self.shows("One, Ann", "Playing in mpv Media Player")


class WithoutAdapter(MediaTest):
    def test_the_applications_are_asked_once_the_adapter_is_killed(self):
        self.keep(DebuggedChromium(self.session.folder, self.program.environment, self.sound, "A page - YouTube"))
        self.open()
        self.shows("A page - YouTube, Unknown artist", "Playing in Chromium Web Browser", 30)
        adapter, = self.program.adapters()
        os.kill(adapter, signal.SIGKILL)
        # The debugging port tells the page's address, and the title without the site's name.
        self.shows("A page, 127.0.0.1", "Playing in Chromium", 2 * POLL + LEEWAY)


class Volume(MediaTest):
    """The bars of the closed island follow a sound server of the class's own."""

    @classmethod
    def setUpClass(cls):
        super().setUpClass()
        cls.server = SoundServer(cls.session.folder, cls.session.environment)
        cls.addClassCleanup(cls.server.end)

    def setUp(self):
        self.server.stop()
        self.server.start("speakers")
        super().setUp()
        self.mpv(self.sound)
        wait_until(self.bars, "the bars of what plays")

    def bars(self):
        """The height of the highest bar in pixels, 0 without any."""
        left, top = self.island.point(60, 0)
        picture = self.screen.picture((left, top, 56, 38))
        bright = [y for y in range(4, 34) if any(min(picture.at(x, y)) > 140 for x in range(picture.width))]
        return bright[-1] - bright[0] + 1 if bright else 0

    def test_they_stand_low_while_muted(self):
        self.server.set_volume("100%")
        wait_until(lambda: self.bars() > 8, "high bars")
        self.server.mute(True)
        wait_until(lambda: 0 < self.bars() <= 4, "low bars")

    def test_they_follow_a_sound_server_that_came_again(self):
        self.server.set_volume("100%")
        wait_until(lambda: self.bars() > 8, "high bars")
        self.server.stop()
        self.server.start("speakers")
        self.server.mute(True)
        wait_until(lambda: 0 < self.bars() <= 4, "low bars", 20)
