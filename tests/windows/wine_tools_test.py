"""The sample drivers' tools for Windows, started through Wine by the program for Linux: what they record
is found where both have the same documents folder."""

import json
import subprocess
import threading
import unittest
import zipfile

from driver_tools import ToolCase
from main_window import DETAILS, FILE
from program import BUILD_FOLDER
from waiting import wait_for_equal, wait_until
from windows_case import METER, PACKAGES
from wine import DEADLINE, Wine, need, program

TARVOCTL = BUILD_FOLDER / "bin" / "tarvoctl"
TOPIC = "Documents of programs for Windows"


class ToolsThroughWine(ToolCase):
    def setUp(self):
        need(TARVOCTL, BUILD_FOLDER / "bin" / "tarvo", program("tarvoctl.exe"), PACKAGES / METER)
        super().setUp()
        self.wine = Wine(self.session, self.folders.root)
        self.addCleanup(self.wine.close)
        # The one variable: what programs for Windows use anyway.
        self.folders.documents = self.wine.common_documents
        self.folders.data = self.folders.documents / "Halvex Limited" / "Halvex Tarvo"
        self.folders.drivers = self.folders.data / "Drivers"
        self.folders.data.mkdir(parents=True)
        self.variables = self.wine.environment | {
            "TARVO_COMMON_DOCUMENTS": str(self.folders.documents)}

    def ctl(self, *arguments, **variables):
        """What the tarvoctl of Linux prints."""
        return subprocess.run([TARVOCTL, *arguments], env=self.variables | variables,
                              cwd=self.folders.start, check=True, stdin=subprocess.DEVNULL,
                              capture_output=True, text=True, timeout=DEADLINE).stdout

    def versions(self, printed):
        return [(driver["name"], driver["download"], driver["upload"], driver["properties"])
                for driver in json.loads(printed)]

    def finding(self, **variables):
        findings = json.loads(self.ctl("doctor", "--json", **variables))
        (finding,) = [finding for finding in findings if finding["topic"] == TOPIC]
        return finding["state"]

    def test_record_versions_that_programs_of_both_systems_find(self):
        self.assertEqual(self.finding(), "good")
        self.ctl("drivers", "install", str(PACKAGES / METER))
        tool = (self.folders.drivers / "Meter" / "Download.EXE").read_bytes()
        self.assertEqual(tool[:2], b"MZ", "the tools are programs for Windows")
        recorded = [("Meter", "1.0", "1.0", "1.0")]
        wait_for_equal(recorded, lambda: self.versions(self.ctl("drivers", "list", "--json")),
                       "the versions that Linux finds", DEADLINE)
        # Without the variable a program for Windows has these documents by itself.
        code, printed = self.wine.run(program("tarvoctl.exe"), "drivers", "list", "--json")
        self.assertEqual((code, self.versions(printed)), (0, recorded))

    def test_record_versions_while_tools_and_programs_of_both_systems_write(self):
        tools = ("Download.EXE", "Upload.EXE", "Properties.EXE")
        for_linux = self.install("Meter").rename(self.folders.drivers / "Meter of Linux")
        for_windows = self.install_for_windows()
        failures = []

        def each_of(items, run):
            try:
                for item in items:
                    run(item)
            except Exception as failure:  # the thread's end must not hide it
                failures.append(str(failure))

        def wine(*command):
            code, printed = self.wine.run(*command)
            self.assertEqual(code, 0, printed)

        keys = range(len(tools))
        work = [
            (tools, lambda tool: wine(for_windows / tool, "/v")),
            (tools, lambda tool: subprocess.run([for_linux / tool, "/v"], env=self.variables,
                                                check=True, timeout=DEADLINE)),
            (keys, lambda key: wine(program("tarvoctl.exe"), "settings", "set", f"W {key}", "w")),
            (keys, lambda key: self.ctl("settings", "set", f"L {key}", "l")),
        ]
        threads = [threading.Thread(target=each_of, args=items) for items in work]
        for thread in threads:
            thread.start()
        for thread in threads:
            thread.join()
        self.assertEqual(failures, [])
        wanted = {f"W {key}": "w" for key in keys} | {f"L {key}": "l" for key in keys}
        for name in ("Meter", "Meter of Linux"):
            for tool in ("DOWNLOAD", "UPLOAD", "PROPERTIES"):
                wanted[f"tarvo.versions_{name}_{tool}"] = "1.0"
        self.assertEqual(self.folders.settings(), wanted)

    def test_are_said_to_record_elsewhere_where_the_folders_differ(self):
        elsewhere = self.folders.root / "elsewhere"
        elsewhere.mkdir()
        self.assertEqual(self.finding(TARVO_COMMON_DOCUMENTS=str(elsewhere)), "odd")
        del self.variables["TARVO_COMMON_DOCUMENTS"]
        self.assertEqual(self.finding(), "odd")

    def test_that_download_are_waited_for_in_front_and_their_files_counted(self):
        folder = self.install_for_windows()
        self.folders.write_settings({"TarvoSettings_ViewMode": str(DETAILS)})
        variables = {name: value for name, value in self.variables.items()
                     if self.session.environment.get(name) != value}
        variables.pop("TARVO_COMMON_DOCUMENTS")
        window = self.open_window(environment=variables | {
            "TARVO_SAMPLE_TOOL_OPTIONS": "--seconds 15"})
        window.click(window.item("Meter"))
        wait_until(window.entry(FILE, "Download").is_enabled, "the driver has a download")
        window.choose_entry(FILE, "Download")
        tool = wait_until(self.download_window, "the tool's window can be seen", DEADLINE)
        self.come_to_the_front_again(window, tool)
        wait_for_equal([("1", "1", "")], lambda: [row[1:4] for row in window.rows()
                                                  if row[0] == "Meter"], "the counts", DEADLINE)
        (shown,) = folder.glob("Data/*.asc")
        self.file_manager.wait_for_calls([("ShowItems", shown)])
        self.close_properly(window)

    def install_for_windows(self):
        folder = self.folders.drivers / "Meter"
        with zipfile.ZipFile(PACKAGES / METER) as archive:
            archive.extractall(folder)
        (folder / "Data").mkdir()
        return folder

    def download_window(self):
        listed = self.session.tool("wmctrl", "-l", check=False).splitlines()
        return next((int(line.split()[0], 16) for line in listed
                     if line.endswith("Meter - Download")), None)


if __name__ == "__main__":
    unittest.main()
