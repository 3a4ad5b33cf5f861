"""Measures each piece of work and its peer in turn, prints the ratios and, when all are measured, writes
them to a page.

Usage: compare.py BUILD-FOLDER WINDOWS-BUILD-FOLDER PAGE [ROUNDS] [GROUP...]

Fewer than 9 rounds, or named groups, print the tables only.
"""

import dataclasses
import os
import pathlib
import sys
import tempfile

_ROOT = pathlib.Path(__file__).resolve().parent.parent
sys.path[:0] = [str(_ROOT / "tests" / "program"), str(_ROOT / "tests" / "windows")]

_ROUNDS = 11
_FEWEST_ROUNDS = 9  # for figures that are kept


@dataclasses.dataclass
class Place:
    """Where a group finds the programs, and a folder in memory for its data."""

    build: pathlib.Path
    windows_build: pathlib.Path  # may be missing
    data: pathlib.Path

    @property
    def programs(self):
        return self.build / "bin"


def _compare(module):
    """A group whose module gives comparisons, one after the other as their data is made."""

    def measure(place, rounds, report):
        import measuring

        reason = getattr(module, "reason_to_leave_out", lambda place: None)(place)
        if reason:
            print(f"left out: {reason}")
            report.left_out.append(reason)
            return
        for comparison in module.comparisons(place):
            print(f"measuring: {comparison.work} / {comparison.peer}", flush=True)
            report.ratios.append(measuring.compare(comparison, rounds))

    return measure


def _groups():
    """What measures each group, by the group's name, in the order of the tables."""
    import catalogue_comparisons
    import growth
    import package_comparisons
    import settings_comparisons
    import start_comparisons
    import tool_wait
    import translation_comparisons
    import windows_comparisons

    return {
        "packages": _compare(package_comparisons),
        "listing": _compare(catalogue_comparisons),
        "settings": _compare(settings_comparisons),
        "translation": _compare(translation_comparisons),
        "start": _compare(start_comparisons),
        "windows": _compare(windows_comparisons),
        "wait": lambda place, rounds, report: tool_wait.measure(place, report),
        "growth": growth.measure,
    }


def _arguments(words):
    rounds = int(words.pop(0)) if words and words[0].isdigit() else _ROUNDS
    groups = _groups()
    unknown = [word for word in words if word not in groups]
    if unknown or rounds < 1:
        sys.exit(f"compare.py: there is no group {unknown or rounds}, only {', '.join(groups)}")
    return rounds, {name: groups[name] for name in words or groups}, not words


def main(build, windows_build, page, words):
    # For the tests' own modules.
    os.environ["TARVO_BUILD_FOLDER"] = str(build)
    os.environ["TARVO_WINDOWS_BUILD_FOLDER"] = str(windows_build)
    from report import Report

    rounds, groups, are_all = _arguments(words)
    memory = pathlib.Path("/dev/shm")
    parent = memory if os.access(memory, os.W_OK) else None
    report = Report()
    with tempfile.TemporaryDirectory(prefix="tarvo-bench-", dir=parent) as name:
        place = Place(build, windows_build, pathlib.Path(name))
        try:
            for measure in groups.values():
                measure(place, rounds, report)
        finally:  # a failure does not lose what was measured before it
            for table in report.tables().values():
                print(f"\n{table}", end="")
        if are_all and rounds >= _FEWEST_ROUNDS:
            report.write_page(page, rounds, place.data)
            print(f"\nwritten to {page}")


if __name__ == "__main__":
    if len(sys.argv) < 4:
        sys.exit(__doc__)
    main(*(pathlib.Path(path).resolve() for path in sys.argv[1:4]), sys.argv[4:])
