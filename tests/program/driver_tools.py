"""Drivers with the real tools of the sample drivers, and the processes and windows of such tools."""

import os
import pathlib
import signal
import zipfile

from file_manager import FileManager
from program import BUILD_FOLDER
from program_test_case import ProgramTestCase
from waiting import wait_until

_PACKAGES = BUILD_FOLDER / "examples"
_OPTIONS_VARIABLE = "TARVO_SAMPLE_TOOL_OPTIONS"


class ToolCase(ProgramTestCase):
    """Every test has a file manager of its own; tools that are left at its end are ended."""

    def setUp(self):
        super().setUp()
        self.file_manager = FileManager(self.session)
        self.addCleanup(self.file_manager.stop)
        self.addCleanup(self._end_tools)

    # Drivers.

    def install(self, name):
        """Unpacks the sample driver of that name where the program finds it; gives its folder."""
        (package,) = _PACKAGES.glob(f"{name}_*.drv")
        folder = self.folders.drivers / name
        with zipfile.ZipFile(package) as archive:
            archive.extractall(folder)
        for program in folder.glob("*.EXE"):
            program.chmod(0o755)
        (folder / "Data").mkdir()
        return folder

    def set_options(self, folder, tool, options):
        """Has a tool of a driver run with these options always: a script takes its place and
        becomes the tool."""
        program = folder / tool
        program.rename(folder / f"Sample {tool}")
        program.write_text(f'#!/bin/sh\n{_OPTIONS_VARIABLE}="{options}" '
                           f'exec "${{0%/*}}/Sample {tool}"\n')
        program.chmod(0o755)

    # Processes.

    def tools_below(self, folder):
        """The processes whose program lies below the folder."""
        found = []
        for entry in pathlib.Path("/proc").iterdir():
            if entry.name.isdigit():
                try:
                    program = pathlib.Path(os.readlink(entry / "exe"))
                except OSError:
                    continue
                if program.is_relative_to(folder):
                    found.append(int(entry.name))
        return found

    def wait_for_tool(self, folder):
        """Waits until one tool runs from the folder; gives its process."""
        (process,) = wait_until(lambda: self.tools_below(folder), f"a tool of {folder.name} runs")
        return process

    def wait_until_tools_end(self, folder):
        wait_until(lambda: not self.tools_below(folder), f"no tool of {folder.name} runs")

    def _end_tools(self):
        def none_left():
            left = self.tools_below(self.folders.root)
            for process in left:
                try:
                    os.kill(process, signal.SIGKILL)
                    os.waitpid(process, os.WNOHANG)
                except (ProcessLookupError, ChildProcessError):
                    pass  # ended meanwhile, or still the program's child
            return not left

        wait_until(none_left, "no tool of the test is left")

    # Windows.

    def tool_window(self, title):
        """The X window of that title whose program is a tool of this test, or None."""
        for line in self.session.tool("wmctrl", "-l", "-p", check=False).splitlines():
            words = line.split(None, 4)
            if len(words) == 5 and words[4] == title \
                    and int(words[2]) in self.tools_below(self.folders.drivers):
                return int(words[0], 16)
        return None

    def wait_for_window(self, title):
        return wait_until(lambda: self.tool_window(title), f'a tool shows the window "{title}"')

    def wait_until_window_is_gone(self, title):
        wait_until(lambda: not self.tool_window(title), f'the window "{title}" is gone')

    def wait_until_in_front(self, program, window):
        wait_until(lambda: program.active_window() == window, "the tool's window is in front")

    def come_to_the_front_again(self, window, tool_window):
        """The user works in the main window; the tool comes back before it by itself."""

        def in_front():
            if window.program.active_window() == window.window:
                return True
            self.session.tool("wmctrl", "-i", "-a", str(window.window))
            return False

        # More than one attempt: a busy test may miss the moment before the tool is back.
        wait_until(in_front, "the main window is in front")
        self.wait_until_in_front(window.program, tool_window)

    def close_behind_the_tool(self, window):
        """Closes the main window properly while a tool has the keyboard."""
        program = window.program
        program.close_window(window.window)
        self.assertEqual(program.wait_for_end(), 0, program.printed())
