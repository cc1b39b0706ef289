# SPDX-License-Identifier: MIT
"""Files by the clipboard, the icon's menu, and what was removed brought back."""
from case import DesktopTest
from peers import LEFT, PcmanfmQt, Thunar
from x_display import wait_for


class ClipboardAndMenu(DesktopTest):
    def exchange(self, panel, file_manager):
        """Copies files in a file manager, pastes them in the shelf, and the other way round into another folder."""
        stowpocket, window = self.offer(panel, file_manager, 3)
        x = self.x
        window.select_all()
        x.keys("Control_L", "c")
        wait_for(lambda: x.selection_owner("CLIPBOARD"), "the files to be copied")
        owner = x.selection_owner("CLIPBOARD")
        stowpocket.open_for_keys()
        x.keys("Control_L", "v")
        stowpocket.wait_for_files(self.names)
        x.keys("Control_L", "a")
        x.keys("Control_L", "c")
        wait_for(lambda: x.selection_owner("CLIPBOARD") != owner, "the shelf to be copied")
        target = file_manager(self.desktop, self.desktop.folder("target"), LEFT)
        target.activate()
        x.keys("Control_L", "v")
        wait_for(lambda: sorted(file.name for file in target.folder.iterdir()) == self.names, "the files to arrive")
        self.assertEqual(sorted(file.name for file in self.folder.iterdir()), self.names)
        # It answers nothing. Where the program ends only once Qt has lost its patience, Qt says so in the log.
        x.manage("CLIPBOARD_MANAGER")
        return stowpocket

    def choose(self, number):
        """Chooses that entry of the icon's menu, counted from 1."""
        x = self.x
        x.click(*self.stowpocket.icon(), number=3)
        wait_for(lambda: x.find("stowpocket"), "the menu")
        for _ in range(number):
            x.keys("Down")
        x.keys("Return")
        wait_for(lambda: not x.find("stowpocket"), "the menu to close")

    def test_thunar_and_the_shelf_exchange_files(self):
        self.exchange("xfce4-panel", Thunar)

    def test_pcmanfm_and_the_shelf_exchange_files_and_what_is_removed_comes_back(self):
        stowpocket = self.exchange("trayer", PcmanfmQt)
        stowpocket.wait_closed()
        # "Undo Clear" takes the place of "Clear".
        self.choose(4)
        stowpocket.wait_for_shown("Clear Shelf?")
        for key in "Tab", "space":
            self.x.keys(key)
        stowpocket.wait_for_files([])
        self.choose(4)
        stowpocket.wait_for_files(self.names)
