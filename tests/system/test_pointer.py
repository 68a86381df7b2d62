"""The island under the pointer: opening, closing, and letting clicks through."""

import time
import unittest

from harness.case import SystemTest
from harness.peer import Peer
from harness.processes import holds, wait_until

PATIENT = {"hoverDelay": 0.6, "collapseDelay": 0.6}  # long enough to be told from the machine's own slowness


class Hover(SystemTest):
    PREFERENCES = PATIENT

    def test_the_pointer_resting_on_the_island_opens_it_after_the_delay(self):
        self.pointer.move(*self.island.centre)
        entered = time.monotonic()
        wait_until(self.island.is_opening, "the island to begin to open")
        self.assertGreaterEqual(time.monotonic() - entered, 0.6)
        wait_until(self.island.is_open, "the island to open")

    def test_the_pointer_passing_over_the_island_does_not_open_it(self):
        self.pointer.glide(*self.island.centre, seconds=0.2)
        self.away()
        holds(self.island.is_closed, "a closed island", 1.2)

    def test_a_pointer_that_leaves_the_open_island_closes_it_after_the_delay(self):
        self.pointer.move(*self.island.centre)
        wait_until(self.island.is_open, "the island to open")
        left = time.monotonic()
        self.away()
        wait_until(lambda: not self.island.is_open(), "the island to begin to close")
        self.assertGreaterEqual(time.monotonic() - left, 0.6)
        wait_until(self.island.is_closed, "the island to close")

    def test_a_pointer_that_comes_back_in_time_keeps_the_island_open(self):
        self.pointer.move(*self.island.centre)
        wait_until(self.island.is_open, "the island to open")
        self.away()
        self.pointer.move(*self.island.point(200, 200))
        holds(self.island.is_open, "an open island", 1.2)

    def test_hover_opens_up_to_the_edge_of_the_closed_island_and_not_beside_it(self):
        self.pointer.move(*self.island.point(135, 20))
        holds(self.island.is_closed, "a closed island", 1.0)
        self.pointer.move(*self.island.point(125, 20))
        wait_until(self.island.is_open, "the island to open")


class HoverSwitchedOff(SystemTest):
    PREFERENCES = {"openOnHover": False}

    def test_with_hover_switched_off_only_a_click_opens(self):
        self.pointer.move(*self.island.centre)
        holds(self.island.is_closed, "a closed island", 0.8)
        self.pointer.click()
        wait_until(self.island.is_open, "the island to open")


class Clicks(SystemTest):
    def setUp(self):
        super().setUp()
        width, _ = self.screen.size
        self.below = self.keep(Peer(self.screen, 0, 0, width, 500))

    def open(self):
        self.pointer.move(*self.island.centre)
        wait_until(self.island.is_open, "the island to open")

    def test_a_click_just_outside_the_closed_shape_reaches_the_window_below(self):
        for offset in ((-134, 20), (134, 20), (0, 42), (-400, 20), (300, 250)):
            self.below.expect_click(*self.island.point(*offset))

    def test_a_click_inside_the_closed_shape_does_not_reach_the_window_below(self):
        for offset in ((0, 20), (-110, 20), (110, 20), (0, 36)):
            self.below.expect_no_click(*self.island.point(*offset))
            wait_until(self.island.is_closed, "the island to close")

    def test_a_click_inside_the_open_shape_does_not_reach_the_window_below(self):
        for offset in ((-430, 150), (430, 150), (0, 295)):
            self.open()
            self.below.expect_no_click(*self.island.point(*offset))
            wait_until(self.island.is_closed, "the island to close")

    def test_a_click_beside_the_open_shape_reaches_the_window_below_and_closes_the_island(self):
        self.open()
        self.below.expect_click(*self.island.point(0, 320))
        wait_until(self.island.is_closed, "the island to close")

    def test_a_click_beside_the_shoulders_of_the_open_shape_reaches_the_window_below(self):
        self.open()
        self.below.expect_click(*self.island.point(-462, 200))

    def test_after_closing_the_area_of_the_open_island_lets_clicks_through_again(self):
        self.open()
        self.away()
        wait_until(self.island.is_closed, "the island to close")
        self.below.expect_click(*self.island.point(-300, 150))


class OutsideClick(SystemTest):
    PREFERENCES = {"collapseDelay": 60.0}

    def test_a_click_elsewhere_closes_at_once_without_the_delay(self):
        self.pointer.move(*self.island.centre)
        wait_until(self.island.is_open, "the island to open")
        self.away()
        holds(self.island.is_open, "an open island", 0.5)
        self.pointer.click()
        wait_until(self.island.is_closed, "the island to close")


if __name__ == "__main__":
    unittest.main()
