"""The start of tarvo.exe beside a minimal window for Windows, through Wine in one Windows folder."""

import pathlib
import shutil
import tempfile

import catalogue_data
import measuring
import session
import start_comparisons

_TARVO = "tarvo.exe"
_MINIMAL = "minimal_win32_window.exe"


def reason_to_leave_out(place):
    if not shutil.which("wine"):
        return "the start on Windows: Wine is not installed."
    for program in (_TARVO, _MINIMAL):
        if not (place.windows_build / "bin" / program).exists():
            return f"the start on Windows: there is no {program}, which the preset \"windows\" builds."
    return None


def comparisons(place):
    from wine import Wine

    with tempfile.TemporaryDirectory(prefix="tarvo-bench-") as name:
        data = pathlib.Path(name)
        wine = Wine(session.shared(), data)
        try:
            # Its CSV files have a viewer: nobody is asked.
            wine.set_registry_value("HKCR\\.csv", "csvFile")
            wine.set_registry_value("HKCR\\csvFile\\shell\\open\\command", "csvview %1")
            yield from _comparisons(place, data, wine)
        finally:
            wine.close()


def _comparisons(place, data, wine):
    bare = _make_bare_drivers(data / "bare")
    catalogue_data.make_catalogue(data / "full", with_versions=True)
    programs = place.windows_build / "bin"
    folder = place.windows_build / "translations" / "de"

    def window(program, *arguments, documents="bare"):
        environment = dict(wine.environment, TARVO_COMMON_DOCUMENTS=str(data / documents))
        return start_comparisons.first_window(place.programs / "first_window",
                                              ["wine", programs / program, *arguments],
                                              environment, folder)

    drawn = window(_MINIMAL, catalogue_data.ICON_COLOUR)
    read = window(_MINIMAL, catalogue_data.ICON_COLOUR, wine.windows_path(bare))
    work = "start on Windows (Wine), 200 drivers with an icon each"
    peer = "a minimal Windows window, icons"
    yield measuring.Comparison(work, f"{peer} drawn in memory", 1.2, window(_TARVO), drawn)
    yield measuring.Comparison(work, f"{peer} read from the same files", 1.2, window(_TARVO), read)
    yield measuring.Comparison("start on Windows (Wine), 200 drivers, 20,000 files, 600 versions",
                               f"{peer} drawn in memory", None,
                               window(_TARVO, documents="full"), drawn)


def _make_bare_drivers(documents):
    """200 drivers with an icon each and nothing else; gives their folder."""
    drivers = documents / "Halvex Limited" / "Halvex Tarvo" / "Drivers"
    for number in range(catalogue_data.DRIVERS):
        driver = drivers / catalogue_data.driver_name(number)
        driver.mkdir(parents=True)
        (driver / "driver.ICO").write_bytes(catalogue_data.icon_file())
    return drivers
