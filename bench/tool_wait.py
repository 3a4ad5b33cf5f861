"""The processor time of the program while it waits for a download tool."""

import contextlib
import os
import shlex
import signal
import time

import catalogue_data
import program
import session
from main_window import FILE, MainWindow
from report import Figure
from waiting import wait_until

_SECONDS = 60
_TARGET = 0.1  # seconds of processor time
_DRIVER = "Meter"


def measure(place, report):
    """Starts a download whose tool shows a window and then sleeps, and lets the program wait. Once: the
    time is the sum of the wait's many turns."""
    print(f"measuring: {_SECONDS} seconds of waiting for a download tool", flush=True)
    folders = program.Folders(session.shared())
    _make_tool(place, folders.add_driver(_DRIVER) / "Download.EXE")
    tarvo = program.Program(session.shared(), folders)
    try:
        processor = _processor_time_of_wait(tarvo)
    finally:
        tarvo.stop()
        folders.remove()
    report.figures.append(Figure(f"a download tool's wait, processor time over {_SECONDS} seconds",
                                 processor, _TARGET, "s"))


def _make_tool(place, path):
    """A tool with a window, which the program brings to the front again and again."""
    tool = place.programs / "minimal_window"
    path.write_text(f"#!/bin/sh\nexec {shlex.quote(str(tool))} '{catalogue_data.ICON_COLOUR}'\n")
    path.chmod(0o755)


def _processor_time_of_wait(tarvo):
    window = MainWindow(tarvo)
    main = window.wait_until_active()
    window.click(window.item(_DRIVER))
    wait_until(lambda: window.entry(FILE, "Download").is_enabled(), "the driver is selected")
    window.choose_entry(FILE, "Download")
    wait_until(lambda: tarvo.active_window() not in (0, main), "the tool's window is in front")
    tool, = _children(tarvo.process.pid)
    try:
        before = _processor_time(tarvo.process.pid)
        time.sleep(_SECONDS)
        used = _processor_time(tarvo.process.pid) - before
        if not tarvo.is_running() or _children(tarvo.process.pid) != [tool]:
            raise RuntimeError("the program has not waited for the tool")
        return used
    finally:
        tarvo.stop()  # before the tool, or the program would go on with its download
        with contextlib.suppress(ProcessLookupError):
            os.kill(tool, signal.SIGKILL)


def _children(process):
    with open(f"/proc/{process}/task/{process}/children") as file:
        return [int(child) for child in file.read().split()]


def _processor_time(process):
    """Seconds that all threads of a running process have used, to the nanosecond."""
    threads = os.listdir(f"/proc/{process}/task")
    used = 0
    for thread in threads:
        with open(f"/proc/{process}/task/{thread}/schedstat") as file:
            used += int(file.read().split()[0])
    return used / 1e9
