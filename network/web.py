#!/usr/bin/env python3
"""The network's own web pages, on loopback, for the program's tabs and menus.

    web.py [--host 127.0.0.1] [--port 8667]

Runs in the foreground, prints "ready http://HOST:PORT" when it serves and ends on SIGTERM or
SIGINT. Feedback that arrives is printed, one line of JSON for each letter.
"""

import argparse
import http.server
import ipaddress
import json
import pathlib
import signal
import socket
import string
import sys
import threading
import urllib.parse

HERE = pathlib.Path(__file__).resolve().parent
PICTURE = HERE.parent / "assets" / "icons" / "quillharbor.svg"
FEEDBACK = "//"  # its path really is two slashes
FEEDBACK_LINK = "/.//"  # a link that began with them would name a host
PAGES = {
    "/quillharbor": "quillharbor",
    "/quillmisc": "quillmisc",
    "/qhmauthor": "qhmauthor",
    FEEDBACK: "feedback",
}
LONGEST_LETTER = 20_000  # bytes of a form


def render(name):
    """A page's first line is its title, the second its lead, the rest its body."""
    title, lead, body = (HERE / "web" / f"{name}.html").read_text("utf-8").split("\n", 2)
    page = string.Template((HERE / "web" / "page.html").read_text("utf-8"))
    return page.substitute(title=title, lead=lead, body=body).encode("utf-8")


class Handler(http.server.BaseHTTPRequestHandler):
    server_version = "QuillHarbor"
    sys_version = ""
    protocol_version = "HTTP/1.1"
    timeout = 30

    def target(self):
        # self.path has lost one of two leading slashes.
        words = self.requestline.split()
        return words[1].split("?")[0] if len(words) > 1 else ""

    def answer(self, status, body, kind="text/html; charset=utf-8", headers=()):
        self.send_response(status)
        self.send_header("Content-Type", kind)
        self.send_header("Content-Length", str(len(body)))
        self.send_header("Content-Security-Policy", "default-src 'self'; form-action 'self'")
        self.send_header("X-Content-Type-Options", "nosniff")
        for name, value in headers:
            self.send_header(name, value)
        self.end_headers()
        if self.command != "HEAD":
            self.wfile.write(body)

    def do_GET(self):
        target = self.target()
        if target in PAGES:
            self.answer(200, render(PAGES[target]))
        elif target == "/":
            self.answer(302, b"", headers=[("Location", "/quillharbor")])
        elif target == "/style.css":
            self.answer(200, (HERE / "web" / "style.css").read_bytes(), "text/css; charset=utf-8")
        elif target == "/quillharbor.svg":
            self.answer(200, PICTURE.read_bytes(), "image/svg+xml")
        else:
            self.answer(404, render("missing"))

    do_HEAD = do_GET

    def do_POST(self):
        try:
            length = int(self.headers.get("Content-Length", ""))
        except ValueError:
            length = -1
        self.close_connection = True
        if self.target() != FEEDBACK or not 0 <= length <= LONGEST_LETTER:
            self.answer(400, render("missing"), headers=[("Connection", "close")])
            return
        form = urllib.parse.parse_qs(self.rfile.read(length).decode("utf-8", "replace"))
        text = form.get("text", [""])[0].strip()
        if not text:
            self.answer(302, b"", headers=[("Location", FEEDBACK_LINK)])
            return
        print(json.dumps({"feedback": text}), flush=True)
        self.answer(200, render("thanks"))

    def log_message(self, *_):
        pass


class Server(http.server.ThreadingHTTPServer):
    daemon_threads = True

    def __init__(self, family, address):
        self.address_family = family
        super().__init__(address, Handler)


def main():
    parser = argparse.ArgumentParser(description="Serves the network's web pages on loopback.")
    parser.add_argument("--host", default="127.0.0.1")
    parser.add_argument("--port", type=int, default=8667)
    arguments = parser.parse_args()
    try:
        family, *_, address = socket.getaddrinfo(
            arguments.host, arguments.port, type=socket.SOCK_STREAM)[0]
        if not ipaddress.ip_address(address[0]).is_loopback:
            parser.error(f"{arguments.host} is not a loopback address")
        server = Server(family, address)
    except OSError as error:
        sys.exit(f"web.py: {arguments.host}:{arguments.port}: {error.strerror or error}")

    def end(*_):
        # shutdown() waits for the loop that this handler has interrupted.
        threading.Thread(target=server.shutdown).start()

    signal.signal(signal.SIGTERM, end)
    signal.signal(signal.SIGINT, end)
    host, port = server.server_address[:2]
    print(f"ready http://{f'[{host}]' if ':' in host else host}:{port}", flush=True)
    server.serve_forever()
    server.server_close()


if __name__ == "__main__":
    main()
