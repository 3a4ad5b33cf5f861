"""The commands: what can be chosen when, the About window, and that nothing chosen does harm."""

import unittest

from dialogs import dismiss_all, texts_of, wait_for_message
from main_window import DETAILS, FILE, HELP, LARGE_ICONS, VIEW
from program import VERSION
from program_test_case import ProgramTestCase
from waiting import wait_until

DRIVER_COMMANDS = ("Download", "Upload", "Properties...", "Delete")
TOOL_BUTTONS = (("Download", 0), ("Upload", 0), ("Properties", 1))


class CommandCase(ProgramTestCase):
    def setUp(self):
        super().setUp()
        self.folders.add_driver("Half", "Download.EXE", "properties.exe", "Data/x.csv")
        self.folders.add_driver("None")

    def enabled_entries(self, window):
        return {name for name in DRIVER_COMMANDS if window.entry(FILE, name).is_enabled()}

    def enabled_buttons(self, window):
        return [window.tool_button(*button).is_enabled() for button in TOOL_BUTTONS]


class CommandsOnADriver(CommandCase):
    def test_are_disabled_until_a_driver_is_selected(self):
        window = self.open_window()
        self.assertEqual(self.enabled_entries(window), set())
        self.assertEqual(self.enabled_buttons(window), [False, False, False])
        self.assertFalse(window.entry(FILE, "Install Mobile Driver...").is_enabled())
        self.assertTrue(window.entry(FILE, "Close").is_enabled())

    def test_are_enabled_for_the_tools_that_the_driver_has(self):
        window = self.open_window()
        window.click(window.item("Half"))
        self.wait_for_entries(window, {"Download", "Properties...", "Delete"})
        self.assertEqual(self.enabled_buttons(window), [True, False, True])

    def test_follow_the_selection_by_keyboard(self):
        window = self.open_window()
        window.choose_view(DETAILS)
        window.click(window.item("Half"))
        self.wait_for_entries(window, {"Download", "Properties...", "Delete"})
        window.program.press("Down")
        self.wait_for_entries(window, {"Delete"})
        self.assertEqual(self.enabled_buttons(window), [False, False, False])

    def test_are_disabled_by_a_refresh_while_the_buttons_stay(self):
        window = self.open_window()
        window.click(window.item("Half"))
        self.wait_for_entries(window, {"Download", "Properties...", "Delete"})
        window.refresh()
        self.wait_for_entries(window, set())
        self.assertEqual(self.enabled_buttons(window), [True, False, True])

    def test_the_add_driver_item_cannot_be_deleted(self):
        window = self.open_window()
        window.click(window.item("Half"))
        self.wait_for_entries(window, {"Download", "Properties...", "Delete"})
        window.click(window.item("(Add Driver)"))
        self.wait_for_entries(window, set())

    def wait_for_entries(self, window, names):
        self.wait_for_equal(names, lambda: self.enabled_entries(window), "the enabled entries")


class TheAboutWindow(CommandCase):
    def open(self):
        window = self.open_window()
        window.press_in_menu("alt+h", "a")
        window.program.wait_for_active("About Tarvo")
        return window

    def test_shows_the_title_and_the_version(self):
        program = self.open().program
        texts = texts_of(program.wait_for("dialog", "About Tarvo"))
        self.assertTrue(VERSION, "the version must be told to this test")
        self.assertIn(f"Version {VERSION}", texts)
        self.assertIn("Tarvo", texts)

    def test_is_modal(self):
        window = self.open()
        about = window.program.active_window()
        self.assertIn("_NET_WM_STATE_MODAL",
                      self.session.tool("xprop", "-id", str(about), "_NET_WM_STATE"))
        window.click(window.tool_button("Details View"))
        window.program.press("Escape")
        window.wait_until_active()
        self.assertEqual(window.checked_view(), LARGE_ICONS)

    def test_closes_by_escape_and_by_enter(self):
        window = self.open()
        for key in ("Escape", "Return"):
            with self.subTest(key=key):
                window.program.press(key)
                window.program.wait_until_gone("dialog", "About Tarvo")
                window.press_in_menu("alt+h", "a")
                window.program.wait_for_active("About Tarvo")

    def test_closes_with_the_main_window(self):
        window = self.open()
        window.program.press("Escape")
        window.program.wait_until_gone("dialog", "About Tarvo")
        self.close_properly(window)


class NothingChosenDoesHarm(CommandCase):
    def test_the_options_and_rename_entries_show_their_messages(self):
        window = self.open_window()
        for keys, text in ((("alt+v", "o"), "Options Dialog Code goes here!"),
                           (("alt+f", "m"), "Rename Code goes here!")):
            with self.subTest(text=text):
                window.press_in_menu(*keys)
                dialog = wait_for_message(window.program)
                self.assertEqual((dialog.name(), texts_of(dialog)), ("Tarvo", [text]))
                dismiss_all(window.program)

    def test_every_entry_of_every_menu_can_be_chosen(self):
        window = self.open_window()
        for menu, key in ((FILE, "alt+f"), (VIEW, "alt+v"), (HELP, "alt+h")):
            for name in [entry.name() for entry in window.entries(menu)]:
                if name != "Close":
                    with self.subTest(entry=name):
                        self.choose_by_arrow_keys(window, menu, key, name)
        self.close_properly(window)

    def choose_by_arrow_keys(self, window, menu, key, name):
        if not window.entry(menu, name).is_enabled():
            return
        window.wait_until_active()
        window.open_menu(key)
        window.press_until_focused("Down", window.entry(menu, name))
        window.press_and_wait_for_menu_to_close("Return")
        dismiss_all(window.program)
        self.close_other_windows(window)
        window.program.must_run()

    def close_other_windows(self, window):
        """The help has a window of its own, which is no dialog."""

        def none_left():
            others = [other for other in window.program.window_ids() if other != window.window]
            for other in others:
                window.program.close_window(other)
            return not others

        wait_until(none_left, "only the main window is left", interval=0.1)

    def test_every_button_of_the_toolbar_can_be_pressed(self):
        window = self.open_window()
        for place in range(len(window.tool_buttons())):
            button = window.tool_buttons()[place]
            if button.is_enabled():
                with self.subTest(button=button.name()):
                    window.click(button)
                    dismiss_all(window.program)
                    window.program.must_run()
        self.close_properly(window)

    def test_items_can_be_double_clicked_and_entered(self):
        window = self.open_window()
        for view in (DETAILS, 0):
            window.choose_view(view)
            for name in ("(Add Driver)", "None"):
                with self.subTest(view=view, item=name):
                    window.click(window.item(name), times=2)
                    dismiss_all(window.program)
                    window.wait_until_active()
                    window.program.press("Return")
                    dismiss_all(window.program)
                    window.program.must_run()
        self.close_properly(window)


if __name__ == "__main__":
    unittest.main()
