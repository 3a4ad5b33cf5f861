"""Translating phrases and loading dictionaries."""

import os
import pathlib
import tempfile

import dictionary_data
import measuring


def in_dictionary(place, folder):
    """Measures benchmarks of one dictionary, by their names."""
    environment = dict(os.environ, LC_ALL="C.UTF-8", TARVO_BENCH_DICTIONARY=str(folder))
    return lambda name: measuring.in_process(place.programs / "translate_bench", name, environment)


def comparisons(place):
    own = place.build / "translations" / "de" / "TARVO.DIC"
    for label, translations in (("2,000 phrases", dictionary_data.phrases(2000)),
                                ("the program's own, German", dictionary_data.phrases_of(own))):
        with tempfile.TemporaryDirectory(dir=place.data) as name:
            dictionary_data.make_dictionary(pathlib.Path(name), translations)
            measured = in_dictionary(place, name)
            if len(translations) == 2000:
                yield measuring.Comparison("`Translate` of 2,000 phrases", "`dgettext`", 0.35,
                                           measured("Translate"), measured("Dgettext"))
            yield measuring.Comparison(f"loading a dictionary, {label}", "`QTranslator::load`, `.qm`",
                                       1.5, measured("LoadDictionary"), measured("LoadQm"))
