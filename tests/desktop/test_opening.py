# SPDX-License-Identifier: MIT
"""Files of the shelf in other programs, without a drag."""
from case import DesktopTest
from peers import RIGHT, Thunar
from x_display import wait_for

APPLICATION = "[Desktop Entry]\nType=Application\nName=Copier\nExec=cp %f {folder}\nMimeType=text/plain;\n"
DEFAULTS = "[Default Applications]\ntext/plain=copier.desktop\n"


class Opening(DesktopTest):
    def test_a_double_click_opens_and_the_menu_shows_in_the_file_manager(self):
        home, folder, opened = self.desktop.home, self.desktop.folder("papers", 1), self.desktop.folder("opened")
        odd = folder / "it's \"$(touch x)\" & %41.txt"
        odd.write_text("odd")
        (home / "data/applications").mkdir()
        (home / "data/applications/copier.desktop").write_text(APPLICATION.format(folder=opened))
        (home / "config/mimeapps.list").write_text(DEFAULTS)
        stowpocket, x = self.start("trayer", *sorted(folder.iterdir())), self.desktop.x
        Thunar(self.desktop, opened, RIGHT)
        stowpocket.open_popover()
        stowpocket.placed("stowpocket shelf")
        place = stowpocket.wait_for_shown("it's").centre()  # looked up once: a double click is quick
        x.click(*place)
        x.click(*place)
        wait_for((opened / odd.name).exists, "the application to have the file")
        x.keys("Menu")
        x.keys("Down")
        x.keys("Down")
        x.keys("Return")
        wait_for(lambda: x.find("papers - Thunar"), "the folder")
        thunar = self.desktop.tree.program("thunar")
        wait_for(lambda: any(odd.name in bar.name for bar in thunar.everything() if bar.role == "statusbar"),
                 "the file to be selected there")
