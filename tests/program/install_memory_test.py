"""An install needs little memory, whatever the package and its sample data file hold."""

import os
import pathlib
import subprocess
import tempfile
import unittest
import zipfile

from program import BUILD_FOLDER

MOST_MEMORY = 64 * 1024  # KiB, the process with all its libraries
BLOCK = 1024 * 1024
BLOCKS_PER_MEMBER = 39  # as much of one member as is kept from the check to the unpacking
HEADER = "Title\nFIELDNAME\n"
SAMPLES = {
    "half a million fields": HEADER + "x\n" * 520_000,
    "a million columns": "Title\n" + "|" * 1_040_000 + "\nx\n",
    "a field of a megabyte": HEADER + "x" * 1_040_000,
    "many fields and a long one": HEADER + "x\n" * 80_000 + "y" * 700_000,
}


def make_package(path, sample):
    """In blocks: a process starts with the peak memory of the one that starts it."""
    with zipfile.ZipFile(path, "w", zipfile.ZIP_DEFLATED) as package:
        package.writestr("driver.inf", "[Driver]\r\n")
        for name in ("a.bin", "b.bin", "c.bin"):
            with package.open(name, "w") as member:
                for _ in range(BLOCKS_PER_MEMBER):
                    member.write(name[:1].encode() * BLOCK)
        package.writestr("sample.hvd", sample)


class InstallingNeedsLittleMemory(unittest.TestCase):
    def test_for_large_members_and_any_sample(self):
        for kind, sample in SAMPLES.items():
            with self.subTest(kind), tempfile.TemporaryDirectory() as folder:
                folder = pathlib.Path(folder)
                make_package(folder / "Hostile_1.drv", sample)
                install = subprocess.Popen(
                    [BUILD_FOLDER / "bin" / "tarvoctl", "drivers", "install", "Hostile_1.drv"],
                    cwd=folder, stdout=subprocess.DEVNULL,
                    env=dict(os.environ, HOME=str(folder), TARVO_COMMON_DOCUMENTS=str(folder)))
                _, status, usage = os.wait4(install.pid, 0)
                install.returncode = os.waitstatus_to_exitcode(status)
                self.assertEqual(install.returncode, 0)
                self.assertLess(usage.ru_maxrss, MOST_MEMORY)
                installed = [path.name for path in folder.glob("**/Hostile/*") if path.is_file()]
                self.assertIn("c.bin", installed)


if __name__ == "__main__":
    unittest.main()
