# SPDX-License-Identifier: MIT
"""Files on volumes that are pulled out and plugged in again."""
import json
import unittest
from pathlib import Path

from case import DesktopTest
from mounts import Stick, take_own_mounts
from terminal import run
from x_display import wait_for


class Volumes(DesktopTest):
    @classmethod
    def setUpClass(cls):
        take_own_mounts()

    def available(self):
        """Which of the files on the shelf are there, by name."""
        listed = json.loads(run(self.desktop, self.stowpocket.program, "list", "--json").out)
        return {Path(item["path"]).name: item["available"] for item in listed}

    def after(self, before):
        """What the shelf says as soon as that is something else."""
        return wait_for(lambda: [now for now in [self.available()] if now != before], f"something else than {before}")[0]

    def test_file_is_missing_at_once_and_back_at_once(self):
        stick = Stick(self.desktop)
        self.addCleanup(stick.remove)
        stick.plug_in()
        slides = stick.folder / "slides"
        slides.write_text("held with the stick")
        doomed, = self.desktop.folder("papers", 1).iterdir()
        self.start("trayer", slides, doomed)
        self.stowpocket.wait_for_files(["slides", doomed.name])
        # A deleted file marks the time: the look every five seconds finds it missing now, and removes it the next time.
        doomed.unlink()
        plugged, pulled = ({"slides": there, doomed.name: False} for there in (True, False))
        wait_for(lambda: self.available() == plugged, "the deleted file to be missing")
        stick.pull_out()
        self.assertEqual(self.after(plugged), pulled)
        stick.plug_in()
        self.assertEqual(self.after(pulled), plugged)


if __name__ == "__main__":
    unittest.main()
