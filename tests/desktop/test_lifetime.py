# SPDX-License-Identifier: MIT
"""Starts, ends and restarts, of the program and of the panel around it."""
import os
import shutil
import signal
import unittest

from gi.repository import Gio

from case import DesktopTest
from peers import LEFT, RIGHT, PcmanfmQt, Thunar, start_panel
from private_desktop import children_of
from stowpocket import PROGRAM, Stowpocket
from terminal import run
from x_display import wait_for


class Lifetime(DesktopTest):
    def test_shelf_outlives_the_program(self):
        files = sorted(self.desktop.folder("papers", 3).iterdir())
        stowpocket = self.start("xfce4-panel", *files)
        stowpocket.wait_for_files([file.name for file in files])
        saved = stowpocket.shelf()
        for how in (signal.SIGTERM, signal.SIGKILL):
            with self.subTest(how):
                self.assertEqual(stowpocket.end(how), 0 if how == signal.SIGTERM else -how)
                stowpocket.start()
                stowpocket.open_popover()
                for file in files:
                    self.assertNotIn("Missing", stowpocket.tile(file.name).name)
                self.assertEqual(stowpocket.shelf(), saved)

    def test_damaged_settings_are_set_aside(self):
        folder = self.desktop.home / "config/stowpocket"
        folder.mkdir()
        (folder / "preferences.plist").write_bytes(b"<?xml version='1.0'?><plist><dict><key>shelf")
        file, = self.desktop.folder("papers", 1).iterdir()
        stowpocket = self.start("trayer")
        self.assertTrue(list(folder.glob("*.damaged-*")))
        welcome = wait_for(lambda: self.desktop.x.find("Welcome to stowpocket"), "the first run's window")
        wait_for(lambda: self.desktop.x.active_window() == welcome, "the first run's window to be active")
        self.desktop.x.keys("Escape")
        wait_for(lambda: not self.desktop.x.find("Welcome to stowpocket"), "the first run's window to go")
        window = Thunar(self.desktop, file.parent, LEFT)
        stowpocket.take_drop(window.drag_all())
        stowpocket.wait_for_files([file.name])

    def test_icon_returns_with_the_panel(self):
        window = PcmanfmQt(self.desktop, self.desktop.folder("papers", 1), LEFT)
        stowpocket = self.start("xfce4-panel", *self.desktop.folder("staged", 2).iterdir())
        stowpocket.wait_for_shown("Shelf with 2 items")
        self.desktop.end(self.panel, signal.SIGKILL)
        wait_for(lambda: not self.desktop.x.find("stowpocket status item"), "the icon to go with the panel")
        start_panel(self.desktop, "trayer")
        stowpocket.icon()
        stowpocket.wait_for_shown("Shelf with 2 items")
        stowpocket.take_drop(window.drag_all())
        stowpocket.wait_for_shown("Shelf with 3 items")

    def test_start_leaves_the_focus_where_it_is(self):
        window = Thunar(self.desktop, self.desktop.folder("papers", 1), RIGHT)
        window.activate()
        stowpocket = self.start("trayer")
        stowpocket.x.keys("Control_L", "a")
        wait_for(lambda: window.status.name.startswith('"file 01.txt"'), "the key to reach the file manager")
        self.assertEqual(self.desktop.x.active_window(), window.window)

    def test_login_starts_the_program_wherever_it_lies(self):
        self.start("trayer").end()
        moved = Stowpocket(self.desktop, program=shutil.copy(PROGRAM, self.desktop.folder('my "own" $programs')))
        run(self.desktop, moved.program, "list")  # is answered only when everything that a launch does is done
        moved.end()
        session = Gio.AppLaunchContext()
        for name, value in self.desktop.environment.items():
            session.setenv(name, value)
        entry = self.desktop.home / "config/autostart/com.example.stowpocket.desktop"
        Gio.DesktopAppInfo.new_from_filename(str(entry)).launch([], session)
        wait_for(lambda: moved.program in (os.path.realpath(f"/proc/{each}/exe") for each in children_of(os.getpid())),
                 "the program to be started")
        moved.icon()


if __name__ == "__main__":
    unittest.main()
