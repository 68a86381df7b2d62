"""What it costs to follow what plays: one report through the media service, beside keeping and comparing a track at
all, how soon a player's change is told, beside another follower, and the running program while a song plays, beside the same
while it is paused."""

import subprocess
import time
from types import SimpleNamespace

from harness.players import Adapter, Lines, Mpv, ScriptedPlayer, make_picture, make_sound
from harness.processes import wait_until

from costs import cpu_seconds

REPORT = "one report of what plays"
CHANGE = "a player's change to the line"
DEBOUNCE = 80  # milliseconds, as the program asks for
SETTLED = 4  # seconds after which a program has shown what it found


def measure_reports(program, rounds):
    """The service's readings and the baseline's, in microseconds."""
    service, keeping = SimpleNamespace(readings={REPORT: []}), SimpleNamespace(readings={REPORT: []})
    for _ in range(rounds):
        answer = subprocess.run([program], capture_output=True, check=True, text=True)
        for subject, microseconds in zip((service, keeping), answer.stdout.split()):
            subject.readings[REPORT].append(float(microseconds))
    return service, keeping


def measure_promptness(session, program, changes):
    """From a player's change to the adapter's line and to that of another follower, in milliseconds."""
    adapter, follower = (SimpleNamespace(readings={CHANGE: []}) for _ in range(2))
    player = session.keep(ScriptedPlayer(session.folder, session.environment, session.session_bus))
    player.start()
    stream = session.keep(Adapter(program.parent, session.environment, session.folder).stream(DEBOUNCE))
    other = session.keep(Lines(["playerctl", "--follow", "metadata", "--format", "{{title}}"], session.environment,
                               session.folder / "playerctl.log"))
    wait_until(lambda: other.lines, "the other follower")
    for count in range(changes):
        title = f"Change {count}"
        began = time.monotonic()
        player.show(title)
        for subject, lines in ((adapter, stream), (follower, other)):
            wait_until(lambda: title in lines.lines[-1][1], f"a line with '{title}'")
            subject.readings[CHANGE].append(1000 * (lines.lines[-1][0] - began))
    for part in (other, stream, player):
        part.end()
    return adapter, follower


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

PROMPTNESS_FIGURES = (
    (CHANGE, "ms", 1, f"at most the other's + {DEBOUNCE} + 2 ms", lambda ours, other: ours <= other + DEBOUNCE + 2),
)

MEDIA_FIGURES = ((REPORT, "µs", 2, "at most 2 µs", lambda service, keeping: service <= 2),)
