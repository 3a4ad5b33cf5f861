"""The ratios of the last runs, kept beside the page: one run alone may have met a good or a bad mood of the
machine."""

import csv
import datetime
import os

_KEPT = 3  # runs
_FIELDS = ("run", "load", "work", "peer", "target", "wall", "processor")


def _is_met(row):
    return all(float(row[figure]) <= float(row["target"]) for figure in ("wall", "processor"))


class RunHistory:
    """A file of comma-separated values with a row for each ratio that has a target."""

    def __init__(self, path):
        self._path = path
        self._rows = []
        if path.exists():
            with path.open(newline="") as file:
                self._rows = list(csv.DictReader(file))

    def add(self, targets):
        """Adds a run: each work, peer, target, and the ratios of wall and processor time. The oldest runs
        beyond those kept go."""
        head = {"run": datetime.datetime.now().isoformat(timespec="seconds"),
                "load": f"{os.getloadavg()[0]:.1f}"}
        for work, peer, target, wall, processor in targets:
            self._rows.append(head | {"work": work, "peer": peer, "target": f"{target:g}",
                                      "wall": f"{wall:.3f}", "processor": f"{processor:.3f}"})
        kept = self._runs()[-_KEPT:]
        self._rows = [row for row in self._rows if row["run"] in kept]
        with self._path.open("w", newline="") as file:
            writer = csv.DictWriter(file, _FIELDS, lineterminator="\n")
            writer.writeheader()
            writer.writerows(self._rows)

    def verdict(self, work, peer):
        """How many of the kept runs have met a target, of those that have measured it."""
        met = [_is_met(row) for row in self._rows if (row["work"], row["peer"]) == (work, peer)]
        return f"{sum(met)} of {len(met)}"

    def description(self):
        """When the runs were, and under which load."""
        loads = {row["run"]: row["load"] for row in self._rows}
        return ", ".join(f"{run} (load {loads[run]})" for run in self._runs())

    def _runs(self):
        return sorted({row["run"] for row in self._rows})
