# SPDX-License-Identifier: MIT
"""The place for drops that depends on no panel."""
import unittest

from case import DesktopTest
from drag import Drag
from peers import LEFT, PcmanfmQt, Thunar, start_panel
from stowpocket import POCKET, STATUS_ITEM
from x_display import wait_for


class Pocket(DesktopTest):
    def pocket(self):
        return self.desktop.x.find(POCKET)

    def wait_until_gone(self):
        wait_for(lambda: not self.pocket(), "the pocket to go")

    def check_lies_over_the_icon_during_a_drag(self, panel, file_manager):
        x, stowpocket = self.desktop.x, self.start(panel)
        window = file_manager(self.desktop, self.desktop.folder("papers", 1), LEFT)
        self.wait_until_gone()
        drag = window.drag_all()
        pocket = wait_for(self.pocket, "the pocket")
        self.assertEqual(x.rect(pocket), x.rect(x.find(STATUS_ITEM)))
        stowpocket.take_drop(drag)
        stowpocket.wait_for_files(["file 01.txt"])
        self.wait_until_gone()
        drag = Drag(x, window.first_icon())
        wait_for(self.pocket, "the pocket once more")
        drag.leave()
        drag.release()
        self.wait_until_gone()

    def test_lies_over_the_icon_in_trayer_during_a_drag(self):
        self.check_lies_over_the_icon_during_a_drag("trayer", Thunar)

    def test_lies_over_the_icon_in_xfce4_panel_during_a_drag(self):
        self.check_lies_over_the_icon_during_a_drag("xfce4-panel", PcmanfmQt)

    def test_is_the_icon_until_a_tray_comes(self):
        stowpocket = self.start(None)
        window = Thunar(self.desktop, self.desktop.folder("papers", 2), LEFT)
        stowpocket.take_drop(window.drag_all())
        stowpocket.wait_for_files(["file 01.txt", "file 02.txt"])
        self.desktop.x.click(*stowpocket.icon())
        wait_for(lambda: not stowpocket.popover(), "the popover to close")
        start_panel(self.desktop, "xfce4-panel")
        self.wait_until_gone()
        stowpocket.icon_window = STATUS_ITEM
        stowpocket.icon()
        stowpocket.wait_for_shown("Shelf with 2 items")
        stowpocket.open_popover()


if __name__ == "__main__":
    unittest.main()
