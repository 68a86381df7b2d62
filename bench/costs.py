"""What a process costs, read from /proc."""

import os
import time
from pathlib import Path


def cpu_seconds(pid):
    """CPU time of all threads, ended ones included, in nanosecond steps (the kernel's clock of another process)."""
    return time.clock_gettime((~pid << 3) | 2)


def context_switches(pid):
    """By thread, so that threads that come and go between two readings are seen."""
    switches = {}
    for task in Path(f"/proc/{pid}/task").iterdir():
        fields = dict(line.split(":\t", 1) for line in (task / "status").read_text().splitlines() if ":\t" in line)
        switches[task.name] = int(fields["voluntary_ctxt_switches"]) + int(fields["nonvoluntary_ctxt_switches"])
    return switches


def switches_between(before, after):
    return sum(count - before.get(task, 0) for task, count in after.items())


def memory(pid):
    """MB, as people count them (2^20 bytes): resident, proportional, private."""
    fields = {}
    for line in Path(f"/proc/{pid}/smaps_rollup").read_text().splitlines()[1:]:
        name, amount, *_ = line.split()
        fields[name.rstrip(":")] = int(amount) / 1024
    return {"resident": fields["Rss"], "proportional": fields["Pss"],
            "private": fields["Private_Clean"] + fields["Private_Dirty"]}


def machine_busy():
    """Seconds of CPU that the whole machine has spent."""
    user, nice, system, _, _, irq, softirq, steal = map(int, Path("/proc/stat").read_text().split()[1:9])
    return (user + nice + system + irq + softirq + steal) / os.sysconf("SC_CLK_TCK")
