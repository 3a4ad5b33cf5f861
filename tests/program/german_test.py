"""In German the program shows no English word."""

import ast
import gettext
import pathlib
import re
import unittest

from dialogs import dismiss_all, open_dialogs, texts_of, wait_for_message
from main_window import FILE, VIEW
from program import dictionary_folder
from program_test_case import ProgramTestCase
from waiting import wait_until

ROOT = pathlib.Path(__file__).resolve().parents[2]

# Texts that stay English on purpose.
PLACEHOLDERS = {"Options Dialog Code goes here!", "Rename Code goes here!"}

# Phrases that are spelled alike in both languages.
SAME_IN_GERMAN = {"&Details", "Name", "OK", "Tarvo", "Version", "Version ?.??"}

# English words that a toolkit would bring along.
TOOLKIT_WORDS = {"yes", "no", "cancel", "apply", "close", "page", "left", "right", "down", "line",
                 "show", "hide", "more", "less", "date", "time", "window", "scroll", "the", "and",
                 "of"}

OPTIONS_ENTRY = 8
RENAME_ENTRY = -2
DELETE_ENTRY = -3


def words_of(text):
    return {word.lower() for word in re.findall(r"[^\W\d_]{2,}", text)}


def english_phrases():
    """Every phrase of the program, from the template."""
    template = (ROOT / "translations" / "tarvo.pot").read_text()
    quoted = re.findall(r'^msgid ((?:"[^\n]*"\n)+)', template, re.MULTILINE)
    texts = ["".join(ast.literal_eval(line) for line in lines.splitlines()) for lines in quoted]
    return {text for text in texts if text}


def german_phrases():
    """The translations by phrase, read by another program than the one under test."""
    with open(dictionary_folder("de") / "TARVO.DIC", "rb") as file:
        catalogue = gettext.GNUTranslations(file)
    return {english: catalogue.gettext(english) for english in english_phrases()
            if catalogue.gettext(english) != english or english in SAME_IN_GERMAN}


def plain(text):
    return text.replace("&", "")


class InGerman(ProgramTestCase):
    @classmethod
    def setUpClass(cls):
        german = {plain(text) for text in german_phrases().values()}
        # Whole phrases that are no translation, and words that occur in no translation.
        cls.english_phrases = {plain(text) for text in english_phrases()} - german
        german_words = set().union(*(words_of(text) for text in german))
        english_words = set().union(*(words_of(text) for text in cls.english_phrases))
        cls.english_words = (english_words | TOOLKIT_WORDS) - german_words

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
            self.assertFalse(text in self.english_phrases, f"{text!r} is English")
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
        self.assertIn(german_phrases()["About Tarvo"], texts)

    def test_the_message_boxes(self):
        window = self.open_german_window()
        for menu, entry in ((VIEW, OPTIONS_ENTRY), (FILE, RENAME_ENTRY)):
            window.choose(menu, entry)
            wait_for_message(window.program)
            texts = self.read_everything(window.program)
            self.assertTrue(texts & PLACEHOLDERS, texts)
            self.assert_german(texts)
            dismiss_all(window.program)

    def test_the_questions_before_a_removal(self):
        window = self.open_german_window()
        window.click(window.item("Q7"))
        delete = window.entries(FILE)[DELETE_ENTRY]
        wait_until(delete.is_enabled, "the driver can be deleted")
        delete.do_action(delete.action_names()[0])
        for phrases in (("Remove Driver", "Are you sure?"),
                        ("Removing the driver will also erase these files.", "Are you sure?")):
            wanted = {german_phrases()[phrase] for phrase in phrases}
            wait_until(lambda: wanted <= self.lines_shown(window.program), f"{wanted} is asked")
            wait_for_message(window.program)
            self.assert_german(self.read_everything(window.program))
            window.program.press("Return")
        wait_until(lambda: not (self.folders.drivers / "Q7").exists(), "the driver is removed")

    def lines_shown(self, program):
        return {line for box in open_dialogs(program)
                for text in (box.name(), *texts_of(box)) for line in text.splitlines()}

    def test_the_settings_keys_keep_the_title(self):
        window = self.open_german_window()
        self.close_properly(window)
        self.assertIn("Tarvo_Settings_ViewMode", self.folders.settings())


if __name__ == "__main__":
    unittest.main()
