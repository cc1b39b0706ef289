#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Prints what the program costs, measured in one run on a desktop of its own. Machines differ: compare within a run.

    bench/figures.py [--short] [BUILD]     BUILD: a build of the release preset, build/release by default

A short run only shows that everything can still be measured.
"""
import plistlib
import shutil
import statistics

from measuring import (PROJECT, SHORT, RunningShelf, build_folder, idle, in_memory, memory, show, start_time,
                       wait_for_rest)
from private_desktop import PrivateDesktop, children_of
from stowpocket import Stowpocket
from x_display import wait_for

FILES, FEW = 100, 20
RUNS, IDLE_SECONDS, CYCLES, PASSING = (1, 1, 1, 50) if SHORT else (15, 60, 50, 2000)


def make_files(folder):
    """Half pictures, half text: what thumbnails cost is part of it."""
    for number in range(FILES):
        if number % 2:
            (folder / f"note {number:03}.txt").write_text(f"note {number}\n" * 20)
        else:
            pixels = bytes((x * y + number) % 256 for y in range(120) for x in range(160))
            (folder / f"picture {number:03}.pgm").write_bytes(b"P5 160 120 255\n" + pixels)
    return folder


def allow_many(desktop):
    settings = desktop.home / "config/stowpocket/preferences.plist"
    settings.parent.mkdir(parents=True, exist_ok=True)
    # The daily search for a newer version would fall into the idle minute.
    quiet = {"onboardingShown": True, "launchAtLogin": False, "SUEnableAutomaticChecks": False}
    settings.write_bytes(plistlib.dumps(quiet | {"shelfCapacity": FILES}))


def forget(desktop):
    """The next start is a first run."""
    for folder in ("stowpocket", "autostart"):
        shutil.rmtree(desktop.home / "config" / folder, ignore_errors=True)


def measure_start(desktop, build):
    first, later, peer = [], [], []
    for _ in range(RUNS):  # taking turns, so that a busy moment of the machine meets all
        forget(desktop)
        first.append(start_time(desktop, build, build / "bin/stowpocket"))
        allow_many(desktop)
        later.append(start_time(desktop, build, build / "bin/stowpocket"))
        peer.append(start_time(desktop, build, build / "bench/bench_tray_peer"))
    empty = statistics.median(peer)
    show(f"empty program with a tray icon, start to icon, median of {RUNS}", f"{empty:.1f} ms")
    for name, times in (("start to icon", later), ("first run, start to icon", first)):
        median = statistics.median(times)
        show(name, f"{median:.1f} ms, {median / empty:.2f} times the empty program's")


def measure_idle(pid, what):
    wakes, milliseconds = idle(pid, IDLE_SECONDS)
    show(f"wake-ups in {IDLE_SECONDS} idle seconds, {what}", f"{wakes}, {milliseconds} ms of CPU")


def measure_memory(desktop, build, files):
    app = Stowpocket(desktop, program=build / "bin/stowpocket")
    wait_for_rest(app.process.pid)
    show("at rest before the first open", in_memory(app.process.pid))
    measure_idle(app.process.pid, "an empty shelf")
    app.end()
    paths = sorted(files.iterdir())
    restart_with(app, paths[:FEW])
    wait_for_rest(app.process.pid)
    measure_idle(app.process.pid, f"{FEW} items")
    app.end()
    restart_with(app, paths)
    pid = app.process.pid
    cycle(app)
    wait_for_rest(pid)
    show(f"at rest after use, {FILES} items", in_memory(pid))
    start = memory(pid)[1]
    for _ in range(CYCLES):
        cycle(app)
    wait_for_rest(pid)
    show(f"growth over {CYCLES} open and close cycles", f"{memory(pid)[1] - start:.2f} MB private")
    measure_passing_pictures(desktop, pid, [path for path in paths if path.suffix == ".pgm"])
    app.end()


def restart_with(app, paths):
    app.start(*paths)
    wait_for(lambda: set(app.filenames()) >= {path.name for path in paths}, "the files on the shelf")


def measure_passing_pictures(desktop, pid, pictures):
    """Pictures that come and go again: each is a new item with a thumbnail of its own."""
    shelf = RunningShelf(desktop)
    shelf.call("Clear")
    wait_for_rest(pid)
    start, urls = memory(pid)[1], [picture.as_uri() for picture in pictures]
    for _ in range(PASSING // len(urls)):
        shelf.call("Add", *urls)
        # The last one that is asked for comes last: then all have been made.
        wait_for(lambda: len(shelf.urls()) == len(urls), "the pictures on the shelf")
        wait_for(lambda: not children_of(pid), "the thumbnails")
        shelf.call("Clear")
    wait_for_rest(pid)
    show(f"growth over {PASSING} pictures added and removed", f"{memory(pid)[1] - start:.1f} MB private")


def cycle(app):
    app.open_popover()
    app.x.click(*app.icon())
    wait_for(lambda: not app.popover(), "the popover to close")


def main():
    build = build_folder()
    with PrivateDesktop(PROJECT / "build/figures") as desktop:
        desktop.environment.pop("QT_LINUX_ACCESSIBILITY_ALWAYS_ON")
        measure_start(desktop, build)
        files = make_files(desktop.folder("files"))
        desktop.start("trayer", "--edge", "top", "--align", "right", "--widthtype", "request", "--height", "26")
        bench = desktop.start(str(build / "bench/bench_shelf"), str(files))
        assert bench.wait(120) == 0, "bench_shelf failed"
        print((desktop.logs / "bench_shelf.log").read_text(), end="", flush=True)
        forget(desktop)
        allow_many(desktop)
        measure_memory(desktop, build, files)


main()
