"""The built program under test: its folders, its start, its windows, its keyboard."""

import os
import pathlib
import re
import shutil
import subprocess
import tempfile

import settings_file
from accessibility import AccessibilityBus, Gone
from session import start
from waiting import wait_until

BUILD_FOLDER = pathlib.Path(os.environ.get("TARVO_BUILD_FOLDER", "build/release")).resolve()
VERSION = os.environ.get("TARVO_VERSION", "")
_LAUNCHER = pathlib.Path(__file__).resolve().parents[2] / "packaging" / "launcher.sh"
END_DEADLINE = 60  # seconds


def dictionary_folder(language):
    """The folder with the language's "TARVO.DIC"."""
    return BUILD_FOLDER / "translations" / language


class Folders:
    """The folders of one test: the common documents, the data folder with its drivers in it, and a
    folder to start in. Removed by remove()."""

    def __init__(self, session):
        self.root = pathlib.Path(tempfile.mkdtemp(prefix="test-", dir=session.folder))
        self.documents = self.root / "documents"
        self.data = self.documents / "Halvex Limited" / "Halvex Tarvo"
        self.drivers = self.data / "Drivers"
        self.start = self.root / "start"
        for folder in (self.documents, self.start):
            folder.mkdir()

    @property
    def settings_path(self):
        return settings_file.path_in(self.documents)

    def add_driver(self, name, *files):
        """Makes a driver folder with these files, given by their paths in it."""
        folder = self.drivers / name
        folder.mkdir(parents=True)
        for file in files:
            path = folder / file
            path.parent.mkdir(parents=True, exist_ok=True)
            path.write_text("made by a test\n")
        return folder

    def write_settings(self, values):
        settings_file.write(self.settings_path, values)

    def settings(self):
        return settings_file.read(self.settings_path)

    def remove(self):
        shutil.rmtree(self.root, ignore_errors=True)


class RunningProgram:
    """A process that shows windows in a session."""

    def __init__(self, session, process):
        self.session = session
        self.process = process
        self._bus = AccessibilityBus(session.environment["DBUS_SESSION_BUS_ADDRESS"])

    # Its life.

    def is_running(self):
        return self.process.poll() is None

    def wait_for_end(self):
        """Waits for the end and gives the exit code."""
        wait_until(lambda: not self.is_running(), "the program ends", END_DEADLINE)
        return self.process.returncode

    def printed(self):
        """What it wrote on its standard output and error, as far as that was kept."""
        return ""

    # Its windows. All of them are found by process, so that other programs do not disturb.

    def window_ids(self):
        """The X windows that can be seen, oldest first."""
        listed = self.session.tool("xdotool", "search", "--all", "--onlyvisible", "--pid",
                                   str(self.process.pid), "--name", ".*", check=False)
        return [int(word) for word in listed.split() if word.isdigit()]

    def title_of(self, window):
        return self.session.tool("xdotool", "getwindowname", str(window), check=False).rstrip("\n")

    def titles(self):
        return [self.title_of(window) for window in self.window_ids()]

    def active_window(self):
        shown = self.session.tool("xprop", "-root", "_NET_ACTIVE_WINDOW")
        found = re.search(r"0x([0-9a-f]+)", shown)
        return int(found[1], 16) if found else 0

    def wait_for_active(self, title):
        """Waits until the window with this title has the keyboard; gives its X window."""

        def found():
            self.must_run()
            active = self.active_window()
            return active in self.window_ids() and self.title_of(active) == title and active

        return wait_until(found, f'a window "{title}" is active (there are {self.titles()})')

    def inner_geometry(self, window):
        """Left, top, width and height of the window without its frame, in pixels."""
        shown = self.session.tool("xwininfo", "-id", str(window))
        names = ("Absolute upper-left X", "Absolute upper-left Y", "Width", "Height")
        return tuple(int(re.search(rf"{name}: +(-?\d+)", shown)[1]) for name in names)

    def frame(self, window):
        """What the frame adds at the left, right, top and bottom, in pixels."""
        shown = self.session.tool("xprop", "-id", str(window), "_NET_FRAME_EXTENTS")
        return tuple(int(word) for word in re.findall(r"\d+", shown.partition("=")[2]))

    def close_window(self, window):
        """Closes a window as its close button does."""
        self.session.tool("wmctrl", "-i", "-c", str(window))

    def must_run(self):
        if not self.is_running():
            raise AssertionError(
                f"the program has ended with {self.process.returncode}: {self.printed()}")

    # Its keyboard: keys go to the active window.

    def press(self, *keys):
        self.session.tool("xdotool", "key", "--clearmodifiers", *keys)

    # Its accessibility tree.

    def application(self):
        def found():
            self.must_run()
            return self._bus.application(self.process.pid)

        return wait_until(found, "the program offers its accessibility tree")

    def find(self, role, name=None):
        """The object that is showing with this role and name now, or None."""
        try:
            for node in self.application().walk():
                if node.role() == role and name in (None, node.name()) and node.is_showing():
                    return node
        except Gone:
            pass
        return None

    def wait_for(self, role, name=None):
        def found():
            self.must_run()
            return self.find(role, name)

        return wait_until(found, f"there is a {role} {name or ''}")

    def wait_until_gone(self, role, name=None):
        wait_until(lambda: not self.find(role, name), f"the {role} {name or ''} is gone")


class Program(RunningProgram):
    """One run of the built program in the folders of a test."""

    def __init__(self, session, folders, *arguments, launcher=False, language="C.UTF-8",
                 environment=None, through=()):
        """The environment is the session's with these variables set; `through` is a command that
        runs the one behind it in its own process."""
        self._output = tempfile.TemporaryFile(mode="w+", dir=session.folder)
        variables = dict(
            session.environment,
            LANG=language,
            TARVO_COMMON_DOCUMENTS=str(folders.documents),
            TARVO_PROGRAM=str(BUILD_FOLDER / "bin" / "tarvo"),
            TARVO_SHARE=str(BUILD_FOLDER / "translations"),
            QT_LINUX_ACCESSIBILITY_ALWAYS_ON="1",
            **(environment or {}),
        )
        process = start(
            [*through, _LAUNCHER if launcher else BUILD_FOLDER / "bin" / "tarvo", *arguments],
            env=variables,
            cwd=folders.start,
            stdin=subprocess.DEVNULL,
            stdout=self._output,
            stderr=self._output,
        )
        super().__init__(session, process)

    def printed(self):
        self._output.seek(0)
        return self._output.read()

    def stop(self):
        if self.is_running():
            self.process.kill()
        self.process.wait()
        self._output.close()
