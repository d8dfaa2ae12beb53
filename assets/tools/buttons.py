#!/usr/bin/env python3
"""Draws the fifteen looks of the push button. A dark label stands on all of them."""

from draw import linear, line, rect, save

SIZES = {"Small": (73, 21), "Big": (78, 28), "Long": (138, 28)}
LOOKS = {  # fill from top to bottom, edge
    "empty": (("white", "mist"), "tide"),
    "hover": (("white", "cream"), "brass"),
    "down": (("shoal", "mist"), "deep"),
    "disabled": (("shell", "shell"), "pebble"),
    "focus": (("white", "mist"), "sea"),
}


def button(look, size):
    w, h = SIZES[size]
    (top, bottom), edge = LOOKS[look]
    r = 5
    body = [rect(0.5, 0.5, w - 1, h - 1, r, fill="url(#f)", stroke=edge, stroke_width=1)]
    if look == "hover":
        body.append(rect(1.5, 1.5, w - 3, h - 3, r - 1, fill="none", stroke="honey", stroke_width=1))
    elif look == "down":
        body.append(line(f"M1.5 {h - 6}V5.5A4 4 0 0 1 5.5 1.5H{w - 6}", "tide", 1))
    elif look == "focus":
        body.append(rect(2.5, 2.5, w - 5, h - 5, r - 2, fill="none", stroke="sea", stroke_width=1))
    if look in ("empty", "focus"):
        body.append(line(f"M5.5 {h - 1.5}H{w - 5.5}", "shoal", 1))
    save(f"buttons/{look}{size}.svg", w, h, body, [linear("f", [(0, top), (1, bottom)])])


if __name__ == "__main__":
    for look in LOOKS:
        for size in SIZES:
            button(look, size)
