#!/usr/bin/python3
"""Takes the real program through a short tour on a private desktop and keeps a picture of each stop.

Everything is driven as a person and a machine would: pointer, keys, and power and Bluetooth daemons on a bus."""

import argparse
import re
import sys
import time
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parent))

from harness.players import Mpv, make_picture, make_sound  # noqa: E402
from harness.processes import wait_until  # noqa: E402
from harness.session import Program, Session  # noqa: E402

HEADSET = "00:1B:66:00:00:01"
COVER = "gradients=s=304x304:c0=0xF2A65A:c1=0x5B2A86:x0=0:y0=0:x1=304:y1=304"


class Tour:
    def __init__(self, session, program, folder):
        self.session, self.program, self.folder = session, program, folder
        self.pictures = []

    @property
    def island(self):
        return self.program.island

    def take(self, title):
        """A picture, once nothing moves."""
        name = re.sub(r"\W+", "-", title.lower()).strip("-")
        path = self.folder / f"{len(self.pictures) + 1:02}-{name}.png"
        self.pictures.append(self.still().save(path))
        print(f"  {path}  {title}", flush=True)

    def still(self, seconds=3.0):
        """The screen after a quarter of a second without a change; what moves for ever is taken as it comes."""
        before, since, deadline = None, time.monotonic(), time.monotonic() + seconds
        while time.monotonic() < deadline:
            now = self.session.screen.picture(pointer=True)
            if now != before:
                before, since = now, time.monotonic()
            elif time.monotonic() - since > 0.25:
                break
            time.sleep(0.02)
        return before

    def away(self):
        width, height = self.session.screen.size
        self.session.pointer.glide(width // 2 + 120, height - 200)

    def closed(self, width=260):
        wait_until(lambda: self.island.is_closed(width), f"the island to be closed and {width} wide")

    def walk(self):
        self.closed()
        self.take("Closed")
        self.events()
        self.session.pointer.glide(*self.island.centre)
        wait_until(self.island.is_open, "the island to open under the pointer")
        self.take("Open on hover")
        self.song()
        self.tabs()
        self.away()
        self.closed()
        self.take("Closed again")
        self.session.session_bus.wait_for("com.brindle.app")
        self.program.action("toggle")
        wait_until(self.island.is_open, "the island to open by the bus")
        self.program.action("toggle")
        self.closed()

    def events(self):
        power, bluetooth = self.session.power, self.session.bluetooth
        power.unplug()
        self.closed(368)
        self.take("Unplugged")
        self.closed()
        power.charge(79.0)
        power.plug()
        self.closed(368)
        self.take("Charging")
        self.closed()
        bluetooth.pair(HEADSET, "Studio Headphones")
        bluetooth.connect(HEADSET)
        self.closed(368)
        self.take("A headset connects")
        self.closed()

    def song(self):
        folder = self.session.folder
        make_picture(folder / "cover.jpg", COVER)
        song = make_sound(folder / "song.flac", seconds=120, title="Night Drive to the Coast", artist="The Quiet Lights")
        player = Mpv(folder, self.program.environment, song)
        try:
            self.program.element("Pause", "push button")
            self.take("A song plays")
            self.session.pointer.glide(*self.program.middle_of("Pause", "push button"))
            self.session.pointer.click()
            self.program.element("Play", "push button")
            self.take("Paused by a click")
            self.away()
            self.closed()
            self.take("Closed with a song")
            self.session.pointer.glide(*self.island.centre)
            wait_until(self.island.is_open, "the island to open under the pointer")
        finally:
            player.end()
        self.program.element("Nothing playing")

    def tabs(self):
        for name in ("Shelf", "Calculator"):
            self.session.keyboard.tap("Down")
            self.selected(name)
            self.take(f"{name} by the arrow key")
        self.session.pointer.glide(*self.program.middle_of("Media", "page tab"))
        self.session.pointer.click()
        self.selected("Media")
        self.take("Media by a click")

    def selected(self, name):
        wait_until(lambda: "selected" in self.program.element(name, "page tab").states, f"the tab '{name}'")


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--out", type=Path, required=True, help="where the pictures go")
    parser.add_argument("--program", type=Path, required=True)
    arguments = parser.parse_args()
    arguments.out.mkdir(parents=True, exist_ok=True)
    for old in arguments.out.glob("[0-9][0-9]-*.png"):
        old.unlink()
    with Session() as session:
        session.screen.wallpaper()
        program = Program(session, arguments.program.resolve())
        try:
            program.start()
            tour = Tour(session, program, arguments.out.resolve())
            tour.walk()
        except Exception:
            session.screen.picture().save(arguments.out / "00-failed.png")
            print(f"The tour ended early: {arguments.out.resolve() / '00-failed.png'}\n{program.process.output[-2000:]}",
                  file=sys.stderr)
            raise
        finally:
            program.end()
    print(f"{len(tour.pictures)} pictures in {arguments.out.resolve()}")


if __name__ == "__main__":
    main()
