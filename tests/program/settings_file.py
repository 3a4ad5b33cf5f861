"""The settings file "localregistry.dat", read and written by its byte layout alone.

Records of 2050 bytes: the length 2048 (00 08), a first and a second field of 1024 bytes each, text
in Windows-1252 padded with NUL bytes. Record 1 is the lock, empty when nobody holds it; every other
record is an entry, a key and up to 1024 bytes of its value. The rest of a longer value stands under
the keys K~2, K~3, ... A record whose first text byte is NUL is empty.
"""

import contextlib
import datetime
import pathlib
import struct

NAME = "localregistry.dat"
FIELD = 1024
RECORD = 2 + 2 * FIELD
ENCODING = "cp1252"


def path_in(common_documents):
    return pathlib.Path(common_documents) / "Halvex Limited" / NAME


def _record(first="", second=""):
    fields = [text.encode(ENCODING) for text in (first, second)]
    if any(len(field) > FIELD for field in fields):
        raise ValueError("a field holds at most 1024 characters")
    return struct.pack("<H", 2 * FIELD) + b"".join(f.ljust(FIELD, b"\0") for f in fields)


def write(path, values):
    """Writes a new settings file with these values, a mapping of keys to texts."""
    records = [_record()]
    for key, value in values.items():
        chunks = [value[i : i + FIELD] for i in range(0, len(value), FIELD)] or [""]
        for number, chunk in enumerate(chunks, start=1):
            records.append(_record(key if number == 1 else f"{key}~{number}", chunk))
    path.parent.mkdir(parents=True, exist_ok=True)
    path.write_bytes(b"".join(records))


def _days(moment):
    """A date and time as the number of days since 30 December 1899."""
    return (moment - datetime.datetime(1899, 12, 30)) / datetime.timedelta(days=1)


def take_foreign_lock(path, age=datetime.timedelta()):
    """Takes the lock of the settings file, which is made if need be, as another program would have
    that long ago; gives the lock record."""
    path.parent.mkdir(parents=True, exist_ok=True)
    lock = _record("another program", f"{_days(datetime.datetime.now() - age):.10f}")
    path.touch()
    with path.open("r+b") as file:
        file.write(lock)
    return lock


@contextlib.contextmanager
def foreign_lock(path):
    """Holds the lock of the settings file: who writes a setting waits."""
    lock = take_foreign_lock(path)
    try:
        yield True
    finally:
        with path.open("r+b") as file:
            if file.read(RECORD) == lock:
                file.seek(0)
                file.write(_record())


def _field(raw):
    return raw.split(b"\0", 1)[0].decode(ENCODING)


def _checked_records(content):
    if not content or len(content) % RECORD:
        raise ValueError(f"{len(content)} bytes are no whole number of records")
    for offset in range(0, len(content), RECORD):
        raw = content[offset : offset + RECORD]
        if raw[:2] != b"\x00\x08":
            raise ValueError(f"the record at {offset} begins with {raw[:2].hex()}")
        for start in (2, 2 + FIELD):
            field = raw[start : start + FIELD]
            if field.rstrip(b"\0") != field.split(b"\0", 1)[0]:
                raise ValueError(f"the record at {offset} is not padded with NUL bytes")
        yield raw


def read(path):
    """The values of a settings file in file order; every rule of the layout is checked."""
    records = list(_checked_records(path.read_bytes()))
    if records[0] != _record():
        raise ValueError("the lock record is not empty")
    entries = {}
    for raw in records[1:]:
        if raw[2] == 0:
            if raw != _record():
                raise ValueError("an empty record is not all NUL bytes")
            continue
        key = _field(raw[2 : 2 + FIELD])
        if key.lower() in (known.lower() for known in entries):
            raise ValueError(f"two records have the key {key}")
        entries[key] = _field(raw[2 + FIELD :])
    return _joined(entries)


def _joined(entries):
    values = {}
    for key, value in entries.items():
        base, sign, number = key.partition("~")
        if not sign:
            values[key] = value
        elif base not in values or int(number) < 2:
            raise ValueError(f"the continuation {key} follows nothing")
        else:
            values[base] += value
    return values
