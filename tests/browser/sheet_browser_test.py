#!/usr/bin/env python3
"""Swatch sheets as a real browser shows them.

Headless Chromium renders the HTML and SVG sheet of each sample library file,
of a palette with awkward names, and of the host's import of two samples,
driven over the DevTools protocol on a pipe. For every sheet the test reads
the chips' and texts' boxes from the page's layout and the pixels from a
screenshot, and checks:
  - the chips are exactly the swatches expected, and the pixel at the centre
    of each has the expected sRGB colour within 1 per channel (the colours
    are written here, worked out apart from the code under test);
  - no two name boxes overlap, and every text of a cell lies inside it.
HTML sheets are checked at a desktop width and at a phone's.

usage: sheet_browser_test.py --tintora T --kelvra-host K --module M --samples DIR
"""

import argparse
import base64
import json
import os
import select
import shutil
import struct
import subprocess
import sys
import tempfile
import time
import zlib

# What each sheet must show, by swatch name: the Lab colours converted by an
# independent D50 to sRGB computation (Bradford, sRGB primaries), the CMYK
# ones by (1 - C)(1 - K) and so on, tints mixed toward white.
HARBOUR = {
    "HB Sea Blue": "#3060A0",
    "HB Buoy Red": "#E54B43",
    "HB Sand": "#DEC28E",
    "HB Fog": "#E3E3E3",
}
STUDIO = {
    "Paper": "#F2F2F2",
    "Sky": "#4080FF",
    "Signal": "#FF331A",
    "Signal Light": "#FF998C",
    "Leaf": "#318836",
    "Ink": "#282D5D",
}
LEGACY = {
    "LI Warm Gray C": "#998F83",
    "LI Deep Green C": "#00632F",
    "LI Copper C": "#C2612B",
    "LI Black C": "#000000",
}

# Names that are hard to fit: wide letters, one long word, wide characters.
AWKWARD_PALETTE = """GIMP Palette
Name: Awkward names
#
255   0   0 WWWWWWWWWWWWWWWWWWWWWWWWWWWWWWW
  0 128   0 Extraordinarily-long-unbroken-colour-name-0123456789
  0   0 255 日本語の色の名前はとても長いです本当に
 18  52  86 mmmm mmmm mmmm mmmm mmmm mmmm mmmm
250 250 250 Äpfel Öl Übermaß éèêë
  1   2   3
"""
AWKWARD = {
    "WWWWWWWWWWWWWWWWWWWWWWWWWWWWWWW": "#FF0000",
    "Extraordinarily-long-unbroken-colour-name-0123456789": "#008000",
    "日本語の色の名前はとても長いです本当に": "#0000FF",
    "mmmm mmmm mmmm mmmm mmmm mmmm mmmm": "#123456",
    "Äpfel Öl Übermaß éèêë": "#FAFAFA",
    "#010203": "#010203",
}

DESKTOP = 1000
PHONE = 390
STEP_SECONDS = 30

LAYOUT_SCRIPT = r"""
(() => {
  const box = r => [r.left + scrollX, r.top + scrollY, r.width, r.height];
  // The extent of the text itself: an HTML block is as wide as its cell.
  const textBox = e => {
    if (e instanceof SVGElement) return box(e.getBoundingClientRect());
    const range = document.createRange();
    range.selectNodeContents(e);
    return box(range.getBoundingClientRect());
  };
  const chips = [...document.querySelectorAll('.chip')].map(e => ({
    name: e.getAttribute('data-swatch'),
    box: box(e.getBoundingClientRect()),
    coloured: !e.classList.contains('none') && e.getAttribute('fill') !== 'url(#none)',
  }));
  const cells = [...document.querySelectorAll('.swatch')].map(cell => ({
    box: box((cell.querySelector('rect.cell') || cell).getBoundingClientRect()),
    names: [...cell.querySelectorAll('.name')].map(textBox),
    texts: [...cell.querySelectorAll('text, span')].map(textBox),
  }));
  const root = document.documentElement;
  return {chips, cells, height: Math.ceil(Math.max(root.scrollHeight || 0, root.getBoundingClientRect().height))};
})()
"""


class Browser:
    """Chromium with its DevTools protocol on file descriptors 3 and 4."""

    def __init__(self, profile):
        to_browser_read, self.to_browser = os.pipe()
        self.from_browser, from_browser_write = os.pipe()

        def wire_pipes():
            os.dup2(to_browser_read, 3)
            os.dup2(from_browser_write, 4)

        flags = ["--headless", "--no-sandbox", "--disable-gpu", "--disable-quic", "--no-first-run",
                 "--disable-background-networking", "--disable-component-update", "--disable-sync",
                 "--force-color-profile=srgb", "--hide-scrollbars", "--remote-debugging-pipe",
                 "--user-data-dir=" + profile, "about:blank"]
        self.process = subprocess.Popen([shutil.which("chromium")] + flags, pass_fds=(3, 4),
                                        preexec_fn=wire_pipes, stdin=subprocess.DEVNULL,
                                        stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        os.close(to_browser_read)
        os.close(from_browser_write)
        self.buffer = b""
        self.next_id = 0
        self.session = None
        target = self.call("Target.createTarget", {"url": "about:blank"})["targetId"]
        self.session = self.call("Target.attachToTarget", {"targetId": target, "flatten": True})["sessionId"]
        self.call("Page.enable")

    def close(self):
        for fd in (self.to_browser, self.from_browser):
            try:
                os.close(fd)
            except OSError:
                pass
        self.process.terminate()
        try:
            self.process.wait(timeout=10)
        except subprocess.TimeoutExpired:
            self.process.kill()
            self.process.wait()

    def send(self, method, params):
        self.next_id += 1
        message = {"id": self.next_id, "method": method, "params": params}
        if self.session is not None:
            message["sessionId"] = self.session
        data = json.dumps(message).encode() + b"\0"
        while data:
            data = data[os.write(self.to_browser, data):]
        return self.next_id

    def receive(self, deadline):
        while b"\0" not in self.buffer:
            left = deadline - time.monotonic()
            if left <= 0 or not select.select([self.from_browser], [], [], left)[0]:
                raise TimeoutError("the browser did not answer in time")
            chunk = os.read(self.from_browser, 1 << 20)
            if not chunk:
                raise RuntimeError("the browser closed its pipe")
            self.buffer += chunk
        message, self.buffer = self.buffer.split(b"\0", 1)
        return json.loads(message)

    def call(self, method, params=None, until_event=None):
        """Sends a command and answers its result; with until_event, also
        waits for that event (sent after the command went out)."""
        deadline = time.monotonic() + STEP_SECONDS
        wanted = self.send(method, params or {})
        result, seen_event = None, until_event is None
        while result is None or not seen_event:
            message = self.receive(deadline)
            if message.get("id") == wanted:
                if "error" in message:
                    raise RuntimeError(f"{method}: {message['error']}")
                result = message["result"]
            elif message.get("method") == until_event:
                seen_event = True
        return result

    def render(self, url, width, mobile):
        """The page's layout and a screenshot of all of it."""
        self.call("Emulation.setDeviceMetricsOverride",
                  {"width": width, "height": 800, "deviceScaleFactor": 1, "mobile": mobile})
        self.call("Page.navigate", {"url": url}, until_event="Page.loadEventFired")
        layout = self.evaluate(LAYOUT_SCRIPT)
        self.call("Emulation.setDeviceMetricsOverride",
                  {"width": width, "height": layout["height"], "deviceScaleFactor": 1, "mobile": mobile})
        layout = self.evaluate(LAYOUT_SCRIPT)  # as laid out at the full height
        shot = self.call("Page.captureScreenshot", {"format": "png", "captureBeyondViewport": False})
        return layout, decode_png(base64.b64decode(shot["data"]))

    def evaluate(self, expression):
        answer = self.call("Runtime.evaluate", {"expression": expression, "returnByValue": True})
        if "exceptionDetails" in answer:
            raise RuntimeError(f"script failed: {answer['exceptionDetails']}")
        return answer["result"]["value"]


def decode_png(data):
    """(width, height, rows of RGB tuples) of an 8-bit RGB or RGBA PNG."""
    if data[:8] != b"\x89PNG\r\n\x1a\n":
        raise ValueError("not a PNG")
    at, idat, header = 8, b"", None
    while at < len(data):
        length, kind = struct.unpack(">I4s", data[at:at + 8])
        body = data[at + 8:at + 8 + length]
        if kind == b"IHDR":
            header = struct.unpack(">IIBBBBB", body)
        elif kind == b"IDAT":
            idat += body
        at += 12 + length
    width, height, depth, colour_type, _, _, interlace = header
    if depth != 8 or colour_type not in (2, 6) or interlace != 0:
        raise ValueError(f"unexpected PNG form {header}")
    channels = 4 if colour_type == 6 else 3
    raw = zlib.decompress(idat)
    stride = width * channels
    rows, previous = [], bytearray(stride)
    for y in range(height):
        kind = raw[y * (stride + 1)]
        line = bytearray(raw[y * (stride + 1) + 1:(y + 1) * (stride + 1)])
        for x in range(stride):
            left = line[x - channels] if x >= channels else 0
            up = previous[x]
            up_left = previous[x - channels] if x >= channels else 0
            if kind == 1:
                line[x] = (line[x] + left) & 255
            elif kind == 2:
                line[x] = (line[x] + up) & 255
            elif kind == 3:
                line[x] = (line[x] + (left + up) // 2) & 255
            elif kind == 4:
                p = left + up - up_left
                pa, pb, pc = abs(p - left), abs(p - up), abs(p - up_left)
                line[x] = (line[x] + (left if pa <= pb and pa <= pc else up if pb <= pc else up_left)) & 255
        rows.append(line)
        previous = line
    return width, height, channels, rows


def pixel(png, x, y):
    width, height, channels, rows = png
    if not (0 <= x < width and 0 <= y < height):
        return None
    return tuple(rows[y][x * channels:x * channels + 3])


def overlap(a, b, slack=0.5):
    return (a[0] + slack < b[0] + b[2] and b[0] + slack < a[0] + a[2] and
            a[1] + slack < b[1] + b[3] and b[1] + slack < a[1] + a[3])


def inside(inner, outer, slack=0.5):
    if inner[2] == 0 and inner[3] == 0:
        return True  # an empty text has no extent
    return (inner[0] >= outer[0] - slack and inner[1] >= outer[1] - slack and
            inner[0] + inner[2] <= outer[0] + outer[2] + slack and inner[1] + inner[3] <= outer[1] + outer[3] + slack)


def check(what, layout, png, expected):
    problems = []
    coloured = {c["name"]: c for c in layout["chips"] if c["coloured"]}
    for name in sorted(set(expected) - set(coloured)):
        problems.append(f"no coloured chip for {name!r}")
    for name in sorted(set(coloured) - set(expected)):
        problems.append(f"a chip for {name!r}, which is not expected")
    for name, want in expected.items():
        if name not in coloured:
            continue
        left, top, w, h = coloured[name]["box"]
        got = pixel(png, int(left + w / 2), int(top + h / 2))
        want_rgb = tuple(int(want[i:i + 2], 16) for i in (1, 3, 5))
        if got is None or any(abs(g - e) > 1 for g, e in zip(got, want_rgb)):
            problems.append(f"{name!r}: chip centre is {got}, expected {want} {want_rgb}")
    names = [n for cell in layout["cells"] for n in cell["names"]]
    for i in range(len(names)):
        for j in range(i + 1, len(names)):
            if overlap(names[i], names[j]):
                problems.append(f"name boxes overlap: {names[i]} and {names[j]}")
    for cell in layout["cells"]:
        for text in cell["texts"]:
            if not inside(text, cell["box"]):
                problems.append(f"a text at {text} leaves its cell {cell['box']}")
    if not layout["cells"]:
        problems.append("no cells at all")
    for problem in problems:
        print(f"FAIL {what}: {problem}")
    if not problems:
        print(f"ok   {what}: {len(coloured)} chips, {len(layout['cells'])} cells")
    return not problems


def run(command):
    done = subprocess.run(command, stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True, timeout=120)
    if done.returncode != 0:
        raise RuntimeError(f"{' '.join(command)} failed ({done.returncode}): {done.stderr}")


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--tintora", required=True)
    parser.add_argument("--kelvra-host", required=True)
    parser.add_argument("--module", required=True)
    parser.add_argument("--samples", required=True)
    args = parser.parse_args()
    if shutil.which("chromium") is None:
        print("FAIL chromium is not installed; scripts/install-deps --browser installs it")
        return 1

    work = tempfile.mkdtemp(prefix="tintora-browser-")
    browser = None
    try:
        with open(os.path.join(work, "awkward.txt"), "w", encoding="utf-8") as palette:
            palette.write(AWKWARD_PALETTE)
        sheets = []  # (file, expected, widths)
        for source, expected in (("harbour.ocb", HARBOUR), ("studio.ose", STUDIO), ("legacy.xml", LEGACY),
                                 (os.path.join(work, "awkward.txt"), AWKWARD)):
            path = source if os.path.isabs(source) else os.path.join(args.samples, source)
            stem = os.path.splitext(os.path.basename(source))[0]
            for form in ("html", "svg"):
                out = os.path.join(work, f"{stem}.{form}")
                run([args.tintora, "sheet", path, "-o", out])
                sheets.append((out, expected))
        imported = os.path.join(work, "imported.html")
        run([args.kelvra_host, "import", "--module", args.module, "--answer", "yes",
             os.path.join(args.samples, "harbour.ocb"), os.path.join(args.samples, "studio.ose"),
             "--sheet", imported])
        sheets.append((imported, {**HARBOUR, **STUDIO}))

        browser = Browser(os.path.join(work, "profile"))
        passed = failed = 0
        for path, expected in sheets:
            widths = [(DESKTOP, False), (PHONE, True)] if path.endswith(".html") else [(DESKTOP, False)]
            for width, mobile in widths:
                layout, png = browser.render("file://" + path, width, mobile)
                if check(f"{os.path.basename(path)} at {width} px", layout, png, expected):
                    passed += 1
                else:
                    failed += 1
        print(f"browser checks: {passed} ok, {failed} failed")
        return 0 if failed == 0 else 1
    finally:
        if browser is not None:
            browser.close()
        shutil.rmtree(work, ignore_errors=True)


if __name__ == "__main__":
    sys.exit(main())
