"""What every drawing script shares: palette, number format, waves, the feather and the lighthouse."""

import json
import pathlib

ROOT = pathlib.Path(__file__).resolve().parent.parent
P = json.loads((ROOT / "palette.json").read_text())


def n(value):
    """Shortest form with two decimals: the files stay small and equal from run to run."""
    text = f"{value:.2f}".rstrip("0").rstrip(".")
    return "0" if text in ("-0", "") else text


def attrs(**kw):
    out = []
    for key, value in kw.items():
        if value is None:
            continue
        if isinstance(value, (int, float)):
            value = n(value)
        elif key in ("fill", "stroke", "stop_color") and value in P:
            value = P[value]
        out.append(f'{key.replace("_", "-")}="{value}"')
    return " ".join(out)


def el(tag, **kw):
    return f"<{tag} {attrs(**kw)}/>"


def path(d, **kw):
    return el("path", d=d, **kw)


def line(d, color="navy", width=1.5, **kw):
    """A drawn stroke: always round at its ends and corners."""
    return path(d, fill="none", stroke=color, stroke_width=width,
                stroke_linecap="round", stroke_linejoin="round", **kw)


def rect(x, y, w, h, r=0, **kw):
    return el("rect", x=x, y=y, width=w, height=h, rx=r or None, ry=r or None, **kw)


def circle(x, y, r, **kw):
    return el("circle", cx=x, cy=y, r=r, **kw)


def ellipse(x, y, rx, ry, **kw):
    return el("ellipse", cx=x, cy=y, rx=rx, ry=ry, **kw)


def group(inner, transform=None, **kw):
    return f"<g {attrs(transform=transform, **kw)}>" + "".join(inner) + "</g>"


def stops(ramp):
    """ramp: list of (offset, colour name[, opacity])."""
    out = []
    for offset, color, *opacity in ramp:
        out.append(el("stop", offset=offset, stop_color=color,
                      stop_opacity=opacity[0] if opacity else None))
    return "".join(out)


def linear(ident, ramp, x1=0, y1=0, x2=0, y2=1, **kw):
    return (f'<linearGradient {attrs(id=ident, x1=x1, y1=y1, x2=x2, y2=y2, **kw)}>'
            f"{stops(ramp)}</linearGradient>")


def radial(ident, ramp, cx=0.5, cy=0.5, r=0.5, **kw):
    return (f'<radialGradient {attrs(id=ident, cx=cx, cy=cy, r=r, **kw)}>'
            f"{stops(ramp)}</radialGradient>")


def save(name, width, height, body, defs=(), view=None):
    view = view or (width, height)
    text = (f'<svg xmlns="http://www.w3.org/2000/svg" width="{n(width)}" height="{n(height)}" '
            f'viewBox="0 0 {n(view[0])} {n(view[1])}">')
    if defs:
        text += "\n<defs>" + "\n".join(defs) + "</defs>"
    text += "\n" + "\n".join(body) + "\n</svg>\n"
    target = ROOT / name
    target.parent.mkdir(parents=True, exist_ok=True)
    target.write_text(text)


def wave_path(height, slope, x0, x1, step, bottom):
    """Area below a curve, as cubic pieces that carry its true slope."""
    d = f"M{n(x0)} {n(bottom)}V{n(height(x0))}"
    x = x0
    while x < x1 - 1e-6:
        nx = min(x + step, x1)
        h = (nx - x) / 3
        d += (f"C{n(x + h)} {n(height(x) + h * slope(x))} {n(nx - h)} "
              f"{n(height(nx) - h * slope(nx))} {n(nx)} {n(height(nx))}")
        x = nx
    return d + f"V{n(bottom)}Z"


def slope_of(f):
    return lambda x: (f(x + 0.01) - f(x - 0.01)) / 0.02


def feather(transform, vane="white", shade="mist", shaft="navy", width=2.4, barbs=True, nib=True):
    """A quill of 100 units, nib at 0,0, tip near 10,-100; lit from the left."""
    left = "M0 -20C-11 -25 -20 -39 -20 -55L-14 -54.5 -19.5 -62C-18 -80 -7 -93 10 -101C5 -84 2 -56 0 -20Z"
    right = "M0 -20C2 -56 5 -84 10 -101C18 -90 21 -78 20 -66L13.5 -66 19 -59C17 -42 10 -28 0 -20Z"
    edge = dict(stroke=shade if vane == "white" else None, stroke_width=1.2 if vane == "white" else None)
    parts = [path(left, fill=vane, **edge), path(right, fill=shade)]
    if barbs:
        parts.append(line("M1 -37L-11 -45M2.2 -52L-9 -60M4 -68L-7 -76M2 -44L11 -52M4 -62L11 -70M6 -78L12 -84",
                          shaft, width * 0.45, stroke_opacity=0.35))
    if nib:
        parts.append(path("M-2.8 -14L0 0L2.8 -14Z", fill=shaft))
    parts.append(line("M0 -6C1 -40 4 -74 8 -92", shaft, width))
    return group(parts, transform)


def lighthouse(transform, lamp="amber", dark="navy"):
    """A tower 100 units high, foot at 0,0; its paint needs the gradients of tower_defs()."""
    def edge(y):
        return 8 + 6 * (100 + y) / 100 - 0.6
    bands = []
    for top, bottom in ((-52, -38), (-24, -10)):
        a, b = edge(top), edge(bottom)
        bands.append(path(f"M{n(-a)} {n(top)}H{n(a)}L{n(b)} {n(bottom)}H{n(-b)}Z", fill="url(#band)"))
    a, b = edge(-66), edge(0)
    return group([
        path(f"M{n(-a)} -66H{n(a)}L{n(b)} 0H{n(-b)}Z", fill="url(#tower)"),
        *bands,
        rect(-3, -61, 4.5, 6, 2.2, fill=dark),
        rect(-2.6, -35, 4.5, 7, 2.2, fill=dark),
        path("M-4.5 0V-5.5A4.5 4.5 0 0 1 4.5 -5.5V0Z", fill=dark),
        rect(-13, -69, 26, 3.6, 1.6, fill=dark),
        line("M-11.5 -69V-74M11.5 -69V-74M-11.5 -74H11.5", dark, 1),
        rect(-7, -82, 14, 13, 1, fill=lamp),
        rect(-7, -82, 5, 13, 1, fill="cream", fill_opacity=0.8),
        line("M-7 -82V-69M0 -82V-69M7 -82V-69", dark, 1.1),
        path("M-9.5 -82C-8 -91 -3 -94 0 -94C3 -94 8 -91 9.5 -82Z", fill=dark),
        line("M0 -94V-100", dark, 1.4),
        circle(0, -100, 1.6, fill="brass"),
    ], transform)


def tower_defs():
    return [linear("tower", [(0, "white"), (0.45, "foam"), (1, "shoal")], x2=1, y2=0),
            linear("band", [(0, "blush"), (0.35, "coral"), (1, "brick")], x2=1, y2=0)]


def boat(transform, hull="navy", sail="white", shade="mist", shaft="brass"):
    """The little boat whose sail is the quill; water line at 0."""
    return group([
        feather("translate(1 -2) rotate(4) scale(0.62)", sail, shade, shaft, 3, nib=False),
        line("M1 -8V-16", shaft, 2),
        path("M-25 -11C-14 -7 12 -7 27 -12C24 -4 19 1 12 2H-12C-19 1 -23 -5 -25 -11Z", fill=hull),
        line("M-24 -10.5C-13 -6.5 12 -6.5 26 -11.3", "coral", 1.8),
    ], transform)
