# SPDX-License-Identifier: MIT
"""A desktop of its own: X server, window manager, buses and home folder, gone without a trace afterwards.

As a program it runs the command that it is given on such a desktop.
"""
import contextlib
import ctypes
import os
import shutil
import signal
import subprocess
import sys
import tempfile
from pathlib import Path

from accessibility import AccessibleTree
from bus import Bus
from x_display import XDisplay, wait_for

PR_SET_PDEATHSIG, PR_SET_CHILD_SUBREAPER = 1, 36
prctl = ctypes.CDLL(None).prctl
BUS_CONFIG = """<busconfig>
<type>session</type><listen>unix:path={home}/bus</listen><servicedir>{home}/services</servicedir><auth>EXTERNAL</auth>
<policy context="default"><allow send_destination="*"/><allow receive_sender="*"/><allow own="*"/></policy>
</busconfig>"""


def children_of(parent):
    """The processes whose parent is `parent`, as the kernel lists them."""
    children = []
    for task in Path(f"/proc/{parent}/task").iterdir():
        with contextlib.suppress(FileNotFoundError, ProcessLookupError):  # A thread that ended meanwhile.
            children += map(int, (task / "children").read_text().split())
    return children


def description_of(pid):
    try:
        command = Path(f"/proc/{pid}/cmdline").read_bytes().replace(b"\0", b" ").decode(errors="replace")
        return f"{command}({Path(f'/proc/{pid}/stat').read_text().rpartition(')')[2].split()[0]})"
    except OSError:
        return str(pid)


def is_zombie(pid):
    try:
        return Path(f"/proc/{pid}/stat").read_text().rpartition(")")[2].split()[0] == "Z"
    except OSError:
        return True


class PrivateDesktop:
    """Everything started here is ended on leaving, in reverse order, and what those left behind, as our orphans.

    Logs, and the last picture of the screen, lie in `log_folder`.
    """

    # The only programs that the bus may start: the settings of the Xfce programs and the accessibility bus.
    services = ["org.xfce.Xfconf.service", "org.a11y.Bus.service"]

    def __init__(self, log_folder, size="1280x900"):
        self.logs = Path(log_folder)
        shutil.rmtree(self.logs, ignore_errors=True)
        self.logs.mkdir(parents=True)
        self.size, self.started = size, []
        self.server = None  # the process that all windows end with

    def __enter__(self):
        prctl(PR_SET_CHILD_SUBREAPER, 1, 0, 0, 0)
        self.home = Path(tempfile.mkdtemp(prefix="desktop-"))
        try:
            self.start_servers()
        except BaseException:
            self.__exit__()
            raise
        return self

    def start_servers(self):
        self.make_home()
        self.start_screen()
        self.tree = AccessibleTree(self.bus)

    def make_home(self):
        for folder in ("config", "data", "cache", "state", "services"):
            (self.home / folder).mkdir()
        (self.home / "run").mkdir(mode=0o700)
        kept = {name: os.environ[name] for name in ("PATH", "LD_LIBRARY_PATH") if name in os.environ}
        self.environment = kept | {
            "HOME": str(self.home), "XDG_CONFIG_HOME": f"{self.home}/config", "XDG_DATA_HOME": f"{self.home}/data",
            "XDG_CACHE_HOME": f"{self.home}/cache", "XDG_STATE_HOME": f"{self.home}/state",
            "XDG_RUNTIME_DIR": f"{self.home}/run", "LANG": "C.UTF-8", "GIO_USE_VFS": "local",
            "GIO_USE_VOLUME_MONITOR": "unix", "NO_AT_BRIDGE": "0", "QT_LINUX_ACCESSIBILITY_ALWAYS_ON": "1"}

    def start_screen(self):
        """Starts what shows windows, and gives `x` and the environment of programs that have some."""
        self.start_x_server()
        self.start_bus()
        self.x = XDisplay(self.environment["DISPLAY"])
        self.start("openbox")
        wait_for(lambda: self.x.property(self.x.root, "_NET_SUPPORTING_WM_CHECK"), "the window manager")

    def start_x_server(self):
        self.server, number = self.start_telling("Xvfb", "-displayfd", "{}", "-screen", "0", f"{self.size}x24",
                                                 "-nolisten", "tcp", "-noreset")
        self.environment["DISPLAY"] = ":" + number

    def start_bus(self):
        for service in self.services:
            shutil.copy(f"/usr/share/dbus-1/services/{service}", self.home / "services")
        (self.home / "bus.conf").write_text(BUS_CONFIG.format(home=self.home))
        self.environment["DBUS_SESSION_BUS_ADDRESS"] = f"unix:path={self.home}/bus"
        self.start_telling("dbus-daemon", f"--config-file={self.home}/bus.conf", "--nofork", "--print-address={}")
        self.bus = Bus(self.environment["DBUS_SESSION_BUS_ADDRESS"])

    def start_telling(self, *command):
        """Starts a server that writes a line to the descriptor in the place of {} once it listens; gives that too."""
        reading, writing = os.pipe()
        process = self.start(*(word.replace("{}", str(writing)) for word in command), pass_fds=[writing])
        os.close(writing)
        with os.fdopen(reading) as answer:
            return process, answer.readline().strip()

    def start(self, *command, pass_fds=()):
        """Starts a program on this desktop; its output goes to a log named after it."""
        name = Path(command[0]).name
        with open(self.logs / f"{name}.log", "ab") as log:
            process = subprocess.Popen(  # pylint: disable=subprocess-popen-preexec-fn
                command, env=self.environment, cwd=self.home, stdin=subprocess.DEVNULL, stdout=log, stderr=log,
                pass_fds=pass_fds, preexec_fn=lambda: prctl(PR_SET_PDEATHSIG, signal.SIGTERM, 0, 0, 0))  # goes with us
        self.started.append(process)
        return process

    def end(self, process, how=signal.SIGTERM):
        """Ends one program and gives its exit status, which is that of SIGKILL if it would not go."""
        self.started.remove(process)
        if process.poll() is None:
            process.send_signal(how)
        try:
            return process.wait(20)
        except subprocess.TimeoutExpired:
            process.kill()
            return process.wait()

    def folder(self, name, files=0):
        """A new folder with so many small text files."""
        made = self.home / name
        made.mkdir()
        for number in range(1, files + 1):
            (made / f"file {number:02}.txt").write_text(f"{name} {number}\n" * number)
        return made

    def files(self, name, count):
        """The files of such a folder, by name."""
        return sorted(self.folder(name, count).iterdir())

    def picture(self, name):
        self.x.picture().save(self.logs / f"{name}.png")

    def __exit__(self, *_):
        try:
            if hasattr(self, "x"):
                self.picture("last")
        finally:
            self.end_everything()
            shutil.rmtree(self.home)

    def end_everything(self):
        if hasattr(self, "tree"):
            self.tree.close()
            self.bus.close()
        while self.started and self.started[-1] is not self.server:
            self.end(self.started[-1])
        if hasattr(self, "x"):
            self.x.close()
        self.end_orphans({process.pid for process in self.started})
        for process in self.started[::-1]:
            self.end(process)  # the server, and what it needs

    def is_of_server(self, _pid):
        """Whether the server still needs the process."""
        return False

    def end_orphans(self, spared, how=signal.SIGTERM):
        """Programs that other programs started become our children when those end; the last of them go here."""
        left = set()

        def are_gone():
            left.clear()
            left.update(pid for pid in children_of(os.getpid()) if pid not in spared and not self.is_of_server(pid))
            for pid in left:
                if is_zombie(pid):
                    os.waitpid(pid, 0)
                else:
                    os.kill(pid, how)
            return not left
        try:
            wait_for(are_gone, "the programs left behind to end")
        except TimeoutError as error:
            raise TimeoutError(f"{error}: {', '.join(map(description_of, left))}") from None


if __name__ == "__main__":
    with PrivateDesktop(Path("desktop", Path(sys.argv[1]).name)) as desktop:
        sys.exit(subprocess.call(sys.argv[1:], env=os.environ | desktop.environment | {"QT_QPA_PLATFORM": "xcb"}))
