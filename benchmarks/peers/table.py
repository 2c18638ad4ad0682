#!/usr/bin/env python3
"""Tabulates a run of corvex_peers against what it is to reach.

    table.py REACHES RUN.json

Prints a line for each comparison of reaches.txt whose contenders all ran: medians of the repetitions, their ratio, how
far the repetitions scatter, and whether the ratio is reached. The exit status is 1 if a contender disagreed with us.
"""

import json
import statistics
import sys
from collections import defaultdict

UNITS = {"ns": 1, "us": 1e3, "ms": 1e6, "s": 1e9}
OURS = "ours"


def read_reaches(path):
    """The comparisons as (row, peers, reach)."""
    with open(path, encoding="utf-8") as lines:
        fields = [line.split("#")[0].split() for line in lines]
    return [(row, peers.split(","), reach) for row, peers, reach in filter(None, fields)]


def read_run(path):
    """The times of each contender in ns, for a run and for an item of it, and the errors."""
    runs, items, errors = defaultdict(list), defaultdict(list), {}
    with open(path, encoding="utf-8") as text:
        for entry in json.load(text)["benchmarks"]:
            name = entry["run_name"]
            if entry.get("error_occurred"):
                errors[name] = entry["error_message"]
            elif entry["run_type"] == "iteration":
                runs[name].append(entry["cpu_time"] * UNITS[entry["time_unit"]])
                items[name].append(1e9 / entry["items_per_second"])
    return runs, items, errors


def scatter(times):
    """Half the range that holds the middle half of the times, as a part of their median."""
    if len(times) < 2:
        return 0.0
    low, _, high = statistics.quantiles(times, n=4, method="inclusive")
    return (high - low) / 2 / statistics.median(times)


def show_time(nanoseconds):
    """Three significant digits in the largest unit that leaves a whole one."""
    unit = max((u for u in UNITS if UNITS[u] <= nanoseconds), key=UNITS.get, default="ns")
    value = nanoseconds / UNITS[unit]
    return f"{value:.{max(0, 2 - len(str(int(value))) + 1)}f} {unit}"


def compare(row, peers, reach, runs):
    """One line of the table against the fastest of the peers, or none if one of the contenders is missing."""
    ours = runs.get(f"{row}/{OURS}")
    theirs = {peer: runs[f"{row}/{peer}"] for peer in peers if f"{row}/{peer}" in runs}
    if not ours or len(theirs) < len(peers):
        return None
    best = min(theirs, key=lambda peer: statistics.median(theirs[peer]))
    their_time, our_time = statistics.median(theirs[best]), statistics.median(ours)
    ratio = their_time / our_time
    verdict = "" if reach == "-" else "yes" if ratio >= float(reach) else "no"
    spread = scatter(ours) + scatter(theirs[best])
    return [row, best, show_time(their_time), show_time(our_time), f"{ratio:.2f}", f"{spread:.0%}", reach, verdict]


def bound(row, limit, items):
    """One line of the table for a limit on our own time by item, or none if the row is missing."""
    if f"{row}/{OURS}" not in items:
        return None
    ours = items[f"{row}/{OURS}"]
    time, digits = statistics.median(ours), limit.rstrip("mnsu")
    verdict = "yes" if time <= float(digits) * UNITS[limit[len(digits):]] else "no"
    return [row, "-", "", show_time(time) + " an item", "", f"{scatter(ours):.0%}", limit, verdict]


def main(reaches, run):
    runs, items, errors = read_run(run)
    lines = [["row", "peer", "their time", "our time", "ratio", "scatter", "reach", "reached"]]
    for row, peers, reach in read_reaches(reaches):
        line = bound(row, reach, items) if peers == [OURS] else compare(row, peers, reach, runs)
        if line:
            lines.append(line)
    widths = [max(map(len, column)) for column in zip(*lines)]
    for line in lines:
        cells = [cell.ljust(w) if i < 2 else cell.rjust(w) for i, (cell, w) in enumerate(zip(line, widths))]
        print("  ".join(cells).rstrip())
    for name, message in errors.items():
        print(f"{name}: not timed, {message}", file=sys.stderr)
    return 1 if errors else 0


if __name__ == "__main__":
    if len(sys.argv) != 3:
        sys.exit(__doc__)
    sys.exit(main(*sys.argv[1:]))
