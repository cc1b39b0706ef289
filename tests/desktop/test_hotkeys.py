# SPDX-License-Identifier: MIT
"""The shortcuts that work in every application, pressed in a terminal that writes down what it gets."""
from case import DesktopTest
from terminal import Terminal
from x_display import wait_for

SHELF, QUICK_DROP = ("Alt_L", "Shift_L", "s"), ("Alt_L", "Shift_L", "d")


class Hotkeys(DesktopTest):
    def test_reach_the_program_and_no_other(self):
        terminal, shelf = Terminal(self.desktop), self.start("xfce4-panel")
        for lock in (None, "Caps_Lock", "Num_Lock"):
            with self.subTest(lock):
                self.x.keys(*[lock] * bool(lock))
                terminal.activate()
                self.x.keys(*SHELF)
                shelf.wait_open()
                self.x.keys(*SHELF)
                shelf.wait_closed()
                self.x.keys(*[lock] * bool(lock))
        terminal.activate()
        self.x.keys(*QUICK_DROP)  # for which a terminal gets no copy keys
        self.x.keys("x")
        wait_for(lambda: terminal.typed() == b"x", "nothing but the letter in the terminal")
        self.assertEqual((shelf.popover(), shelf.filenames()), (None, []))
