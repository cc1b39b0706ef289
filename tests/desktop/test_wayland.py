# SPDX-License-Identifier: MIT
"""The program in a Wayland session, among windows that are no X11 windows."""
import signal

from case import DesktopTest
from drag import Drag
from wayland_desktop import KwinDesktop, WaylandWindow
from x_display import wait_for

FREE, HURRIED = (300, 600), (700, 300)


class Kwin(DesktopTest):
    desktop_type = KwinDesktop

    def test_drag_out_leaves_the_shelf_working(self):
        first, = self.desktop.folder("papers", 1).iterdir()
        # The shelf opens last: a window that takes the keyboard would close it.
        window = WaylandWindow(self.desktop, self.desktop.folder("more"))
        stowpocket = self.start(None, first)
        wait_for(stowpocket.popover, "the shelf to open")
        drag = stowpocket.drag_tile(first.name)
        drag.over(FREE, lambda: window.says("active"), "the window to become active, as it does on KWin")
        x = self.desktop.x
        drag.over(FREE, lambda: x.active_window() != stowpocket.popover(), "the shelf to lose the keyboard")
        window.forget()
        drag.over(FREE, lambda: window.says("drag over it"), "the window to be dragged over once more")
        # A hand that lets go while it still moves is faster than the dragged picture.
        stowpocket.process.send_signal(signal.SIGSTOP)
        x.point(*HURRIED)
        drag.release()
        stowpocket.process.send_signal(signal.SIGCONT)
        window.wait_for(f"dropped {first.as_uri()}")
        self.desktop.picture("dropped")
        # KWin gives the keyboard to the window or back to the shelf; without it the shelf closes.
        wait_for(lambda: stowpocket.popover() in (None, x.active_window()), "the shelf to close or have the keyboard")
        stowpocket.open_popover()

        def click_away():
            x.click(*FREE)
            return not stowpocket.popover()
        # While KWin still leaves the keyboard with the shelf, a click tells an X11 program nothing.
        wait_for(click_away, "the shelf to close")
        window.wait_for("pressed")

    def test_pocket_takes_what_a_wayland_window_drags(self):
        stowpocket = self.start(None)
        WaylandWindow(self.desktop, self.desktop.folder("papers", 2))
        drag = Drag(self.desktop.x, FREE)
        drag.over(stowpocket.icon(), stowpocket.popover, "the shelf to open")
        drag.release()
        stowpocket.wait_for_files(["file 01.txt", "file 02.txt"])
