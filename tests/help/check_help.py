#!/usr/bin/env python3
"""Checks the sources of the help against the program.

check_help.py SOURCE_FOLDER [HELP_FOLDER]

Prints one line for every fault and ends with 1 when there is one: whatever build_help.py refuses, a name
in bold or a message in italics that the program does not show in that language, a phrase of the program
that no topic mentions, a menu entry or a button that its topic lacks, a switch, a command of tarvoctl or
a setting that does not exist or is missing.
"""

import importlib.util
import pathlib
import re
import sys

LANGUAGES = ("en", "de", "fr", "es")

# Phrases that need no explanation.
UNEXPLAINED = {"Tarvo", "Version", "Version ?.??", "Warning: ...",
               "Copyright © 2026 Halvex Limited. All rights reserved."}

TOPIC_OF_MENU = {"mnuFile": "menu-file", "mnuView": "menu-view", "mnuList": "menu-view", "mnuHelp": "menu-help"}


def load_module(file):
    spec = importlib.util.spec_from_file_location(file.stem, file)
    module = importlib.util.module_from_spec(spec)
    spec.loader.exec_module(module)
    return module


class Program:
    """What the sources of the program say that it shows and understands."""

    def __init__(self, source):
        self.source = source
        phrases = load_module(source / "tests" / "translations" / "check_phrases.py")
        translations = source / "translations"
        english = phrases.read_phrases(translations / "tarvo.pot")
        self.phrases = {"en": {phrase: phrase for phrase in english}}
        for language in LANGUAGES[1:]:
            entries = phrases.read_phrases(translations / f"{language}.po")
            self.phrases[language] = {phrase: entries[phrase][0] for phrase in english if phrase in entries}
        window = self.text("catalogue/main_window.cpp")
        self.menu_entries = re.findall(r'Entry\(\w+(?:\[\w+\])?, "(\w+)", Phrase\("([^"]+)"\)\)', window)
        self.tool_tips = re.findall(r'Button\("\w+", Phrase\("([^"]+)"\)', window)
        self.placeholders = re.findall(r'"([^"\n]+ goes here!)"', self.texts("."))
        # Other folders start other programs, with switches of theirs.
        self.switches = set(re.findall(r'"(/[a-z])"', self.texts("app") + self.texts("ui")))
        self.settings = set(re.findall(r'"_?(\w+)"', self.text("app/globals/settings_keys.h")))
        self.terminal_commands = re.findall(r'^ +\{"([a-z ]+)", "', self.text("ctl/terminal_program.cpp"), re.MULTILINE)

    def text(self, file):
        return (self.source / "src" / file).read_text(encoding="utf-8")

    def texts(self, folder):
        """All sources below a folder."""
        files = sorted((self.source / "src" / folder).rglob("*.[ch]*"))
        return "".join(file.read_text(encoding="utf-8") for file in files if file.suffix in (".cpp", ".h"))

    def shown(self, language, phrase):
        return plain(self.phrases[language].get(phrase, phrase))


def plain(text):
    """A caption as it is read: without access keys and with plain blanks."""
    return " ".join(text.replace("&", "").replace("\u00a0", " ").split())


def text_of(element):
    return plain("".join(element.itertext()))


def pattern_of(phrase):
    """Matches a phrase with its parameters filled in; also in parentheses, as the list shows an entry."""
    filled = re.sub(r"%\d", ".+", re.escape(phrase))
    return re.compile(rf"{filled}|\({filled}\)")


def marked(topic, tag):
    """The texts of a topic that stand for something that the program shows."""
    return [text_of(element) for element in topic.element.iter(tag) if not element.get("class")]


def code_of(topic):
    return [text_of(element) for element in topic.element.iter() if element.tag in ("code", "pre")]


def faults_of_names(program, language):
    shown = {program.shown(language.code, phrase) for phrase in program.phrases["en"]}
    names = [pattern_of(phrase) for phrase in shown]
    messages = [re.compile(re.escape(text)) for text in program.placeholders] + names
    for topic in language.topics:
        for tag, patterns in (("b", names), ("i", messages)):
            for text in marked(topic, tag):
                if not any(pattern.fullmatch(text) for pattern in patterns):
                    yield f'{language.file.name}: {topic.id}: the program shows no "{text}"'


def faults_of_coverage(program, language):
    texts = [text for topic in language.topics for tag in ("b", "i") for text in marked(topic, tag)]
    for phrase in [*program.phrases["en"], *program.placeholders]:
        pattern = pattern_of(program.shown(language.code, phrase))
        if phrase not in UNEXPLAINED and not any(pattern.fullmatch(text) for text in texts):
            yield f'{language.file.name}: no topic mentions "{phrase}"'


def faults_of_commands(program, language):
    wanted = [(TOPIC_OF_MENU[name[:7]], caption) for name, caption in program.menu_entries]
    wanted += [("toolbar", tip) for tip in program.tool_tips]
    for identifier, phrase in wanted:
        topic = language.by_id.get(identifier)
        if topic is None or program.shown(language.code, phrase) not in marked(topic, "b"):
            yield f'{language.file.name}: {identifier}: lacks "{phrase}"'


def faults_of_code(program, language):
    name = language.file.name
    codes = [(topic, code) for topic in language.topics for code in code_of(topic)]
    for topic, code in codes:
        command = re.match(r"tarvoctl ([a-z ]*[a-z])", code)
        if command and not any(f"{command[1]} ".startswith(f"{known} ") for known in program.terminal_commands):
            yield f'{name}: {topic.id}: there is no command "{code}"'
    switches = {code for topic, code in codes if topic.id == "switches" and re.fullmatch("/[a-z]", code)}
    for switch in switches ^ program.switches:
        yield f'{name}: switches: "{switch}" is missing or does not exist'
    for row in language.by_id["settings"].element.iter("tr"):
        key = row.find("td/code")
        if key is not None and not re.sub("^Tarvo_(?=Settings)|^Tarvo(?=Settings)", "", key.text) in program.settings:
            yield f'{name}: settings: there is no setting "{key.text}"'


def find_faults(source, folder):
    builder = load_module(source / "help" / "build_help.py")
    program = Program(source)
    languages = [builder.Language(folder / f"{code}.html") for code in LANGUAGES]
    faults = builder.find_faults(languages)
    if faults:
        return faults
    for language in languages:
        for check in (faults_of_names, faults_of_coverage, faults_of_commands, faults_of_code):
            faults.extend(check(program, language))
    return faults


def main(arguments):
    source = pathlib.Path(arguments[0])
    folder = pathlib.Path(arguments[1]) if len(arguments) > 1 else source / "help"
    faults = find_faults(source, folder)
    print("\n".join(faults) if faults else "The help tells of everything.")
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
