"""Measuring a piece of work and its peer in turn."""

import dataclasses
import json
import os
import statistics
import subprocess
import tempfile
import time
import typing

_DEADLINE = 300  # seconds for one measurement


@dataclasses.dataclass
class Sample:
    wall: float
    processor: float  # time, in the same unit
    memory: int = 0  # at most in use at one moment, in KiB; 0 when nobody looked


@dataclasses.dataclass
class Comparison:
    work: str
    peer: str
    target: float | None  # the ratio that is wanted at most; none where there is no wish
    measure_work: typing.Callable[[], Sample]
    measure_peer: typing.Callable[[], Sample]
    memory_target: float | None = None  # where the memory is compared, too


@dataclasses.dataclass
class Ratios:
    """The medians of the work divided by those of the peer."""

    comparison: Comparison
    wall: float
    processor: float
    memory: float | None
    lowest: float  # wall ratio of a single round
    highest: float


def compare(comparison, rounds):
    # The first run of each warms the caches and does not count.
    comparison.measure_work()
    comparison.measure_peer()
    pairs = [(comparison.measure_work(), comparison.measure_peer()) for _ in range(rounds)]

    def ratio(figure):
        work, peer = ([figure(sample) for sample in side] for side in zip(*pairs))
        return statistics.median(work) / statistics.median(peer)

    single = [work.wall / peer.wall for work, peer in pairs]
    memory = ratio(lambda sample: sample.memory) if comparison.memory_target else None
    return Ratios(comparison, ratio(lambda sample: sample.wall),
                  ratio(lambda sample: sample.processor), memory, min(single), max(single))


def output_of(command, **options):
    """Runs a command, which must succeed, and gives what it prints."""
    done = subprocess.run(command, stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True,
                          stdin=subprocess.DEVNULL, timeout=_DEADLINE, **options)
    if done.returncode:
        raise RuntimeError(f"{command[0]} failed: {done.stderr.strip()}")
    return done.stdout


def benchmarks(program, names, environment, *options):
    """What a program made with Google Benchmark reports of the benchmarks that match a pattern."""
    report = json.loads(output_of([program, f"--benchmark_filter=^({names})$",
                                   "--benchmark_format=json", *options], env=environment))
    runs = report["benchmarks"]
    if not runs:
        raise RuntimeError(f"{program} has no benchmark {names}")
    for run in runs:
        if run.get("error_occurred"):
            raise RuntimeError(f"{run['name']}: {run['error_message']}")
    return runs


def in_process(program, name, environment):
    """Measures one benchmark of a program made with Google Benchmark."""

    def measure():
        run, = benchmarks(program, name, environment, "--benchmark_min_time=0.2")
        return Sample(run["real_time"], run["cpu_time"])

    return measure


def from_outside(*commands, environment, before=lambda: None, after=lambda outputs: None,
                 folder=None):
    """Measures programs that run one after the other, each from its start to its end, with the time of
    the processes that they have started and waited for. What `before` and `after` do does not count;
    the latter gets what each program has printed, and raises an error if it has not done its work."""

    def run(command, output):
        start = time.perf_counter()
        process = subprocess.Popen(command, stdin=subprocess.DEVNULL, stdout=output,
                                   stderr=subprocess.STDOUT, env=environment, cwd=folder)
        _, status, usage = os.wait4(process.pid, 0)
        passed = time.perf_counter() - start
        process.returncode = os.waitstatus_to_exitcode(status)
        return process.returncode, Sample(passed, usage.ru_utime + usage.ru_stime)

    def measure():
        before()
        total = Sample(0, 0)
        outputs = []
        for command in commands:
            with tempfile.TemporaryFile("w+") as output:
                result, sample = run(command, output)
                output.seek(0)
                outputs.append(output.read())
            if result:
                raise RuntimeError(f"{command[0]} failed with {result}: {outputs[-1]}")
            total.wall += sample.wall
            total.processor += sample.processor
        after(outputs)
        return total

    return measure
