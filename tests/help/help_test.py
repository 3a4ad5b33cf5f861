#!/usr/bin/env python3
"""Tests that the help is complete in every language, that the check of it finds each fault, and that the
assembled file is a document that a browser shows."""

import html.parser
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile
import unittest

import check_help

SOURCE = pathlib.Path(sys.argv.pop(1))
BUILDER = SOURCE / "help" / "build_help.py"
EMPTY_ELEMENTS = {"meta", "br"}


class HelpSourcesTest(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.copies = pathlib.Path(folder.name)
        for language in check_help.LANGUAGES:
            shutil.copy(SOURCE / "help" / f"{language}.html", self.copies)

    def change(self, name, old, new, count=1):
        file = self.copies / name
        text = file.read_text(encoding="utf-8")
        self.assertIn(old, text)
        file.write_text(text.replace(old, new, count), encoding="utf-8")

    def remove_topic(self, name, identifier):
        file = self.copies / name
        text = file.read_text(encoding="utf-8")
        shorter = re.sub(rf'<topic id="{identifier}".*?</topic>', "", text, flags=re.DOTALL)
        self.assertNotEqual(shorter, text)
        file.write_text(shorter, encoding="utf-8")

    def faults(self):
        return check_help.find_faults(SOURCE, self.copies)

    def expect(self, *faults):
        found = self.faults()
        for fault in faults:
            self.assertIn(fault, found)

    def test_the_help_tells_of_everything_in_every_language(self):
        self.assertEqual(self.faults(), [])

    def test_a_language_that_lacks_a_topic_is_found(self):
        self.remove_topic("fr.html", "first-steps")
        self.expect('fr.html: lacks the topic "first-steps"')

    def test_a_topic_that_only_one_language_has_is_found(self):
        self.remove_topic("en.html", "first-steps")
        self.expect('de.html: has the topic "first-steps", which en.html lacks')

    def test_topics_in_another_order_are_found(self):
        self.change("es.html", 'id="views"', 'id="x"')
        self.change("es.html", 'id="toolbar"', 'id="views"')
        self.change("es.html", 'id="x"', 'id="toolbar"')
        self.expect("es.html: has the topics in another order than en.html")

    def test_a_link_to_no_topic_is_found(self):
        self.change("de.html", 'href="backup"', 'href="backups"')
        self.expect('de.html: first-steps: links to "backups", which is no topic')

    def test_a_topic_without_a_keyword_is_found(self):
        self.change("de.html", 'keywords="Menü; Befehle"', 'keywords=" ; "')
        self.expect("de.html: menus: has no keyword")

    def test_a_keyword_that_stands_twice_is_found(self):
        self.change("fr.html", 'keywords="menu; commandes"', 'keywords="menu; Ménu"')
        self.expect("fr.html: menus: has a keyword twice")

    def test_two_topics_with_one_id_are_found(self):
        self.change("en.html", 'id="views"', 'id="list"')
        self.expect("en.html: two topics have the same id")

    def test_an_element_that_the_window_would_refuse_is_found(self):
        self.change("en.html", "<p>A driver comes", "<p><img/>A driver comes")
        self.expect("en.html: adding: <img> is no element of a topic")

    def test_a_missing_label_is_found(self):
        self.change("de.html", 'show="&amp;Anzeigen"', 'show=""')
        self.expect("de.html: has no show")

    def test_a_name_that_the_program_does_not_show_is_found(self):
        self.change("de.html", "<b>Aktualisieren</b>", "<b>Auffrischen</b>")
        self.expect('de.html: list: the program shows no "Auffrischen"')

    def test_a_message_that_the_program_does_not_show_is_found(self):
        self.change("en.html", "<i>Are you sure?</i>", "<i>Really?</i>")
        self.expect('en.html: removing: the program shows no "Really?"')

    def test_a_phrase_of_the_program_that_no_topic_mentions_is_found(self):
        self.change("es.html", "<b>Visor CSV no asociado</b>", "Visor CSV no asociado")
        self.expect('es.html: no topic mentions "CSV Viewer not associated"')

    def test_a_menu_entry_that_its_topic_lacks_is_found(self):
        self.change("en.html", "<tr><td><b>Line Up Icons</b></td>", "<tr><td>Icons</td>")
        self.expect('en.html: menu-view: lacks "Li&ne Up Icons"')

    def test_a_button_that_its_topic_lacks_is_found(self):
        self.change("fr.html", "<tr><td><b>Envoyer</b></td><td>envoie", "<tr><td>Envoi</td><td>envoie")
        self.expect('fr.html: toolbar: lacks "Upload"')

    def test_switches_that_are_missing_or_do_not_exist_are_found(self):
        self.change("en.html", "<tr><td><code>/v</code>", "<tr><td><code>/x</code>")
        self.change("en.html", "with <code>/v</code>, so", "so")
        self.expect('en.html: switches: "/v" is missing or does not exist',
                    'en.html: switches: "/x" is missing or does not exist')

    def test_a_command_of_tarvoctl_that_does_not_exist_is_found(self):
        self.change("de.html", "tarvoctl drivers list", "tarvoctl drivers show")
        self.expect('de.html: tarvoctl: there is no command "tarvoctl drivers show"')

    def test_a_setting_that_does_not_exist_is_found(self):
        self.change("de.html", "<td><code>Tarvo_ProgramPath</code>", "<td><code>Tarvo_HelpPath</code>")
        self.expect('de.html: settings: there is no setting "Tarvo_HelpPath"')

    def test_the_commands_fail_with_the_faults(self):
        self.change("de.html", 'href="backup"', 'href="backups"')
        fault = 'de.html: first-steps: links to "backups", which is no topic\n'
        check = subprocess.run([sys.executable, "-B", check_help.__file__, SOURCE, self.copies],
                               capture_output=True, text=True, check=False)
        self.assertEqual((check.returncode, check.stdout), (1, fault))
        sources = [self.copies / f"{language}.html" for language in check_help.LANGUAGES]
        output = self.copies / "TARVO.HLP"
        build = subprocess.run([sys.executable, "-B", BUILDER, output, *sources],
                               capture_output=True, text=True, check=False)
        self.assertEqual((build.returncode, build.stderr), (1, fault))
        self.assertFalse(output.exists())

    def test_a_source_that_is_not_well_formed_is_refused(self):
        self.change("de.html", "</topic>", "")
        build = subprocess.run([sys.executable, "-B", BUILDER, self.copies / "TARVO.HLP", self.copies / "de.html"],
                               capture_output=True, text=True, check=False)
        self.assertEqual(build.returncode, 1)
        self.assertIn("de.html", build.stderr)


class Document(html.parser.HTMLParser):
    """Every element with its attributes and the languages of those around it; elements are closed in turn."""

    def __init__(self, text):
        super().__init__()
        self.open = []
        self.elements = []
        self.faults = []
        self.feed(text)
        self.close()
        self.faults += [f"<{tag}> is not closed" for tag, _ in self.open]

    def handle_starttag(self, tag, attrs):
        attributes = dict(attrs)
        around = self.open[-1][1] if self.open else ""
        language = attributes.get("lang", around)
        self.elements.append((tag, attributes, around))
        if tag not in EMPTY_ELEMENTS:
            self.open.append((tag, language))

    def handle_endtag(self, tag):
        if not self.open or self.open.pop()[0] != tag:
            self.faults.append(f"</{tag}> closes another element at {self.getpos()}")


class AssembledHelpTest(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        with tempfile.TemporaryDirectory() as folder:
            output = pathlib.Path(folder) / "TARVO.HLP"
            sources = [SOURCE / "help" / f"{language}.html" for language in check_help.LANGUAGES]
            subprocess.run([sys.executable, "-B", BUILDER, output, *sources], check=True)
            cls.text = output.read_text(encoding="utf-8")
        cls.document = Document(cls.text)

    def having(self, tag):
        return [attributes for name, attributes, _ in self.document.elements if name == tag]

    def test_it_is_a_document_of_its_own(self):
        self.assertTrue(self.text.startswith("<!DOCTYPE html>\n<html lang=\"en\">\n"))
        self.assertEqual(self.document.faults, [])
        self.assertIn({"charset": "utf-8"}, self.having("meta"))
        self.assertEqual(len(self.having("title")), 1)
        outside = re.findall(r"""(?:src|href)="(?!#)[^"]*"|url\(|@import""", self.text)
        self.assertEqual(outside, [])

    def test_every_link_has_a_target_and_every_id_is_unique(self):
        ids = [attributes["id"] for _, attributes, _ in self.document.elements if "id" in attributes]
        self.assertEqual(len(ids), len(set(ids)))
        targets = {attributes["href"] for attributes in self.having("a")}
        self.assertGreater(len(targets), 100)
        self.assertEqual(targets - {f"#{identifier}" for identifier in ids}, set())

    def test_each_language_has_its_section_and_is_offered_at_the_top(self):
        sections = [(attributes["lang"], attributes["id"]) for attributes in self.having("section")]
        self.assertEqual(sections, [(language, language) for language in check_help.LANGUAGES])
        for language in check_help.LANGUAGES:
            self.assertIn({"href": f"#{language}", "lang": language}, self.having("a"))

    def test_links_stay_in_their_language(self):
        for tag, attributes, around in self.document.elements:
            if tag == "a" and "lang" not in attributes:
                self.assertTrue(attributes["href"].startswith(f"#{around}-"), attributes)

    def test_every_topic_is_in_the_contents_and_in_the_index(self):
        for language in check_help.LANGUAGES:
            links = [attributes["href"] for attributes in self.having("a")]
            for attributes in self.having("article"):
                self.assertGreaterEqual(links.count(f"#{attributes['id']}"), 2, attributes["id"])
            section = self.text[self.text.index(f'<section id="{language}"'):]
            self.assertEqual(section[:section.index("</section>")].count("<nav>"), 2)

    def test_the_index_ignores_letter_case_and_accents(self):
        words = re.findall(r"<li>([^<]+): <a", self.text[self.text.rindex("<nav>"):])
        self.assertGreater(len(words), 50)
        builder = check_help.load_module(BUILDER)
        self.assertEqual(words, sorted(words, key=lambda word: (builder.fold(word), word)))
        self.assertEqual(builder.fold("Ärger ÉCRAN"), "arger ecran")


if __name__ == "__main__":
    unittest.main()
