#!/usr/bin/env python3
"""Checks every picture: the set is complete, each has its size, its colours and only plain elements."""

import json
import pathlib
import re
import sys
import xml.etree.ElementTree as ET

ROOT = pathlib.Path(__file__).resolve().parent.parent
SVG = "{http://www.w3.org/2000/svg}"
ELEMENTS = {"svg", "defs", "g", "path", "rect", "circle", "ellipse", "linearGradient", "radialGradient", "stop"}
GONE = {17, 41, 63, 84, 85}

SIZES = {f"smileys/{i:02}": (18, 18) for i in range(90) if i not in GONE}
SIZES |= {"smileys/47x": (18, 18), "smileys/16": (69, 16), "smileys/58": (42, 18), "smileys/64": (57, 15)}
SIZES |= {f"buttons/{look}{size}": wh
          for look in ("empty", "hover", "down", "disabled", "focus")
          for size, wh in (("Small", (73, 21)), ("Big", (78, 28)), ("Long", (138, 28)))}
SIZES |= {f"forms/{name}": (20, 20) for name in
          ("smiley", "color", "bold", "underline", "font", "ignore", "action", "buddies", "chatters")}
SIZES |= {f"icons/{name}": (24, 24) for name in ("back", "forward", "stop", "refresh", "home", "search")}
SIZES |= {"forms/splash": (480, 300), "forms/login-rest": (361, 170), "forms/strip-left": (1536, 170),
          "forms/strip-right": (1536, 170), "forms/send": (32, 32), "forms/popup": (320, 116),
          "forms/about": (360, 200), "forms/header": (1200, 56), "forms/frame-input": (600, 40),
          "forms/frame-list": (200, 400), "forms/frame-view": (600, 400), "icons/tray": (22, 22),
          "icons/box-question": (40, 40), "icons/box-exclamation": (40, 40), "icons/box-critical": (40, 40),
          "forms/lock-closed": (16, 16), "forms/lock-open": (16, 16), "icons/quillharbor": (256, 256), "icons/quillharbor-small": (32, 32)}


def faults(path, size, colors):
    root = ET.parse(path).getroot()
    if (float(root.get("width")), float(root.get("height"))) != size:
        yield f"is {root.get('width')}x{root.get('height')}, not {size[0]}x{size[1]}"
    if root.get("viewBox") != f"0 0 {size[0]} {size[1]}":
        yield f"viewBox {root.get('viewBox')}"
    ids = {node.get("id") for node in root.iter() if node.get("id")}
    if len(root) - (root.find(f"{SVG}defs") is not None) < 1:
        yield "draws nothing"
    for node in root.iter():
        if node.tag.removeprefix(SVG) not in ELEMENTS:
            yield f"element {node.tag}"
        for key in ("fill", "stroke", "stop-color"):
            value = node.get(key, "none")
            paint = re.fullmatch(r"url\(#(.+)\)", value)
            if paint and paint[1] not in ids or not paint and value != "none" and value not in colors:
                yield f"{key} {value}"


def main():
    colors = set(json.loads((ROOT / "palette.json").read_text()).values())
    present = {str(p.relative_to(ROOT).with_suffix("")): p for p in ROOT.rglob("*.svg")}
    bad = [f"{name}: missing" for name in SIZES.keys() - present.keys()]
    bad += [f"{name}: not expected" for name in present.keys() - SIZES.keys()]
    for name in sorted(SIZES.keys() & present.keys()):
        bad += [f"{name}: {fault}" for fault in faults(present[name], SIZES[name], colors)]
    print("\n".join(bad) if bad else f"{len(present)} pictures are in order")
    return bool(bad)


if __name__ == "__main__":
    sys.exit(main())
