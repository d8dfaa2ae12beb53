#!/usr/bin/env python3
"""check.py HOST [--wait SECONDS] [--online NICK] - does the network on HOST work?

Exit status 0 when a client is welcomed there by Quill Harbor's own server and both services
answer it; with --online only if NICK is signed in, too. Otherwise 1, and one line says why.
Standard library only.
"""
import argparse
import asyncio
import os
import sys

from irc import QUIET_SOURCE, Link

SERVER = "harbor.quillharbor.example"
ASK_AGAIN = 0.1


class Failure(Exception):
    pass


async def ask_services(link):
    """until both have answered; before they are linked the server knows no such nicks"""
    silent = {"NickServ": "STATUS", "ChanServ": "HELP"}

    def ask(service):
        if service in silent:
            link.send("PRIVMSG %s :%s" % (service, silent[service]))

    while silent:
        line = await link.receive()
        if line is None:
            raise Failure("the server closed the connection")
        if line.verb == "001" and line.source != SERVER:
            raise Failure("another server, %s, answers there" % line.source)
        if line.verb in ("376", "422"):
            for service in list(silent):
                ask(service)
        elif line.verb == "401":
            asyncio.get_running_loop().call_later(ASK_AGAIN, ask, line.param(1))
        elif line.verb == "433":
            raise Failure("the nick of the check is taken")
        elif line.verb == "NOTICE":
            silent.pop(line.source, None)


async def is_online(link, nick):
    link.send("ISON " + nick)
    while line := await link.receive():
        if line.verb == "303":
            return nick.lower() in line.param(1).lower().split()
    raise Failure("the server closed the connection")


async def check(opt):
    link = await Link.open(opt.host, opt.port, "check%d" % os.getpid(), QUIET_SOURCE + ".251")
    try:
        await ask_services(link)
        if opt.online and not await is_online(link, opt.online):
            raise Failure("%s is not signed in" % opt.online)
        link.quit()
    finally:
        link.close()


def main():
    parser = argparse.ArgumentParser(description="does the network on HOST work?")
    parser.add_argument("host")
    parser.add_argument("--port", type=int, default=6667)
    parser.add_argument("--wait", type=float, default=5, metavar="SECONDS",
                        help="how long the server and the services may take to answer")
    parser.add_argument("--online", metavar="NICK", help="NICK has to be signed in, too")
    opt = parser.parse_args()
    try:
        asyncio.run(asyncio.wait_for(check(opt), opt.wait))
    except asyncio.TimeoutError:
        sys.exit("check: no answer from %s port %d" % (opt.host, opt.port))
    except OSError as error:
        sys.exit("check: %s port %d: %s" % (opt.host, opt.port, error.strerror or error))
    except Failure as reason:
        sys.exit("check: %s port %d: %s" % (opt.host, opt.port, reason))


if __name__ == "__main__":
    main()
