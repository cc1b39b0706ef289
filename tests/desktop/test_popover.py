# SPDX-License-Identifier: MIT
"""The popover and what can be done in it."""
import time

from case import DesktopTest
from drag import BARE_DESKTOP
from stowpocket import STATUS_ITEM
from x_display import wait_for


class Popover(DesktopTest):
    def click_opens_and_closes(self, panel):
        stowpocket = self.stage(panel, 1)
        wait_for(lambda: self.x.contrast(self.x.rect(self.x.find(STATUS_ITEM))) > 150,
                 "the icon to stand out from its panel")
        for _ in range(2):
            stowpocket.open_popover()
            stowpocket.tile("file 01.txt")
            self.x.click(*stowpocket.icon())
            stowpocket.wait_closed()

    def test_click_on_the_icon_in_xfce4_panel_opens_and_closes(self):
        self.desktop.environment["GTK_THEME"] = "Adwaita:dark"
        self.click_opens_and_closes("xfce4-panel")

    def test_click_on_the_icon_in_trayer_opens_and_elsewhere_closes_after_a_moment(self):
        self.click_opens_and_closes("trayer")
        for number in (1, 3):
            self.stowpocket.open_popover()
            clicked = time.monotonic()
            self.x.click(*BARE_DESKTOP, number)
            self.stowpocket.wait_closed()
            self.assertGreater(time.monotonic() - clicked, 0.28)

    def test_follows_the_theme_of_a_desktop_that_comes_and_goes(self):
        x, place = self.x, self.x.rect(self.stage("trayer", 1).open_popover())

        def wait_for_look(is_dark, what):
            wait_for(lambda: (sorted(x.pixels(place))[place.width * place.height] < 100) == is_dark, what)
        settings, header = x.manage("_XSETTINGS_S0"), b"\0\0\0\0\1\0\0\0\1\0\0\0"
        for theme, is_dark in ((b"Arc-Dark", True), (b"Arc.", False), (b"Arc-Dark", True)):
            # The theme fills whole words of four bytes.
            name = b"\1\0\x0d\0Net/ThemeName\0\0\0\1\0\0\0" + bytes([len(theme), 0, 0, 0]) + theme
            settings.change_property(x.atom("_XSETTINGS_SETTINGS"), x.atom("_XSETTINGS_SETTINGS"), 8, header + name)
            x.sync()
            wait_for_look(is_dark, f"the look of {theme}")
        settings.destroy()
        x.sync()
        wait_for_look(False, "the look without a theme")
