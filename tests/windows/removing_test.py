"""A driver removed by the program for Windows, with its data and its entries in the system registry."""

import unittest

from windows_case import METER, WindowsCase

SETTINGS = "HKCU\\Software\\VB and VBA Program Settings"
SURE = "Are you sure?"
WITH_DATA = ("You have 2 downloads for this driver.\nRemoving the driver will also erase these files.\n"
             "Are you sure?")


class Removing(WindowsCase):
    def setUp(self):
        super().setUp()
        self.meter = self.install(METER)
        self.folders.add_driver("Bystander", "driver.inf")
        for name in ("one.csv", "two.txt"):
            (self.meter / "Data" / name).write_text("made by a test\n")
        for name in ("Meter", "tarvo.versions\\Meter", "Bystander"):
            self.wine.set_registry_value(f"{SETTINGS}\\{name}", "made by a test")

    def ask_to_remove(self):
        run = self.open_window()
        run.select("Meter")
        run.choose("alt+f", "d")
        self.wait_for_message(run, "Remove Driver", SURE)
        return run

    def test_takes_the_drivers_folder_and_its_registry_entries_after_two_answers(self):
        run = self.ask_to_remove()
        self.keep_picture("removing")
        run.press("y")
        self.wait_for_message(run, "Remove Driver", WITH_DATA)
        self.keep_picture("removing-data")
        self.assertTrue(self.meter.exists())
        run.press("y")
        self.wait_for_equal(["(Add Driver)", "Bystander"], run.names, "the names in the list")
        self.assertEqual([path.name for path in self.folders.drivers.iterdir()], ["Bystander"])
        self.assertIsNone(self.wine.registry_value(f"{SETTINGS}\\Meter"))
        self.assertIsNone(self.wine.registry_value(f"{SETTINGS}\\tarvo.versions\\Meter"))
        self.assertEqual(self.wine.registry_value(f"{SETTINGS}\\Bystander"), "made by a test")
        self.close_properly(run)

    def test_leaves_everything_when_the_second_answer_is_no(self):
        run = self.ask_to_remove()
        run.press("y")
        self.wait_for_message(run, "Remove Driver", WITH_DATA)
        run.press("n")
        self.wait_for_equal([], run.messages, "the messages")
        self.assertEqual(run.names(), ["(Add Driver)", "Bystander", "Meter"])
        self.assertTrue((self.meter / "Data" / "two.txt").exists())
        self.assertEqual(self.wine.registry_value(f"{SETTINGS}\\Meter"), "made by a test")
        self.close_properly(run)


if __name__ == "__main__":
    unittest.main()
