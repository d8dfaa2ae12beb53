#!/usr/bin/env python3
"""Draws the smileys. A face is composed of a head, eyes, a mouth and what it wears or holds."""

import sys

from draw import circle, el, ellipse, group, line, linear, path, radial, rect, save

EDGE = 1.1   # outline of a head
HAND = "cream"
THIN = 0.9   # outline of what a head wears or holds

# number: code, drawing, size. The codes serve the contact sheet; the program has its own table.
SMILEYS = {}


def smiley(key, code, width=18, height=18):
    def register(draw):
        SMILEYS[key] = (code, draw, width, height)
        return draw
    return register


def ball(ident, *colors, cx=0.36, cy=0.3, r=0.82):
    step = [0, 0.5, 1] if len(colors) == 3 else [0, 1]
    return radial(ident, list(zip(step, colors)), cx, cy, r)


PAINTS = {
    "f": ball("f", "cream", "honey", "amber"),
    "hot": ball("hot", "honey", "coral", "brick"),
    "red": ball("red", "blush", "coral", "brick"),
    "sick": ball("sick", "cream", "spring", "kelp"),
    "green": ball("green", "spring", "kelp"),
    "pink": ball("pink", "white", "blush", "coral", r=1),
    "white": ball("white", "white", "foam", "pebble", r=0.95),
    "brown": ball("brown", "brass", "cocoa"),
    "orange": ball("orange", "honey", "amber", "coral"),
    "heart": ball("heart", "blush", "rose"),
    "lilac": ball("lilac", "mist", "lilac", "plum", r=1),
    "beer": linear("beer", [(0, "honey"), (1, "brass")], x2=1, y2=0),
    "hat": linear("hat", [(0, "brass"), (1, "cocoa")], x2=1, y2=0.4),
    "gold": ball("gold", "cream", "honey", "brass"),
    "blue": linear("blue", [(0, "tide"), (1, "deep")]),
}


# Parts

def head(paint="f", edge="bronze", cx=9, cy=9, r=7.4):
    return circle(cx, cy, r, fill=f"url(#{paint})", stroke=edge, stroke_width=EDGE)


def at(dx, dy, scale, *parts):
    return group(parts, f"translate({dx:g} {dy:g}) scale({scale:g})")


def turned(angle, *parts):
    return group(parts, f"rotate({angle:g} 9 9)")


def blob(fill, *shapes, edge="bronze", width=THIN):
    """One outline around several shapes: each is first drawn fat in the edge's colour."""
    rim = [el(t, **a, fill=edge, stroke=edge, stroke_width=2 * width, stroke_linejoin="round") for t, a in shapes]
    return "".join(rim + [el(t, **a, fill=fill) for t, a in shapes])


def bar(x, y, w, h, r=None, turn=None):
    r = min(w, h) / 2 if r is None else r
    return "rect", dict(x=x, y=y, width=w, height=h, rx=r, ry=r, transform=turn)


def shape(d):
    return "path", dict(d=d)


def dot(x, y, r):
    return "circle", dict(cx=x, cy=y, r=r)


def stroke(d, width=1.2, color="ink"):
    return line(d, color, width)


LEFT, RIGHT, EYE_Y = 6.3, 11.7, 7.4


def eye(x, y=EYE_Y):
    return ellipse(x, y, 1.1, 1.6, fill="ink")


def eyes(y=EYE_Y):
    return eye(LEFT, y) + eye(RIGHT, y)


def merry(y=7.8):
    return stroke(f"M4.7 {y:g}q1.6 -2.7 3.2 0M10.1 {y:g}q1.6 -2.7 3.2 0", 1.25)


def shut(y=7.2):
    return stroke(f"M4.7 {y:g}q1.6 1.7 3.2 0M10.1 {y:g}q1.6 1.7 3.2 0", 1.25)


def big_eyes(px, py, y=7, r=2.3, pupil=1.1):
    out = ""
    for x in (6.2, 11.8):
        out += circle(x, y, r, fill="white", stroke="bronze", stroke_width=0.8)
        out += circle(x + px, y + py, pupil, fill="ink")
    return out


def lids(y=7.2, look=0.0):
    """Half-closed eyes."""
    out = ""
    for x in (LEFT, RIGHT):
        out += path(f"M{x - 1.7:g} {y:g}H{x + 1.7:g}A1.7 1.9 0 0 1 {x - 1.7:g} {y:g}Z", fill="white")
        out += circle(x + look, y + 0.8, 0.85, fill="ink")
    return out + stroke(f"M{LEFT - 1.9:g} {y:g}h3.8M{RIGHT - 1.9:g} {y:g}h3.8", 1.1)


def cross_brows(y=5):
    return stroke(f"M4 {y - 0.9:g}L7.8 {y + 0.9:g}M14 {y - 0.9:g}L10.2 {y + 0.9:g}", 1.2)


def sad_brows(y=4.9):
    return stroke(f"M4 {y + 0.8:g}L7 {y - 0.6:g}M14 {y + 0.8:g}L11 {y - 0.6:g}", 1)


def smile(width=1.25):
    return stroke("M5 10.7C6 14.1 12 14.1 13 10.7", width)


def frown(width=1.25):
    return stroke("M5.6 13.4C6.6 10.5 11.4 10.5 12.4 13.4", width)


def flat():
    return stroke("M5.9 12.5H12.1", 1.2)


def laugh():
    return (path("M4.4 9.8H13.6C13.6 13.2 11.6 14.9 9 14.9C6.4 14.9 4.4 13.2 4.4 9.8Z", fill="ink")
            + path("M5.1 10.3H12.9C12.8 11 12.7 11.4 12.5 11.8H5.5C5.3 11.4 5.2 11 5.1 10.3Z", fill="white")
            + path("M6.7 13.7C7.6 12.5 10.4 12.5 11.3 13.7C10.2 14.5 7.8 14.5 6.7 13.7Z", fill="coral"))


def wavy():
    return stroke("M5.2 12.6C6 11 7.2 11 7.8 12.1C8.4 13.4 9.6 13.4 10.2 12.1C10.8 11 12 11 12.8 12.2", 1.2)


def small_o(x=9, y=12.3, rx=1.5, ry=1.7):
    return ellipse(x, y, rx, ry, fill="ink")


def tongue(x=10.2, y=11.6):
    return path(f"M{x - 1.7:g} {y:g}H{x + 1.7:g}V{y + 2:g}A1.7 1.7 0 0 1 {x - 1.7:g} {y + 2:g}Z",
                fill="coral", stroke="brick", stroke_width=0.8, stroke_linejoin="round")


def blush(x1=4.4, x2=13.6, y=10.3, r=1.5):
    return (ellipse(x1, y, r, r * 0.75, fill="coral", fill_opacity=0.75)
            + ellipse(x2, y, r, r * 0.75, fill="coral", fill_opacity=0.75))


def drop(x, y, s=1.0):
    """A tear or a bead of sweat; x, y is its point."""
    return path(f"M{x:g} {y:g}c{1.5 * s:g} {1.9 * s:g} {1.7 * s:g} {2.5 * s:g} {1.7 * s:g} {3.2 * s:g}"
                f"a{1.7 * s:g} {1.7 * s:g} 0 0 1 {-3.4 * s:g} 0"
                f"c0 {-0.7 * s:g} {0.2 * s:g} {-1.3 * s:g} {1.7 * s:g} {-3.2 * s:g}Z",
                fill="tide", stroke="deep", stroke_width=0.7)


def heart(x, y, s, fill="url(#heart)", edge="brick", width=0.7):
    """x, y is the lower tip; s half the width."""
    return path(f"M{x:g} {y:g}C{x - 1.5 * s:g} {y - s:g} {x - s:g} {y - 2.2 * s:g} {x - 0.5 * s:g} {y - 2 * s:g}"
                f"C{x - 0.2 * s:g} {y - 1.95 * s:g} {x:g} {y - 1.7 * s:g} {x:g} {y - 1.4 * s:g}"
                f"C{x:g} {y - 1.7 * s:g} {x + 0.2 * s:g} {y - 1.95 * s:g} {x + 0.5 * s:g} {y - 2 * s:g}"
                f"C{x + s:g} {y - 2.2 * s:g} {x + 1.5 * s:g} {y - s:g} {x:g} {y:g}Z",
                fill=fill, stroke=edge, stroke_width=width, stroke_linejoin="round")


def fist(x, y, *fingers, r=2):
    """A hand around x, y; each finger is an angle and a length."""
    bars = [bar(x - 0.75, y - r - length + 1, 1.5, length + 1, turn=f"rotate({angle:g} {x:g} {y:g})")
            for angle, length in fingers]
    return blob(HAND, *bars, dot(x, y, r))


# Faces

@smiley("00", ":))")
def _():
    return head(), merry(), laugh()


@smiley("01", ":((")
def _():
    return (head(), sad_brows(5.2), shut(7),
            path("M4.9 8.6H7.5V15.5A1.3 1.3 0 0 1 4.9 15.5Z", fill="shoal", stroke="sea", stroke_width=0.7),
            path("M10.5 8.6H13.1V15.5A1.3 1.3 0 0 1 10.5 15.5Z", fill="shoal", stroke="sea", stroke_width=0.7),
            ellipse(9, 12.6, 1.2, 1.6, fill="ink"))


@smiley("02", ";)")
def _():
    return head(), eye(LEFT), stroke("M10 7.7C11 6.5 12.6 6.5 13.5 7.5", 1.4), smile()


@smiley("03", ":D")
def _():
    return (head(), eyes(6.9),
            path("M4.2 9.9H13.8C13.8 13.2 11.7 15 9 15C6.3 15 4.2 13.2 4.2 9.9Z", fill="white",
                 stroke="ink", stroke_width=1, stroke_linejoin="round"),
            stroke("M4.8 12.2H13.2M7.4 10V14.4M10.6 10V14.4", 0.6, "stone"))


@smiley("04", ";;)")
def _():
    wide = [ellipse(x, 8, 1.5, 2, fill="ink") + circle(x - 0.4, 7.2, 0.6, fill="white") for x in (6.1, 11.9)]
    return (head(), *wide, stroke("M4.9 11.4C6 13.9 12 13.9 13.1 11.4", 1.2), blush(3.9, 14.1, 11.2, 1.2),
            stroke("M4.8 6.4L3.4 5.4M6.1 5.7V3.9M13.2 6.4L14.6 5.4M11.9 5.7V3.9", 0.9))


@smiley("05", ":-/")
def _():
    return head(), eyes(7.6), stroke("M10.2 4.9C11.2 4 12.8 4.2 13.6 5.2", 1), stroke("M6 13.4L12.3 11", 1.35)


@smiley("06", ":X")
def _():
    return (head(), heart(6, 9.8, 2.1, width=0.6), heart(12, 9.8, 2.1, width=0.6),
            stroke("M5.2 11.4C6.2 14.5 11.8 14.5 12.8 11.4", 1.25))


@smiley("07", ':">')
def _():
    return (head(), ellipse(4.6, 10.3, 2.2, 1.7, fill="coral"), ellipse(13.4, 10.3, 2.2, 1.7, fill="coral"),
            shut(7), stroke("M7.2 12.3C7.8 13.5 10.2 13.5 10.8 12.3", 1.15))


@smiley("08", ":P")
def _():
    return head(), eyes(7), tongue(10.4, 11.6), stroke("M4.9 10.6C6.4 12.4 11.6 12.4 13.1 10.6", 1.25)


@smiley("09", ":*")
def _():
    return (head(), shut(7.2), path("M8.3 10.2C10.2 10.1 10.5 11.5 9.2 12C10.5 12.5 10.2 13.9 8.3 13.8"
                                    "C8.7 12.6 8.7 11.4 8.3 10.2Z",
                                    fill="rose", stroke="brick", stroke_width=0.8, stroke_linejoin="round"),
            heart(14.4, 7.2, 2.6))


@smiley("10", ":O")
def _():
    return (head(), stroke("M4.6 4.6q1.6 -1.4 3.2 0M10.2 4.6q1.6 -1.4 3.2 0", 0.95), eyes(7.3),
            ellipse(9, 12.5, 1.9, 2.3, fill="ink"))


@smiley("11", "X-(")
def _():
    return (head("hot", "brick"), stroke("M4.6 5.6L7.6 8.4M7.4 5.6L4.8 8.4M10.4 5.6L13.2 8.4M13.4 5.6L10.4 8.4",
                                         1.2), frown(1.35))


@smiley("12", ":>")
def _():
    return head(), lids(7, 0.7), stroke("M5.8 11.6L9.4 13.6L12.8 10.8", 1.3)


@smiley("13", "B-)")
def _():
    return (head(), path("M2.4 5.9H15.6V7.2C15.4 9.2 14.4 10.1 12.7 10.1C10.9 10.1 9.9 9.2 9.5 7.7H8.5"
                         "C8.1 9.2 7.1 10.1 5.3 10.1C3.6 10.1 2.6 9.2 2.4 7.2Z", fill="ink"),
            stroke("M4.4 7.3L5.8 6.9M11.6 7.3L13 6.9", 0.9, "shoal"),
            stroke("M5.6 12C6.6 14.2 11.4 14.2 12.4 12", 1.25))


@smiley("14", ":-S")
def _():
    return head(), sad_brows(), eyes(7.8), wavy()


@smiley("15", ">:)")
def _():
    horns = blob("brick", shape("M3.6 5.8C1.8 4.2 1.5 2.4 2 0.8C3.4 2.4 5 3 6.6 3.3Z"),
                 shape("M14.4 5.8C16.2 4.2 16.5 2.4 16 0.8C14.6 2.4 13 3 11.4 3.3Z"), edge="ink", width=0.5)
    return (horns, head("red", "ink", 9, 10, 6.9), cross_brows(6.8), eyes(9),
            stroke("M5 12C6.4 15 11.6 15 13 12", 1.25))


@smiley("18", ":|")
def _():
    return head(), eyes(), flat()


@smiley("19", "/:-)")
def _():
    return (head(), eyes(8), stroke("M3.9 5.6H7.6", 1.3), stroke("M10.3 4.6C11.2 2.7 13 2.9 14 4.4", 1.3),
            stroke("M5.6 12.1C7.4 13.2 10.6 13 12.4 11.4", 1.25))


@smiley("20", ":-B")
def _():
    return (head(), circle(5.9, 7.4, 2.5, fill="white", stroke="ink", stroke_width=1),
            circle(12.1, 7.4, 2.5, fill="white", stroke="ink", stroke_width=1), stroke("M8.2 7.2Q9 6.6 9.8 7.2", 1),
            circle(6.2, 7.5, 0.95, fill="ink"), circle(11.8, 7.5, 0.95, fill="ink"),
            stroke("M5.6 11.6C6.8 12.6 11.2 12.6 12.4 11.6", 1.1),
            rect(7, 12.1, 1.9, 2.4, 0.4, fill="white", stroke="ink", stroke_width=0.6),
            rect(9.1, 12.1, 1.9, 2.4, 0.4, fill="white", stroke="ink", stroke_width=0.6))


@smiley("21", "O:-)")
def _():
    return (head("f", "bronze", 9, 10.2, 6.9), at(0.6, 2, 0.93, eyes(), smile()),
            ellipse(9, 2.5, 5.6, 1.7, fill="none", stroke="bronze", stroke_width=2.2),
            ellipse(9, 2.5, 5.6, 1.7, fill="none", stroke="honey", stroke_width=1))


@smiley("22", "=;")
def _():
    return (blob(HAND, bar(3.9, 3.6, 2.1, 8), bar(6.6, 1.6, 2.1, 8), bar(9.3, 1.4, 2.1, 8), bar(12, 3, 2.1, 8),
                 shape("M3.9 8H14.1V12.4C14.1 15 12.2 16.4 9 16.4C5.8 16.4 3.9 15 3.9 12.4Z"),
                 bar(2.1, 8.4, 2.4, 5.8, turn="rotate(-36 3.3 11)"), edge="bronze", width=1),
            stroke("M6.3 4.6V8.2M9 3.4V8.2M11.7 4.4V8.2", 0.7, "bronze"),
            stroke("M6.4 11.4C8 13 11 12.8 12.4 10.8", 0.8, "bronze"))


@smiley("23", "I-)")
def _():
    return (head("f", "bronze", 8.4, 10, 7), at(-0.7, 1, 1, shut(7.4), small_o(9, 12, 1.1, 1.2)),
            stroke("M11 1.4H13.8L11 4.6H13.8", 2.6, "white"), stroke("M11 1.4H13.8L11 4.6H13.8", 1.1, "deep"),
            stroke("M15 4.4H17L15 6.8H17", 2.4, "white"), stroke("M15 4.4H17L15 6.8H17", 1, "deep"))


@smiley("24", "8-|")
def _():
    return head(), big_eyes(0.5, -1.1, 6.8, 2.5), flat()


@smiley("25", ":-&")
def _():
    return (head("sick", "pine"), sad_brows(), stroke("M4.7 7.6H7.9M10.1 7.6H13.3", 1.3),
            stroke("M4.8 12.4L6.2 11.4L7.6 12.8L9 11.4L10.4 12.8L11.8 11.4L13.2 12.4", 1.15))


@smiley("26", ":-$")
def _():
    return (head(), eyes(6.8), stroke("M6 11.2C7.6 10.5 10.4 10.5 12 11.2", 1.2),
            fist(9, 15.3, (0, 5), r=1.9))


@smiley("27", "[-(")
def _():
    tape = [bar(4.6, 10.7, 8.8, 3, 1.2, turn=f"rotate({angle} 9 12.2)") for angle in (-14, 14)]
    return (head(), cross_brows(4.8), eyes(7.6), blob("cream", *tape, edge="cocoa", width=0.6),
            circle(9, 12.2, 0.7, fill="brass"))


@smiley("28", ":o)")
def _():
    return (blob("coral", dot(2.6, 6.6, 1.9), dot(3.6, 4, 1.7), dot(15.4, 6.6, 1.9), dot(14.4, 4, 1.7),
                 edge="brick", width=0.6),
            head("white", "slate", 9, 9.4, 7), eyes(6.8),
            stroke("M4.6 11C5.4 15.2 12.6 15.2 13.4 11", 1.5, "brick"),
            circle(9, 9.7, 2, fill="url(#heart)", stroke="brick", stroke_width=0.6),
            stroke("M6.3 3.9V4.6M11.7 3.9V4.6", 0.9, "sea"))


@smiley("29", "8-}")
def _():
    return (head(), circle(5.9, 7, 2.7, fill="white", stroke="bronze", stroke_width=0.8),
            circle(7, 7.6, 1.05, fill="ink"),
            circle(12.2, 7.2, 1.9, fill="white", stroke="bronze", stroke_width=0.8),
            circle(11.4, 6.8, 0.9, fill="ink"),
            stroke("M4.8 11.6C5.6 13.8 7.4 13.8 8.4 12.8C9.4 11.8 10.6 14.2 13.2 11.2", 1.25))


@smiley("30", "(:|")
def _():
    return (head(), stroke("M4.3 4.7q1.6 -1.2 3.2 0M10.5 4.7q1.6 -1.2 3.2 0", 0.95), shut(6.9),
            ellipse(9, 12, 2.6, 3.1, fill="ink"),
            path("M7.1 13.5C8 12.4 10 12.4 10.9 13.5C10.4 14.7 7.6 14.7 7.1 13.5Z", fill="coral"))


@smiley("31", "=p~")
def _():
    return (head(), big_eyes(0, 0.3, 6.6, 2, 1), stroke("M5 10.4C6.6 12.2 11.4 12.2 13 10.4", 1.25),
            tongue(8, 11.4), drop(12.2, 11.6, 1.15))


@smiley("32", ":-?")
def _():
    return (head(), eye(6.5, 7), eye(11.9, 6.8), stroke("M10.2 4.4C11.2 3.4 12.8 3.6 13.6 4.6", 1),
            stroke("M8 11.6L12 10.8", 1.25), fist(6, 15.2, (62, 3.6), r=2))


@smiley("33", "#-o")
def _():
    palm = (bar(3.4, 1.2, 7, 1.9), bar(2.6, 2.9, 7.6, 1.9), bar(3.4, 4.6, 7, 1.9),
            bar(7.6, 5.2, 1.9, 4, turn="rotate(24 8.5 6)"),
            shape("M8.6 1.2H12L17.4 0.9V5L12.4 6.5H8.6Z"))
    return (at(0, 0.8, 1, head(), shut(8.2), small_o(9, 12.8, 1.6, 1.4)),
            group([blob(HAND, *palm), stroke("M4.6 3H9.4M4.6 4.7H9.4", 0.6, "bronze")],
                  "translate(-0.3 1.1) rotate(-6 9 4)"))


@smiley("34", "=D>")
def _():
    return (at(0.9, -1.2, 0.9, head(), merry(7), laugh()),
            blob(HAND, bar(3.2, 11.2, 2.4, 5.6, turn="rotate(28 6.6 16)"), dot(6.2, 15, 2.1)),
            blob(HAND, bar(12.4, 11.2, 2.4, 5.6, turn="rotate(-28 11.4 16)"), dot(11.8, 15, 2.1)),
            stroke("M9 10.6V9.4M1.6 11.4L0.8 10.6M16.4 11.4L17.2 10.6", 0.8, "deep"))


@smiley("35", ":@)")
def _():
    return (blob("url(#pink)", shape("M2.6 6.6L2.4 1.8C4.6 1.8 6.4 2.8 7.4 4.2Z"),
                 shape("M15.4 6.6L15.6 1.8C13.4 1.8 11.6 2.8 10.6 4.2Z"), edge="brick", width=0.6),
            head("pink", "brick", 9, 9.6, 7), eye(5.6, 7.6), eye(12.4, 7.6),
            ellipse(9, 11.4, 3.3, 2.4, fill="coral", stroke="brick", stroke_width=0.8),
            ellipse(7.7, 11.4, 0.7, 1.1, fill="ink"), ellipse(10.3, 11.4, 0.7, 1.1, fill="ink"),
            stroke("M7.4 14.9C8.4 15.5 9.6 15.5 10.6 14.9", 0.9, "brick"))


@smiley("36", "3:-O")
def _():
    return (blob("sand", shape("M4.2 4.6C2.6 4 2 2.4 2.4 0.9C3.6 2.2 5 2.4 6.4 3Z"),
                 shape("M13.8 4.6C15.4 4 16 2.4 15.6 0.9C14.4 2.2 13 2.4 11.6 3Z"), edge="cocoa", width=0.6),
            blob("blush", shape("M3.6 6.4L0.9 5.4C0.8 7.6 2 8.8 3.8 8.6Z"),
                 shape("M14.4 6.4L17.1 5.4C17.2 7.6 16 8.8 14.2 8.6Z"), edge="ink", width=0.5),
            path("M4 4.2C6 2.2 12 2.2 14 4.2C14.8 7 14.2 10 13.6 12H4.4C3.8 10 3.2 7 4 4.2Z",
                 fill="url(#white)", stroke="ink", stroke_width=1),
            path("M4.3 4.4C5.6 3 7.4 2.9 8.2 3.2C8.6 6 7 9.6 4.4 9.8C3.7 8 3.7 6 4.3 4.4Z", fill="slate"),
            ellipse(6.2, 7, 0.95, 1.4, fill="ink"), ellipse(11.8, 7, 0.95, 1.4, fill="ink"),
            circle(6.2, 6.5, 0.4, fill="white"),
            ellipse(9, 13.3, 5.2, 3.5, fill="blush", stroke="ink", stroke_width=1),
            ellipse(6.9, 12.3, 0.7, 0.9, fill="ink"), ellipse(11.1, 12.3, 0.7, 0.9, fill="ink"),
            ellipse(9, 14.9, 1.4, 0.9, fill="brick"))


@smiley("37", ":(|)")
def _():
    return (circle(2.6, 9, 2, fill="sand", stroke="cocoa", stroke_width=1.2),
            circle(15.4, 9, 2, fill="sand", stroke="cocoa", stroke_width=1.2),
            circle(9, 8.8, 6.7, fill="url(#brown)", stroke="ink", stroke_width=0.9),
            path("M9 6.2C10.2 4 14 4.4 14 7.8C14 9 13.4 9.6 13 10C14.6 13.4 12.6 15.2 9 15.2C5.4 15.2 3.4 13.4 5 10"
                 "C4.6 9.6 4 9 4 7.8C4 4.4 7.8 4 9 6.2Z", fill="sand"),
            ellipse(6.8, 7.7, 0.95, 1.35, fill="ink"), ellipse(11.2, 7.7, 0.95, 1.35, fill="ink"),
            stroke("M8.3 10.2H8.5M9.5 10.2H9.7", 0.8, "cocoa"), stroke("M6.2 12.1C7.4 13.9 10.6 13.9 11.8 12.1", 1.2))


@smiley("38", "~:>")
def _():
    return (blob("brick", dot(6.6, 2.9, 1.5), dot(9.2, 2.2, 1.6), dot(11.6, 3.2, 1.4), edge="brick", width=0.3),
            head("white", "slate", 9, 9.8, 6.8), eye(6, 8.2), eye(12, 8.2),
            path("M6.4 10.2L9 8.9L11.6 10.2L9 13Z", fill="amber", stroke="bronze", stroke_width=0.8,
                 stroke_linejoin="round"),
            stroke("M6.6 10.3H11.4", 0.6, "bronze"), ellipse(8.3, 14, 0.9, 1.5, fill="brick"),
            ellipse(9.9, 14, 0.9, 1.5, fill="brick"))


@smiley("39", "@};-")
def _():
    return (stroke("M9.2 9C9.6 12 9.4 15 8.4 17.2", 2.2, "pine"), stroke("M9.2 9C9.6 12 9.4 15 8.4 17.2", 1, "kelp"),
            path("M9.4 13.6C10.6 11.2 13 10.6 15.4 11.2C14.4 13.6 12 14.8 9.4 13.6Z", fill="kelp", stroke="pine",
                 stroke_width=0.7),
            path("M9.3 12.4C8 10.8 6 10.6 4 11.4C5.2 13.2 7.4 13.8 9.3 12.4Z", fill="kelp", stroke="pine",
                 stroke_width=0.7),
            path("M4.4 3.6C5.8 4 6.4 2.6 7 1.6C8.2 2.2 9.8 2.2 11 1.6C11.6 2.6 12.2 4 13.6 3.6C14.2 7 12.8 10 9 10.2"
                 "C5.2 10 3.8 7 4.4 3.6Z",
                 fill="url(#heart)", stroke="brick", stroke_width=0.9, stroke_linejoin="round"),
            stroke("M6.6 5C7.4 7.6 10.6 7.6 11.4 5C10.4 3.8 8.4 4 8.2 5.4C8.2 6.4 9.6 6.6 9.8 5.6", 0.8, "brick"))


@smiley("40", "%%-")
def _():
    leaf = [group([heart(9, 8.6, 3.3, "url(#green)", "pine", 0.8)], f"rotate({angle} 9 8.6)")
            for angle in (45, 135, 225, 315)]
    return (stroke("M9 9C9.6 12 11 15 13 17", 1.8, "pine"), *leaf, circle(9, 8.6, 0.9, fill="spring"))


@smiley("42", "(~~)")
def _():
    return (path("M8.2 4.4C8.2 2.8 8.8 1.6 10.6 1.2L11.4 2.4C10.4 2.9 10.2 3.6 10.2 4.6Z", fill="kelp",
                 stroke="pine", stroke_width=0.8),
            blob("url(#orange)", ("ellipse", dict(cx=5.4, cy=10.2, rx=3.8, ry=5.6)),
                 ("ellipse", dict(cx=12.6, cy=10.2, rx=3.8, ry=5.6)),
                 ("ellipse", dict(cx=9, cy=10.2, rx=4.4, ry=6)), edge="brick", width=0.8),
            stroke("M6 4.9C4.6 7 4.6 13.4 6 15.5M12 4.9C13.4 7 13.4 13.4 12 15.5", 0.6, "brick"),
            path("M4.8 9.6L6.4 6.8L8 9.6ZM10 9.6L11.6 6.8L13.2 9.6Z", fill="ink"),
            path("M3.8 11.4C6 12.4 12 12.4 14.2 11.4C13 14.8 10.8 15 10.2 15V13.8H8.6V15.1"
                 "C6.4 15 4.8 14.2 3.8 11.4Z", fill="ink"))


@smiley("43", "~o)")
def _():
    return (stroke("M6.4 5.4C5.2 4.2 7.4 3 6.4 1.4M10 5.4C8.8 4.2 11 3 10 1.4", 1, "stone"),
            circle(13.2, 10, 2.2, fill="none", stroke="deep", stroke_width=2),
            circle(13.2, 10, 2.2, fill="none", stroke="mist", stroke_width=0.7),
            path("M3 7H13.4V10.6C13.4 13.4 11.4 14.8 8.2 14.8C5 14.8 3 13.4 3 10.6Z", fill="foam", stroke="deep",
                 stroke_width=1, stroke_linejoin="round"),
            ellipse(8.2, 7.1, 5.2, 1.5, fill="cocoa", stroke="deep", stroke_width=0.9),
            path("M1.2 15.2H15.2C14.4 16.6 13 17 11.4 17H5C3.4 17 2 16.6 1.2 15.2Z", fill="mist", stroke="deep",
                 stroke_width=0.9, stroke_linejoin="round"))


@smiley("44", "-:)")
def _():
    return (at(-0.9, 3.2, 0.82, head(), eyes(), smile()),
            stroke("M10 1.6L9 0.8M17 8.6L17.6 9.2M9.2 5H8", 0.9, "brass"),
            path("M13.2 0.9C15.6 0.9 17.2 2.6 17.2 4.6C17.2 6.4 15.4 7 15.2 8.6H11.2C11 7 9.2 6.4 9.2 4.6"
                 "C9.2 2.6 10.8 0.9 13.2 0.9Z",
                 fill="cream", stroke="bronze", stroke_width=0.9),
            stroke("M12 8V5.2L13.2 6L14.4 5.2V8", 0.7, "brass"), rect(11.5, 8.5, 3.4, 2.4, 0.8, fill="slate"))


@smiley("45", "8-x")
def _():
    return (path("M9 1.4C13.6 1.4 16.2 4.4 16.2 8.2"
                 "C16.2 10.6 15 12.2 13.2 13V15.4A1.2 1.2 0 0 1 12 16.6H6A1.2 1.2 0 0 1 4.8 15.4V13"
                 "C3 12.2 1.8 10.6 1.8 8.2C1.8 4.4 4.4 1.4 9 1.4Z",
                 fill="url(#white)", stroke="slate", stroke_width=EDGE),
            circle(5.9, 8.4, 2.2, fill="ink"), circle(12.1, 8.4, 2.2, fill="ink"),
            path("M9 10.4L10.1 12.4H7.9Z", fill="ink"), stroke("M7 14.4V16.2M9 14.4V16.2M11 14.4V16.2", 0.8, "slate"))


@smiley("46", ">-)")
def _():
    return (path("M9 1C13.6 1 16 3.8 15.8 7.4C15.6 11.6 11.8 17 9 17C6.2 17 2.4 11.6 2.2 7.4C2 3.8 4.4 1 9 1Z",
                 fill="url(#green)", stroke="pine", stroke_width=EDGE),
            ellipse(5.8, 8.6, 1.7, 2.9, fill="ink", transform="rotate(-32 5.8 8.6)"),
            ellipse(12.2, 8.6, 1.7, 2.9, fill="ink", transform="rotate(32 12.2 8.6)"),
            ellipse(5, 7.4, 0.5, 0.8, fill="white"), ellipse(12, 7.3, 0.5, 0.8, fill="white"),
            stroke("M7.4 13.6C8.2 14.3 9.8 14.3 10.6 13.6", 1))


@smiley("47", ":-L")
def _():
    return (head(), cross_brows(5), eyes(7.8),
            rect(4.8, 10.6, 8.4, 3.4, 1.2, fill="white", stroke="ink", stroke_width=1),
            stroke("M5.2 12.3H12.8M6.9 10.8V13.8M9 10.8V13.8M11.1 10.8V13.8", 0.6, "slate"))


@smiley("48", "<):)")
def _():
    return (head("f", "bronze", 9, 10.4, 6.8), at(0.9, 2.8, 0.9, eyes(7.8), smile()),
            path("M4.6 5C4.6 2.4 5.6 0.9 6.8 0.9C7.8 0.9 8.2 1.8 9 1.8C9.8 1.8 10.2 0.9 11.2 0.9"
                 "C12.4 0.9 13.4 2.4 13.4 5Z", fill="url(#hat)", stroke="ink", stroke_width=0.8),
            path("M0.6 3.6C2 5.2 4.6 5.2 9 5.2C13.4 5.2 16 5.2 17.4 3.6C17.2 6.6 14 7.4 9 7.4"
                 "C4 7.4 0.8 6.6 0.6 3.6Z", fill="url(#hat)", stroke="ink", stroke_width=0.8,
                 stroke_linejoin="round"),
            stroke("M5 4.5H13", 0.9, "sand"))


@smiley("49", "[-o<")
def _():
    return (head(), stroke("M4.2 5.4L7.2 4.2M13.8 5.4L10.8 4.2", 1), shut(7), small_o(9, 10.6, 1, 0.9),
            blob(HAND, shape("M9 10.8C8.2 11.8 7 13.4 6.6 15L6.4 17.2H11.6L11.4 15C11 13.4 9.8 11.8 9 10.8Z")),
            stroke("M9 11.8V17", 0.8, "bronze"))


@smiley("50", "@-)")
def _():
    spiral = ("M{0} 7.2c0.5 -0.6 1.3 0 1 0.8c-0.4 1.1 -2.2 0.9 -2.3 -0.7"
              "c-0.1 -2 2.6 -2.6 3.5 -0.9c0.4 0.8 0.4 1.7 0 2.4")
    out = [head()]
    for x in (6, 12):
        out += [circle(x, 7.2, 2.8, fill="white", stroke="bronze", stroke_width=0.7),
                stroke(spiral.format(x), 0.8, "deep")]
    return (*out, small_o(9, 12.9, 1.3, 1.3))


@smiley("51", "$-)")
def _():
    sign = "M{0} 5.4C{1} 4.2 {2} 4.2 {2} 5.7C{2} 7.2 {0} 6.6 {0} 8.2C{0} 9.7 {3} 9.7 {2} 8.5M{4} 3.4V10.4"
    out = [head(), stroke("M5.2 11.9C6.4 14.7 11.6 14.7 12.8 11.9", 1.25)]
    for x in (6, 12):
        d = sign.format(f"{x + 1.5:g}", f"{x + 1.2:g}", f"{x - 1.5:g}", f"{x - 1.1:g}", f"{x:g}")
        out += [stroke(d, 2.6, "white"), stroke(d, 1.2, "pine")]
    return out


@smiley("52", ':-"')
def _():
    return (head("f", "bronze", 8.4, 9.6, 7.2), eye(5.8, 7.4), eye(10.8, 7.4),
            stroke("M4.6 4.8q1.3 -1 2.6 0M9.6 4.6q1.3 -1 2.6 0", 0.9),
            ellipse(10.8, 12.4, 1.2, 1.1, fill="ink"),
            stroke("M14.6 8V3L17 2.4V7", 2.2, "white"), stroke("M14.6 8V3L17 2.4V7", 1, "deep"),
            ellipse(13.8, 8.2, 1.3, 1, fill="deep"), ellipse(16.2, 7.2, 1.3, 1, fill="deep"))


@smiley("53", ":^o")
def _():
    return (head("f", "bronze", 7.6, 9, 7), eye(4.8, 7), eye(9.4, 7),
            small_o(7, 13, 1.3, 1.2),
            path("M7.4 9C7.4 8.4 7.8 8.2 8.4 8.3L16.4 9.2A1 1 0 0 1 16.4 11.2L8.4 11.2C7.6 11.2 7.3 10.4 7.4 9Z",
                 fill="honey", stroke="bronze", stroke_width=0.9),
            ellipse(16.3, 10.2, 1.2, 1.3, fill="coral", stroke="bronze", stroke_width=0.6),
            stroke("M3.6 4.6L6 4M10.6 4.4L8.4 4", 0.9))


@smiley("54", "B-(")
def _():
    return (head(), ellipse(6, 7.6, 2.6, 2.4, fill="plum", fill_opacity=0.85), stroke("M4.8 7.7H7.3", 1.1, "ink"),
            eye(RIGHT, 7.6),
            frown(), blob("blush", bar(9.6, 2.6, 5.4, 2, 0.9, turn="rotate(24 12.3 3.6)"), edge="cocoa", width=0.5),
            stroke("M12 3.2L12.2 4", 0.8, "cocoa"), drop(14.2, 10.6, 0.75))


@smiley("55", ":)>-")
def _():
    return (at(-0.8, 0, 0.86, head(), eyes(), smile()),
            fist(13.6, 14.6, (-24, 6.4), (22, 6.4), r=2.2),
            stroke("M12.2 14.2C13 15.1 14.2 15.1 15 14.4", 0.7, "bronze"))


@smiley("56", "[-x")
def _():
    return (at(-0.8, 1.4, 0.88, head(), cross_brows(5.2), eyes(8), frown()),
            blob(HAND, bar(12.5, 5.4, 1.8, 8), bar(11.2, 11.6, 5.8, 4.8, 1.9),
                 bar(10.6, 11.4, 4.2, 1.7, turn="rotate(14 12 12)")),
            stroke("M14.6 13.1H16.6M14.6 14.7H16.4", 0.6, "bronze"),
            stroke("M11 7.6C10.6 6.4 10.8 5.2 11.4 4.2M15.8 7.6C16.2 6.4 16 5.2 15.4 4.2", 0.9, "deep"))


@smiley("57", "\\:D/")
def _():
    return (stroke("M5.4 11.6L1.6 3.6M12.6 11.6L16.4 3.6", 2.6, "deep"),
            stroke("M5.4 11.6L1.6 3.6M12.6 11.6L16.4 3.6", 1.2, "tide"),
            stroke("M7.4 13L6 17M10.6 13L13.2 16.4", 2.4, "deep"),
            stroke("M7.4 13L6 17M10.6 13L13.2 16.4", 1.1, "tide"),
            blob(HAND, dot(1.6, 3.2, 1.1), dot(16.4, 3.2, 1.1), width=0.6),
            at(2.6, 1.4, 0.71, head(), merry(7.4), laugh()))


@smiley("58", ">:D<", 42)
def _():
    arm = "M{0} 12.4C{1} 15.6 {2} 14.6 {3} 9.4"
    left = arm.format(16, 11, 7, 5.4)
    right = arm.format(26, 31, 35, 36.6)
    return (stroke(left, 4.8, "deep"), stroke(right, 4.8, "deep"), stroke(left, 3, "tide"), stroke(right, 3, "tide"),
            fist(5, 7.4, (-34, 3), (-8, 3.4), (18, 3), (58, 2.4), r=2.1),
            fist(37, 7.4, (34, 3), (8, 3.4), (-18, 3), (-58, 2.4), r=2.1),
            at(12, 0, 1, head(), merry(), laugh()),
            heart(11, 6.4, 2.2), heart(31, 6.4, 2.2))


def figure(body, edge, back, front, arms, props=()):
    """A little person seen from the side: legs, body, arms, head."""
    return (*props, stroke(back, 2.9, edge), stroke(front, 2.9, edge), stroke(back, 1.3, body),
            stroke(front, 1.3, body),
            stroke("M9 7.4V11.2", 4.6, edge), stroke("M9 7.4V11.2", 2.9, body),
            stroke(arms, 2.7, edge), stroke(arms, 1.2, body),
            circle(9, 3.6, 2.8, fill="url(#f)", stroke="bronze", stroke_width=0.9))


@smiley("59", "o->")
def _():
    return figure("tide", "deep", "M8.6 11.4L5.6 16.6", "M9.4 11.4L12 16.6", "M9 8H15.4",
                  [path("M15 6L17.8 8L15 10Z", fill="honey", stroke="bronze", stroke_width=0.8,
                        stroke_linejoin="round")])


@smiley("60", "o=>")
def _():
    return (group([*figure("coral", "brick", "M8.8 11.4L4.8 13.2L3.6 16", "M9.2 11.4L12.8 13L13.4 16.8",
                           "M9 8.2L12.6 9.8L15.6 8")], "translate(1.2 -0.3) rotate(6 9 9) scale(0.98)"),
            stroke("M0.9 5H4.4M0.9 8H5.4M0.9 11H4.4", 1, "tide"))


@smiley("61", "o-+")
def _():
    return (*figure("kelp", "pine", "M8.4 11.4L6.8 16.6", "M9.6 11.4L11.2 16.6", "M3.4 8.6H14.6"),
            blob(HAND, dot(2.8, 8.6, 1), dot(15.2, 8.6, 1), width=0.6))


@smiley("62", "(%)")
def _():
    return (circle(9, 9, 7.4, fill="white", stroke="ink", stroke_width=EDGE),
            path("M9 1.6A7.4 7.4 0 0 1 9 16.4A3.7 3.7 0 0 1 9 9A3.7 3.7 0 0 0 9 1.6Z", fill="ink"),
            circle(9, 5.3, 1.2, fill="ink"), circle(9, 12.7, 1.2, fill="white"))


def mug(handle_left=False):
    """Beer in a glass of 11 by 12, its corner at 0,0."""
    parts = [path("M9 3.6H11.2A2.2 2.2 0 0 1 13.4 5.8V7.2A2.2 2.2 0 0 1 11.2 9.4H9", fill="none", stroke="bronze",
                  stroke_width=2.4),
             path("M9 3.6H11.2A2.2 2.2 0 0 1 13.4 5.8V7.2A2.2 2.2 0 0 1 11.2 9.4H9", fill="none", stroke="mist",
                  stroke_width=0.8),
             rect(1, 1.6, 8.6, 10.6, 1, fill="url(#beer)", stroke="bronze", stroke_width=1),
             stroke("M3.6 5.6V10.2M6.8 5.6V10.2", 0.9, "cream"),
             blob("white", dot(2.2, 2, 1.7), dot(5.2, 1.6, 2), dot(8.2, 2, 1.7),
                  ("rect", dict(x=0.9, y=2, width=8.8, height=1.8, rx=0.6)), edge="bronze", width=0.5)]
    return group(parts, "translate(14.5 0) scale(-1 1)") if handle_left else group(parts)


@smiley("64", "(beer)", 57, 15)
def _():
    return (group([mug(True)], "translate(12.6 2.6) rotate(9 7 6) scale(0.93)"),
            group([mug()], "translate(31.4 2.6) rotate(-9 7 6) scale(0.93)"),
            stroke("M28.5 3.4V1M24.8 3.6L23.6 1.9M32.2 3.6L33.4 1.9", 1, "brass"),
            circle(27.6, 6, 0.8, fill="honey", stroke="bronze", stroke_width=0.5),
            circle(30, 4.8, 0.6, fill="honey", stroke="bronze", stroke_width=0.4),
            stroke("M5 12.2H9M3 9.6H6.5M48 12.2H52M50.5 9.6H54", 0.9, "shoal"))


@smiley("65", "=))")
def _():
    return (at(1.2, -0.6, 0.87, turned(-38, head(), merry(), laugh())),
            drop(2.2, 11, 0.7), drop(15.4, 2.2, 0.7), stroke("M0.9 17H17.1", 1.2, "slate"),
            stroke("M1.4 3.8C2 2.4 3 1.5 4.2 1M16.8 12.2C16.2 13.6 15.4 14.4 14.2 15", 0.9, "stone"))


@smiley("66", "L-)")
def _():
    return (at(0.9, 1.9, 0.9, head(), eyes(10), stroke("M6.2 13.6C7.6 12.9 10.4 12.9 11.8 13.6", 1.25)),
            blob(HAND, bar(5.6, 0.9, 2.3, 7), bar(5.6, 5.2, 8.4, 2.3), bar(4.6, 5, 4, 3.6, 1.6), width=0.9),
            stroke("M5.2 7.2H6.6", 0.6, "bronze"))


@smiley("67", ":-SS")
def _():
    return (head(), sad_brows(4.6), eyes(7.2),
            rect(5.6, 10.3, 6.8, 2.6, 0.8, fill="white", stroke="ink", stroke_width=0.9),
            stroke("M7.3 10.4V12.8M9 10.4V12.8M10.7 10.4V12.8", 0.6, "slate"),
            blob(HAND, bar(2.6, 11.6, 1.7, 4), bar(4.4, 11.2, 1.7, 4), bar(6.2, 11.6, 1.7, 4),
                 shape("M2.6 13.6H7.9V17H2.6Z"), width=0.8),
            blob(HAND, bar(10.1, 11.6, 1.7, 4), bar(11.9, 11.2, 1.7, 4), bar(13.7, 11.6, 1.7, 4),
                 shape("M10.1 13.6H15.4V17H10.1Z"), width=0.8))


@smiley("68", "<:-P")
def _():
    return (at(0.4, 2.6, 0.88, head(), merry(7.8), tongue(10.4, 11.4),
               stroke("M4.9 10.6C6.4 12.4 11.6 12.4 13.1 10.6", 1.25)),
            path("M4.2 5.4L10.6 0.9L12.2 5.8C10 4.4 6.8 4.2 4.2 5.4Z", fill="sea", stroke="ink", stroke_width=0.8,
                 stroke_linejoin="round"),
            stroke("M6.8 4.2L9.8 2M9.4 4.3L10.8 3", 0.9, "honey"),
            circle(10.7, 1.5, 1.2, fill="coral", stroke="brick", stroke_width=0.5),
            circle(15.2, 2.6, 0.9, fill="rose"), circle(2, 3.6, 0.9, fill="kelp"),
            rect(16, 5.4, 1.4, 1.4, 0.2, fill="sea"), rect(14, 0.8, 1, 1, 0, fill="amber"))


@smiley("69", ">:/")
def _():
    return (at(-0.9, -0.8, 0.9, head(), cross_brows(5.2), eyes(8), stroke("M6 13.2L12 11.4", 1.3)),
            fist(13.4, 14.2, (-58, 2.6), (-30, 3.4), (-4, 3.6), (20, 3.2), r=2.2),
            stroke("M15.8 8.4C16.8 9 17.3 9.8 17.3 10.8", 0.9, "deep"))


@smiley("70", ";))")
def _():
    return (head(), eye(LEFT, 6.8), stroke("M10.1 7.2q1.6 -2.4 3.2 0", 1.25), blush(3.9, 14.1, 9.6, 1.2),
            blob(HAND, bar(4.8, 10, 6.6, 1.7), bar(4.4, 11.7, 7, 1.7), bar(4.8, 13.4, 6.6, 1.7),
                 shape("M9.6 10H12.6L15.2 12V16.4L11 15.1H9.6Z"), width=0.8),
            stroke("M6 11.7H10M6 13.4H10", 0.6, "bronze"))


@smiley("71", ":-w")
def _():
    return (at(-0.8, -0.6, 0.92, head(), lids(7), stroke("M6 11.8H10.6", 1.25)),
            circle(13.3, 13.3, 4, fill="white", stroke="deep", stroke_width=1.1),
            stroke("M13.3 10.8V13.3L15 14.2", 1.1, "ink"))


@smiley("72", ":-<")
def _():
    return (at(-0.6, -0.4, 0.95, head(), sad_brows(5), shut(7.2),
               stroke("M6.6 12.8C7.2 11.2 9.6 11.2 10.2 12.8", 1.25)),
            blob("white", dot(13.2, 14.2, 1.8), dot(15.4, 15, 1.6), dot(11.6, 15.3, 1.4), dot(13.6, 15.8, 1.3),
                 edge="stone", width=0.6))


@smiley("73", ">:P")
def _():
    return (head(), cross_brows(4.8), stroke("M4.8 6.6L7.4 7.8L4.8 9M13.2 6.6L10.6 7.8L13.2 9", 1.15),
            tongue(9, 11.8), stroke("M4.9 11.2C6.4 12.2 11.6 12.2 13.1 11.2", 1.25),
            circle(4, 14.6, 0.8, fill="tide"), circle(14, 14.6, 0.8, fill="tide"),
            circle(5.4, 16.4, 0.7, fill="tide"), circle(12.6, 16.4, 0.7, fill="tide"))


@smiley("74", "(*)")
def _():
    return path("M9 1.2L11.3 6.3L16.9 6.9L12.7 10.6L13.9 16.1L9 13.3L4.1 16.1L5.3 10.6L1.1 6.9L6.7 6.3Z",
                fill="url(#gold)", stroke="bronze", stroke_width=EDGE, stroke_linejoin="round"),


@smiley("75", "#:-S")
def _():
    return (head(), sad_brows(5), shut(7.2), wavy(), drop(3.4, 1, 0.95), drop(15.6, 5.6, 0.9), drop(13.4, 0.9, 0.7))


@smiley("76", ":V)")
def _():
    return (head("white", "ink", 9, 9, 7.4),
            path("M1.9 9.6C1 4.4 4.4 1.2 9 1.2C13.6 1.2 17 4.4 16.1 9.6"
                 "C15.6 7.4 14.8 6 13.4 5.2L11.4 4.8L9 7.4L6.6 4.8L4.6 5.2C3.2 6 2.4 7.4 1.9 9.6Z", fill="ink"),
            ellipse(LEFT, 8.8, 1, 1.4, fill="ink"), ellipse(RIGHT, 8.8, 1, 1.4, fill="ink"),
            stroke("M5 11.8C6.4 13.6 11.6 13.6 13 11.8", 1.2, "brick"),
            path("M6 12.8L7.9 13.3L7 15.6ZM12 12.8L10.1 13.3L11 15.6Z", fill="white", stroke="brick",
                 stroke_width=0.6, stroke_linejoin="round"))


@smiley("77", "=((")
def _():
    return (path("M8.2 16.2C2.8 12.4 1 9.8 1 6.6C1 3.8 3 2 5.2 2C6.6 2 7.6 2.6 8.2 3.6L6.6 6.8L9.2 8.8L7.2 11.8Z",
                 fill="url(#heart)", stroke="brick", stroke_width=1, stroke_linejoin="round"),
            path("M10.2 16.2C15.4 12.4 17 9.8 17 6.6C17 3.8 15 2 12.8 2"
                 "C11.4 2 10.4 2.6 9.9 3.6L8.6 6.4L11.4 8.4L9.4 12Z",
                 fill="url(#heart)", stroke="brick", stroke_width=1, stroke_linejoin="round"))


@smiley("78", ":-@")
def _():
    return (at(-0.9, 2.4, 0.86, head(), eyes(7.4), ellipse(9, 12.2, 2.6, 2, fill="ink"),
               path("M7.2 13.2C8 12.4 10 12.4 10.8 13.2C10 14.2 8 14.2 7.2 13.2Z", fill="coral")),
            path("M10.6 0.9H15.8A1.5 1.5 0 0 1 17.3 2.4V5A1.5 1.5 0 0 1 15.8 6.5H14L12.2 8.6V6.5H10.6"
                 "A1.5 1.5 0 0 1 9.1 5V2.4A1.5 1.5 0 0 1 10.6 0.9Z",
                 fill="white", stroke="deep", stroke_width=0.9, stroke_linejoin="round"),
            stroke("M11 2.9H15.4M11 4.7H13.6", 0.8, "sea"))


@smiley("79", ":-j")
def _():
    return (at(-0.9, -0.6, 0.9, head(), lids(7.2, -0.7), stroke("M6.4 12.9C9.6 13.7 12.2 12.8 12.8 10", 1.3)),
            blob(HAND, bar(11, 11.6, 1.7, 4.4, turn="rotate(24 12 15)"),
                 bar(12.8, 11.2, 1.7, 4.6, turn="rotate(6 13.6 15)"),
                 bar(14.5, 11.6, 1.7, 4.4, turn="rotate(-14 15.4 15)"), dot(14, 15.2, 2.1), width=0.8),
            stroke("M9.8 16.6C9.4 15.8 9.4 15 9.7 14.2", 0.8, "deep"))


@smiley("80", "^:)^")
def _():
    back, shin, arm = "M4.6 13.4C5 10.4 7 9 9.4 9.6", "M3.4 15.4H8", "M9.8 10.4L12 14.6L16 15.4"
    return (stroke("M0.9 17.1H17.1", 1, "stone"), stroke(shin, 2.9, "deep"), stroke(shin, 1.3, "tide"),
            stroke(back, 5.2, "deep"), stroke(back, 3.5, "tide"), stroke(arm, 2.7, "deep"), stroke(arm, 1.2, "tide"),
            circle(13.2, 9.8, 3, fill="url(#f)", stroke="bronze", stroke_width=0.9),
            stroke("M14 11.2L15.2 10.4", 0.9),
            blob(HAND, dot(16.2, 15.5, 1), width=0.6),
            stroke("M10.6 5.2C11.2 3.4 12.4 2.2 14.2 1.8M8.4 4.6C8.8 2.8 9.8 1.6 11.2 1", 0.9, "stone"))


@smiley("81", "(c)")
def _():
    return (blob("url(#orange)", shape("M2.6 8.4L2.8 1.6L7.2 4.6Z"), shape("M15.4 8.4L15.2 1.6L10.8 4.6Z"),
                 edge="cocoa", width=0.6),
            ellipse(9, 10.2, 7.2, 6.3, fill="url(#orange)", stroke="cocoa", stroke_width=EDGE),
            stroke("M9 4.4V6.8M7 4.8L7.2 6.4M11 4.8L10.8 6.4", 0.8, "cocoa"),
            ellipse(5.8, 9.4, 1.1, 1.5, fill="ink"), ellipse(12.2, 9.4, 1.1, 1.5, fill="ink"),
            path("M8 11.3H10L9 12.5Z", fill="brick", stroke="brick", stroke_width=0.5, stroke_linejoin="round"),
            stroke("M6.8 13.3C7.6 14.2 8.6 14 9 12.8C9.4 14 10.4 14.2 11.2 13.3", 0.9),
            stroke("M0.8 10.8L4.4 11.6M0.9 13.6L4.5 13.2M17.2 10.8L13.6 11.6M17.1 13.6L13.5 13.2", 0.6, "cocoa"))


@smiley("82", "(b)")
def _():
    return group([mug()], "translate(1.9 2.4) scale(1.08 1.15)"),


@smiley("83", "brb")
def _():
    return (rect(8, 10, 2, 7.4, 0.6, fill="cocoa", stroke="ink", stroke_width=0.7),
            rect(1, 2.4, 16, 9.2, 1.2, fill="url(#gold)", stroke="bronze", stroke_width=1),
            stroke("M6 9.2H11A2 2 0 0 0 11 5.2H5.4", 1.5, "deep"), path("M6.6 2.8V7.6L3.2 5.2Z", fill="deep"))


@smiley("86", ":)")
def _():
    return head(), eyes(), smile()


@smiley("87", ":(")
def _():
    return head(), eyes(), frown()


@smiley("88", "(?)")
def _():
    return (circle(9, 9, 7.4, fill="url(#blue)", stroke="ink", stroke_width=EDGE),
            stroke("M6.4 6.8C6.4 3.4 11.8 3.4 11.8 6.8C11.8 8.8 9.1 8.8 9.1 10.8", 1.9, "white"),
            circle(9.1, 13.6, 1.15, fill="white"))


@smiley("89", "(K)")
def _():
    return (path("M0.9 8.6C3.4 6.2 5.4 4.6 7 4.6C8 4.6 8.6 5.2 9 5.6C9.4 5.2 10 4.6 11 4.6"
                 "C12.6 4.6 14.6 6.2 17.1 8.6C14.4 12.2 12 13.8 9 13.8C6 13.8 3.6 12.2 0.9 8.6Z",
                 fill="url(#heart)", stroke="brick", stroke_width=1, stroke_linejoin="round"),
            path("M3 8.6C5.4 8.2 7.6 8.8 9 8.6C10.4 8.8 12.6 8.2 15 8.6C12.6 9.8 10.4 10.2 9 9.9"
                 "C7.6 10.2 5.4 9.8 3 8.6Z", fill="ink"),
            stroke("M6 11.9C7.6 12.5 9 12.5 10.6 12", 0.8, "blush"))


@smiley("16", "ps2", 69, 16)
def _():
    """A game pad on its wire, and the box it belongs to."""
    pad = ("M7.4 3.4C9.4 2.6 11 3.6 12.4 3.6H19.6C21 3.6 22.6 2.6 24.6 3.4C27.6 4.6 30 11.6 28.6 13.8"
           "C27 15.8 23.6 13.8 21.8 11H10.2C8.4 13.8 5 15.8 3.4 13.8C2 11.6 4.4 4.6 7.4 3.4Z")
    return (stroke("M16 3.6C16 0.6 24 0.9 29 4C34 7 36 11 43 9.4", 2, "ink"),
            stroke("M16 3.6C16 0.6 24 0.9 29 4C34 7 36 11 43 9.4", 0.8, "stone"),
            path(pad, fill="url(#blue)", stroke="ink", stroke_width=1, stroke_linejoin="round"),
            stroke("M8.6 5.6V9M6.9 7.3H10.3", 1.5, "foam"),
            circle(23.4, 5.2, 1, fill="honey"), circle(25.3, 7.1, 1, fill="coral"),
            circle(21.5, 7.1, 1, fill="spring"), circle(23.4, 9, 1, fill="foam"),
            stroke("M14 6.2H15M17 6.2H18", 1, "shoal"),
            rect(41.9, 4.4, 24.2, 9.6, 1.6, fill="url(#blue)", stroke="ink", stroke_width=1),
            path("M44.6 2H63.4L65.2 4.8H42.8Z", fill="tide", stroke="ink", stroke_width=1, stroke_linejoin="round"),
            stroke("M45 7.4H57", 1.2, "ink"), stroke("M45 10.6H47M50 10.6H52", 1.6, "shoal"),
            circle(62, 9.4, 1.2, fill="honey"))


@smiley("47x", "=:)")
def _():
    return (stroke("M6.6 4.4C6.2 2.6 5.2 1.6 3.6 1.6M11.4 4.4C11.8 2.6 12.8 1.6 14.4 1.6", 1, "plum"),
            circle(3.4, 1.8, 1.1, fill="honey", stroke="plum", stroke_width=0.6),
            circle(14.6, 1.8, 1.1, fill="honey", stroke="plum", stroke_width=0.6),
            path("M9 3.8C12.8 3.8 15.4 6 15.4 9.4C15.4 13.2 12.4 17 9 17C5.6 17 2.6 13.2 2.6 9.4"
                 "C2.6 6 5.2 3.8 9 3.8Z", fill="url(#lilac)", stroke="plum", stroke_width=EDGE),
            ellipse(5.6, 9.2, 2.2, 2.8, fill="ink"), ellipse(12.4, 9.2, 2.2, 2.8, fill="ink"),
            circle(5, 8.2, 0.7, fill="white"), circle(11.8, 8.2, 0.7, fill="white"),
            stroke("M6.8 13.6C7.8 15 10.2 15 11.2 13.6", 1.1))


def main(only):
    if only == ["--codes"]:
        for key in sorted(SMILEYS):
            print(key, SMILEYS[key][0], sep="\t")
        return
    for key, (code, draw, width, height) in SMILEYS.items():
        if only and key not in only:
            continue
        body = list(draw())
        text = "".join(body)
        save(f"smileys/{key}.svg", width, height, body,
             [paint for name, paint in PAINTS.items() if f"url(#{name})" in text])


if __name__ == "__main__":
    main(sys.argv[1:])
