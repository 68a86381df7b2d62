"""The whole island, read and worked through the accessibility bus."""

import re
import unittest

from harness.case import SystemTest
from harness.processes import wait_until


class Reading(SystemTest):
    def open(self):
        self.pointer.move(*self.island.centre)
        wait_until(self.island.is_open, "the island to open")

    def test_the_closed_island_says_what_it_shows(self):
        self.program.element(re.compile("80%"))
        self.session.power.unplug()
        self.addCleanup(self.session.power.plug)
        said = self.program.element(re.compile("On Battery"))
        self.assertIn("80%", said.name + said.description)

    def test_the_closed_island_can_be_opened(self):
        self.session.reader.press(self.program.pid, self.program.element("Velmora", "push button"))
        wait_until(self.island.is_open, "the island to open")

    def test_the_sidebar_has_its_tabs_with_name_role_and_state(self):
        self.open()
        media = self.program.element("Media", "page tab")
        self.assertIn("selected", media.states)
        for name in ("Shelf", "Calculator"):
            tab = self.program.element(name, "page tab")
            self.assertNotIn("selected", tab.states)
            self.assertIn("Press", tab.actions)
        self.assertIsNone(self.program.tree().find("AI", "page tab"), "a hidden tab")

    def test_a_tab_is_selected_by_its_action(self):
        self.open()
        self.session.reader.press(self.program.pid, self.program.element("Calculator", "page tab"))
        wait_until(lambda: "selected" in self.program.element("Calculator", "page tab").states, "the tab to be selected")

    def test_the_status_bar_says_the_time_and_the_charge(self):
        self.open()
        self.program.element(re.compile(r"\b\d{1,2}:\d{2}\b"))
        self.program.element(re.compile("80%"))

    def test_every_element_that_can_be_pressed_has_a_name(self):
        self.open()
        self.program.element("Shelf", "page tab")
        nameless = [node for node in self.program.tree().walk() if "Press" in node.actions and not node.name]
        self.assertEqual(nameless, [])

    def test_closing_takes_the_open_island_out_of_the_tree(self):
        self.open()
        self.program.element("Shelf", "page tab")
        self.away()
        wait_until(self.island.is_closed, "the island to close")
        wait_until(lambda: (tree := self.program.tree()) and not tree.find("Shelf", "page tab"), "the tabs to go")


class SwitchedOn(SystemTest):
    """The program asks whether there are assistive tools, as it does on a person's desktop."""

    STARTED = False

    def test_tools_that_are_on_find_the_island_at_every_start(self):
        del self.program.environment["QT_LINUX_ACCESSIBILITY_ALWAYS_ON"]
        for _ in range(4):
            self.program.start()
            self.program.element("Velmora", "push button")
            self.program.end()


if __name__ == "__main__":
    unittest.main()
