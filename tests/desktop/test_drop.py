# SPDX-License-Identifier: MIT
"""What is dragged onto the shelf from other programs."""
from case import DesktopTest
from drag import Drag
from peers import Archive, PcmanfmQt, Thunar
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
        middle = self.x.rect(stowpocket.open_popover()).centre()
        Drag(self.x, start).drop(middle)
        stowpocket.wait_for_files(self.names)

    def test_icon_takes_a_file_out_of_an_archive(self):
        stowpocket = self.start("xfce4-panel")
        stowpocket.take_drop(Archive(self.desktop, "letter.txt", "other.txt").drag("letter.txt"))
        stowpocket.wait_for_files(["letter.txt"])
        spool = self.desktop.home / "data/com.example.stowpocket/FilePromises"
        self.assertEqual([file.read_text() for file in spool.rglob("*.txt")], ["content of letter.txt"])
        self.assertEqual(spool.stat().st_mode & 0o777, 0o700)
