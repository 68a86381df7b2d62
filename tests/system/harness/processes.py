"""Child processes with their output kept, and waiting for a condition instead of for a while."""

import ctypes
import os
import signal
import subprocess
import time
from pathlib import Path

_libc = ctypes.CDLL(None)
_PR_SET_PDEATHSIG = 1


class Late(AssertionError):
    """What was waited for did not come."""


def wait_until(condition, what, seconds=10.0):
    """The first true value of `condition()`; fails with `what` when the deadline passes."""
    deadline = time.monotonic() + seconds
    while True:
        value = condition()
        if value:
            return value
        if time.monotonic() > deadline:
            raise Late(f"waited {seconds:g} s in vain: {what}")
        time.sleep(0.01)


def holds(condition, what, seconds):
    """For what must not happen: `condition()` has to stay true the whole time."""
    deadline = time.monotonic() + seconds
    while time.monotonic() < deadline:
        if not condition():
            raise AssertionError(f"did not last {seconds:g} s: {what}")
        time.sleep(0.01)


def command_line(pid):
    """Of a process that runs; empty of one that does not."""
    try:
        return Path(f"/proc/{pid}/cmdline").read_bytes()
    except OSError:
        return b""


class Child:
    """A process in a group of its own that ends with its owner, at the latest with the test run itself."""

    def __init__(self, arguments, environment, log, pass_fds=(), stdin=subprocess.DEVNULL, stdout=None, folder=None):
        self.log = log
        self._output = open(log, "ab")
        self.started = time.monotonic_ns()
        self._process = subprocess.Popen(
            [str(argument) for argument in arguments], env=environment, stdin=stdin, stdout=stdout or self._output,
            stderr=self._output, pass_fds=pass_fds, cwd=folder, start_new_session=True,
            preexec_fn=lambda: _libc.prctl(_PR_SET_PDEATHSIG, signal.SIGTERM, 0, 0, 0))
        self.pid = self._process.pid
        self.stdin, self.stdout = self._process.stdin, self._process.stdout

    @property
    def returncode(self):
        """None while it runs."""
        return self._process.poll()

    @property
    def output(self):
        with open(self.log, encoding="utf-8", errors="replace") as log:
            return log.read()

    def wait(self, seconds=10.0):
        wait_until(lambda: self.returncode is not None, f"{self._process.args[0]} to end", seconds)
        return self.returncode

    def kill(self):
        """At once and without a chance to tidy up."""
        self._process.kill()
        self._process.wait()

    def end(self):
        """Asks, then insists; takes what the process has started along."""
        if self.returncode is None:
            self._signal(signal.SIGTERM)
            try:
                self._process.wait(5)
            except subprocess.TimeoutExpired:
                pass
        self._signal(signal.SIGKILL)
        self._process.wait()
        self._output.close()
        for pipe in (self.stdin, self.stdout):
            if pipe:
                pipe.close()

    def _signal(self, number):
        try:
            os.killpg(self.pid, number)
        except ProcessLookupError:
            pass
