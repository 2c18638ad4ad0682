#!/usr/bin/env python3
"""Compiles and runs the code on the pages of the documentation, and compares what it prints with what they say.

    tests/docs/snippets.py PAGES BUILD

PAGES is the folder of the Markdown files, BUILD that of a build of the library. A block of cpp that has no main is the
body of a function, with all of the library and the namespace at hand. Where a block of text follows, that is what the
code prints.
"""

import os
import pathlib
import re
import subprocess
import sys
import tempfile

# The text follows its code after a blank line, or a line of words such as "It prints".
BLOCK = re.compile(r"^```cpp\n(?P<code>.*?)^```\n(?:\n(?:[^\n`]{0,40}\n\n)?```text\n(?P<prints>.*?)^```\n)?", re.M | re.S)

FRAME = """#include <CorvexMaths/CorvexMaths.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <vector>

using namespace Halmont::Orrin::CorvexMaths;

int main()
{
%s}
"""


def run(command):
    return subprocess.run(command, capture_output=True, text=True)


def fault(code, prints, root, library, folder):
    """What is wrong with a piece of code; an empty string if nothing is."""
    source, program = folder / "snippet.cpp", folder / "snippet"
    source.write_text(code if "int main(" in code else FRAME % code, encoding="utf-8")
    # Preconditions are checked, as without -DNDEBUG they are.
    compiled = run(
        [os.environ.get("CXX", "g++"), "-std=c++17", "-ffp-contract=off", "-Wall", "-Wextra", "-Wpedantic", "-Werror"]
        + [f"-I{root}", source, "-o", program, f"-L{library}", f"-Wl,-rpath,{library}", "-lCorvexMaths"]
    )
    if compiled.returncode != 0:
        return f"does not compile:\n{compiled.stderr}"
    done = run([program])
    if done.returncode != 0:
        return f"ends with {done.returncode}:\n{done.stderr}"
    if prints is not None and done.stdout != prints:
        return f"prints\n{done.stdout}instead of\n{prints}"
    return ""


def main(pages, build):
    root = pathlib.Path(__file__).resolve().parents[2]
    library = build / "CorvexMaths"
    faults = count = 0
    with tempfile.TemporaryDirectory() as folder:
        for page in sorted(pages.glob("*.md")):
            text = page.read_text(encoding="utf-8")
            for block in BLOCK.finditer(text):
                count += 1
                told = fault(block["code"], block["prints"], root, library, pathlib.Path(folder))
                if told:
                    faults += 1
                    line = text.count("\n", 0, block.start()) + 1
                    print(f"{page}:{line}: the code {told}", file=sys.stderr)
    if count == 0:
        sys.exit(f"snippets.py: there is no code in {pages}")
    if faults:
        sys.exit(f"snippets.py: {faults} faults")
    print(f"{count} pieces of code do what the pages say")


if __name__ == "__main__":
    if len(sys.argv) != 3:
        sys.exit(__doc__)
    main(pathlib.Path(sys.argv[1]), pathlib.Path(sys.argv[2]).resolve())
