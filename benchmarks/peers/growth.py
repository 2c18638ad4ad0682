#!/usr/bin/env python3
"""Draws how the cost of operations grows with what they are given, from the rows growth/ of a run of corvex_peers.

    growth.py RUN.json PICTURE.svg

Both axes are logarithmic: size along, the time for one unit of it upwards, as the median of the repetitions. A level
line is cost in proportion to size; one that rises by a decade for a decade is cost by its square. What a unit is stands
beside each line. Prints the times for one unit at 1000, 10 000, 100 000 and 1 000 000 as well, and how many times the
second the last of them is.
"""

import json
import math
import os
import statistics
import sys
from collections import defaultdict
from html import escape

TITLE = "Time for one unit of input over size"
WIDTH, HEIGHT, MARGIN = 1000, 560, 28
LEFT, TOP, RIGHT, BOTTOM = 96, 64, 690, 490
# Of the sequence that the pictures of the examples use, its order kept: colours that stand out on white.
STOPS = ((13, 8, 135), (106, 0, 168), (177, 42, 144), (225, 100, 98), (245, 148, 34))


def read_run(path):
    """For each operation its points (size, ns for one unit), by size."""
    times = defaultdict(lambda: defaultdict(list))
    with open(path, encoding="utf-8") as text:
        for entry in json.load(text)["benchmarks"]:
            group, variant, *_ = entry["run_name"].split("/")
            if group == "growth" and entry["run_type"] == "iteration" and not entry.get("error_occurred"):
                operation, size = variant.rsplit(":", 1)
                times[operation][int(size)].append(1e9 / entry["items_per_second"])
    return {operation: [(size, statistics.median(sizes[size])) for size in sorted(sizes)]
            for operation, sizes in times.items()}


def colour(position):
    """A colour of the sequence for a position from 0 to 1."""
    lower = min(int(position * 4), 3)
    share = position * 4 - lower
    return "#" + "".join(f"{round(a + share * (b - a)):02x}" for a, b in zip(STOPS[lower], STOPS[lower + 1]))


def show_size(size):
    return f"{size:,.0f}".replace(",", " ")


def show_time(nanoseconds):
    """Three digits in the smallest unit in which they stand before the point."""
    for unit in ("ns", "µs", "ms"):
        if nanoseconds < 1000:
            return f"{nanoseconds:.3g} {unit}"
        nanoseconds /= 1000
    return f"{nanoseconds:.3g} s"


class Axis:
    """A logarithmic axis over whole decades, between two places on the page."""

    def __init__(self, values, start, end):
        self.low = math.floor(math.log10(min(values)))
        self.high = max(math.ceil(math.log10(max(values))), self.low + 1)
        self.start, self.end = start, end

    def __call__(self, value):
        return self.start + (self.end - self.start) * (math.log10(value) - self.low) / (self.high - self.low)

    def decades(self):
        return [10.0**power for power in range(self.low, self.high + 1)]


def text(x, y, words, style=""):
    return f'<text x="{x:.2f}" y="{y:.2f}"{" " if style else ""}{style}>{escape(words)}</text>'


def line(x1, y1, x2, y2, stroke="#dddddd", style=""):
    return (f'<line x1="{x1:.2f}" y1="{y1:.2f}" x2="{x2:.2f}" y2="{y2:.2f}" stroke="{stroke}" stroke-width="1"'
            f'{" " if style else ""}{style}/>')


def grid(across, upwards):
    """The decades of both axes with their labels."""
    parts = []
    for size in across.decades():
        parts.append(line(across(size), TOP, across(size), BOTTOM))
        parts.append(text(across(size), BOTTOM + 22, show_size(size), 'text-anchor="middle"'))
    for time in upwards.decades():
        parts.append(line(LEFT, upwards(time), RIGHT, upwards(time)))
        parts.append(text(LEFT - 10, upwards(time) + 5, show_time(time), 'text-anchor="end"'))
    parts.append(text((LEFT + RIGHT) / 2, BOTTOM + 48, "size", 'text-anchor="middle"'))
    return parts


def spread(places, gap):
    """The places, ascending, moved down where they are nearer than the gap, and all back up past the lower end."""
    moved = []
    for place in places:
        moved.append(max(place, moved[-1] + gap) if moved else place)
    excess = max(0.0, moved[-1] - BOTTOM)
    return [place - excess for place in moved]


def curves(operations, across, upwards):
    """A line for each operation, its name beside its end; the order of the ends decides colours and labels."""
    ordered = sorted(operations.items(), key=lambda item: upwards(item[1][-1][1]))
    labels = spread([upwards(points[-1][1]) for _, points in ordered], 22)
    parts = []
    for i, ((operation, points), label) in enumerate(zip(ordered, labels)):
        stroke = colour(i / max(1, len(ordered) - 1))
        places = [(across(size), upwards(time)) for size, time in points]
        path = "".join(f"{'L' if k else 'M'}{x:.2f} {y:.2f}" for k, (x, y) in enumerate(places))
        parts.append(f'<path fill="none" stroke="{stroke}" stroke-width="2" stroke-linejoin="round" d="{path}"/>')
        parts += [f'<circle cx="{x:.2f}" cy="{y:.2f}" r="3.5" fill="{stroke}"/>' for x, y in places]
        x, y = places[-1]
        parts.append(line(x + 6, y, RIGHT + 12, label, stroke, 'stroke-dasharray="2 3"'))
        parts.append(text(RIGHT + 18, label + 5, f"{operation}: {show_time(points[-1][1])}", f'fill="{stroke}"'))
    return parts


def print_table(operations):
    """A line for each operation that was run at 10 000 and above."""
    sizes = (1000, 10_000, 100_000, 1_000_000)
    width = max(len(operation) for operation in operations)
    print("operation".ljust(width) + "".join(show_size(size).rjust(12) for size in sizes) + "  grows by")
    for operation, points in operations.items():
        times = dict(points)
        largest = max(times)
        if 10_000 not in times or largest == 10_000:
            continue
        shown = (show_time(times[size]) if size in times else "" for size in sizes)
        print(operation.ljust(width) + "".join(time.rjust(12) for time in shown)
              + f"{times[largest] / times[10_000]:10.2f}")


def main(run, picture):
    operations = read_run(run)
    if not operations:
        sys.exit(f"growth.py: no rows growth/ in {run}")
    print_table(operations)
    across = Axis([size for points in operations.values() for size, _ in points], LEFT, RIGHT)
    upwards = Axis([time for points in operations.values() for _, time in points], BOTTOM, TOP)
    parts = [
        f'<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 {WIDTH} {HEIGHT}" width="{WIDTH}" height="{HEIGHT}" '
        'font-family="Helvetica, Arial, sans-serif" font-size="15" fill="#333333">',
        f"<title>{TITLE}</title>",
        '<rect width="100%" height="100%" fill="#ffffff"/>',
        text(MARGIN, MARGIN + 14, TITLE, 'font-size="19"'),
        *grid(across, upwards),
        *curves(operations, across, upwards),
        "</svg>",
    ]
    os.makedirs(os.path.dirname(picture) or ".", exist_ok=True)
    with open(picture, "w", encoding="utf-8") as file:
        file.write("\n".join(parts) + "\n")


if __name__ == "__main__":
    if len(sys.argv) != 3:
        sys.exit(__doc__)
    main(*sys.argv[1:])
