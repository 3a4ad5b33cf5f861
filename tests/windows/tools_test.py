"""The sample drivers' tools for Windows as processes of their own: what they record, write and store,
and how they end."""

import datetime
import shutil
import unittest

from windows_case import GAUGE, LOGGER, METER, PACKAGES, WindowsCase
from wine import need

SUFFIXES = {"Download.EXE": "_DOWNLOAD", "Upload.EXE": "_UPLOAD", "Properties.EXE": "_PROPERTIES"}
NO_DISPLAY = {"DISPLAY": ""}
QUICK = ("--seconds", "0")


class Tools(WindowsCase):
    def setUp(self):
        need(PACKAGES / GAUGE, PACKAGES / LOGGER)
        super().setUp()

    def run_tool(self, program, *arguments, expected=0, **variables):
        code, _ = self.wine.run(program, *arguments, **variables)
        self.assertEqual(code, expected, f"{program.name} {' '.join(arguments)}")

    def files(self, folder):
        """The names of the files in "Data" with DATE for the day's date."""
        names = [path.name for path in (folder / "Data").iterdir()]
        days = (datetime.date.today(), datetime.date.today() - datetime.timedelta(days=1))
        return {name.replace(str(day), "DATE") for name in names for day in days
                if str(day) in name}

    def test_record_their_own_key_alone_without_a_window(self):
        folder = self.install(METER)
        for tool, suffix in SUFFIXES.items():
            with self.subTest(tool=tool):
                self.folders.settings_path.unlink(missing_ok=True)
                self.run_tool(folder / tool, "/v", **NO_DISPLAY)
                self.assertEqual(self.folders.settings(), {f"tarvo.versions_Meter{suffix}": "1.0"})
        # A window would have been noticed.
        self.run_tool(folder / "Properties.EXE", "--close", expected=1, **NO_DISPLAY)

    def test_record_nothing_without_a_description_and_refuse_what_they_do_not_understand(self):
        folder = self.install(METER)
        self.run_tool(folder / "Upload.EXE", "/x", expected=2)
        (folder / "driver.inf").unlink()
        self.run_tool(folder / "Download.EXE", "/v", expected=1)
        self.assertEqual(self.versions(), {})

    def test_write_the_drivers_kinds_of_files_and_add_to_earlier_ones(self):
        kinds = {METER: ("csv", "asc"), GAUGE: ("txt", "csv"), LOGGER: ("csv", "hvd")}
        for package, wanted in kinds.items():
            with self.subTest(package=package):
                folder = self.install(package)
                self.run_tool(folder / "Download.EXE", *QUICK)
                name = folder.name
                self.assertEqual(self.files(folder), {f"{name} DATE.{kind}" for kind in wanted})
        meter = self.folders.drivers / "Meter"
        self.run_tool(meter / "Download.EXE", *QUICK)
        self.assertEqual(len(list((meter / "Data").iterdir())), 4)
        for file in (meter / "Data").glob("*.csv"):
            lines = file.read_bytes().split(b"\r\n")
            self.assertEqual((len(lines), lines[0][:10], lines[-1]), (50, b"Date,Time,", b""))

    def test_write_nothing_when_the_connection_breaks(self):
        folder = self.install(METER)
        self.run_tool(folder / "Download.EXE", *QUICK, "--fail", "--close", expected=1)
        self.run_tool(folder / "Upload.EXE", *QUICK, "--fail", "--close", expected=1)
        self.assertEqual(list((folder / "Data").iterdir()), [])
        self.assertEqual(self.folders.settings(), {})

    def test_keep_what_was_chosen_and_send_the_interval(self):
        folder = self.install(METER)
        chosen = {"tarvo.settings_Meter_PORT": "USB", "tarvo.settings_Meter_SITE": "Größe & Ort",
                  "tarvo.settings_Meter_INTERVAL": "60"}
        self.folders.write_settings(chosen)
        self.run_tool(folder / "Properties.EXE", "--close")
        self.assertEqual(self.folders.settings(), chosen)
        self.run_tool(folder / "Upload.EXE", *QUICK)
        self.assertEqual(self.folders.settings(), chosen | {"tarvo.device_Meter_INTERVAL": "60"})

    def test_list_the_samples_for_a_hand_held_device(self):
        folder = self.install("DeviceInstaller.pkg")
        shutil.copy(self.install(LOGGER) / "Sample.hvd", folder)
        program = folder / "DeviceInstaller.exe"
        run = self.start(path=program)
        title = "DeviceInstaller"
        self.wait_for_equal([[["Sample.hvd"]]], lambda: [
            control["rows"] for control in run.controls(title, "ListBox")], "what is listed")
        self.keep_picture("samples")
        self.close(title)
        self.assertEqual(run.wait_for_end(), 0)


class TheProperties(WindowsCase):
    def test_are_changed_by_the_keyboard_and_a_number_out_of_range_is_not_taken(self):
        folder = self.install(METER)
        title = "Meter - Properties"
        for minutes, stored in (("90", "90"), ("0", "90")):
            run = self.start(path=folder / "Properties.EXE")
            self.wait_for_title(run, title)
            run.press("alt+s")
            run.session.tool("xdotool", "type", "Lock Gate")
            run.press("alt+m", "ctrl+a")
            run.session.tool("xdotool", "type", minutes)
            self.wait_for_equal(minutes, lambda: self.edits(run, title)[-1], "the interval")
            self.keep_picture("properties-changed")
            run.press("Return")
            self.assertEqual(run.wait_for_end(), 0)
            self.assertEqual(self.folders.settings(), {
                "tarvo.settings_Meter_PORT": "COM1", "tarvo.settings_Meter_SITE": "Lock Gate",
                "tarvo.settings_Meter_INTERVAL": stored})

    def edits(self, run, title):
        return [control["text"] for control in run.controls(title, "Edit")] or [None]


if __name__ == "__main__":
    unittest.main()
