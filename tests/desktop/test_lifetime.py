# SPDX-License-Identifier: MIT
"""Starts of the program: what it finds, and what it leaves alone."""
import os
import shutil

from gi.repository import Gio

from case import DesktopTest
from peers import RIGHT, Thunar
from private_desktop import children_of
from stowpocket import PROGRAM, Stowpocket
from terminal import run
from x_display import wait_for


class Lifetime(DesktopTest):
    def test_damaged_settings_are_set_aside(self):
        settings = self.desktop.home / "config/stowpocket/preferences.plist"
        settings.parent.mkdir()
        settings.write_bytes(b"<?xml version='1.0'?><plist><dict><key>shelf")
        self.start("trayer")
        self.assertTrue(list(settings.parent.glob("*.damaged-*")))
        welcome = wait_for(lambda: self.x.find("Welcome to stowpocket"), "the first run's window")
        self.x.click(*self.x.rect(welcome).centre())
        wait_for(lambda: self.x.active_window() == welcome, "the first run's window to be active")
        self.x.keys("Escape")
        wait_for(lambda: not self.x.find("Welcome to stowpocket"), "the first run's window to go")

    def test_start_leaves_the_focus_where_it_is(self):
        window = Thunar(self.desktop, self.desktop.folder("papers", 1), RIGHT)
        window.activate()
        self.start("trayer")
        self.x.keys("Control_L", "a")
        wait_for(lambda: window.status.name.startswith('"file 01.txt"'), "the key to reach the file manager")
        self.assertEqual(self.x.active_window(), window.window)

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
