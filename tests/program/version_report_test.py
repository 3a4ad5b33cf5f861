"""The version report: the run with "/v" starts every tool of every driver and ends. It needs no
display, and looks for the drivers at the root of the drive: every test has a root of its own."""

import ctypes
import hashlib
import os
import pathlib
import shutil
import subprocess
import tempfile
import unittest

import settings_file
from program import BUILD_FOLDER
from session import PR_SET_CHILD_SUBREAPER, end_descendants, start
from waiting import wait_until

DEADLINE = 60  # seconds
MOST_DRIVERS = 101

# Runs a command with a folder as the root of the drive: in it is what the real root holds, but the
# drivers are the folder's own. Nobody else sees these mounts, and they end with the command.
# Arguments: the folder, the current folder, the command.
_WITH_ROOT = r"""
set -eu
root=$1 current=$2
shift 2
for entry in /*; do
  case $entry in
    /[Dd][Rr][Ii][Vv][Ee][Rr][Ss]) ;;
    *)
      if [ -L "$entry" ]; then
        cp -P "$entry" "$root$entry"
      elif [ -d "$entry" ]; then
        mkdir -p "$root$entry"
        mount --rbind "$entry" "$root$entry"
      fi
      ;;
  esac
done
exec chroot "$root" env -C "$current" "$@"
"""

# One that is not root becomes it in a namespace of its own.
_UNSHARE = ["unshare", "--mount", *([] if os.geteuid() == 0 else ["--map-root-user"])]


def _can_have_a_root():
    command = [*_UNSHARE, "mount", "--rbind", "/proc", "/proc"]
    return subprocess.run(command, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL,
                          check=False).returncode == 0


def tree(folder):
    """Every path below a folder with what would tell that it was touched."""
    found = {}
    for path in sorted(folder.rglob("*")):
        status = path.lstat()
        content = hashlib.sha256(path.read_bytes()).hexdigest() if path.is_file() else ""
        found[str(path)] = (status.st_mode, status.st_size, status.st_mtime_ns, status.st_ino, content)
    return found


@unittest.skipUnless(_can_have_a_root(), "a root of its own needs mounts, which are forbidden here")
class VersionReport(unittest.TestCase):
    def setUp(self):
        # Tools that outlive the program become children of the tests, which can wait for them.
        ctypes.CDLL(None).prctl(PR_SET_CHILD_SUBREAPER, 1)
        self.folder = pathlib.Path(tempfile.mkdtemp(prefix="tarvo-report-"))
        self.addCleanup(shutil.rmtree, self.folder)
        self.root = self.folder / "root"
        self.documents = self.folder / "documents"
        self.current = self.folder / "current"
        self.calls = self.folder / "calls"
        for folder in (self.root, self.documents, self.current, self.calls):
            folder.mkdir()
        self.drivers = self.root / "drivers"
        self.environment = {"PATH": os.environ["PATH"], "HOME": str(self.folder), "LANG": "C.UTF-8",
                            "TARVO_COMMON_DOCUMENTS": str(self.documents)}

    def add_tool(self, path, script=""):
        """Makes a tool, by its path below the drivers, that tells of its call; gives its file."""
        tool = self.drivers / path
        tool.parent.mkdir(parents=True, exist_ok=True)
        tool.write_text(f'#!/bin/sh\n{script}\n{{ pwd; printf "%s\\n" "$0" "$@"; }} > '
                        f'"{self.calls}/$$"\n')
        tool.chmod(0o755)
        return tool

    def start(self, *arguments, through=()):
        command = [*_UNSHARE, "sh", "-c", _WITH_ROOT, "sh", self.root, self.current, *through,
                   BUILD_FOLDER / "bin" / "tarvo", *arguments]
        program = start(command, env=self.environment, stdin=subprocess.DEVNULL,
                        stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True)
        self.addCleanup(self.stop, program)
        return program

    def stop(self, program):
        program.kill()
        program.communicate()
        end_descendants()

    def run_report(self, argument="/v", through=()):
        """Runs the report to its end and waits for every tool; gives exit code and standard error."""
        program = self.start(argument, through=through)
        printed, errors = program.communicate(timeout=DEADLINE)
        self.assertEqual(printed, "")
        self.wait_for_tools()
        return program.returncode, errors

    def wait_for_tools(self):
        """Waits for the end of every tool that was started."""

        def none_left():
            try:
                while os.waitpid(-1, os.WNOHANG)[0]:
                    pass
            except ChildProcessError:
                return True
            return False

        wait_until(none_left, "every tool has ended")

    def started(self):
        """The tools that were started, by their paths below the drivers; each must have got nothing
        but the switch, in the folder that the program was started in."""
        found = []
        for call in self.calls.iterdir():
            current, tool, *arguments = call.read_text().splitlines()
            self.assertEqual((current, arguments), (str(self.current), ["/v"]))
            found.append(tool.removeprefix("/drivers/"))
        return sorted(found)

    def assert_reports(self, *tools, **options):
        self.assertEqual(self.run_report(**options), (0, ""))
        self.assertEqual(self.started(), sorted(tools))


class TheReport(VersionReport):
    def test_starts_every_tool_of_every_driver_with_the_switch_whatever_its_case(self):
        tools = ("Meter/Download.EXE", "Meter/upload.exe", "Meter/.Hidden.exe", "Tide Gauge/a b.exe")
        for path in (*tools, "Meter/Data/deep.exe", "beside.exe", "Meter/Download.com"):
            self.add_tool(path)
        for argument in ("/v", "/V"):
            with self.subTest(argument):
                self.assert_reports(*tools, argument=argument)
                shutil.rmtree(self.calls)
                self.calls.mkdir()

    def test_finds_the_drivers_in_any_letter_case(self):
        self.add_tool("Meter/Download.exe")
        self.drivers.rename(self.root / "DRIVERS")
        self.assertEqual(self.run_report(), (0, ""))
        (call,) = self.calls.iterdir()
        self.assertIn("/DRIVERS/Meter/Download.exe", call.read_text().splitlines())

    def test_ends_at_once_without_drivers(self):
        self.assert_reports()

    def test_waits_for_no_tool_and_its_tools_live_on(self):
        gate = self.folder / "gate"
        os.mkfifo(gate)
        self.add_tool("Meter/Slow.exe", f'read line < "{gate}"')
        program = self.start("/v")
        self.assertEqual(program.wait(DEADLINE), 0)
        self.assertEqual(self.started(), [])
        with open(os.open(gate, os.O_RDWR), "w", encoding="ascii") as writer:
            writer.write("go on\n")
            writer.flush()
            self.wait_for_tools()
        self.assertEqual(self.started(), ["Meter/Slow.exe"])

    def test_passes_over_tools_that_cannot_be_started(self):
        for name, content, mode in (("plain.exe", "no program", 0o755), ("empty.exe", "", 0o755),
                                    ("locked.exe", "#!/bin/sh\n", 0o644)):
            tool = self.add_tool(f"Meter/{name}")
            tool.write_text(content)
            tool.chmod(mode)
        (self.drivers / "Meter" / "folder.exe").mkdir()
        (self.drivers / "Meter" / "broken.exe").symlink_to("nowhere")
        self.add_tool("Meter/zgood.exe")
        self.add_tool("Other/Good.exe")
        self.assert_reports("Meter/zgood.exe", "Other/Good.exe")


class DriverFolders(VersionReport):
    def add_drivers(self, count):
        tools = [f"{i}/Download.exe" for i in range(count)]
        for tool in tools:
            self.add_tool(tool)
        return tools

    def add_folders_that_do_not_count(self):
        """A hidden one, a read-only one and one that is a link, each with a tool."""
        for name in (".hidden", "locked", "linked"):
            self.add_tool(f"{name}/Download.exe")
        (self.drivers / "linked").rename(self.root / "elsewhere")
        (self.drivers / "linked").symlink_to("../elsewhere")
        locked = self.drivers / "locked"
        locked.chmod(0o555)
        self.addCleanup(locked.chmod, 0o755)

    def test_that_are_hidden_read_only_or_links_are_skipped(self):
        self.add_folders_that_do_not_count()
        self.add_tool("kept/Download.exe")
        self.assert_reports("kept/Download.exe")

    def test_may_be_a_hundred_and_one_besides_those_that_do_not_count(self):
        self.add_folders_that_do_not_count()
        self.assert_reports(*self.add_drivers(MOST_DRIVERS))

    def test_one_more_is_an_error_and_nothing_is_started(self):
        self.add_drivers(MOST_DRIVERS + 1)
        code, errors = self.run_report()
        self.assertEqual(code, 1)
        self.assertEqual(errors.rstrip("\n"), "Run-time error '9':\n\nSubscript out of range")
        self.assertEqual(self.started(), [])


class WhatIsLeftAlone(VersionReport):
    def setUp(self):
        super().setUp()
        self.add_tool("Meter/Download.exe")
        self.settings = settings_file.path_in(self.documents)

    def assert_nothing_is_touched(self, **options):
        before = tree(self.documents), tree(self.current), tree(self.drivers)
        self.assert_reports("Meter/Download.exe", **options)
        self.assertEqual((tree(self.documents), tree(self.current), tree(self.drivers)), before)

    def fill(self):
        """Settings that another program holds and a dictionary that none is: using either would
        take long or fail."""
        settings_file.write(self.settings, {"Tarvo_Settings_Directory": "/nowhere/"})
        settings_file.take_foreign_lock(self.settings)
        (self.current / "TARVO.DIC").write_bytes(b"no dictionary")

    def test_no_settings_file_is_made(self):
        self.assert_nothing_is_touched()
        self.assertEqual(list(self.documents.iterdir()), [])

    def test_settings_and_dictionary_stay_as_they_are(self):
        self.fill()
        self.assert_nothing_is_touched()

    def test_a_display_that_is_named_is_not_asked(self):
        self.environment["DISPLAY"] = ":64999"
        self.environment["QT_QPA_PLATFORM"] = "no such platform"
        self.assert_nothing_is_touched()

    @unittest.skipUnless(shutil.which("strace"), "strace is not installed")
    def test_settings_dictionary_and_display_are_not_even_looked_at(self):
        self.fill()
        self.environment["DISPLAY"] = ":64999"
        trace = self.folder / "trace"
        self.assert_nothing_is_touched(
            through=("strace", "-o", trace, "-e", "trace=%file,%network"))
        looked_at = trace.read_text()
        self.assertIn('"/drivers', looked_at, "the trace shows what is looked at")
        for name in (str(self.documents), "localregistry", "Halvex", "TARVO.DIC", "TARVO.HLP",
                     ".X11-unix", "socket(", "connect("):
            self.assertNotIn(name.lower(), looked_at.lower())


if __name__ == "__main__":
    unittest.main()
