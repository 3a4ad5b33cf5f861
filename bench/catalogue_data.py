"""Makes a catalogue to measure with: drivers, each with an icon and data files in subfolders.

Usage: catalogue_data.py FOLDER

FOLDER is then a common documents folder for the program (TARVO_COMMON_DOCUMENTS), with 200 drivers of
100 files and the versions of their tools.
"""

import os
import pathlib
import struct
import sys

DRIVERS = 200
ICON_COLOUR = "#e0187c"  # found on no other part of a window

# In five subfolders of each driver.
FILES_PER_DRIVER = 100
_SUBFOLDERS = 5
# Of 20 files; each fifth is none that is counted.
_ENDINGS = ["csv"] * 8 + ["asc"] * 4 + ["txt"] * 4 + ["hvd", "log", "bak", "pdf"]
COUNTED_SHARE = 16 / 20
_ICON_SIDES = (16, 32, 48)
_TOOLS = ("DOWNLOAD", "UPLOAD", "PROPERTIES")
_FIELD_SIZE = 1024


def driver_name(number):
    return f"Driver {number:05}"


def icon_file():
    """An icon file with opaque squares of one colour, 32 bits per pixel."""
    red, green, blue = bytes.fromhex(ICON_COLOUR[1:])
    directory = struct.pack("<HHH", 0, 1, len(_ICON_SIDES))
    images = b""
    for side in _ICON_SIDES:
        # The height counts the rows of the picture and of its mask.
        header = struct.pack("<IiiHHIIiiII", 40, side, 2 * side, 1, 32, 0, 0, 0, 0, 0, 0)
        mask = bytes((side + 31) // 32 * 4 * side)
        image = header + bytes((blue, green, red, 255)) * side * side + mask
        offset = 6 + 16 * len(_ICON_SIDES) + len(images)
        directory += struct.pack("<BBBBHHII", side, side, 0, 0, 1, 32, len(image), offset)
        images += image
    return directory + images


def _make_drivers(folder, drivers, files):
    icon = icon_file()
    for number in range(drivers):
        driver = folder / driver_name(number)
        for subfolder in range(_SUBFOLDERS):
            data = driver / f"Data {subfolder}"
            data.mkdir(parents=True)
            for file in range(files // _SUBFOLDERS):
                ending = _ENDINGS[(file + subfolder * 4) % len(_ENDINGS)]
                os.close(os.open(data / f"Download {file:03}.{ending}", os.O_CREAT, 0o644))
        (driver / "driver.ICO").write_bytes(icon)


def _record(key="", value=""):
    fields = (text.encode("cp1252").ljust(_FIELD_SIZE, b"\0") for text in (key, value))
    return struct.pack("<H", 2 * _FIELD_SIZE) + b"".join(fields)


def _write_versions(path, drivers):
    """A settings file in which each tool of each driver has recorded its version."""
    with path.open("wb") as file:
        file.write(_record())
        for number in range(drivers):
            for tool in _TOOLS:
                file.write(_record(f"tarvo.versions_{driver_name(number)}_{tool}", "Version 2.1.7"))


def make_catalogue(documents, with_versions, drivers=DRIVERS, files=FILES_PER_DRIVER):
    """Drivers with so many files each, a multiple of 20. Returns the folder of the drivers."""
    company = pathlib.Path(documents) / "Halvex Limited"
    folder = company / "Halvex Tarvo" / "Drivers"
    _make_drivers(folder, drivers, files)
    if with_versions:
        _write_versions(company / "localregistry.dat", drivers)
    return folder


if __name__ == "__main__":
    if len(sys.argv) != 2:
        sys.exit(__doc__)
    make_catalogue(sys.argv[1], with_versions=True)
