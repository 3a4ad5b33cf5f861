"""Measures each piece of work and its peer in turn, prints the ratios and writes them to a page.

Usage: compare.py BUILD-FOLDER ROUNDS PAGE
"""

import dataclasses
import datetime
import json
import os
import pathlib
import platform
import statistics
import subprocess
import sys
import tempfile
import typing

import catalogue_data

_ROOT = pathlib.Path(__file__).resolve().parent.parent
sys.path.insert(0, str(_ROOT / "tests" / "program"))

import session  # noqa: E402


@dataclasses.dataclass
class Sample:
    wall: float
    processor: float  # time, in the same unit


@dataclasses.dataclass
class Comparison:
    work: str
    peer: str
    measure_work: typing.Callable[[], Sample]
    measure_peer: typing.Callable[[], Sample]


@dataclasses.dataclass
class Result:
    comparison: Comparison
    wall: float  # ratio of the medians
    processor: float
    lowest: float  # wall ratio of a single round
    highest: float


def _output(command, **options):
    done = subprocess.run(command, stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True,
                          stdin=subprocess.DEVNULL, timeout=300, **options)
    if done.returncode:
        raise RuntimeError(f"{command[0]} failed: {done.stderr.strip()}")
    return done.stdout


def in_process(program, name, environment):
    """Measures one benchmark of a program made with Google Benchmark."""
    command = [program, f"--benchmark_filter=^{name}$", "--benchmark_min_time=0.2",
               "--benchmark_format=json"]

    def measure():
        run, = json.loads(_output(command, env=environment))["benchmarks"]
        if run.get("error_occurred"):
            raise RuntimeError(f"{name}: {run['error_message']}")
        return Sample(run["real_time"], run["cpu_time"])

    return measure


def first_window(timer, command, environment, folder):
    """Measures from the start of a program to the first picture of its window."""

    def measure():
        output = _output([timer, catalogue_data.ICON_COLOUR, *command], env=environment,
                         cwd=folder)
        return Sample(*(float(text) for text in output.split()))

    return measure


def comparisons(build, data):
    """All comparisons; their data is made in the folder `data`."""
    programs = build / "bin"
    plain, versions = data / "plain", data / "versions"
    catalogue_data.make_catalogue(plain, with_versions=False)
    drivers = catalogue_data.make_catalogue(versions, with_versions=True)

    def catalogue(name, documents):
        environment = dict(os.environ, TARVO_COMMON_DOCUMENTS=str(documents))
        return in_process(programs / "catalogue_bench", name, environment)

    def settings(name):
        return in_process(programs / "settings_bench", name, dict(os.environ, TMPDIR=str(data)))

    display = session.shared().environment

    def window(*command):
        environment = dict(display, TARVO_COMMON_DOCUMENTS=str(versions))
        # The dictionary is looked for in the current folder.
        return first_window(programs / "first_window", command, environment,
                            build / "translations" / "de")

    def minimal(*arguments):
        return window(programs / "minimal_window", catalogue_data.ICON_COLOUR, *arguments)

    one_pass = "one `std::filesystem` pass that counts three extensions"
    tarvo = "start to first painted window, 200 drivers"
    return [
        Comparison("counting the data files of 200 drivers, 20,000 files", one_pass,
                   catalogue("Count", plain), catalogue("Pass", plain)),
        Comparison("listing these drivers, no version recorded", one_pass,
                   catalogue("List", plain), catalogue("Pass", plain)),
        Comparison("listing these drivers, 600 versions recorded", one_pass,
                   catalogue("List", versions), catalogue("Pass", versions)),
        Comparison("`GetSetting` of one key among 100", "gdbm opened, fetched from and closed",
                   settings("GetSetting"), settings("GdbmFetch")),
        Comparison(tarvo, "a minimal Qt window, 200 icons drawn in memory",
                   window(programs / "tarvo"), minimal()),
        Comparison(tarvo, "a minimal Qt window, 200 icons read from the same files",
                   window(programs / "tarvo"), minimal(drivers)),
    ]


def compare(comparison, rounds):
    # The first run of each warms the caches and does not count.
    comparison.measure_work()
    comparison.measure_peer()
    pairs = [(comparison.measure_work(), comparison.measure_peer()) for _ in range(rounds)]

    def ratio(figure):
        work, peer = ([figure(sample) for sample in side] for side in zip(*pairs))
        return statistics.median(work) / statistics.median(peer)

    single = [work.wall / peer.wall for work, peer in pairs]
    return Result(comparison, ratio(lambda sample: sample.wall),
                  ratio(lambda sample: sample.processor), min(single), max(single))


def table(results):
    lines = ["| Work | Peer | Wall time | Processor time | Single rounds, wall time |",
             "|---|---|---:|---:|---:|"]
    for result in results:
        lines.append(f"| {result.comparison.work} | {result.comparison.peer} | {result.wall:.2f} "
                     f"| {result.processor:.2f} | {result.lowest:.2f} to {result.highest:.2f} |")
    return "\n".join(lines) + "\n"


def machine(data):
    """What the figures were taken on, in words."""
    model = "an unnamed processor"
    for line in pathlib.Path("/proc/cpuinfo").read_text().splitlines():
        if line.startswith("model name"):
            model = line.partition(":")[2].strip()
            break
    system = platform.freedesktop_os_release()["PRETTY_NAME"]
    file_system = _output(["stat", "-f", "-c", "%T", str(data)]).strip()
    cores = len(os.sched_getaffinity(0))
    load = os.getloadavg()[0]
    return f"{model}, {cores} cores, load average {load:.1f}; {system}; data on {file_system}"


_PAGE = """# Performance

Written by `bench/run`, which measures each piece of work and its peer in turn, {rounds} rounds after
one that does not count. A ratio is Tarvo's median divided by the peer's: below 1, Tarvo is faster.
The times themselves say little on a shared machine, and are not kept; the last column shows how far
single rounds were apart. Where the load average is above the number of cores, other work has
disturbed the wall times, and the ratio of the processor times is the one to go by.

{date}, {machine}.

{table}
How it is measured:

- The catalogue has 200 drivers, each with an icon file and 100 files in 5 subfolders: 40 CSV, 20 ASC,
  20 TXT and 20 others. With versions recorded, the settings file has an entry for each of the three
  tools of every driver.
- Counting and listing run in one process over the null front end, and fail unless they find as many
  files as the plain pass. Listing also reads the icons and the recorded versions.
- Both settings stores are opened and closed for each value, which must be the right one.
- The first window is timed from outside, from the start of the process until the list's icons are
  seen on a virtual X display with a window manager; the processor time is that of the program alone.
  Tarvo lists the catalogue with versions recorded and loads the German dictionary. The minimal
  window is a `QListView` of 200 icons with nothing around it, of the same size.
"""


def main(build, rounds, page):
    memory = pathlib.Path("/dev/shm")
    parent = memory if os.access(memory, os.W_OK) else None
    with tempfile.TemporaryDirectory(prefix="tarvo-bench-", dir=parent) as name:
        data = pathlib.Path(name)
        results = []
        for comparison in comparisons(build, data):
            print(f"measuring: {comparison.work} / {comparison.peer}", flush=True)
            results.append(compare(comparison, rounds))
        text = table(results)
        page.write_text(_PAGE.format(rounds=rounds, date=datetime.date.today().isoformat(),
                                     machine=machine(data), table=text))
    print(f"\n{text}\nwritten to {page}")


if __name__ == "__main__":
    if len(sys.argv) != 4:
        sys.exit(__doc__)
    main(pathlib.Path(sys.argv[1]).resolve(), int(sys.argv[2]), pathlib.Path(sys.argv[3]))
