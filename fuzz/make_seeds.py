"""Makes the seeds of the fuzz targets whose files are binary.

Usage: make_seeds.py [FOLDER], the corpus beside this file unless told otherwise. The same call makes the
same bytes. Seeds that are texts are written by hand.
"""

import pathlib
import struct
import sys
import zlib

CORPUS = pathlib.Path(sys.argv[1]) if len(sys.argv) > 1 else pathlib.Path(__file__).parent / "corpus"
UTF8_NAME = 1 << 11
LATER_SIZES = 1 << 3


def _write(target, name, data):
    folder = CORPUS / target
    folder.mkdir(parents=True, exist_ok=True)
    (folder / name).write_bytes(data)


def _extra(identifier, content):
    return struct.pack("<HH", identifier, len(content)) + content


class _Archive:
    """A zip archive put together by hand, with whatever is to be odd about it."""

    def __init__(self, before=b""):
        self.body = before
        self.shift = len(before)
        self.entries = []

    def add(self, name, content=b"", deflated=False, flags=0, mode=0, host=3, large=False, unicode=None):
        packed = content
        if deflated:
            packer = zlib.compressobj(9, zlib.DEFLATED, -15)
            packed = packer.compress(content) + packer.flush()
        crc, method = zlib.crc32(content), 8 if deflated else 0
        sizes = (0xFFFFFFFF, 0xFFFFFFFF) if large else (len(packed), len(content))
        extra = _extra(1, struct.pack("<QQ", len(content), len(packed))) if large else b""
        if unicode is not None:
            extra += _extra(0x7075, b"\x01" + struct.pack("<I", zlib.crc32(name)) + unicode)
        later = flags & LATER_SIZES
        local = struct.pack("<IHHHHHIIIHH", 0x04034B50, 20, flags, method, 0, 0, 0 if later else crc,
                            *((0, 0) if later else sizes), len(name), len(extra))
        offset = len(self.body) - self.shift
        self.body += local + name + extra + packed
        if later:
            self.body += struct.pack("<IIII", 0x08074B50, crc, len(packed), len(content))
        self.entries.append(
            struct.pack("<IBBHHHHHIIIHHHHHII", 0x02014B50, 20, host, 45 if large else 20, flags, method,
                        0, 0, crc, *sizes, len(name), len(extra), 0, 0, 0, mode << 16, offset)
            + name + extra)
        return self

    def finish(self, comment=b"", large=False, behind=b""):
        directory = b"".join(self.entries)
        start = len(self.body) - self.shift
        data = self.body + directory
        count, size, offset = len(self.entries), len(directory), start
        if large:
            record = len(data) - self.shift
            data += struct.pack("<IQHHIIQQQQ", 0x06064B50, 44, 45, 45, 0, 0, count, count, size, offset)
            data += struct.pack("<IIQI", 0x07064B50, 0, record, 1)
            count, size, offset = 0xFFFF, 0xFFFFFFFF, 0xFFFFFFFF
        return data + struct.pack("<IHHHHIIH", 0x06054B50, 0, 0, count, count, size, offset,
                                  len(comment)) + comment + behind


DESCRIPTION = b"[Driver]\r\nName=Meter\r\n"
REPEATED = b"0123456789abcdef" * 40


def _package_seeds():
    def driver(**options):
        return _Archive(**options).add(b"driver.inf", DESCRIPTION)

    seeds = {
        "stored": driver().add(b"DOWNLOAD.EXE", b"MZ tool").finish(),
        "deflated": driver().add(b"readings.txt", REPEATED, deflated=True).finish(),
        "folders": driver().add(b"Data/").add(b"Data/a/b.txt", b"b").add(b"help/B.TXT", b"c").finish(),
        "backslashes": driver().add(b"Data\\a.txt", b"a", host=0).finish(),
        "descriptor": driver().add(b"later.bin", REPEATED, deflated=True, flags=LATER_SIZES).finish(),
        "zip64": driver().add(b"large.bin", b"content", large=True).finish(large=True),
        "utf8": driver().add("Ger\u00e4t/\u00e9.txt".encode(), b"x", flags=UTF8_NAME).finish(),
        "code-page": driver().add(b"Ger\x84t.txt", b"x", host=0).finish(),
        "unicode-field": driver().add(b"Ger?t", b"x", unicode="Ger\u00e4t".encode(), host=0).finish(),
        "no-description": _Archive().add(b"reader.cab", b"component").finish(),
        "comment": driver().finish(comment=b"made by hand"),
        "zeros-behind": driver().finish(behind=bytes(40)),
        "before": driver(before=b"#!/bin/sh\nexit 0\n").finish(),
        "nothing": _Archive().finish(),
        "twice": driver().add(b"DRIVER.INF", b"again").finish(),
        "file-and-folder": driver().add(b"a", b"file").add(b"a/b", b"below it").finish(),
        "up": driver().add(b"../outside", b"x").finish(),
        "drive": driver().add(b"C:/outside", b"x").finish(),
        "link": driver().add(b"link", b"/etc", mode=0o120777).finish(),
        "mode": driver().add(b"tool.exe", b"MZ", mode=0o104755).finish(),
        "encrypted": driver().add(b"secret", b"x", flags=1).finish(),
        "long-name": driver().add(b"n" * 255, b"x").finish(),
        "found-name-of-unfinished-file": driver().add(b".tarvo-new-1", b"not a description").finish(),
        "empty": b"",
        "cut": driver().add(b"tool.exe", b"MZ").finish()[:-7],
    }
    for name, data in seeds.items():
        _write("package", name, data)


KEY, UPPER_KEY, UMLAUT, INVALID_KEY, LONG_KEY = 0, 1, 4, 6, 127
FREE_LOCK, FRESH_LOCK, OLD_LOCK, LOCK_WITHOUT_TIME = 4, 0, 1, 2


def _record(key, value):
    """A whole record; the key by its number, the value by that of a short one."""
    return bytes([5, key, value])


def _settings(lock, records, tail=(2,), operations=()):
    """What settings_fuzz.cpp makes a file of, and what it does to it: pairs of store and operation."""
    body = bytes([1, lock, len(records)]) + b"".join(records) + bytes(tail)
    return body + b"".join(bytes([store, *operation]) for store, operation in operations)


def _settings_seeds():
    save, save_long, get, delete, keys = 8, 5, 4, 2, 3
    two = [_record(KEY, 1), _record(UMLAUT, 2)]
    seeds = {
        "no-file": bytes([0, 0, save, KEY, 1, 0, get, KEY]),
        "save-and-read": _settings(FREE_LOCK, two, operations=[
            (0, (save, KEY, 2)), (1, (get, UPPER_KEY)), (1, (save, 3, 1)), (0, (keys,))]),
        "long-and-short": _settings(FREE_LOCK, two, operations=[
            (0, (save_long, KEY, 3)), (1, (get, KEY)), (1, (save, KEY, 1)), (0, (get, KEY))]),
        "delete": _settings(FREE_LOCK, two, operations=[
            (0, (delete, UPPER_KEY)), (0, (delete, KEY)), (1, (save, UMLAUT, 0)), (0, (keys,))]),
        "refused": _settings(FREE_LOCK, two, operations=[
            (0, (save, INVALID_KEY, 1)), (1, (get, 126)), (0, (save, LONG_KEY, 1))]),
        "not-in-the-code-page": _settings(FREE_LOCK, two, operations=[
            (0, (save, 3, 4)), (1, (get, 3)), (1, (save, 3, 1))]),
        "value-with-nul": _settings(FREE_LOCK, two, operations=[(0, (save, 3, 5)), (1, (get, 3))]),
        "fresh-lock": _settings(FRESH_LOCK, two, operations=[(0, (save, KEY, 1))]),
        "old-lock": _settings(OLD_LOCK, two, operations=[(0, (get, KEY)), (1, (save, KEY, 1))]),
        "lock-without-time": _settings(LOCK_WITHOUT_TIME, two, operations=[(1, (save, KEY, 1))]),
        "cut": _settings(FREE_LOCK, two, tail=(0, 0x10, 4), operations=[(0, (save, 3, 1)), (0, (keys,))]),
        "longer": _settings(FREE_LOCK, two, tail=(1, 0x10, 4), operations=[(0, (save, 3, 1))]),
        "chunk-of-another-spelling": _settings(FREE_LOCK, [bytes([1, KEY, 2, 1]), *two], operations=[
            (0, (save, UPPER_KEY, 1)), (1, (get, KEY))]),
        "odd-records": _settings(FREE_LOCK, [bytes([2, 120]), bytes([3, 1, 2, KEY, 1]),
                                             bytes([4, 2, 97, 98, 1]), bytes([0])], operations=[
            (0, (save, KEY, 1)), (0, (keys,))]),
    }
    for name, data in seeds.items():
        _write("settings", name, data)


def _catalogue(records, order="<", gap=b""):
    """A catalogue with these originals and translations."""
    count = len(records)
    originals, translations = 28, 28 + 8 * count
    at = translations + 8 * count + len(gap)
    tables, texts = [b"", b""], b""
    for table in (0, 1):
        for record in records:
            text = record[table].encode()
            tables[table] += struct.pack(order + "II", len(text), at + len(texts))
            texts += text + b"\0"
    header = struct.pack(order + "IIIIIII", 0x950412DE, 0, count, originals, translations, 0, at)
    return header + tables[0] + tables[1] + gap + texts


def _dictionary_seeds():
    header = ("", "Content-Type: text/plain; charset=UTF-8\nLanguage: de\n")
    words = [("Open", "\u00d6ffnen"), ("open", "offen"), ("Close", "Schlie\u00dfen"), ("Tarvo", "Tarvo")]
    seeds = {
        "little-endian": _catalogue([header, *words]),
        "big-endian": _catalogue([header, *words], order=">"),
        "no-header": _catalogue(words),
        "none": _catalogue([]),
        "other-charset": _catalogue([("", "charset=ISO-8859-1\n"), *words]),
        "language-only": _catalogue([("", "language: fr_BE \n"), *words]),
        "context-and-plural": _catalogue([("menu\4Open", "x"), ("file\0files", "Datei\0Dateien"), *words]),
        "twice": _catalogue([("Open", "erstes"), ("Open", "zweites")]),
        "blank": _catalogue([("Open", "  "), ("Close", "")]),
        "parameters": _catalogue([("Version %1", "Version %1"), ("%1 of %2", "%2: %1")]),
        "letter-case": _catalogue([("\u00c4rger", "1"), ("\u00e4rger", "2"), ("a", "3"), ("A", "4")]),
        "gap": _catalogue(words, gap=bytes(32)),
        "cut": _catalogue(words)[:-9],
        "empty": b"",
    }
    for name, data in seeds.items():
        _write("dictionary", name, data)


def _number_seeds():
    """The locale's number, a number, a text."""
    seeds = {
        "zero": (0, 0.0, b"0"),
        "today": (1, 45000.5, b"15.3.2023"),
        "first-day": (0, -657434.0, b"1/1/100"),
        "last-day": (2, 2958465.999, b"9999-12-31"),
        "day-zero": (3, -0.75, b"30/12/1899"),
        "exponent": (0, 1.5e-300, b"1.5e-300"),
        "too-large": (1, 1e299, b"1e999"),
        "too-small": (1, 5e-324, b" -4,9E-400 "),
        "version": (0, 32767.5, b"1.2.3"),
        "decimal-comma": (1, -32768.5, b"1,5"),
        "time": (0, 0.1, b"3/4/24 12:30:59"),
        "two-digits": (4, 2.5, b"29-2-30"),
        "other-separator": (6, 36525.0, "1999\u5e7412\u5e7431".encode()),
        "blanks": (7, 99999.0, b"31. 12. 1999"),
        "digits": (5, 123456789012345678.0, b"123456789012345678901234567890.5"),
        "not-a-number": (0, float("nan"), b"nan"),
    }
    for name, (place, number, text) in seeds.items():
        _write("dates_and_numbers", name, bytes([place]) + struct.pack("<d", number) + text)


def main():
    _package_seeds()
    _settings_seeds()
    _dictionary_seeds()
    _number_seeds()


if __name__ == "__main__":
    main()
