#!/usr/bin/env python3
"""Draws the pictures of the forms: scenes, the moving strip, frames and banners."""

import math

from draw import (boat, circle, ellipse, feather, lighthouse, line, linear, path, radial,
                  rect, save, slope_of, tower_defs, wave_path)

# The sign-in picture and the strip share this water, so that the change between them is calm.
BAND_W, BAND_H, HORIZON = 1536, 170, 88
JOINT = {"left": 936, "right": 600}
WATER = [  # mean height, amplitude, waves per phase turn, phase shift, colours
    (96, 2.0, 2, 0.10, "wa"),
    (109, 3.0, 1, 0.55, "wb"),
    (127, 4.0, 2, 0.30, "wc"),
    (149, 4.5, 1, 0.85, "wd"),
]


def phase(x, half):
    """Turns of the water at x: whole at both ends and at the joint.

    On the strip's first pass the halves overlap, so one half begins or ends inside the other;
    the joint is that place, and the picture must fit there as it does at the ends.
    """
    joint = JOINT[half]
    slope = 2 / BAND_W
    if x <= joint:
        x0, x1, turn = 0, joint, 0
    else:
        x0, x1, turn = joint, BAND_W, 1
    w = x1 - x0
    t = (x - x0) / w
    return turn + slope * w * (t ** 3 - 2 * t ** 2 + t) + (3 * t ** 2 - 2 * t ** 3) + slope * w * (t ** 3 - t ** 2)


def surface(mean, amp, turns, shift, half):
    def height(x):
        a = 2 * math.pi * (turns * phase(x, half) + shift)
        return mean - amp * (math.sin(a) + 0.3 * math.sin(2 * a + 1))
    return height


def band_defs():
    def deep(ident, top, bottom, y1, y2):
        return linear(ident, [(0, top), (1, bottom)], 0, y1, 0, y2, gradientUnits="userSpaceOnUse")
    return [
        linear("sky", [(0, "shoal"), (0.3, "mist"), (0.7, "foam"), (1, "cream")], 0, 0, 0, HORIZON + 8,
               gradientUnits="userSpaceOnUse"),
        deep("sea", "shoal", "tide", HORIZON - 2, 112),
        deep("wa", "shoal", "tide", 92, 128),
        deep("wb", "tide", "sea", 94, 150),
        deep("wc", "tide", "deep", 96, 190),
        deep("wd", "sea", "deep", 138, 182),
        radial("soft", [(0, "white", 0.75), (0.55, "white", 0.28), (1, "white", 0)]),
        radial("gleam", [(0, "foam", 0.34), (0.5, "foam", 0.14), (1, "foam", 0)]),
    ]


def band_water(half, width):
    out = [rect(0, 0, width, BAND_H, fill="url(#sky)"),
           rect(0, HORIZON, width, BAND_H - HORIZON, fill="url(#sea)")]
    for mean, amp, turns, shift, paint in WATER:
        f = surface(mean, amp, turns, shift, half)
        out.append(path(wave_path(f, slope_of(f), 0, width, 48 if width == BAND_W else width / 8, BAND_H),
                        fill=f"url(#{paint})"))
    return out


def strip(half, clouds, gleams):
    """Every streak ends short of the ends and of the joint: nothing is cut there."""
    ends = (0, JOINT[half], BAND_W)
    body = band_water(half, BAND_W)
    for kind, items in (("soft", clouds), ("gleam", gleams)):
        for x, y, rx, ry in items:
            assert all(abs(x - e) >= rx for e in ends), (half, x)
            body.append(ellipse(x, y, rx, ry, fill=f"url(#{kind})"))
    save(f"forms/strip-{half}.svg", BAND_W, BAND_H, body, band_defs())


def strips():
    strip("left",
          [(330, 30, 300, 9), (590, 57, 330, 7), (1230, 40, 280, 9)],
          [(300, 116, 280, 3), (640, 138, 270, 4), (1225, 120, 285, 3.5), (1270, 157, 240, 4)])
    strip("right",
          [(300, 46, 280, 8), (930, 28, 310, 9), (1190, 60, 320, 7)],
          [(290, 124, 270, 3.5), (960, 114, 320, 3), (1150, 142, 300, 4), (330, 158, 250, 4)])


def gull(x, y, s):
    return line(f"M{x - 6 * s} {y - 2 * s}C{x - 3 * s} {y - 4 * s} {x - s} {y - 2 * s} {x} {y}"
                f"C{x + s} {y - 2 * s} {x + 3 * s} {y - 4 * s} {x + 6 * s} {y - 2 * s}", "slate", 1.1)


def ripple(x, y, w, opacity=0.5):
    return line(f"M{x} {y}q{w / 4} -2.2 {w / 2} 0t{w / 2} 0", "foam", 1.1, stroke_opacity=opacity)


def login_rest():
    body = band_water("left", 361)
    sky = [ellipse(70, 28, 62, 7, fill="url(#soft)"), ellipse(190, 18, 80, 6, fill="url(#soft)"),
           ellipse(120, 60, 90, 6, fill="url(#soft)")]
    far = [path("M0 88V83C18 76 34 79 50 82C66 77 84 80 104 85L118 88Z", fill="stone", fill_opacity=0.55),
           path("M200 88C224 83 240 77 262 79C284 73 312 75 336 70C348 69 356 70 361 69V88Z",
                fill="stone", fill_opacity=0.5)]
    beam = [path("M302 37L-10 6V38L302 42Z", fill="url(#beam)")]
    pier = [path("M262 118C270 105 282 101 296 99C312 96 338 98 361 96V128C336 131 312 128 296 128"
                 "C280 128 266 126 262 118Z",
                 fill="url(#rock)"),
            line("M274 110C284 105 294 104 304 103M322 112C332 109 344 109 354 108M290 120C300 118 310 119 318 120",
                 "shoal", 1.1, stroke_opacity=0.45)]
    front = []
    for mean, amp, turns, shift, paint in WATER[2:]:
        f = surface(mean, amp, turns, shift, "left")
        front.append(path(wave_path(f, slope_of(f), 0, 361, 361 / 8, BAND_H), fill=f"url(#{paint})"))
    ripples = [ripple(24, 116, 30), ripple(196, 112, 26), ripple(64, 140, 34), ripple(214, 142, 40),
               ripple(160, 158, 34, 0.4), ripple(300, 154, 36, 0.4), ripple(10, 160, 26, 0.4)]
    ship = [ellipse(128, 131, 46, 3.4, fill="ink", fill_opacity=0.22),
            boat("translate(126 129) scale(1.24)", shade="shoal")]
    body = body[:2] + sky + far + beam + body[2:4] + [ripples[0], ripples[1]] + pier + \
        [lighthouse("translate(308 104) scale(0.86)")] + front[:1] + [ripples[2], ripples[3]] + ship + \
        front[1:] + ripples[4:] + [gull(60, 44, 1), gull(80, 36, 0.7), gull(222, 46, 0.8)]
    defs = band_defs() + tower_defs() + [
        linear("beam", [(0, "honey", 0), (0.35, "honey", 0.10), (1, "honey", 0.6)], 0, 0, 1, 0),
        linear("rock", [(0, "slate"), (1, "navy")])]
    save("forms/login-rest.svg", 361, 170, body, defs)


def wavy(mean, amp, length, shift):
    def height(x):
        a = 2 * math.pi * (x / length + shift)
        return mean - amp * (math.sin(a) + 0.3 * math.sin(2 * a + 1))
    return height


def sea(width, bottom, rows):
    out = []
    for mean, amp, length, shift, paint in rows:
        f = wavy(mean, amp, length, shift)
        pieces = math.ceil(width / (length / 8))
        out.append(path(wave_path(f, slope_of(f), 0, width, width / pieces, bottom), fill=paint))
    return out


def splash():
    """Night: the labels on it are light, and nothing shines in the left three fifths, where they stand."""
    stars = [(58, 12), (96, 18), (182, 13), (232, 21), (296, 40), (330, 18), (446, 26), (462, 52), (12, 196),
             (312, 78), (366, 44), (344, 150)]
    body = [rect(0, 0, 480, 300, fill="url(#night)"),
            *[circle(x, y, 0.9 if i % 3 else 1.3, fill="foam", fill_opacity=0.55) for i, (x, y) in enumerate(stars)],
            path("M414 104L490 74V150L414 114Z", fill="url(#beam)"),
            circle(404, 109, 48, fill="url(#halo)"),
            path("M250 232C290 222 312 214 340 216C378 206 430 208 480 198V240H250Z", fill="navy"),
            *sea(480, 300, [(232, 2.5, 300, 0.1, "url(#s1)")]),
            line("M396 236H418M388 243H426M398 250H414", "honey", 1.3, stroke_opacity=0.5),
            path("M344 250C356 234 376 228 396 226C424 221 452 224 480 220V264H352C344 262 340 256 344 250Z",
                 fill="url(#rock)"),
            line("M362 244C374 237 388 236 398 235M424 236C440 232 456 233 470 231", "tide", 1.2, stroke_opacity=0.6),
            lighthouse("translate(404 231) scale(1.62)"),
            *sea(480, 300, [(250, 3.5, 250, 0.6, "url(#s2)")]),
            ellipse(306, 263, 40, 3.2, fill="ink", fill_opacity=0.4),
            boat("translate(304 261) scale(1.3)", hull="ink", sail="foam", shade="shoal"),
            *sea(480, 300, [(270, 4, 320, 0.2, "url(#s3)"), (285, 4, 230, 0.75, "url(#s4)")]),
            line("M22 262q9 -2.4 18 0t18 0M110 276q8 -2.4 16 0t16 0M196 262q8 -2.4 16 0t16 0"
                 "M380 280q9 -2.4 18 0t18 0",
                 "shoal", 1.2, stroke_opacity=0.45)]
    defs = tower_defs() + [
        linear("night", [(0, "ink"), (0.5, "navy"), (0.8, "deep")]),
        linear("beam", [(0, "honey", 0.42), (0.6, "honey", 0.16), (1, "honey", 0)], 0, 0, 1, 0),
        radial("halo", [(0, "honey", 0.55), (0.4, "honey", 0.18), (1, "honey", 0)]),
        linear("rock", [(0, "slate"), (1, "ink")]),
        linear("s1", [(0, "sea"), (1, "deep")]), linear("s2", [(0, "sea"), (1, "navy")]),
        linear("s3", [(0, "deep"), (1, "navy")]), linear("s4", [(0, "deep"), (1, "ink")])]
    save("forms/splash.svg", 480, 300, body, defs)


def about():
    body = [rect(0, 0, 360, 200, fill="url(#dawn)"),
            circle(76, 118, 62, fill="url(#sun)"), circle(76, 118, 19, fill="cream"),
            ellipse(170, 40, 110, 7, fill="url(#soft)"), ellipse(250, 62, 90, 6, fill="url(#soft)"),
            path("M0 132V124C20 116 44 119 70 126L96 132Z", fill="stone", fill_opacity=0.6),
            path("M200 132C232 124 256 116 282 118C312 110 340 112 360 106V132Z", fill="stone", fill_opacity=0.6),
            *sea(360, 200, [(131, 1.8, 260, 0.1, "url(#s1)")]),
            line("M60 137H92M54 143H98M64 149H88", "cream", 1.4, stroke_opacity=0.75),
            path("M256 150C264 138 280 133 298 131C320 128 342 130 360 127V164H262C255 160 253 155 256 150Z",
                 fill="url(#rock)"),
            line("M270 145C280 140 290 139 300 138M324 143C334 140 346 140 354 139", "shoal", 1.1,
                 stroke_opacity=0.5),
            lighthouse("translate(310 136) scale(1.1)"),
            *sea(360, 200, [(152, 3, 220, 0.55, "url(#s2)")]),
            ellipse(178, 165, 58, 3.8, fill="ink", fill_opacity=0.22),
            boat("translate(176 163) scale(1.62)", shade="shoal"),
            *sea(360, 200, [(173, 3.5, 280, 0.25, "url(#s3)"), (188, 3.5, 210, 0.8, "url(#s4)")]),
            line("M20 164q8 -2.3 16 0t16 0M240 178q8 -2.3 16 0t16 0M92 184q8 -2.3 16 0t16 0", "foam", 1.2,
                 stroke_opacity=0.5),
            gull(118, 56, 1), gull(138, 46, 0.7), gull(232, 84, 0.8)]
    defs = tower_defs() + [
        linear("dawn", [(0, "shoal"), (0.3, "mist"), (0.66, "cream")]),
        radial("sun", [(0, "honey", 0.8), (0.45, "sand", 0.5), (1, "sand", 0)]),
        radial("soft", [(0, "white", 0.8), (0.55, "white", 0.3), (1, "white", 0)]),
        linear("rock", [(0, "slate"), (1, "navy")]),
        linear("s1", [(0, "shoal"), (1, "tide")]), linear("s2", [(0, "tide"), (1, "sea")]),
        linear("s3", [(0, "tide"), (1, "deep")]), linear("s4", [(0, "sea"), (1, "deep")])]
    save("forms/about.svg", 360, 200, body, defs)


def popup():
    """A line of dark text stands in its middle: waves keep to the foot, the feather to the corner. It covers
    all of its window: where the desktop mixes no windows, a round corner would be black."""
    w, h = 320, 116
    body = [rect(0.5, 0.5, w - 1, h - 1, 0, fill="url(#paper)", stroke="tide", stroke_width=1),
            feather("translate(268 100) rotate(24) scale(0.8)", "mist", "shoal", "tide", 2)]
    f1, f2 = wavy(96, 2.5, 200, 0.1), wavy(104, 2.5, 150, 0.6)
    for f, paint in ((f1, "url(#w1)"), (f2, "url(#w2)")):
        d = wave_path(f, slope_of(f), 1, w - 1, (w - 2) / 12, h - 6)
        d = d[:-1] + f"V{h - 1}H1V{h - 6}Z"
        body.append(path(d, fill=paint))
    body.append(rect(1, 5, 3, 86, 1.5, fill="brass"))
    save("forms/popup.svg", w, h, body, [
        linear("paper", [(0, "white"), (1, "haze")]),
        linear("w1", [(0, "mist"), (1, "shoal")]), linear("w2", [(0, "shoal"), (1, "tide")])])


def header():
    w, h = 1200, 56
    body = [rect(0, 0, w, h, fill="url(#air)"),
            *[ellipse(x, y, rx, ry, fill="url(#soft)") for x, y, rx, ry in
              ((150, 14, 140, 5), (520, 22, 200, 5), (900, 12, 180, 5))],
            *sea(w, h, [(42, 2, 400, 0.1, "url(#a)"), (47, 2, 300, 0.5, "url(#b)"), (52, 1.6, 240, 0.8, "url(#c)")])]
    save("forms/header.svg", w, h, body, [
        linear("air", [(0, "foam"), (1, "haze")]),
        linear("a", [(0, "mist", 0.5), (1, "mist", 0.7)]), linear("b", [(0, "mist", 0.7), (1, "mist")]),
        linear("c", [(0, "mist"), (1, "shoal", 0.7)]),
        radial("soft", [(0, "white", 0.9), (1, "white", 0)])])


def frames():
    def frame(name, w, h, top="white", bottom="foam"):
        save(f"forms/frame-{name}.svg", w, h,
             [rect(0.5, 0.5, w - 1, h - 1, 6, fill="url(#f)", stroke="shoal", stroke_width=1),
              line(f"M6.5 1.5H{w - 6.5}", "mist", 1)],
             [linear("f", [(0, top), (1, bottom)])])
    frame("input", 600, 40)
    frame("list", 200, 400)
    frame("view", 600, 400)


def send():
    """A quill folded like a paper plane, flying up and to the right."""
    body = [circle(16, 16, 15, fill="url(#disc)", stroke="navy", stroke_width=1),
            path("M5.5 15.5L26 6.5L14.5 18.5Z", fill="white"),
            path("M26 6.5L14.5 18.5L20.5 25.5Z", fill="mist"),
            path("M14.5 18.5L13 24.5L16.6 20.9Z", fill="brass"),
            line("M26 6.5L14.5 18.5", "navy", 1),
            line("M9.8 13.6L12.2 15.2M13.6 11.9L15.8 13.4M17.4 10.3L19 11.4", "tide", 0.9)]
    save("forms/send.svg", 32, 32, body,
         [linear("disc", [(0, "tide"), (1, "deep")], x1=0.15, y1=0, x2=0.85, y2=1)])


def main():
    strips()
    login_rest()
    splash()
    about()
    popup()
    header()
    frames()
    send()


if __name__ == "__main__":
    main()
