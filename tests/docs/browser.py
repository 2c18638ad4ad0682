#!/usr/bin/env python3
"""Reads the HTML of a folder with a browser, Chromium: searches as a user does, and looks whether pictures appear.

    tests/docs/browser.py FOLDER

The pages are served from this machine to a frame, in which a driver types into the search field and reads the results.
"""

import functools
import http.server
import json
import pathlib
import re
import subprocess
import sys
import tempfile
import threading

# What is typed, and a part of the address that the first result must lead to.
SEARCHES = [("circle", "TCircle"), ("fit a circle", r"TCircle3\.html#"), ("area", r"TPolygon\.html#"),
            ("convex hull", r"polygons\.html|TPolygon\.html#"), ("least squares", r"Fit|T(Line3|Plane|Circle3|Sphere)\.html#"),
            ("NaN", r"numbers\.html"), ("thread", r"others\.html#"), ("Offset", r"T(Polygon|Region)\.html#"),
            ("unite", r"TRegion\.html#"),
            ("register", r"TPointSet\.html#"), ("SVD", r"TMatrixMxN\.html#"), ("Evalu", r"TBSpline\.html#"),
            ("tolerance", r"numbers\.html")]

# A desk and a phone.
WIDTHS = [1280, 390]

# A picture of ours; every page has some of Doxygen's, at its foot and in the folder of the search.
PICTURE = re.compile(r'<img [^>]*src="(?!doxygen)[^"/]*\.svg"')

DRIVER = """<!DOCTYPE html>
<meta charset="utf-8">
<iframe id="frame" height="900"></iframe>
<script type="application/json" id="found"></script>
<script>
const frame = document.getElementById("frame");
const pause = milliseconds => new Promise(done => setTimeout(done, milliseconds));

function open(page) {
    return new Promise(done => { frame.onload = done; frame.src = page; });
}

// Types a text; gives the addresses that the visible results lead to.
async function search(text) {
    await open("/index.html");
    const field = frame.contentDocument.getElementById("search-field");
    field.value = text;
    field.dispatchEvent(new frame.contentWindow.Event("input"));
    const links = [...frame.contentDocument.querySelectorAll("#search-results a")];
    return links.filter(link => link.getBoundingClientRect().width > 0).map(link => link.getAttribute("href"));
}

// How much of the width the text has.
async function share(page) {
    await open("/" + page);
    await pause(300);
    const content = frame.contentDocument.querySelector(".contents").getBoundingClientRect();
    return Math.min(content.right, frame.clientWidth) / frame.clientWidth - Math.max(content.left, 0) / frame.clientWidth;
}

// The pictures of a page, and those of them that do not appear.
async function pictures(page) {
    await open("/" + page);
    const images = [...frame.contentDocument.querySelectorAll(".contents img")];
    for (let tries = 0; tries < 50 && images.some(image => !image.complete); ++tries) await pause(100);
    return { count: images.length,
             missing: images.filter(image => image.naturalWidth === 0).map(image => image.getAttribute("src")) };
}

(async () => {
    const told = { searches: {}, shares: {}, pages: {} };
    for (const width of WIDTHS) {
        frame.width = width;
        told.searches[width] = [];
        for (const text of SEARCHES) told.searches[width].push(await search(text));
        told.shares[width] = await share("polygons.html");
    }
    for (const page of PAGES) told.pages[page] = await pictures(page);
    document.getElementById("found").textContent = JSON.stringify(told);
    document.title = "done";
})();
</script>
"""


class Server(http.server.ThreadingHTTPServer):
    """A server that says nothing when the browser leaves a page before all of it has come."""

    def handle_error(self, *arguments):
        if not isinstance(sys.exc_info()[1], ConnectionError):
            super().handle_error(*arguments)


class Handler(http.server.SimpleHTTPRequestHandler):
    """Serves the folder, and the driver beside it."""

    def __init__(self, *arguments, driver, **named):
        self.driver = driver
        super().__init__(*arguments, **named)

    def do_GET(self):
        if self.path != "/driver":
            return super().do_GET()
        body = self.driver.encode()
        self.send_response(200)
        self.send_header("Content-Type", "text/html; charset=utf-8")
        self.send_header("Content-Length", str(len(body)))
        self.end_headers()
        self.wfile.write(body)

    def log_message(self, *_):
        pass


def pages_with_pictures(folder):
    return [path.name for path in sorted(folder.glob("*.html")) if PICTURE.search(path.read_text())]


def browse(address):
    """The page at an address as it stands after its scripts have run."""
    with tempfile.TemporaryDirectory() as profile:
        command = ["chromium", "--headless", "--no-sandbox", "--disable-gpu", "--disable-quic", "--no-first-run"]
        command += ["--disable-background-networking", "--disable-component-update", "--disable-sync"]
        command += [f"--user-data-dir={profile}", "--virtual-time-budget=120000", "--dump-dom", address]
        return subprocess.run(command, capture_output=True, text=True, timeout=180).stdout


def main(folder):
    pages = pages_with_pictures(folder)
    driver = DRIVER.replace("SEARCHES", json.dumps([text for text, _ in SEARCHES])).replace("PAGES", json.dumps(pages))
    driver = driver.replace("WIDTHS", json.dumps(WIDTHS))
    handler = functools.partial(Handler, directory=folder, driver=driver)
    server = Server(("127.0.0.1", 0), handler)
    threading.Thread(target=server.serve_forever, daemon=True).start()
    document = browse(f"http://127.0.0.1:{server.server_address[1]}/driver")
    server.shutdown()

    found = re.search(r'<script type="application/json" id="found">(.+?)</script>', document, re.S)
    if not found:
        sys.exit("browser.py: the browser has not come to an end")
    told = json.loads(found[1])

    faults = []
    for width in WIDTHS:
        for (text, address), links in zip(SEARCHES, told["searches"][str(width)]):
            if not links or not re.search(address, links[0]):
                faults.append(f"at {width} pixels a search for {text} leads to {links[:3]} first, not to {address}")
        if told["shares"][str(width)] < 0.6:
            faults.append(f"at {width} pixels the text has {told['shares'][str(width)]:.0%} of the width")
    faults += [f"{page}: {source} does not appear" for page, seen in told["pages"].items() for source in seen["missing"]]
    count = sum(seen["count"] for seen in told["pages"].values())
    if count == 0:
        faults.append("no page has a picture")
    for fault in faults:
        print(f"browser.py: {fault}", file=sys.stderr)
    if faults:
        sys.exit(1)
    print(f"{len(SEARCHES)} searches find what they should at {len(WIDTHS)} widths, {count} pictures appear")


if __name__ == "__main__":
    if len(sys.argv) != 2:
        sys.exit(__doc__)
    main(pathlib.Path(sys.argv[1]).resolve())
