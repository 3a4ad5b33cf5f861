"""What a driver, a setting or a phrase costs when there are more and more of them."""

import os
import pathlib
import tempfile

import catalogue_data
import dictionary_data
import measuring
from report import Growth

_SIZES = (10, 100, 1000, 10_000)
_FILES = 20  # of each driver
# Where one run of the work takes longer than this, in microseconds, ten times as many are not tried.
_LONGEST = 2e6


def measure(place, rounds, report):
    for work, unit, time_of in (
            ("listing drivers, no version recorded", "driver", _listing(place, False)),
            ("listing drivers, three versions recorded for each", "driver", _listing(place, True)),
            ("`GetSetting` of one key among so many", "setting in the file",
             _setting(place, "GetSetting")),
            ("`SaveSetting` of an existing key among so many", "setting in the file",
             _setting(place, "SaveSetting")),
            ("`Translate` of a dictionary's phrases", "phrase", _phrases(place, "Translate")),
            ("loading a dictionary", "phrase", _phrases(place, "LoadDictionary"))):
        print(f"measuring: {work}", flush=True)
        report.growths.append(Growth(work, unit, _times(time_of, rounds)))


def _times(time_of, rounds):
    times = {}
    for size in _SIZES:
        times[size] = time_of(size, rounds) / size
        if times[size] * size > _LONGEST:
            break
    return times


_MICROSECONDS = {"ns": 1e-3, "us": 1.0, "ms": 1e3, "s": 1e6}


def _median(program, name, environment, rounds):
    """The median of the processor time of one benchmark, in microseconds."""
    runs = measuring.benchmarks(program, name, environment, "--benchmark_min_time=0.05",
                                f"--benchmark_repetitions={max(rounds, 2)}")
    median, = (run for run in runs if run.get("aggregate_name") == "median")
    return median["cpu_time"] * _MICROSECONDS[median["time_unit"]]


def _listing(place, with_versions):
    def time_of(size, rounds):
        with tempfile.TemporaryDirectory(dir=place.data) as documents:
            catalogue_data.make_catalogue(documents, with_versions, size, _FILES)
            environment = dict(os.environ, TARVO_COMMON_DOCUMENTS=documents)
            return _median(place.programs / "catalogue_bench", "List", environment, rounds)

    return time_of


def _setting(place, name):
    environment = dict(os.environ, TMPDIR=str(place.data))
    return lambda size, rounds: _median(place.programs / "settings_bench", f"{name}/{size}",
                                        environment, rounds)


def _phrases(place, name):
    def time_of(size, rounds):
        with tempfile.TemporaryDirectory(dir=place.data) as folder:
            dictionary_data.make_dictionary(pathlib.Path(folder), dictionary_data.phrases(size))
            environment = dict(os.environ, LC_ALL="C.UTF-8", TARVO_BENCH_DICTIONARY=folder)
            program = place.programs / "translate_bench"
            return _median(program, name, environment, rounds)

    return time_of
