# SPDX-License-Identifier: MIT
"""Files dragged from the shelf to other programs."""
import unittest

from case import DesktopTest
from peers import RIGHT, PcmanfmQt, Thunar
from x_display import wait_for


class DragOut(DesktopTest):
    def drag_out(self, panel, file_manager):
        source, target = self.desktop.folder("papers", 2), self.desktop.folder("desk")
        first, second = sorted(source.iterdir())
        stowpocket = self.start(panel, first, second)
        window = file_manager(self.desktop, target, RIGHT)
        stowpocket.open_popover()
        stowpocket.drag_tile(second.name).drop(window.blank_place())
        window.confirm_drop()
        wait_for((target / second.name).exists, "the copy")
        wait_for(lambda: (target / second.name).read_bytes() == second.read_bytes(), "the whole content in the copy")
        self.assertEqual(stowpocket.filenames(), [first.name, second.name])

    def test_thunar_gets_a_copy(self):
        self.drag_out("trayer", Thunar)

    def test_pcmanfm_qt_gets_a_copy(self):
        self.drag_out("xfce4-panel", PcmanfmQt)

    def test_file_renamed_while_the_program_is_off_is_handed_out_under_its_new_name(self):
        source, target = self.desktop.folder("papers", 1), self.desktop.folder("desk")
        stowpocket = self.start("xfce4-panel", *source.iterdir())
        stowpocket.wait_for_files(["file 01.txt"])
        stowpocket.end()
        (source / "file 01.txt").rename(source / "renamed.txt")
        stowpocket.start()
        window = Thunar(self.desktop, target, RIGHT)
        stowpocket.open_popover()
        stowpocket.drag_tile("file 01.txt").drop(window.blank_place())
        wait_for((target / "renamed.txt").exists, "the copy under the new name")
        self.assertTrue((source / "renamed.txt").exists())


if __name__ == "__main__":
    unittest.main()
