# SPDX-License-Identifier: MIT
"""Files dragged from the shelf to other programs."""
from case import DesktopTest
from drag import Drag
from peers import RIGHT, PcmanfmQt, Thunar
from stowpocket import POCKET
from x_display import wait_for


class DragOut(DesktopTest):
    def show_five(self, panel, file_manager):
        self.target = self.desktop.folder("desk")
        self.stage(panel, 5).open_popover()
        self.window = file_manager(self.desktop, self.target, RIGHT)

    def drop_in_window(self, drag, files):
        """Drops what is dragged in the window, which then has these files too, as has the shelf."""
        drag.hover(self.window.blank_place())
        self.assertIsNone(self.x.find(POCKET), "what comes from the shelf is not for the shelf")
        drag.release()
        self.window.confirm_drop()
        for file in files:
            copy = self.target / file.name
            wait_for(lambda copy=copy, of=file: copy.exists() and copy.read_bytes() == of.read_bytes(),
                     f"{copy} and all its content")
        self.assertTrue(all(file.exists() for file in self.files))
        self.assertEqual(self.stowpocket.filenames(), [file.name for file in self.files])

    def test_thunar_gets_a_copy_of_one_and_then_of_those_selected(self):
        self.show_five("trayer", Thunar)
        self.drop_in_window(self.stowpocket.drag_tile("file 02.txt"), self.files[1:2])
        self.assertEqual(len(list(self.target.iterdir())), 1)
        self.stowpocket.open_popover()
        for file in self.files[::2]:
            with self.x.holding("Control_L"):
                self.x.click(*self.stowpocket.tile(file.name).centre())
            wait_for(lambda tile=self.stowpocket.tile(file.name): tile.is_selected(), f"{file.name} to be selected")
        self.drop_in_window(self.stowpocket.drag_tile("file 03.txt"), self.files[::2])
        self.assertEqual(len(list(self.target.iterdir())), 4)

    def test_pcmanfm_qt_gets_copies_of_everything(self):
        self.show_five("xfce4-panel", PcmanfmQt)
        self.stowpocket.placed("stowpocket shelf")
        drag = Drag(self.x, self.stowpocket.wait_for_shown("5/20").centre())
        self.drop_in_window(drag, self.files)
