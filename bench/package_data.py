"""Makes packages to measure with: the files of a driver, and their archive, made by "zip"."""

import dataclasses
import pathlib
import random
import subprocess

_SEED = 20260117
_FILES_PER_FOLDER = 50
_BLOCK = 64 * 1024  # every fifth one is of random bytes, as of pictures and programs
_DESCRIPTION = "[Driver]\r\nName=Station\r\nMaker=Halvex Limited\r\nVersion=1.0\r\n"


@dataclasses.dataclass
class MadePackage:
    path: pathlib.Path
    files: pathlib.Path  # the folder with what was packed


def _readings(chance, count):
    """Lines of a logger's text files."""
    return [f"2026-{chance.randint(1, 12):02}-{chance.randint(1, 28):02},"
            f"{chance.randint(0, 23):02}:{chance.randint(0, 59):02},"
            f"{chance.uniform(-20, 40):.3f},{chance.uniform(0, 14):.4f},OK\r\n".encode()
            for _ in range(count)]


def _content(chance, lines, size):
    content = bytearray()
    length = len(lines[0])
    while len(content) < size:
        if chance.random() < 0.2:
            content += chance.randbytes(_BLOCK)
        else:
            content += b"".join(chance.choices(lines, k=_BLOCK // length))
    return bytes(content[:size])


def make_package(folder, files, size):
    """A package of so many files and bytes altogether, "driver.inf" included; a few files lie in its
    root, many in folders."""
    chance = random.Random(_SEED)
    lines = _readings(chance, 20_000)
    content = folder / "Station"
    content.mkdir(parents=True)
    (content / "driver.inf").write_text(_DESCRIPTION, newline="")
    for number in range(files - 1):
        subfolder = content
        if files > _FILES_PER_FOLDER:
            subfolder /= f"Part {number // _FILES_PER_FOLDER:02}"
            subfolder.mkdir(exist_ok=True)
        data = _content(chance, lines, size // (files - 1))
        (subfolder / f"File {number:04}.csv").write_bytes(data)
    package = folder / "Station_1.0.drv"
    subprocess.run(["zip", "-q", "-r", "-6", package, "."], cwd=content, check=True)
    return MadePackage(package, content)


def contents(folder):
    """The files below a folder: their paths in it and their bytes, one after the other."""
    for path in sorted(folder.rglob("*")):
        if path.is_file():
            yield path.relative_to(folder), path.read_bytes()


def must_be_equal(unpacked, original):
    """Raises an error unless the folders hold the same files with the same bytes."""
    count = 0
    for here, there in zip(contents(unpacked), contents(original), strict=True):
        if here != there:
            raise RuntimeError(f"{here[0]} was not unpacked as it was packed")
        count += 1
    if count == 0:
        raise RuntimeError("nothing was unpacked")
