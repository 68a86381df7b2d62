"""The now-playing adapter beside real players on a bus of their own."""

import base64
import os
import subprocess
import tempfile
import time
import unittest
from datetime import datetime
from pathlib import Path

import dbus

from harness.buses import Bus
from harness.players import Adapter, Chromium, Mpv, Vlc, make_picture, make_sound
from harness.processes import holds, wait_until
from harness.session import home_environment

PROGRAM = Path(os.environ["VELMORA_PROGRAM"])


class PlayersTest(unittest.TestCase):
    """`adapter` is the one beside the program; `sound`, `other` and `untagged` are files to play, with `picture`
    as the cover of their folder."""

    @classmethod
    def setUpClass(cls):
        folder = tempfile.TemporaryDirectory(prefix="velmora-players-")
        cls.addClassCleanup(folder.cleanup)
        cls.media = Path(folder.name)
        cls.media.chmod(0o755)
        cls.picture = make_picture(cls.media / "cover.jpg")
        cls.sound = make_sound(cls.media / "one.flac", title="One", artist="Ann", album="Tones")
        cls.other = make_sound(cls.media / "two.flac", title="Two", artist="Bob", album="Tones")
        cls.untagged = make_sound(cls.media / "untagged.flac")

    def setUp(self):
        folder = tempfile.TemporaryDirectory(prefix="velmora-players-")
        self.addCleanup(folder.cleanup)
        self.folder = Path(folder.name)
        self.folder.chmod(0o755)
        self.environment = home_environment(self.folder / "home")
        self.bus = self.keep(Bus(self.folder, self.environment, "session"))
        self.environment["DBUS_SESSION_BUS_ADDRESS"] = self.bus.address
        self.adapter = Adapter(PROGRAM.parent, self.environment, self.folder)

    def keep(self, part):
        self.addCleanup(part.end)
        return part

    def stream(self):
        return self.keep(self.adapter.stream())

    def mpv(self, *files):
        return self.keep(Mpv(self.folder, self.environment, *files))

    def property(self, player, name):
        """What the player itself says."""
        return self.bus.call(player.name, "/org/mpris/MediaPlayer2", dbus.PROPERTIES_IFACE, "Get",
                             "org.mpris.MediaPlayer2.Player", name)

    def position_told(self, stream):
        """Where the player is now, as a reader of the stream computes it."""
        state = stream.state
        age = time.time() - datetime.fromisoformat(state["timestamp"].replace("Z", "+00:00")).timestamp()
        return state["elapsedTime"] + state["playbackRate"] * age

    def assert_cover(self, state):
        self.assertEqual(base64.b64decode(state["artworkData"], validate=True), self.picture.read_bytes())


class OnePlayer(PlayersTest):
    def test_mpv_is_told_with_all_that_it_knows(self):
        stream = self.stream()
        self.mpv(self.sound)
        state = stream.wait_for(title="One", artist="Ann", album="Tones", playing=True, playbackRate=1,
                                bundleIdentifier="mpv", artworkData=bool)
        self.assertAlmostEqual(state["duration"], 30, delta=0.5)
        self.assert_cover(state)

    def test_the_next_track_comes_in_one_piece(self):
        stream = self.stream()
        self.mpv(self.sound, self.other)
        stream.wait_for(title="One", artist="Ann")
        before = len(stream.lines)
        self.assertEqual(self.adapter.run("send", 4), 0)
        stream.wait_for(title="Two", artist="Bob")
        told = stream.payloads()[before]
        self.assertLessEqual({"title", "artist"}, told.keys())
        self.assertFalse(any("artworkData" in payload for payload in stream.payloads()[before:]))

    def test_mpv_does_as_it_is_told(self):
        stream = self.stream()
        player = self.mpv(self.sound, self.other)
        stream.wait_for(title="One", artist="Ann")
        self.assertEqual(self.adapter.run("send", 1), 0)
        stream.wait_for(playing=False, playbackRate=0)
        self.assertEqual(self.property(player, "PlaybackStatus"), "Paused")
        self.assertEqual(self.adapter.run("seek", 12_500_000), 0)
        stream.wait_for(elapsedTime=lambda elapsed: elapsed and abs(elapsed - 12.5) < 0.2)
        self.assertEqual(self.adapter.run("send", 0), 0)
        stream.wait_for(playing=True)
        self.assertEqual(self.adapter.run("send", 4), 0)
        stream.wait_for(title="Two")
        self.assertEqual(self.adapter.run("send", 5), 0)
        stream.wait_for(title="One")

    def test_the_position_runs_with_the_player(self):
        stream = self.stream()
        player = self.mpv(self.sound)
        stream.wait_for(title="One", artist="Ann")
        wait_until(lambda: self.property(player, "Position") > 2_500_000, "mpv to play on")
        self.assertAlmostEqual(self.position_told(stream), self.property(player, "Position") / 1e6, delta=0.4)

    def test_a_player_that_is_killed_is_gone(self):
        stream = self.stream()
        player = self.mpv(self.sound)
        stream.wait_for(title="One")
        player.kill()
        wait_until(lambda: stream.state == {}, "the player to be gone", 2)

    def test_vlc_is_told_with_its_cover(self):
        stream = self.stream()
        self.keep(Vlc(self.folder, self.environment, self.sound))
        state = stream.wait_for(title="One", artist="Ann", album="Tones", playing=True, bundleIdentifier="vlc",
                                artworkData=bool, duration=bool)
        self.assertAlmostEqual(state["duration"], 30, delta=0.5)
        self.assert_cover(state)

    def test_a_file_without_tags_is_told_by_its_name(self):
        stream = self.stream()
        self.keep(Vlc(self.folder, self.environment, self.untagged))
        stream.wait_for(title="untagged.flac", playing=True)

    def test_vlc_does_as_it_is_told(self):
        stream = self.stream()
        self.keep(Vlc(self.folder, self.environment, self.sound, self.other))
        stream.wait_for(title="One", duration=bool)
        self.assertEqual(self.adapter.run("seek", 20_000_000), 0)
        stream.wait_for(elapsedTime=lambda elapsed: elapsed and abs(elapsed - 20) < 2)
        self.assertEqual(self.adapter.run("send", 1), 0)
        stream.wait_for(playing=False)
        self.assertEqual(self.adapter.run("send", 0), 0)
        stream.wait_for(playing=True)
        self.assertEqual(self.adapter.run("send", 4), 0)
        stream.wait_for(title="Two", playing=True)

    def test_a_page_in_chromium_is_told_and_does_as_it_is_told(self):
        stream = self.stream()
        player = self.keep(Chromium(self.media, self.environment, self.sound, self.picture))
        state = stream.wait_for(title="Clip", artist="Cid", album="Web", playing=True, bundleIdentifier="chromium",
                                artworkData=bool, duration=bool)
        self.assertAlmostEqual(state["duration"], 30, delta=0.5)
        self.assertEqual(self.adapter.run("send", 1), 0)
        stream.wait_for(playing=False)
        self.assertEqual(self.adapter.run("seek", 9_000_000), 0)
        stream.wait_for(elapsedTime=lambda elapsed: elapsed and abs(elapsed - 9) < 0.5)
        self.assertEqual(self.adapter.run("send", 0), 0)
        stream.wait_for(playing=True)
        self.assertEqual(self.adapter.run("send", 4), 0)
        stream.wait_for(title="Next Clip", artist="Dee")
        player.kill()
        wait_until(lambda: stream.state == {}, "the page to be gone", 5)


class ManyPlayers(PlayersTest):
    def test_the_one_that_began_last_is_followed_and_its_end_gives_way(self):
        stream = self.stream()
        self.mpv(self.sound)
        stream.wait_for(title="One", bundleIdentifier="mpv")
        vlc = self.keep(Vlc(self.folder, self.environment, self.other))
        stream.wait_for(title="Two", bundleIdentifier="vlc")
        self.assertEqual(self.adapter.run("send", 1), 0)
        stream.wait_for(title="One", bundleIdentifier="mpv", playing=True)
        vlc.kill()
        self.assertEqual(self.adapter.run("send", 1), 0)
        stream.wait_for(title="One", playing=False)

    def test_a_list_that_goes_on_in_the_background_takes_nobodys_place(self):
        stream = self.stream()
        short = make_sound(self.folder / "short.flac", seconds=3, title="Short")
        self.keep(Vlc(self.folder, self.environment, short, self.other))
        stream.wait_for(title="Short", bundleIdentifier="vlc")
        self.mpv(self.sound)
        stream.wait_for(bundleIdentifier="mpv")
        holds(lambda: stream.state.get("bundleIdentifier") == "mpv", "mpv stays followed", 5)

    def test_without_a_stream_a_command_reaches_the_one_that_plays(self):
        player = self.mpv(self.sound)
        self.bus.wait_for(player.name)
        wait_until(lambda: self.property(player, "PlaybackStatus") == "Playing", "mpv to play")
        self.assertEqual(self.adapter.run("send", 1), 0)
        wait_until(lambda: self.property(player, "PlaybackStatus") == "Paused", "mpv to pause")


class Places(PlayersTest):
    def test_what_is_installed_lies_where_the_program_looks(self):
        prefix = self.folder / "prefix"
        subprocess.run(["cmake", "--install", os.environ["VELMORA_BUILD"], "--prefix", prefix], check=True,
                       stdout=subprocess.DEVNULL)
        self.assertTrue((prefix / "bin" / PROGRAM.name).exists())
        self.adapter = Adapter(prefix / "bin", self.environment, self.folder)
        self.mpv(self.sound)
        self.stream().wait_for(title="One", artworkData=bool)


if __name__ == "__main__":
    unittest.main()
