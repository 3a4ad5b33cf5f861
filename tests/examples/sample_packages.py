"""The packages that the build has made."""

import os
import pathlib
import zipfile

FOLDER = pathlib.Path(os.environ["TARVO_SAMPLE_PACKAGES"])
SOURCES = pathlib.Path(os.environ["TARVO_SAMPLE_SOURCES"])

DRIVERS = {
    "Meter_1.0.drv": {
        "driver.inf", "driver.ICO", "Download.EXE", "Upload.EXE", "Properties.EXE"},
    "Tide Gauge_2.1.drv": {
        "driver.inf", "Large.ICO", "Small.BMP", "Download.EXE", "Properties.EXE"},
    "Pocket Logger_1.3.drv": {
        "driver.inf", "Sample.hvd", "Download.EXE", "Upload.EXE", "Properties.EXE"},
}
HAND_HELD = {
    "Tarvoexe.pkg": {"Transfer.ini", "Programs/Transfer.exe"},
    "DeviceInstaller.pkg": {"DeviceInstaller.ini", "DeviceInstaller.exe"},
    "Kestrel.pkg": {"Kestrel.ini", "Kestrel.frm"},
    "MobileInstallers.pkg": {"MobileInstallers.lst"},
    "PalmKestrel.pkg": {"PalmKestrel.ini", "PalmKestrel.frm"},
    "Win32Installer.pkg": {"PDATarvo.ini", "PDATarvo.exe"},
}


def driver_and_version(package):
    return package.removesuffix(".drv").split("_")


def is_program(name):
    return name.lower().endswith(".exe")


def unpack(package, folder):
    """Unpacks a package by an independent reader; the programs may be executed."""
    folder.mkdir(parents=True, exist_ok=True)
    with zipfile.ZipFile(FOLDER / package) as archive:
        archive.extractall(folder)
        for name in archive.namelist():
            if is_program(name):
                (folder / name).chmod(0o755)
    return folder
