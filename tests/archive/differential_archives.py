"""Archives for the differential test: sound ones, ones with one chosen oddity, and damaged ones."""

import io
import struct
import subprocess
import zipfile
import zlib
from dataclasses import dataclass, field

LOCAL, CENTRAL, END, DESCRIPTOR = b"PK\3\4", b"PK\1\2", b"PK\5\6", b"PK\7\x08"
UNIX, DOS = 3, 0
HAS_DESCRIPTOR, IS_UTF8 = 8, 0x800


@dataclass
class Member:
    """A member as an archive describes it; `local` and `central` tell lies in one place only."""

    name: bytes
    content: bytes = b""
    method: int = zipfile.ZIP_DEFLATED
    flags: int = 0
    host: int = UNIX
    mode: int = 0o100644
    version: int = 20  # needed to unpack it, times 10
    descriptor: bytes | None = None  # its signature, or b"" without one
    local: dict = field(default_factory=dict)
    central: dict = field(default_factory=dict)
    lies_in_descriptor: int = 0
    packed: bytes | None = None  # instead of what zlib makes of the content


class Bits:
    """Bytes made bit by bit, as deflated ones are: numbers from their lowest bit on, codes from their
    highest."""

    def __init__(self):
        self.bits = []

    def number(self, value, size):
        self.bits += [value >> bit & 1 for bit in range(size)]

    def code(self, digits):
        self.bits += [int(digit) for digit in digits]

    def bytes(self):
        padded = self.bits + [0] * (-len(self.bits) % 8)
        return bytes(sum(bit << place for place, bit in enumerate(padded[at:at + 8]))
                     for at in range(0, len(padded), 8))


def deflated_with_incomplete_code(count):
    """So many times the letter "a" as one block whose codes for distances, of which none is used, leave
    half of all bit patterns without a meaning (RFC 1951, 3.2.7)."""
    made = Bits()
    for value, size in ((1, 1), (2, 2), (0, 5), (1, 5), (14, 4)):  # the last block, dynamic; 257, 2 and 18 codes
        made.number(value, size)
    # The codes of lengths: 2 is "0", 1 is "10", 18 (a run of zeros) is "11".
    for length in (0, 0, 2, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 1, 0, 2):
        made.number(length, 3)
    for zeros in (97, None, 138, 20, None):  # "a" and the end of the block have one bit each
        if zeros is None:
            made.code("10")
        else:
            made.code("11")
            made.number(zeros - 11, 7)
    made.code("00")  # two distances of two bits
    made.code("0" * count + "1")
    return made.bytes()


def deflated(content):
    packer = zlib.compressobj(9, zlib.DEFLATED, -15)
    return packer.compress(content) + packer.flush()


def archive_of(members, *, before=b"", between=b"", after=b"", comment=b"", **end_lies):
    """The bytes of an archive; positions count from behind `before`."""
    body, directory = b"", b""
    for member in members:
        packed = deflated(member.content) if member.method == 8 else member.content
        packed = member.packed or packed
        flags = member.flags | (HAS_DESCRIPTOR if member.descriptor is not None else 0)
        truth = {"flags": flags, "method": member.method, "crc": zlib.crc32(member.content),
                 "packed": len(packed), "size": len(member.content), "name": member.name,
                 "version": member.version, "disk": 0, "offset": len(body), "extra": b""}
        here = dict(truth)
        if member.descriptor is not None:
            here |= {"crc": 0, "packed": 0, "size": 0}
        here |= member.local
        there = truth | member.central
        body += LOCAL + struct.pack("<HHHHHIIIHH", here["version"], here["flags"], here["method"], 0, 0x5A21,
                                    here["crc"], here["packed"], here["size"], len(here["name"]),
                                    len(here["extra"])) + here["name"] + here["extra"] + packed
        if member.descriptor is not None:
            body += member.descriptor + struct.pack("<III", truth["crc"] ^ member.lies_in_descriptor,
                                                    len(packed), len(member.content))
        body += between
        directory += CENTRAL + struct.pack(
            "<BBHHHHHIIIHHHHHII", 20, member.host, there["version"], there["flags"], there["method"], 0, 0x5A21,
            there["crc"], there["packed"], there["size"], len(there["name"]), len(there["extra"]),
            0, there["disk"], 0, member.mode << 16, there["offset"]) + there["name"] + there["extra"]
    end = {"disk": 0, "directory_disk": 0, "here": len(members), "entries": len(members),
           "size": len(directory), "offset": len(body)} | end_lies
    return before + body + directory + END + struct.pack("<HHHHIIH", *end.values(),
                                                         len(comment)) + comment + after


def some_content(random):
    size = random.choice((0, 1, 5, 40, 300, 1500))
    return random.choice((random.randbytes(size), b"1;2;3\r\n" * (size // 7)))


def sound_members(random, **common):
    names = [b"Driver.inf", b"Download.exe", b"Data/a.csv", b"Data/Sub/b.txt", b"icon.ico"]
    names = [b"driver.inf", *random.sample(names[1:], random.randrange(1, 5))]
    random.shuffle(names)
    return [Member(name, some_content(random), random.choice((0, 8)), **common) for name in names]


def python_archive(random):
    made = io.BytesIO()
    with zipfile.ZipFile(made, "w", random.choice((zipfile.ZIP_STORED, zipfile.ZIP_DEFLATED))) as a:
        for member in sound_members(random):
            with a.open(member.name.decode(), "w", force_zip64=random.random() < 0.3) as file:
                file.write(member.content)
        a.comment = random.choice((b"", b"Made for the test"))
    return made.getvalue()


def archives_of_other_programs(random, folder):
    """One archive made by each way of packing a folder."""
    source = folder / "source"
    for member in [Member(b"driver.inf", b"[driver]\r\n"), Member(b"Data/a.csv", b"1;2\r\n" * 90),
                   Member(b"t.exe", random.randbytes(700)), Member(b"empty.txt")]:
        path = source / member.name.decode()
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_bytes(member.content)
    archives = []
    for command in (["zip", "-qr"], ["zip", "-qrfd"], ["zip", "-qr0"],
                    ["7z", "a", "-bso0", "-bsp0", "-tzip"],
                    ["bsdtar", "-c", "--format=zip", "-f"]):
        made = folder / f"made{len(archives)}.zip"
        subprocess.run([*command, made, "."], cwd=source, check=True, stdin=subprocess.DEVNULL)
        archives.append(made.read_bytes())
    return archives


def odd_archive(random, oddity):
    """A sound archive but for one oddity, one of ODDITIES."""
    members = sound_members(random)
    victim = random.choice([m for m in members if m.name != b"driver.inf"])
    whole = {}
    odd = ODDITIES[oddity](random, members, victim, whole)
    return odd if odd is not None else archive_of(members, **whole)


def rename(*names):
    def change(random, members, victim, whole):
        victim.name = random.choice(names)
    return change


def change(**attributes):
    def apply(random, members, victim, whole):
        for name, value in attributes.items():
            setattr(victim, name, value)
    return apply


def add(*members):
    def apply(random, all_members, victim, whole):
        all_members += [Member(**vars(member)) for member in members]
    return apply


def lie(place, **lies):
    def apply(random, members, victim, whole):
        getattr(victim, place).update(lies)
    return apply


def around(**arguments):
    def apply(random, members, victim, whole):
        whole.update(arguments)
    return apply


def duplicate(random, members, victim, whole):
    members.append(Member(victim.name, some_content(random)))


def other_case(random, members, victim, whole):
    members.append(Member(victim.name.swapcase(), some_content(random)))


def no_description(random, members, victim, whole):
    for member in members:
        if member.name == b"driver.inf":
            member.name = random.choice((b"Sub/driver.inf", b"driver.txt"))


def overlap(random, members, victim, whole):
    """Two entries of one stored member: the second header lies in the content of the first."""
    inner = archive_of([Member(b"in.bin", b"inside", 0)])[:36 + 6]
    victim.content, victim.method = inner, 0
    others = members[:members.index(victim)]
    at = len(archive_of(others)) - 22 - sum(46 + len(m.name) for m in others)
    members.append(Member(b"in.bin", b"inside", 0, central={"offset": at + 30 + len(victim.name)}))


def two_end_records(random, members, victim, whole):
    whole["comment"] = archive_of(sound_members(random))


def utf8_unsaid(random, members, victim, whole):
    victim.name = random.choice(("Grüße.txt", "Messung °C.csv", "データ.txt")).encode()


ODDITIES = {
    "none": change(),
    "a descriptor with signature": change(descriptor=DESCRIPTOR),
    "a descriptor without signature": change(descriptor=b""),
    "a lying descriptor": change(descriptor=DESCRIPTOR, lies_in_descriptor=1),
    "bytes before": around(before=b"#!/bin/sh\nexit\n"),
    "bytes between": around(between=b"\0" * 16),
    "zeros behind": around(after=b"\0" * 100),
    "bytes behind": around(after=b"more"),
    "a damaged extra field": lambda r, m, v, w: lie(r.choice(("local", "central")),
                                                    extra=b"UT\x40\0short")(r, m, v, w),
    "padding as an extra field": lie("local", extra=b"\0\0\0"),
    "a newer version": change(version=63),
    "another version in the header": lie("local", version=10),
    "a disk number of 64-bit archives": lie("central", disk=0xFFFF),
    "a comment": around(comment=b"A comment"),
    "a folder": add(Member(b"Empty/", method=0, mode=0o40755)),
    "a folder of DOS": add(Member(b"Empty/", method=0, mode=0, host=DOS)),
    "a folder with content": add(Member(b"Full/", b"content", 0, mode=0o40755)),
    "a folder named like a file": change(mode=0o40755, content=b"", method=0),
    "a file that is a folder": add(Member(b"Data", b"x"), Member(b"Data/x", b"x")),
    "a link": change(mode=0o120777, content=b"/etc/passwd", method=0),
    "a special file": change(mode=0o10644),
    "set-user-id": change(mode=0o104755),
    "..": rename(b"../x", b"Data/../x", b"..", b"Data\\..\\x"),
    "an absolute path": rename(b"/x", b"/etc/x"),
    "a drive letter": rename(b"C:/x", b"c:x"),
    "backslashes": change(name=b"Data\\z.csv", host=DOS),
    "a dot": rename(b"./x", b"Data/./x"),
    "an empty folder name": rename(b"Data//x"),
    "an empty name": rename(b""),
    "a NUL": rename(b"a\0b"),
    "a control character": rename(b"a\tb", b"a\x1bb", b"\x7f"),
    "a name of 300 bytes": rename(b"n" * 300),
    "UTF-8 said": change(name="Grüße.txt".encode(), flags=IS_UTF8),
    "UTF-8 unsaid": utf8_unsaid,
    "code page 437": change(name=b"Gr\x81\xe1e.txt", host=DOS),
    "no UTF-8 though said": change(name=b"Gr\x81\xe1e.txt", flags=IS_UTF8),
    "a duplicate": duplicate,
    "another letter case": other_case,
    "no description": no_description,
    "encrypted": change(flags=1),
    "encryption only in the directory": lie("central", flags=1),
    "another method": change(method=99),
    "a method of others": change(method=12),
    "another name in the header": lie("local", name=b"other.txt"),
    "another size in the header": lie("local", size=7),
    "another packed size in the header": lie("local", packed=7),
    "another checksum in the header": lie("local", crc=7),
    "another method in the header": lie("local", method=1),
    "other flags in the header": lie("local", flags=IS_UTF8),
    "a wrong checksum": change(local={"crc": 9}, central={"crc": 9}),
    "a lying size": change(local={"size": 9}, central={"size": 9}),
    "a member on another disk": lie("central", disk=3),
    "a member outside": lie("central", offset=0xFFFFF),
    "another disk": around(disk=1),
    "the directory on another disk": around(directory_disk=1),
    "entries on another disk": around(here=1),
    "fewer entries than there are": around(here=1, entries=1),
    "more entries than there are": around(here=99, entries=99),
    "a directory too large": around(size=0xFFFFFF),
    "two end records": two_end_records,
    "overlapping members": overlap,
    "an incomplete code": change(content=b"a" * 50, method=8,
                                 packed=deflated_with_incomplete_code(50)),
    "an empty file": lambda *_: b"",
    "no archive": lambda random, *_: random.randbytes(200),
    "no members": lambda *_: archive_of([]),
}


def damaged(random, archive):
    """The archive after one to three random changes, half of them in its headers."""
    data = bytearray(archive)
    for _ in range(random.randrange(1, 4)):
        if not data:
            break
        at = random.randrange(len(data))
        if random.random() < 0.5:
            starts = [i for i in range(len(data)) if data[i:i + 2] == b"PK"]
            if starts:
                at = min(random.choice(starts) + random.randrange(46), len(data) - 1)
        way = random.randrange(8)
        if way == 0:
            del data[at:]
        elif way == 1:
            del data[at:at + random.randrange(1, 9)]
        elif way == 2:
            data[at:at] = random.randbytes(random.randrange(1, 9))
        elif way == 3:
            number = random.choice((0, 1, 0x7FFF, 0xFFFF, 0xFFFFFFFF, len(data)))
            data[at:at + 4] = struct.pack("<I", number)[:len(data) - at]
        elif way == 4:
            data[at] = random.randrange(256)
        else:
            data[at] ^= 1 << random.randrange(8)
    return bytes(data)
