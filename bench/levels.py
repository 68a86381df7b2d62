"""What it costs to show levels: figures of the program with the setting on, beside the same program with it off."""

import subprocess
import time

from harness.processes import wait_until
from harness.sound import SoundServer

TICK = 0.15  # seconds between two looks at the levels


def start_sound(session):
    """A sound server that ends with the session; for programs that are made afterwards."""
    session.sound = session.keep(SoundServer(session.folder, session.environment))
    session.sound.start("speakers")


def measure_tick(program, subject):
    """One look at levels that have not changed, in microseconds."""
    answer = subprocess.run([program], capture_output=True, check=True, text=True)
    subject.note("one observer tick", float(answer.stdout))


def measure_change(subject, percent):
    """From the start of the command that changes the volume to the first frame that shows it."""
    began = time.monotonic()
    subject.session.sound.set_volume(f"{percent}%")
    painted = wait_until(lambda: subject.watch.first(began), "the first frame of a level")
    subject.note("change to first frame", 1000 * (painted - began))
    subject.settle()


LEVEL_FIGURES = (
    ("one observer tick", "µs", 2, "at most 5 µs", lambda on, off: on <= 5),
    ("cpu at rest", "ms", 2, "off + 0.5 ms", lambda on, off: on <= off + 0.5),
    ("context switches at rest", "/s", 2, "off + 0.1 a second", lambda on, off: on <= off + 0.1),
    ("frames at rest", "", 0, "0", lambda on, off: on == 0),
    ("change to first frame", "ms", 1, f"at most {2000 * TICK:g} ms, two ticks", lambda on, off: on <= 2000 * TICK),
)
