"""What opens CSV files on Windows: the question at the start and what comes of it in the system
registry."""

import unittest

from windows_case import WindowsCase

EXTENSION = "HKCR\\.csv"
COMMAND = "HKCR\\csvFile\\shell\\open\\command"
QUESTION = ("CSV Viewer not associated", "Set CSV Viewer as default association?")
MISSING = "Association key is missing, please re-install to correct."
INCORRECT = "Association key is incorrect, please re-install to correct."
ASKED = "Tarvo_Association_Asked"


class TheQuestion(WindowsCase):
    def answer(self, key):
        run = self.start()
        self.wait_for_message(run, *QUESTION)
        run.press(key)
        self.wait_for_equal([], run.messages, "the messages")
        self.close_properly(run)

    def assert_told(self, text):
        run = self.start()
        self.wait_for_message(run, "Tarvo", text)
        run.press("Return")
        self.wait_for_equal([], run.messages, "the messages")
        self.close_properly(run)

    def assert_not_asked(self):
        # A program that asked would not end.
        run = self.start()
        self.wait_for_title(run, "Tarvo")
        self.close_properly(run)

    def test_answered_with_yes_sets_the_class_and_tells_of_a_viewer_that_is_missing(self):
        self.answer("y")
        self.assertEqual(self.wine.registry_value(EXTENSION), "csvFile")
        self.assertNotIn(ASKED, self.folders.settings())
        self.assert_told(MISSING)
        self.wine.set_registry_value(COMMAND, "C:\\Sheet\\sheet.exe %1")
        self.assert_told(INCORRECT)
        self.wine.set_registry_value(COMMAND, "C:\\Viewer\\CsvView.exe %1")
        self.assert_not_asked()

    def test_answered_with_no_is_not_asked_again(self):
        before = self.wine.registry_value(EXTENSION)
        self.answer("n")
        self.assertEqual(self.wine.registry_value(EXTENSION), before)
        self.assertEqual(self.folders.settings()[ASKED], "Yes")
        self.assert_not_asked()


if __name__ == "__main__":
    unittest.main()
