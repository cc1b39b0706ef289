# SPDX-License-Identifier: MIT
"""The popover and what can be done in it without a drag."""
from case import DesktopTest
from drag import BARE_DESKTOP
from peers import RIGHT, Thunar
from stowpocket import STATUS_ITEM
from x_display import wait_for

APPLICATION = "[Desktop Entry]\nType=Application\nName=Copier\nExec=cp %f {folder}\nMimeType=text/plain;\n"
DEFAULTS = "[Default Applications]\ntext/plain=copier.desktop\n"


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

    def test_click_on_the_icon_in_trayer_opens_and_elsewhere_closes(self):
        self.click_opens_and_closes("trayer")
        for number in (1, 3):
            self.stowpocket.open_popover()
            self.x.click(*BARE_DESKTOP, number)
            self.stowpocket.wait_closed()

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

    def test_a_double_click_opens_and_the_menu_shows_in_the_file_manager(self):
        home, folder, opened = self.desktop.home, self.desktop.folder("papers", 1), self.desktop.folder("opened")
        odd = folder / "it's \"$(touch x)\" & %41.txt"
        odd.write_text("odd")
        (home / "data/applications").mkdir()
        (home / "data/applications/copier.desktop").write_text(APPLICATION.format(folder=opened))
        (home / "config/mimeapps.list").write_text(DEFAULTS)
        stowpocket, x = self.start("trayer", *sorted(folder.iterdir())), self.x
        Thunar(self.desktop, opened, RIGHT)
        stowpocket.open_popover()
        stowpocket.placed("stowpocket shelf")
        place = stowpocket.wait_for_shown("it's").centre()
        # Until two clicks were quick enough to be a double click.
        wait_for(lambda: x.click(*place) or (opened / odd.name).exists(), "the application to have the file")
        for key in "Menu", "Down", "Down", "Return":
            x.keys(key)
        wait_for(lambda: x.find("papers - Thunar"), "the folder")
        thunar = self.desktop.tree.program("thunar")
        wait_for(lambda: any(odd.name in bar.name for bar in thunar.everything() if bar.role == "statusbar"),
                 "the file to be selected there")

    def test_a_screen_reader_meets_a_list_and_can_take_files_off_it(self):
        stowpocket = self.stage("trayer", 3)
        stowpocket.open_popover()
        stowpocket.tile("file 01.txt")
        shelf = stowpocket.shown("Files on the shelf")
        self.assertEqual([(shown.role, shown.name) for shown in [shelf, *shelf.children()]],
                         [("list", "Files on the shelf")] +
                         [("list item", f"file 0{number}.txt, {number * 9} bytes") for number in (1, 2, 3)])
        last = shelf.children()[2]
        self.assertTrue(last.do("SetFocus"))
        wait_for(last.is_focused, "the last tile to have the keyboard")
        self.assertTrue(last.do("Toggle"))
        wait_for(last.is_selected, "the last tile to be selected")
        for left in (2, 1):
            self.assertTrue(shelf.children()[0].do("remove"))
            wait_for(lambda: len(stowpocket.filenames()) == left, f"{left} files on the shelf")
        self.assertTrue(self.files[0].exists())
