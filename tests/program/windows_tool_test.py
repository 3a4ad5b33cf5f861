"""Drivers whose tools are programs for Windows: they run through wine, or the error says why not."""

import pathlib
import shutil
import struct
import subprocess
import unittest

from dialogs import texts_of, wait_for_message
from driver_tools import ToolCase
from main_window import DETAILS, FILE
from waiting import wait_until

SOURCE = pathlib.Path(__file__).with_name("windows_tool.c")
COMPILER = "x86_64-w64-mingw32-gcc"
WINE_DEADLINE = 240  # seconds; it sets up a whole Windows folder at its first start
TITLE = "Download for Windows"


def header_of_32_bit_program():
    """The beginning of a program for Windows on a 32-bit processor, as far as it tells that."""
    offset, processor = 64, 0x014C
    return struct.pack("<2s58xI4sH", b"MZ", offset, b"PE\0\0", processor)


class ThroughWine(ToolCase):
    def setUp(self):
        super().setUp()
        for program, reason in (("wine", "wine is not installed"),
                                (COMPILER, f"{COMPILER} is not installed to build a program")):
            if not shutil.which(program):
                self.skipTest(reason)
        self.variables = {
            "WINEPREFIX": str(self.folders.root / "wine"),
            "WINEDEBUG": "-all",
            "WINEDLLOVERRIDES": "mscoree,mshtml=",  # it would ask to fetch these
        }
        self.addCleanup(self.wine, "wineserver", "--kill", "--wait")
        self.wine("wine", "wineboot", "--init")

    def wine(self, *command):
        subprocess.run(command, env=self.session.environment | self.variables,
                       cwd=self.session.folder, stdin=subprocess.DEVNULL,
                       stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL,
                       timeout=WINE_DEADLINE)

    def windows(self):
        listed = self.session.tool("wmctrl", "-l", check=False).splitlines()
        return [int(line.split()[0], 16) for line in listed if line.endswith(TITLE)]

    def test_a_download_comes_to_the_front_is_waited_for_and_shows_its_file(self):
        folder = self.folders.add_driver("Wind Vane", "driver.inf", "Data/readings.hvd")
        subprocess.run([COMPILER, "-Os", "-s", "-mwindows", "-o", folder / "Download.EXE", SOURCE],
                       check=True, timeout=WINE_DEADLINE)
        window = self.open_window(environment=self.variables)
        window.choose_view(DETAILS)
        window.click(window.item("Wind Vane"))
        wait_until(window.entry(FILE, "Download").is_enabled, "the driver has a download")
        window.choose_entry(FILE, "Download")
        (tool,) = wait_until(self.windows, "the tool's window can be seen", WINE_DEADLINE)
        self.come_to_the_front_again(window, tool)
        self.assertEqual([row[1] for row in window.rows()], ["", "0"])
        self.session.tool("wmctrl", "-i", "-c", str(tool))
        self.wait_for_equal(["", "1"], lambda: [row[1] for row in window.rows()], "the counts")
        shown = folder / "Data" / "from Windows.csv"
        self.file_manager.wait_for_calls([("ShowItems", shown)])
        self.assertEqual(shown.read_bytes(), b'"a","b"\r\n1,2\r\n')
        self.close_properly(window)


class WithoutWine(ToolCase):
    def test_the_standard_error_says_what_is_missing(self):
        folder = self.folders.add_driver("Wind Vane")
        tool = folder / "Upload.EXE"
        tool.write_bytes(header_of_32_bit_program())
        window = self.open_window(environment={"PATH": str(self.folders.start)})
        window.click(window.item("Wind Vane"))
        wait_until(window.entry(FILE, "Upload").is_enabled, "the driver has an upload")
        window.choose_entry(FILE, "Upload")
        message = (f"Run-time error '53':\n\n{tool} is a 32-bit program for Windows, "
                   "and wine is not installed")
        self.assertEqual(texts_of(wait_for_message(window.program)), [message])
        window.program.press("Return")
        self.assertEqual(window.program.wait_for_end(), 1)


if __name__ == "__main__":
    unittest.main()
