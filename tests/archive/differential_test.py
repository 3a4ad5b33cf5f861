"""What `tarvoctl package check` says of some 2,000 archives, sound, odd and damaged, against what
`unzip -t`, `7z t` and Python's zipfile say. A package found valid must be sound for unzip and
Python and unpack to what Python reads. Each difference must belong to one of DIFFERENCES, and each
of these must occur."""

import argparse
import collections
import json
import os
import pathlib
import random
import re
import shutil
import subprocess
import sys
import tempfile
import zipfile
from dataclasses import dataclass

from differential_archives import ODDITIES, archives_of_other_programs, damaged, odd_archive
from differential_archives import python_archive

UNZIP, SEVEN_ZIP, PYTHON = "unzip", "7z", "Python"
OTHERS = (UNZIP, SEVEN_ZIP, PYTHON)
FEWEST = 2000
PER_CALL = 200
# What a damaged archive is made of: common shapes, which are found valid when the damage is harmless.
TO_DAMAGE = ("none", "a descriptor with signature", "bytes before", "UTF-8 said")


@dataclass(frozen=True)
class Difference:
    """A deliberate difference: whose verdict may be the opposite of ours, and for what reason."""

    name: str
    reason: str  # expression for our sentence; when we accept, for the other program's message
    others: tuple
    we_accept: bool = False
    may_be_missing: bool = False


DIFFERENCES = (
    Difference("no description", 'has no "driver.inf" in its root', OTHERS),
    Difference("links and special files", "is a link|is a special file", OTHERS),
    Difference("paths out of the folder", 'has "\\.\\." in its path|absolute path|drive letter',
               OTHERS),
    Difference("names that no file should have",
               "empty folder name|empty name|NUL|control character|too long|not UTF-8", OTHERS),
    Difference("clashing names", "more than once|except for letter case|which is a file", OTHERS),
    Difference("folders that are not only folders", "is a folder", OTHERS),
    Difference("header against directory", "in its header than in the directory|lacks its 64-bit",
               OTHERS),
    Difference("descriptor against directory", "descriptor that does not agree", OTHERS),
    Difference("untrue sizes", "two sizes differ|(longer|shorter) than it says|ends too early"
               "|wrong packed size|\" is cut off|reaches into", OTHERS),
    Difference("overlapping members", "overlaps another", OTHERS),
    Difference("several disks", "on another disk|on several disks", OTHERS),
    Difference("bytes behind, two ends", "has no end record|more than one end record", OTHERS),
    Difference("directory of another size", "directory is (damaged|larger)|the directory outside",
               OTHERS),
    Difference("encryption, other methods", "is encrypted|with the method|a newer program", OTHERS),
    Difference("damaged extra fields", "damaged extra field", OTHERS),
    Difference("bytes before the archive", "extra bytes at beginning or within", (UNZIP,), True),
    Difference("version in the header", "Headers Error", (SEVEN_ZIP,), True),
    # ISA-L takes them, and zlib, which Python uses, does not: it depends on the build.
    Difference("an incomplete code, ISA-L", "invalid distances set", (PYTHON,), True, True),
    Difference("an incomplete code, zlib", "does not inflate", (UNZIP, SEVEN_ZIP), False, True),
    Difference("a disk number alone", "Unavailable data", (SEVEN_ZIP,), True),
)


@dataclass
class Verdict:
    accepts: bool
    message: str = ""


def run(command, folder):
    done = subprocess.run(command, cwd=folder, stdin=subprocess.DEVNULL, capture_output=True,
                          timeout=60, check=False)
    return done.returncode, (done.stdout + done.stderr).decode(errors="replace")


def ask_unzip(folder, name):
    """A warning counts as a refusal here: what a valid package is warned of must be known."""
    code, message = run(["unzip", "-tqq", "-P", "none", name], folder)
    return Verdict(code == 0, message if code > 1 else f"warning: {message}")


def ask_seven_zip(folder, name):
    code, message = run(["7z", "t", "-bso0", "-bsp0", "-pnone", "--", name], folder)
    return Verdict(code == 0, message)


def ask_python(folder, name):
    try:
        with zipfile.ZipFile(folder / name) as archive:
            bad = archive.testzip()
        return Verdict(bad is None, f"bad: {bad}")
    except Exception as error:  # zipfile raises what it likes for damage
        return Verdict(False, repr(error))


ASK = {UNZIP: ask_unzip, SEVEN_ZIP: ask_seven_zip, PYTHON: ask_python}


def ask_tarvo(tarvoctl, folder, names):
    verdicts = {}
    for first in range(0, len(names), PER_CALL):
        code, output = run([tarvoctl, "package", "check", "--json", *names[first:first + PER_CALL]],
                           folder)
        if code not in (0, 1):
            sys.exit(f"tarvoctl ended with {code}: {output}")
        for fault in json.JSONDecoder().raw_decode(output)[0]:
            reason = fault.get("reason", "")
            if fault.get("member"):
                reason = reason.replace(fault["member"], "*", 1)
            verdicts[fault["file"]] = Verdict(fault["valid"], reason)
    return verdicts


def path_of(info):
    """Where a member belongs. Python takes every name that is not marked as UTF-8 for code page
    437; on Unix such names mostly are UTF-8 all the same, and we read them so."""
    name = info.orig_filename
    if info.create_system == 3 and not info.flag_bits & 0x800:
        try:
            name = name.encode("cp437").decode()
        except UnicodeDecodeError:
            pass
    return "/".join(part for part in name.replace("\\", "/").split("/") if part not in ("", "."))


def contents_by_python(archive):
    with zipfile.ZipFile(archive) as opened:
        return {path_of(info): opened.read(info) for info in opened.infolist()
                if not info.orig_filename.endswith(("/", "\\"))}


def contents_by_tarvo(tarvoctl, folder, name):
    target = folder / "unpacked"
    code, message = run([tarvoctl, "package", "unpack", name, target], folder)
    try:
        if code != 0:
            return message
        return {path.relative_to(target).as_posix(): path.read_bytes()
                for path in target.rglob("*") if path.is_file()}
    finally:
        shutil.rmtree(target, ignore_errors=True)


def make_archives(chance, folder):
    """Pairs of what an archive is and its bytes."""
    by_others = archives_of_other_programs(chance, folder)
    made = [("another program's", archive) for archive in by_others]
    made += [("Python's", python_archive(chance)) for _ in range(60)]
    made += [(oddity, odd_archive(chance, oddity)) for oddity in ODDITIES for _ in range(8)]
    for _ in range(1600):
        # Not those of other programs: they hold the times of their making, so that the same change would
        # meet other bytes at each run.
        sound = chance.choice((python_archive(chance),
                               odd_archive(chance, chance.choice(TO_DAMAGE))))
        made.append(("damaged", damaged(chance, sound)))
    return made


def find_difference(ours, other, theirs):
    message = theirs.message if ours.accepts else ours.message
    for difference in DIFFERENCES:
        if (difference.we_accept == ours.accepts and other in difference.others
                and re.search(difference.reason, message)):
            return difference
    return None


class Comparison:
    def __init__(self, tarvoctl, folder):
        self.tarvoctl, self.folder = tarvoctl, folder
        self.counts = collections.Counter()
        self.by_other = collections.Counter()
        self.faults = []

    def run(self, archives):
        names = []
        for number, (_, archive) in enumerate(archives):
            names.append(f"{number:04}.drv")
            (self.folder / names[-1]).write_bytes(archive)
        ours = ask_tarvo(self.tarvoctl, self.folder, names)
        if sorted(ours) != names:
            sys.exit("tarvoctl has not judged every package once")
        for name, (kind, _) in zip(names, archives):
            self.compare(name, kind, ours[name])

    def compare(self, name, kind, ours):
        self.counts["valid" if ours.accepts else "refused"] += 1
        differences = set()
        for other in OTHERS:
            theirs = ASK[other](self.folder, name)
            if theirs.accepts == ours.accepts:
                continue
            difference = find_difference(ours, other, theirs)
            if difference is None:
                verdict = "valid" if ours.accepts else "refused: " + ours.message
                self.faults.append((name, f"{kind}: {verdict}, against {other}: {theirs.message}"))
            else:
                differences.add(difference)
                self.by_other[difference, other] += 1
        self.counts.update(differences)
        if not differences:
            self.counts["agreed"] += 1
        if ours.accepts and not any(PYTHON in difference.others for difference in differences):
            self.compare_contents(name, kind)

    def compare_contents(self, name, kind):
        unpacked = contents_by_tarvo(self.tarvoctl, self.folder, name)
        try:
            expected = contents_by_python(self.folder / name)
        except Exception as error:  # as above
            expected = repr(error)
        if unpacked != expected:
            self.faults.append((name, f"{kind}: unpacks to {unpacked!r:.300}, not {expected!r:.300}"))
        self.counts["compared"] += 1

    def print_table(self):
        counts = self.counts
        print(f"{counts['valid']} valid, {counts['refused']} refused; all four agree on "
              f"{counts['agreed']}; contents of {counts['compared']} compared\n")
        print(f"{'deliberate difference':36}{'archives':>9}" + "".join(f"{o:>8}" for o in OTHERS))
        for difference in DIFFERENCES:
            side = "we accept: " if difference.we_accept else ""
            print(f"{side + difference.name:36.36}{counts[difference]:9}"
                  + "".join(f"{self.by_other[difference, o]:8}" for o in OTHERS))
            if counts[difference] == 0 and not difference.may_be_missing:
                self.faults.append((None, f"no archive differs by \"{difference.name}\""))


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("tarvoctl", type=os.path.abspath)
    parser.add_argument("--seed", type=int, default=1)
    parser.add_argument("--keep", type=pathlib.Path, help="folder for the archives at fault")
    options = parser.parse_args()
    print(f"seed {options.seed}")
    with tempfile.TemporaryDirectory() as folder:
        archives = make_archives(random.Random(options.seed), pathlib.Path(folder))
        if len(archives) < FEWEST:
            sys.exit(f"only {len(archives)} archives")
        comparison = Comparison(options.tarvoctl, pathlib.Path(folder))
        comparison.run(archives)
        comparison.print_table()
        for name, fault in comparison.faults:
            print(f"\nFAULT {name or ''} {fault}")
            if options.keep and name:
                options.keep.mkdir(parents=True, exist_ok=True)
                shutil.copy(comparison.folder / name, options.keep)
    return 1 if comparison.faults else 0


if __name__ == "__main__":
    sys.exit(main())
