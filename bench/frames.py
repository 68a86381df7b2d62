"""Frames of a window, seen from outside: the X server says when a window's pixels change."""

import threading
import time

from Xlib import X, display, error
from Xlib.ext import damage

FRAME = 1 / 60
# Changes closer together than this belong to one frame.
SAME_FRAME = 0.004


class FrameWatch:
    """Notes each change of every window of one size from the moment that it is made. Times are `time.monotonic`."""

    def __init__(self, server_name, size):
        self._size = size
        self._changes = []
        self._lock = threading.Lock()
        self._display = display.Display(server_name)
        self._display.damage_query_version()
        self._display.screen().root.change_attributes(event_mask=X.SubstructureNotifyMask)
        self._display.sync()
        threading.Thread(target=self._watch, daemon=True).start()

    def _watch(self):
        try:
            while True:
                event = self._display.next_event()
                now = time.monotonic()
                if event.type == X.CreateNotify and (event.width, event.height) == self._size:
                    event.window.damage_create(damage.DamageReportRawRectangles)
                    self._display.flush()
                elif event.type == self._display.extension_event.DamageNotify:
                    with self._lock:
                        self._changes.append(now)
        except (error.ConnectionClosedError, OSError, ValueError):
            pass  # the session has ended

    def frames(self, since, until=float("inf")):
        """The times of the frames between two moments."""
        with self._lock:
            changes = [moment for moment in self._changes if since <= moment < until]
        return [moment for index, moment in enumerate(changes)
                if index == 0 or moment - changes[index - 1] > SAME_FRAME]

    def first(self, since):
        return next(iter(self.frames(since)), None)

    def quiet(self, since, seconds):
        """Whether nothing has changed for so long, neither since `since` nor before now."""
        now = time.monotonic()
        last = max([since, *self.frames(since)])
        return now - last > seconds


def due(frames):
    """How many frames a display at 60 Hz had room for, from the first to the last of a movement."""
    return 1 + sum(max(1, round((after - before) / FRAME)) for before, after in zip(frames, frames[1:])) if frames else 0
