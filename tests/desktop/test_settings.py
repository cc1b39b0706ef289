# SPDX-License-Identifier: MIT
"""The settings window, and the shortcuts that are recorded in it."""
import signal

from case import DesktopTest
from x_display import wait_for


class Settings(DesktopTest):
    def record(self, name, *shortcut):
        self.stowpocket.press(name)
        self.stowpocket.wait_for_shown(name.partition(",")[0] + ", Press shortcut…")
        self.x.keys(*shortcut)

    def test_choices_act_at_once_and_outlive_the_program_as_the_shelf_does(self):
        stowpocket, keys = self.stage("trayer", 1), self.x.keys
        entry = self.desktop.home / "config/autostart/com.example.stowpocket.desktop"
        wait_for(entry.exists, "the entry made at the first start")
        stowpocket.wait_open()  # as it was started with a file
        keys("Alt_L", "Shift_L", "s")
        stowpocket.wait_closed()
        stowpocket.open_settings()
        stowpocket.press("Launch at login")
        wait_for(lambda: not entry.exists(), "the entry to go")
        self.record("Open/Close Shelf, Alt+Shift+S", "Alt_L", "Shift_L", "s")  # is grabbed, and yet recorded
        self.record("Open/Close Shelf, Alt+Shift+S", "k")
        keys("Control_L", "Shift_L", "k")
        stowpocket.wait_for_shown("Open/Close Shelf, Ctrl+Shift+K")
        wait_for(lambda: stowpocket.preferences().get("shelfHotkeyKeyCode") == 40, "the shortcut on the disk")
        self.assertIsNone(stowpocket.popover())
        keys("Alt_L", "Shift_L", "s")
        keys("Control_L", "Shift_L", "k")
        stowpocket.wait_open()  # by the new shortcut, and not closed again by the old one
        for how, status in (signal.SIGTERM, 0), (signal.SIGKILL, -signal.SIGKILL):
            self.assertEqual(stowpocket.end(how), status)
            stowpocket.start()
            keys("Control_L", "Shift_L", "k")
            self.assertNotIn("Missing", stowpocket.tile("file 01.txt").name)
