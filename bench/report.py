"""What was measured, as tables and as the page docs/performance.md."""

import dataclasses
import datetime
import os
import pathlib
import platform

import measuring
from run_history import RunHistory

_MEMORY = "peak memory of that start"
_TEMPLATE = pathlib.Path(__file__).with_name("performance.md.in")


@dataclasses.dataclass
class Growth:
    """What a unit of some work takes when there are more and more units, or things around it."""

    work: str
    unit: str
    times: dict[int, float]  # microseconds of processor time for a unit, by their number

    # A unit may take this much longer than with a tenth as many of them. As much as sorting needs, and
    # caches of a processor that no longer hold everything; work with the square of the number takes
    # ten times as long in the end.
    MOST = 2.5

    def steepest(self):
        """How much longer a unit takes than with a tenth as many, where that is most."""
        times = [self.times[size] for size in sorted(self.times)]
        return max(later / earlier for earlier, later in zip(times, times[1:]))

    def grows_faster(self):
        return self.steepest() > self.MOST


@dataclasses.dataclass
class Figure:
    """Something that has no peer."""

    work: str
    value: float
    target: float
    unit: str


class Report:
    def __init__(self):
        self.ratios: list[measuring.Ratios] = []
        self.growths: list[Growth] = []
        self.figures: list[Figure] = []
        self.left_out: list[str] = []  # why

    def tables(self, history=None):
        made = {"ratio_table": (self.ratios, lambda rows: _ratio_table(rows, history)),
                "figure_table": (self.figures, _figure_table),
                "growth_table": (self.growths, _growth_table)}
        return {name: table(rows) for name, (rows, table) in made.items() if rows}

    def write_page(self, page, rounds, data):
        history = RunHistory(page.with_suffix(".csv"))
        history.add(self._targets())
        page.write_text(_TEMPLATE.read_text().format(
            rounds=rounds, date=datetime.date.today().isoformat(), machine=machine(data),
            left_out="".join(f"\nLeft out: {reason}\n" for reason in self.left_out),
            runs=history.description(), most=f"{Growth.MOST:g}", **self.tables(history)))

    def _targets(self):
        for row in self.ratios:
            comparison = row.comparison
            if comparison.target is not None:
                yield (comparison.work, comparison.peer, comparison.target, row.wall,
                       row.processor)
            if row.memory is not None:
                yield _MEMORY, comparison.peer, comparison.memory_target, row.memory, row.memory


def _row(*cells):
    return "| " + " | ".join(cells) + " |"


def _verdict(target, wall, processor):
    if target is None:
        return ""
    met = {"wall time": wall <= target, "processor time": processor <= target}
    if all(met.values()):
        return "yes"
    return next((f"{name} only" for name, is_met in met.items() if is_met), "**no**")


def _ratio_table(rows, history):
    def last_runs(work, peer, target):
        return history.verdict(work, peer) if history and target is not None else ""

    lines = [_row("Work", "Peer", "Wall time", "Processor time", "Target", "Met",
                  "In the last runs", "Single rounds, wall time"),
             "|---|---|---:|---:|---:|---|---|---:|"]
    for row in rows:
        comparison = row.comparison
        target = comparison.target
        lines.append(_row(comparison.work, comparison.peer, f"{row.wall:.2f}",
                          f"{row.processor:.2f}", "" if target is None else f"{target:.2f}",
                          _verdict(target, row.wall, row.processor),
                          last_runs(comparison.work, comparison.peer, target),
                          f"{row.lowest:.2f} to {row.highest:.2f}"))
        if row.memory is not None:
            wanted = comparison.memory_target
            lines.append(_row(_MEMORY, comparison.peer,
                              f"{row.memory:.2f} (memory)", "", f"{wanted:.2f}",
                              "yes" if row.memory <= wanted else "**no**",
                              last_runs(_MEMORY, comparison.peer, wanted), ""))
    return "\n".join(lines) + "\n"


def _figure_table(rows):
    lines = [_row("Work", "Figure", "Target", "Met"), "|---|---:|---:|---|"]
    for row in rows:
        lines.append(_row(row.work, f"{row.value:.3f} {row.unit}", f"{row.target:g} {row.unit}",
                          "yes" if row.value < row.target else "**no**"))
    return "\n".join(lines) + "\n"


def _growth_table(rows):
    sizes = sorted({size for row in rows for size in row.times})
    lines = [_row("Work", "Unit", *(f"{size:,}" for size in sizes), "Grows"),
             "|---|---|" + "---:|" * len(sizes) + "---|"]
    for row in rows:
        times = (f"{row.times[size]:.3g}" if size in row.times else "" for size in sizes)
        grows = f"**faster: {row.steepest():.1f}**" if row.grows_faster() else "as the work"
        lines.append(_row(row.work, row.unit, *times, grows))
    return "\n".join(lines) + "\n"


def machine(data):
    """What the figures were taken on, in words."""
    model = "an unnamed processor"
    for line in pathlib.Path("/proc/cpuinfo").read_text().splitlines():
        if line.startswith("model name"):
            model = line.partition(":")[2].strip()
            break
    system = platform.freedesktop_os_release()["PRETTY_NAME"]
    file_system = measuring.output_of(["stat", "-f", "-c", "%T", str(data)]).strip()
    cores = len(os.sched_getaffinity(0))
    load = os.getloadavg()[0]
    return f"{model}, {cores} cores, load average {load:.1f}; {system}; data on {file_system}"
