# SPDX-License-Identifier: MIT
"""What is selected in the file manager in front, added without a drag."""
import signal
import time

from case import DesktopTest
from clipboard import Clipboard
from nautilus import Nautilus
from peers import PcmanfmQt, Thunar
from terminal import run
from x_display import wait_for

KEYS = "Alt_L", "Shift_L", "d"


class QuickDrop(DesktopTest):
    def ask(self):
        """Without keys: those pressed while a quick drop presses its own would be held together with them."""
        run(self.desktop, self.stowpocket.program, "quick-drop")

    def hold_keys(self, names):
        """Holds the keys until the files are there and the popover that shows them has the keyboard."""
        with self.x.holding(*KEYS):
            self.stowpocket.wait_for_files(names)
            popover = self.stowpocket.wait_open()
        wait_for(lambda: self.x.active_window() == popover, "the popover to be active")

    def take(self, names):
        """The same, and closes the popover."""
        self.hold_keys(names)
        self.x.keys("Escape")
        self.stowpocket.wait_closed()

    def clear(self):
        run(self.desktop, self.stowpocket.program, "clear")

    def take_first_again(self, window):
        self.clear()
        window.select_first()
        self.take(self.names[:1])

    def next_begins(self, clipboard):
        """Asks until it has an effect: until a quick drop has ended no other begins."""
        wait_for(lambda: clipboard.was_read(times=2) or self.ask(), "the next quick drop to begin")

    def check_three_and_one(self, panel, file_manager):
        _, window = self.offer(panel, file_manager, 3)
        clipboard = Clipboard(self.desktop, "precious")
        window.select_all()
        self.hold_keys(self.names)
        self.assertEqual(clipboard.text(), "precious")
        self.clear()
        self.take(self.names)  # though the popover has the keyboard
        self.take_first_again(window)
        self.assertEqual(clipboard.text(), "precious", "it was put back by the quick drop before")
        return window, clipboard

    def check_marked_text_is_no_selection(self, window, clipboard, *keys):
        """Text is copied with the same keys as files."""
        window.activate()
        self.x.keys(*keys)
        wait_for(window.is_text_edited, f"{keys} to have text edited")
        clipboard.fill()
        with self.x.holding(*KEYS):
            wait_for(lambda: not clipboard.is_held() and clipboard.text() == "precious",
                     "the text to be copied and the clipboard to be as before")
        self.assertEqual((self.stowpocket.filenames(), self.stowpocket.popover()), (self.names[:1], None))

    def test_files_of_thunar(self):
        window, clipboard = self.check_three_and_one("trayer", Thunar)
        self.check_marked_text_is_no_selection(window, clipboard, "F2")
        self.x.keys("a")
        self.x.keys("Return")
        wait_for(lambda: window.status.name.startswith('"a.txt"'), "the name that was edited all the time")
        # The copy key is found in the layout in force.
        run(self.desktop, "setxkbmap", "us,us", "-variant", ",dvorak", "-option", "grp:caps_toggle")
        self.x.keys("Caps_Lock")
        self.clear()
        self.take(["a.txt"])

    def test_files_of_pcmanfm_qt(self):
        window, clipboard = self.check_three_and_one("xfce4-panel", PcmanfmQt)
        self.check_marked_text_is_no_selection(window, clipboard, "Control_L", "l")

    def test_files_of_nautilus(self):
        self.check_three_and_one("trayer", Nautilus)

    def test_clipboard_that_cannot_be_saved_keeps_the_files_and_one_that_nobody_holds_stays_so(self):
        _, window = self.offer("trayer", Thunar, 2)
        clipboard = Clipboard(self.desktop, "precious")
        window.select_all()
        clipboard.process.send_signal(signal.SIGSTOP)
        self.assertEqual(run(self.desktop, self.stowpocket.program, "quick-drop"), (0, "", ""))
        self.stowpocket.wait_for_files(self.names)
        self.stowpocket.wait_open()
        self.x.click(*self.stowpocket.icon())
        self.stowpocket.wait_closed()
        clipboard.process.send_signal(signal.SIGCONT)
        self.assertIn(self.names[0], clipboard.text())
        clipboard.fill()
        self.desktop.end(clipboard.process)
        wait_for(lambda: not clipboard.owner(), "nobody to hold the clipboard")
        self.take_first_again(window)
        self.assertEqual(clipboard.owner(), 0)

    def test_file_manager_that_is_busy_is_waited_for(self):
        _, window = self.offer("trayer", Thunar, 2)
        clipboard = Clipboard(self.desktop, "precious")
        window.select_all()
        window.process.send_signal(signal.SIGSTOP)
        asked = time.monotonic()
        self.next_begins(clipboard)
        # No load makes this shorter.
        self.assertGreater(time.monotonic() - asked, 2, "one that is not busy gets less than a second")
        window.process.send_signal(signal.SIGCONT)
        self.stowpocket.wait_for_files(self.names)

    def test_nothing_selected_adds_nothing_that_was_copied_before(self):
        old, = self.desktop.files("old", 1)
        stowpocket, window = self.offer("trayer", Thunar, 2)
        clipboard = Clipboard(self.desktop, old.as_uri(), "text/uri-list")
        window.activate()
        self.next_begins(clipboard)  # after a while, as files that do not come are waited for
        self.assertEqual((stowpocket.filenames(), stowpocket.popover()), ([], None))
        window.select_all()
        wait_for(lambda: stowpocket.filenames() or self.ask(), "the files that are selected now")
        self.assertEqual(stowpocket.filenames(), self.names)
        wait_for(lambda: clipboard.text() == old.as_uri(), "the clipboard to be as before")
