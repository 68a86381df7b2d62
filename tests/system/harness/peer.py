"""Another program's window: it keeps what reaches it, so that a test can say what went below the island."""

import os

from Xlib import X, XK, Xatom, Xutil, display

from .processes import wait_until


class Peer:
    """A plain window on a connection of its own, which is what another program is to an X server."""

    def __init__(self, server, x, y, width, height, full_screen=False, title="Editor", color="#d8c27a"):
        self._server = server
        self._display = display.Display(server.name)
        screen = self._display.screen()
        pixel = screen.default_colormap.alloc_named_color(color).pixel
        self.window = screen.root.create_window(
            x, y, width, height, 0, screen.root_depth, background_pixel=pixel,
            event_mask=X.ButtonPressMask | X.KeyPressMask | X.FocusChangeMask | X.StructureNotifyMask)
        self.window.set_wm_name(title)
        self.window.set_wm_class("editor", "Editor")
        self.window.set_wm_hints(flags=Xutil.InputHint | Xutil.StateHint, input=1, initial_state=Xutil.NormalState)
        self.window.set_wm_normal_hints(flags=Xutil.USPosition | Xutil.PPosition)
        self._set("_NET_WM_PID", Xatom.CARDINAL, [os.getpid()])
        if full_screen:
            self._set("_NET_WM_STATE", Xatom.ATOM, [self._display.intern_atom("_NET_WM_STATE_FULLSCREEN")])
        self.window.map()
        self.presses, self.keys, self.wheel, self.focused = [], "", 0, False
        wait_until(self.has_focus, f"the window '{title}' to come up with the keyboard")

    def has_focus(self):
        self.look()
        return self.focused

    def look(self):
        """Takes in what has happened since the last look."""
        self._display.sync()
        while self._display.pending_events():
            event = self._display.next_event()
            if event.type == X.ButtonPress and event.detail in (4, 5, 6, 7):
                self.wheel += 1
            elif event.type == X.ButtonPress:
                self.presses.append((event.root_x, event.root_y))
            elif event.type == X.KeyPress:
                self.keys += XK.keysym_to_string(self._display.keycode_to_keysym(event.detail, 0)) or "?"
            elif event.type in (X.FocusIn, X.FocusOut) and event.mode in (X.NotifyNormal, X.NotifyWhileGrabbed):
                self.focused = event.type == X.FocusIn
        return self

    def expect_click(self, x, y):
        """Clicks there and waits for it to arrive. One by one: a window manager that looks at each press before it
        passes it on mixes up the places of presses that come faster than it looks."""
        before = len(self.look().presses)
        self._server.pointer.click(x, y)
        wait_until(lambda: self.look().presses[before:] == [(x, y)], f"a click at {x}, {y} to reach the window")

    def expect_no_click(self, x, y):
        """Clicks there, and then where it must arrive: nothing may have come before."""
        before = len(self.look().presses)
        self._server.pointer.click(x, y)
        left, top, width, height = self.place()
        last = (left + 30, top + height - 20)
        self._server.pointer.click(*last)
        wait_until(lambda: len(self.look().presses) > before, "the last click to reach the window")
        if self.presses[before:] != [last]:
            raise AssertionError(f"a click at {x}, {y} went through")

    def place(self):
        return self._server.place(self._server.connection.create_resource_object("window", self.window.id))

    def close(self):
        self._display.close()

    def _set(self, name, kind, values):
        self.window.change_property(self._display.intern_atom(name), kind, 32, values)
