# SPDX-License-Identifier: MIT
"""Files dragged from the shelf to other programs."""
import unittest

from case import DesktopTest
from peers import RIGHT, PcmanfmQt, Thunar
from stowpocket import POCKET
from x_display import wait_for


class DragOut(DesktopTest):
    def drag_out(self, panel, file_manager):
        source, target = self.desktop.folder("papers", 2), self.desktop.folder("desk")
        first, second = sorted(source.iterdir())
        stowpocket = self.start(panel, first, second)
        window = file_manager(self.desktop, target, RIGHT)
        stowpocket.open_popover()
        drag = stowpocket.drag_tile(second.name)
        drag.hover(window.blank_place())
        self.assertIsNone(self.desktop.x.find(POCKET), "what comes from the shelf is not for the shelf")
        drag.release()
        window.confirm_drop()
        wait_for((target / second.name).exists, "the copy")
        wait_for(lambda: (target / second.name).read_bytes() == second.read_bytes(), "the whole content in the copy")
        self.assertEqual(stowpocket.filenames(), [first.name, second.name])

    def test_thunar_gets_a_copy(self):
        self.drag_out("trayer", Thunar)

    def test_pcmanfm_qt_gets_a_copy(self):
        self.drag_out("xfce4-panel", PcmanfmQt)


if __name__ == "__main__":
    unittest.main()
