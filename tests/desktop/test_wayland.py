# SPDX-License-Identifier: MIT
"""The program in the Wayland sessions that are small enough for every run; test_sessions has the others."""
import signal

import session
from case import DesktopTest
from drag import Drag
from session import FREE
from stowpocket import PAINTED, POCKET
from terminal import run
from wayland_desktop import KwinDesktop, SwayDesktop, WaylandWindow
from x_display import Rect, wait_for

HURRIED = (700, 300)


class Layers(session.Session):
    """A compositor that shows the pocket itself."""

    def test_pocket_gives_its_newest_file_to_a_wayland_window(self):
        *_, newest = files = self.desktop.files("staged", 3)
        self.stage(*files)
        self.assertIsNone(self.x.find(POCKET), "it is no X11 window")
        x, y = self.stowpocket.icon()
        # The count is on the right, and stands for all files.
        self.drag_out((x - 12, y), newest)

    def stage(self, *files):  # pylint: disable=arguments-differ
        self.window = WaylandWindow(self.desktop, self.desktop.folder("more"))
        self.start(*files).wait_for_files([file.name for file in files])
        wait_for(self.click_away, "the shelf to close")
        self.window.forget()

    def drag_out(self, place, file):
        self.drop_in_window(Drag(self.x, place, lambda: self.window.says("drag over it")), file)


class Sway(Layers):
    desktop_type = SwayDesktop

    def test_list_beside_the_pocket_gives_the_chosen_file_to_a_wayland_window(self):
        oldest, *_ = files = self.desktop.files("staged", 2)
        self.stage(*files)
        pocket = self.stowpocket.pocket()
        self.x.point(*pocket.centre())
        # The lowest of three rows, which are 36 points high.
        row = Rect(pocket.x - 200, pocket.y + pocket.height + 6 + 6 + 36 + 7 + 36, 200, 36)
        wait_for(lambda: self.x.contrast(row) > PAINTED, "the list to unfold")
        self.drag_out(row.centre(), oldest)
        self.x.point(*FREE)
        wait_for(lambda: self.x.contrast(row) < PAINTED, "the list to be folded")

    def test_hears_of_drags_and_places_the_shelf_though_sway_does_neither_by_itself(self):
        stowpocket = self.begin(4)

        def hears_of_a_drag():
            drag = Drag(self.x, FREE, lambda: self.window.says("drag begun"))
            drag.over(FREE, lambda: self.window.says("drag over it"), "the window to be dragged over")
            is_heard = self.x.is_dragging()
            drag.release()
            return is_heard
        # Not of one that begins before the pocket has been there for a moment.
        wait_for(hears_of_a_drag, "the X server to hear of a drag")
        stowpocket.open_popover()
        pocket = stowpocket.pocket()

        def hangs_from_the_pocket():
            shelf = self.x.rect(stowpocket.popover())
            return shelf.y < pocket.y + pocket.height < shelf.centre()[1] and shelf.x + shelf.width >= pocket.x
        wait_for(hangs_from_the_pocket, "the shelf to be at the pocket")
        height = self.x.rect(stowpocket.popover()).height
        run(self.desktop, stowpocket.program, "add", *(self.desktop.home / "papers").iterdir())
        wait_for(lambda: self.x.rect(stowpocket.popover()).height > height, "the shelf to grow")
        wait_for(hangs_from_the_pocket, "the grown shelf to be there too")

    def test_settings_have_the_lines_that_bind_the_shortcuts(self):
        stowpocket = self.start()
        stowpocket.open_popover()
        line = f"bindsym Mod1+Shift+s exec {stowpocket.program} toggle"
        for button in "Settings", f"Copy {line}":
            stowpocket.wait_for_shown(button).do("Press")
        stowpocket.wait_for_shown(f"Copied {line}")
        wait_for(lambda: run(self.desktop, "wl-paste", "--no-newline")[1] == line, "the line on the clipboard")


class Kwin(Layers):
    desktop_type = KwinDesktop

    def test_drag_out_leaves_the_shelf_working(self):
        first, = self.desktop.files("staged", 1)
        window, stowpocket = WaylandWindow(self.desktop, self.desktop.folder("more")), self.start(first)
        stowpocket.wait_open()
        drag = stowpocket.drag_tile(first.name)
        drag.over(FREE, lambda: window.says("active"), "the window to become active, as it does on KWin")
        drag.over(FREE, lambda: self.x.active_window() != stowpocket.popover(), "the shelf to lose the keyboard")
        window.forget()
        drag.over(FREE, lambda: window.says("drag over it"), "the window to be dragged over once more")
        # A hand that lets go while it still moves is faster than the dragged picture.
        stowpocket.process.send_signal(signal.SIGSTOP)
        self.x.point(*HURRIED)
        drag.release()
        stowpocket.process.send_signal(signal.SIGCONT)
        window.wait_for(f"dropped {first.as_uri()}")
        # KWin gives the keyboard to the window or back to the shelf; without it the shelf closes.
        wait_for(lambda: stowpocket.popover() in (None, self.x.active_window()), "the shelf to close or be active")
        stowpocket.open_popover()
        # While KWin still leaves the keyboard with the shelf, a click tells an X11 program nothing.
        wait_for(self.click_away, "the shelf to close")
        window.wait_for("pressed")


class Dense(DesktopTest):
    """KWin with two pixels along each side of a point."""

    @staticmethod
    def desktop_type(logs):
        return KwinDesktop(logs, scale=2)

    def test_is_sharp(self):
        stowpocket = self.start(None)
        shelf = self.x.rect(stowpocket.open_popover())
        self.assertGreater(shelf.width, 2 * 320)  # the width of what is in it, in points
        self.assertEqual(self.x.picture().size, tuple(self.x.rect(self.x.root)[2:]))  # so that nothing enlarges it


del Layers  # by itself it is no test
