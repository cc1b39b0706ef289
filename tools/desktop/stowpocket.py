# SPDX-License-Identifier: MIT
"""Our program, as a user and the disk see it."""
import os
import plistlib
import signal
from pathlib import Path

from drag import Drag
from x_display import wait_for

PROJECT = Path(__file__).resolve().parents[2]
STATUS_ITEM, POCKET = "stowpocket status item", "stowpocket pocket"
PAINTED = 60
PROGRAM = os.environ.get("STOWPOCKET", PROJECT / "build/dev/bin/stowpocket")


class Stowpocket:
    def __init__(self, desktop, *files, program=PROGRAM, icon=STATUS_ITEM):
        self.icon_window = icon
        self.desktop, self.x, self.program = desktop, desktop.x, str(Path(program).resolve())
        self.settings = desktop.home / "config/stowpocket/preferences.plist"
        if not self.settings.exists():
            self.settings.parent.mkdir()
            self.settings.write_bytes(plistlib.dumps({"onboardingShown": True}))
        self.start(*files)

    def start(self, *files):
        self.process = self.desktop.start(self.program, *map(str, files))
        self.icon()
        self.wait_for_painted_icon()

    def wait_for_painted_icon(self):
        """It is on the screen before that, and in panels before it has room: until then a click meets others."""
        wait_for(lambda: (icon := self.icon_rect()) and self.x.contrast(icon) > PAINTED, "the icon to be painted")

    def end(self, how=signal.SIGTERM):
        return self.desktop.end(self.process, how)

    def restart(self, **preferences):
        """Starts it again, with these preferences stored in between."""
        self.end()
        self.settings.write_bytes(plistlib.dumps(self.preferences() | preferences))
        self.start()

    def window_rect(self, title):
        window = self.x.find(title)
        return window and self.x.rect(window)

    def pocket(self):
        """Where the pocket is, or nothing. One that is no X11 window is in the picture of the screen alone."""
        if not self.x.pocket:
            return self.window_rect(POCKET)
        return self.x.contrast(self.x.pocket) > PAINTED and self.x.pocket

    def icon_rect(self):
        return self.pocket() if self.icon_window == POCKET else self.window_rect(self.icon_window)

    def icon(self):
        """The middle of the icon, once it has its place: one that no panel has placed lies beyond the screen's edge."""
        screen = self.x.rect(self.x.root)

        def place():
            icon = self.icon_rect()
            return icon and icon.x + icon.width <= screen.width and icon
        return wait_for(place, "the icon").centre()

    def preferences(self):
        """What the preference file says, of which the defaults are no part."""
        try:
            return plistlib.loads(self.settings.read_bytes())
        except FileNotFoundError:
            return {}

    def shelf(self):
        """The saved shelf, oldest item first."""
        return self.preferences().get("shelfBookmarks", [])

    def filenames(self):
        return [item["filename"] for item in self.shelf()]

    def wait_for_files(self, names):
        wait_for(lambda: self.filenames() == names, f"{names} on the shelf")

    def popover(self):
        """The window of the open popover, or nothing."""
        return self.x.find("stowpocket shelf")

    def wait_open(self):
        return wait_for(self.popover, "the popover")

    def wait_closed(self):
        wait_for(lambda: not self.popover(), "the popover to close")

    def open_popover(self):
        if not self.popover():
            self.x.click(*self.icon())
        return self.wait_open()

    def open_for_keys(self):
        """Opens it until it has the keyboard."""
        popover = self.open_popover()
        wait_for(lambda: self.x.active_window() == popover, "the popover to have the keyboard")

    def open_settings(self):
        self.open_popover()
        self.press("Settings")
        window = self.placed("stowpocket Settings")
        wait_for(lambda: self.x.active_window() == window, "the settings to have the keyboard")

    def placed(self, title):
        """The program's window with this title, once the program too knows where it is, and so all that is in it."""
        window = wait_for(lambda: self.x.find(title), title)
        frame = self.wait_for_shown(title)
        wait_for(lambda: frame.rect() == self.x.rect(window), f"{title} to know its place")
        return window

    def shown(self, start):
        """What the program shows whose name begins so, or nothing."""
        for window in self.desktop.tree.program("stowpocket").children():
            for each in window.everything():
                if each.name.startswith(start) and each.is_showing():
                    return each
        return None

    def wait_for_shown(self, start):
        return wait_for(lambda: self.shown(start), f'"{start}" to be shown')

    def tile(self, filename):
        return self.wait_for_shown(f"{filename}, ")

    def press(self, name):
        self.x.click(*self.wait_for_shown(name).centre())

    def take_drop(self, drag):
        """Drops what is dragged on the icon, which opens the popover before."""
        # It comes to lie over the icon. Nothing is dropped where another window gets under the pointer just before.
        wait_for(lambda: self.x.find(POCKET), "the pocket")
        drag.hover(self.icon(), self.popover)
        drag.release()

    def drag_tile(self, filename):
        tile = self.tile(filename)
        self.placed("stowpocket shelf")
        return Drag(self.x, tile.centre())
