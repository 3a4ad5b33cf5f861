"""The main window: its size, its bars, its views, and what it keeps."""

import unittest

from main_window import DETAILS, LARGE_ICONS, LIST, SMALL_ICONS, VIEW
from program_test_case import ProgramTestCase

PREFIX = "Tarvo_Settings_"
BOUNDS = ("MainLeft", "MainTop", "MainWidth", "MainHeight")


class TheMainWindow(ProgramTestCase):
    def saved(self, *names):
        settings = self.folders.settings()
        return tuple(settings.get(PREFIX + name) for name in names)

    def test_opens_at_its_default_place_in_large_icons(self):
        window = self.open_window()
        self.assertEqual(window.checked_view(), LARGE_ICONS)
        for name in ("Toolbar", "Status Bar"):
            self.assertTrue(window.entry(VIEW, name).is_checked(), name)
        self.close_properly(window)
        self.assertEqual(self.folders.settings(), {
            PREFIX + "Directory": f"{self.folders.data}/",
            PREFIX + "MainLeft": "1000",
            PREFIX + "MainTop": "1000",
            PREFIX + "MainWidth": "6500",
            PREFIX + "MainHeight": "6500",
            PREFIX + "ViewMode": "0",
        })

    def test_snaps_back_to_its_least_width(self):
        window = self.open_window()
        window.resize(120, 400)
        window.wait_for_outer_width(200)
        self.close_properly(window)
        self.assertEqual(self.saved("MainWidth"), ("3000",))

    def test_keeps_the_size_that_the_user_gives_it(self):
        window = self.open_window()
        window.resize(600, 333)
        window.wait_for_inner_size(600, 333)
        left, right, top, bottom = window.frame()
        self.close_properly(window)
        self.assertEqual(self.saved("MainWidth", "MainHeight"),
                         (str((600 + left + right) * 15), str((333 + top + bottom) * 15)))

    def test_opens_where_it_was_closed(self):
        kept = ("1500", "2250", "7500", "6000")
        self.folders.write_settings(dict(zip((PREFIX + name for name in BOUNDS), kept)))
        window = self.open_window()
        self.assertEqual(window.outer_bounds(), (100, 150, 500, 400))
        self.close_properly(window)
        self.assertEqual(self.saved(*BOUNDS), kept)

    def test_the_list_takes_the_place_of_a_hidden_toolbar(self):
        window = self.open_window()
        toolbar_height = window.toolbar().extents()[3]
        _, top, _, height = window.list().extents()
        window.press_in_menu("alt+v", "t")
        window.wait_for_list_place(top - toolbar_height, height + toolbar_height)
        self.assertFalse(window.entry(VIEW, "Toolbar").is_checked())
        window.press_in_menu("alt+v", "t")
        window.wait_for_list_place(top, height)
        self.assertTrue(window.entry(VIEW, "Toolbar").is_checked())

    def test_the_list_takes_the_place_of_a_hidden_status_bar(self):
        window = self.open_window()
        status_height = window.status_bar().extents()[3]
        _, top, _, height = window.list().extents()
        window.press_in_menu("alt+v", "b")
        window.wait_for_list_place(top, height + status_height)

    def test_the_keyboard_chooses_the_view_and_menu_and_toolbar_agree(self):
        window = self.open_window()
        for key, mode in (("d", DETAILS), ("l", LIST), ("m", SMALL_ICONS), ("g", LARGE_ICONS)):
            with self.subTest(mode=mode):
                window.press_in_menu("alt+v", key)
                window.wait_for_view(mode)
                self.assertEqual(window.pressed_view_button(), mode)

    def test_a_restart_opens_in_large_icons_although_details_were_chosen(self):
        window = self.open_window()
        window.press_in_menu("alt+v", "d")
        window.wait_for_view(DETAILS)
        self.close_properly(window)
        self.assertEqual(self.saved("ViewMode"), ("3",))
        self.assertEqual(self.open_window().checked_view(), LARGE_ICONS)

    def test_a_minimised_window_saves_the_view_alone(self):
        window = self.open_window()
        window.press_in_menu("alt+v", "l")
        window.wait_for_view(LIST)
        window.minimise()
        self.close_unseen(window)
        self.assertEqual(self.folders.settings(), {
            PREFIX + "Directory": f"{self.folders.data}/",
            PREFIX + "ViewMode": "2",
        })

    def test_a_maximised_window_saves_its_maximised_bounds(self):
        window = self.open_window()
        window.maximise()
        bounds = window.outer_bounds()
        self.assertGreater(bounds[2], 900)
        self.close_properly(window)
        self.assertEqual(self.saved(*BOUNDS), tuple(str(pixels * 15) for pixels in bounds))

    def test_the_close_entry_ends_the_program_and_saves(self):
        window = self.open_window()
        window.press_in_menu("alt+f", "c")
        self.assertEqual(window.program.wait_for_end(), 0, window.program.printed())
        self.assertEqual(self.saved("ViewMode"), ("0",))

    def close_unseen(self, window):
        window.program.close_window(window.window)
        self.assertEqual(window.program.wait_for_end(), 0, window.program.printed())


if __name__ == "__main__":
    unittest.main()
