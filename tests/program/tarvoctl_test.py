"""The terminal program and the window show the same catalogue."""

import json
import subprocess
import unittest

from main_window import DETAILS
from program import BUILD_FOLDER
from program_test_case import ProgramTestCase

KEYS = ("name", "csv", "asc", "txt", "download", "upload", "properties")


class TheTerminalProgram(ProgramTestCase):
    def drivers(self):
        listed = subprocess.run(
            [BUILD_FOLDER / "bin" / "tarvoctl", "drivers", "list", "--json"], check=True,
            stdout=subprocess.PIPE, cwd=self.folders.start,
            env=dict(self.session.environment, TARVO_COMMON_DOCUMENTS=str(self.folders.documents)))
        return [tuple(driver[key] for key in KEYS) for driver in json.loads(listed.stdout)]

    def test_lists_the_drivers_as_the_window_does_in_all_seven_columns(self):
        self.folders.add_driver('Quote " and \\ back', "a.csv", "Data/b.ASC", "c.txt")
        self.folders.add_driver("Éclair ~ Ångström", "Data/a.csv")
        self.folders.add_driver("Empty")
        crowded = self.folders.add_driver("crowded", "a.csv")
        for number in range(102):
            (crowded / f"sub{number}").mkdir()
        (self.folders.drivers / "plain.file").touch()
        self.folders.write_settings({
            "tarvo.versions_Empty_DOWNLOAD": "7",
            "tarvo.versions_Empty_UPLOAD": "zwei, «trois»",
            'tarvo.versions_Quote " and \\ back_PROPERTIES': '"',
        })
        window = self.open_window()
        window.choose_view(DETAILS)
        rows = window.rows()
        self.assertEqual(rows[0][0], "(Add Driver)")
        self.assertEqual(len(rows), 6)
        self.assertEqual(self.drivers(), rows[1:])


if __name__ == "__main__":
    unittest.main()
