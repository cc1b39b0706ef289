# SPDX-License-Identifier: MIT
"""The shelf without a pointer and without a screen."""
import unittest

from case import DesktopTest
from x_display import wait_for


class Accessibility(DesktopTest):
    def open_with_files(self, count):
        self.files = sorted(self.desktop.folder("papers", count).iterdir())
        stowpocket = self.start("trayer", *self.files)
        stowpocket.wait_for_files([file.name for file in self.files])
        stowpocket.open_popover()
        stowpocket.tile("file 01.txt")
        return stowpocket

    def test_a_screen_reader_meets_a_list_and_can_take_files_off_it(self):
        stowpocket = self.open_with_files(3)
        shelf = stowpocket.shown("Files on the shelf")
        self.assertEqual(shelf.role, "list")
        self.assertEqual([(tile.role, tile.name) for tile in shelf.children()],
                         [("list item", f"file 0{number}.txt, {number * 9} bytes") for number in (1, 2, 3)])
        self.assertEqual(stowpocket.shown("Drop zone for files").role, "panel")
        for name in ("Settings", "Clear All", "Quit stowpocket"):
            self.assertEqual(stowpocket.shown(name).role, "push button", name)
        last = shelf.children()[2]
        self.assertTrue(last.do("SetFocus"))
        wait_for(last.is_focused, "the last tile to have the keyboard")
        self.assertTrue(last.do("Toggle"))
        wait_for(last.is_selected, "the last tile to be selected")
        for left in (2, 1):
            self.assertTrue(shelf.children()[0].do("remove"))
            wait_for(lambda: len(stowpocket.filenames()) == left, f"{left} files on the shelf")
        self.assertTrue(self.files[0].exists())
        self.files[2].unlink()
        wait_for(lambda: stowpocket.tile("file 03.txt").name.endswith(", Missing"), "the missing file to be told")

    def test_keyboard_reaches_the_tiles_and_closes_the_popover(self):
        stowpocket, press = self.open_with_files(5), self.desktop.x.keys
        wait_for(lambda: self.desktop.x.active_window() == stowpocket.popover(), "the popover to have the keyboard")
        for key, tile in (("Tab", 1), ("Down", 4), ("Right", 5), ("Delete", 4)):
            press(key)
            wait_for(lambda: stowpocket.tile(f"file 0{tile}.txt").is_focused(), f"file {tile} to have the keyboard")
        stowpocket.wait_for_files([file.name for file in self.files[:4]])
        press("Escape")
        wait_for(lambda: not stowpocket.popover(), "the popover to close")
        stowpocket.open_popover()  # the icon still opens it, so it was closed in earnest


if __name__ == "__main__":
    unittest.main()
