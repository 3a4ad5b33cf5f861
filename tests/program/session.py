"""A desktop session of its own: a display that nobody sees, a window manager, a session bus with the
accessibility service, and temporary folders. One process has at most one, shared by its tests."""

import atexit
import ctypes
import os
import pathlib
import shutil
import signal
import subprocess
import sys
import tempfile

from waiting import wait_until

_PR_SET_PDEATHSIG = 1
PR_SET_CHILD_SUBREAPER = 36
_libc = ctypes.CDLL(None, use_errno=True)

# Windows get a frame and the focus; no menus or shortcuts of the window manager come in between.
_OPENBOX = """<?xml version="1.0"?>
<openbox_config xmlns="http://openbox.org/3.4/rc">
  <focus><focusNew>yes</focusNew></focus>
  <placement><policy>Smart</policy></placement>
  <theme><name>Clearlooks</name></theme>
  <desktops><number>1</number></desktops>
  <keyboard/>
  <mouse>
    <context name="Client">
      <mousebind button="Left" action="Press"><action name="Focus"/><action name="Raise"/></mousebind>
    </context>
  </mouse>
</openbox_config>
"""


def die_with_parent():
    """For preexec_fn: a child must not outlive a test that was killed."""
    _libc.prctl(_PR_SET_PDEATHSIG, signal.SIGKILL)


def start(command, **options):
    return subprocess.Popen(command, preexec_fn=die_with_parent, **options)


def _first_line(descriptor, what):
    with os.fdopen(descriptor) as stream:
        line = stream.readline().strip()
    if not line:
        raise RuntimeError(f"{what} did not start")
    return line


class Session:
    """Started by the constructor; close() ends every process and removes every file of it."""

    def __init__(self, size="1024x768", depth=24):
        _libc.prctl(PR_SET_CHILD_SUBREAPER, 1)
        self.folder = pathlib.Path(tempfile.mkdtemp(prefix="tarvo-session-"))
        self._processes = []
        self.environment = self._own_environment()
        try:
            self._start_bus()
            # Two servers that start at the same moment may want the same display number.
            for is_last in (False, False, True):
                self._start_display(f"{size}x{depth}")
                if self._start_window_manager(is_last):
                    break
        except BaseException:
            self.close()
            raise

    def _own_environment(self):
        kept = ("PATH", "TMPDIR", "ASAN_OPTIONS", "LSAN_OPTIONS", "UBSAN_OPTIONS")
        environment = {name: os.environ[name] for name in kept if name in os.environ}
        environment["LANG"] = "C.UTF-8"
        for variable, name in (
            ("HOME", "home"),
            ("XDG_CONFIG_HOME", "config"),
            ("XDG_DATA_HOME", "data"),
            ("XDG_STATE_HOME", "state"),
            ("XDG_CACHE_HOME", "cache"),
            ("XDG_RUNTIME_DIR", "runtime"),
        ):
            (self.folder / name).mkdir(mode=0o700)
            environment[variable] = str(self.folder / name)
        environment.update(self.viewer_association())
        return environment

    def viewer_association(self):
        """What lets CSV files open in the viewer, as for a user who has it, so that no program asks."""
        configuration, data = self.folder / "etc", self.folder / "share"
        (data / "applications").mkdir(parents=True, exist_ok=True)
        configuration.mkdir(exist_ok=True)
        (configuration / "mimeapps.list").write_text(
            "[Default Applications]\ntext/csv=csvFile.desktop\n")
        (data / "applications" / "csvFile.desktop").write_text(
            "[Desktop Entry]\nType=Application\nName=CSV viewer\nExec=csvview %f\n"
            "MimeType=text/csv;\n")
        return {
            "XDG_CONFIG_DIRS": f"{configuration}:/etc/xdg",
            "XDG_DATA_DIRS": f"{data}:/usr/local/share:/usr/share",
        }

    def _start(self, command, **options):
        process = start(
            command,
            env=self.environment,
            cwd=self.folder,
            stdin=subprocess.DEVNULL,
            stdout=subprocess.DEVNULL,
            stderr=subprocess.DEVNULL,
            **options,
        )
        self._processes.append(process)
        return process

    def _start_display(self, screen):
        read, write = os.pipe()
        command = ["Xvfb", "-displayfd", str(write), "-screen", "0", screen, "-nolisten", "tcp"]
        self._start(command, pass_fds=(write,))
        os.close(write)
        self.environment["DISPLAY"] = ":" + _first_line(read, "Xvfb")

    def _start_bus(self):
        read, write = os.pipe()
        command = ["dbus-daemon", "--session", "--nofork", "--nosyslog"]
        self._start(command + [f"--print-address={write}"], pass_fds=(write,))
        os.close(write)
        self.environment["DBUS_SESSION_BUS_ADDRESS"] = _first_line(read, "dbus-daemon")

    def _start_window_manager(self, must_run):
        """Gives whether it runs; false when the display has gone instead."""
        configuration = self.folder / "openbox.xml"
        configuration.write_text(_OPENBOX)
        display = self._processes[-1]
        manager = self._start(["openbox", "--sm-disable", "--config-file", str(configuration)])

        def runs():
            shown = self.tool("xprop", "-root", "_NET_SUPPORTING_WM_CHECK", check=False)
            return "window id" in shown

        def has_ended():
            return display.poll() is not None or manager.poll() is not None

        wait_until(lambda: runs() or (has_ended() and not must_run), "the window manager runs")
        return runs()

    def tool(self, *command, check=True):
        """Runs a command on the display and gives what it prints."""
        done = subprocess.run(command, env=self.environment, cwd=self.folder, text=True,
                              stdout=subprocess.PIPE, stderr=subprocess.STDOUT, timeout=60)
        if check and done.returncode:
            raise RuntimeError(f"{' '.join(command)}: {done.stdout}")
        return done.stdout

    def tool_bytes(self, *command):
        """Runs a command on the display and gives the bytes that it writes."""
        return subprocess.run(command, env=self.environment, cwd=self.folder, check=True,
                              stdout=subprocess.PIPE, timeout=60).stdout

    def close(self):
        for process in reversed(self._processes):
            process.terminate()
        for process in self._processes:
            try:
                process.wait(10)
            except subprocess.TimeoutExpired:
                process.kill()
                process.wait()
        self._processes.clear()
        end_descendants()
        shutil.rmtree(self.folder, ignore_errors=True)


def _descendants():
    parents = {}
    for entry in pathlib.Path("/proc").iterdir():
        if entry.name.isdigit():
            try:
                after_name = (entry / "stat").read_text().rpartition(")")[2].split()
            except OSError:
                continue
            parents[int(entry.name)] = int(after_name[1])
    found, new = set(), {os.getpid()}
    while new:
        new = {child for child, parent in parents.items() if parent in new} - found
        found |= new
    return found


def end_descendants():
    """Kills every process that comes from this one: services that the bus started have become children
    of this process when it ended."""

    def none_left():
        for process in _descendants():
            try:
                os.kill(process, signal.SIGKILL)
            except ProcessLookupError:
                pass
        try:
            while os.waitpid(-1, os.WNOHANG)[0]:
                pass
        except ChildProcessError:
            return True
        return False

    wait_until(none_left, "no process of the session is left")


_shared = None


def shared():
    """The session of this process, started at the first call and closed when the process ends."""
    global _shared
    if _shared is None:
        signal.signal(signal.SIGTERM, lambda *_: sys.exit(1))  # the files go then, too
        _shared = Session()
        atexit.register(_shared.close)
    return _shared
