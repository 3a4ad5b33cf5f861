"""The help: contents and search of the real help file, in the user's language, and every way in which
help is not there."""

import gettext
import os
import shutil
import subprocess
import unittest

from dialogs import dismiss_all, open_dialogs, texts_of, wait_for_message
from help_window import CONTENTS_TAB, SEARCH_TAB, HelpWindow
from main_window import MainWindow
from program import BUILD_FOLDER, RunningProgram, dictionary_folder
from program_test_case import ProgramTestCase
from session import start
from waiting import wait_until

HELP_FILE = BUILD_FOLDER / "bin" / "TARVO.HLP"
NO_HELP = "Unable to display Help Contents. There is no Help associated with this application."
NOT_LOADED = "Help file could not be loaded."


class Language:
    """The texts of a language: those of the program, and what its help file says."""

    def __init__(self, code, locale, title, topics, keyword, lines, topic, words):
        self.locale = locale
        self.title = title
        self.topics = topics  # the first ones of the tree
        self.keyword = keyword
        self.lines = lines  # of the index for that keyword
        self.topic = topic  # of the first line
        self.words = words  # in that topic
        self._catalogue = gettext.NullTranslations()
        if code:
            with open(dictionary_folder(code) / "TARVO.DIC", "rb") as file:
                self._catalogue = gettext.GNUTranslations(file)

    def shown(self, phrase):
        return self._catalogue.gettext(phrase)

    def key(self, caption):
        """The access key of a menu or an entry."""
        shown = self.shown(caption)
        return shown[shown.index("&") + 1].lower()


ENGLISH = Language("", "C.UTF-8", "Tarvo Help",
                   ["What Tarvo does", "First steps", "The main window", "The list of drivers"],
                   "BACK", ["backup", "Backups"], "Backups", "copy")
GERMAN = Language("de", "de_DE.UTF-8", "Hilfe zu Tarvo",
                  ["Was Tarvo tut", "Erste Schritte", "Das Hauptfenster", "Die Liste der Treiber"],
                  "SICHER", ["Sicherung", "Sicherungen"], "Sicherungen", "Kopieren Sie")
LANGUAGES = (ENGLISH, GERMAN)


class HelpCase(ProgramTestCase):
    def setUp(self):
        super().setUp()
        self.sibling = self.folders.root / "sibling"
        self.sibling.mkdir()
        self.notes = self.folders.root / "notes"
        self.settings = {"Lumet_ProgramPath": str(self.sibling)}

    def open(self, language=ENGLISH, **settings):
        self.folders.write_settings({**self.settings, **settings})
        return self.open_window(launcher=language is not ENGLISH, language=language.locale)

    def end(self, window):
        """Closes the main window, whatever else is open."""
        window.program.close_window(window.window)
        self.assertEqual(window.program.wait_for_end(), 0, window.program.printed())

    def in_every_language(self, use, **settings):
        """Runs the program in each language and lets use(window, language) work with it."""
        for language in LANGUAGES:
            with self.subTest(language=language.locale):
                window = self.open(language, **settings)
                use(window, language)
                self.end(window)

    def press_contents(self, window, language=ENGLISH):
        window.press_in_menu(f"alt+{language.key('&Help')}", language.key("&Contents"))

    def press_search(self, window, language=ENGLISH):
        window.press_in_menu(f"alt+{language.key('&Help')}", language.key("&Search For Help On..."))

    def open_contents(self, window, language=ENGLISH):
        self.press_contents(window, language)
        return HelpWindow(window.program, language.title)

    def open_search(self, window, language=ENGLISH):
        self.press_search(window, language)
        return HelpWindow(window.program, language.title)

    def make_viewer(self):
        """A viewer program that notes how it was started."""
        viewer = self.sibling / "winhlp32.exe"
        viewer.write_text(f'#!/bin/sh\nprintf "%s\\n" "$@" > "{self.notes}.new"\n'
                          f'mv "{self.notes}.new" "{self.notes}"\n')
        viewer.chmod(0o755)

    def assert_message(self, window, text):
        """The message is shown, and no help; the main window is used again afterwards."""
        dialog = wait_for_message(window.program)
        self.assertEqual((dialog.name(), texts_of(dialog)), ("Tarvo", [text]))
        self.assertEqual(window.program.titles().count(ENGLISH.title), 0)
        self.assertEqual(len(window.program.window_ids()), 2)
        dismiss_all(window.program)
        window.wait_until_active()


class Contents(HelpCase):
    def test_open_by_keyboard_in_the_users_language(self):
        def use(window, language):
            help_window = self.open_contents(window, language)
            help_window.wait_for_tab(CONTENTS_TAB)
            self.assertEqual(help_window.topics()[:4], language.topics)
            self.assertGreater(len(help_window.topics()), 20)
            self.assertEqual(help_window.topic(), language.topics[0])
            self.assertIn(language.topics[0], help_window.text())
            window.program.press("Down", "Return")
            help_window.wait_for_topic(language.topics[1])
            window.program.press("alt+Left")
            help_window.wait_for_topic(language.topics[0])
            window.program.press("alt+Right")
            help_window.wait_for_topic(language.topics[1])

        self.in_every_language(use)

    def test_escape_leads_back_to_the_main_window(self):
        window = self.open()
        help_window = self.open_contents(window)
        window.program.press("Escape")
        window.wait_until_active()
        self.assertFalse(help_window.is_shown())
        self.open_contents(window)

    def test_and_search_share_one_window(self):
        window = self.open()
        help_window = self.open_contents(window)
        window.program.session.tool("xdotool", "windowactivate", "--sync", str(window.window))
        again = self.open_search(window)
        self.assertEqual(again.window, help_window.window)
        again.wait_for_tab(SEARCH_TAB)
        self.assertEqual(window.program.titles().count(ENGLISH.title), 1)

    def test_close_with_the_main_window(self):
        window = self.open()
        self.open_contents(window)
        self.end(window)
        self.assertEqual(window.program.window_ids(), [])


class Search(HelpCase):
    def test_finds_a_topic_by_keyboard_in_the_users_language(self):
        def use(window, language):
            help_window = self.open_search(window, language)
            help_window.wait_for_tab(SEARCH_TAB)
            field = help_window.keyword_field()
            help_window.wait_for_focus(field, "the field for the keyword")
            self.assertEqual(field.text(), "")
            self.assertGreater(len(help_window.keywords()), 100)
            self.assertEqual(help_window.topic(), language.topics[0])
            help_window.type(language.keyword)
            self.wait_for_equal(language.lines, help_window.keywords, "the lines of the index")
            window.program.press("Return")
            help_window.wait_for_topic(language.topic)
            self.assertIn(language.words, help_window.text())

        self.in_every_language(use)


class TheViewer(HelpCase):
    def test_is_started_by_contents_with_the_help_file_but_not_by_search(self):
        self.make_viewer()
        window = self.open(Vista="yes")
        self.press_contents(window)
        wait_until(self.notes.exists, "the viewer was started")
        self.assertEqual(self.notes.read_text(), f"{HELP_FILE}\n")
        self.assertEqual(window.program.window_ids(), [window.window])
        self.notes.unlink()
        self.open_search(window).wait_for_tab(SEARCH_TAB)
        self.assertFalse(self.notes.exists())

    def test_is_started_by_f1_in_the_list(self):
        self.make_viewer()
        window = self.open(Vista="yes")
        window.wait_until_active()
        window.program.press("F1")
        wait_until(self.notes.exists, "the viewer was started")

    def test_is_told_when_it_cannot_be_started_while_search_goes_on(self):
        def use(window, language):
            self.press_contents(window, language)
            self.assert_message(window, language.shown(NOT_LOADED))
            self.open_search(window, language).wait_for_tab(SEARCH_TAB)

        self.in_every_language(use, Vista="yes")

    def test_is_not_started_for_another_spelling_of_yes(self):
        self.make_viewer()
        window = self.open(Vista="Yes")
        window.program.press("F1")
        self.open_contents(window).wait_for_tab(CONTENTS_TAB)
        self.assertFalse(self.notes.exists())


class WithoutHelp(HelpCase):
    def setUp(self):
        super().setUp()
        self.own = self.folders.root / "own"
        self.own.mkdir()
        self.settings["Tarvo_ProgramPath"] = str(self.own)

    def test_both_commands_say_that_there_is_none(self):
        def use(window, language):
            for press in (self.press_contents, self.press_search):
                press(window, language)
                self.assert_message(window, language.shown(NO_HELP))

        self.in_every_language(use)

    def test_a_foreign_file_is_refused_by_its_name(self):
        file = self.own / "TARVO.HLP"
        file.write_text("<!DOCTYPE html><title>Something else</title>")
        window = self.open()
        self.press_contents(window)
        self.assert_message(
            window, f'The help file "{file}" cannot be used: it is no help file of Tarvo.')
        shutil.copy(HELP_FILE, file)
        self.open_contents(window).wait_for_tab(CONTENTS_TAB)

    def test_a_file_that_has_gone_is_told(self):
        file = self.own / "tarvo.hlp"
        shutil.copy(HELP_FILE, file)
        window = self.open()
        file.unlink()
        self.press_search(window)
        dialog = wait_for_message(window.program)
        self.assertTrue(texts_of(dialog)[0].startswith("File not found"), texts_of(dialog))
        dismiss_all(window.program)
        self.close_properly(window)


class TheInstalledProgram(HelpCase):
    def start_installed(self, prefix, locale):
        environment = dict(self.session.environment, LANG=locale,
                           TARVO_COMMON_DOCUMENTS=str(self.folders.documents),
                           QT_LINUX_ACCESSIBILITY_ALWAYS_ON="1")
        process = start([prefix / "bin" / "tarvo"], env=environment, cwd=self.folders.start,
                        stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL,
                        stderr=subprocess.DEVNULL)
        self.addCleanup(process.wait)
        self.addCleanup(process.kill)
        return RunningProgram(self.session, process)

    def test_finds_its_help(self):
        prefix = self.folders.root / "a prefix"
        self.session.tool("cmake", "--install", str(BUILD_FOLDER / "packaging"), "--prefix",
                          str(prefix))
        window = MainWindow(self.start_installed(prefix, GERMAN.locale))
        window.wait_until_active()
        self.assertEqual(self.open_contents(window, GERMAN).topic(), GERMAN.topics[0])


class WhileAToolRuns(HelpCase):
    def setUp(self):
        super().setUp()
        self.gate = self.folders.root / "gate"
        os.mkfifo(self.gate)
        self.gate_end = os.open(self.gate, os.O_RDWR)
        self.addCleanup(os.close, self.gate_end)
        self.addCleanup(self.end_tool)
        tool = self.folders.add_driver("Meter", "Download.EXE") / "Download.EXE"
        tool.write_text(f'#!/bin/sh\n: > "{self.notes}"\nread line < "{self.gate}"\n')
        tool.chmod(0o755)

    def end_tool(self):
        os.write(self.gate_end, b"\n")

    def start_tool(self):
        window = self.open()
        window.click(window.item("Meter"))
        wait_until(lambda: window.tool_button("Download").is_enabled(), "Download can be chosen")
        window.press_in_menu("alt+f", "w")
        wait_until(self.notes.exists, "the tool runs")
        return window

    def test_the_help_opens_and_is_used(self):
        window = self.start_tool()
        help_window = self.open_search(window)
        help_window.type(ENGLISH.keyword)
        window.program.press("Return")
        help_window.wait_for_topic(ENGLISH.topic)
        self.assertEqual(open_dialogs(window.program), [])
        window.program.press("Escape")
        window.wait_until_active()

    def test_the_program_ends_with_the_help_open(self):
        window = self.start_tool()
        self.open_contents(window)
        self.end(window)


if __name__ == "__main__":
    unittest.main()
