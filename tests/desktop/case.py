# SPDX-License-Identifier: MIT
"""What all desktop tests share: a desktop for each test, with a panel and the program in it."""
import unittest

from peers import start_panel
from private_desktop import PrivateDesktop
from stowpocket import PROJECT, Stowpocket


class DesktopTest(unittest.TestCase):
    """Logs and the last picture of each test are kept in build/desktop/<test>."""

    def setUp(self):
        self.desktop = self.enterContext(PrivateDesktop(PROJECT / "build/desktop" / self.id().removeprefix("__main__.")))

    def start(self, panel, *files):
        self.panel = start_panel(self.desktop, panel)
        self.stowpocket = Stowpocket(self.desktop, *files)
        return self.stowpocket
