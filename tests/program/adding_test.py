"""Drivers installed from packages: through the Add Driver window, and by a refresh without a window."""

import os
import shutil
import unittest
import zipfile

from accessibility import STATE_FOCUSED, STATE_SELECTED
from dialogs import texts_of, wait_for_message
from driver_tools import ToolCase
from main_window import DETAILS
from program import BUILD_FOLDER
from waiting import wait_for_equal, wait_until

PACKAGES = BUILD_FOLDER / "examples"
METER = "Meter_1.0.drv"
LOGGER = "Pocket Logger_1.3.drv"
GAUGE = "Tide Gauge_2.1.drv"
ADD_DRIVER = ("(Add Driver)", "", "", "", "", "", "")
METER_VERSIONS = {f"tarvo.versions_Meter_{tool}": "1.0"
                  for tool in ("DOWNLOAD", "UPLOAD", "PROPERTIES")}
ALL_VERSIONS = METER_VERSIONS | {
    "tarvo.versions_Pocket Logger_DOWNLOAD": "1.3",
    "tarvo.versions_Pocket Logger_UPLOAD": "1.3",
    "tarvo.versions_Pocket Logger_PROPERTIES": "1.3",
    "tarvo.versions_Tide Gauge_DOWNLOAD": "2.1",
    "tarvo.versions_Tide Gauge_PROPERTIES": "2.1",
}


def members_of(package):
    with zipfile.ZipFile(PACKAGES / package) as archive:
        return {name: archive.read(name) for name in archive.namelist()}


def tree_below(folder):
    """Every path below the folder: a file with its bytes, a folder with None."""
    return {path.relative_to(folder).as_posix(): path.read_bytes() if path.is_file() else None
            for path in folder.rglob("*")}


class AddingCase(ToolCase):
    def setUp(self):
        super().setUp()
        self.folders.data.mkdir(parents=True)

    def put_packages(self, *names):
        for name in names:
            shutil.copy(PACKAGES / name, self.folders.data)

    def recorded_versions(self):
        return {key: value for key, value in self.folders.settings().items()
                if key.startswith("tarvo.versions_")}

    def wait_for_versions(self, wanted):
        wait_for_equal(wanted, self.recorded_versions, "the versions that the tools have recorded")


class TheAddDriverWindow(AddingCase):
    def open_chooser(self, window):
        """Selects the first item of the list and presses Enter; gives the window that comes up."""
        window.wait_until_active()
        first = window.item("(Add Driver)")

        def selected():
            if STATE_SELECTED in first.states():
                return True
            window.program.press("ctrl+Home", "space")
            return False

        wait_until(selected, "the first item is selected", interval=0.1)
        window.program.press("Return")
        self.chooser_window = window.program.wait_for_active("Add Driver")
        return window.program.wait_for("dialog", "Add Driver")

    def package_item(self, chooser, name):
        return wait_until(lambda: chooser.find("list item", name), f"{name} is listed")

    def chosen_in(self, chooser):
        return [node.name() for node in chooser.find_all("list item")
                if STATE_SELECTED in node.states()]

    def focus_packages(self, window, chooser):
        packages = chooser.find("list")

        def focused():
            nodes = [packages, *packages.children()]
            if any(STATE_FOCUSED in node.states() for node in nodes):
                return True
            window.program.press("Tab")
            return False

        wait_until(focused, "the list of packages has the keyboard", interval=0.1)

    def press_add(self, window, chooser):
        window.click(next(node for node in chooser.walk()
                          if node.role() in ("push button", "button")
                          and node.name() == "Add Driver"))

    def test_installs_packages_by_mouse_and_keyboard_and_the_list_shows_them(self):
        self.put_packages(METER, LOGGER, GAUGE)
        window = self.open_window()
        window.choose_view(DETAILS)
        self.assertEqual(window.rows(), [ADD_DRIVER])

        chooser = self.open_chooser(window)
        self.assertEqual([node.name() for node in chooser.find_all("list item")],
                         [METER, LOGGER, GAUGE])
        self.keep_screenshot()
        window.click(self.package_item(chooser, METER), times=2)
        title = "Meter - Properties"
        properties = self.wait_for_window(title)
        wait_for_equal(["(Add Driver)", "Meter"], lambda: [row[0] for row in window.rows()],
                       "the names in the list")
        self.session.tool("wmctrl", "-i", "-c", str(properties))
        self.wait_until_window_is_gone(title)
        self.wait_for_versions(METER_VERSIONS)

        chooser = self.open_chooser(window)
        self.focus_packages(window, chooser)
        # No entry is current yet: the first key goes to the first one.
        window.program.press("Down", "Down", "shift+Down")
        wait_for_equal([LOGGER, GAUGE], lambda: self.chosen_in(chooser), "the selected packages")
        self.press_add(window, chooser)
        names = ["(Add Driver)", "Meter", "Pocket Logger", "Tide Gauge"]
        wait_for_equal(names, lambda: [row[0] for row in window.rows()], "the names in the list")

        self.wait_for_versions(ALL_VERSIONS)
        window.press_in_menu("alt+v", "r")
        window.wait_for_rows([
            ADD_DRIVER,
            ("Meter", "0", "", "", "1.0", "1.0", "1.0"),
            ("Pocket Logger", "0", "", "", "1.3", "1.3", "1.3"),
            ("Tide Gauge", "0", "", "", "2.1", "-", "2.1"),
        ])
        # Several at once start no properties tool: its window would keep it running.
        self.wait_until_tools_end(self.folders.drivers)
        for package in (METER, GAUGE):
            folder = self.folders.drivers / package.partition("_")[0]
            self.assertEqual(tree_below(folder), members_of(package) | {"Data": None})
        self.close_properly(window)

    def test_refuses_an_invalid_package_and_the_status_text_stays(self):
        (self.folders.data / "Broken_1.0.drv").write_bytes(b"not a package")
        window = self.open_window()
        before = tree_below(self.folders.data)
        chooser = self.open_chooser(window)
        window.click(self.package_item(chooser, "Broken_1.0.drv"), times=2)
        box = wait_for_message(window.program)
        self.assertIn("Invalid Driver file", texts_of(box))
        window.program.press("Return")
        window.program.wait_until_gone("alert message")
        window.wait_until_active()
        self.assertIn("Broken ...", [node.name() for node in window.status_bar().walk()])
        self.assertEqual([name for name, _ in window.items()], ["(Add Driver)"])
        self.assertEqual(tree_below(self.folders.data), before)
        self.close_properly(window)

    def keep_screenshot(self):
        if target := os.environ.get("TARVO_SCREENSHOT"):
            self.session.tool("import", "-window", str(self.chooser_window), target)


class ASilentRefresh(AddingCase):
    def test_installs_the_packages_of_installed_drivers_alone(self):
        self.put_packages(METER, GAUGE)
        self.folders.add_driver("Meter", "Download.EXE", "driver.inf", "own notes.text",
                                "Data/one.csv", "Data/sub/two.csv")
        self.folders.add_driver("Bystander", "driver.inf", "Data/three.csv")
        before = tree_below(self.folders.data)
        program = self.start("/r")
        self.assertEqual(program.wait_for_end(), 0, program.printed())
        installed = {f"Drivers/Meter/{name}": content
                     for name, content in members_of(METER).items()}
        # The tools may still be recording their versions.
        self.wait_for_versions(METER_VERSIONS)
        self.assertEqual(tree_below(self.folders.data), before | installed)
        self.assertEqual(self.folders.settings(), METER_VERSIONS | {
            "Tarvo_Settings_Directory": f"{self.folders.data}/"})


if __name__ == "__main__":
    unittest.main()
