# SPDX-License-Identifier: MIT
"""Films the program at work, for README: moving_picture.py PROGRAM FILE.png

An animated PNG of real drags on a desktop of its own, in light and dark looks. To be run by a user: a file manager of
root wears a warning.
"""
import sys
import time
from pathlib import Path

from PIL import Image, ImageChops

PROJECT = Path(__file__).resolve().parents[1]
sys.path.insert(0, str(PROJECT / "tools/desktop"))
from drag import Drag
from peers import Thunar, start_panel
from private_desktop import PrivateDesktop
from stowpocket import POCKET, Stowpocket
from terminal import run
from x_display import Rect, wait_for

SIZE = "860x430"
SOURCE, TARGET = Rect(14, 40, 490, 160), Rect(14, 244, 490, 160)
FRAME, MOMENT, LOOK = 60, 600, 1600  # how long pictures stay, in milliseconds
SETTLED = 0.05  # seconds, in which windows follow the pointer
BACKGROUNDS = {"Adwaita": 0x7A93A8, "Adwaita-dark": 0x27323C}
THUNAR = """<?xml version="1.0" encoding="UTF-8"?>
<channel name="thunar" version="1.0"><property name="last-side-pane" type="string" value="void"/>
<property name="last-menubar-visible" type="bool" value="false"/>
<property name="last-location-bar" type="string" value="void"/></channel>"""


class Film:
    """The pictures of the screen, each with how long it stays."""

    def __init__(self, x):
        self.x, self.frames = x, []
        x.display.xfixes_query_version()
        self.point, x.point = x.point, self.follow

    def take(self, milliseconds):
        picture = self.x.picture().convert("RGB")
        cursor = self.x.display.xfixes_get_cursor_image(self.x.root)
        pixels = b"".join(pixel.to_bytes(4, "little") for pixel in cursor.cursor_image)
        arrow = Image.frombytes("RGBA", (cursor.width, cursor.height), pixels, "raw", "BGRA")
        picture.paste(arrow, (cursor.x - cursor.xhot, cursor.y - cursor.yhot), arrow)
        if self.frames and not ImageChops.difference(picture, self.frames[-1][0]).getbbox():
            self.frames[-1][1] += milliseconds
        else:
            self.frames.append([picture, milliseconds])

    def follow(self, x, y):
        """Moves the pointer, as the display does, and films every other step."""
        self.point(x, y)
        self.steps = getattr(self, "steps", 0) + 1
        if self.steps % 2 == 0:
            time.sleep(SETTLED)
            self.take(FRAME)

    def move(self, start, end):
        for step in range(1, 17):
            self.x.point(start[0] + (end[0] - start[0]) * step // 16, start[1] + (end[1] - start[1]) * step // 16)

    def save(self, file):
        (first, _), *others = self.frames
        first.save(file, save_all=True, append_images=[picture for picture, _ in others], loop=0,
                   duration=[milliseconds for _, milliseconds in self.frames])


def set_theme(desktop, settings, theme):
    """As the settings of a desktop do, and with a background that goes with it."""
    x, name = desktop.x, theme.encode()
    padded = name + bytes(-len(name) % 4)
    header = b"\0\0\0\0\1\0\0\0\1\0\0\0" + b"\1\0\x0d\0Net/ThemeName\0\0\0\1\0\0\0"
    value = header + bytes([len(name), 0, 0, 0]) + padded
    settings.change_property(x.atom("_XSETTINGS_SETTINGS"), x.atom("_XSETTINGS_SETTINGS"), 8, value)
    x.root.change_attributes(background_pixel=BACKGROUNDS[theme])
    x.root.clear_area()
    x.sync()


def play(film, desktop, stowpocket, here, there):
    """Files are dropped on the icon, wait on the shelf and are dragged out again."""
    x, names = desktop.x, sorted(file.name for file in here.folder.iterdir())
    begin, middle = here.select_all(), (620, 400)
    x.point(*middle)
    film.take(LOOK)
    film.move(middle, begin)
    drag = Drag(x, begin)
    drag.over((600, 150), lambda: x.find(POCKET), "the pocket")
    drag.over(stowpocket.icon(), lambda: drag.is_taken() and stowpocket.popover(), "the shelf to open")
    film.take(MOMENT)
    drag.release()
    for name in names:
        stowpocket.tile(name)
    wait_for(lambda: not x.find(POCKET), "the pocket to uncover the icon")
    time.sleep(1)  # the tiles move to their places
    film.take(LOOK)
    film.move(stowpocket.icon(), middle)
    x.click(*middle)
    wait_for(lambda: not stowpocket.popover(), "the shelf to close")
    film.take(LOOK)
    film.move(middle, stowpocket.icon())
    stowpocket.open_popover()
    time.sleep(1)
    film.take(MOMENT)
    tile = stowpocket.tile(names[0]).centre()
    film.move(stowpocket.icon(), tile)
    drag = stowpocket.drag_tile(names[0])
    drag.over(there.blank_place(), drag.is_taken, "the folder to take the drop")
    film.take(MOMENT)
    drag.release()
    # The file manager may select what has come.
    wait_for(lambda: there.status.name.startswith(("1 ", f'"{names[0]}"')), "the copy to be shown")
    film.take(LOOK)


def main():
    program, file = sys.argv[1], sys.argv[2]
    with PrivateDesktop(PROJECT / "build/moving_picture", SIZE) as desktop:
        source, target = desktop.folder("Harbour", 0), desktop.folder("Letter", 0)
        shades = Image.linear_gradient("L").resize((160, 120))
        for name, colour in ("boats.png", "orange"), ("pier.png", "steelblue"), ("sunset.png", "indianred"):
            coloured, white = (Image.new("RGB", shades.size, each) for each in (colour, "white"))
            Image.composite(coloured, white, shades).save(source / name)
        settings = desktop.home / "config/xfce4/xfconf/xfce-perchannel-xml"
        settings.mkdir(parents=True)
        (settings / "thunar.xml").write_text(THUNAR)
        shared = desktop.x.manage("_XSETTINGS_S0")
        shared.unmap()
        start_panel(desktop, "trayer")
        stowpocket = Stowpocket(desktop, program=program)
        film = Film(desktop.x)
        for theme, variant in ("Adwaita", "Adwaita"), ("Adwaita-dark", "Adwaita:dark"):
            set_theme(desktop, shared, theme)
            desktop.environment["GTK_THEME"] = variant
            here, there = Thunar(desktop, source, SOURCE), Thunar(desktop, target, TARGET)
            play(film, desktop, stowpocket, here, there)
            desktop.end(here.process)
            run(desktop, program, "clear")
            for copy in target.iterdir():
                copy.unlink()
        film.save(file)
    print(f"{file}: {len(film.frames)} pictures, {Path(file).stat().st_size} bytes")


main()
