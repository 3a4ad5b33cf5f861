"""From the start of the program to the first picture of its list, and the memory that this takes."""

import pathlib
import subprocess
import tempfile

import catalogue_data
import measuring
import package_data
import session

_ICON_SIDES = (16, 22, 24, 32)  # of the folders of GTK's icon theme that may be looked into
_MEMORY_TARGET = 1.25


def first_window(timer, command, environment, folder):
    """Measures from the start of a program to the first picture of its window."""

    def measure():
        output = measuring.output_of([timer, catalogue_data.ICON_COLOUR, *command],
                                     env=environment, cwd=folder)
        wall, processor, memory = output.split()
        return measuring.Sample(float(wall), float(processor), int(memory))

    return measure


def comparisons(place):
    with tempfile.TemporaryDirectory(dir=place.data) as name:
        documents = pathlib.Path(name) / "documents"
        drivers = catalogue_data.make_catalogue(documents, with_versions=True)
        environment = dict(session.shared().environment, TARVO_COMMON_DOCUMENTS=str(documents))
        # The dictionary is looked for in the current folder.
        folder = place.build / "translations" / "de"

        def window(*command, **variables):
            return first_window(place.programs / "first_window", command,
                                dict(environment, **variables), folder)

        def minimal(*arguments):
            return window(place.programs / "minimal_window", catalogue_data.ICON_COLOUR, *arguments)

        work = "start to first painted window, 200 drivers, 20,000 files, dictionary, settings"
        tarvo = window(place.programs / "tarvo")
        yield measuring.Comparison(work, "the minimal Qt window, 200 icons drawn in memory", 1.35,
                                   tarvo, minimal(), _MEMORY_TARGET)
        yield measuring.Comparison(work, "the minimal Qt window, 200 icons read from the same files",
                                   1.35, tarvo, minimal(drivers), _MEMORY_TARGET)
        few = pathlib.Path(name) / "few"
        catalogue_data.make_catalogue(few, with_versions=False, drivers=1, files=20)
        yield measuring.Comparison("start to first painted window, 1 driver, 20 files, dictionary",
                                   "the minimal Qt window, 200 icons drawn in memory", None,
                                   window(place.programs / "tarvo", TARVO_COMMON_DOCUMENTS=str(few)),
                                   minimal())
        archive = package_data.make_package(pathlib.Path(name) / "archive", 20, 2_000_000).path
        data = _make_icon_theme(pathlib.Path(name) / "data")
        yield measuring.Comparison(work, "xarchiver opening an archive of 20 files", 0.45, tarvo,
                                   window("xarchiver", archive, XDG_DATA_HOME=str(data)))


def _make_icon_theme(data):
    """A user's own icon for files, of the colour that is looked for, in GTK's usual theme; the list of
    xarchiver shows it beside each file."""
    for side in _ICON_SIDES:
        icons = data / "icons" / "Adwaita" / f"{side}x{side}" / "mimetypes"
        icons.mkdir(parents=True)
        for name in ("text-x-generic", "application-x-generic"):
            subprocess.run(["convert", "-size", f"{side}x{side}", f"xc:{catalogue_data.ICON_COLOUR}",
                            icons / f"{name}.png"], check=True)
    return data
