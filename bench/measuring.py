# SPDX-License-Identifier: MIT
"""What the benchmarks share: how memory, wake-ups and start times are taken, and how a figure is printed."""
import re
import subprocess
import sys
import time
from pathlib import Path

PROJECT = Path(__file__).resolve().parents[1]
sys.path.insert(0, str(PROJECT / "tools/desktop"))
from gi.repository import GLib
from x_display import wait_for

SHORT = "--short" in sys.argv
REST_SECONDS = 1 if SHORT else 6
SERVICE, OBJECT, INTERFACE = "com.example.stowpocket", "/com/example/stowpocket", "com.example.stowpocket.Shelf1"


def build_folder():
    """The build of the release preset that is measured: the last argument, or build/release."""
    return Path(sys.argv[-1] if sys.argv[1 + SHORT:] else PROJECT / "build/release").resolve()


def show(name, value):
    print(f"{name}: {value}", flush=True)


def start_time(desktop, build, *command):
    """Milliseconds from the start of a program to its icon in a tray, or nothing where no icon comes."""
    answer = subprocess.run([build / "bench/bench_start", "1", *command], env=desktop.environment, check=False,
                            stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, text=True)
    return float(answer.stdout) if answer.returncode == 0 else None


def memory(pid):
    """PSS and private memory in MB (MiB)."""
    text = Path(f"/proc/{pid}/smaps_rollup").read_text()
    kilobytes = {name: int(value) for name, value in re.findall(r"^(\w+): +(\d+) kB", text, re.M)}
    return kilobytes["Pss"] / 1024, (kilobytes["Private_Dirty"] + kilobytes.get("Private_Hugetlb", 0)) / 1024


def in_memory(pid):
    shared, private = memory(pid)
    return f"PSS {shared:.1f} MB, private {private:.1f} MB"


def wake_ups(pid):
    """How often each of its threads went to sleep of its own accord so far."""
    counts = {}
    for task in Path(f"/proc/{pid}/task").iterdir():
        try:
            status = (task / "status").read_text()
            counts[task.name] = int(re.search(r"^voluntary_ctxt_switches:\s+(\d+)", status, re.M)[1])
        except OSError:
            pass  # it has ended
    return counts


def cpu_ticks(pid):
    fields = Path(f"/proc/{pid}/stat").read_text().rpartition(")")[2].split()
    return int(fields[11]) + int(fields[12])


def idle(pid, seconds):
    """Wake-ups and milliseconds of processor time while nothing is done with the program for so long."""
    before, ticks, end = wake_ups(pid), cpu_ticks(pid), time.monotonic() + seconds
    latest = dict(before)
    while time.monotonic() < end:
        time.sleep(0.2)  # threads that end take their counts with them
        latest |= wake_ups(pid)
    return sum(latest.values()) - sum(before.values()), (cpu_ticks(pid) - ticks) * 10


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


class RunningShelf:
    """The running program as its command verbs see it, without the start of a process for each question."""

    def __init__(self, desktop):
        self.bus = desktop.bus

    def call(self, method, *names):
        arguments = GLib.Variant("(as)", (names,)) if names else None
        return self.bus.call(SERVICE, OBJECT, INTERFACE, method, arguments)

    def urls(self):
        return [item["url"] for item in self.call("List")[0]]
