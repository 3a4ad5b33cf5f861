"""The sample tools as real processes, in a driver's folder as an install leaves it."""

import datetime
import json
import os
import pathlib
import shutil
import subprocess
import tempfile
import unittest

import sample_packages
import settings_file
from sample_packages import DRIVERS, HAND_HELD
from waiting import wait_until

SUFFIXES = {"Download.EXE": "_DOWNLOAD", "Upload.EXE": "_UPLOAD", "Properties.EXE": "_PROPERTIES"}
DEADLINE = 60  # seconds


class ToolTestCase(unittest.TestCase):
    maxDiff = None

    def setUp(self):
        folder = tempfile.TemporaryDirectory(prefix="tarvo-tools-")
        self.addCleanup(folder.cleanup)
        self.folder = pathlib.Path(folder.name)
        self.drivers = self.folder / "documents/Halvex Limited/Halvex Tarvo/Drivers"
        self.settings = settings_file.path_in(self.folder / "documents")
        runtime = self.folder / "runtime"
        runtime.mkdir(mode=0o700)
        kept = ("PATH", "LANG", "LC_ALL", "ASAN_OPTIONS", "LSAN_OPTIONS", "UBSAN_OPTIONS")
        self.environment = {name: os.environ[name] for name in kept if name in os.environ} | {
            "HOME": str(self.folder),
            "XDG_RUNTIME_DIR": str(runtime),
            "TARVO_COMMON_DOCUMENTS": str(self.folder / "documents"),
            "QT_QPA_PLATFORM": "offscreen",
        }

    def install(self, package):
        driver, _ = sample_packages.driver_and_version(package)
        return sample_packages.unpack(package, self.drivers / driver)

    def start(self, program, *arguments, **environment):
        return subprocess.Popen(
            [program, *arguments], cwd=self.folder, env=self.environment | environment,
            stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True)

    def end_of(self, process):
        """The exit code and what the process has printed as errors."""
        try:
            _, errors = process.communicate(timeout=DEADLINE)
        except subprocess.TimeoutExpired:
            process.kill()
            process.communicate()
            self.fail(f"{process.args} did not end")
        return process.returncode, errors

    def run_tool(self, program, *arguments, expected=0, **environment):
        code, errors = self.end_of(self.start(program, *arguments, **environment))
        self.assertEqual(code, expected, errors)
        return errors

    def stored(self):
        return settings_file.read(self.settings)

    def files_below(self, folder):
        return {path.relative_to(folder).as_posix() for path in folder.rglob("*")}


class Versions(ToolTestCase):
    # A toolkit that is asked for this ends the program: no window can be opened.
    NO_WINDOWS = {"QT_QPA_PLATFORM": "no-such-platform"}

    def test_each_tool_records_its_own_key_alone_and_ends_without_a_window(self):
        for package, members in DRIVERS.items():
            driver, version = sample_packages.driver_and_version(package)
            folder = self.install(package)
            for tool in sorted(members & SUFFIXES.keys()):
                with self.subTest(driver=driver, tool=tool):
                    self.settings.unlink(missing_ok=True)
                    self.run_tool(folder / tool, "/v", **self.NO_WINDOWS)
                    key = "tarvo.versions_" + driver + SUFFIXES[tool]
                    self.assertEqual(self.stored(), {key: version})
                    self.assertEqual(self.files_below(folder), members)

    def test_a_window_would_have_been_noticed(self):
        folder = self.install("Meter_1.0.drv")
        process = self.start(folder / "Properties.EXE", "--close", **self.NO_WINDOWS)
        self.assertNotEqual(self.end_of(process)[0], 0)

    def test_tools_that_are_started_together_record_all_their_versions(self):
        folder = self.install("Meter_1.0.drv")
        processes = [self.start(folder / tool, "/v") for tool in SUFFIXES]
        for process in processes:
            self.assertEqual(self.end_of(process)[0], 0)
        expected = {"tarvo.versions_Meter" + suffix: "1.0" for suffix in SUFFIXES.values()}
        self.assertEqual(self.stored(), expected)

    def test_a_recorded_version_is_replaced_and_other_settings_stay(self):
        folder = self.install("Tide Gauge_2.1.drv")
        settings_file.write(
            self.settings, {"other": "value", "tarvo.versions_Tide Gauge_DOWNLOAD": "1.9"})
        self.run_tool(folder / "Download.EXE", "/v")
        self.assertEqual(
            self.stored(), {"other": "value", "tarvo.versions_Tide Gauge_DOWNLOAD": "2.1"})

    def test_without_a_description_nothing_is_recorded(self):
        folder = self.install("Meter_1.0.drv")
        (folder / "driver.inf").unlink()
        errors = self.run_tool(folder / "Download.EXE", "/v", expected=1)
        self.assertIn("Download.EXE: ", errors)
        self.assertEqual(self.stored(), {})

    def test_an_argument_that_is_not_understood_is_refused(self):
        folder = self.install("Meter_1.0.drv")
        errors = self.run_tool(folder / "Upload.EXE", "/x", expected=2)
        self.assertIn("Usage: Upload.EXE", errors)
        self.assertFalse(self.settings.exists())


class Install(ToolTestCase):
    """All packages through Tarvo itself, without a window."""

    def setUp(self):
        super().setUp()
        # Goes before the folder: tools look at the settings file once more after they have written it.
        self.addCleanup(wait_until, lambda: not self.tools_run(), "no tool runs")

    def tools_run(self):
        for process in pathlib.Path("/proc").glob("[0-9]*/exe"):
            try:
                if process.readlink().is_relative_to(self.folder):
                    return True
            except OSError:
                pass  # it has ended
        return False

    def ctl(self, *arguments):
        return subprocess.run(
            [os.environ["TARVO_CTL"], *arguments], cwd=self.drivers.parent, env=self.environment,
            check=True, capture_output=True, text=True, timeout=DEADLINE).stdout

    def settings_shown(self):
        return dict(line.split("\t") for line in self.ctl("settings", "list").splitlines())

    def test_an_install_makes_every_tool_record_its_version(self):
        data = self.drivers.parent
        data.mkdir(parents=True)
        for package in (*DRIVERS, *HAND_HELD):
            shutil.copy(sample_packages.FOLDER / package, data)
        self.ctl("drivers", "install", *(str(data / package) for package in DRIVERS))
        expected = {"tarvo.versions_Pocket Logger_HANDHELD": "1.3"}
        for package, members in DRIVERS.items():
            driver, version = sample_packages.driver_and_version(package)
            for tool in members & SUFFIXES.keys():
                expected["tarvo.versions_" + driver + SUFFIXES[tool]] = version
        wait_until(
            lambda: expected.items() <= self.settings_shown().items(),
            "all tools have recorded their versions")
        listed = json.loads(self.ctl("drivers", "list", "--json"))
        self.assertEqual(
            [[driver[column] for column in ("name", "download", "upload", "properties")]
             for driver in listed],
            [["Meter", "1.0", "1.0", "1.0"], ["Pocket Logger", "1.3", "1.3", "1.3"],
             ["Tide Gauge", "2.1", "-", "2.1"]])
        self.assertLessEqual(
            {"DeviceInstaller/DeviceInstaller.exe", "DeviceInstaller/Palm Kestrel/PalmKestrel.ini",
             "Win32Device/PDATarvo.exe", "Win32Device/Sample.hvd",
             "Drivers/Pocket Logger/Transfer.exe"},
            self.files_below(data))


class Windows(ToolTestCase):
    def dated_downloads(self, package, *arguments, **environment):
        """Runs the download tool; the names of the new files with DATE for the day's date."""
        folder = self.install(package)
        before = self.files_below(folder)
        days = [datetime.date.today()]
        self.run_tool(folder / "Download.EXE", *arguments, **environment)
        days.append(datetime.date.today())
        names = self.files_below(folder) - before
        return {name.replace(str(day), "DATE") for name in names for day in days if str(day) in name}

    def test_a_download_writes_the_drivers_kinds_of_files_into_data(self):
        kinds = {"Meter": ("csv", "asc"), "Tide Gauge": ("txt", "csv"), "Pocket Logger": ("csv", "hvd")}
        for package in DRIVERS:
            driver, _ = sample_packages.driver_and_version(package)
            with self.subTest(driver=driver):
                self.assertEqual(
                    self.dated_downloads(package, "--seconds", "0"),
                    {f"Data/{driver} DATE.{kind}" for kind in kinds[driver]})

    def test_a_downloads_files_hold_a_day_of_readings(self):
        lines_around = {".csv": 1, ".asc": 4, ".txt": 3}
        for package in ("Meter_1.0.drv", "Tide Gauge_2.1.drv"):
            self.dated_downloads(package, "--seconds", "0")
        files = [path for path in self.drivers.rglob("Data/*") if path.suffix in lines_around]
        self.assertEqual(len(files), 4)
        for file in files:
            with self.subTest(file=file.name):
                lines = file.read_bytes().split(b"\r\n")
                self.assertEqual(len(lines) - 1, lines_around[file.suffix] + 48)

    def test_a_device_download_names_the_fields_that_an_install_has_appended(self):
        folder = self.install("Pocket Logger_1.3.drv")
        with (folder / "driver.inf").open("ab") as description:
            description.write(b'"LOOP_MA","Loop Current","TEXT","mA"\r\n')
        self.run_tool(folder / "Download.EXE", "--seconds", "0")
        (download,) = folder.glob("Data/*.hvd")
        header, field, end = download.read_bytes().split(b"\r\n")[2:]
        self.assertEqual(header, b"FIELDNAME|VISIBLE|CSVNAME|DATATYPE|VALUE")
        self.assertRegex(field, rb"^Loop Current \(mA\)\|1\|LOOP_MA\|TEXT\|1[234]\.\d\d$")
        self.assertEqual(end, b"")

    def test_a_second_download_adds_files(self):
        self.dated_downloads("Meter_1.0.drv", "--seconds", "0")
        self.assertEqual(len(self.dated_downloads("Meter_1.0.drv", "--seconds", "0")), 2)
        self.assertEqual(len(list((self.drivers / "Meter/Data").iterdir())), 4)

    def test_a_download_that_fails_writes_nothing(self):
        folder = self.install("Meter_1.0.drv")
        before = self.files_below(folder)
        self.run_tool(folder / "Download.EXE", "--seconds", "0", "--fail", "--close", expected=1)
        self.assertEqual(self.files_below(folder), before)

    def test_options_reach_a_tool_through_the_environment(self):
        folder = self.install("Meter_1.0.drv")
        self.run_tool(
            folder / "Download.EXE", expected=1,
            TARVO_SAMPLE_TOOL_OPTIONS=" --seconds 0  --fail --close ")
        self.assertFalse((folder / "Data").exists())

    def test_the_properties_tool_keeps_its_values_and_an_upload_sends_the_interval(self):
        folder = self.install("Meter_1.0.drv")
        chosen = {
            "tarvo.settings_Meter_PORT": "USB",
            "tarvo.settings_Meter_SITE": "Lock Gate",
            "tarvo.settings_Meter_INTERVAL": "60",
        }
        settings_file.write(self.settings, chosen)
        self.run_tool(folder / "Properties.EXE", "--close")
        self.assertEqual(self.stored(), chosen)
        self.run_tool(folder / "Upload.EXE", "--seconds", "0")
        self.assertEqual(self.stored(), chosen | {"tarvo.device_Meter_INTERVAL": "60"})

    def test_an_upload_that_fails_sends_nothing(self):
        folder = self.install("Meter_1.0.drv")
        self.run_tool(folder / "Upload.EXE", "--seconds", "0", "--fail", "--close", expected=1)
        self.assertEqual(self.stored(), {})


class HandHeld(ToolTestCase):
    def test_the_programs_open_their_windows_and_end(self):
        for package, program in (
            ("DeviceInstaller.pkg", "DeviceInstaller.exe"), ("Win32Installer.pkg", "PDATarvo.exe")):
            with self.subTest(program=program):
                folder = sample_packages.unpack(package, self.folder / package)
                self.run_tool(folder / program, "--close")

    def test_a_program_put_into_a_driver_answers_the_version_switch_too(self):
        folder = self.install("Pocket Logger_1.3.drv")
        sample_packages.unpack("Tarvoexe.pkg", folder)
        (folder / "Programs/Transfer.exe").rename(folder / "Transfer.exe")
        self.run_tool(folder / "Transfer.exe", "/v")
        self.assertEqual(self.stored(), {"tarvo.versions_Pocket Logger_HANDHELD": "1.3"})


if __name__ == "__main__":
    unittest.main()
