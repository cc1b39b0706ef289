# SPDX-License-Identifier: MIT
"""The shortcuts that work in every application, pressed in a terminal that writes down what it gets."""
import unittest

from case import DesktopTest
from terminal import Terminal
from x_display import wait_for

SHELF, QUICK_DROP = ("Alt_L", "Shift_L", "s"), ("Alt_L", "Shift_L", "d")
LOCKS = {"Caps_Lock": 0x02, "Num_Lock": 0x10}  # the bits of the state that the X server keeps


class Hotkeys(DesktopTest):
    def setUp(self):
        super().setUp()
        self.x, self.terminal = self.desktop.x, Terminal(self.desktop)

    def locks(self):
        return self.x.root.query_pointer().mask & 0xff

    def assert_toggles(self, shelf, keys=SHELF):
        self.terminal.activate()
        self.x.keys(*keys)
        wait_for(shelf.popover, "the popover")
        self.x.keys(*keys)
        wait_for(lambda: not shelf.popover(), "the popover to close")

    def test_in_every_lock_state(self):
        shelf = self.start("trayer")
        self.assert_toggles(shelf)
        for lock, bit in LOCKS.items():
            with self.subTest(lock):
                self.x.keys(lock)
                wait_for(lambda: self.locks() == bit, f"{lock} to be on")
                self.assert_toggles(shelf)
                self.x.keys(lock)
                wait_for(lambda: self.locks() == 0, f"{lock} to be off")
        self.assertEqual(self.terminal.typed(), b"")

    def test_quick_drop_leaves_a_terminal_alone(self):
        shelf = self.start("xfce4-panel")
        self.terminal.activate()
        self.x.keys(*QUICK_DROP)
        self.x.keys("x")
        wait_for(lambda: self.terminal.typed() == b"x", "nothing but the letter in the terminal")
        self.assertIsNone(shelf.popover())
        self.assert_toggles(shelf)
        self.assertEqual((self.terminal.typed(), shelf.filenames()), (b"x", []))


if __name__ == "__main__":
    unittest.main()
