# SPDX-License-Identifier: MIT
"""The program in desktops that are too large for every run."""
import shutil

import session
from drag import Drag
from session import FREE
from stowpocket import PAINTED, STATUS_ITEM, Stowpocket
from wayland_desktop import GnomeDesktop, PlasmaDesktop, WaylandWindow
from x_display import Rect, wait_for


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
        under_pointer = "String(global.stage.get_actor_at_pos(imports.gi.Clutter.PickMode.REACTIVE, 300, 600))"
        wait_for(lambda: "Surface" in self.desktop.evaluate(under_pointer), "the desktop to be covered")
        self.x.click(*FREE)  # one click: each of more would put the close off
        stowpocket.wait_closed()
        stowpocket.open_for_keys()
        self.desktop.evaluate("Main.overview.show()")
        stowpocket.wait_closed()

    def copy(self, file):
        super().copy(file)
        wait_for(lambda: self.x.selection_owner("CLIPBOARD"), "the Shell to let a new window copy")

    def test_files_are_dragged_out(self):
        first, = self.desktop.files("staged", 1)
        self.window = WaylandWindow(self.desktop, self.desktop.folder("more"))
        stowpocket = self.start(first)
        stowpocket.wait_open()
        self.drop_in_window(stowpocket.drag_tile(first.name), first)
        wait_for(self.click_away, "the shelf to close")


class GnomeWithIndicators(Gnome):
    """Its panel shows our window in a place of its own and passes clicks on, but no drags."""

    icon_window = STATUS_ITEM
    test_quick_drop_takes_what_was_copied = test_files_are_dragged_out = None  # they have nothing to do with the icon

    class desktop_type(GnomeDesktop):  # pylint: disable=invalid-name
        has_indicators = True


class InPlasmasPanel(Stowpocket):
    """There the panel alone knows where the icon is."""

    def icon(self):
        return wait_for(lambda: self.desktop.shown("plasmashell", "Shelf"), "the icon in the panel").centre()

    def wait_for_painted_icon(self):
        """The panel moves its icons about while it starts."""
        seen = []
        wait_for(lambda: seen.append(self.icon()) or seen[-30:] == [seen[-1]] * 30, "the icon to rest")


class Plasma(session.InSession):
    desktop_type = PlasmaDesktop

    def test_panel_and_dolphin(self):
        staged = shutil.copy("/etc/hostname", self.desktop.folder("staged"))
        self.desktop.files("papers", 2)
        stowpocket = self.stowpocket = InPlasmasPanel(self.desktop, staged)
        self.command("show")
        # Until the panel was there the pocket was the icon, at the upper edge.
        wait_for(lambda: self.x.rect(stowpocket.wait_open()).y > 400, "the shelf to be above the panel")
        self.command("toggle")
        stowpocket.wait_closed()
        stowpocket.open_popover()
        self.x.click(*stowpocket.icon())
        stowpocket.wait_closed()
        self.desktop.start("dolphin", "--new-window", str(self.desktop.home / "papers"))
        file = wait_for(lambda: self.desktop.shown("dolphin", "file 02.txt"), "Dolphin")
        pocket, before = self.x.pocket, self.x.pixels(self.x.pocket)
        drag = Drag(self.x, file.centre(), lambda: self.x.pixels(pocket) != before)
        drag.over(pocket.centre(), self.is_shelf_painted, "the shelf to open")
        drag.release()
        stowpocket.wait_for_files(["hostname", "file 02.txt"])
        stowpocket.open_popover()
        drag = stowpocket.drag_tile("hostname")
        drag.over(FREE, drag.is_taken, "Dolphin to take the drop")
        x, y = FREE
        self.choose(Rect(x + 20, y + 30, 60, 16), drag.release)  # to copy it here
        wait_for((self.desktop.home / "papers/hostname").exists, "Dolphin's copy")
        # The panel shows the menu of the icon itself, right above its edge. The last entry ends the program.
        x, y = stowpocket.icon()
        self.choose(Rect(x, y - 50, 60, 16), lambda: self.x.click(x, y, 3))
        wait_for(lambda: stowpocket.process.poll() == 0, "the program to end")

    def choose(self, entry, act):
        """Chooses the entry of a menu at its place, once the menu that `act` opens is there."""
        before = self.x.pixels(entry)
        act()
        wait_for(lambda: self.x.contrast(entry) > PAINTED and self.x.pixels(entry) != before, "the menu")
        self.desktop.picture("menu")
        self.x.click(*entry.centre())
