"""Times the first window of tarvo.exe beside a minimal window for Windows, through Wine in one Windows
folder: each in turn, from outside, as bench/compare.py does for Linux.

Usage: windows_start.py BUILD-FOLDER WINDOWS-BUILD-FOLDER ROUNDS

The first folder holds the program first_window, the second tarvo.exe and minimal_win32_window.exe.
"""

import os
import pathlib
import sys
import tempfile

import catalogue_data

_ROOT = pathlib.Path(__file__).resolve().parent.parent
sys.path[:0] = [str(_ROOT / "tests" / "windows"), str(_ROOT / "tests" / "program")]


def _make_bare_drivers(documents):
    """200 drivers with an icon each and nothing else; gives their folder."""
    drivers = documents / "Halvex Limited" / "Halvex Tarvo" / "Drivers"
    for number in range(catalogue_data.DRIVERS):
        driver = drivers / catalogue_data.driver_name(number)
        driver.mkdir(parents=True)
        (driver / "driver.ICO").write_bytes(catalogue_data.icon_file())
    return drivers


def main(build, windows_build, rounds):
    os.environ["TARVO_WINDOWS_BUILD_FOLDER"] = str(windows_build)
    import compare
    import session
    from wine import Wine

    programs = windows_build / "bin"
    with tempfile.TemporaryDirectory(prefix="tarvo-bench-") as name:
        data = pathlib.Path(name)
        wine = Wine(session.shared(), data)
        # Its CSV files have a viewer: nobody is asked.
        wine.set_registry_value("HKCR\\.csv", "csvFile")
        wine.set_registry_value("HKCR\\csvFile\\shell\\open\\command", "csvview %1")
        bare = _make_bare_drivers(data / "bare")
        catalogue_data.make_catalogue(data / "full", with_versions=True)

        def window(program, *arguments, documents="bare"):
            environment = dict(wine.environment, TARVO_COMMON_DOCUMENTS=str(data / documents))
            command = ["wine", programs / program, *arguments]
            return compare.first_window(build / "bin" / "first_window", command, environment,
                                        windows_build / "translations" / "de")

        minimal = "minimal_win32_window.exe"
        colour = catalogue_data.ICON_COLOUR
        comparisons = [
            compare.Comparison("200 drivers with an icon each", "icons drawn in memory",
                               window("tarvo.exe"), window(minimal, colour)),
            compare.Comparison("200 drivers with an icon each", "icons read from the same files",
                               window("tarvo.exe"),
                               window(minimal, colour, wine.windows_path(bare))),
            compare.Comparison("200 drivers with 20,000 files and 600 versions",
                               "icons drawn in memory",
                               window("tarvo.exe", documents="full"), window(minimal, colour)),
        ]
        try:
            results = [compare.compare(comparison, rounds) for comparison in comparisons]
        finally:
            wine.close()
    print(compare.table(results))
    size = (programs / "tarvo.exe").stat().st_size
    print(f"tarvo.exe: {size / 2**20:.2f} MiB as built; load average {os.getloadavg()[0]:.1f}")


if __name__ == "__main__":
    if len(sys.argv) != 4:
        sys.exit(__doc__)
    main(pathlib.Path(sys.argv[1]).resolve(), pathlib.Path(sys.argv[2]).resolve(), int(sys.argv[3]))
