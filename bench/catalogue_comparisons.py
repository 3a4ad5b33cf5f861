"""Counting data files and listing drivers."""

import os
import re
import tempfile

import catalogue_data
import measuring

_FILES = [("20,000 files", 100), ("200,000 files", 1000)]  # in all and for each driver
_ROW = re.compile(r"^Driver \d+ +(\d+) +(\d+) +(\d+)", re.MULTILINE)


def comparisons(place):
    for label, files in _FILES:
        with tempfile.TemporaryDirectory(dir=place.data) as documents:
            drivers = catalogue_data.make_catalogue(documents, with_versions=False, files=files)
            yield _counting(place, documents, label)
            yield _listing(place, documents, drivers, files, label)
    with tempfile.TemporaryDirectory(dir=place.data) as documents:
        catalogue_data.make_catalogue(documents, with_versions=True)
        yield measuring.Comparison(
            "building the list of these drivers, 20,000 files, 600 versions recorded, in process",
            "one `std::filesystem` pass", None, _in_process(place, documents, "List"),
            _in_process(place, documents, "Pass"))


def _in_process(place, documents, name):
    environment = dict(os.environ, TARVO_COMMON_DOCUMENTS=str(documents))
    return measuring.in_process(place.programs / "catalogue_bench", name, environment)


def _counting(place, documents, label):
    return measuring.Comparison(
        f"counting three patterns over 200 drivers, {label}, in process",
        "one `std::filesystem` pass", 0.50, _in_process(place, documents, "Count"),
        _in_process(place, documents, "Pass"))


def _listing(place, documents, drivers, files, label):
    environment = dict(os.environ, LC_ALL="C.UTF-8", TARVO_COMMON_DOCUMENTS=str(documents))
    wanted = int(catalogue_data.DRIVERS * files * catalogue_data.COUNTED_SHARE)

    def listed(outputs):
        counts = [int(count) for row in _ROW.findall(outputs[0]) for count in row]
        if len(counts) != 3 * catalogue_data.DRIVERS or sum(counts) != wanted:
            raise RuntimeError(f"tarvoctl lists {sum(counts)} files of {len(counts) / 3} drivers")

    def found(outputs):
        if outputs[0].count("\n") != wanted:
            raise RuntimeError("find does not find what was made")

    names = ["(", "-name", "*.csv", "-o", "-name", "*.asc", "-o", "-name", "*.txt", ")"]
    return measuring.Comparison(
        f"`tarvoctl drivers list`, 200 drivers, {label}", "one `find` with three name tests", 0.50,
        measuring.from_outside([place.programs / "tarvoctl", "drivers", "list"],
                               environment=environment, after=listed),
        measuring.from_outside(["find", drivers, "-type", "f", *names], environment=environment,
                               after=found))
