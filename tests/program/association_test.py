"""What opens CSV files: the question at the start and all that can come of it, on a desktop whose files
are the test's own."""

import gettext
import os
import shutil
import subprocess
import unittest

from dialogs import texts_of, wait_for_message
from main_window import MainWindow
from program import dictionary_folder
from program_test_case import ProgramTestCase
from waiting import wait_until

QUESTION = "Set CSV Viewer as default association?"
QUESTION_TITLE = "CSV Viewer not associated"
MISSING = "Association key is missing, please re-install to correct."
INCORRECT = "Association key is incorrect, please re-install to correct."
ASKED = "Tarvo_Association_Asked"

CHOICE = "[Default Applications]\ntext/csv=csvFile.desktop;\n"

# File permissions bind root, too, without these capabilities.
AS_ORDINARY_USER = () if os.geteuid() else ("setpriv", "--bounding-set=-dac_override,-dac_read_search")


def german(phrase):
    """The German text, read by another program than the one under test."""
    with open(dictionary_folder("de") / "TARVO.DIC", "rb") as file:
        return gettext.GNUTranslations(file).gettext(phrase)


class Desktop:
    """The folders in which a user's desktop keeps what opens which files. At first nothing opens CSV
    files and the viewer is not there."""

    def __init__(self, root):
        self.configuration = root / "config"
        self.system_configuration = root / "etc"
        self.data = root / "data"
        self.applications = root / "share" / "applications"
        self.opened = root / "opened"
        self._installed = []
        for folder in (self.configuration, self.system_configuration, self.data, self.applications):
            folder.mkdir(parents=True)
        self.choices = self.configuration / "mimeapps.list"
        self.environment = {
            "HOME": str(root),
            "XDG_CONFIG_HOME": str(self.configuration),
            "XDG_CONFIG_DIRS": str(self.system_configuration),
            "XDG_DATA_HOME": str(self.data),
            "XDG_DATA_DIRS": f"{self.applications.parent}:/usr/share",
        }

    def install(self, name, command):
        """Installs an application for CSV files, which comes behind those that are there; gives its
        desktop file."""
        path = self.applications / f"{name}.desktop"
        path.write_text(f"[Desktop Entry]\nType=Application\nName={name}\nExec={command}\n"
                        "MimeType=text/csv;\n")
        self._installed.append(path.name)
        (self.applications / "mimeinfo.cache").write_text(
            f"[MIME Cache]\ntext/csv={';'.join(self._installed)};\n")
        return path

    def install_viewer(self):
        """The viewer that is installed tells which file it was given."""
        viewer = self.applications.parent / "csvview"
        viewer.write_text(f'#!/bin/sh\nprintf %s "$1" > "{self.opened}.part"\n'
                          f'mv "{self.opened}.part" "{self.opened}"\n')
        viewer.chmod(0o755)
        self.install("csvFile", f"{viewer} %f")

    def run(self, session, *command):
        """What a tool of the desktop says on it."""
        done = subprocess.run(command, env={**session.environment, **self.environment},
                              stdout=subprocess.PIPE, text=True, check=True, timeout=60)
        return done.stdout.strip()

    def files(self):
        """The bytes of everything that a user or a system has chosen."""
        folders = (self.configuration, self.system_configuration, self.data, self.applications)
        return {path: path.read_bytes() for folder in folders for path in folder.rglob("*")
                if path.is_file()}


class AssociationCase(ProgramTestCase):
    def setUp(self):
        super().setUp()
        self.desktop = Desktop(self.folders.root / "desktop")

    def start(self, *arguments, **options):
        return super().start(*arguments, environment=self.desktop.environment, **options)

    def wait_for_box(self, program, title, text, *buttons):
        """Waits for a message box that must be this one."""
        box = wait_for_message(program)
        program.wait_for_active(title)
        self.assertEqual(texts_of(box), [text])
        self.assertEqual([node.name() for node in box.find_all("push button")], list(buttons))
        return box

    def wait_for_question(self, program):
        return self.wait_for_box(program, QUESTION_TITLE, QUESTION, "Yes", "No")

    def answer(self, program, box, button):
        """Presses a button; the main window must be there for the user afterwards, and it alone, which
        may have the same title."""
        wait_until(lambda: len(program.window_ids()) == 2, "main window and box can be seen")
        node = box.find("push button", button)
        node.do_action(node.action_names()[0])
        return self.main_window_alone(program)

    def main_window_alone(self, program):
        wait_until(lambda: len(program.window_ids()) == 1, "the box is gone")
        window = MainWindow(program)
        window.wait_until_active()
        return window

    def answer_and_close(self, program, button):
        self.close_properly(self.answer(program, self.wait_for_question(program), button))

    def start_and_answer(self, button, **options):
        self.answer_and_close(self.start(**options), button)

    def assert_not_asked(self, **options):
        """The main window is usable at once, and a program that asked would not end."""
        window = MainWindow(self.start(**options))
        self.close_properly(window)

    def assert_told(self, text):
        program = self.start()
        box = self.wait_for_box(program, "Tarvo", text, "OK")
        self.close_properly(self.answer(program, box, "OK"))

    def default(self):
        """What another program takes for the default application."""
        return self.desktop.run(self.session, "xdg-mime", "query", "default", "text/csv")


class TheQuestion(AssociationCase):
    def test_is_not_asked_where_the_viewer_opens_csv_files(self):
        self.desktop.install_viewer()
        self.desktop.choices.write_text(CHOICE)
        before = self.desktop.files()
        self.assert_not_asked()
        self.assertEqual(self.desktop.files(), before)
        self.assertNotIn(ASKED, self.folders.settings())

    def test_is_not_asked_where_the_viewer_has_a_class_of_another_name_and_capitals(self):
        self.desktop.install("org.example.Viewer", "wine /opt/TOOLS/CSVVIEW.EXE %f")
        self.assert_not_asked()

    def test_is_asked_where_nothing_opens_csv_files_or_another_program_does(self):
        self.start_and_answer("Yes")
        self.desktop.choices.unlink()
        self.desktop.install("sheet", "sheet %f")
        self.start_and_answer("Yes")

    def test_is_not_asked_in_a_silent_refresh(self):
        program = self.start("/r")
        self.assertEqual(program.wait_for_end(), 0, program.printed())
        self.assertEqual(self.desktop.files(), {})

    def test_is_asked_over_the_main_window(self):
        program = self.start()
        self.wait_for_question(program)
        self.assertTrue(MainWindow(program).node.is_showing())

    def test_is_asked_in_the_users_language(self):
        program = self.start(launcher=True, language="de_DE.UTF-8")
        box = self.wait_for_box(program, german(QUESTION_TITLE), german(QUESTION), "Ja", "Nein")
        self.close_properly(self.answer(program, box, "Ja"))
        program = self.start(launcher=True, language="de_DE.UTF-8")
        self.wait_for_box(program, "Tarvo", german(MISSING), "OK")
        self.desktop.install("csvFile", "sheet %f")
        program = self.start(launcher=True, language="de_DE.UTF-8")
        self.wait_for_box(program, "Tarvo", german(INCORRECT), "OK")


class AfterYes(AssociationCase):
    def setUp(self):
        super().setUp()
        self.desktop.install("sheet", "sheet %f")

    def test_csv_files_open_in_the_viewer_and_nobody_asks_again(self):
        self.desktop.install_viewer()
        self.start_and_answer("Yes")
        self.assertEqual(self.default(), "csvFile.desktop")
        self.assertEqual(self.desktop.choices.read_text(), CHOICE)
        self.assertNotIn(ASKED, self.folders.settings(), "the answer is not recorded")
        self.assert_not_asked()

    @unittest.skipUnless(shutil.which("gio"), "gio is not installed")
    def test_a_double_click_on_a_csv_file_starts_the_viewer(self):
        self.desktop.install_viewer()
        self.start_and_answer("Yes")
        shown = self.desktop.run(self.session, "gio", "mime", "text/csv")
        self.assertIn("csvFile.desktop", shown.splitlines()[0])
        file = self.folders.root / "a file.csv"
        file.write_text("1,2\n")
        self.desktop.run(self.session, "gio", "open", str(file))
        wait_until(self.desktop.opened.exists, "the viewer has got the file")
        self.assertEqual(self.desktop.opened.read_text(), str(file))

    def test_without_a_viewer_every_later_start_says_that_its_key_is_missing(self):
        self.start_and_answer("Yes")
        self.assertEqual(self.desktop.choices.read_text(), CHOICE)
        for _ in range(2):
            self.assert_told(MISSING)
        self.assertEqual(self.desktop.choices.read_text(), CHOICE)
        self.desktop.install_viewer()
        self.assert_not_asked()

    def test_a_viewers_key_that_names_another_program_is_told_of_at_every_later_start(self):
        installed = self.desktop.install("csvFile", "sheet %f")
        self.desktop.choices.write_text(CHOICE)
        before = self.desktop.files()
        for _ in range(2):
            self.assert_told(INCORRECT)
        self.assertEqual(self.desktop.files(), before)
        installed.unlink()
        self.assert_told(MISSING)

    def test_the_users_other_choices_stay_as_they_are(self):
        before = ("# mine\n[Added Associations]\nimage/png=viewer.desktop;\n\n"
                  "[Default Applications]\ntext/plain=editor.desktop\ntext/csv=sheet.desktop\n"
                  "image/png=viewer.desktop\n")
        self.desktop.install_viewer()
        self.desktop.choices.write_text(before)
        self.start_and_answer("Yes")
        self.assertEqual(self.desktop.choices.read_text(),
                         before.replace("=sheet.desktop", "=csvFile.desktop;"))
        self.assertEqual(self.default(), "csvFile.desktop")

    def test_nothing_is_lost_of_a_malformed_list_of_choices(self):
        self.desktop.install_viewer()
        cases = {
            "no group": b"text/csv=sheet.desktop\nno key\n",
            "half a group": b"[Default Applications\ntext/plain=editor.desktop\n=\n;;\n",
            "other bytes": bytes(range(1, 256)) + b"\n\xff\xfe[Default\n",
            "line ends": b"\r\n[Added Associations]\r\nimage/png=viewer.desktop\r\n\r\n",
            "no last line end": b"[Added Associations]\nimage/png=viewer.desktop",
        }
        for name, content in cases.items():
            with self.subTest(name):
                self.desktop.choices.write_bytes(content)
                self.start_and_answer("Yes")
                after = self.desktop.choices.read_bytes()
                self.assertEqual(after[: len(content)], content)
                self.assertIn(b"[Default Applications]", after[len(content) :])
                self.assertIn(b"text/csv=csvFile.desktop;", after[len(content) :])
                self.assertEqual(self.default(), "csvFile.desktop")
                self.assert_not_asked()

    def test_choices_that_lie_elsewhere_are_changed_there(self):
        self.desktop.install_viewer()
        elsewhere = self.folders.root / "dotfiles"
        elsewhere.write_text("[Default Applications]\ntext/plain=editor.desktop\n")
        self.desktop.choices.symlink_to(elsewhere)
        self.start_and_answer("Yes")
        self.assertTrue(self.desktop.choices.is_symlink())
        self.assertIn("text/csv=csvFile.desktop;", elsewhere.read_text())
        self.assertIn("text/plain=editor.desktop", elsewhere.read_text())


class AfterYesWhereNothingMayBeWritten(AssociationCase):
    def setUp(self):
        super().setUp()
        self.desktop.install("sheet", "sheet %f")
        self.desktop.install_viewer()

    def protect(self, path, mode):
        self.addCleanup(path.chmod, path.stat().st_mode)
        path.chmod(mode)

    def assert_asked_in_vain_at_each_start(self):
        before = self.desktop.files()
        for _ in range(2):
            self.start_and_answer("Yes", through=AS_ORDINARY_USER)
            self.assertEqual(self.desktop.files(), before)
        self.assertNotIn(ASKED, self.folders.settings())

    def test_a_read_only_list_of_choices_stays_and_the_question_comes_again(self):
        self.desktop.choices.write_text("[Default Applications]\ntext/plain=editor.desktop\n")
        self.protect(self.desktop.choices, 0o444)
        self.assert_asked_in_vain_at_each_start()
        self.assertEqual(self.desktop.choices.stat().st_mode & 0o777, 0o444)

    def test_a_read_only_folder_stays_and_the_question_comes_again(self):
        self.protect(self.desktop.configuration, 0o555)
        self.assert_asked_in_vain_at_each_start()

    def test_a_folder_in_place_of_the_list_stays_and_the_question_comes_again(self):
        self.desktop.choices.mkdir()
        (self.desktop.choices / "kept").write_text("kept\n")
        self.assert_asked_in_vain_at_each_start()


class AfterNo(AssociationCase):
    def test_nobody_asks_again_and_the_desktop_is_as_it_was(self):
        self.desktop.install("sheet", "sheet %f")
        before = self.desktop.files()
        self.start_and_answer("No")
        self.assertEqual(self.folders.settings()[ASKED], "Yes")
        self.assertEqual(self.desktop.files(), before)
        for _ in range(2):
            self.assert_not_asked()

    def test_a_viewer_whose_key_is_missing_is_not_told_of_either(self):
        self.start_and_answer("No")
        self.desktop.choices.write_text(CHOICE)
        self.assert_not_asked()

    def test_escape_means_no(self):
        program = self.start()
        self.wait_for_question(program)
        program.press("Escape")
        self.close_properly(self.main_window_alone(program))
        self.assertEqual(self.folders.settings()[ASKED], "Yes")

    def test_any_other_recorded_answer_than_a_plain_no_is_a_no_for_ever(self):
        for recorded in ("no", "NO", "Yes", " No"):
            with self.subTest(recorded=recorded):
                self.folders.write_settings({ASKED: recorded})
                self.assert_not_asked()
        self.folders.write_settings({ASKED: "No"})
        self.wait_for_question(self.start())


if __name__ == "__main__":
    unittest.main()
