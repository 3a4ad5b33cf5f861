"""Checking and unpacking packages."""

import os
import pathlib
import shutil
import tempfile

import measuring
import package_data

_SIZES = [
    ("2,000 files, 30 MB", 2000, 30_000_000),
    ("20 files, 2 MB", 20, 2_000_000),
    ("12 files, 300 MB", 12, 300_000_000),
]
_SMALL = 2_000_000  # the file of a package whose check takes hardly longer than the start of a program


def comparisons(place):
    for label, files, size in _SIZES:
        with tempfile.TemporaryDirectory(dir=place.data) as name:
            folder = pathlib.Path(name)
            package = package_data.make_package(folder / "made", files, size)
            yield from _comparisons(place, folder, package, label)


def _comparisons(place, folder, package, label):
    environment = dict(os.environ, LC_ALL="C.UTF-8", TARVO_COMMON_DOCUMENTS=str(folder))
    programs = place.programs
    target = folder / "unpacked"

    def empty_target():
        shutil.rmtree(target, ignore_errors=True)
        target.mkdir()

    def unpacking(*commands):
        return measuring.from_outside(
            *commands, environment=environment, before=empty_target, folder=folder,
            after=lambda outputs: package_data.must_be_equal(target, package.files))

    def checking(words, *command):
        def after(outputs):
            if words not in outputs[0]:
                raise RuntimeError(f"{command[0]} says: {outputs[0]}")

        return measuring.from_outside(command, environment=environment, after=after, folder=folder)

    tarvo = unpacking([programs / "tarvoctl", "package", "unpack", package.path, target])
    unzip = unpacking(["unzip", "-tq", package.path, "driver.inf"], ["unzip", "-tq", package.path],
                      ["unzip", "-qo", package.path, "-d", target])
    libarchive = unpacking([programs / "libarchive_unpack", package.path, target])
    yield measuring.Comparison(f"`package unpack`, {label}", "unzip: tests `driver.inf`, tests all, "
                               "unpacks", 0.25, tarvo, unzip)
    yield measuring.Comparison(f"`package unpack`, {label}", "libarchive: tests all, extracts", 0.40,
                               tarvo, libarchive)
    unzip_check = checking("No errors detected", "unzip", "-tq", package.path)
    yield measuring.Comparison(
        f"`package check`, {label}", "`unzip -tq`", 0.30,
        checking("The package is valid.", programs / "tarvoctl", "package", "check", package.path),
        unzip_check)
    if package.path.stat().st_size < _SMALL:
        yield measuring.Comparison("starting `tarvoctl`, which says its version",
                                   f"`unzip -tq`, {label}", None,
                                   checking("tarvoctl ", programs / "tarvoctl", "--version"),
                                   unzip_check)
