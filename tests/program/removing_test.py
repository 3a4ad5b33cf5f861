"""A driver removed: what is asked, and what becomes of its folder, its records and the list."""

import os
import stat
import unittest

from accessibility import STATE_SELECTED
from dialogs import open_dialogs, texts_of, wait_for_message
from main_window import DETAILS, FILE
from program_test_case import ProgramTestCase
from waiting import wait_until

ADD_DRIVER = ("(Add Driver)", "", "", "", "", "", "")
METER = ("Meter", "2", "1", "", "1.0", "-", "2.0")
OTHER = ("Other", "1", "", "", "-", "-", "3.0")
RECORDS = {
    "tarvo.versions_Meter_DOWNLOAD": "1.0",
    "tarvo.versions_Meter_PROPERTIES": "2.0",
    "tarvo.versions_Other_PROPERTIES": "3.0",
}
SURE = "Are you sure?"
WITH_DOWNLOADS = ("You have 3 downloads for this driver.\n"
                  "Removing the driver will also erase these files.\n"
                  "Are you sure?")


def state_below(folder):
    """Every path below the folder with what it is, its permissions, its time and its content."""
    found = {}
    for path in [folder, *folder.rglob("*")]:
        status = path.lstat()
        content = None
        if path.is_symlink():
            content = os.readlink(path)
        elif path.is_file():
            content = path.read_bytes()
        found[str(path)] = (stat.filemode(status.st_mode), status.st_mtime_ns, content)
    return found


class RemovingCase(ProgramTestCase):
    def setUp(self):
        super().setUp()
        self.meter = self.folders.add_driver("Meter", "Download.EXE", "Data/one.csv",
                                             "Data/deep/two.CSV", "three.asc", "notes.hvd")
        self.folders.add_driver("Other", "driver.inf", "Data/four.csv")
        self.folders.write_settings(RECORDS)

    def open_details(self):
        window = self.open_window()
        window.choose_view(DETAILS)
        return window

    def select(self, window, name):
        window.click(window.item(name))
        self.wait_for_equal(
            (True, name != "(Add Driver)"),
            lambda: (STATE_SELECTED in window.item(name).states(),
                     window.entry(FILE, "Delete").is_enabled()),
            f"{name} is selected, and whether it can be deleted")

    def records(self):
        return {key: value for key, value in self.folders.settings().items()
                if key.startswith("tarvo.versions_")}

    def names(self, window):
        return [row[0] for row in window.rows()]

    # The questions.

    def wait_for_question(self, window, text):
        """Waits for this question, where another one may still be; gives its buttons by name."""
        self.wait_for_equal([text], lambda: [shown for box in open_dialogs(window.program)
                                             for shown in texts_of(box)], "the question")
        box = wait_for_message(window.program)
        buttons = {node.name(): node for node in box.walk()
                   if node.role() in ("push button", "button")}
        self.assertEqual((box.name(), sorted(buttons)), ("Remove Driver", ["No", "Yes"]))
        return buttons

    def wait_for_no_question(self, window):
        wait_until(lambda: not open_dialogs(window.program), "no question is left")
        window.wait_until_active()

    def assert_untouched(self, window, before):
        self.wait_for_no_question(window)
        self.assertEqual(state_below(self.folders.drivers), before)
        self.assertEqual(window.rows(), [ADD_DRIVER, METER, OTHER])
        self.assertIn(STATE_SELECTED, window.item("Meter").states())
        self.close_properly(window)
        self.assertEqual(self.records(), RECORDS)

    def assert_removed(self, window):
        """The folder of Meter is gone, and nothing else is."""
        window.wait_for_rows([ADD_DRIVER, OTHER])
        self.wait_for_no_question(window)
        self.assertEqual([path.name for path in self.folders.drivers.iterdir()], ["Other"])
        self.assertEqual({path.name for path in (self.folders.drivers / "Other").rglob("*")},
                         {"driver.inf", "Data", "four.csv"})
        self.assertFalse(window.entry(FILE, "Delete").is_enabled())
        self.close_properly(window)
        # What the tools recorded stays, for a driver that is installed again.
        self.assertEqual(self.records(), RECORDS)


class RemovingByKeyboard(RemovingCase):
    def ask(self, window):
        self.select(window, "Meter")
        window.press_in_menu("alt+f", "d")
        self.wait_for_question(window, SURE)

    def test_asks_twice_and_removes_after_two_yeses(self):
        window = self.open_details()
        self.ask(window)
        window.program.press("alt+y")
        self.wait_for_question(window, WITH_DOWNLOADS)
        window.program.press("alt+y")
        self.assert_removed(window)

    def test_leaves_all_as_it_is_after_no_to_the_second_question(self):
        before = state_below(self.folders.drivers)
        window = self.open_details()
        self.ask(window)
        window.program.press("alt+y")
        self.wait_for_question(window, WITH_DOWNLOADS)
        window.program.press("alt+n")
        self.assert_untouched(window, before)

    def test_leaves_all_as_it_is_after_no_to_the_first_question(self):
        before = state_below(self.folders.drivers)
        window = self.open_details()
        self.ask(window)
        window.program.press("alt+n")
        self.assert_untouched(window, before)

    def test_takes_escape_as_no_to_either_question(self):
        before = state_below(self.folders.drivers)
        window = self.open_details()
        self.ask(window)
        window.program.press("Escape")
        self.wait_for_no_question(window)
        self.ask(window)
        window.program.press("alt+y")
        self.wait_for_question(window, WITH_DOWNLOADS)
        window.program.press("Escape")
        self.assert_untouched(window, before)


class RemovingByMouse(RemovingCase):
    def ask(self, window):
        self.select(window, "Meter")
        window.click(window.tool_button("Delete"))
        return self.wait_for_question(window, SURE)

    def test_asks_twice_and_removes_after_two_yeses(self):
        window = self.open_details()
        window.click(self.ask(window)["Yes"])
        window.click(self.wait_for_question(window, WITH_DOWNLOADS)["Yes"])
        self.assert_removed(window)

    def test_leaves_all_as_it_is_after_no_to_the_second_question(self):
        before = state_below(self.folders.drivers)
        window = self.open_details()
        window.click(self.ask(window)["Yes"])
        window.click(self.wait_for_question(window, WITH_DOWNLOADS)["No"])
        self.assert_untouched(window, before)

    def test_leaves_all_as_it_is_after_no_to_the_first_question(self):
        before = state_below(self.folders.drivers)
        window = self.open_details()
        window.click(self.ask(window)["No"])
        self.assert_untouched(window, before)

    def test_takes_a_closed_question_as_no(self):
        before = state_below(self.folders.drivers)
        window = self.open_details()
        self.ask(window)
        window.program.close_window(window.program.active_window())
        self.assert_untouched(window, before)


class Removing(RemovingCase):
    def remove(self, window, name, *questions):
        """Answers exactly these questions with Yes."""
        self.select(window, name)
        window.choose_entry(FILE, "Delete")
        for text in questions:
            self.wait_for_question(window, text)
            window.program.press("alt+y")

    def test_asks_once_about_a_driver_without_downloads(self):
        self.folders.add_driver("Bare", "driver.inf", "Data/readings.hvd")
        window = self.open_details()
        self.remove(window, "Bare", SURE)
        self.wait_for_equal(["(Add Driver)", "Meter", "Other"], lambda: self.names(window),
                            "the names in the list")
        self.wait_for_no_question(window)
        self.assertFalse((self.folders.drivers / "Bare").exists())
        self.close_properly(window)

    def test_says_one_downloads_of_a_single_one(self):
        window = self.open_details()
        self.remove(window, "Other", SURE, WITH_DOWNLOADS.replace("3", "1"))
        self.wait_for_equal(["(Add Driver)", "Meter"], lambda: self.names(window),
                            "the names in the list")
        self.close_properly(window)

    def test_takes_read_only_and_hidden_files_along(self):
        for name in ("locked.csv", ".hidden", ".locked and hidden"):
            path = self.meter / name
            path.write_text("made by a test\n")
            if "locked" in name:
                path.chmod(0o444)
        window = self.open_details()
        self.remove(window, "Meter", SURE, WITH_DOWNLOADS.replace("3", "4"))
        self.assert_removed(window)

    def test_leaves_alone_what_the_drivers_links_lead_to(self):
        outside = self.folders.root / "outside"
        (outside / "album").mkdir(parents=True)
        for name in ("kept.csv", "album/kept too.csv", "album/.hidden"):
            path = outside / name
            path.write_text("exists nowhere else\n")
            path.chmod(0o444)
        data = self.meter / "Data"
        (data / "file.csv").symlink_to(outside / "kept.csv")
        (data / "folder").symlink_to(outside / "album")
        (data / "round").symlink_to(data)
        (data / "nowhere.csv").symlink_to(outside / "nothing")
        (data / "neighbour").symlink_to(self.folders.drivers / "Other" / "Data")
        (self.meter / "top.csv").symlink_to(outside / "kept.csv")
        (self.meter / "album").symlink_to(outside / "album")
        before = state_below(outside) | state_below(self.folders.drivers / "Other")
        window = self.open_details()
        # The links to files count, but not what lies behind the links to folders.
        self.remove(window, "Meter", SURE, WITH_DOWNLOADS.replace("3", "5"))
        self.assert_removed(window)
        self.assertEqual(state_below(outside) | state_below(self.folders.drivers / "Other"), before)

    def test_removes_only_the_link_where_the_driver_is_one(self):
        outside = self.folders.root / "Linked"
        self.meter.rename(outside)
        (outside / "locked.csv").write_text("exists nowhere else\n")
        (outside / "locked.csv").chmod(0o444)
        self.meter.symlink_to(outside)
        before = state_below(outside)
        window = self.open_details()
        self.remove(window, "Meter", SURE)
        self.assert_removed(window)
        self.assertEqual(state_below(outside), before)

    def test_does_nothing_on_the_add_driver_item(self):
        before = state_below(self.folders.drivers)
        window = self.open_details()
        self.select(window, "Meter")
        self.select(window, "(Add Driver)")
        window.click(window.tool_button("Delete"))
        # Would there be a question, the next item could not be selected.
        self.select(window, "Meter")
        self.assertEqual(open_dialogs(window.program), [])
        self.assert_untouched(window, before)


if __name__ == "__main__":
    unittest.main()
