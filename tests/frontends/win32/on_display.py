"""Runs a Windows program through Wine on a display of its own, with a window manager.

Usage: on_display.py WINE_FOLDER PROGRAM [ARGUMENT...]

WINE_FOLDER is made when it is missing, and nobody else may use it meanwhile.
"""

import contextlib
import ctypes
import os
import pathlib
import signal
import subprocess
import sys

_PR_SET_PDEATHSIG = 1
_libc = ctypes.CDLL(None)


def _die_with_parent():
    _libc.prctl(_PR_SET_PDEATHSIG, signal.SIGKILL)


@contextlib.contextmanager
def _running(command, **options):
    process = subprocess.Popen(command, preexec_fn=_die_with_parent, **options)
    try:
        yield process
    finally:
        process.terminate()
        process.wait()


@contextlib.contextmanager
def _display():
    """The name of a new display, without the colon."""
    reading, writing = os.pipe()
    command = ["Xvfb", "-displayfd", str(writing), "-screen", "0", "1280x1024x24", "-nolisten", "tcp"]
    with _running(command, pass_fds=[writing], stderr=subprocess.DEVNULL):
        os.close(writing)
        with os.fdopen(reading) as stream:
            number = stream.readline().strip()
        if not number:
            raise SystemExit("on_display.py: Xvfb did not start")
        yield number


def _end_wine(environment):
    """No process of Wine outlives the program."""
    path = environment.get("PATH", "") + os.pathsep + "/usr/lib/wine"
    subprocess.run(["wineserver", "--kill", "--wait"], env=dict(environment, PATH=path), check=False)


def main(folder, command):
    with _display() as number:
        environment = dict(os.environ, DISPLAY=":" + number, WINEPREFIX=folder, WINEDEBUG="-all",
                           WINEDLLOVERRIDES="mscoree,mshtml=", LC_ALL="C.UTF-8")
        with _running(["openbox", "--config-file", os.devnull], env=environment,
                      stderr=subprocess.DEVNULL):
            try:
                if not pathlib.Path(folder, "system.reg").exists():
                    subprocess.run(["wineboot", "--init"], env=environment, check=True)
                return subprocess.run(["wine", *command], env=environment, check=False).returncode
            finally:
                _end_wine(environment)


if __name__ == "__main__":
    if len(sys.argv) < 3:
        sys.exit(__doc__)
    sys.exit(main(os.path.abspath(sys.argv[1]), sys.argv[2:]))
