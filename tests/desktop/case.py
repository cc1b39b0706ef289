# SPDX-License-Identifier: MIT
"""What all desktop tests share: a desktop for each test, with a panel and the program in it.

Tests import it first: it knows where the modules of the desktop are.
"""
import sys
import unittest
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parents[2] / "tools/desktop"))
from peers import LEFT, start_panel
from private_desktop import PrivateDesktop
from stowpocket import POCKET, PROJECT, STATUS_ITEM, Stowpocket


ALLOWED = [
    # Trays map what they take in; Qt finds its window on the screen before it shows it, says so and goes on.
    "qt.qpa.xcb: internal error:  void QXcbWindow::setNetWmStateOnUnmappedWindow() called on mapped window",
    # XWayland may say twice that a drop is over.
    "QXcbDrag::handleFinished - drop data has expired",
]


class DesktopTest(unittest.TestCase):
    """Logs and the last picture of each test are kept in build/desktop/<test>."""

    desktop_type = PrivateDesktop

    def setUp(self):
        logs = PROJECT / "build/desktop" / self.id()
        self.addCleanup(self.check_log, logs / "stowpocket.log")
        self.desktop = self.enterContext(self.desktop_type(logs))
        self.x = self.desktop.x

    def check_log(self, log):
        """What the program says itself is meant to be read; whatever Qt says there is a fault of the program."""
        said = log.read_text().splitlines() if log.exists() else []
        own = "stowpocket: ", "stowpocket."  # the latter with the part of it that speaks
        self.assertEqual([line for line in said if not line.startswith(own) and line not in ALLOWED], [])

    def start(self, panel, *files):
        """With "xfce4-panel", with "trayer", or with no panel, where the pocket is the icon."""
        self.panel = panel and start_panel(self.desktop, panel)
        self.stowpocket = Stowpocket(self.desktop, *files, icon=STATUS_ITEM if panel else POCKET)
        return self.stowpocket

    def stage(self, panel, count):
        """The same, with so many files on the shelf."""
        self.files = self.desktop.files("papers", count)
        self.start(panel, *self.files).wait_for_files([file.name for file in self.files])
        return self.stowpocket

    def offer(self, panel, file_manager, count):
        """The same, with so many files in the file manager in front."""
        self.names = [file.name for file in self.desktop.files("papers", count)]
        self.folder = self.desktop.home / "papers"
        stowpocket = self.start(panel)
        return stowpocket, file_manager(self.desktop, self.folder, LEFT)
