# SPDX-License-Identifier: MIT
"""Uses an AppImage in a root that has nothing but the C library: empty_root.py IMAGE LOG_FOLDER

The X server, the buses and the tray are outside of it.
"""
import os
import shutil
import stat
import subprocess
import sys
import tempfile
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parents[2] / "tools/desktop"))
from peers import start_panel
from private_desktop import PrivateDesktop
from stowpocket import Stowpocket
from terminal import run

C_LIBRARY = ("ld-linux", "libc", "libm", "libdl", "libpthread", "librt", "libresolv")
AS_A_USER = "" if os.geteuid() == 0 else "--user --map-current-user --keep-caps"
ENTER = f"""#!/bin/sh
exec unshare {AS_A_USER} --mount sh -ec '
    root=$1 home=$2; shift 2
    for folder in /dev /proc "$home"; do mount --rbind "$folder" "$root$folder"; done
    exec chroot "$root" /stowpocket.AppImage "$@"' enter "{{root}}" "{{home}}" "$@"
"""


def fill(root, image):
    """Copies the C library, with each part where it is here, and the AppImage."""
    listed = subprocess.run(["dpkg", "-L", "libc6"], check=True, capture_output=True, text=True).stdout.splitlines()
    libraries = [Path(line) for line in listed if Path(line).name.split(".so")[0].split("-x86")[0] in C_LIBRARY]
    for library in libraries:
        copy = root / library.relative_to("/")
        copy.parent.mkdir(parents=True, exist_ok=True)
        shutil.copy(library, copy)
    shutil.copy(image, root / "stowpocket.AppImage")


def use(desktop, root):
    for folder in "/dev", "/proc", "/tmp", desktop.home:
        (root / Path(folder).relative_to("/")).mkdir(parents=True, exist_ok=True)
    enter = desktop.home / "enter"
    enter.write_text(ENTER.format(root=root, home=desktop.home))
    enter.chmod(enter.stat().st_mode | stat.S_IXUSR)
    start_panel(desktop, "trayer")
    papers = desktop.folder("papers", 3)
    names = sorted(file.name for file in papers.iterdir())
    stowpocket = Stowpocket(desktop, program=enter)
    answer = run(desktop, enter, "add", *(papers / name for name in names))
    if answer.code != 0:
        raise AssertionError(answer)
    stowpocket.open_popover()
    for name in names:
        stowpocket.tile(name)
    desktop.picture("empty-root")
    if stowpocket.end() != 0:
        raise AssertionError("the program did not end in order")


def main():
    if subprocess.run(f"unshare {AS_A_USER} --mount true", shell=True, check=False).returncode != 0:
        print("The AppImage was not used in an empty root: this system lets nobody make one")
        return
    image, logs = Path(sys.argv[1]).resolve(), Path(sys.argv[2]).resolve()
    with tempfile.TemporaryDirectory(prefix="root-") as root, PrivateDesktop(logs) as desktop:
        fill(Path(root), image)
        use(desktop, Path(root))


main()
