"""The base of all system tests: one desktop for a class, one fresh program for a test, evidence of a failure."""

import os
import shutil
import unittest
from pathlib import Path

from .session import Program, Session


class SystemTest(unittest.TestCase):
    """`session`, `pointer`, `keyboard`, `screen` are the class's desktop; `program` and `island` the test's own."""

    DESKTOP = {}  # what `Session` is told
    PREFERENCES = {}  # what the program finds stored
    SCALE = 1  # pixels for a point
    STARTED = True  # whether the program runs when the test begins

    @classmethod
    def setUpClass(cls):
        cls.session = Session(**cls.DESKTOP)
        cls.addClassCleanup(cls.session.end)
        cls.screen, cls.pointer, cls.keyboard = cls.session.screen, cls.session.pointer, cls.session.keyboard

    def setUp(self):
        self.away()
        self.program = Program(self.session, os.environ["VELMORA_PROGRAM"], scale=self.SCALE)
        self.addCleanup(self.program.end)
        if self.PREFERENCES:
            self.program.prefer(**self.PREFERENCES)
        if self.STARTED:
            self._with_evidence(self.program.start)

    @property
    def island(self):
        return self.program.island

    def away(self):
        """The pointer goes where nothing of the island is."""
        width, height = self.screen.size
        self.pointer.move(width // 2, height - 60)

    def keep(self, part):
        """Ends `part` with the test."""
        self.addCleanup(part.end if hasattr(part, "end") else part.close)
        return part

    def _callTestMethod(self, method):
        self._with_evidence(method)

    def _with_evidence(self, action):
        try:
            action()
        except Exception:
            self._save_evidence()
            raise

    def _save_evidence(self):
        folder = Path(os.environ.get("SYSTEM_EVIDENCE", "out/system")) / self.id().split(".", 1)[-1]
        shutil.rmtree(folder, ignore_errors=True)
        folder.mkdir(parents=True)
        self.screen.picture().save(folder / "screen.png")
        for log in self.session.folder.glob("*.log"):
            shutil.copy(log, folder)
        if self.program.home.exists() and self.program.defaults_file.exists():
            shutil.copy(self.program.defaults_file, folder)
        if self.session.reader and self.program.process and self.program.process.returncode is None:
            tree = self.program.tree()
            (folder / "accessibility.txt").write_text(tree.listing() if tree else "nothing")
        print(f"\nThe screen and the logs of the failure: {folder.resolve()}", flush=True)
