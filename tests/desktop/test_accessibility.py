# SPDX-License-Identifier: MIT
"""The shelf without a screen."""
from case import DesktopTest
from x_display import wait_for


class Accessibility(DesktopTest):
    def test_a_screen_reader_meets_a_list_and_can_take_files_off_it(self):
        stowpocket = self.stage("trayer", 3)
        stowpocket.open_popover()
        stowpocket.tile("file 01.txt")
        shelf = stowpocket.shown("Files on the shelf")
        self.assertEqual([(shown.role, shown.name) for shown in [shelf, *shelf.children()]],
                         [("list", "Files on the shelf")] +
                         [("list item", f"file 0{number}.txt, {number * 9} bytes") for number in (1, 2, 3)])
        for name, role in (("Drop zone for files", "panel"), ("Settings", "push button"), ("Clear All", "push button"),
                           ("Quit stowpocket", "push button")):
            self.assertEqual(stowpocket.shown(name).role, role, name)
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
