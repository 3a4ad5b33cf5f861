"""Makes one dictionary in the forms of Tarvo, gettext and Qt, as translate_bench.cpp describes them."""

import gettext
import pathlib
import random
import shutil
import subprocess
import xml.sax.saxutils

_SEED = 20260118
_LRELEASE = "/usr/lib/qt6/bin/lrelease"
_WORDS = """add all channel check close connect data date device download driver error field file folder
from help icon install link list log meter name new no of open port read refresh remove sample save select
serial setting show station status the time to tool transfer unit update upload value version view write
""".split()
_HEADER = ('msgid ""\nmsgstr ""\n"Content-Type: text/plain; charset=UTF-8\\n"\n'
           '"Content-Transfer-Encoding: 8bit\\n"\n"Language: de\\n"\n\n')


def phrases(count):
    """So many different phrases of two to eight words, each with a translation."""
    chance = random.Random(_SEED)
    made = {}
    while len(made) < count:
        words = chance.choices(_WORDS, k=chance.randint(2, 8))
        english = " ".join(words).capitalize()
        made[english] = "Übersetzt: " + " ".join(reversed(words))
    return made


def phrases_of(dictionary):
    """The phrases of a dictionary of the program, which are all of one line."""
    with pathlib.Path(dictionary).open("rb") as file:
        catalogue = gettext.GNUTranslations(file)._catalog
    return {english: translation for english, translation in catalogue.items()
            if isinstance(english, str) and english and "\n" not in english + translation}


def _quoted(text):
    return '"' + text.replace("\\", "\\\\").replace('"', '\\"') + '"'


def _ts_file(translations):
    messages = "".join(
        f"<message><source>{xml.sax.saxutils.escape(english)}</source>"
        f"<translation>{xml.sax.saxutils.escape(translation)}</translation></message>\n"
        for english, translation in translations.items())
    return ('<?xml version="1.0" encoding="utf-8"?>\n<!DOCTYPE TS>\n<TS version="2.1" language="de">\n'
            f"<context><name>Tarvo</name>\n{messages}</context>\n</TS>\n")


def make_dictionary(folder, translations):
    """`translations` gives the translation of each phrase."""
    messages = folder / "de" / "LC_MESSAGES"
    messages.mkdir(parents=True)
    entries = (f"msgid {_quoted(english)}\nmsgstr {_quoted(translation)}\n\n"
               for english, translation in translations.items())
    (folder / "phrases.po").write_text(_HEADER + "".join(entries))
    subprocess.run(["msgfmt", "-o", messages / "phrases.mo", folder / "phrases.po"], check=True)
    shutil.copy(messages / "phrases.mo", folder / "TARVO.DIC")
    (folder / "phrases.ts").write_text(_ts_file(translations))
    subprocess.run([_LRELEASE, "-silent", folder / "phrases.ts", "-qm", folder / "phrases.qm"],
                   check=True)
    # Asked for in another order than that of any file. Tarvo alone fills parameters in.
    asked = [pair for pair in translations.items() if "%" not in pair[0]]
    random.Random(_SEED).shuffle(asked)
    (folder / "phrases.txt").write_text("".join(f"{one}\n{other}\n" for one, other in asked))
