# SPDX-License-Identifier: MIT
"""What is selected in the file manager in front, added without a drag."""
import signal
import time
import unittest

from case import DesktopTest
from clipboard import Clipboard
from nautilus import Nautilus
from peers import LEFT, PcmanfmQt, Thunar
from x_display import wait_for


class QuickDrop(DesktopTest):
    def offer(self, panel, file_manager, count):
        """Starts everything, with so many files in front."""
        self.folder = self.desktop.folder("papers", count)
        self.names = sorted(file.name for file in self.folder.iterdir())
        stowpocket = self.start(panel)
        return stowpocket, file_manager(self.desktop, self.folder, LEFT)

    def press_keys(self):
        self.desktop.x.keys("Alt_L", "Shift_L", "d")

    def run_command(self):
        self.assertEqual(self.desktop.start(self.stowpocket.program, "quick-drop").wait(30), 0)

    def check_selection_is_added(self, quick_drop, names):
        clipboard = Clipboard(self.desktop, "precious")
        quick_drop()
        self.stowpocket.wait_for_files(names)
        popover = wait_for(self.stowpocket.popover, "the popover")
        self.assertEqual(clipboard.text(), "precious")
        wait_for(lambda: self.desktop.x.active_window() == popover, "the popover to be active")
        self.desktop.x.keys("Escape")
        wait_for(lambda: not self.stowpocket.popover(), "the popover to close")

    def check_three_and_one(self, panel, file_manager):
        stowpocket, window = self.offer(panel, file_manager, 3)
        window.select_all()
        self.check_selection_is_added(self.press_keys, self.names)
        self.desktop.start(stowpocket.program, "clear")
        stowpocket.wait_for_files([])
        window.select_first()
        self.check_selection_is_added(self.press_keys, self.names[:1])

    def test_files_of_thunar(self):
        self.check_three_and_one("trayer", Thunar)

    def test_files_of_pcmanfm_qt(self):
        self.check_three_and_one("xfce4-panel", PcmanfmQt)

    def test_files_of_nautilus(self):
        self.check_three_and_one("trayer", Nautilus)

    def test_one_file_of_thunar_by_command(self):
        _, window = self.offer("trayer", Thunar, 1)
        window.select_all()
        self.check_selection_is_added(self.run_command, self.names)

    def test_file_manager_that_is_busy_is_waited_for(self):
        _, window = self.offer("trayer", Thunar, 2)
        window.select_all()

        def press_keys_while_busy():
            window.process.send_signal(signal.SIGSTOP)
            self.press_keys()
            time.sleep(0.6)  # longer than one that gets round to the keys is given to copy
            window.process.send_signal(signal.SIGCONT)
        self.check_selection_is_added(press_keys_while_busy, self.names)

    def test_nothing_selected_adds_nothing_that_was_copied_before(self):
        old, = self.desktop.folder("old", 1).iterdir()
        stowpocket, window = self.offer("trayer", Thunar, 2)
        clipboard = Clipboard(self.desktop, old.as_uri(), "text/uri-list")
        window.activate()
        self.press_keys()
        wait_for(clipboard.was_read, "the quick drop to begin")
        # It waits a while for files that do not come. Until it has ended no other begins.
        wait_for(lambda: clipboard.was_read(times=2) or self.press_keys(), "the next quick drop to begin")
        self.assertEqual((stowpocket.filenames(), stowpocket.popover()), ([], None))
        window.select_all()
        wait_for(lambda: stowpocket.filenames() or self.press_keys(), "the files that are selected now")
        self.assertEqual(stowpocket.filenames(), self.names)
        wait_for(lambda: clipboard.text() == old.as_uri(), "the clipboard to be as before")

    def test_program_in_a_terminal_goes_on(self):
        stowpocket, x = self.start("trayer"), self.desktop.x
        clipboard = Clipboard(self.desktop, "precious")
        terminal = self.desktop.start("xterm", "-T", "sleeper", "-geometry", "60x10+40+400", "-e", "sleep", "1000")
        window = wait_for(lambda: x.find("sleeper"), "the terminal")
        x.click(100, 500)
        wait_for(lambda: x.active_window() == window, "the terminal to be active")
        self.press_keys()
        x.keys("Alt_L", "Shift_L", "s")
        wait_for(stowpocket.popover, "the popover, after all that the quick drop did")
        self.assertFalse(clipboard.was_read())
        self.assertIsNone(terminal.poll())
        self.assertEqual((clipboard.text(), stowpocket.filenames()), ("precious", []))


if __name__ == "__main__":
    unittest.main()
