#!/usr/bin/env python3
"""Draws the program's icon, the tray icon, the toolbar's icons and the chat page's small icons."""

from draw import circle, ellipse, feather, group, line, linear, path, radial, rect, save

S = 1.5  # the stroke of every small icon


def program():
    body = [rect(8, 8, 240, 240, 54, fill="url(#sky)"),
            circle(196, 68, 44, fill="url(#glow)"), circle(196, 68, 20, fill="honey"),
            path("M8 186C38 174 66 174 96 184C126 194 152 194 182 184C208 176 228 176 248 182"
                 "V194A54 54 0 0 1 194 248H62A54 54 0 0 1 8 194Z", fill="url(#far)"),
            feather("translate(116 184) rotate(9) scale(1.56)", "white", "mist", "brass", 3.2, nib=False),
            line("M116 176L117 156", "brass", 5),
            path("M46 162C82 176 146 176 190 160C184 188 170 214 148 214H88C68 214 52 188 46 162Z",
                 fill="url(#hull)"),
            line("M49 164C84 177 146 177 187 162", "cream", 5),
            path("M8 194C30 188 54 190 80 198C108 207 136 207 164 198C194 189 222 188 248 194"
                 "A54 54 0 0 1 194 248H62A54 54 0 0 1 8 194Z", fill="url(#near)"),
            line("M34 216q14 -5 28 1M194 216q14 -6 28 -2M104 226q16 4 32 0", "shoal", 4, stroke_opacity=0.8),
            rect(9.5, 9.5, 237, 237, 52.5, fill="none", stroke="ink", stroke_width=3)]
    save("icons/quillharbor.svg", 256, 256, body, [
        linear("sky", [(0, "sea"), (1, "navy")], x1=0.2, y1=0, x2=0.8, y2=1),
        radial("glow", [(0, "honey", 0.6), (1, "honey", 0)]),
        linear("far", [(0, "tide"), (1, "sea")]), linear("near", [(0, "tide"), (1, "deep")]),
        linear("hull", [(0, "coral"), (1, "brick")])])


def program_small():
    """For 16 to 32 px: one feather, one hull, one wave, nothing thinner than a pixel."""
    body = [rect(0.5, 0.5, 31, 31, 7, fill="url(#sky)", stroke="ink", stroke_width=1),
            path("M14 22C8 19 7 9 18 3C17 9 16 15 14 22Z", fill="white"),
            path("M15 22C17 15 18 9 19 3C26 9 24 18 15 22Z", fill="shoal"),
            path("M5 20.5C11 23 20 23 27 20C26 24.5 23 27 20 27H12C8.5 27 6 24.5 5 20.5Z", fill="coral"),
            path("M1 26C5 23.5 8 23.5 12 25.5C16 27.5 20 27.5 24 25.5"
                 "C27 24 29 24 31 25V25A6.5 6.5 0 0 1 24.5 31H7.5A6.5 6.5 0 0 1 1 26Z",
                 fill="shoal")]
    save("icons/quillharbor-small.svg", 32, 32, body,
         [linear("sky", [(0, "sea"), (1, "navy")], x1=0.2, y1=0, x2=0.8, y2=1)])


def tray():
    """The white rim carries it on a dark panel, the blue disc on a light one."""
    body = [circle(11, 11, 10.5, fill="white"),
            circle(11, 11, 9.5, fill="url(#disc)"),
            path("M9.5 15.2C5.5 13 5 6.8 12.5 3C12 7 11.2 11 9.5 15.2Z", fill="white"),
            path("M10.3 15.2C11.7 11 12.5 7 13 3C17.3 7.3 16 13 10.3 15.2Z", fill="mist"),
            path("M4.2 14.2C8 16 14 16 17.8 14C17 17 15 18.5 13 18.5H9C6.8 18.5 5 17 4.2 14.2Z", fill="coral")]
    save("icons/tray.svg", 22, 22, body,
         [linear("disc", [(0, "sea"), (1, "navy")], x1=0.2, y1=0, x2=0.8, y2=1)])


def toolbar():
    def icon(name, *body, defs=()):
        save(f"icons/{name}.svg", 24, 24, body, defs)
    blue = [linear("g", [(0, "shoal"), (1, "sea")])]
    arrow = "M4 12L12 4.5V9H19.5A1 1 0 0 1 20.5 10V14A1 1 0 0 1 19.5 15H12V19.5Z"
    icon("back", path(arrow, fill="url(#g)", stroke="navy", stroke_width=S, stroke_linejoin="round"), defs=blue)
    icon("forward", group([path(arrow, fill="url(#g)", stroke="navy", stroke_width=S, stroke_linejoin="round")],
                          "translate(24 0) scale(-1 1)"), defs=blue)
    icon("stop", path("M8 3.5H16L20.5 8V16L16 20.5H8L3.5 16V8Z", fill="url(#g)", stroke="navy", stroke_width=S,
                      stroke_linejoin="round"), line("M9 9L15 15M15 9L9 15", "white", 2.2),
         defs=[linear("g", [(0, "coral"), (1, "brick")])])
    icon("refresh", line("M19 9.5A7.5 7.5 0 0 0 5 9.5M5 14.5A7.5 7.5 0 0 0 19 14.5", "navy", 3.6),
         line("M19 9.5A7.5 7.5 0 0 0 5 9.5M5 14.5A7.5 7.5 0 0 0 19 14.5", "tide", 1.6),
         path("M20.8 4.5V11H14.3Z", fill="tide", stroke="navy", stroke_width=1, stroke_linejoin="round"),
         path("M3.2 19.5V13H9.7Z", fill="tide", stroke="navy", stroke_width=1, stroke_linejoin="round"))
    icon("home", path("M5.5 11V20.5H18.5V11Z", fill="cream", stroke="navy", stroke_width=S, stroke_linejoin="round"),
         path("M2.8 12L12 3.5L21.2 12Z", fill="url(#g)", stroke="navy", stroke_width=S, stroke_linejoin="round"),
         path("M10 20.5V15A2 2 0 0 1 14 15V20.5Z", fill="brass", stroke="navy", stroke_width=1.2,
              stroke_linejoin="round"),
         defs=[linear("g", [(0, "coral"), (1, "brick")])])
    icon("search", line("M14.8 14.8L20 20", "navy", 4.4), line("M15.6 15.6L20 20", "brass", 2.2),
         circle(10, 10, 6.2, fill="url(#g)", stroke="navy", stroke_width=S),
         line("M6.8 9.5A3.6 3.6 0 0 1 9.5 6.7", "white", 1.4),
         defs=[radial("g", [(0, "white"), (1, "shoal")], cx=0.35, cy=0.35, r=0.75)])


def boxes():
    """Beside the text of a box: what kind it is, by shape and not by colour alone."""
    def icon(name, shape, mark, *tones):
        save(f"icons/box-{name}.svg", 40, 40,
             [path(shape, fill="url(#g)", stroke=tones[2], stroke_width=1.5, stroke_linejoin="round"), *mark],
             [linear("g", [(0, tones[0]), (1, tones[1])])])
    disc = "M20 3A17 17 0 0 1 20 37A17 17 0 0 1 20 3Z"
    icon("question", disc, [line("M14.5 15.5A5.6 5.6 0 1 1 22 20.6C20.6 21.4 20 22.4 20 24.4", "white", 3.2),
                            circle(20, 30, 2.1, fill="white")], "tide", "sea", "navy")
    icon("exclamation", "M20 4.5L37 34.5A1 1 0 0 1 36 36H4A1 1 0 0 1 3 34.5Z",
         [line("M20 15V24.5", "bronze", 3.6), circle(20, 30.4, 2.2, fill="bronze")], "honey", "amber", "bronze")
    icon("critical", "M13 3H27L37 13V27L27 37H13L3 27V13Z",
         [line("M14 14L26 26M26 14L14 26", "white", 3.6)], "coral", "brick", "navy")


def page():
    def icon(name, *body, defs=()):
        save(f"forms/{name}.svg", 20, 20, body, defs)
    edge = dict(stroke="navy", stroke_width=1.2, stroke_linejoin="round", stroke_linecap="round")

    icon("smiley", circle(10, 10, 8, fill="url(#g)", stroke="bronze", stroke_width=1.2),
         ellipse(7.2, 8.2, 1.1, 1.5, fill="ink"), ellipse(12.8, 8.2, 1.1, 1.5, fill="ink"),
         line("M5.6 11.6C7 15.4 13 15.4 14.4 11.6", "ink", 1.3),
         defs=[radial("g", [(0, "cream"), (0.5, "honey"), (1, "amber")], cx=0.35, cy=0.3, r=0.85)])
    icon("color", path("M10 2.2C14.8 2.2 18.2 5.2 18.2 9C18.2 12 16 13 13.6 12.6C12 12.4 11.4 13.6 12 14.9"
                       "C12.6 16.4 11.8 17.8 10 17.8C5.2 17.8 1.8 14.4 1.8 10C1.8 5.6 5.2 2.2 10 2.2Z",
                       fill="cream", **edge),
         circle(5.6, 10.6, 1.6, fill="brick"), circle(7.2, 6.4, 1.6, fill="sea"),
         circle(11.4, 5.4, 1.6, fill="kelp"), circle(14.8, 8.2, 1.6, fill="amber"))
    # The letters are drawn, so that no font decides how they look.
    icon("bold", path("M5.5 3.5H11A3.6 3.6 0 0 1 13 10A3.7 3.7 0 0 1 11.5 16.5H5.5Z", fill="deep", **edge),
         path("M8.6 6.2H10.3A1.3 1.3 0 0 1 10.3 8.8H8.6ZM8.6 11.2H10.8A1.3 1.3 0 0 1 10.8 13.9H8.6Z", fill="foam"))
    icon("underline", line("M6 3.5V9A4 4 0 0 0 14 9V3.5", "navy", 2.6),
         line("M4.5 17H15.5", "brass", 2))
    icon("font", line("M2.5 15.5L6.5 4.5L10.5 15.5M4 11.8H9", "sea", 1.8),
         line("M17 10V15.5", "brass", 1.8), circle(14.4, 12.8, 2.5, fill="none", stroke="brass", stroke_width=1.8))
    icon("ignore", circle(8.6, 6.6, 3.6, fill="url(#g)", **edge),
         path("M2.2 17.5C2.2 12.8 5 11.2 8.6 11.2C12.2 11.2 15 12.8 15 17.5Z", fill="tide", **edge),
         circle(14.6, 14.2, 4, fill="white", stroke="brick", stroke_width=1.6),
         line("M11.9 16.9L17.3 11.5", "brick", 1.6),
         defs=[linear("g", [(0, "cream"), (1, "sand")])])
    icon("action", path("M11.5 1.8L4 11.4H9L8 18.2L16 8H10.8Z", fill="url(#g)", **edge),
         defs=[linear("g", [(0, "cream"), (0.4, "honey"), (1, "brass")])])
    icon("buddies", circle(13.4, 6.2, 3, fill="sand", **edge),
         path("M8.8 16.2C8.8 12 10.8 10.4 13.4 10.4C16.2 10.4 18.2 12 18.2 16.2Z", fill="coral", **edge),
         circle(7, 7.4, 3.4, fill="cream", **edge),
         path("M1.6 17.8C1.6 13.4 3.8 11.8 7 11.8C10.2 11.8 12.4 13.4 12.4 17.8Z", fill="tide", **edge))
    icon("chatters", path("M3.5 2.5H12A1.8 1.8 0 0 1 13.8 4.3V8.5A1.8 1.8 0 0 1 12 10.3H7L3.8 13.2V10.3H3.5"
                          "A1.8 1.8 0 0 1 1.7 8.5V4.3A1.8 1.8 0 0 1 3.5 2.5Z",
                          fill="cream", **edge),
         path("M9.5 7.5H16.5A1.8 1.8 0 0 1 18.3 9.3V13.2A1.8 1.8 0 0 1 16.5 15H16.2V17.8L13.2 15H9.5"
              "A1.8 1.8 0 0 1 7.7 13.2V9.3A1.8 1.8 0 0 1 9.5 7.5Z", fill="tide", **edge),
         line("M10.6 10.1H15.4M10.6 12.4H13.6", "white", 1.2))


def locks():
    def lock(name, bow, left, body, edge, keyhole):
        save(f"forms/{name}.svg", 16, 16,
             [line(bow, edge, 1.5),
              rect(left, 6.9, 10.4, 7.5, 1.6, fill=body, stroke=edge, stroke_width=1.1),
              line(f"M{left + 5.2} 9.6V11.7", keyhole, 1.7)], ())

    lock("lock-closed", "M4.9 7V5.1C4.9 3.2 6.2 1.8 8 1.8C9.8 1.8 11.1 3.2 11.1 5.1V7",
         2.8, "kelp", "navy", "white")
    lock("lock-open", "M9.6 7V4.6C9.6 2.9 10.7 1.6 12.2 1.6C13.7 1.6 14.7 2.7 14.8 4.3",
         1.6, "sand", "slate", "slate")


if __name__ == "__main__":
    program()
    program_small()
    tray()
    toolbar()
    boxes()
    page()
    locks()
