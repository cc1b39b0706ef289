# SPDX-License-Identifier: MIT
"""The program in desktops that are too large for every run."""
import session
from session import FREE
from stowpocket import STATUS_ITEM
from wayland_desktop import GnomeDesktop, WaylandWindow
from x_display import wait_for


class Gnome(session.Session):
    """Without the extension that shows tray icons, as it comes."""

    desktop_type = GnomeDesktop

    def start_tray(self):
        self.desktop.enable_indicators(True)

    def end_tray(self):
        self.desktop.enable_indicators(False)

    def test_bare_desktop_and_overview_close_the_shelf(self):
        stowpocket = self.start()
        stowpocket.open_for_keys()
        wait_for(self.click_away, "the shelf to close")
        stowpocket.open_for_keys()
        self.desktop.evaluate("Main.overview.show()")
        stowpocket.wait_closed()

    def copy(self, file):
        super().copy(file)
        wait_for(lambda: self.x.selection_owner("CLIPBOARD"), "the Shell to let a new window copy")

    def test_files_are_dragged_out(self):
        first, = self.desktop.files("staged", 1)
        window, stowpocket = WaylandWindow(self.desktop, self.desktop.folder("more")), self.start(first)
        stowpocket.wait_open()
        drag = stowpocket.drag_tile(first.name)
        window.forget()
        drag.over(FREE, lambda: window.says("drag over it"), "the window to be dragged over")
        drag.release()
        window.wait_for(f"dropped {first.as_uri()}")
        wait_for(self.click_away, "the shelf to close")


class GnomeWithIndicators(Gnome):
    """Its panel shows our window in a place of its own and passes clicks on, but no drags."""

    icon_window = STATUS_ITEM
    test_quick_drop_takes_what_was_copied = test_files_are_dragged_out = None  # they have nothing to do with the icon

    class desktop_type(GnomeDesktop):  # pylint: disable=invalid-name
        has_indicators = True
