"""In German the program shows no English word."""

import gettext
import re
import unittest

from dialogs import dismiss_all, wait_for_message
from main_window import FILE, VIEW
from program import dictionary_folder
from program_test_case import ProgramTestCase

# Texts that stay English on purpose.
PLACEHOLDERS = {"Options Dialog Code goes here!", "Rename Code goes here!"}

# English words that a toolkit brings along rather than the phrases of the program.
FOREIGN_WORDS = {"yes", "no", "cancel", "apply", "page", "left", "right", "down", "line", "show",
                 "hide", "more", "less", "details...", "date", "time", "press", "toggle", "window",
                 "list", "menu bar", "scroll", "the", "and", "of"}

OPTIONS_ENTRY = 8
RENAME_ENTRY = -2


def words_of(text):
    return {word.lower() for word in re.findall(r"[^\W\d_]{2,}", text)}


def phrases():
    """English phrases and their translations, read by another program than the one under test."""
    with open(dictionary_folder("de") / "TARVO.DIC", "rb") as file:
        catalogue = gettext.GNUTranslations(file)._catalog
    return {english: german for english, german in catalogue.items() if english}


def plain(text):
    return text.replace("&", "")


class InGerman(ProgramTestCase):
    @classmethod
    def setUpClass(cls):
        german = {plain(text) for text in phrases().values()}
        # Whole phrases with another translation, and words that occur in no translation at all.
        cls.english_phrases = {plain(english) for english, text in phrases().items()
                               if plain(english) != plain(text)} - german
        german_words = set().union(*(words_of(text) for text in german))
        english_words = set().union(*(words_of(plain(text)) for text in phrases()))
        cls.english_words = (english_words | FOREIGN_WORDS) - german_words

    def setUp(self):
        super().setUp()
        self.assertGreater(len(self.english_words), 25)
        self.folders.add_driver("Q7", "Data/a.csv", "b.asc", "c.txt", "Download.EXE")

    def open_german_window(self):
        return self.open_window(launcher=True, language="de_DE.UTF-8")

    def assert_german(self, texts):
        for text in texts:
            if text in PLACEHOLDERS:
                continue
            self.assertNotIn(text, self.english_phrases)
            self.assertEqual(words_of(text) & self.english_words, set(), text)

    def texts_below(self, node):
        """Everything that is there to be read, shown at the moment or not."""
        for below in node.walk():
            yield below.name()
            yield below.description()

    def read_everything(self, program):
        texts = set()
        for window in program.application().children():
            texts.update(self.texts_below(window))
        texts.update(program.titles())
        return texts

    def test_the_main_window_in_every_view(self):
        window = self.open_german_window()
        for mode in range(4):
            window.choose_view(mode)
            texts = self.read_everything(window.program)
            self.assert_german(texts)
            self.assertIn("(Treiber hinzufügen)", texts)
        self.assertIn("CSV-Dateien", window.headings())
        self.assertEqual([menu.name() for menu in window.menus()], ["Datei", "Ansicht", "Hilfe"])

    def test_the_tooltips(self):
        window = self.open_german_window()
        for button in window.tool_buttons():
            window.move_to(button)
            shown = window.program.wait_for("tool tip", button.name())
            self.assert_german([shown.name()])

    def test_the_about_window(self):
        window = self.open_german_window()
        window.open_about()
        texts = self.read_everything(window.program)
        self.assert_german(texts)
        self.assertIn(phrases()["About Tarvo"], texts)

    def test_the_message_boxes(self):
        window = self.open_german_window()
        for menu, entry in ((VIEW, OPTIONS_ENTRY), (FILE, RENAME_ENTRY)):
            window.choose(menu, entry)
            wait_for_message(window.program)
            texts = self.read_everything(window.program)
            self.assertTrue(texts & PLACEHOLDERS, texts)
            self.assert_german(texts)
            dismiss_all(window.program)

    def test_the_settings_keys_keep_the_title(self):
        window = self.open_german_window()
        self.close_properly(window)
        self.assertIn("Tarvo_Settings_ViewMode", self.folders.settings())


if __name__ == "__main__":
    unittest.main()
