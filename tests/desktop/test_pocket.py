# SPDX-License-Identifier: MIT
"""The place for drops that depends on no panel."""
import signal

from Xlib import X, Xatom
from Xlib.ext import shape

from case import DesktopTest
from drag import Drag
from peers import CopyingTray, PcmanfmQt, Thunar, embed_silently, start_panel
from stowpocket import POCKET, STATUS_ITEM
from terminal import run
from x_display import Rect, wait_for


class Pocket(DesktopTest):
    def pocket(self):
        return self.x.find(POCKET)

    def wait_until_gone(self):
        wait_for(lambda: not self.pocket(), "the pocket to go")

    def test_goes_after_each_drag(self):
        stowpocket, window = self.offer("xfce4-panel", Thunar, 1)
        self.wait_until_gone()
        drag = window.drag_all()
        pocket = wait_for(self.pocket, "the pocket")
        self.assertEqual(self.x.rect(pocket), self.x.rect(self.x.find(STATUS_ITEM)))
        drag.hover(stowpocket.icon(), stowpocket.popover)
        drag.release()
        stowpocket.wait_for_files(self.names)
        self.wait_until_gone()
        x, y = window.first_icon()
        drag = Drag(self.x, (x, y + 12))  # where the press is no double click with the one before
        wait_for(self.pocket, "the pocket once more")
        drag.hover(stowpocket.icon())  # across the shelf
        drag.leave()
        drag.release()
        self.wait_until_gone()

    def test_is_beside_a_panel_that_the_compositor_draws(self):
        stowpocket, window = self.offer("xfce4-panel", PcmanfmQt, 1)
        overlay = self.x.root.composite_get_overlay_window().overlay_window
        overlay.shape_rectangles(shape.SO.Set, shape.SK.Input, X.Unsorted, 0, 0, [(0, 0, 1280, 40)])
        drag = window.drag_all()
        pocket = self.x.rect(wait_for(self.pocket, "the pocket"))
        self.assertTrue(pocket.y > 26 and abs(pocket.centre()[0] - stowpocket.icon()[0]) < 40, pocket)
        drag.hover(pocket.centre(), stowpocket.popover)
        drag.release()
        stowpocket.wait_for_files(self.names)
        self.wait_until_gone()

    def test_is_the_icon_until_a_tray_comes_and_between_two(self):
        stowpocket, window = self.offer(None, Thunar, 2)
        narrow = self.x.rect(self.pocket()).width
        stowpocket.take_drop(window.drag_all())
        stowpocket.wait_for_files(self.names)
        wait_for(lambda: self.x.rect(self.pocket()).width > narrow, "room for the count")
        self.x.click(*stowpocket.icon())
        stowpocket.wait_closed()
        stowpocket.icon_window = STATUS_ITEM
        for panel in "xfce4-panel", "trayer":
            panel = start_panel(self.desktop, panel)
            self.wait_until_gone()
            stowpocket.wait_for_shown("Shelf with 2 items")
            stowpocket.open_popover()
            self.x.click(*stowpocket.icon())
            stowpocket.wait_closed()
            self.desktop.end(panel, signal.SIGKILL)
            wait_for(self.pocket, "the pocket once more")

    def test_tray_that_embeds_without_a_word_shows_the_icon_as_large_as_it_likes(self):
        stowpocket = self.start(None)
        tray, bar = embed_silently(self.x, STATUS_ITEM)
        self.wait_until_gone()
        icon = self.x.find(STATUS_ITEM)
        place = self.x.rect(icon)
        self.x.click(*place.centre())

        def check_shelf():
            popover = self.x.rect(stowpocket.wait_open())
            self.assertTrue(24 <= popover.y < 60 and popover.x < 652 < popover.x + popover.width, popover)
        check_shelf()

        def wait_for_wish(is_granted, what):
            wait_for(lambda: is_granted(icon.get_wm_normal_hints().min_width), f"the icon to wish for {what}")
        run(self.desktop, stowpocket.program, "add", self.desktop.folder("papers"))
        wait_for_wish(lambda width: width > 24, "room for the count")
        self.assertEqual(self.x.rect(icon), place)
        tray.change_property(self.x.atom("_NET_SYSTEM_TRAY_ORIENTATION"), Xatom.CARDINAL, 32, [1])
        wait_for_wish(lambda width: width == 22, "a square in a vertical bar")
        bar.configure(x=3000)  # as bars hide
        run(self.desktop, stowpocket.program, "toggle")
        stowpocket.wait_closed()
        run(self.desktop, stowpocket.program, "toggle")
        check_shelf()

    def test_item_in_a_panel_is_the_icon_where_the_tray_only_copies(self):
        stowpocket, x = self.start(None), self.x
        CopyingTray(x).take_in(STATUS_ITEM)
        wait_for(lambda: not x.find(STATUS_ITEM), "the tray to be left")
        wait_for(self.pocket, "the pocket, as there is no panel")
        panel = start_panel(self.desktop, "xfce4-panel")  # which shows items though it is not the tray
        self.wait_until_gone()
        item = Rect(1280 - 22, 4, 20, 20)
        # The bare screen is black there, the panel is light.
        wait_for(lambda: (pixels := sorted(x.pixels(item)))[0] < 100 and pixels[len(pixels) // 3] > 200,
                 "the item in the panel")
        x.click(*item.centre())
        popover = x.rect(stowpocket.wait_open())
        self.assertTrue(popover.y < 60 and popover.x + popover.width > item.x, popover)
        x.click(*item.centre())
        stowpocket.wait_closed()
        self.desktop.end(panel, signal.SIGKILL)
        wait_for(self.pocket, "the pocket once more")
