"""The programs built for Windows as files: small, with nothing to install beside them, and with what the
system shows of them."""

import os
import re
import subprocess
import unittest

from wine import need, program

_MOST_BYTES = 4_000_000
# Every Windows has these.
_SYSTEM_LIBRARIES = {"advapi32", "comctl32", "comdlg32", "gdi32", "kernel32", "msvcrt", "ole32", "shell32",
                     "user32", "uxtheme"}
_OBJDUMP = "x86_64-w64-mingw32-objdump"
_VERSION = os.environ["TARVO_VERSION"]


def _libraries(path):
    printed = subprocess.run([_OBJDUMP, "-p", path], check=True, capture_output=True, text=True).stdout
    return {name.lower() for name in re.findall(r"DLL Name: (\S+)\.dll", printed, re.IGNORECASE)}


class ProgramFiles(unittest.TestCase):
    def setUp(self):
        self.programs = [program("tarvo.exe"), program("tarvoctl.exe")]
        need(*self.programs)

    def test_need_no_library_but_the_systems(self):
        for path in self.programs:
            libraries = _libraries(path)
            self.assertIn("kernel32", libraries, path)
            self.assertEqual(libraries - _SYSTEM_LIBRARIES, set(), path)

    def test_are_small(self):
        for path in self.programs:
            self.assertLess(path.stat().st_size, _MOST_BYTES, path)

    def test_say_their_version_and_have_an_icon(self):
        for path in self.programs:
            content = path.read_bytes()
            # A text of the version resource: its name, padding, its value.
            version = "ProductVersion\0".encode("utf-16-le")
            self.assertIn(version, content, path)
            said = content.split(version, 1)[1][:64].decode("utf-16-le").lstrip("\0").split("\0", 1)[0]
            self.assertEqual(said, _VERSION, path)
            self.assertIn(b"\x89PNG\r\n", content, path)  # as which the icon's largest picture is kept


if __name__ == "__main__":
    unittest.main()
