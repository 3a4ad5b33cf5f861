"""What the tests of the program for Windows have in common: it runs through Wine, the keyboard drives
it, and its windows are read from outside."""

import os
import shutil
import subprocess
import tempfile
import unittest
import zipfile

import session
from program import Folders, RunningProgram
from session import start
from waiting import NotYet, wait_for_equal, wait_until
from wine import BUILD_FOLDER, DEADLINE, Wine, need, program

PACKAGES = BUILD_FOLDER / "examples"
TARVO = program("tarvo.exe")
METER = "Meter_1.0.drv"
GAUGE = "Tide Gauge_2.1.drv"
LOGGER = "Pocket Logger_1.3.drv"
NOT_ASKED = {"Tarvo_Association_Asked": "Yes"}
# One entry a line, as the keys go through it.
IN_DETAILS = {"TarvoSettings_ViewMode": "3"}


class WindowsProgram(RunningProgram):
    """One run of a program for Windows."""

    def __init__(self, case, path, *arguments, **variables):
        self._wine = case.wine
        self._output = tempfile.TemporaryFile(mode="w+", dir=case.session.folder)
        self._name = path.name
        process = start(["wine", path, *arguments], env=case.wine.environment | variables,
                        cwd=case.folders.start, stdin=subprocess.DEVNULL, stdout=self._output,
                        stderr=self._output)
        super().__init__(case.session, process)

    def printed(self):
        self._output.seek(0)
        return self._output.read()

    def stop(self):
        if self.is_running():
            self.process.kill()
        self.process.wait()
        self._output.close()

    def windows(self):
        return self._wine.windows(self._name)

    def window(self, title):
        """The window with that title that is further in front than others; None without one."""
        return next((window for window in self.windows() if window["title"] == title), None)

    def controls(self, title, class_name):
        """The controls of that class in a window, none while there is no such window."""
        window = self.window(title)
        return [control for control in (window or {"controls": []})["controls"]
                if control["class"] == class_name]

    def messages(self):
        """Title and text of each message box."""
        return [(window["title"], control["text"]) for window in self.windows()
                if window["class"] == "#32770" for control in window["controls"]
                if control["class"] == "Static" and control["text"]]

    # The main window.

    def list(self):
        """The list of drivers."""
        return self._main_control("SysListView32")

    def _main_control(self, class_name):
        controls = [control for window in self.windows() for control in window["controls"]
                    if control["class"] == class_name]
        return controls[0] if controls else {"rows": [], "selected": [], "view": None}

    def view(self):
        return self.list()["view"]

    def rows(self):
        return [tuple(row) for row in self.list()["rows"]]

    def names(self):
        return [row[0] for row in self.rows()]

    def status_text(self):
        return self._main_control("msctls_statusbar32")["rows"][0][0]

    def select(self, name):
        """Selects a driver in the details view, by the keyboard."""
        self.wait_for_active("Tarvo")

        def selected():
            shown = self.list()
            names = [row[0] for row in shown["rows"]]
            chosen = [names[row] for row in shown["selected"]]
            if chosen == [name]:
                return True
            if len(chosen) == 1 and name in names:
                self.press("Down" if names.index(chosen[0]) < names.index(name) else "Up")
            else:
                self.press("Home")
            return False

        wait_until(selected, f"{name} is selected", DEADLINE)

    def choose(self, menu_key, entry_key):
        self.wait_for_active("Tarvo")
        self.press(menu_key, entry_key)


class WindowsCase(unittest.TestCase):
    """Every test has its own folders and its own Windows folder; nothing outlives it."""

    maxDiff = None

    def setUp(self):
        need(TARVO, PACKAGES / METER)
        self.session = session.shared()
        self.folders = Folders(self.session)
        self.addCleanup(self.folders.remove)
        self.wine = Wine(self.session, self.folders.root)
        self.wine.environment["TARVO_COMMON_DOCUMENTS"] = str(self.folders.documents)
        self.addCleanup(self.wine.close)
        self.folders.data.mkdir(parents=True)

    def start(self, *arguments, path=TARVO, **variables):
        run = WindowsProgram(self, path, *arguments, **variables)
        self.addCleanup(run.stop)
        return run

    def open_window(self, *arguments, **variables):
        """Starts Tarvo, which does not ask about CSV files, and waits for its main window."""
        if not self.folders.settings_path.exists():
            self.folders.write_settings(NOT_ASKED | IN_DETAILS)
        run = self.start(*arguments, **variables)
        self.wait_for_title(run, "Tarvo")
        return run

    def wait_for_title(self, run, title):
        wait_until(lambda: run.must_run() or title in run.titles(), f"{title} can be seen", DEADLINE)
        run.wait_for_active(title)

    def wait_for_equal(self, wanted, actual, what):
        wait_for_equal(wanted, actual, what, DEADLINE)

    def wait_for_message(self, run, title, text):
        self.wait_for_equal([(title, text)], run.messages, "the message")
        run.wait_for_active(title)

    def close_properly(self, run):
        run.close_window(run.wait_for_active("Tarvo"))
        self.assertEqual(run.wait_for_end(), 0, run.printed())

    def put_packages(self, *names):
        for name in names:
            shutil.copy(PACKAGES / name, self.folders.data)

    def install(self, package=METER):
        """Unpacks a package where the program finds drivers; gives the driver's folder."""
        folder = self.folders.drivers / package.partition(".")[0].partition("_")[0]
        with zipfile.ZipFile(PACKAGES / package) as archive:
            archive.extractall(folder)
        (folder / "Data").mkdir()
        return folder

    def versions(self):
        """The versions that tools have recorded."""
        if not self.folders.settings_path.exists():
            return {}
        try:
            settings = self.folders.settings()
        except ValueError as error:
            raise NotYet from error  # a tool is writing
        return {key: value for key, value in settings.items() if key.startswith("tarvo.versions_")}

    # The windows of tools and of others.

    def titles(self):
        listed = self.session.tool("wmctrl", "-l", check=False).splitlines()
        return [line.split(None, 3)[3] for line in listed if len(line.split(None, 3)) == 4]

    def wait_for_window(self, title):
        wait_until(lambda: title in self.titles(), f'a window "{title}" can be seen', DEADLINE)

    def close(self, title):
        self.session.tool("wmctrl", "-F", "-c", title)
        wait_until(lambda: title not in self.titles(), f'the window "{title}" is gone', DEADLINE)

    def keep_picture(self, name):
        """Saves what the display shows, where somebody wants to look at it."""
        if target := os.environ.get("TARVO_SCREENSHOTS"):
            self.session.tool("import", "-window", "root", f"{target}/{name}.png")
