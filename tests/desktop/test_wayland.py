# SPDX-License-Identifier: MIT
"""The program in Wayland sessions, among windows that are no X11 windows."""
import signal

from case import DesktopTest
from drag import Drag
from terminal import run
from wayland_desktop import KwinDesktop, SwayDesktop, WaylandWindow
from x_display import wait_for

FREE, HURRIED = (300, 600), (700, 300)


class Session(DesktopTest):
    """What holds in every session. The window comes first: one that takes the keyboard closes the shelf."""

    def begin(self, count):
        self.names = [file.name for file in self.desktop.files("papers", count)]
        self.window = WaylandWindow(self.desktop, self.desktop.home / "papers")
        return self.start(None)

    def command(self, verb):
        self.assertEqual(run(self.desktop, self.stowpocket.program, verb), (0, "", ""))

    def click_away(self):
        self.x.click(*FREE)
        return not self.stowpocket.popover()

    def test_pocket_and_a_command_open_the_shelf_and_a_click_elsewhere_closes_it(self):
        stowpocket = self.begin(0)
        stowpocket.open_popover()
        self.x.click(*stowpocket.icon())
        stowpocket.wait_closed()
        self.command("show")
        wait_for(lambda: self.x.active_window() == stowpocket.wait_open(), "the shelf to have the keyboard")
        wait_for(self.click_away, "the shelf to close")
        self.window.wait_for("pressed")

    def test_pocket_takes_what_a_wayland_window_drags(self):
        stowpocket = self.begin(2)
        drag = Drag(self.x, FREE)
        drag.over(stowpocket.icon(), stowpocket.popover, "the shelf to open")
        drag.release()
        stowpocket.wait_for_files(self.names)

    def test_quick_drop_takes_what_was_copied(self):
        stowpocket = self.begin(1)
        self.command("quick-drop")
        stowpocket.wait_for_shown("Copy files first, then press the shortcut")
        wait_for(self.click_away, "the shelf to close")
        copied, = self.desktop.files("copied", 1)
        self.desktop.start("wl-copy", "--foreground", "--type", "text/uri-list", copied.as_uri())
        self.command("quick-drop")
        stowpocket.wait_for_files([copied.name])
        self.assertIsNone(stowpocket.shown("Copy files first"))


class Sway(Session):
    desktop_type = SwayDesktop

    def test_settings_have_the_lines_that_bind_the_shortcuts(self):
        stowpocket = self.start(None)
        stowpocket.open_popover()
        line = f"bindsym Mod1+Shift+s exec {stowpocket.program} toggle"
        for button in "Settings", f"Copy {line}":
            stowpocket.wait_for_shown(button).do("Press")
        stowpocket.wait_for_shown(f"Copied {line}")
        wait_for(lambda: run(self.desktop, "wl-paste", "--no-newline")[1] == line, "the line on the clipboard")


class Kwin(Session):
    desktop_type = KwinDesktop

    def test_drag_out_leaves_the_shelf_working(self):
        first, = self.desktop.files("staged", 1)
        window, stowpocket = WaylandWindow(self.desktop, self.desktop.folder("more")), self.start(None, first)
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


del Session  # by itself it is no test
