"""The list of drivers, read from outside in every view."""

import unittest

from main_window import DETAILS, LARGE_ICONS, LIST, SMALL_ICONS
from program_test_case import ProgramTestCase

HEADINGS = ["Name", "CSV Downloads", "ASC Downloads", "TXT Downloads", "Download Version",
            "Upload Version", "Properties Version"]
ADD_DRIVER = ("(Add Driver)", "", "", "", "", "", "")
LONG_VERSION = "4." + "0123456789" * 150  # two records of the settings file


class TheListOfDrivers(ProgramTestCase):
    def setUp(self):
        super().setUp()
        self.folders.add_driver("Meter", "Data/one.csv", "Data/TWO.CSV", "a/b/c/three.Csv", "x.asc")
        self.folders.add_driver("#first")
        self.folders.add_driver("beta probe", "t1.txt", "Data/T2.TXT", "Data/csv", "Data/x.csv.bak")
        self.folders.add_driver("Zähler <b>7", "Data/a.asc", "Data/b.asc", "Data/c.csv")
        (self.folders.drivers / "Readme.txt").write_text("a plain file\n")
        self.folders.write_settings({
            "tarvo.versions_Meter_DOWNLOAD": "1.0.3",
            "TARVO.VERSIONS_meter_upload": "Größe 2,5 beta",
            "tarvo.versions_Zähler <b>7_PROPERTIES": LONG_VERSION,
            "tarvo.versions_#first_DOWNLOAD": "",
        })

    EXPECTED = [
        ADD_DRIVER,
        ("#first", "0", "", "", "", "-", "-"),
        ("beta probe", "0", "", "2", "-", "-", "-"),
        ("Meter", "3", "1", "", "1.0.3", "Größe 2,5 beta", "-"),
        ("Readme.txt", "", "", "", "-", "-", "-"),
        ("Zähler <b>7", "1", "2", "", "-", "-", LONG_VERSION),
    ]

    def test_details_show_all_seven_columns(self):
        window = self.open_window()
        window.choose_view(DETAILS)
        self.assertEqual(window.headings(), HEADINGS)
        self.assertEqual(window.rows(), self.EXPECTED)

    def test_every_other_view_shows_the_items_in_order_and_tells_their_columns(self):
        window = self.open_window()
        for mode in (LARGE_ICONS, SMALL_ICONS, LIST):
            with self.subTest(view=mode):
                window.choose_view(mode)
                items = window.items()
                self.assertEqual([name for name, _ in items], [row[0] for row in self.EXPECTED])
                for (_, told), row in zip(items, self.EXPECTED):
                    shown = [f"{heading}: {text}" for heading, text in zip(HEADINGS[1:], row[1:])
                             if text]
                    self.assertEqual(told.split(", ") if told else [], shown)

    def test_a_refresh_shows_what_has_changed(self):
        window = self.open_window()
        window.choose_view(DETAILS)
        (self.folders.drivers / "#first" / "new.csv").write_text("")
        self.folders.add_driver("Newcomer", "n.csv")
        window.refresh()
        wanted = list(self.EXPECTED)
        wanted[1] = ("#first", "1", "", "", "", "-", "-")
        wanted.insert(4, ("Newcomer", "1", "", "", "-", "-", "-"))
        window.wait_for_rows(wanted)


class AnEmptyCatalogue(ProgramTestCase):
    def test_shows_the_add_driver_item_alone_and_makes_the_drivers_folder(self):
        window = self.open_window()
        window.choose_view(DETAILS)
        self.assertEqual(window.rows(), [ADD_DRIVER])
        self.assertTrue(self.folders.drivers.is_dir())


if __name__ == "__main__":
    unittest.main()
