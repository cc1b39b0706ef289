# SPDX-License-Identifier: MIT
"""Files dragged onto the shelf from other programs, and from it to them."""
from case import DesktopTest
from drag import Drag
from peers import LEFT, RIGHT, Archive, PcmanfmQt, Thunar
from stowpocket import POCKET
from x_display import wait_for


class FileDrag(DesktopTest):
    def drop_in(self, window, drag, names):
        """Drops what is dragged in the window, which then has these files too, as have their folder and the shelf."""
        shelf = self.stowpocket.filenames()
        drag.hover(window.blank_place())
        self.assertIsNone(self.x.find(POCKET), "what comes from the shelf is not for the shelf")
        drag.release()
        window.confirm_drop()
        for name in names:
            file, copy = self.folder / name, window.folder / name
            wait_for(lambda copy=copy, of=file: copy.exists() and copy.read_bytes() == of.read_bytes(),
                     f"{copy} and all its content")
        self.assertEqual(sorted(file.name for file in self.folder.iterdir()), self.names)
        self.assertEqual(self.stowpocket.filenames(), shelf)

    def test_open_popover_takes_files_and_gives_copies_of_one_and_then_of_those_selected(self):
        stowpocket, source = self.offer("trayer", Thunar, 5)
        drag = Drag(self.x, source.select_all())
        drag.over(stowpocket.icon(), stowpocket.popover, "the popover to open")
        drag.drop(self.x.rect(stowpocket.popover()).centre())
        stowpocket.wait_for_files(self.names)
        window = Thunar(self.desktop, self.desktop.folder("desk"), RIGHT)
        stowpocket.open_popover()
        self.drop_in(window, stowpocket.drag_tile("file 02.txt"), self.names[1:2])
        self.assertEqual(len(list(window.folder.iterdir())), 1)
        stowpocket.open_popover()
        for name in self.names[::2]:
            with self.x.holding("Control_L"):
                self.x.click(*stowpocket.tile(name).centre())
            wait_for(stowpocket.tile(name).is_selected, f"{name} to be selected")
        self.drop_in(window, stowpocket.drag_tile("file 03.txt"), self.names[::2])
        self.assertEqual(len(list(window.folder.iterdir())), 4)

    def test_icon_takes_what_fits_and_says_so_and_the_count_gives_all_of_it(self):
        stowpocket, source = self.offer("xfce4-panel", PcmanfmQt, 25)
        stowpocket.take_drop(source.drag_all())
        stowpocket.wait_for_files(self.names[:20])
        stowpocket.wait_for_shown("Added 20 of 25 files - shelf is full")
        tile, footer = stowpocket.tile(self.names[0]), stowpocket.shown("Clear All")
        wait_for(lambda: tile.rect().y + tile.rect().height <= footer.rect().y, "the popover to show a whole tile")
        window = PcmanfmQt(self.desktop, self.desktop.folder("desk"), LEFT)
        stowpocket.open_popover()
        stowpocket.placed("stowpocket shelf")
        self.drop_in(window, Drag(self.x, stowpocket.wait_for_shown("20/20").centre()), self.names[:20])

    def test_icon_takes_a_file_out_of_an_archive(self):
        stowpocket = self.start("xfce4-panel")
        stowpocket.take_drop(Archive(self.desktop, "letter.txt", "other.txt").drag("letter.txt"))
        stowpocket.wait_for_files(["letter.txt"])
        spool = self.desktop.home / "data/com.example.stowpocket/FilePromises"
        self.assertEqual([file.read_text() for file in spool.rglob("*.txt")], ["content of letter.txt"])
        self.assertEqual(spool.stat().st_mode & 0o777, 0o700)
