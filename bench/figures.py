#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Prints what the program costs, measured in one run on a desktop of its own. Machines differ: compare within a run.

    bench/figures.py [BUILD]     BUILD: a build of the release preset, build/release by default
"""
import plistlib
import re
import shutil
import statistics
import subprocess
import sys
import time
from pathlib import Path

PROJECT = Path(__file__).resolve().parents[1]
sys.path.insert(0, str(PROJECT / "tests/desktop"))
from private_desktop import PrivateDesktop  # noqa: E402
from stowpocket import Stowpocket  # noqa: E402
from x_display import wait_for  # noqa: E402

FILES, RUNS, IDLE_SECONDS, REST_SECONDS, CYCLES = 100, 15, 60, 6, 50


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
    settings.write_bytes(plistlib.dumps({"onboardingShown": True, "launchAtLogin": False, "shelfCapacity": FILES}))


def forget(desktop):
    """The next start is a first run."""
    for folder in ("stowpocket", "autostart"):
        shutil.rmtree(desktop.home / "config" / folder, ignore_errors=True)


def start_time(desktop, build, program):
    printed = subprocess.run([build / "bench/bench_start", str(1), build / program], env=desktop.environment, capture_output=True,
                             text=True, check=True)
    return float(printed.stdout)


def memory(pid):
    """PSS and private memory in MB (MiB)."""
    text = Path(f"/proc/{pid}/smaps_rollup").read_text()
    kilobytes = {name: int(value) for name, value in re.findall(r"^(\w+): +(\d+) kB", text, re.M)}
    return kilobytes["Pss"] / 1024, (kilobytes["Private_Dirty"] + kilobytes.get("Private_Hugetlb", 0)) / 1024


def wake_ups(pid):
    """How often any of its threads went to sleep of its own accord so far."""
    return sum(int(re.search(r"^voluntary_ctxt_switches:\s+(\d+)", (task / "status").read_text(), re.M)[1])
               for task in Path(f"/proc/{pid}/task").iterdir())


def cpu_ticks(pid):
    fields = Path(f"/proc/{pid}/stat").read_text().rpartition(")")[2].split()
    return int(fields[11]) + int(fields[12])


def show(name, value):
    print(f"{name}: {value}", flush=True)


def measure_start(desktop, build):
    first, later, peer = [], [], []
    for _ in range(RUNS):  # taking turns, so that a busy moment of the machine meets all
        forget(desktop)
        first.append(start_time(desktop, build, "src/stowpocket"))
        allow_many(desktop)
        later.append(start_time(desktop, build, "src/stowpocket"))
        peer.append(start_time(desktop, build, "bench/bench_tray_peer"))
    empty = statistics.median(peer)
    show(f"empty program with a tray icon, start to icon, median of {RUNS}", f"{empty:.1f} ms")
    for name, times in (("start to icon", later), ("first run, start to icon", first)):
        show(name, f"{statistics.median(times):.1f} ms, {statistics.median(times) / empty:.2f} times the empty program's")


def wait_for_rest(pid):
    """Until its own memory stays as it is, to 0.1 MB, for longer than its timer takes to come round."""
    since, known = time.monotonic(), memory(pid)[1]

    def rests():
        nonlocal since, known
        now = memory(pid)[1]  # its share of what others map too changes as they come and go
        if abs(now - known) > 0.1:
            since, known = time.monotonic(), now
        return time.monotonic() - since > REST_SECONDS
    wait_for(rests, "the program to rest", limit=120)


def measure_memory(desktop, build, files):
    app = Stowpocket(desktop, program=build / "src/stowpocket")
    pid = app.process.pid
    wait_for_rest(pid)
    show("at rest before the first open", "PSS %.1f MB, private %.1f MB" % memory(pid))
    before, ticks = wake_ups(pid), cpu_ticks(pid)
    time.sleep(IDLE_SECONDS)
    show(f"wake-ups in {IDLE_SECONDS} idle seconds", f"{wake_ups(pid) - before}, {(cpu_ticks(pid) - ticks) * 10} ms of CPU")
    app.end()
    app.start(*sorted(files.iterdir()))
    pid = app.process.pid
    wait_for(lambda: len(app.shelf()) == FILES, "the files on the shelf")
    cycle(app)
    wait_for_rest(pid)
    show(f"at rest after use, {FILES} items", "PSS %.1f MB, private %.1f MB" % memory(pid))
    start = memory(pid)[1]
    for _ in range(CYCLES):
        cycle(app)
    wait_for_rest(pid)
    show(f"growth over {CYCLES} open and close cycles", f"{memory(pid)[1] - start:.2f} MB private")
    app.end()


def cycle(app):
    app.open_popover()
    app.x.click(*app.icon())
    wait_for(lambda: not app.popover(), "the popover to close")


def main():
    build = Path(sys.argv[1] if len(sys.argv) > 1 else PROJECT / "build/release").resolve()
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
