"""A file manager on the session's bus that shows nothing and records what it is asked for."""

import pathlib
import subprocess
import tempfile
import urllib.parse

from program import BUILD_FOLDER
from session import start
from waiting import wait_for_equal, wait_until

_NAME = "org.freedesktop.FileManager1"
_PROGRAM = BUILD_FOLDER / "bin" / "stand_in_file_manager"


class FileManager:
    """Runs from the constructor, which waits until the bus knows it, to stop()."""

    def __init__(self, session):
        self._session = session
        self._folder = tempfile.TemporaryDirectory(prefix="file-manager-", dir=session.folder)
        self._record = pathlib.Path(self._folder.name) / "calls"
        self._process = start([_PROGRAM, self._record, "answer"], env=session.environment,
                              cwd=session.folder, stdin=subprocess.DEVNULL,
                              stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        wait_until(self._is_known, "the file manager is on the bus")

    def _is_known(self):
        answer = self._session.tool(
            "dbus-send", "--session", "--print-reply", "--dest=org.freedesktop.DBus",
            "/org/freedesktop/DBus", "org.freedesktop.DBus.NameHasOwner", f"string:{_NAME}")
        return "boolean true" in answer

    def calls(self):
        """What it has been asked for: the method and the path of each call, oldest first."""
        lines = self._record.read_text().splitlines() if self._record.exists() else []
        return [self._read(line) for line in lines]

    def _read(self, line):
        method, uri = line.split(" ")
        if not uri.startswith("file:///"):
            raise AssertionError(f"{uri} names no file of this computer")
        return method, pathlib.Path(urllib.parse.unquote(uri.removeprefix("file://")))

    def wait_for_calls(self, wanted):
        wait_for_equal(wanted, self.calls, "what the file manager has been asked for")

    def stop(self):
        self._process.kill()
        self._process.wait()
        wait_until(lambda: not self._is_known(), "the file manager has left the bus")
        self._folder.cleanup()
