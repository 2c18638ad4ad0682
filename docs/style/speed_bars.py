#!/usr/bin/env python3
"""Turns the measured table of the speed page, as `scripts/bench` prints it, into groups with bars.

  docs/style/speed_bars.py PAGE.html

A bar to the right says that we are faster, one to the left that the other library is, each doubling by the same length.
"""
import html
import math
import pathlib
import re
import sys

GROUPS = [
    ("Vectors", ("normalise", "dot", "cross", "transform", "box")),
    ("Matrices", ("product4", "inverse4", "product", "inverse", "svd", "eigenvectors")),
    ("Sparse matrices", ("sparse",)),
    ("Fits and registration", ("fit", "registration", "robust", "alignment")),
    ("Outlines", ("hull", "containment", "thinning", "offset", "crossings", "circle", "minkowski")),
    ("Splines", ("spline",)),
    ("Lists", ("append", "sort")),
]
ROW = re.compile(r"^(?P<row>\S+)\s+(?P<peer>\S+)\s+(?P<theirs>[\d.]+ \S+)\s+(?P<ours>[\d.]+ \S+)\s+(?P<ratio>[\d.]+)\s+"
                 r"(?P<scatter>\d+%)\s+(?P<reach>\S+)(?:\s+(?P<reached>yes|no))?$")
PIXELS_A_DOUBLING = 34
MOST_DOUBLINGS = 3


def bar(ratio):
    doublings = max(-MOST_DOUBLINGS, min(MOST_DOUBLINGS, math.log2(ratio)))
    width = max(1, round(abs(doublings) * PIXELS_A_DOUBLING))
    half = MOST_DOUBLINGS * PIXELS_A_DOUBLING
    left = half if doublings > 0 else half - width
    kind = "ahead" if ratio >= 1 else "behind"
    return f'<div class="ratio" style="width:{2 * half}px"><i class="{kind}" style="left:{left}px;width:{width}px"></i></div>'


def table(rows):
    lines = ["<table class=\"speed\"><tr><th>row</th><th>other library</th><th>its time</th><th>ours</th>"
             "<th>ratio</th><th></th><th>reach</th></tr>"]
    for row in rows:
        reach = row["reach"] + (" (not reached)" if row["reached"] == "no" else "")
        lines.append(f'<tr><td>{row["row"]}</td><td>{row["peer"]}</td><td>{row["theirs"]}</td><td>{row["ours"]}</td>'
                     f'<td>{row["ratio"]}</td><td>{bar(float(row["ratio"]))}</td><td>{reach}</td></tr>')
    return "\n".join(lines + ["</table>"])


def grouped(text):
    """The groups with their tables, and the lines that are no comparisons as they are."""
    found, rest = {}, []
    for line in text.splitlines():
        match = ROW.match(line)
        if not match:
            if line.strip() and not line.startswith("row "):
                rest.append(line)
            continue
        head = re.match(r"[a-z]+\d*", match["row"])[0]
        name = next((name for name, heads in GROUPS if head in heads or head.rstrip("0123456789") in heads), "Others")
        found.setdefault(name, []).append(match.groupdict())
    order = [name for name, _ in GROUPS] + ["Others"]
    parts = [f"<h3>{name}</h3>\n{table(found[name])}" for name in order if name in found]
    if rest:
        parts.append('<pre class="fragment">' + html.escape("\n".join(rest)) + "</pre>")
    return "\n".join(parts)


def main():
    path = pathlib.Path(sys.argv[1])
    page = path.read_text()

    def replaced(match):
        text = html.unescape(re.sub(r"<[^>]+>", "", match[0].replace("</div>", "\n"))).replace("\xa0", " ")
        return grouped(text) if text.lstrip().startswith("row ") and " ratio " in text else match[0]

    changed = re.sub(r'<div class="fragment">.*?</div><!-- fragment -->|<pre class="fragment">.*?</pre>', replaced, page,
                     flags=re.DOTALL)
    if changed == page:
        sys.exit("speed_bars.py: the page has no table of comparisons")
    path.write_text(changed)


if __name__ == "__main__":
    main()
