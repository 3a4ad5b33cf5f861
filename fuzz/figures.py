"""Says what came of the last run of some fuzz targets, added to the runs before.

Usage: figures.py BUILD-FOLDER TARGET...

Reads each target's log, adds its executions to the sum in BUILD-FOLDER/executions.json, and prints a line
for people and a line "figure fuzz.TARGET: TEXT" for the page of figures. Ends with 1 when something was
found that is not mended yet.
"""

import json
import pathlib
import re
import sys

CORPUS = pathlib.Path(__file__).parent / "corpus"


def _last(pattern, log):
    """The number of the pattern's last occurrence in a log; 0 when it has none."""
    numbers = re.findall(pattern, log)
    return int(numbers[-1]) if numbers else 0


def _number_of_files(folder, pattern):
    return len(list(folder.glob(pattern)))


def main():
    build = pathlib.Path(sys.argv[1])
    sums_file = build / "executions.json"
    sums = json.loads(sums_file.read_text()) if sums_file.exists() else {}
    open_findings = 0
    for target in sys.argv[2:]:
        log = (build / f"{target}.log").read_text(errors="replace")
        executions = _last(r"stat::number_of_executed_units: (\d+)", log)
        if executions == 0:
            sys.exit(f"the log of {target} tells of no executions")
        sums[target] = sums.get(target, 0) + executions
        speed = _last(r"stat::average_exec_per_sec: +(\d+)", log)
        edges, features = _last(r" cov: (\d+)", log), _last(r" ft: (\d+)", log)
        found = _number_of_files(build / "findings" / target, "*")
        mended = _number_of_files(CORPUS / target, "found-*")
        open_findings += found
        defects = "1 defect" if mended == 1 else f"{mended} defects"
        print(f"{target}: {executions:,} executions, {speed:,} a second, {edges:,} edges, "
              f"{features:,} features, {found} findings open; {sums[target]:,} executions in all")
        print(f"figure fuzz.{target}: {sums[target]:,} executions, {edges:,} edges and {features:,} "
              f"features covered, {defects} found and mended, {found} open")
    sums_file.write_text(json.dumps(sums, indent=1) + "\n")
    sys.exit(1 if open_findings else 0)


if __name__ == "__main__":
    main()
