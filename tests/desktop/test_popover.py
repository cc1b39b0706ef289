# SPDX-License-Identifier: MIT
"""The popover and what can be done in it."""
import time
import unittest

from case import DesktopTest
from stowpocket import STATUS_ITEM
from terminal import Terminal
from x_display import wait_for


class Popover(DesktopTest):
    def start_with_files(self, panel, count):
        self.files = sorted(self.desktop.folder("papers", count).iterdir())
        stowpocket = self.start(panel, *self.files)
        stowpocket.wait_for_files([file.name for file in self.files])
        return stowpocket

    def click_opens_and_closes(self, panel):
        stowpocket = self.start_with_files(panel, 1)

        def stands_out():
            shades = self.desktop.x.pixels(self.desktop.x.rect(self.desktop.x.find(STATUS_ITEM)))
            return max(shades) - min(shades) > 150
        wait_for(stands_out, "the icon to stand out from its panel")
        for _ in range(2):
            stowpocket.open_popover()
            stowpocket.tile("file 01.txt")
            self.desktop.x.click(*stowpocket.icon())
            wait_for(lambda: not stowpocket.popover(), "the popover to close")

    def test_click_on_the_icon_in_trayer_opens_and_closes(self):
        self.click_opens_and_closes("trayer")

    def test_click_on_the_icon_in_xfce4_panel_opens_and_closes(self):
        self.desktop.environment["GTK_THEME"] = "Adwaita:dark"
        self.click_opens_and_closes("xfce4-panel")

    def test_click_elsewhere_closes_after_a_moment(self):
        stowpocket = self.start_with_files("trayer", 1)
        terminal = Terminal(self.desktop)
        for number in (1, 3):
            stowpocket.open_popover()
            clicked = time.monotonic()
            self.desktop.x.click(*terminal.centre(), number)
            wait_for(lambda: not stowpocket.popover(), "the popover to close")
            self.assertGreater(time.monotonic() - clicked, 0.28)

    def test_button_held_elsewhere_keeps_it_open(self):
        stowpocket = self.start_with_files("xfce4-panel", 1)
        terminal = Terminal(self.desktop)
        stowpocket.open_popover()
        self.desktop.x.point(*terminal.centre())
        self.desktop.x.button(True)
        # A file leaves five seconds or more after it vanished; the delayed close, due long before, has run by then.
        self.files[0].unlink()
        stowpocket.wait_for_files([])
        self.assertTrue(stowpocket.popover())
        self.desktop.x.button(False)
        self.desktop.x.click(*terminal.centre())
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
