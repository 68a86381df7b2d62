"""Real media players, files for them to play, and the now-playing adapter that follows them."""

import functools
import http.server
import json
import os
import subprocess
import threading
import time
from pathlib import Path

import dbus

from .buses import ScriptedService
from .processes import Child, wait_until

NOBODY = 65534


def make_sound(path, seconds=30, **tags):
    """A file with one tone; tags as title="…", artist="…", album="…"."""
    named = [word for key, value in tags.items() for word in ("-metadata", f"{key}={value}")]
    _ffmpeg("-f", "lavfi", "-i", f"sine=440:d={seconds}", *named, path)
    return path


def make_picture(path, look="color=red:s=64x64"):
    """`look` is a source of pictures as ffmpeg names them."""
    _ffmpeg("-f", "lavfi", "-i", look, "-frames:v", "1", path)
    return path


def _ffmpeg(*arguments):
    subprocess.run(["ffmpeg", "-loglevel", "error", "-y", *arguments], check=True, stdin=subprocess.DEVNULL)


class Adapter:
    """The adapter as it lies beside a program, in the build folder or installed."""

    def __init__(self, program_folder, environment, folder):
        self._environment, self._folder = environment, folder
        self._words = ["/usr/bin/perl", program_folder / "../share/velmora/mediaremote-adapter.pl",
                       program_folder / "../libexec/velmora/MediaRemoteAdapter.framework"]

    def stream(self, debounce=80):
        return Stream([*self._words, "stream", f"--debounce={debounce}"], self._environment, self._folder / "stream.log")

    def run(self, *command):
        """What the command ended with."""
        words = [str(word) for word in (*self._words, *command)]
        return subprocess.run(words, env=self._environment, stdin=subprocess.DEVNULL, timeout=20).returncode


class Lines:
    """A program that writes lines, each kept with the moment at which it came."""

    def __init__(self, words, environment, log):
        self._process = Child(words, environment, log, stdout=subprocess.PIPE)
        self.lines = []  # (seconds on the monotonic clock, text)
        self._reader = threading.Thread(target=self._read, daemon=True)
        self._reader.start()

    def _read(self):
        for line in self._process.stdout:
            moment = time.monotonic()
            self.take(line)
            self.lines.append((moment, line.decode()))

    def take(self, line):
        """Called with each line before it counts."""

    def end(self):
        self._process.end()


class Stream(Lines):
    """The adapter's stream, merged as its reader does it."""

    def __init__(self, words, environment, log):
        self.state = {}
        super().__init__(words, environment, log)
        wait_until(lambda: self.lines, "the first line")

    def take(self, line):
        told = json.loads(line)
        merged = dict(self.state) if told.get("diff") and told["payload"] else {}
        merged.update(told["payload"])
        self.state = {key: value for key, value in merged.items() if value is not None}

    def payloads(self):
        return [json.loads(text)["payload"] for _, text in list(self.lines)]

    def wait_for(self, **fields):
        """Until the state has these; a callable is asked about the value."""
        def holds():
            state = self.state
            return all(expected(state.get(key)) if callable(expected) else state.get(key) == expected
                       for key, expected in fields.items())
        try:
            wait_until(holds, f"{fields}", 15)
        except AssertionError as late:
            shown = {key: str(value)[:80] for key, value in self.state.items()}
            raise AssertionError(f"{late}; there is {shown}") from None
        return self.state


class Mpv:
    name = "org.mpris.MediaPlayer2.mpv"

    def __init__(self, folder, environment, *files):
        self.process = Child(["mpv", "--no-config", "--script=/usr/lib/mpv-mpris/mpris.so", "--ao=null", "--vo=null",
                              "--no-terminal", *files], environment, folder / "mpv.log")

    @property
    def pid(self):
        return self.process.pid

    def kill(self):
        self.process.kill()

    def end(self):
        self.process.end()


class Vlc(Mpv):
    """Runs as an ordinary user, since it refuses the super-user. `folder` must be open to everybody."""

    def __init__(self, folder, environment, *files):
        home = folder / "vlc-home"
        home.mkdir()
        words = ["vlc", "--intf", "dummy", "--control", "dbus", "--no-video", "--aout", "dummy", *files]
        if os.geteuid() == 0:
            os.chown(home, NOBODY, NOBODY)
            words = ["setpriv", f"--reuid={NOBODY}", f"--regid={NOBODY}", "--clear-groups", *words]
        home_of_its_own = {"HOME": str(home), "XDG_RUNTIME_DIR": str(home), "XDG_CONFIG_HOME": str(home),
                           "XDG_DATA_HOME": str(home), "XDG_CACHE_HOME": str(home)}
        self.process = Child(words, environment | home_of_its_own, folder / "vlc.log")


PAGE = """<!doctype html><title>Tab</title><audio id=sound src={sound} autoplay loop></audio><script>
const show = (title, artist) => navigator.mediaSession.metadata = new MediaMetadata(
    {{title, artist, album: "Web", artwork: [{{src: "{picture}", sizes: "64x64", type: "image/jpeg"}}]}});
navigator.mediaSession.setActionHandler("nexttrack", () => show("Next Clip", "Dee"));
show("Clip", "Cid");
</script>"""


class Chromium(Mpv):
    """Plays a sound on a page that names it "Clip" by "Cid", and "Next Clip" by "Dee" when it is told to go on."""

    def __init__(self, folder, environment, sound, picture):
        page = folder / "page.html"
        page.write_text(PAGE.format(sound=Path(sound).name, picture=Path(picture).name))
        self.browse(folder, environment, folder / "chromium", page.as_uri())

    def browse(self, folder, environment, profile, address, *options):
        self.process = Child(
            ["chromium", "--headless", "--no-sandbox", "--disable-gpu", "--disable-quic", "--no-first-run",
             "--no-default-browser-check", "--disable-background-networking", "--disable-component-update",
             "--disable-sync", "--password-store=basic", "--autoplay-policy=no-user-gesture-required",
             "--allow-file-access-from-files", f"--user-data-dir={profile}", *options, address],
            environment, folder / "chromium.log")


class DebuggedChromium(Chromium):
    """Plays `sound` on a page of a loopback server, with the browser's debugging port open and its profile where the
    environment's user has it."""

    def __init__(self, folder, environment, sound, title):
        page = f"<!doctype html><title>{title}</title><audio src={Path(sound).name} autoplay loop></audio>"
        (Path(sound).parent / "page.html").write_text(page)
        handler = functools.partial(QuietRequests, directory=Path(sound).parent)
        self._server = http.server.ThreadingHTTPServer(("127.0.0.1", 0), handler)
        threading.Thread(target=self._server.serve_forever, daemon=True).start()
        self.browse(folder, environment, Path(environment["XDG_CONFIG_HOME"]) / "chromium",
                    f"http://127.0.0.1:{self._server.server_port}/page.html", "--remote-debugging-port=0")

    def end(self):
        super().end()
        self._server.shutdown()
        self._server.server_close()


class QuietRequests(http.server.SimpleHTTPRequestHandler):
    def log_message(self, *_):
        pass


class ScriptedPlayer(ScriptedService):
    """A player that shows whatever title it is told to."""

    name = "org.mpris.MediaPlayer2.scripted"
    PATH, PLAYER = "/org/mpris/MediaPlayer2", "org.mpris.MediaPlayer2.Player"

    def start(self):
        self._run("--session", self.name, self.PATH, self.PLAYER)
        self._mock("AddProperties", self.PLAYER, dbus.Dictionary(
            {"PlaybackStatus": "Playing", "CanPlay": True, "Metadata": self._metadata("Track 0")}, signature="sv"))

    def show(self, title):
        self._bus.call(self.name, self.PATH, dbus.PROPERTIES_IFACE, "Set", self.PLAYER, "Metadata",
                       self._metadata(title))

    @staticmethod
    def _metadata(title):
        track = dbus.ObjectPath(f"/{title.replace(' ', '/')}", variant_level=1)
        return dbus.Dictionary({"mpris:trackid": track, "xesam:title": title}, signature="sv", variant_level=1)

    def _mock(self, method, *arguments):
        return self._bus.call(self.name, self.PATH, "org.freedesktop.DBus.Mock", method, *arguments)
