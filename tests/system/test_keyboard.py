"""Keys and scrolls in the open island, and who has the keyboard when."""

import unittest

from harness.case import SystemTest
from harness.peer import Peer
from harness.processes import holds, wait_until

SIDEBAR = -430  # its middle, from the island's
TABS = ["Media", "Shelf", "Calculator"]


class OpenIsland(SystemTest):
    """With a way to ask which tab is selected."""

    def open(self):
        self.pointer.move(*self.island.centre)
        wait_until(self.island.is_open, "the island to open")
        self.expect_tab("Media")

    def selected(self):
        """The one tab that says so; a reading in the middle of a change finds none, and is repeated."""
        return wait_until(self.reading, "one tab to be selected")

    def reading(self):
        tree = self.program.tree()
        tabs = [node for node in tree.walk() if node.name in TABS and node.role == "page tab"] if tree else []
        chosen = [node.name for node in tabs if "selected" in node.states]
        return chosen[0] if len(chosen) == 1 else None

    def expect_tab(self, name, seconds=10.0):
        wait_until(lambda: self.selected() == name, f"the tab '{name}' to be selected", seconds)


class Focus(OpenIsland):
    def setUp(self):
        super().setUp()
        self.editor = self.keep(Peer(self.screen, 100, 420, 500, 250))

    def test_typing_goes_back_to_the_other_window_after_closing(self):
        self.keyboard.type("ab")
        self.open()
        wait_until(lambda: not self.editor.has_focus(), "the island to take the keyboard")
        self.keyboard.type("x")
        self.away()
        wait_until(self.island.is_closed, "the island to close")
        wait_until(self.editor.has_focus, "the editor to have the keyboard again")
        self.keyboard.type("cd")
        self.assertEqual(self.editor.look().keys, "abcd")

    def test_the_closed_island_takes_no_keys(self):
        self.keyboard.type("a")
        self.keyboard.tap("Down")
        self.keyboard.type("b")
        self.assertEqual(self.editor.look().keys, "a?b")

    def test_after_an_outside_click_the_clicked_window_has_the_keyboard(self):
        self.open()
        x, y, width, height = self.editor.place()
        self.pointer.click(x + width // 2, y + height // 2)
        wait_until(self.island.is_closed, "the island to close")
        wait_until(self.editor.has_focus, "the editor to have the keyboard")
        self.keyboard.type("z")
        self.assertEqual(self.editor.look().keys, "z")


class Keys(OpenIsland):
    def test_down_and_up_walk_through_the_tabs_and_wrap(self):
        self.open()
        for name in ("Shelf", "Calculator", "Media"):
            self.keyboard.tap("Down")
            self.expect_tab(name)
        for name in ("Calculator", "Shelf", "Media"):
            self.keyboard.tap("Up")
            self.expect_tab(name)

    def test_an_arrow_with_a_modifier_does_nothing(self):
        self.open()
        self.keyboard.tap("Down", modifiers=("Shift_L",))
        self.keyboard.tap("Down")
        self.expect_tab("Shelf")

    def test_a_click_on_a_tab_selects_it(self):
        self.open()
        for name in ("Calculator", "Shelf", "Media"):
            self.pointer.click(*self.program.middle_of(name, "page tab"))
            self.expect_tab(name)


class Wheel(OpenIsland):
    def test_every_second_notch_over_the_sidebar_steps_a_tab(self):
        self.open()
        self.pointer.move(*self.island.point(SIDEBAR, 150))
        self.pointer.wheel(2)
        self.expect_tab("Shelf")
        self.pointer.wheel(2)
        self.expect_tab("Calculator")
        self.pointer.wheel(-2)
        self.expect_tab("Shelf")

    def test_a_wheel_over_the_content_steps_no_tab(self):
        self.open()
        self.pointer.move(*self.island.point(100, 200))
        self.pointer.wheel(4)
        holds(lambda: self.selected() == "Media", "the media tab", 0.5)


class Touchpad(OpenIsland):
    """Small smooth scrolls of a device that counts in fractions of a notch; the X server tells no phases."""

    DESKTOP = {"touchpad": True}

    def setUp(self):
        super().setUp()
        self.open()
        self.pointer.move(*self.island.point(SIDEBAR, 150))
        self.screen.touchpad.move(1, 1)  # from here on it is this device that the pointer belongs to

    def swipe(self, horizontal, vertical, name):
        """A machine that stalls in the middle makes two short swipes of one, which step nothing: so once more."""
        before = self.selected()
        for _ in range(3):
            self.screen.touchpad.scroll(horizontal, vertical)
            try:
                return self.expect_tab(name, seconds=2)
            except AssertionError:
                if self.selected() != before:
                    raise
        raise AssertionError(f"no swipe selected '{name}'")

    def test_a_smooth_scroll_over_the_sidebar_steps_a_tab_per_swipe(self):
        for name, distance in (("Shelf", 120), ("Calculator", 120), ("Shelf", -120)):
            self.swipe(0, distance, name)

    def test_a_sideways_scroll_steps_tabs_too(self):
        self.swipe(120, 0, "Shelf")

    def test_a_smooth_scroll_short_of_a_step_selects_nothing(self):
        self.screen.touchpad.scroll(0, 80)
        holds(lambda: self.selected() == "Media", "the media tab", 0.5)


if __name__ == "__main__":
    unittest.main()
