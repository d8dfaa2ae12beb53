"""One connection to the network: what the chatters and the checks of this folder share.

Text is one character for one byte, so that whatever a client sends can be sent back unharmed.
Standard library only.
"""
import asyncio
import pathlib

# a client under test may answer ident questions; ours come from addresses that are never asked
QUIET_SOURCE = "127.0.1"
ACCOUNTS = pathlib.Path(__file__).with_name("templates") / "accounts"
MAX_LINE = 510


def ranked_accounts():
    """nick -> password of the registered nicks that have a rank in #Harbor, highest first"""
    rows = (row.split() for row in ACCOUNTS.read_text("ascii").splitlines()
            if row and not row.startswith("#"))
    return {nick: password for nick, password, rank in rows if rank != "-"}


class Line:
    """a received line, taken apart"""

    def __init__(self, raw):
        text = raw.decode("latin-1").rstrip("\r\n")
        self.source = ""
        if text.startswith(":"):
            prefix, _, text = text[1:].partition(" ")
            self.source = prefix.split("!")[0]
        head, colon, tail = text.partition(" :")
        words = head.split()
        self.verb = words[0].upper() if words else ""
        self.params = words[1:] + ([tail] if colon else [])

    def param(self, index):
        return self.params[index] if -len(self.params) <= index < len(self.params) else ""


class Link:
    """one connection; says NICK and USER at once and answers PING by itself"""

    def __init__(self, reader, writer):
        self.reader, self.writer = reader, writer
        self.leaving = False
        self.sent = self.received = 0

    @classmethod
    async def open(cls, host, port, nick, source=None, name="a chatter of Quill Harbor"):
        local = (source, 0) if source else None
        link = cls(*await asyncio.open_connection(host, port, local_addr=local))
        user = "".join(c for c in nick.lower() if c.isalnum())[:9]
        link.send("NICK " + nick)
        link.send("USER %s 0 * :%s" % (user, name))
        return link

    def send(self, line):
        if not self.writer.is_closing():
            self.writer.write(line.encode("latin-1", "replace")[:MAX_LINE] + b"\r\n")
            self.sent += 1

    async def receive(self):
        """the next line that is not a PING; None when the connection has ended"""
        while True:
            try:
                raw = await self.reader.readline()
            except (OSError, ValueError):
                return None
            if not raw:
                return None
            self.received += 1
            line = Line(raw)
            if line.verb != "PING":
                return line
            self.send("PONG :" + line.param(0))

    def quit(self, reason=""):
        self.leaving = True
        self.send("QUIT :" + reason if reason else "QUIT")

    def close(self):
        self.writer.close()
