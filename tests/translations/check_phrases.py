#!/usr/bin/env python3
"""Checks the phrase files against the phrases of the sources.

check_phrases.py SOURCE_FOLDER [TRANSLATIONS_FOLDER]

Prints one line for every fault and ends with 1 when there is one: a phrase of the program that the
template lacks or that has gone from the program, a phrase that a language lacks, leaves untranslated or
marks as doubtful, an access key or a "%1" that a translation lacks, and whatever msgfmt finds.
"""

import ast
import pathlib
import re
import subprocess
import sys
import tempfile

LANGUAGES = ("de", "es", "fr")


def run(*command):
    return subprocess.run([str(part) for part in command], capture_output=True, text=True, check=False)


def read_phrases(file):
    """The living entries of a phrase file: {phrase: (translation, is doubtful)}."""
    phrases = {}
    fields = {}
    flags = set()

    def finish():
        if "msgid" in fields:
            phrases[fields["msgid"]] = (fields.get("msgstr", ""), "fuzzy" in flags)
        fields.clear()
        flags.clear()

    field = None
    for line in pathlib.Path(file).read_text(encoding="utf-8").splitlines():
        if line.startswith("#,"):
            flags.update(flag.strip() for flag in line[2:].split(","))
        start = re.match(r'(msgid|msgstr) (".*")$', line)
        if start:
            field = start[1]
            fields[field] = ast.literal_eval(start[2])
        elif line.startswith('"') and field:
            fields[field] += ast.literal_eval(line)
        elif not line.strip():
            finish()
    finish()
    phrases.pop("", None)
    return phrases


def extract_phrases(source):
    with tempfile.TemporaryDirectory() as folder:
        template = pathlib.Path(folder) / "tarvo.pot"
        result = run(source / "translations" / "extract", template)
        if result.returncode != 0:
            raise SystemExit(f"cannot extract the phrases: {result.stderr}")
        return read_phrases(template)


def access_keys(text):
    return re.findall(r"&(\w)", text.replace("&&", ""))


def faults_of_template(translations, program):
    template = read_phrases(translations / "tarvo.pot")
    for phrase in program.keys() - template.keys():
        yield f'tarvo.pot: lacks "{phrase}"; run translations/update'
    for phrase in template.keys() - program.keys():
        yield f'tarvo.pot: "{phrase}" has gone from the program; run translations/update'


def faults_of_translation(phrase, translation):
    if len(access_keys(phrase)) != len(access_keys(translation)):
        yield "the access key differs"
    if sorted(re.findall(r"%\d", phrase)) != sorted(re.findall(r"%\d", translation)):
        yield "the parameters differ"
    if phrase.endswith("...") != translation.endswith("..."):
        yield 'the "..." at the end differs'


def faults_of_language(translations, language, program):
    file = translations / f"{language}.po"
    result = run("msgfmt", "--check", "--output-file=/dev/null", file)
    if result.returncode != 0:
        yield f"{file.name}: {result.stderr.strip()}"
        return
    phrases = read_phrases(file)
    for phrase in program:
        translation, is_doubtful = phrases.get(phrase, ("", False))
        if not translation.strip():
            yield f'{file.name}: "{phrase}" is not translated'
            continue
        if is_doubtful:
            yield f'{file.name}: "{phrase}" is marked fuzzy'
        for fault in faults_of_translation(phrase, translation):
            yield f'{file.name}: "{phrase}": {fault}: "{translation}"'
    for phrase in phrases.keys() - program.keys():
        yield f'{file.name}: "{phrase}" has gone from the program; run translations/update'


def find_faults(translations, program):
    faults = list(faults_of_template(translations, program))
    for language in LANGUAGES:
        faults.extend(faults_of_language(translations, language, program))
    return sorted(faults)


def main(arguments):
    source = pathlib.Path(arguments[0])
    translations = pathlib.Path(arguments[1]) if len(arguments) > 1 else source / "translations"
    faults = find_faults(translations, extract_phrases(source))
    print("\n".join(faults) if faults else "Every phrase is translated.")
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
