"""The program of this system and the one for Windows share a settings file.

Environment: TARVO_NATIVE_CTL and TARVO_WINDOWS_CTL, the two builds' tarvoctl; TARVO_WINE, what runs
the second. Without the first build there is nothing to compare, and the test says so.
"""

import datetime
import os
import pathlib
import subprocess
import sys
import tempfile
import threading
import time
import unittest

NATIVE = [os.environ["TARVO_NATIVE_CTL"]]
WINDOWS = [os.environ["TARVO_WINE"], os.environ["TARVO_WINDOWS_CTL"]]
PROGRAMS = {"native": NATIVE, "Windows": WINDOWS}

RECORD = 2050  # bytes: the text's length in two, two fields of 1024
SKIPPED = 77
DEADLINE = 60  # seconds
KEYS = 6  # that each writer adds


def record(first, second):
    return b"\x00\x08" + first.ljust(1024, b"\0") + second.ljust(1024, b"\0")


def now_in_days():
    """Local time as the programs store it: days since 30 December 1899."""
    return (datetime.datetime.now() - datetime.datetime(1899, 12, 30)) / datetime.timedelta(days=1)


def bytes_read_by(process):
    """How many bytes a process has read from files until now; it waits for a lock by reading it."""
    text = pathlib.Path(f"/proc/{process.pid}/io").read_text(encoding="ascii")
    return int(text.split("rchar: ")[1].split()[0])


class TheSharedStore(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory(prefix="tarvo-test-")
        self.addCleanup(folder.cleanup)
        # One value of one variable tells both programs where the file is.
        self.environment = dict(os.environ, TARVO_COMMON_DOCUMENTS=folder.name)
        self.folder = folder.name
        self.failures = []
        self.file = pathlib.Path(folder.name) / "Halvex Limited" / "localregistry.dat"

    def start(self, program, *words):
        return subprocess.Popen(
            [*program, "settings", *words], cwd=self.folder, env=self.environment,
            stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, stderr=subprocess.PIPE)

    def run_to_end(self, program, *words):
        process = self.start(program, *words)
        out, err = process.communicate(timeout=DEADLINE)
        self.assertEqual(process.returncode, 0, err.decode("utf-8", "replace"))
        return out.decode("utf-8")

    def get(self, program, key):
        return self.run_to_end(program, "get", key).removesuffix("\n")

    def test_is_read_and_extended_by_each_after_the_other(self):
        long_value = "é" * 1024 + "x" * 1024 + "end"
        for name, writer in PROGRAMS.items():
            self.run_to_end(writer, "set", f"{name} short", "Größe 5 €")
            self.run_to_end(writer, "set", f"{name} long", long_value)
        for reader in PROGRAMS.values():
            for name in PROGRAMS:
                self.assertEqual(self.get(reader, f"{name} short"), "Größe 5 €")
                self.assertEqual(self.get(reader, f"{name} LONG"), long_value)
        # The lock record, then two keys of one and of three records by each.
        self.assertEqual(self.file.stat().st_size, RECORD * (1 + 2 * (1 + 3)))

    def test_is_overwritten_and_deleted_in_place_by_the_other(self):
        for name, writer in PROGRAMS.items():
            other = NATIVE if writer is WINDOWS else WINDOWS
            self.run_to_end(writer, "set", name, "long" * 1000)
            size = self.file.stat().st_size
            self.run_to_end(other, "set", name, "short")
            self.assertEqual(self.get(writer, name), "short")
            self.run_to_end(other, "delete", name)
            self.assertNotIn(name, self.run_to_end(writer, "list"))
            self.assertEqual(self.file.stat().st_size, size)

    def test_is_not_written_by_either_while_another_program_holds_the_lock(self):
        for name, program in PROGRAMS.items():
            self.run_to_end(program, "set", "key", "before")
            lock = record(b"4534567", str(now_in_days()).encode("ascii"))
            with open(self.file, "r+b") as file:
                file.write(lock)
            held = self.file.read_bytes()
            writer = self.start(program, "set", "key", f"by {name}")
            self.wait_until_it_asks_for_the_lock_again_and_again(writer)
            self.assertIsNone(writer.poll(), "it has not waited")
            self.assertEqual(self.file.read_bytes(), held)
            with open(self.file, "r+b") as file:
                file.write(record(b"", b""))
            _, err = writer.communicate(timeout=DEADLINE)
            self.assertEqual(writer.returncode, 0, err)
            self.assertEqual(self.get(NATIVE, "key"), f"by {name}")
            self.assertEqual(self.file.read_bytes()[:RECORD], record(b"", b""), "the lock is free")

    def test_keeps_what_both_add_and_change_at_the_same_time(self):
        writers = [(f"{name} {number}", program)
                   for number in range(2) for name, program in PROGRAMS.items()]
        loops = [threading.Thread(target=self.write_all, args=writer) for writer in writers]
        for loop in loops:
            loop.start()
        for loop in loops:
            loop.join()
        self.assertEqual(self.failures, [])
        listed = self.run_to_end(NATIVE, "list")
        for name, _ in writers:
            for key in range(KEYS):
                self.assertIn(f"{name} key {key}", listed)
                self.assertEqual(self.get(NATIVE, f"{name} key {key}"), f"{name} changes {key}")
        # Not a record more than keys, and the lock is free.
        self.assertEqual(self.file.stat().st_size, RECORD * (1 + len(writers) * KEYS))
        self.assertEqual(self.file.read_bytes()[:RECORD], record(b"", b""))

    def write_all(self, name, program):
        """Adds keys of its own and changes them, each by a process of its own."""
        try:
            for verb in ("adds", "changes"):
                for key in range(KEYS):
                    self.run_to_end(program, "set", f"{name} key {key}", f"{name} {verb} {key}")
        except Exception as failure:  # the thread's end must not hide it
            self.failures.append(f"{name}: {failure}")

    def wait_until_it_asks_for_the_lock_again_and_again(self, process):
        end = time.monotonic() + DEADLINE
        # Far more than a start, a look-up and a write read, the dictionary and the program included.
        many_times = 40_000_000
        while process.poll() is None and time.monotonic() < end:
            if bytes_read_by(process) > many_times:
                return
        self.fail("it does not wait for the lock")


if __name__ == "__main__":
    if not pathlib.Path(NATIVE[0]).exists():
        print(f"{NATIVE[0]} is missing: build the preset release first")
        sys.exit(SKIPPED)
    unittest.main()
