"""The packages that the build makes, read by Python's own zip reader."""

import configparser
import io
import os
import stat
import subprocess
import unittest
import zipfile

import sample_packages
from sample_packages import DRIVERS, FOLDER, HAND_HELD, SOURCES, is_program


class Packages(unittest.TestCase):
    def each(self, packages):
        for package, members in packages.items():
            with self.subTest(package=package), zipfile.ZipFile(FOLDER / package) as archive:
                yield package, members, archive

    def test_all_packages_are_there_and_no_others(self):
        made = {path.name for pattern in ("*.drv", "*.pkg") for path in FOLDER.glob(pattern)}
        self.assertEqual(made, {*DRIVERS, *HAND_HELD})

    def test_each_holds_its_files_and_no_others_each_once_and_sound(self):
        for _, members, archive in self.each(DRIVERS | HAND_HELD):
            self.assertEqual(sorted(archive.namelist()), sorted(members))
            self.assertIsNone(archive.testzip())

    def test_other_readers_find_them_sound(self):
        for package in (*DRIVERS, *HAND_HELD):
            for reader in (["unzip", "-tqq"], ["7z", "t"], ["bsdtar", "-tf"]):
                with self.subTest(package=package, reader=reader[0]):
                    subprocess.run([*reader, FOLDER / package], check=True, capture_output=True)

    def test_the_check_of_an_install_finds_them_valid(self):
        subprocess.run(
            [os.environ["TARVO_CTL"], "package", "check",
             *(FOLDER / package for package in (*DRIVERS, *HAND_HELD))],
            check=True, capture_output=True)

    def test_a_driver_has_its_description_in_the_root_and_no_downloads(self):
        for _, _, archive in self.each(DRIVERS):
            names = [name.lower() for name in archive.namelist()]
            self.assertIn("driver.inf", names)
            for name in names:
                self.assertFalse(name.startswith("data"), name)
                self.assertFalse(name.endswith((".csv", ".asc", ".txt")), name)

    def test_programs_and_only_programs_may_be_executed(self):
        for _, _, archive in self.each(DRIVERS | HAND_HELD):
            for member in archive.infolist():
                mode = member.external_attr >> 16
                self.assertTrue(stat.S_ISREG(mode), member.filename)
                expected = 0o111 if is_program(member.filename) else 0
                self.assertEqual(mode & 0o111, expected, member.filename)

    def test_programs_are_native_and_carry_no_debugging_symbols(self):
        for _, _, archive in self.each(DRIVERS | HAND_HELD):
            for name in filter(is_program, archive.namelist()):
                program = archive.read(name)
                self.assertEqual(program[:4], b"\x7fELF", name)
                self.assertNotIn(b".debug_info", program, name)

    def test_everything_else_is_as_in_the_sources(self):
        for package, _, archive in self.each(DRIVERS | HAND_HELD):
            if package in DRIVERS:
                source = SOURCES / "drivers" / sample_packages.driver_and_version(package)[0]
            else:
                source = SOURCES / "hand-held" / package.removesuffix(".pkg")
            for name in archive.namelist():
                if not is_program(name):
                    self.assertEqual(archive.read(name), (source / name).read_bytes(), name)

    def test_a_drivers_name_and_version_are_those_of_its_description(self):
        for package, _, archive in self.each(DRIVERS):
            description = configparser.ConfigParser(
                allow_no_value=True, delimiters=("=",), interpolation=None, strict=False)
            description.read_file(io.StringIO(archive.read("driver.inf").decode("ascii")))
            self.assertEqual(
                [description["Driver"]["Name"], description["Driver"]["Version"]],
                sample_packages.driver_and_version(package))

    def test_field_lines_can_be_appended_to_a_description(self):
        for _, _, archive in self.each(DRIVERS):
            text = archive.read("driver.inf")
            self.assertTrue(text.endswith(b"\r\n"))
            self.assertNotIn(b"[", text.split(b"[Fields]\r\n")[1])


if __name__ == "__main__":
    unittest.main()
