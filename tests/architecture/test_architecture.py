"""The rules of the house, held against the sources, and against samples that must fail."""

import tempfile
import unittest
from pathlib import Path

import bans
import layering

ROOT = Path(__file__).resolve().parents[2]


class Sample(unittest.TestCase):
    """A throw-away tree of sources, written by the test."""

    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.root = Path(folder.name)

    def write(self, name, text=""):
        path = self.root / name
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_text(text, encoding="utf-8")


class ThisProject(unittest.TestCase):
    def holds(self, complaints):
        self.assertFalse(complaints, "\n" + "\n".join(complaints))

    def test_no_room_knows_a_room_above_it(self):
        self.holds(layering.violations(ROOT))

    def test_nothing_banned_stands_in_the_sources(self):
        self.holds(bans.violations(ROOT))


class Layering(Sample):
    def complaint(self):
        complaints = layering.violations(self.root)
        self.assertEqual(len(complaints), 1, complaints)
        return complaints[0]

    def test_allowed_arrows_are_silent(self):
        self.write("src/foundation/Scheduler.h")
        self.write("src/platform/Screens.h", '#include "foundation/Scheduler.h"\n#include <QObject>\n')
        self.write("src/platform/linux/LinuxScreens.cpp", '#include "platform/Screens.h"\n#include "moc_x.cpp"\n')
        self.write("src/app/main.cpp", '#include "platform/linux/LinuxScreens.cpp"\n')
        self.assertEqual(layering.violations(self.root), [])

    def test_an_arrow_upward_names_place_rooms_and_mend(self):
        self.write("src/media/Player.h")
        self.write("src/foundation/Json.h", '\n#include "media/Player.h"\n')
        complaint = self.complaint()
        self.assertIn("src/foundation/Json.h:2: foundation must not know media", complaint)
        self.assertIn("Mend: ", complaint)

    def test_one_service_does_not_know_another(self):
        self.write("src/shelf/Shelf.h")
        self.write("src/media/Player.h", '#include "shelf/Shelf.h"\n')
        self.assertIn("media must not know shelf", self.complaint())

    def test_only_app_knows_a_concrete_platform(self):
        self.write("src/platform/linux/UPower.h")
        self.write("src/activities/Battery.cpp", "#include <platform/linux/UPower.h>\n")
        self.assertIn("only src/app names concrete platform classes", self.complaint())

    def test_one_platform_does_not_know_another(self):
        self.write("src/platform/fake/Fake.h")
        self.write("src/platform/linux/Real.cpp", '#include "../fake/Fake.h"\n')
        self.assertIn("linux must not know fake", self.complaint())

    def test_the_container_is_a_room_of_its_own(self):
        self.write("src/media/Player.h")
        self.write("src/core/AppContainer.h", '#include "media/Player.h"\n')
        self.assertEqual(layering.violations(self.root), [])
        self.write("src/core/SettingsStore.h", '#include "AppContainer.h"\n')
        self.assertIn("core must not know container", self.complaint())

    def test_a_service_does_not_know_the_container(self):
        self.write("src/core/AppContainer.h")
        self.write("src/media/Player.cpp", '#include "core/AppContainer.h"\n')
        self.assertIn("name the services you need in your constructor", self.complaint())

    def test_a_qml_import_is_an_arrow(self):
        self.write("src/island/CMakeLists.txt", "brindle_qml_library(island URI Brindle.Island)\n")
        self.write("src/ui/Card.qml", "import QtQuick\nimport Brindle.Island\n")
        self.assertIn("src/ui/Card.qml:2: ui must not know island", self.complaint())

    def test_a_relative_qml_import_is_an_arrow(self):
        self.write("src/media/Row.qml")
        self.write("src/ui/Card.qml", 'import "../media"\n')
        self.assertIn("ui must not know media", self.complaint())

    def test_an_unknown_qml_module_is_told(self):
        self.write("src/ui/Card.qml", "import Brindle.Nowhere\n")
        self.assertIn("Brindle.Nowhere? is in no room", self.complaint())

    def test_a_folder_without_a_room_is_told(self):
        self.write("src/cellar/Wine.h")
        self.assertIn("no room has this folder", self.complaint())

    def test_nothing_in_src_knows_the_tests(self):
        self.write("tests/support/Help.h")
        self.write("src/app/main.cpp", '#include "../../tests/support/Help.h"\n')
        self.assertIn("is in no room of the house", self.complaint())

    def test_the_adapter_knows_the_foundation_and_how_to_read_messages(self):
        self.write("src/foundation/Scheduler.h")
        self.write("src/platform/linux/dbus/BusMessages.h")
        self.write("adapter/linux/Player.h")
        self.write("adapter/linux/Player.cpp", '#include "adapter/linux/Player.h"\n#include "foundation/Scheduler.h"\n'
                                               '#include "platform/linux/dbus/BusMessages.h"\n')
        self.assertEqual(layering.violations(self.root), [])
        self.write("src/platform/Screens.h")
        self.write("adapter/linux/Players.cpp", '#include "platform/Screens.h"\n')
        self.assertIn("adapter must not know ports", self.complaint())

    def test_the_program_does_not_know_the_adapter(self):
        self.write("adapter/linux/Player.h")
        self.write("src/app/main.cpp", '#include "adapter/linux/Player.h"\n')
        self.assertIn("the adapter is another process", self.complaint())

    def test_files_that_include_each_other_are_told_once(self):
        self.write("src/media/A.h", '#include "media/B.h"\n')
        self.write("src/media/B.h", '#include "C.h"\n')
        self.write("src/media/C.h", '#include "A.h"\n')
        self.assertIn("src/media/A.h -> src/media/B.h -> src/media/C.h -> src/media/A.h", self.complaint())


class Bans(Sample):
    # What must be found, and where. The words are cut so that this file holds none of them.
    FOUND = (
        ("src/media/A.cpp", "Q" "Timer timer;"),
        ("tests/unit/A.cpp", "Q" "Timer::singleShot(0, f);"),
        ("src/media/A.cpp", "std::this_thread::" "sleep_for(1s);"),
        ("tests/unit/A.cpp", "QTest::q" "Wait(10);"),
        ("src/media/A.cpp", "QThread::m" "sleep(10);"),
        ("src/media/A.cpp", "auto now = std::chrono::steady_" "clock::now();"),
        ("src/media/A.cpp", "QDateTime::" "currentDateTimeUtc()"),
        ("tests/unit/A.cpp", "QElapsed" "Timer since;"),
        ("src/media/A.h", "QElapsed" "Timer m_since;"),
        ("src/media/A.h", "#if defined(Q_" "OS_LINUX)"),
        ("src/media/A.h", "#ifdef __linux" "__"),
        ("src/media/A.cpp", "q" "Debug() << 1;"),
        ("src/media/A.cpp", "qC" 'Warning(lc) << 1;'),
        ("src/media/A.cpp", "std::" "cout << 1;"),
        ("src/media/A.cpp", "f" 'printf(stderr, "x");'),
        ("src/media/A.cpp", "#include <pri" "vate/qobject_p.h>"),
        ("src/media/A.qml", "Ti" "mer { interval: 10 }"),
        ("src/media/A.qml", "new Da" "te()"),
        ("src/media/A.cpp", "// TO" "DO later"),
        ("bench/a.py", "# FIX" "ME"),
        ("README.md", "see Pa" "rt 2.1"),
        ("docs/a.md", "as The Sp" "ec says"),
        ("src/media/A.h", "/// as speci" "fied"),
        ("adapter/linux/A.cpp", "QDateTime::" "currentDateTimeUtc()"),
    )
    ALLOWED = (
        ("src/foundation/A.cpp", "Q" "Timer timer;"),
        ("src/platform/linux/A.h", "#ifdef Q_" "OS_LINUX"),
        ("src/media/A.cpp", 'snprintf(buffer, size, "%d", 1);'),
        ("src/media/A.cpp", "auto formatter = particles(3);"),
        ("src/media/A.qml", "Text { text: model.dateText }"),
        ("bench/a.cpp", "QElapsed" "Timer since;"),
        ("README.md", "The specific part of it, in 2 parts."),
        ("build/debug/a.cpp", "// TO" "DO"),
    )

    def test_each_banned_thing_is_found_where_it_stands(self):
        for file, text in self.FOUND:
            with self.subTest(file=file, text=text):
                self.write(file, f"\n{text}\n")
                complaints = bans.violations(self.root)
                self.assertTrue(complaints)
                self.assertIn(f"{file}:2: ", complaints[0])
                self.assertIn("Mend: ", complaints[0])
                (self.root / file).unlink()

    def test_what_only_looks_like_it_is_let_be(self):
        for file, text in self.ALLOWED:
            with self.subTest(file=file, text=text):
                self.write(file, text)
                self.assertEqual(bans.violations(self.root), [])

    def test_every_ban_has_a_sample(self):
        samples = [text for _, text in self.FOUND]
        for ban in bans.BANS:
            flags = bans.re.IGNORECASE if ban.ignore_case else 0
            self.assertTrue(any(bans.re.search(ban.pattern, text, flags) for text in samples), ban.pattern)


if __name__ == "__main__":
    unittest.main()
