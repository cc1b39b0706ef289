# SPDX-License-Identifier: MIT
"""Files dragged from a file manager onto the shelf."""
import unittest

from case import DesktopTest
from drag import Drag
from peers import PcmanfmQt, Thunar
from x_display import wait_for


class Drop(DesktopTest):
    def test_icon_takes_what_fits_and_says_so(self):
        stowpocket, window = self.offer("trayer", PcmanfmQt, 25)
        stowpocket.take_drop(window.drag_all())
        stowpocket.wait_for_files(self.names[:20])
        self.assertEqual(sorted(file.name for file in self.folder.iterdir()), self.names)
        stowpocket.wait_for_shown("Added 20 of 25 files - shelf is full")
        tile, footer = stowpocket.tile(self.names[0]), stowpocket.shown("Clear All")
        wait_for(lambda: tile.rect().y + tile.rect().height <= footer.rect().y, "the popover to show a whole tile")

    def test_open_popover_takes_files(self):
        stowpocket, window = self.offer("trayer", Thunar, 3)
        start = window.select_all()  # before, as a click elsewhere closes the popover
        middle = self.desktop.x.rect(stowpocket.open_popover()).centre()
        Drag(self.desktop.x, start).drop(middle)
        stowpocket.wait_for_files(self.names)

    def test_drag_that_only_passes_over_the_icon_adds_nothing(self):
        stowpocket, window = self.offer("xfce4-panel", Thunar, 3)
        drag = window.drag_all()
        drag.hover(stowpocket.icon(), stowpocket.popover)
        drag.drop_nowhere()
        stowpocket.wait_for_shown("0/20")
        self.assertEqual(stowpocket.filenames(), [])


if __name__ == "__main__":
    unittest.main()
