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

# What is typed, and the class on whose page the result must be.
SEARCHES = [("Offset", "TPolygon"), ("register", "TPointSet"), ("SVD", "TMatrixMxN"), ("Evalu", "TBSpline")]

# A picture of ours; every page has some of Doxygen's, at its foot and in the folder of the search.
PICTURE = re.compile(r'<img [^>]*src="(?!doxygen)[^"/]*\.svg"')

DRIVER = """<!DOCTYPE html>
<meta charset="utf-8">
<iframe id="frame" width="1400" height="900"></iframe>
<script type="application/json" id="found"></script>
<script>
const frame = document.getElementById("frame");
const pause = milliseconds => new Promise(done => setTimeout(done, milliseconds));

function open(page) {
    return new Promise(done => { frame.onload = done; frame.src = page; });
}

// Types a text key by key; gives the addresses that the visible results lead to.
async function search(text) {
    await open("/index.html");
    const field = frame.contentDocument.getElementById("MSearchField");
    field.focus();
    for (let i = 1; i <= text.length; ++i) {
        field.value = text.slice(0, i);
        field.dispatchEvent(new frame.contentWindow.KeyboardEvent("keyup", { key: text[i - 1], bubbles: true }));
    }
    for (let tries = 0; tries < 60; ++tries) {
        await pause(100);
        const lists = [frame.contentDocument];
        const inner = frame.contentDocument.getElementById("MSearchResults");
        if (inner && inner.contentDocument) lists.push(inner.contentDocument);
        const rows = lists.flatMap(list => [...list.querySelectorAll(".SRResult")])
            .filter(row => row.style.display === "block");
        const links = rows.flatMap(row => [...row.querySelectorAll("a")]).map(link => link.getAttribute("href") || "");
        if (links.length > 0) return links;
    }
    return [];
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
    const told = { searches: [], pages: {} };
    for (const text of SEARCHES) told.searches.push(await search(text));
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
    for (text, name), links in zip(SEARCHES, told["searches"]):
        if not any(re.search(rf"_1_1{name}\.html#", link) for link in links):
            faults.append(f"a search for {text} does not lead to {name}, but to {links}")
    faults += [f"{page}: {source} does not appear" for page, seen in told["pages"].items() for source in seen["missing"]]
    count = sum(seen["count"] for seen in told["pages"].values())
    if count == 0:
        faults.append("no page has a picture")
    for fault in faults:
        print(f"browser.py: {fault}", file=sys.stderr)
    if faults:
        sys.exit(1)
    print(f"{len(SEARCHES)} searches find what they should, {count} pictures appear")


if __name__ == "__main__":
    if len(sys.argv) != 2:
        sys.exit(__doc__)
    main(pathlib.Path(sys.argv[1]).resolve())
