#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Prints what other programs that live in the tray cost beside ours, each on the same private desktop, in one table.

    bench/tray_programs.py [BUILD]     BUILD: a build of the release preset, build/release by default

Only what is installed is measured. Three rounds in turns, so that a busy moment of the machine meets all; medians.
"""
import plistlib
import shutil
import statistics

from measuring import PROJECT, build_folder, idle, memory, start_time, wait_for_rest
from private_desktop import PrivateDesktop
from x_display import wait_for

ROUNDS, IDLE_SECONDS = 3, 20
# The command, and the settings without which it asks something at its first start or shows no icon.
PEERS = {
    "parcellite": (["parcellite"], {}),
    "diodon": (["diodon"], {}),
    "xfce4-clipman": (["xfce4-clipman"], {}),
    "flameshot": (["flameshot"], {"flameshot/flameshot.ini": "[General]\nshowStartupLaunchMessage=false\n"}),
    "keepassxc": (["keepassxc", "--pw-stdin"], {
        "keepassxc/keepassxc.ini": "[General]\nConfigVersion=2\nUpdateCheckMessageShown=true\n"
                                   "[GUI]\nCheckForUpdates=false\nMinimizeOnStartup=true\n"
                                   "MinimizeToTray=true\nShowTrayIcon=true\n"}),
    "copyq": (["copyq"], {}),
}


def write_settings(desktop, settings):
    for name, text in settings.items():
        file = desktop.home / "config" / name
        file.parent.mkdir(parents=True, exist_ok=True)
        file.write_bytes(text if isinstance(text, bytes) else text.encode())


def measure(desktop, build, command, with_start):
    """Start to tray in ms (or nothing), PSS and private memory in MB, wake-ups in the idle time."""
    started = start_time(desktop, build, *command) if with_start else None
    tray = desktop.start("trayer", "--edge", "top", "--align", "right", "--widthtype", "request", "--height", "26")
    wait_for(lambda: desktop.x.selection_owner("_NET_SYSTEM_TRAY_S0"), "the tray")
    process = desktop.start(*command)
    try:
        wait_for_rest(process.pid)
        woken, _ = idle(process.pid, IDLE_SECONDS)
        return (started, *memory(process.pid), woken)
    finally:
        desktop.end(process)
        desktop.end(tray)


def one_round(build, name, command, settings):
    with PrivateDesktop(PROJECT / "build/peers" / name) as desktop:
        # What only serves screen readers is loaded where one is there.
        desktop.environment.pop("QT_LINUX_ACCESSIBILITY_ALWAYS_ON")
        desktop.environment["NO_AT_BRIDGE"] = "1"
        write_settings(desktop, settings)
        return measure(desktop, build, command, with_start=True)


def median(values):
    known = [value for value in values if value is not None]
    return statistics.median(known) if known else None


def cell(value, digits=1):
    return "-" if value is None else f"{value:.{digits}f}"


def main():
    build = build_folder()
    ours = {"onboardingShown": True, "launchAtLogin": False}
    programs = {"stowpocket": ([str(build / "bin/stowpocket")], {"stowpocket/preferences.plist": plistlib.dumps(ours)})}
    for name, (command, settings) in PEERS.items():
        if found := shutil.which(command[0]):
            programs[name] = ([found, *command[1:]], settings)
    rounds = {name: [] for name in programs}
    for _ in range(ROUNDS):
        for name, (command, settings) in programs.items():
            rounds[name].append(one_round(build, name, command, settings))
    print(f"| program | start to tray, ms | PSS, MB | private, MB | wake-ups in {IDLE_SECONDS} idle s |")
    print("|---|---|---|---|---|")
    for name, taken in rounds.items():
        start, pss, private, woken = (median(column) for column in zip(*taken, strict=True))
        print(f"| {name} | {cell(start)} | {cell(pss)} | {cell(private)} | {cell(woken, 0)} |", flush=True)


main()
