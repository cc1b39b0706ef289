# SPDX-License-Identifier: MIT
"""Things dragged onto the shelf that become files only there."""
import unittest

from PIL import Image

from case import DesktopTest
from sources import Archive, Picture
from x_display import wait_for


class Promises(DesktopTest):
    def spooled(self):
        """The one file on the shelf, in the folder that only its user may look into."""
        spool = self.desktop.home / "data/com.example.stowpocket/FilePromises"
        name, = wait_for(self.stowpocket.filenames, "a file on the shelf")
        file, = spool.rglob(name)
        self.assertEqual(spool.stat().st_mode & 0o777, 0o700)
        return file

    def test_icon_takes_a_file_out_of_an_archive(self):
        stowpocket = self.start("xfce4-panel")
        stowpocket.take_drop(Archive(self.desktop, "letter.txt", "other.txt").drag("letter.txt"))
        self.assertEqual(self.spooled().read_text(), "content of letter.txt")

    def test_open_popover_takes_a_picture(self):
        stowpocket = self.start("trayer")
        original = self.desktop.home / "original.png"
        Image.new("RGB", (8, 8)).save(original)
        picture = Picture(self.desktop, original)
        middle = self.desktop.x.rect(stowpocket.open_popover()).centre()
        drag = picture.drag()
        drag.hover(middle)
        self.assertFalse(picture.was_read(), "nothing is read before the drop")
        drag.release()
        file = self.spooled()
        self.assertRegex(file.name, r"^Image .*\.png$")
        self.assertEqual(file.read_bytes(), original.read_bytes())


if __name__ == "__main__":
    unittest.main()
