# SPDX-License-Identifier: MIT
"""From one AppImage to the next, by what scripts/release writes and a server on this machine.

Both are of the build that is tested, with the libraries of this machine; they differ in their information lists.
"""
import os
import plistlib
import shutil
import struct
import subprocess
import threading
from functools import partial
from http.server import SimpleHTTPRequestHandler, ThreadingHTTPServer
from pathlib import Path

from case import DesktopTest
from peers import start_panel
from stowpocket import PROGRAM, PROJECT, Stowpocket
from x_display import wait_for

BUILT = Path(PROGRAM).resolve().parents[1]
IMAGE = "next.AppImage"


class Server(ThreadingHTTPServer):
    """Serves the files of a folder."""

    def __init__(self, folder):
        super().__init__(("127.0.0.1", 0), partial(Answer, directory=folder))
        self.url = f"http://127.0.0.1:{self.server_port}"
        threading.Thread(target=self.serve_forever, daemon=True).start()

    def __exit__(self, *_):
        self.shutdown()
        self.server_close()


class Answer(SimpleHTTPRequestHandler):
    def log_message(self, *_):  # pylint: disable=arguments-differ
        pass


class Updates(DesktopTest):
    def setUp(self):
        super().setUp()
        self.served = self.desktop.folder("server")
        self.server = self.enterContext(Server(self.served))
        self.makers, self.public = self.key("makers")
        self.apps = self.desktop.folder("apps", 0)
        self.app = self.apps / "stowpocket.AppImage"
        self.image("0.1.0", self.app)
        self.old = self.app.read_bytes()

    def release(self, *words):
        return subprocess.run([PROJECT / "scripts/release", *words], check=True, capture_output=True).stdout

    def key(self, name):
        """A new key, and its public half."""
        file = self.desktop.home / f"{name}.pem"
        return file, self.release("key", file).split()[0].decode()

    def image(self, version, file):
        """Makes an AppImage of the program."""
        folder = self.desktop.home / "AppDir"
        for path in ("bin/stowpocket", "libexec/stowpocket/stowpocket-updater"):
            (folder / path).parent.mkdir(parents=True, exist_ok=True)
            subprocess.run(["strip", "-o", folder / path, BUILT / path], check=True)
        shutil.copytree(BUILT / "share", folder / "share")
        information = folder / "share/stowpocket/Info.plist"
        information.write_bytes(plistlib.dumps(plistlib.loads(information.read_bytes()) | {
            "SUFeedURL": f"{self.server.url}/appcast.xml", "SUPublicEDKey": self.public,
            "CFBundleVersion": version, "CFBundleShortVersionString": version}))
        (folder / "AppRun").symlink_to("bin/stowpocket")
        packaging = "packaging/appimage"
        subprocess.run([PROJECT / packaging / "assemble", BUILT / packaging / "stowpocket_runtime", folder,
                        f"stowpocket-{version}", file], check=True)
        shutil.rmtree(folder)

    def publish(self, version, key=None):
        """Puts the next image on the server as this version."""
        image = self.desktop.home / IMAGE
        shutil.copy(image, self.served)
        (self.served / "appcast.xml").write_bytes(
            self.release("list", key or self.makers, self.server.url, version, image))

    def run_program(self, *files):
        start_panel(self.desktop, "trayer")
        self.stowpocket = Stowpocket(self.desktop, *files, program=self.app)
        return self.stowpocket

    def check(self, says):
        """Asks for newer versions; the answer begins with `says`."""
        if not self.stowpocket.shown("Check for Updates…"):
            self.stowpocket.open_settings()
            self.stowpocket.press("About")
        self.stowpocket.press("Check for Updates…")
        self.stowpocket.wait_for_shown(says)

    def install(self):
        self.check("stowpocket 0.2.0 is available")
        self.stowpocket.press("Install")

    def refuse(self, says):
        """Expects the update to end with these words and to have changed nothing."""
        self.stowpocket.wait_for_shown(says)
        self.desktop.picture("refused")
        self.stowpocket.press("OK")
        wait_for(lambda: not self.stowpocket.shown(says), f'"{says}" to go')
        wait_for(lambda: os.listdir(self.apps) == [self.app.name], "the folder to be tidy")
        self.assertEqual(self.app.read_bytes(), self.old)

    def test_old_version_stays_until_the_new_one_runs(self):
        papers = self.desktop.folder("papers", 1)
        stowpocket = self.run_program(*papers.iterdir())
        self.image("0.2.0", self.desktop.home / IMAGE)
        self.check("You're up to date!")
        self.refuse("stowpocket 0.1.0 is the latest version.")
        self.publish("0.2.0", self.key("others")[0])
        self.check("New versions could not be looked for")
        self.refuse("The list of versions on the server is not signed by the makers")

        self.publish("0.2.0")
        signed = (self.served / IMAGE).read_bytes()
        self.install()
        wait_for(lambda: self.app.read_bytes() == signed, "the new version to be in its place")
        wait_for(lambda: stowpocket.preferences().get("SUInstalledVersion"), "the old one to end")
        stowpocket.icon()
        self.check("stowpocket 0.2.0 is the latest version.")
        stowpocket.wait_for_shown("Version 0.2.0")
        self.desktop.picture("updated")
        self.assertEqual(stowpocket.filenames(), [file.name for file in papers.iterdir()])
        self.assertEqual((self.apps / f"{self.app.name}.old").read_bytes(), self.old)
        stowpocket.end()
        stowpocket.start()
        self.assertEqual(self.app.read_bytes(), signed)

    def test_version_that_does_not_start_is_taken_back(self):
        self.run_program()
        with open(PROGRAM, "rb") as program:
            (self.desktop.home / IMAGE).write_bytes(program.read(32) + struct.pack("<Q", 0) * 1000)
        self.publish("0.2.0")
        self.install()
        self.refuse("The new version did not start or did not keep running")
