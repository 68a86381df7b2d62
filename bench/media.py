"""What it costs to follow what plays: one report through the media service, beside keeping and comparing a track at all,
and the running program while a song plays, beside the same while it is paused."""

import subprocess
import time
from types import SimpleNamespace

from harness.players import Mpv, make_picture, make_sound

from costs import cpu_seconds

REPORT = "one report of what plays"
SETTLED = 4  # seconds after which a program has shown what it found


def measure_reports(program, rounds):
    """The service's readings and the baseline's, in microseconds."""
    service, keeping = SimpleNamespace(readings={REPORT: []}), SimpleNamespace(readings={REPORT: []})
    for _ in range(rounds):
        answer = subprocess.run([program], capture_output=True, check=True, text=True)
        for subject, microseconds in zip((service, keeping), answer.stdout.split()):
            subject.readings[REPORT].append(float(microseconds))
    return service, keeping


def measure_playing(subject, is_paused, seconds):
    """The program's share of a core over some seconds with a player, closed and open."""
    folder = subject.session.folder
    make_picture(folder / "cover.jpg")
    song = make_sound(folder / "song.flac", seconds=2 * seconds + 60, title="Song", artist="Band")
    subject.rest()
    subject.launch()
    player = Mpv(folder, subject.program.environment, *(["--pause"] if is_paused else []), song)
    try:
        time.sleep(SETTLED)
        subject.note("cpu, closed", share(subject.program.pid, seconds))
        width = subject.session.screen.size[0]
        subject.session.pointer.move(width // 2, 20)
        time.sleep(SETTLED)
        subject.note("cpu, open", share(subject.program.pid, seconds))
    finally:
        player.end()
        subject.end()


def share(pid, seconds):
    """Per cent of one core."""
    before, began = cpu_seconds(pid), time.monotonic()
    time.sleep(seconds)
    return 100 * (cpu_seconds(pid) - before) / (time.monotonic() - began)


PLAYING_FIGURES = (
    ("cpu, closed", "%", 2, "at most 3 % of a core", lambda playing, paused: playing <= 3),
    ("cpu, open", "%", 2, "", None),
)

MEDIA_FIGURES = ((REPORT, "µs", 2, "at most 2 µs", lambda service, keeping: service <= 2),)
