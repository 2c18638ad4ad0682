#!/usr/bin/env python3
"""Makes the built pages searchable by words, offline: gathers what there is to find in a file of data, and puts the field
and its script into each page.

  docs/search/index.py FOLDER

FOLDER holds Doxygen's HTML. An entry is a section of a page, a class, a member, or a row of the task table, which leads
straight to its member. search.js ranks them; synonyms.txt tells which words mean the same.
"""
import html.parser
import json
import pathlib
import re
import shutil
import sys

HERE = pathlib.Path(__file__).resolve().parent
NAMESPACE = re.compile(r"Halmont::Orrin::Corvex(?:Maths|Utilities)::")
# How much an entry counts by its kind: a task leads further than a page, a page than one member of many.
WEIGHT = {"task": 1.5, "page": 1.3, "class": 1.2, "member": 1.0, "file": 0.4}
MOST_TEXT = 420
# What stands at the head of every page.
NAVIGATION = [("index", "Home"), ("quick_reference", "Quick reference"), ("operations", "Tasks"), ("vectors", "Vectors"),
              ("matrices", "Matrices"), ("sparse", "Sparse"), ("primitives", "Primitives"), ("pointsets", "Point sets"),
              ("polygons", "Polygons"), ("splines", "Splines"), ("robust", "Robust"), ("containers", "Containers"),
              ("exact", "Exact"), ("numbers", "Rules"), ("others", "Other libraries")]


class Page(html.parser.HTMLParser):
    """Takes a page apart at its headings, and members and table rows out of it."""

    def __init__(self):
        super().__init__()
        self.title = ""
        self.pieces = []  # [heading, anchor, text]
        self.rows = []  # [[cell, ...], first link of the last cell]
        self.depth_skipped = 0
        self.inside = []
        self.heading = None
        self.anchor = ""
        self.row = None
        self.is_content = False

    def handle_starttag(self, tag, attributes):
        values = dict(attributes)
        classes = (values.get("class") or "").split()
        if tag == "div":
            self.inside.append(classes)
            if "contents" in classes:
                self.is_content = True
        if tag in ("script", "style") or "permalink" in classes or "overload" in classes:
            self.depth_skipped += 1
            self.skipped_tag = tag
        if tag == "title":
            self.heading = "title"
        if tag == "a" and values.get("id"):
            self.anchor = values["id"]
            if self.heading and self.pieces:
                self.pieces[-1][1] = self.anchor
        if self.is_content and tag in ("h1", "h2", "h3"):
            self.heading = tag
            self.pieces.append(["", self.anchor, ""])
        if tag == "tr":
            self.row = [[], ""]
        if tag in ("td", "th") and self.row is not None:
            self.row[0].append("")
        if tag == "a" and self.row is not None and values.get("href") and self.row[0]:
            self.row[1] = self.row[1] or values["href"]

    def handle_endtag(self, tag):
        if self.depth_skipped and tag == self.skipped_tag:
            self.depth_skipped -= 1
        if tag == "div" and self.inside:
            self.inside.pop()
        if tag in ("h1", "h2", "h3", "title"):
            self.heading = None
        if tag == "tr" and self.row is not None:
            self.rows.append(self.row)
            self.row = None

    def handle_data(self, data):
        if self.depth_skipped:
            return
        if self.heading == "title":
            self.title += data
            return
        if not self.is_content:
            return
        if not self.pieces:
            self.pieces.append(["", "", ""])
        if self.heading:
            self.pieces[-1][0] += data
        else:
            self.pieces[-1][2] += data
            if self.row is not None and self.row[0]:
                self.row[0][-1] += data


def tidy(text):
    return NAMESPACE.sub("", re.sub(r"\s+", " ", text.replace("\u25c6", " ").replace("\u200b", ""))).strip()


def kind_of(name):
    if re.match(r"(class|struct|namespace|union)Halmont", name):
        return "class"
    if name.endswith("_8h.html"):
        return "file"
    return "page"


def entries_of(path):
    """What a page holds, as [title, context, address, weight, text]."""
    page = Page()
    page.feed(path.read_text())
    kind = kind_of(path.name)
    title = tidy(page.title).removeprefix("CorvexMaths: ")
    title = re.sub(r"(<.*>)? (Class|Struct) (Template )?Reference$|( Namespace| File) Reference$", "", title)
    title = re.sub(r"<.*", "", title)
    found = []
    for index, (heading, anchor, text) in enumerate(page.pieces):
        heading, text = tidy(heading), tidy(text)
        address = path.name + (f"#{anchor}" if anchor and index else "")
        if index == 0 or not heading:
            found.append([title, "", path.name, WEIGHT[kind], f"{heading} {text}"])
        elif kind == "class":
            if heading.endswith("()") or heading.startswith("operator"):
                found.append([f"{title}::{heading.removesuffix('()').strip()}", "", address, WEIGHT["member"], text])
        elif kind == "page":
            found.append([heading, title, address, WEIGHT["page"], text])
    if path.name == "operations.html":
        for cells, link in page.rows:
            if len(cells) == 3 and link:
                given, wanted, member = map(tidy, cells)
                found.append([member, f"{given} \u2192 {wanted}", link, WEIGHT["task"], ""])
    return found


def main():
    folder = pathlib.Path(sys.argv[1])
    entries = []
    left_out = re.compile(r"(functions|namespacemembers|globals|annotated|classes|hierarchy|files|dir_|graph_legend|-members)")
    for path in sorted(folder.glob("*.html")):
        if not left_out.search(path.name):
            entries += entries_of(path)
    entries = [entry[:4] + [entry[4][:MOST_TEXT]] for entry in entries]
    synonyms = [line.split("#")[0].split() for line in (HERE / "synonyms.txt").read_text().splitlines()]
    data = {"entries": entries, "synonyms": [words for words in synonyms if words]}
    (folder / "search_data.js").write_text("const SEARCH_DATA = " + json.dumps(data, ensure_ascii=False, separators=(",", ":")) + ";\n")
    shutil.copy(HERE / "search.js", folder / "search.js")

    scripts = '<script src="search_data.js" defer></script>\n<script src="search.js" defer></script>\n</head>'
    field = ('<div id="search"><input id="search-field" type="search" placeholder="Search: a task, a word, a name" '
             'aria-label="Search" autocomplete="off" accesskey="S"/><ol id="search-results" hidden="hidden"></ol></div>\n')
    families = "".join(f'<a href="{page}.html">{name}</a>' for page, name in NAVIGATION if (folder / f"{page}.html").exists())
    for path in folder.glob("*.html"):
        text = path.read_text()
        text = text.replace("</head>", scripts, 1)
        text = text.replace('<div id="titlearea">', '<div id="titlearea">\n' + field, 1)
        text = text.replace("</div>\n<!-- end header part -->", f'<div id="families-nav">{families}</div></div>\n<!-- end header part -->', 1)
        path.write_text(text)
    print(f"{len(entries)} entries to find")


if __name__ == "__main__":
    main()
