"""Starts the program on a virtual display and saves pictures of its windows.

Usage: take_pictures.py FOLDER PROGRAM [ARGUMENT...]
"""

import contextlib
import os
import pathlib
import subprocess
import sys

_ROOT = pathlib.Path(__file__).resolve().parent.parent
sys.path.insert(0, str(_ROOT / "tests" / "program"))

import session  # noqa: E402
import settings_file  # noqa: E402
from main_window import MainWindow  # noqa: E402
from program import RunningProgram  # noqa: E402
from waiting import wait_until  # noqa: E402

_VIEWS = ("large-icons", "small-icons", "list", "details")
_START_DEADLINE = 60  # seconds


def _picture(own, window):
    """The window's present picture as the bytes of a PNG file."""
    return own.tool_bytes("import", "-silent", "-window", str(window), "png:-")


def _save_when_settled(own, window, path):
    """Saves the window's picture once two in a row are alike, so that nothing is half drawn."""
    last = [b""]

    def settled():
        picture = _picture(own, window)
        alike = picture == last[0]
        last[0] = picture
        return alike

    wait_until(settled, "the window has settled", interval=0.2)
    path.write_bytes(last[0])
    print(path)


def _settings_lock():
    """Makes the main window wait for the settings while it loads, so that the splash window stands
    still. Only on a data folder of our own."""
    documents = os.environ.get("TARVO_COMMON_DOCUMENTS")
    if not documents:
        return contextlib.nullcontext()
    return settings_file.foreign_lock(settings_file.path_in(documents))


def _start(own, command):
    environment = dict(os.environ, QT_LINUX_ACCESSIBILITY_ALWAYS_ON="1", **own.viewer_association())
    for name in ("DISPLAY", "DBUS_SESSION_BUS_ADDRESS"):
        environment[name] = own.environment[name]
    environment.setdefault("XDG_RUNTIME_DIR", own.environment["XDG_RUNTIME_DIR"])
    program = RunningProgram(own, session.start(command, env=environment, stdin=subprocess.DEVNULL))
    wait_until(lambda: not program.is_running() or program.window_ids(),
               "the program shows a window or ends", _START_DEADLINE)
    return program


def _save_main_window(own, program, pictures):
    window = MainWindow(program)
    window.wait_until_active()
    for mode, view in enumerate(_VIEWS):
        window.choose_view(mode)
        _save_when_settled(own, window.window, pictures / f"main-{view}.png")
    window.choose_view(0)
    _save_when_settled(own, window.open_about(), pictures / "about.png")
    program.press("Escape")
    program.close_window(window.wait_until_active())


def main(folder, command):
    pictures = pathlib.Path(folder)
    pictures.mkdir(parents=True, exist_ok=True)
    own = session.shared()
    with _settings_lock() as is_locked:
        program = _start(own, command)
        if is_locked and program.is_running():
            _save_when_settled(own, program.window_ids()[0], pictures / "splash.png")
    if program.is_running():
        _save_main_window(own, program, pictures)
    return program.wait_for_end()


if __name__ == "__main__":
    if len(sys.argv) < 3:
        sys.exit(__doc__)
    sys.exit(main(sys.argv[1], sys.argv[2:]))
