# SPDX-License-Identifier: MIT
"""Runs tests on a desktop of their own with GNUstep's two daemons, one process for each filter, in one home; those of
the last filter once more a hundred times.
    on_gnustep.py PROGRAM FILTER..."""
import os
import subprocess
import sys
from pathlib import Path

PROJECT = Path(__file__).resolve().parents[2]
sys.path.insert(0, str(PROJECT / "tools/desktop"))
from private_desktop import PrivateDesktop

with PrivateDesktop(PROJECT / "build/desktop/macos") as desktop:
    desktop.environment |= {"QT_QPA_PLATFORM": "offscreen", "TMPDIR": f"{desktop.home}/run",
                            "LD_PRELOAD": os.environ["LD_PRELOAD"]}
    for daemon in ("gdnc", "gpbs"):
        desktop.start(daemon, "--no-fork")
    results = [subprocess.call([sys.argv[1], f"--gtest_filter={tests}", "--gtest_brief=1", f"--rounds={rounds}"],
                               env=os.environ | desktop.environment)
               for tests in sys.argv[2:] for rounds in [100 if tests == sys.argv[-1] else 0]]
sys.exit(max(results))
