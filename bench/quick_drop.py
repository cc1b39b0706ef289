#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Prints how long a quick drop takes in each file manager that is here: key press to last file on the shelf.

    bench/quick_drop.py [BUILD]     BUILD: a build of the release preset, build/release by default
"""
import shutil
import statistics
import time

from Xlib import X

from measuring import PROJECT, RunningShelf, build_folder, show  # comes first: it tells where the others lie
from clipboard import Clipboard
from private_desktop import PrivateDesktop
from stowpocket import Stowpocket
from x_display import wait_for

ROUNDS, KEYS, LIMIT = 20, ("Alt_L", "Shift_L", "d"), 5
MANAGERS = {
    "thunar": ["thunar"], "pcmanfm-qt": ["pcmanfm-qt"], "pcmanfm": ["pcmanfm"],
    "nautilus": ["nautilus", "--new-window"], "nemo": ["nemo"], "caja": ["caja", "--no-desktop"],
    "dolphin": ["dolphin"],
}
PLACE = {"x": 10, "y": 200, "width": 700, "height": 600}


def window_of(desktop, folder):
    """The file manager's window, which carries the folder's name somewhere in its title."""
    def find():
        shown = filter(desktop.x.is_viewable, desktop.x.titled(lambda title: folder.name in title))
        return max(shown, key=lambda window: desktop.x.rect(window).width, default=None)
    return wait_for(find, "the file manager's window")


def select_all(desktop, window, shelf, count):
    """Clicks beside the files and selects them, until a quick drop finds them all: a view may take seconds to fill."""
    x, y, width, height = desktop.x.rect(window)
    desktop.x.click(x + width - 60, y + height - 80)
    # The window manager holds a click back for a moment. Keys would overtake it, and it would clear the selection.
    wait_for(lambda: not desktop.x.root.query_pointer().mask & X.Button1Mask, "the click to reach the window")

    def are_found():
        desktop.x.keys("Control_L", "a")
        return press_and_time(desktop, shelf, count) is not None
    wait_for(are_found, f"{count} files to be selected", limit=60)


def press_and_time(desktop, shelf, count):
    """Milliseconds from the press until all files are staged, or nothing."""
    start = time.monotonic()
    with desktop.x.holding(*KEYS):
        while (staged := len(shelf.urls())) < count and time.monotonic() - start < LIMIT:
            pass
        return (time.monotonic() - start) * 1000 if staged == count else None


def put_away(app, shelf, window):
    popover = wait_for(app.popover, "the popover")
    wait_for(lambda: app.x.active_window() == popover, "the popover to have the keyboard")
    shelf.call("Clear")
    app.x.keys("Escape")
    wait_for(lambda: not app.popover(), "the popover to close")
    wait_for(lambda: app.x.active_window() == window, "the file manager to have the keyboard")


def measure(build, name, count):
    with PrivateDesktop(PROJECT / f"build/quick-drop/{name}-{count}") as desktop:
        desktop.environment |= {"GSK_RENDERER": "cairo", "GSETTINGS_BACKEND": "memory"}
        folder = desktop.folder("papers", count)
        app = Stowpocket(desktop, program=build / "bin/stowpocket", icon="stowpocket pocket")
        shelf = RunningShelf(desktop)
        desktop.start(*MANAGERS[name], str(folder))
        window = window_of(desktop, folder)
        window.configure(**PLACE)
        clipboard = Clipboard(desktop, "precious")
        select_all(desktop, window, shelf, count)
        times, kept = [], 0
        for _ in range(ROUNDS):
            put_away(app, shelf, window)
            times.append(press_and_time(desktop, shelf, count))
            kept += clipboard.text() == "precious"
        return times, kept


def main():
    build = build_folder()
    for name, command in MANAGERS.items():
        if not shutil.which(command[0]):
            continue
        for count in (1, 20):
            try:
                times, kept = measure(build, name, count)
            except TimeoutError as error:
                show(f"quick drop, {name}, {count} files", error)
                continue
            taken = [each for each in times if each is not None]
            middle = f"median {statistics.median(taken):.0f} ms, longest {max(taken):.0f}" if taken else "none"
            show(f"quick drop, {name}, {count} files",
                 f"{middle}, {len(taken)} of {ROUNDS}, clipboard kept {kept} times")


main()
