"""Puts figures, read from the standard input, into the tables of a page.

Usage: write_figures.py PAGE

Each line "figure NAME: TEXT" goes to the row of a table whose second column names NAME in backticks:
the third column becomes the text, the fourth today's date. A figure without a row is an error, since
nobody would see it.
"""

import datetime
import pathlib
import sys


def _put(lines, name, text, date):
    """Changes the row of that figure; says whether there is one."""
    for position, line in enumerate(lines):
        cells = [cell.strip() for cell in line.strip().strip("|").split("|")]
        if line.startswith("|") and len(cells) == 4 and f"`{name}`" in cells[1]:
            lines[position] = f"| {cells[0]} | {cells[1]} | {text} | {date} |"
            return True
    return False


def main():
    page = pathlib.Path(sys.argv[1])
    lines = page.read_text(encoding="utf-8").splitlines()
    date = datetime.date.today().isoformat()
    missing = []
    for line in sys.stdin:
        name, _, text = line.removeprefix("figure ").strip().partition(": ")
        if not _put(lines, name, text.replace("|", "\\|"), date):
            missing.append(name)
    page.write_text("\n".join(lines) + "\n", encoding="utf-8")
    if missing:
        sys.exit(f"{page} has no row for {', '.join(missing)}")


if __name__ == "__main__":
    main()
