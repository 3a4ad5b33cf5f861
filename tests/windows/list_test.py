"""The program for Windows lists the drivers, and its window lives as on Linux."""

import unittest

from windows_case import IN_DETAILS, METER, NOT_ASKED, WindowsCase

LIST_VIEW = 3  # LV_VIEW_LIST
ADD_DRIVER = ("(Add Driver)", "", "", "", "", "", "")


class TheList(WindowsCase):
    def test_shows_each_driver_with_its_downloads_and_versions(self):
        meter = self.install(METER)
        (meter / "Data" / "one.csv").write_text("made by a test\n")
        (meter / "Data" / "deep").mkdir()
        (meter / "Data" / "deep" / "two.CSV").write_text("made by a test\n")
        self.folders.add_driver("Übergrößen", "driver.inf", "Data/a.txt")
        self.folders.write_settings(NOT_ASKED | IN_DETAILS | {
            "tarvo.versions_Meter_DOWNLOAD": "1.0"})
        run = self.open_window()
        self.assertEqual(run.rows(), [
            ADD_DRIVER,
            ("Meter", "2", "", "", "1.0", "-", "-"),
            ("Übergrößen", "0", "", "1", "-", "-", "-"),
        ])
        self.keep_picture("list-details")
        self.close_properly(run)

    def test_is_made_anew_by_a_key_and_keeps_place_and_view_at_the_end(self):
        self.folders.write_settings(NOT_ASKED)
        run = self.open_window()
        self.assertEqual(run.names(), ["(Add Driver)"])
        self.install(METER)
        run.choose("alt+v", "r")
        self.wait_for_equal(["(Add Driver)", "Meter"], run.names, "the names in the list")
        self.keep_picture("list-large")
        run.choose("alt+v", "l")
        self.wait_for_equal(LIST_VIEW, run.view, "the view of the list")
        self.close_properly(run)
        settings = self.folders.settings()
        self.assertEqual(settings["Tarvo_Settings_ViewMode"], "2")
        geometry = {name: settings[f"Tarvo_Settings_Main{name}"]
                    for name in ("Left", "Top", "Width", "Height")}
        self.assertEqual(geometry, {"Left": "1000", "Top": "1000", "Width": "6500",
                                    "Height": "6500"})


if __name__ == "__main__":
    unittest.main()
