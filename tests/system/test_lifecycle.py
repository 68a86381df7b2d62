"""Starts, second starts, violent ends, and the ways in from outside: menu, bus, login item."""

import unittest

from harness.case import SystemTest
from harness.display import XServer
from harness.processes import command_line, holds, wait_until
from harness.session import Program

BUS_NAME = "com.brindle.app"


class Toggle(SystemTest):
    def test_the_bus_action_opens_and_closes(self):
        self.session.session_bus.wait_for(BUS_NAME)
        self.program.action("toggle")
        wait_until(self.island.is_open, "the island to open")
        self.program.action("toggle")
        wait_until(self.island.is_closed, "the island to close")

    def test_an_unknown_bus_action_changes_nothing(self):
        self.session.session_bus.wait_for(BUS_NAME)
        try:
            self.program.action("explode")
        except Exception as refused:
            self.assertIn("org.freedesktop.DBus.Error", str(refused))
        holds(self.island.is_closed, "a closed island", 0.5)

    def test_the_menu_opens_the_island(self):
        self.open_menu()
        self.click(self.entry("Toggle Island"))
        wait_until(self.island.is_open, "the island to open")

    def test_the_menu_has_its_entries_and_its_shortcuts(self):
        self.open_menu()
        self.entry("Toggle Island")
        self.entry("Quit Velmora")
        self.keyboard.tap("Escape")

    def test_the_quit_entry_ends_the_program_in_order(self):
        self.open_menu()
        self.click(self.entry("Quit Velmora"))
        self.assertEqual(self.program.process.wait(), 0)

    def open_menu(self):
        self.session.reader.follow()
        icon = wait_until(self.icon, "the status icon in the tray")
        x, y, width, height = self.screen.place(icon)
        self.pointer.click(x + width // 2, y + height // 2, button=3)
        wait_until(self.menu, "the menu")

    def entry(self, name):
        """Goes through the menu until this entry has the keyboard."""
        def go():
            self.keyboard.tap("Down")
            node = self.session.reader.focused(self.program.pid)
            return node if node and (node.role, node.name) == ("menu item", name) else None
        return wait_until(go, f"the entry '{name}'")

    def click(self, node):
        x, y, width, height = node.place
        self.pointer.click(x + width // 2, y + height // 2)

    def menu(self):
        """The window of the menu that is open."""
        island = self.program.window.id

        def is_open(window):
            geometry = window.get_geometry()
            return window.id != island and geometry.width > 100 and window.get_attributes().map_state == 2
        return next((window for window in self.screen.windows(self.program.pid) if is_open(window)), None)

    def icon(self):
        def small(window):
            geometry, attributes = window.get_geometry(), window.get_attributes()
            return geometry.width <= 64 and geometry.height <= 64 and geometry.width > 4 and attributes.map_state == 2
        return next((window for window in self.screen.windows(self.program.pid) if small(window)), None)


class SecondStart(SystemTest):
    def test_a_second_start_ends_by_itself_and_makes_no_second_island(self):
        self.session.session_bus.wait_for(BUS_NAME)
        second = Program(self.session, self.program.path, "second")
        self.addCleanup(second.end)
        second.launch()
        self.assertEqual(second.process.wait(), 0)
        self.assertEqual(len(self.program.panels()), 1)
        self.assertIsNone(self.program.process.returncode)

    def test_after_the_first_has_gone_a_new_start_is_the_island(self):
        self.program.kill()
        self.session.session_bus.wait_for(BUS_NAME, owned=False)
        self.program.start()
        self.session.session_bus.wait_for(BUS_NAME)
        wait_until(self.island.is_closed, "the island")


class Killed(SystemTest):
    PREFERENCES = {"collapsedWidth": 300.0, "weatherOptInMigrationVersion": 0}

    def test_after_a_kill_the_settings_are_intact(self):
        wait_until(lambda: self.island.is_closed(300), "an island of the stored width")
        wait_until(lambda: "showMediaWeather" in self.program.preferences(), "a write of its own")
        self.program.kill()
        kept = self.program.preferences()
        self.assertEqual(kept["collapsedWidth"], 300.0)
        self.program.start()
        wait_until(lambda: self.island.is_closed(300), "an island of the stored width")

    def test_kills_at_the_moment_of_writing_never_leave_half_a_file(self):
        for _ in range(6):
            self.program.kill()
            self.program.prefer(**self.PREFERENCES)
            before = self.program.defaults_file.read_bytes()
            self.program.launch()
            wait_until(lambda: self.program.defaults_file.read_bytes() != before, "the file to change")
            self.program.kill()
            self.assertEqual(self.program.preferences()["collapsedWidth"], 300.0)

    def test_a_file_that_is_no_json_is_set_aside_and_not_lost(self):
        self.program.kill()
        self.program.defaults_file.write_text("{ half a fi")
        self.program.start()
        wait_until(self.island.is_closed, "an island of the default width")
        aside = [path for path in self.program.defaults_file.parent.iterdir() if path != self.program.defaults_file]
        self.assertIn("{ half a fi", [path.read_text() for path in aside])


class LoginItem(SystemTest):
    def entries(self):
        folder = self.program.config / "autostart"
        return list(folder.glob("*.desktop")) if folder.exists() else []

    def test_the_first_launch_registers_the_program_to_start_with_the_session(self):
        entry, = wait_until(self.entries, "an autostart entry")
        text = entry.read_text()
        self.assertIn("[Desktop Entry]", text)
        self.assertIn(str(self.program.path), text)
        wait_until(lambda: (self.program.preferences() or {}).get("launchAtLoginDefaultConfigured") is True,
                   "the registration to be noted")

    def test_an_entry_that_the_user_has_removed_does_not_come_back(self):
        entry, = wait_until(self.entries, "an autostart entry")
        wait_until(lambda: (self.program.preferences() or {}).get("launchAtLoginDefaultConfigured") is True,
                   "the registration to be noted")
        self.program.kill()
        entry.unlink()
        self.program.start()
        holds(lambda: not self.entries(), "no autostart entry", 1.0)


class NoDisplay(SystemTest):
    STARTED = False

    def test_a_start_without_a_display_says_so_and_ends(self):
        self.program.launch(DISPLAY=":4321")
        self.assertEqual(self.program.process.wait(), 1)
        self.assertTrue(self.program.process.output.endswith("velmora: no display here to show the island on\n"))

    def test_a_program_whose_display_goes_ends_and_takes_the_adapter_along(self):
        display = self.keep(XServer(self.session.folder, self.session.environment))
        self.program.launch(DISPLAY=display.name)
        adapters = wait_until(self.program.adapters, "the adapter to run")
        display.kill()
        self.assertEqual(self.program.process.wait(), 1)
        wait_until(lambda: not any(map(command_line, adapters)), "the adapter to end")


class Ends(SystemTest):
    def test_the_end_of_the_session_ends_the_program_in_order(self):
        self.program.process.end()
        self.assertIn(self.program.process.returncode, (0, -15))
        self.assertEqual(self.screen.windows(self.program.pid), [])


if __name__ == "__main__":
    unittest.main()
