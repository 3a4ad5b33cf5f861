"""Drivers installed by the program for Windows: through its Add Driver window, and by a refresh without
a window. The drivers' own tools run and record their versions."""

import unittest
import zipfile

from waiting import wait_until
from windows_case import GAUGE, METER, PACKAGES, WindowsCase
from wine import DEADLINE

METER_VERSIONS = {f"tarvo.versions_Meter_{tool}": "1.0"
                  for tool in ("DOWNLOAD", "UPLOAD", "PROPERTIES")}
GAUGE_VERSIONS = {f"tarvo.versions_Tide Gauge_{tool}": "2.1" for tool in ("DOWNLOAD", "PROPERTIES")}


def members_of(package):
    with zipfile.ZipFile(PACKAGES / package) as archive:
        return {name: archive.read(name) for name in archive.namelist()}


def tree_below(folder):
    """Every path below the folder: a file with its bytes, a folder with None."""
    return {path.relative_to(folder).as_posix(): path.read_bytes() if path.is_file() else None
            for path in folder.rglob("*")}


class TheAddDriverWindow(WindowsCase):
    def open_chooser(self, run):
        """Presses Enter on the first item of the list; gives the names of the packages offered."""
        run.select("(Add Driver)")
        run.press("Return")
        run.wait_for_active("Add Driver")
        (packages,) = wait_until(lambda: run.controls("Add Driver", "ListBox"),
                                 "packages are offered", DEADLINE)
        return [row[0] for row in packages["rows"]]

    def chosen(self, run):
        (packages,) = run.controls("Add Driver", "ListBox")
        return [packages["rows"][row][0] for row in packages["selected"]]

    def test_installs_a_package_starts_its_properties_and_the_list_shows_it(self):
        self.put_packages(METER)
        run = self.open_window()
        self.assertEqual(self.open_chooser(run), [METER])
        run.press("Home", "space")
        self.wait_for_equal([METER], lambda: self.chosen(run), "the chosen package")
        self.keep_picture("adding")
        run.press("Return")
        properties = "Meter - Properties"
        self.wait_for_window(properties)
        self.wait_for_equal(METER_VERSIONS, self.versions, "the versions recorded by the tools")
        self.keep_picture("properties")
        self.close(properties)
        run.choose("alt+v", "r")
        self.wait_for_equal(("Meter", "0", "", "", "1.0", "1.0", "1.0"), lambda: run.rows()[-1],
                            "what the list shows of the driver")
        self.close_properly(run)
        self.assertEqual(tree_below(self.folders.drivers / "Meter"),
                         members_of(METER) | {"Data": None})

    def test_installs_several_packages_and_no_other_window_comes_up(self):
        self.put_packages(METER, GAUGE)
        run = self.open_window()
        self.assertEqual(self.open_chooser(run), [METER, GAUGE])
        run.press("Home", "shift+Down")
        self.wait_for_equal([METER, GAUGE], lambda: self.chosen(run), "the chosen packages")
        run.press("Return")
        self.wait_for_equal(["(Add Driver)", "Meter", "Tide Gauge"], run.names,
                            "the names in the list")
        self.wait_for_equal(METER_VERSIONS | GAUGE_VERSIONS, self.versions,
                            "the versions recorded by the tools")
        self.assertEqual(self.titles(), ["Tarvo"])
        self.close_properly(run)

    def test_refuses_an_invalid_package_with_a_message(self):
        (self.folders.data / "Broken_1.0.drv").write_bytes(b"not a package")
        run = self.open_window()
        before = tree_below(self.folders.data)
        self.open_chooser(run)
        run.press("Home", "space", "Return")
        self.wait_for_message(run, "Tarvo", "Invalid Driver file")
        self.keep_picture("invalid")
        run.press("Return")
        self.wait_for_equal("Broken ...", run.status_text, "the text of the status bar")
        self.assertEqual(run.names(), ["(Add Driver)"])
        self.assertEqual(tree_below(self.folders.data), before)
        self.close_properly(run)

    def test_that_is_cancelled_installs_nothing(self):
        self.put_packages(METER)
        run = self.open_window()
        self.open_chooser(run)
        before = tree_below(self.folders.data)
        run.press("Escape")
        run.wait_for_active("Tarvo")
        self.assertEqual(run.names(), ["(Add Driver)"])
        self.assertEqual(tree_below(self.folders.data), before)
        self.close_properly(run)


class ASilentRefresh(WindowsCase):
    def test_installs_the_packages_of_installed_drivers_alone(self):
        self.put_packages(METER, GAUGE)
        self.folders.add_driver("Meter", "Download.EXE", "driver.inf", "own notes.text",
                                "Data/one.csv", "Data/sub/two.csv")
        self.folders.add_driver("Bystander", "driver.inf", "Data/three.csv")
        before = tree_below(self.folders.data)
        run = self.start("/r")
        wait_until(lambda: not run.is_running(), "the refresh ends", DEADLINE)
        self.assertEqual(run.wait_for_end(), 0, run.printed())
        self.wait_for_equal(METER_VERSIONS, self.versions, "the versions recorded by the tools")
        installed = {f"Drivers/Meter/{name}": content
                     for name, content in members_of(METER).items()}
        self.assertEqual(tree_below(self.folders.data), before | installed)
        settings = self.folders.settings()
        folder = settings.pop("Tarvo_Settings_Directory")
        self.assertTrue(folder.endswith("\\Halvex Limited\\Halvex Tarvo\\"), folder)
        self.assertEqual(settings, METER_VERSIONS)


if __name__ == "__main__":
    unittest.main()
