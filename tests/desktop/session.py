# SPDX-License-Identifier: MIT
"""What holds in every Wayland session, among windows that are no X11 windows."""
import signal

from case import DesktopTest
from drag import Drag
from peers import start_panel
from stowpocket import PAINTED, POCKET, Stowpocket
from terminal import run
from wayland_desktop import WaylandWindow
from x_display import Rect, wait_for

FREE = (300, 600)


class InSession(DesktopTest):
    """The window comes first: one that takes the keyboard closes the shelf."""

    icon_window = POCKET  # where there is no tray

    def start(self, *files):  # pylint: disable=arguments-differ
        self.stowpocket = Stowpocket(self.desktop, *files, icon=self.icon_window)
        return self.stowpocket

    def begin(self, count):
        self.names = [file.name for file in self.desktop.files("papers", count)]
        self.window = WaylandWindow(self.desktop, self.desktop.home / "papers")
        return self.start()

    def command(self, verb):
        self.assertEqual(run(self.desktop, self.stowpocket.program, verb), (0, "", ""))

    def click_away(self):
        self.x.click(*FREE)
        return not self.stowpocket.popover()

    def drag_to_the_pocket(self):
        """Whoever lets go before the pocket has said that it takes the drop drops nothing."""
        drag = Drag(self.x, FREE, lambda: self.window.says("drag begun"))
        pocket = wait_for(self.stowpocket.pocket, "the pocket")
        drag.over(pocket.centre(), self.is_shelf_painted, "the shelf to open")
        return drag

    def drop_in_window(self, drag, file):
        """Drops what is dragged in the window, which then has the file."""
        self.window.forget()
        drag.over(FREE, lambda: self.window.says("drag over it"), "the window to be dragged over")
        drag.release()
        self.window.wait_for(f"dropped {file.as_uri()}")

    def is_shelf_painted(self):
        """It is after the pocket has answered."""
        popover = self.stowpocket.popover()
        return popover and self.x.contrast(self.x.rect(popover)) > PAINTED

    def is_lit(self, zone):
        """Whether the left edge of the zone for drops has the colour of one that takes a drop."""
        edge = self.x.pixels(Rect(zone.x, zone.y, 8, zone.height // 2))
        return any(max(pixel) - min(pixel) > PAINTED for pixel in zip(edge[::3], edge[1::3], edge[2::3]))


class Session(InSession):
    """What holds in each of them."""

    def test_pocket_and_a_command_open_the_shelf_and_a_click_elsewhere_closes_it(self):
        stowpocket = self.begin(0)
        self.x.click(*stowpocket.icon(), 3)
        wait_for(lambda: self.x.find("stowpocket"), "the icon's menu")
        wait_for(lambda: self.x.click(*FREE) or not self.x.find("stowpocket"), "the menu to close")
        stowpocket.open_popover()
        self.x.click(*stowpocket.icon())
        stowpocket.wait_closed()
        self.command("show")
        wait_for(lambda: self.x.active_window() == stowpocket.wait_open(), "the shelf to have the keyboard")
        wait_for(self.click_away, "the shelf to close")
        self.window.wait_for("pressed")

    def test_pocket_and_shelf_take_what_a_wayland_window_drags(self):
        stowpocket = self.begin(2)
        drag = self.drag_to_the_pocket()
        drag.release()
        stowpocket.wait_for_files(self.names)
        self.command("clear")
        wait_for(self.click_away, "the shelf to close")
        drag = self.drag_to_the_pocket()

        def shelf_takes_it():
            zone = stowpocket.wait_for_shown("Drop zone").rect()  # moves on where the compositor had placed the shelf
            drag.over(zone.centre(), lambda: True, "the zone")
            return self.is_lit(zone)
        wait_for(shelf_takes_it, "the shelf to take the drop")
        drag.release()
        stowpocket.wait_for_files(self.names)

    def start_tray(self):
        self.panel = start_panel(self.desktop, "trayer")

    def end_tray(self):
        self.desktop.end(self.panel, signal.SIGKILL)

    def test_follows_the_desktop(self):
        self.desktop.start_portal()
        stowpocket = self.start()
        self.start_tray()
        wait_for(lambda: not stowpocket.pocket(), "the pocket to make room for the icon")
        self.end_tray()
        stowpocket.icon_window = POCKET
        stowpocket.wait_for_painted_icon()
        place = self.x.rect(stowpocket.open_popover())
        self.desktop.ask_for_dark_colours()
        wait_for(lambda: (pixels := sorted(self.x.pixels(place)))[len(pixels) // 2] < 100, "the shelf to be dark")

    def copy(self, file):
        self.desktop.start("wl-copy", "--foreground", "--type", "text/uri-list", file.as_uri())

    def test_quick_drop_takes_what_was_copied(self):
        stowpocket = self.begin(1)
        self.command("quick-drop")
        stowpocket.wait_for_shown("Copy files first, then press the shortcut")
        wait_for(self.click_away, "the shelf to close")
        copied, = self.desktop.files("copied", 1)
        self.copy(copied)
        self.command("quick-drop")
        stowpocket.wait_for_files([copied.name])
        self.assertIsNone(stowpocket.shown("Copy files first"))
