#!/usr/bin/python3
"""Measures the release build beside an empty window of the same kind, both in one private session, turn by turn.

Both are watched from outside and by the same means, so a figure says the same thing of both. This is no test: it always
ends well, and says which limits hold."""

import argparse
import json
import os
import sys
import time
from pathlib import Path
from statistics import median

ROOT = Path(__file__).resolve().parent.parent
sys.path.insert(0, str(ROOT / "tests" / "system"))

from harness.processes import wait_until  # noqa: E402
from harness.session import PANEL, Program, Session  # noqa: E402

from costs import context_switches, cpu_seconds, machine_busy, memory, switches_between  # noqa: E402
from frames import FrameWatch, due  # noqa: E402
from levels import LEVEL_FIGURES, measure_change, measure_tick, start_sound  # noqa: E402
from media import MEDIA_FIGURES, PLAYING_FIGURES, PROMPTNESS_FIGURES  # noqa: E402
from media import measure_playing, measure_promptness, measure_reports  # noqa: E402

WORDS = (PANEL[0] // 2 - 60, 8, 120, 22)  # where the closed island says something, within the panel
HOVER_DELAY = 0.05  # the preference's own default
LOADED = 0.10  # of the machine busy with something else: a figure beside it means less


class Subject:
    """One of the two programs, and all that was measured of it: figure → readings."""

    def __init__(self, session, watch, name, path):
        self.session, self.watch, self.name = session, watch, name
        self.program = Program(session, path, name)
        del self.program.environment["QT_LINUX_ACCESSIBILITY_ALWAYS_ON"]
        self.readings = {}

    def note(self, figure, value):
        self.readings.setdefault(figure, []).append(value)

    def rest(self):
        x, y = self.session.screen.size
        self.session.pointer.move(x // 2, y - 60)

    def launch(self):
        began = time.monotonic()
        self.program.launch()
        painted = wait_until(lambda: self.watch.first(began), f"the first frame of {self.name}", 20)
        self.began = began
        return painted - began

    def settle(self, seconds=1.5):
        since = time.monotonic()
        wait_until(lambda: self.watch.quiet(since, seconds), f"{self.name} to come to rest", 30)

    def end(self):
        self.program.end()


def measure_start(subject):
    subject.rest()
    subject.note("first frame", 1000 * subject.launch())
    subject.settle()
    if written := subject.watch.brightened(subject.began):
        subject.note("first words", 1000 * (written - subject.began))
    for kind, size in memory(subject.program.pid).items():
        subject.note(f"{kind} memory", size)
    subject.end()


def measure_rest(subject, seconds):
    pid, began = subject.program.pid, time.monotonic()
    switches, cpu, busy = context_switches(pid), cpu_seconds(pid), machine_busy()
    deadline = began + seconds
    while (left := deadline - time.monotonic()) > 0:
        time.sleep(left)
    subject.note("cpu at rest", 1000 * (cpu_seconds(pid) - cpu))
    subject.note("context switches at rest", switches_between(switches, context_switches(pid)) / seconds)
    subject.note("frames at rest", len(subject.watch.frames(began)))
    return (machine_busy() - busy) / seconds / os.cpu_count()


def measure_opening(subject):
    """The pointer goes onto the island, rests until all is still, and leaves."""
    x, y, width = (subject.session.screen.size[0] - PANEL[0]) // 2, 8, PANEL[0]
    cpu = cpu_seconds(subject.program.pid)
    entered = time.monotonic()
    subject.session.pointer.move(x + width // 2, y + 10)
    stood(subject, entered)
    left = time.monotonic()
    subject.rest()
    stood(subject, left)
    subject.note("cpu for opening and closing", 1000 * (cpu_seconds(subject.program.pid) - cpu))
    deadline = entered + HOVER_DELAY
    opening = [moment for moment in subject.watch.frames(entered, left) if moment >= deadline]
    subject.note("frames of an opening", len(opening))
    if opening:
        subject.note("frames delivered", 100 * len(opening) / due(opening))
        subject.note("hover to first frame", 1000 * (opening[0] - deadline))


def stood(subject, since):
    """At least a second and a half, and then until the picture has been still for a third of one."""
    wait_until(lambda: time.monotonic() - since > 1.5 and subject.watch.quiet(since, 0.35), "the movement to end", 20)


# Figure, unit, digits, and the limit: what it says, and whether it holds for the program's and the baseline's value.
FIGURES = (
    ("first frame", "ms", 1, "at most 1.5 × baseline", lambda ours, base: ours <= 1.5 * base),
    ("first words", "ms", 1, "", None),
    ("resident memory", "MB", 1, "at most baseline + 40 MB", lambda ours, base: ours <= base + 40),
    ("proportional memory", "MB", 1, "", None),
    ("private memory", "MB", 1, "at most baseline + 25 MB", lambda ours, base: ours <= base + 25),
    ("frames at rest", "", 0, "0", lambda ours, base: ours == 0),
    ("cpu at rest", "ms", 2, "at most 1.5 ms in 30 s", lambda ours, base: ours <= 1.5),
    ("context switches at rest", "/s", 2, "at most 0.2 a second", lambda ours, base: ours <= 0.2),
    ("cpu for opening and closing", "ms", 1, "", None),
    ("frames of an opening", "", 0, "", None),
    ("frames delivered", "%", 1, "at least 95 % of due", lambda ours, base: ours >= 95),
    ("hover to first frame", "ms", 1, "at most 17 ms", lambda ours, base: ours <= 17),
)


def evaluate(figures, ours, baseline, rest):
    rows = []
    for figure, unit, digits, limit, holds in figures:
        value, base = (median(subject.readings[figure]) if figure in subject.readings else None
                       for subject in (ours, baseline))
        rows.append({
            "figure": figure, "unit": unit, "digits": digits, "limit": limit.replace("30 s", f"{rest:g} s"),
            "value": value, "baseline": base, "ratio": value / base if value is not None and base else None,
            "holds": None if holds is None or value is None else holds(value, base),
            "readings": ours.readings.get(figure, []), "baseline_readings": baseline.readings.get(figure, []),
        })
    return rows


def table(rows, ours, baseline):
    def number(value, digits, unit=""):
        return "–" if value is None else f"{value:.{digits}f} {unit}".rstrip()
    cells = [("", ours, baseline, "ratio", "to hold", "")]
    for row in rows:
        verdict = {None: "", True: "holds", False: "DOES NOT HOLD"}[row["holds"]]
        cells.append((row["figure"], number(row["value"], row["digits"], row["unit"]),
                      number(row["baseline"], row["digits"], row["unit"]), number(row["ratio"], 2), row["limit"], verdict))
    widths = [max(len(line[column]) for line in cells) for column in range(6)]
    return "\n".join("  ".join(text.ljust(width) if column in (0, 4, 5) else text.rjust(width)
                               for column, (text, width) in enumerate(zip(line, widths))).rstrip() for line in cells)


def measure(arguments):
    with Session(accessibility=False) as session:
        watch = FrameWatch(session.screen.name, PANEL, WORDS)
        ours = Subject(session, watch, "velmora", arguments.program or arguments.build / "src" / "app" / "velmora")
        baseline = Subject(session, watch, "baseline", arguments.build / "bench" / "baseline" / "brindle_bench_baseline")
        loads = []
        for subject in (baseline, ours):  # fills the caches of both
            subject.launch()
            subject.settle()
            subject.end()
        for turn in range(arguments.rounds):
            progress(f"starting, {turn + 1} of {arguments.rounds}")
            for subject in (baseline, ours):
                measure_start(subject)
        for turn in range(arguments.rest_rounds):
            for subject in (baseline, ours):
                progress(f"{subject.name} at rest, {turn + 1} of {arguments.rest_rounds}")
                subject.rest()
                subject.launch()
                subject.settle(3)
                loads.append(measure_rest(subject, arguments.rest))
                progress(f"{subject.name} opening, {turn + 1} of {arguments.rest_rounds}")
                measure_opening(subject)  # the first one builds what the later ones find; it counts like them
                for _ in range(arguments.openings - 1):
                    measure_opening(subject)
                subject.end()
        levels = measure_levels(session, watch, ours.program.path, arguments, loads)
        progress("reports of what plays")
        reports = measure_reports(arguments.build / "bench" / "brindle_bench_report", arguments.rest_rounds)
        media = evaluate(MEDIA_FIGURES, *reports, arguments.rest)
        progress("changes of a player")
        prompt = evaluate(PROMPTNESS_FIGURES, *measure_promptness(session, ours.program.path, 15), arguments.rest)
        playing = measure_players(session, watch, ours.program.path, arguments)
        return evaluate(FIGURES, ours, baseline, arguments.rest), levels, media, prompt, playing, loads


def measure_levels(session, watch, path, arguments, loads):
    """The same program with and without showing levels, in turn."""
    start_sound(session)
    off, on = (Subject(session, watch, f"levels {name}", path) for name in ("off", "on"))
    on.program.prefer(systemControlsEnabled=True)
    for turn in range(arguments.rest_rounds):
        measure_tick(arguments.build / "bench" / "brindle_bench_observer", on)
        for subject in (off, on):
            progress(f"{subject.name} at rest, {turn + 1} of {arguments.rest_rounds}")
            subject.rest()
            subject.launch()
            subject.settle(3)
            loads.append(measure_rest(subject, arguments.rest))
            for percent in range(20, 20 + 10 * arguments.openings, 10) if subject is on else ():
                measure_change(subject, percent)
            subject.end()
    return evaluate(LEVEL_FIGURES, on, off, arguments.rest)


def measure_players(session, watch, path, arguments):
    """With a player that plays and one that is paused, in turn. The sound server of the levels still runs."""
    paused, playing = (Subject(session, watch, name, path) for name in ("paused", "playing"))
    for turn in range(arguments.rest_rounds):
        for subject in (paused, playing):
            progress(f"a song {subject.name}, {turn + 1} of {arguments.rest_rounds}")
            measure_playing(subject, subject is paused, arguments.rest)
    return evaluate(PLAYING_FIGURES, playing, paused, arguments.rest)


def progress(text):
    print(f"  {text}", file=sys.stderr, flush=True)


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--build", type=Path, required=True, help="the build folder")
    parser.add_argument("--program", type=Path, help="measure this instead of the build's program")
    parser.add_argument("--json", type=Path, help="also write everything that was read")
    parser.add_argument("--rounds", type=int, default=7, help="starts of each")
    parser.add_argument("--rest-rounds", type=int, default=3, help="long runs of each")
    parser.add_argument("--rest", type=float, default=30, help="seconds at rest in a long run")
    parser.add_argument("--openings", type=int, default=4, help="openings in a long run")
    arguments = parser.parse_args()
    rows, levels, media, prompt, playing, loads = measure(arguments)
    load = max(loads)
    print(f"\nMedians of {arguments.rounds} starts, {arguments.rest_rounds} rests of {arguments.rest:g} s and "
          f"{arguments.rest_rounds * arguments.openings} openings of each, in turn.\n\n{table(rows, 'Velmora', 'empty window')}\n\n"
          f"{table(levels, 'levels on', 'levels off')}\n\n{table(media, 'media service', 'keeping a track')}\n\n"
          f"{table(prompt, 'the adapter', 'playerctl')}\n\n"
          f"{table(playing, 'a song plays', 'it is paused')}\n")
    if load > LOADED:
        print(f"The machine was busy with other things: up to {100 * load:.0f} % of its {os.cpu_count()} cores while the "
              "programs rested. Measure again when it is idle.")
    else:
        print(f"The machine was idle otherwise (at most {100 * load:.1f} % busy while the programs rested).")
    if arguments.json:
        arguments.json.write_text(json.dumps({"figures": rows, "levels": levels, "media": media,
                                              "promptness": prompt, "playing": playing,
                                              "busy_while_resting": loads}, indent=2) + "\n")
        print(f"Written: {arguments.json}")


if __name__ == "__main__":
    main()
