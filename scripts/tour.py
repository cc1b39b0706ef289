# SPDX-License-Identifier: MIT
"""Shows the program at work on a desktop of its own, with real drags: tour.py PROGRAM.

Pictures and listing.txt are left in build/tour. Ends with 0 only if everything in it has happened.
"""
import sys
from pathlib import Path

from PIL import Image

PROJECT = Path(__file__).resolve().parents[1]
sys.path.insert(0, str(PROJECT / "tools/desktop"))
from peers import LEFT, RIGHT, PcmanfmQt, Thunar, start_panel
from private_desktop import PrivateDesktop
from stowpocket import POCKET, Stowpocket
from x_display import Rect, wait_for

PHOTO, NOTES, TABLE = "harbour.png", "notes.txt", "prices.csv"
ORANGE, ABOVE_TEXT = bytes((255, 159, 10)), 13  # of the buttons of the first run; where in them there is nothing else


def write_files(folder):
    """A photo (a sunset of sorts), a text and a table."""
    sea = bytes(value for y in range(120) for x in range(160)
                for value in ((250 - y, 160 - y, 60 + y // 2) if y < 70 else (20 + x // 4, 60 + y // 2, 110 + y)))
    Image.frombytes("RGB", (160, 120), sea).save(folder / PHOTO)
    (folder / NOTES).write_text("Berth 12 is free from Monday.\n" * 40)
    (folder / TABLE).write_text("mooring,price\nday,18\nweek,95\n")


class Tour:
    def __init__(self, desktop, folders):
        self.desktop, self.folders, self.number = desktop, folders, 0
        self.listing = (desktop.logs / "listing.txt").open("w")

    def show(self, name, text, stowpocket):
        """One step: a picture of the screen, and the shelf and the folders as they are now."""
        self.number += 1
        picture = f"{self.number:02}-{name}"
        self.desktop.picture(picture)
        print(f"{picture}.png  {text}")
        print(f"{picture}.png  {text}\n  shelf: {', '.join(stowpocket.filenames()) or 'empty'}", file=self.listing)
        for folder in self.folders:
            files = (f"{file.name} ({file.stat().st_size} bytes)" for file in sorted(folder.iterdir()))
            print(f"  {folder.name}: {', '.join(files) or 'empty'}", file=self.listing, flush=True)


def take_tour(desktop, program):
    source, target = desktop.folder("Harbour"), desktop.folder("Letter")
    write_files(source)
    names = sorted([PHOTO, NOTES, TABLE])
    start_panel(desktop, "xfce4-panel")
    stowpocket = Stowpocket(desktop, program=program)
    tour = Tour(desktop, (source, target))
    here, there = Thunar(desktop, source, LEFT), PcmanfmQt(desktop, target, RIGHT)
    tour.show("started", "the icon stands in the panel, the shelf is empty", stowpocket)

    drag = here.drag_all()
    drag.hover(stowpocket.icon(), stowpocket.popover)
    stowpocket.wait_for_shown("0/20")
    tour.show("hover", "three files are dragged over the icon: the shelf opens", stowpocket)
    drag.release()
    stowpocket.wait_for_files(names)
    stowpocket.wait_for_shown("3/20")
    for name in names:
        stowpocket.tile(name)
    wait_for(lambda: not desktop.x.find(POCKET), "the pocket to uncover the icon")
    tour.show("dropped", "they are on the shelf and still in their folder", stowpocket)

    stowpocket.drag_tile(NOTES).drop(there.blank_place())
    there.confirm_drop()
    original, copy = source / NOTES, target / NOTES
    wait_for(lambda: copy.exists() and copy.read_bytes() == original.read_bytes(), "the copy")
    there.wait_for_count(1)
    tour.show("dragged-out", "one was dragged from the shelf into another folder: a copy lies there", stowpocket)

    stowpocket.open_popover()
    (source / TABLE).unlink()
    wait_for(lambda: "Missing" in stowpocket.tile(TABLE).name, "the deleted file to be shown missing")
    tour.show("missing", "one was deleted on disk: its tile says so", stowpocket)
    stowpocket.wait_for_files([name for name in names if name != TABLE])
    stowpocket.wait_for_shown("2/20")
    wait_for(lambda: not stowpocket.shown(TABLE), "the tile of the deleted file to go")
    tour.show("gone", "and then it leaves the shelf", stowpocket)
    show_settings(stowpocket, tour)
    show_first_run(stowpocket, tour)
    if stowpocket.end() != 0:
        raise AssertionError("the program did not end cleanly")


def show_settings(stowpocket, tour):
    stowpocket.open_settings()
    for tab, words in (("General", "Launch at login"), ("About", "Version "), ("More Larkfield", "View All Larkfield")):
        stowpocket.press(tab)
        stowpocket.wait_for_shown(words)
        tour.show(f"settings-{tab.split()[0].lower()}", f"the settings, {tab}", stowpocket)


def show_first_run(stowpocket, tour):
    """As it looks once all of it has come; buttons come last."""
    def is_painted(button):
        shown = stowpocket.shown(button)
        middle = shown and shown.centre()
        return middle and stowpocket.x.pixels(Rect(middle[0], middle[1] - ABOVE_TEXT, 1, 1)) == ORANGE

    stowpocket.restart(onboardingShown=False)
    for name, button, text in (("welcome", "Get Started", "the first start tells what the shelf is for"),
                               ("all-set", "Start Using stowpocket", "and where its icon is")):
        wait_for(lambda: is_painted(button), f'"{button}" to be painted')
        tour.show(name, text, stowpocket)
        stowpocket.press(button)
    wait_for(lambda: stowpocket.preferences().get("onboardingShown"), "the first run to be over")


def main():
    pictures = PROJECT / "build/tour"
    try:
        with PrivateDesktop(pictures) as desktop:
            take_tour(desktop, sys.argv[1])
    except (TimeoutError, AssertionError) as failure:
        print(f"== The tour was broken off: {failure}. Its pictures and logs are in {pictures}", file=sys.stderr)
        return 1
    print(f"== All of it happened. Pictures and listing.txt are in {pictures}")
    return 0


sys.exit(main())
