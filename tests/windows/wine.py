"""Wine with a Windows folder of the test's own, in which the programs built for Windows run."""

import fcntl
import json
import os
import pathlib
import shutil
import subprocess
import unittest

BUILD_FOLDER = pathlib.Path(os.environ.get("TARVO_WINDOWS_BUILD_FOLDER", "build/windows")).resolve()
DEADLINE = 60  # seconds; Wine sets up a whole Windows folder at its first start
_READY = BUILD_FOLDER / "wine-for-programs"
_SHOW_WINDOWS = BUILD_FOLDER / "tests" / "windows" / "show_windows.exe"
_RECORD_CALL = BUILD_FOLDER / "tests" / "windows" / "record_call.exe"
_VARIABLES = {
    "WINEDEBUG": "-all",
    "WINEDLLOVERRIDES": "mscoree,mshtml=",  # it would ask to fetch these
}


def program(name):
    return BUILD_FOLDER / "bin" / name


def need(*programs):
    """Skips the test where Wine or one of these programs of the build for Windows is missing."""
    for command in ("wine", "wineserver"):
        if not shutil.which(command):
            raise unittest.SkipTest(f"{command} is not installed")
    for path in (*programs, _SHOW_WINDOWS, _RECORD_CALL):
        if not path.exists():
            raise unittest.SkipTest(f"there is no {path}: build the preset \"windows\"")


def _run(command, environment, folder):
    return subprocess.run(command, env=environment, cwd=folder, stdin=subprocess.DEVNULL,
                          stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, timeout=DEADLINE)


def _make_ready(environment):
    """Makes the Windows folder that all tests of this build copy, once; it knows no home folder and no
    display. Tests that come at the same moment wait for the one that makes it."""
    _READY.parent.mkdir(parents=True, exist_ok=True)
    with open(f"{_READY}.lock", "w") as lock:
        fcntl.flock(lock, fcntl.LOCK_EX)
        if _READY.exists():
            return
        new = _READY.with_name(f"{_READY.name}.new")
        shutil.rmtree(new, ignore_errors=True)
        new.mkdir()
        own = {name: value for name, value in environment.items() if name != "DISPLAY"} | {
            "WINEPREFIX": str(new), "HOME": str(new)}
        _run(["wine", "wineboot", "--init"], own, new)
        _run(["wineserver", "--wait"], own, new)
        # The user's own folders, "Documents" and so on, are links to those of the home.
        for link in new.glob("drive_c/users/*/*"):
            if link.is_symlink():
                link.unlink()
                link.mkdir()
        new.rename(_READY)


class Wine:
    """Its Windows folder begins as one that nobody has used. close() ends all its programs."""

    def __init__(self, session, folder):
        self.folder = folder / "wine"
        self.environment = {**session.environment, **_VARIABLES, "WINEPREFIX": str(self.folder)}
        self._session = session
        _make_ready(self.environment)
        # The system's own files are never written: they need not be copied.
        subprocess.run(["cp", "-al", _READY, self.folder], check=True)
        for registry in self.folder.glob("*.reg"):
            content = registry.read_bytes()
            registry.unlink()
            registry.write_bytes(content)

        # Wine's own explorer does not show files selected. It has its desktop from another place.
        explorer = self._windows / "explorer.exe"
        explorer.unlink()
        shutil.copy(_RECORD_CALL, explorer)

    @property
    def _windows(self):
        return self.folder / "drive_c" / "windows"

    def explorer_calls(self):
        """The command lines that the file manager was started with."""
        try:
            return (self._windows / "calls.txt").read_text(encoding="utf-8").splitlines()
        except FileNotFoundError:
            return []

    def windows_path(self, path):
        """A path of Linux as programs for Windows have it."""
        return "Z:" + str(path).replace("/", "\\")

    @property
    def common_documents(self):
        return self.folder / "drive_c" / "users" / "Public" / "Documents"

    def run(self, *command, **variables):
        """Runs a program to its end; gives its exit code and what it printed."""
        done = _run(["wine", *command], self.environment | variables, self._session.folder)
        return done.returncode, done.stdout.decode("utf-8", "replace").replace("\r\n", "\n")

    def registry_value(self, key):
        """The default value of a key of the system registry; None when there is none."""
        code, printed = self.run("reg", "query", key, "/ve")
        if code:
            return None
        return printed.strip().splitlines()[-1].split("REG_SZ", 1)[1].strip()

    def set_registry_value(self, key, value):
        code, printed = self.run("reg", "add", key, "/ve", "/d", value, "/f")
        if code:
            raise RuntimeError(printed)

    def windows(self, program_name=None):
        """What tests/windows/show_windows.cpp tells of the windows that can be seen, those of one
        program or all."""
        code, printed = self.run(_SHOW_WINDOWS)
        if code:
            raise RuntimeError(f"show_windows.exe has failed with {code}")
        shown = [json.loads(line) for line in printed.splitlines()]
        return [window for window in shown
                if program_name in (None, window["program"])]

    def title_in_front(self):
        """The title of the window that has the keyboard, as Wine sees it."""
        return next((window["title"] for window in self.windows() if window["inFront"]), None)

    def close(self):
        _run(["wineserver", "--kill"], self.environment, self._session.folder)
        _run(["wineserver", "--wait"], self.environment, self._session.folder)
