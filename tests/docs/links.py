#!/usr/bin/env python3
"""Follows every link, anchor and picture within the HTML of a folder, and those that its scripts and search lists hold.

    tests/docs/links.py FOLDER

Names each that leads nowhere and each picture without a text that stands for it. Links to other hosts are not followed.
"""

import html.parser
import pathlib
import re
import sys
import urllib.parse


class Page(html.parser.HTMLParser):
    """The anchors of a page, what it refers to, and the pictures without a text."""

    def __init__(self, text):
        super().__init__()
        self.anchors = set()
        self.targets = []
        self.untold = []
        self.feed(text)

    def handle_starttag(self, tag, attributes):
        values = dict(attributes)
        self.anchors.update(values[name] for name in ("id", "name") if values.get(name))
        self.targets += [values[name] for name in ("href", "src") if values.get(name)]
        if tag == "img" and "alt" not in values:
            self.untold.append(values.get("src"))


def script_targets(path):
    """The pages that a script of the navigation or the search leads to."""
    return re.findall(r"""["']([^"'<>\s]+\.html(?:#[^"'\s]*)?)["']""", path.read_text(encoding="utf-8"))


def main(folder):
    pages = {path: Page(path.read_text(encoding="utf-8")) for path in sorted(folder.rglob("*.html"))}
    if not pages:
        sys.exit(f"links.py: there are no pages in {folder}")
    targets = [(path, target) for path, page in pages.items() for target in page.targets]
    # Scripts of the search stand in a folder of their own and name their targets from there.
    for path in sorted(folder.glob("*.js")) + sorted(folder.glob("search/*_?.js")):
        targets += [(path, target) for target in script_targets(path)]

    faults = {f"{path.name}: the picture {source} has no text" for path, page in pages.items() for source in page.untold}
    followed = 0
    for path, target in targets:
        parts = urllib.parse.urlsplit(target)
        if parts.scheme or parts.netloc:
            continue
        followed += 1
        file = (path.parent / urllib.parse.unquote(parts.path)).resolve() if parts.path else path
        anchor = urllib.parse.unquote(parts.fragment)
        if not file.is_file():
            faults.add(f"{path.name}: there is no {target}")
        elif anchor and file in pages and anchor not in pages[file].anchors:
            faults.add(f"{path.name}: {file.name} has no anchor {anchor}")

    for fault in sorted(faults):
        print(f"links.py: {fault}", file=sys.stderr)
    if faults:
        sys.exit(f"links.py: {len(faults)} faults")
    print(f"{followed} links lead somewhere, on {len(pages)} pages")


if __name__ == "__main__":
    if len(sys.argv) != 2:
        sys.exit(__doc__)
    main(pathlib.Path(sys.argv[1]).resolve())
