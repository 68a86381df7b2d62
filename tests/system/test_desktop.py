"""What a desktop does to the island: screens, compositors, full-screen windows, no buses."""

import os
import time
import unittest

from harness.buses import DesktopSettings
from harness.case import SystemTest
from harness.peer import Peer
from harness.processes import wait_until
from harness.session import Program, Session


class Screen(SystemTest):
    DESKTOP = {"size": (1920, 1080)}  # a virtual screen grows no larger than it began

    def tearDown(self):
        self.screen.resize(1920, 1080, self.session.environment)

    def test_the_island_stands_at_the_top_centre_eight_below_the_edge(self):
        self.assertEqual(self.island.place, (490, 8, 940, 300))

    def test_the_island_follows_a_change_of_the_screens_size(self):
        for width, height in ((1280, 800), (1024, 768), (1920, 1080)):
            self.screen.resize(width, height, self.session.environment)
            wait_until(lambda: self.island.place == ((width - 940) // 2, 8, 940, 300), f"the island at {width}x{height}")
            wait_until(self.island.is_closed, "the island to be drawn there")

    def test_after_a_change_of_the_screens_size_hover_opens_where_the_island_is_now(self):
        self.screen.resize(1024, 768, self.session.environment)
        wait_until(lambda: self.island.place[0] == 42, "the island to move")
        self.pointer.move(*self.island.centre)
        wait_until(self.island.is_open, "the island to open")


class TwoDisplays(SystemTest):
    """A second display, 1024 wide, to the right of the first of 1280."""

    DESKTOP = {"touchpad": True}
    STARTED = False
    FIRST, SECOND = (170, 8, 940, 300), (1280 + 42, 8, 940, 300)

    def setUp(self):
        super().setUp()
        self.plug_in()
        self.addCleanup(self.unplug)

    def plug_in(self):
        self.screen.plug_in(self.session.environment)

    def unplug(self):
        self.screen.unplug(self.session.environment)

    def start(self, **preferences):
        self.program.prefer(**preferences)
        self.program.start()

    def stands(self, place):
        wait_until(lambda: self.island.place == place, f"the island at {place}")
        wait_until(self.island.is_closed, "the island to be drawn there")

    def test_an_island_that_is_to_choose_stays_on_the_main_display(self):
        self.start()
        self.stands(self.FIRST)
        self.unplug()
        self.plug_in()
        self.stands(self.FIRST)

    def test_the_island_stands_on_the_display_that_was_chosen_and_opens_there(self):
        self.start(selectedDisplayName=self.screen.SECOND_DISPLAY)
        self.stands(self.SECOND)
        self.pointer.move(*self.island.centre)
        wait_until(self.island.is_open, "the island to open")

    def test_an_island_whose_display_goes_comes_to_another_and_returns_with_it(self):
        self.start(selectedDisplayName=self.screen.SECOND_DISPLAY)
        self.stands(self.SECOND)
        self.unplug()
        self.stands(self.FIRST)
        self.plug_in()
        self.stands(self.SECOND)


class Scaled(SystemTest):
    """Two pixels for a point."""

    DESKTOP = {"size": (2560, 1440)}
    SCALE = 2

    def setUp(self):
        super().setUp()
        self.below = self.keep(Peer(self.screen, 0, 0, self.screen.size[0], 900))

    def test_the_island_has_its_size_in_points(self):
        wait_until(self.island.is_closed, "the closed island")
        self.assertEqual(self.island.place, (340, 16, 1880, 600))

    def test_clicks_fall_through_beside_the_shape_and_not_on_it(self):
        for offset in ((-134, 20), (134, 20), (0, 42), (-400, 250)):
            self.below.expect_click(*self.island.point(*offset))
        for offset in ((0, 20), (-112, 20), (112, 20)):
            self.below.expect_no_click(*self.island.point(*offset))
            wait_until(self.island.is_closed, "the island to be closed again")

    def test_hover_opens_up_to_the_corner_of_the_closed_shape(self):
        self.pointer.move(*self.island.point(128, 34))
        wait_until(self.island.is_open, "the island to open")


class OtherWindows(SystemTest):
    def test_the_island_stands_over_a_full_screen_window_and_opens_there(self):
        film = self.keep(Peer(self.screen, 0, 0, 640, 480, full_screen=True))
        wait_until(lambda: film.place() == (0, 0, *self.screen.size), "the window to fill the screen")
        wait_until(self.island.is_closed, "the island over the window")
        self.pointer.move(*self.island.centre)
        wait_until(self.island.is_open, "the island to open over the window")
        self.away()
        wait_until(self.island.is_closed, "the island to close")
        wait_until(film.has_focus, "the full-screen window to have the keyboard again")

    def test_a_window_that_comes_later_does_not_cover_the_island(self):
        self.keep(Peer(self.screen, 200, 0, 800, 600))
        wait_until(self.island.is_closed, "the island over the window")

    def test_the_island_is_on_every_workspace(self):
        self.addCleanup(self.screen.go_to_workspace, 0)
        self.screen.go_to_workspace(1)
        wait_until(self.island.is_closed, "the island on the second workspace")
        self.pointer.move(*self.island.centre)
        wait_until(self.island.is_open, "the island to open there")

    def test_the_island_is_no_entry_of_the_task_bar_or_the_pager(self):
        self.assertNotIn(self.program.window.id, self.listed() - self.skipped())

    def test_the_window_manager_never_gets_to_close_the_island(self):
        self.keep(Peer(self.screen, 100, 420, 500, 250))
        self.keyboard.tap("F4", modifiers=("Alt_L",))
        self.assertEqual(len(self.program.panels()), 1)

    def listed(self):
        return set(self.screen.property_of(self.screen.root, "_NET_CLIENT_LIST") or [])

    def skipped(self):
        """The clients that asked to be left out."""
        wanted = {self.screen.connection.intern_atom(f"_NET_WM_STATE_SKIP_{bar}") for bar in ("TASKBAR", "PAGER")}

        def states(client):
            window = self.screen.connection.create_resource_object("window", client)
            return set(self.screen.property_of(window, "_NET_WM_STATE") or [])
        return {client for client in self.listed() if wanted <= states(client)}


class NoCompositor(SystemTest):
    DESKTOP = {"compositor": False}

    def setUp(self):
        super().setUp()
        width, _ = self.screen.size
        self.below = self.keep(Peer(self.screen, 0, 0, width, 500))

    def beside(self):
        """Whether the window below can be seen beside the closed island."""
        spots = [self.island.point(*offset) for offset in ((-200, 20), (200, 20), (0, 80), (-400, 250), (128, 30))]
        picture = self.screen.picture()
        return all(picture.at(*spot) == (0xD8, 0xC2, 0x7A) for spot in spots)

    def test_without_a_compositor_the_window_is_cut_to_the_shape(self):
        wait_until(self.island.is_closed, "the island")
        wait_until(self.beside, "the window below beside the island")

    def test_without_a_compositor_the_island_opens_and_closes(self):
        self.pointer.move(*self.island.centre)
        wait_until(self.island.is_open, "the island to open")
        self.away()
        wait_until(self.island.is_closed, "the island to close")
        wait_until(self.beside, "the window below beside the island")


class CompositorComesAndGoes(SystemTest):
    def test_the_island_is_right_before_and_after_the_compositor_is_killed_and_started(self):
        below = self.keep(Peer(self.screen, 0, 0, self.screen.size[0], 500))
        far = self.island.point(-400, 250)

        def clean():
            return self.island.is_closed() and self.screen.picture().at(*far) == (0xD8, 0xC2, 0x7A)
        wait_until(clean, "the window below beside the island")
        self.session.stop_compositor()
        wait_until(clean, "the window below without a compositor")
        self.session.start_compositor()
        wait_until(clean, "the window below with a new compositor")
        below.expect_click(*far)
        self.pointer.move(*self.island.centre)
        wait_until(self.island.is_open, "the island to open")


class ReducedMotion(SystemTest):
    """The desktop's wish for fewer animations, at the start and while the program runs."""

    STARTED = False
    QUICK = 0.22  # seconds; the spring takes half as long again, the plain movement half of it

    def setUp(self):
        super().setUp()
        self.settings = self.keep(DesktopSettings(self.session.folder, self.session.environment,
                                                  self.session.session_bus))

    def opening_time(self):
        """From the first change of the picture to the last."""
        self.pointer.move(*self.island.centre)
        wait_until(self.island.is_opening, "the island to begin to open")
        began = time.monotonic()
        wait_until(self.island.is_open, "the island to open")
        taken = time.monotonic() - began
        self.away()
        wait_until(self.island.is_closed, "the island to close")
        return taken

    def test_a_desktop_without_animations_opens_the_island_quickly(self):
        self.settings.start(animations=False)
        self.program.start()
        wait_until(lambda: self.opening_time() < self.QUICK, "a quick opening")

    def test_the_wish_is_followed_while_running(self):
        self.settings.start(animations=True)
        self.program.start()
        self.assertGreater(self.opening_time(), self.QUICK)
        self.settings.animate(False)
        wait_until(lambda: self.opening_time() < self.QUICK, "a quick opening")
        self.settings.animate(True)
        wait_until(lambda: self.opening_time() > self.QUICK, "an opening with the spring")


class NoBuses(unittest.TestCase):
    def test_without_any_bus_the_island_opens_and_closes(self):
        with Session(buses=False) as session:
            program = Program(session, os.environ["VELMORA_PROGRAM"])
            self.addCleanup(program.end)
            program.start()
            session.pointer.move(*program.island.centre)
            wait_until(program.island.is_open, "the island to open")
            session.pointer.move(640, 740)
            wait_until(program.island.is_closed, "the island to close")


if __name__ == "__main__":
    unittest.main()
