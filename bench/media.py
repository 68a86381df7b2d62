"""What it costs to follow what plays: one report through the media service, beside keeping and comparing a track at all."""

import subprocess
from types import SimpleNamespace

REPORT = "one report of what plays"


def measure_reports(program, rounds):
    """The service's readings and the baseline's, in microseconds."""
    service, keeping = SimpleNamespace(readings={REPORT: []}), SimpleNamespace(readings={REPORT: []})
    for _ in range(rounds):
        answer = subprocess.run([program], capture_output=True, check=True, text=True)
        for subject, microseconds in zip((service, keeping), answer.stdout.split()):
            subject.readings[REPORT].append(float(microseconds))
    return service, keeping


MEDIA_FIGURES = ((REPORT, "µs", 2, "at most 2 µs", lambda service, keeping: service <= 2),)
