# SPDX-License-Identifier: MIT
"""Launch at login: the autostart entry follows the preference, and starts the program."""
import os
import shutil
import unittest

from gi.repository import Gio

from case import DesktopTest
from private_desktop import children_of
from stowpocket import PROGRAM, Stowpocket
from terminal import run
from x_display import wait_for


class Login(DesktopTest):
    def setUp(self):
        super().setUp()
        self.entry = self.desktop.home / "config/autostart/com.example.stowpocket.desktop"

    def log_in(self):
        """Does with the entry what a session does when it begins."""
        surroundings = Gio.AppLaunchContext()
        for name, value in self.desktop.environment.items():
            surroundings.setenv(name, value)
        Gio.DesktopAppInfo.new_from_filename(str(self.entry)).launch([], surroundings)

    def is_running(self, program):
        return any(os.path.realpath(f"/proc/{child}/exe") == program for child in children_of(os.getpid()))

    def launch_is_over(self, shelf):
        """Requests are answered only when everything that a launch does is done."""
        self.assertEqual(run(self.desktop, shelf.program, "list"), (0, "", ""))

    def restart(self, **preferences):
        self.stowpocket.restart(**preferences)
        self.launch_is_over(self.stowpocket)

    def test_entry_starts_the_program_wherever_it_lies(self):
        shelf = self.start("trayer")
        self.launch_is_over(shelf)
        self.assertIn(f'\nExec="{shelf.program}"\n', self.entry.read_text())
        shelf.end()
        moved = Stowpocket(self.desktop, program=shutil.copy(PROGRAM, self.desktop.folder('my "own" $programs')))
        self.launch_is_over(moved)
        moved.end()
        self.log_in()
        wait_for(lambda: self.is_running(moved.program), "the program to be started")
        moved.icon()

    def test_entry_follows_the_preference(self):
        self.launch_is_over(self.start("trayer"))
        mine = self.entry.read_text()
        self.restart(launchAtLogin=False)
        self.assertFalse(self.entry.exists())
        for switch in ("Hidden=true", "X-GNOME-Autostart-enabled=false"):
            with self.subTest(switch):
                off = mine.replace("X-GNOME-Autostart-enabled=true", switch)
                self.entry.write_text(off)
                self.restart(launchAtLogin=False)
                self.assertEqual(self.entry.read_text(), off, "an entry that starts nothing is as good as none")
                self.restart(launchAtLogin=True)
                self.assertEqual(self.entry.read_text(), mine)

    def test_preference_gives_in_where_no_entry_can_be_written(self):
        (self.desktop.home / "config/autostart").write_text("a file in the way, which stops even root")
        self.launch_is_over(self.start("xfce4-panel"))
        wait_for(lambda: self.stowpocket.preferences().get("launchAtLogin") is False, "the preference to tell the truth")


if __name__ == "__main__":
    unittest.main()
