#!/usr/bin/env python3
"""chatter.py HOST --watch NICK --expect TEXT --answer TEXT - somebody to talk to.

Goes into the room, waits until NICK says TEXT there, answers, and makes sure that NICK's client
has taken the answer in: a private ping sent behind it has to come back. Prints what happens as
it happens, one line each: "ready", "here", "heard", "answered", "received". Exit status 0 after
the last of them, otherwise 1 and a line that says what did not happen. Standard library only.
"""
import argparse
import asyncio
import sys

from irc import QUIET_SOURCE, Link

EVENTS = {
    "ready": "was not let into the room",
    "here": "did not see {watch} come into {room}",
    "heard": "did not hear {watch} say it in {room}",
    "answered": "could not answer",
    "received": "had no sign that {watch}'s client took the answer in",
}


class Chatter:
    def __init__(self, opt):
        self.opt = opt
        self.link = None
        self.seen = []

    def happened(self, event):
        if event not in self.seen:
            self.seen.append(event)
            print(event, flush=True)

    def missing(self):
        return next((event for event in EVENTS if event not in self.seen), None)

    def heard(self):
        opt = self.opt
        self.happened("heard")
        self.link.send("PRIVMSG %s :%s" % (opt.room, opt.answer))
        self.happened("answered")
        self.link.send("PRIVMSG %s :\1PING 1\1" % opt.watch)

    def handle(self, line):
        opt = self.opt
        if line.verb == "001":
            self.link.send("JOIN " + opt.room)
        elif line.verb == "353":
            if opt.watch in (name.lstrip("~&@%+") for name in line.param(-1).split()):
                self.happened("here")
        elif line.verb == "366":
            self.happened("ready")
        elif line.source != opt.watch:
            return
        elif line.verb == "JOIN" and line.param(0).lower() == opt.room.lower():
            self.happened("here")
        elif line.verb == "PRIVMSG" and line.param(0).lower() == opt.room.lower():
            if opt.expect in line.param(-1):
                self.heard()
        elif line.verb == "NOTICE" and line.param(-1).startswith("\1PING"):
            self.happened("received")

    async def run(self):
        opt = self.opt
        self.link = await Link.open(opt.host, opt.port, opt.nick, QUIET_SOURCE + ".252")
        try:
            while self.missing():
                line = await self.link.receive()
                if line is None:
                    return
                self.handle(line)
            self.link.quit("good bye")
        finally:
            self.link.close()


def options():
    parser = argparse.ArgumentParser(description="somebody to talk to in a room")
    parser.add_argument("host")
    parser.add_argument("--port", type=int, default=6667)
    parser.add_argument("--nick", default="Marlow")
    parser.add_argument("--room", default="#Harbor")
    parser.add_argument("--watch", required=True, metavar="NICK")
    parser.add_argument("--expect", required=True, metavar="TEXT")
    parser.add_argument("--answer", required=True, metavar="TEXT")
    parser.add_argument("--seconds", type=float, default=60, help="how long all of it may take")
    return parser.parse_args()


def main():
    opt = options()
    chatter = Chatter(opt)
    try:
        asyncio.run(asyncio.wait_for(chatter.run(), opt.seconds))
    except (OSError, asyncio.TimeoutError):
        pass
    event = chatter.missing()
    if event:
        sys.exit("chatter: %s %s" % (opt.nick, EVENTS[event].format(**vars(opt))))


if __name__ == "__main__":
    main()
