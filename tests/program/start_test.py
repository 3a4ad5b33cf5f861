"""How the program starts, and how it fails to."""

import datetime
import shutil
import unittest

import settings_file
from dialogs import texts_of, wait_for_message
from main_window import DETAILS, MainWindow
from program import dictionary_folder
from program_test_case import ProgramTestCase
from waiting import wait_until

DIRECTORY = "Tarvo_Settings_Directory"


class StartCase(ProgramTestCase):
    def assert_ends_with_error(self, program, number, description):
        """The standard message is in a box, which Enter closes, and on standard error; exit code 1."""
        wanted = f"Run-time error '{number}':\n\n{description}"
        (shown,) = texts_of(wait_for_message(program))
        self.assertTrue(shown.startswith(wanted), shown)
        program.press("Return")
        self.assertEqual(program.wait_for_end(), 1)
        self.assertIn(wanted, program.printed())


class StartsThatFail(StartCase):
    def test_a_stored_view_mode_that_does_not_exist_ends_the_program(self):
        for stored in ("7", "3.5", "-1"):
            with self.subTest(stored=stored):
                self.folders.write_settings({"TarvoSettings_ViewMode": stored})
                self.assert_ends_with_error(self.start(), 380, "Invalid property value")

    def test_a_data_folder_that_points_nowhere_ends_the_program_and_is_not_created(self):
        nowhere = self.folders.root / "nowhere"
        self.folders.write_settings({DIRECTORY: f"{nowhere}/"})
        self.assert_ends_with_error(self.start(), 76, "Path not found")
        self.assertFalse(nowhere.exists())
        self.assertEqual(self.folders.settings(), {DIRECTORY: f"{nowhere}/"})

    def test_a_broken_dictionary_ends_the_program(self):
        whole = (dictionary_folder("de") / "TARVO.DIC").read_bytes()
        for broken in (b"not a dictionary", whole[: len(whole) // 2]):
            with self.subTest(size=len(broken)):
                (self.folders.start / "TARVO.DIC").write_bytes(broken)
                self.assert_ends_with_error(self.start(), 321, 'The dictionary "TARVO.DIC" cannot be used')


class StartsThatSucceed(StartCase):
    def test_the_stored_view_mode_is_rounded_halves_to_even(self):
        for stored, mode in (("1.5", 2), ("2.5", 2), ("3", 3)):
            with self.subTest(stored=stored):
                self.folders.write_settings({"TarvoSettings_ViewMode": stored})
                window = self.open_window()
                self.assertEqual(window.checked_view(), mode)
                self.close_properly(window)

    def test_a_stored_width_that_is_no_number_counts_as_zero_and_snaps(self):
        self.folders.write_settings({"Tarvo_Settings_MainWidth": "abc"})
        window = self.open_window()
        window.wait_for_outer_width(200)
        self.close_properly(window)
        self.assertEqual(self.folders.settings()["Tarvo_Settings_MainWidth"], "3000")

    def test_a_folder_in_place_of_the_settings_file_leaves_every_default(self):
        self.folders.settings_path.mkdir(parents=True)
        self.folders.add_driver("Meter", "a.csv")
        window = self.open_window()
        window.choose_view(DETAILS)
        self.assertEqual(window.rows()[1], ("Meter", "1", "", "", "-", "-", "-"))
        self.close_properly(window)
        self.assertEqual(list(self.folders.settings_path.iterdir()), [])

    def test_an_empty_settings_file_becomes_a_whole_one(self):
        self.folders.settings_path.parent.mkdir(parents=True)
        self.folders.settings_path.touch()
        self.close_properly(self.open_window())
        self.assertEqual(self.folders.settings()[DIRECTORY], f"{self.folders.data}/")

    def test_a_lock_left_by_a_program_that_died_is_cleared(self):
        settings_file.take_foreign_lock(self.folders.settings_path, datetime.timedelta(days=1))
        self.close_properly(self.open_window())
        self.assertEqual(self.folders.settings()["Tarvo_Settings_ViewMode"], "0")

    def test_random_bytes_in_the_settings_file_do_no_harm(self):
        self.folders.settings_path.parent.mkdir(parents=True)
        self.folders.settings_path.write_bytes(bytes(i * 7919 % 251 for i in range(4100)))
        self.close_properly(self.open_window())

    def test_a_stored_data_folder_is_where_the_drivers_are(self):
        elsewhere = self.folders.root / "elsewhere"
        (elsewhere / "drivers" / "Distant").mkdir(parents=True)
        self.folders.write_settings({DIRECTORY: str(elsewhere)})
        window = self.open_window()
        window.choose_view(DETAILS)
        self.assertEqual([row[0] for row in window.rows()], ["(Add Driver)", "Distant"])
        self.assertFalse((elsewhere / "Drivers").exists())

    def test_an_empty_dictionary_leaves_the_program_in_english(self):
        empty = self.folders.start / "TARVO.DIC"
        shutil.copy(dictionary_folder("de") / "TARVO.DIC", empty)
        empty.write_bytes(bytes.fromhex("de120495") + (0).to_bytes(4, "little") * 6)
        window = self.open_window()
        self.assertEqual([menu.name() for menu in window.menus()], ["File", "View", "Help"])


class TheSplashWindow(StartCase):
    def test_is_there_while_the_main_window_loads_and_gone_afterwards(self):
        with settings_file.foreign_lock(self.folders.settings_path):
            program = self.start()
            # The main window cannot save a setting meanwhile, so it goes on loading.
            (splash,) = wait_until(program.window_ids, "the splash window can be seen")
        window = MainWindow(program)
        window.wait_until_active()
        wait_until(lambda: splash not in program.window_ids(), "the splash window is gone")
        self.close_properly(window)


class RunsWithoutAMainWindow(StartCase):
    def test_the_version_report_ends_at_once_and_touches_nothing(self):
        for argument in ("/v", "/V"):
            program = self.start(argument)
            self.assertEqual(program.wait_for_end(), 0, program.printed())
            self.assertEqual(list(self.folders.documents.iterdir()), [])

    def test_a_silent_refresh_ends_by_itself_and_saves_no_position(self):
        self.folders.add_driver("Meter")
        program = self.start("/R")
        self.assertEqual(program.wait_for_end(), 0, program.printed())
        self.assertEqual(self.folders.settings(), {DIRECTORY: f"{self.folders.data}/"})

    def test_a_switch_with_something_behind_it_is_an_ordinary_start(self):
        window = self.open_window("/v", "")
        self.close_properly(window)


if __name__ == "__main__":
    unittest.main()
