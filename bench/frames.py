"""Frames of a window, seen from outside: the X server says when a window's pixels change."""

import threading
import time

from Xlib import X, display, error
from Xlib.ext import damage

FRAME = 1 / 60
# Changes closer together than this belong to one frame.
SAME_FRAME = 0.004


class FrameWatch:
    """Notes each change of every window of one size from the moment that it is made, and when something bright first
    stands at `place` (x, y, width, height) in it. Times are `time.monotonic`."""

    def __init__(self, server_name, size, place):
        self._size, self._place = size, place
        self._changes = []
        self._brightened = []
        self._unpainted = self._dark = None  # a window on its way to its first frame, and to its first bright spot
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
                    self._unpainted = self._dark = event.window
                elif event.type == self._display.extension_event.DamageNotify:
                    self._note(event.drawable, now)
        except (error.ConnectionClosedError, OSError, ValueError):
            pass  # the session has ended

    def _note(self, window, now):
        if window == self._unpainted:
            if not self._is_clear(window):
                return
            self._unpainted = None
        with self._lock:
            self._changes.append(now)
        if window == self._dark and self._is_bright(window):
            self._dark = None
            with self._lock:
                self._brightened.append(now)

    def _is_clear(self, window):
        """Whether its corner is transparent: a window starts with the pixels that it covers, and they are opaque."""
        return window.get_image(0, self._size[1] - 1, 1, 1, X.ZPixmap, 0xFFFFFFFF).data[3] == 0

    def _is_bright(self, window):
        return max(window.get_image(*self._place, X.ZPixmap, 0x00FFFFFF).data) > 200

    def brightened(self, since):
        with self._lock:
            return next((moment for moment in self._brightened if moment >= since), None)

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
