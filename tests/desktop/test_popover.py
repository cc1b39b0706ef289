# SPDX-License-Identifier: MIT
"""The popover and what can be done in it."""
import unittest

from case import DesktopTest
from x_display import wait_for


class Popover(DesktopTest):
    def start_with_files(self, panel, count):
        self.files = sorted(self.desktop.folder("papers", count).iterdir())
        stowpocket = self.start(panel, *self.files)
        stowpocket.wait_for_files([file.name for file in self.files])
        return stowpocket

    def test_click_on_the_icon_opens_and_closes(self):
        stowpocket = self.start_with_files("trayer", 1)
        for _ in range(2):
            stowpocket.open_popover()
            stowpocket.tile("file 01.txt")
            self.desktop.x.click(*stowpocket.icon())
            wait_for(lambda: not stowpocket.popover(), "the popover to close")

    def test_file_deleted_on_disk_is_shown_missing_and_leaves(self):
        stowpocket = self.start_with_files("xfce4-panel", 3)
        stowpocket.open_popover()
        stowpocket.tile("file 02.txt")
        self.files[1].unlink()
        wait_for(lambda: "Missing" in stowpocket.tile("file 02.txt").name, "the file to be shown missing")
        self.assertEqual(len(stowpocket.filenames()), 3)
        stowpocket.wait_for_files(["file 01.txt", "file 03.txt"])
        wait_for(lambda: not stowpocket.shown("file 02.txt"), "the tile to go")

    def test_remove_button_appears_under_the_pointer(self):
        stowpocket = self.start_with_files("trayer", 3)
        stowpocket.open_popover()
        tile = stowpocket.tile("file 02.txt")
        self.assertIsNone(stowpocket.shown("Remove from shelf"))
        self.desktop.x.point(*tile.centre())
        stowpocket.press("Remove from shelf")
        stowpocket.wait_for_files(["file 01.txt", "file 03.txt"])
        self.assertTrue(self.files[1].exists())

    def test_clearing_asks_first(self):
        stowpocket = self.start_with_files("xfce4-panel", 3)
        stowpocket.open_popover()
        stowpocket.press("Clear All")
        alert = stowpocket.wait_for_shown("Clear Shelf?")
        self.desktop.x.click(*alert.find("Cancel", "push button").centre())
        wait_for(lambda: not stowpocket.shown("Clear Shelf?"), "the alert to go")
        self.assertEqual(len(stowpocket.filenames()), 3)
        stowpocket.open_popover()
        stowpocket.press("Clear All")
        alert = stowpocket.wait_for_shown("Clear Shelf?")
        self.desktop.x.click(*alert.find("Clear All", "push button").centre())
        stowpocket.wait_for_files([])
        stowpocket.wait_for_shown("0/20")
        self.assertTrue(all(file.exists() for file in self.files))


if __name__ == "__main__":
    unittest.main()
