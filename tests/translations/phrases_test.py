#!/usr/bin/env python3
"""Tests that every phrase of the program is translated, and that the check of it finds each fault."""

import pathlib
import shutil
import subprocess
import sys
import tempfile
import unittest

import check_phrases

SOURCE = pathlib.Path(sys.argv.pop(1))


class PhrasesTest(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.program = check_phrases.extract_phrases(SOURCE)

    def setUp(self):
        self.folder = tempfile.TemporaryDirectory()
        self.addCleanup(self.folder.cleanup)
        self.copies = pathlib.Path(self.folder.name)
        for file in (SOURCE / "translations").glob("*.po*"):
            shutil.copy(file, self.copies)

    def change(self, name, old, new):
        file = self.copies / name
        text = file.read_text(encoding="utf-8")
        self.assertIn(old, text)
        file.write_text(text.replace(old, new, 1), encoding="utf-8")

    def faults(self):
        return check_phrases.find_faults(self.copies, self.program)

    def expect_only(self, *beginnings):
        faults = self.faults()
        self.assertEqual(len(faults), len(beginnings), faults)
        for fault, beginning in zip(faults, sorted(beginnings)):
            self.assertTrue(fault.startswith(beginning), fault)

    def test_every_phrase_of_the_program_is_translated(self):
        self.assertEqual(self.faults(), [])

    def test_the_extraction_finds_calls_and_marked_captions(self):
        self.assertIn("%1 Downloads", self.program)
        self.assertIn("&File", self.program)
        self.assertIn("Large Icon View", self.program)

    def test_placeholders_are_not_for_translation(self):
        for phrase in self.program:
            self.assertNotIn("Code goes here!", phrase)

    def test_the_title_is_the_same_in_every_language(self):
        for language in check_phrases.LANGUAGES:
            phrases = check_phrases.read_phrases(self.copies / f"{language}.po")
            self.assertEqual(phrases["Tarvo"], ("Tarvo", False))

    def test_a_phrase_that_the_template_lacks_is_found(self):
        self.change("tarvo.pot", 'msgid "&File"\nmsgstr ""\n', "")
        self.expect_only('tarvo.pot: lacks "&File"')

    def test_a_new_phrase_of_the_program_is_found_everywhere(self):
        self.program = {**self.program, "New phrase": ("", False)}
        self.expect_only('tarvo.pot: lacks "New phrase"', 'de.po: "New phrase" is not translated',
                         'es.po: "New phrase" is not translated',
                         'fr.po: "New phrase" is not translated')

    def test_a_phrase_that_has_gone_is_found(self):
        self.change("tarvo.pot", 'msgid "&File"', 'msgid "Gone"\nmsgstr ""\n\nmsgid "&File"')
        self.change("fr.po", 'msgid "&File"', 'msgid "Gone"\nmsgstr "x"\n\nmsgid "&File"')
        self.expect_only('tarvo.pot: "Gone" has gone', 'fr.po: "Gone" has gone')

    def test_a_phrase_that_a_language_lacks_is_found(self):
        self.change("de.po", 'msgid "&File"\nmsgstr "&Datei"\n', "")
        self.expect_only('de.po: "&File" is not translated')

    def test_an_empty_translation_is_found(self):
        self.change("es.po", 'msgstr "&Archivo"', 'msgstr ""')
        self.expect_only('es.po: "&File" is not translated')

    def test_a_doubtful_translation_is_found(self):
        self.change("fr.po", 'msgid "&File"', '#, fuzzy\nmsgid "&File"')
        self.expect_only('fr.po: "&File" is marked fuzzy')

    def test_a_missing_access_key_is_found(self):
        self.change("de.po", 'msgstr "&Datei"', 'msgstr "Datei"')
        self.expect_only('de.po: "&File": the access key differs')

    def test_an_access_key_before_nothing_is_found(self):
        self.change("de.po", 'msgstr "&Datei"', 'msgstr "Datei&"')
        self.expect_only('de.po: "&File": the access key differs')

    def test_a_missing_parameter_is_found(self):
        self.change("fr.po", 'msgstr "Fichiers %1"', 'msgstr "Fichiers"')
        self.expect_only('fr.po: "%1 Downloads": the parameters differ')

    def test_a_file_that_msgfmt_refuses_is_found(self):
        self.change("es.po", 'msgstr "&Archivo"', 'msgstr "&Archivo')
        faults = self.faults()
        self.assertEqual(len(faults), 1, faults)
        self.assertIn("es.po", faults[0])

    def test_the_command_fails_with_the_faults_and_succeeds_without(self):
        command = [sys.executable, check_phrases.__file__, SOURCE, self.copies]
        good = subprocess.run(command, capture_output=True, text=True, check=False)
        self.assertEqual((good.returncode, good.stdout), (0, "Every phrase is translated.\n"))
        self.change("de.po", 'msgstr "&Datei"', 'msgstr ""')
        bad = subprocess.run(command, capture_output=True, text=True, check=False)
        self.assertEqual((bad.returncode, bad.stdout), (1, 'de.po: "&File" is not translated\n'))


if __name__ == "__main__":
    unittest.main()
