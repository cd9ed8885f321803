#!/usr/bin/env python3
"""Writes the shipped calendar templates (data/templates/*.svg) and their colour
sheets (data/css/default.css, blue.css, green.css).

The templates are regular grids, so they are drawn here rather than by hand:
every field carries a "vako:cal" key of the instructions factory, and every
class value that the factory sets (day cells, week rows, cover variants) has a
rule in each sheet. Text sizes are chosen so that the longest month and weekday
names of all shipped calendar languages fit in DejaVu Sans (measured widths in
em are noted where a size is set).

    python3 tools/templates/generate.py          # rewrite the files
    python3 tools/templates/generate.py --check  # exit 1 when a file differs
"""

import os
import sys

ROOT = os.path.normpath(os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", ".."))
TEMPLATES = os.path.join(ROOT, "data", "templates")
CSS = os.path.join(ROOT, "data", "css")

FONT = "font-family: 'DejaVu Sans', sans-serif;"
A4_W, A4_H = 595.28, 841.89
# Days without a picture keep this transparent 1x1 PNG, so that no renderer meets an empty link.
BLANK_IMAGE = ("data:image/png;base64,iVBORw0KGgoAAAANSUhEUgAAAAEAAAABCAYAAAAfFcSJAAAAC0lEQVR4"
               "nGNgAAIAAAUAAXpeqz8AAAAASUVORK5CYII=")

# Colour schemes: title in the sheet list, file, comment, colours.
SCHEMES = [
    ("Standard", "default.css", "Standard look: dark grey text, red Sundays and public holidays.", {
        "text": "#333333", "muted": "#8c8c8c", "accent": "#c0392b", "grid": "#d2d2d2", "band": "#f3f3f3",
        "zebra": "#f7f7f7", "label": "#5a5a5a", "week_a": "#c0392b", "week_b": "#e6b0aa",
        "sky": "#dce8f2", "sun": "#f2c14e", "far": "#a9c1b0", "near": "#6e9a74", "tree": "#3f6645", "ground": "#8fb394",
    }),
    ("Blue", "blue.css", "Blue: navy text, blue Sundays and public holidays.", {
        "text": "#1b2a41", "muted": "#7b879a", "accent": "#1f4e9c", "grid": "#c8d6ea", "band": "#e9f0f9",
        "zebra": "#f3f7fc", "label": "#3d4f6b", "week_a": "#1f4e9c", "week_b": "#a9c1e6",
        "sky": "#d3e2f4", "sun": "#ffffff", "far": "#9cb8dc", "near": "#5b86c0", "tree": "#274672", "ground": "#7fa2d0",
    }),
    ("Green", "green.css", "Green: forest text, green Sundays and public holidays.", {
        "text": "#1e3320", "muted": "#7e8d7f", "accent": "#2e7d32", "grid": "#cfe3cf", "band": "#ebf5ea",
        "zebra": "#f4faf3", "label": "#3d5a40", "week_a": "#2e7d32", "week_b": "#a8d5aa",
        "sky": "#e4f1de", "sun": "#f6d55c", "far": "#a8cc9c", "near": "#609c5b", "tree": "#2f5b2c", "ground": "#86b77f",
    }),
]

BLOCK_PREFIXES = ["cm"] + ["m%02d" % i for i in range(12)]
LIST_PREFIXES = ["lcm"]
TYPES = ["weekday", "saturday", "sunday"]


def fmt(v):
    s = ("%.2f" % v).rstrip("0").rstrip(".")
    return "0" if s == "-0" else s


def esc(text):
    return text.replace("&", "&amp;").replace("<", "&lt;").replace(">", "&gt;").replace('"', "&quot;")


class Svg:
    def __init__(self, width_mm, height_mm, w, h, title):
        self.lines = []
        self.head = [
            '<?xml version="1.0" encoding="UTF-8"?>',
        ] + [
            '<?xml-stylesheet href="../css/%s" title="%s"%s?>' % (name, title, "" if i == 0 else ' alternate="yes"')
            for i, (title, name, _, _) in enumerate(SCHEMES)
        ] + [
            '<svg xmlns="http://www.w3.org/2000/svg" xmlns:xlink="http://www.w3.org/1999/xlink"'
            ' xmlns:vako="http://example.invalid/vako" version="1.2" baseProfile="tiny"'
            ' width="%smm" height="%smm" viewBox="0 0 %s %s" vako:layertype="calendar">' % (width_mm, height_mm, fmt(w), fmt(h)),
            " <title>%s</title>" % esc(title),
        ]
        self.depth = 1

    def add(self, text):
        self.lines.append(" " * self.depth + text)

    def open(self, text):
        self.add(text)
        self.depth += 1

    def close(self, tag="g"):
        self.depth -= 1
        self.add("</%s>" % tag)

    def rect(self, cls, x, y, w, h, extra=""):
        self.add('<rect class="%s" x="%s" y="%s" width="%s" height="%s"%s/>' % (cls, fmt(x), fmt(y), fmt(w), fmt(h), extra))

    def text(self, cls, x, y, content, key=None, fit=None):
        # Alignment comes with the class: a text-anchor attribute would make Qt ignore the class's font.
        attrs = ' class="%s" x="%s" y="%s"' % (cls, fmt(x), fmt(y))
        if key:
            attrs += ' vako:cal="%s"' % key
        if fit:
            # The compiler wraps and shrinks a text that does not fit: (block, width, top baseline, size).
            block, width, top, size = fit
            attrs += (' vako:fitblock="%s" vako:fitwidth="%s" vako:fittop="%s" vako:fitsize="%s" vako:fitfont="DejaVu Sans"'
                      % (block, fmt(width), fmt(top), fmt(size)))
        self.add("<text%s>%s</text>" % (attrs, esc(content)))

    def image(self, key, x, y, w, h):
        self.add('<image vako:cal="%s" x="%s" y="%s" width="%s" height="%s" vako:imagewidth="1" vako:imageheight="1"'
                 ' xlink:href="%s"/>' % (key, fmt(x), fmt(y), fmt(w), fmt(h), BLANK_IMAGE))

    def result(self):
        return "\n".join(self.head + self.lines + ["</svg>", ""])


def landscape(svg, x, y, w, h):
    """The decorative picture: sky, sun, two ranges of hills and a row of trees, coloured by the sheet."""
    def px(fx):
        return fmt(x + fx * w)

    def py(fy):
        return fmt(y + fy * h)

    svg.open('<g class="picture">')
    svg.rect("pic_sky", x, y, w, h)
    svg.add('<circle class="pic_sun" cx="%s" cy="%s" r="%s"/>' % (px(0.76), py(0.27), fmt(0.09 * h)))
    svg.add('<path class="pic_far" d="M%s %s L%s %s Q%s %s %s %s T%s %s T%s %s L%s %s Z"/>' % (
        px(0), py(1), px(0), py(0.55), px(0.12), py(0.32), px(0.27), py(0.5), px(0.56), py(0.45), px(1), py(0.5), px(1), py(1)))
    svg.add('<path class="pic_near" d="M%s %s L%s %s Q%s %s %s %s T%s %s T%s %s L%s %s Z"/>' % (
        px(0), py(1), px(0), py(0.78), px(0.2), py(0.56), px(0.42), py(0.72), px(0.74), py(0.7), px(1), py(0.62), px(1), py(1)))
    svg.rect("pic_ground", x, y + 0.9 * h, w, 0.1 * h)
    for i, fx in enumerate([0.08, 0.13, 0.19, 0.83, 0.9]):
        th = (0.24 if i % 2 == 0 else 0.18) * h
        base = y + (0.86 if i < 3 else 0.8) * h
        cx = x + fx * w
        svg.add('<path class="pic_tree" d="M%s %s L%s %s L%s %s Z"/>' % (
            fmt(cx), fmt(base - th), fmt(cx + 0.06 * th * 3), fmt(base), fmt(cx - 0.06 * th * 3), fmt(base)))
    svg.rect("pic_frame", x, y, w, h)
    svg.close()


def block_grid(svg, prefix, x, y, cell_w, cell_h, week_w, cls):
    """Week column and 6x7 day cells of a block calendar; `cls` names the text classes."""
    for row in range(6):
        svg.open('<g vako:cal="%s_week%d_style" class="%s_cal_week%d">' % (prefix, row, prefix, row))
        svg.text(cls["week"], x + week_w / 2, y + row * cell_h + cls["week_dy"], str(10 + row),
                 "%s_week%d" % (prefix, row))
        svg.close()
    for row in range(6):
        for col in range(7):
            cell = "%d%d" % (row, col)
            cx = x + week_w + col * cell_w
            cy = y + row * cell_h
            kind = TYPES[2] if col == 6 else TYPES[1] if col == 5 else TYPES[0]
            svg.open('<g vako:cal="%s_day%s_style" class="%s_cal_%s%d">' % (prefix, cell, prefix, kind, row))
            cls["cell"](svg, prefix, cell, cx, cy)
            svg.close()


def wall_month():
    w, h = A4_W, A4_H
    svg = Svg(210, 297, w, h, "Wall calendar month page (A4 portrait): picture, month grid with week numbers, "
              "holidays, moon phases and school vacations")
    m = 28.0
    svg.rect("page", 0, 0, w, h)
    landscape(svg, m, m, w - 2 * m, 372)
    # Longest month name 10.07 em bold: 36 pt gives 362 pt, the year beside it 92 pt.
    svg.text("title_month", m, 446, "September", "cm_month_full")
    svg.text("title_year", w - m, 446, "2027", "cm_year")
    week_w = 28.0
    cell_w = (w - 2 * m - week_w) / 7
    head_y = 462.0
    svg.rect("head_band", m, head_y, w - 2 * m, 16)
    # Weekday names: the longest 8.3 em bold at 7.5 pt is 62 pt of the 73 pt column.
    svg.text("head_week", m + week_w / 2, head_y + 11, "KW", "cm_weekcaption_short")
    for col in range(7):
        svg.text("head_day_sunday" if col == 6 else "head_day", m + week_w + (col + 0.5) * cell_w, head_y + 11,
                 "Wednesday", "cm_dayname%d" % col)
    grid_y = head_y + 20
    cell_h = (h - m - grid_y) / 6

    def cell(svg, prefix, cid, cx, cy):
        svg.rect("cell", cx, cy, cell_w, cell_h)
        svg.text("daynum", cx + 5, cy + 19, "28", "%s_day%s" % (prefix, cid))
        svg.image("%s_imageholiday%s" % (prefix, cid), cx + cell_w - 17, cy + 5, 12, 12)
        # Holiday names: 4.2 pt fits 16.8 em on a line, nine of ten shipped names (all German ones;
        # "Международный женский день" is 16.8 em). The longer ones (up to 61 em) are wrapped by the
        # compiler in the room between the day number and the cell's foot, and made smaller if need be.
        for i in range(2):
            svg.text("holiday", cx + 2.5, cy + cell_h - 12 + i * 6.5, "", "%s_holiday%s%d" % (prefix, cid, i),
                     ("%s_%s" % (prefix, cid), cell_w - 5, cy + 25, 4.2))

    block_grid(svg, "cm", m, grid_y, cell_w, cell_h, week_w,
               {"week": "weeknum", "week_dy": 17, "cell": cell})
    return svg.result()


def wall_cover():
    w, h = A4_W, A4_H
    svg = Svg(210, 297, w, h, "Wall calendar cover page (A4 portrait): picture, the calendar's year or years, months")
    m = 28.0
    svg.rect("page", 0, 0, w, h)
    landscape(svg, m, m, w - 2 * m, 560)
    svg.open('<g vako:cal="cm_cov_oneyear_style" class="cov_oneyear">')
    svg.text("cover_year", w / 2, 700, "2027", "cm_cov_start_year")
    svg.close()
    svg.open('<g vako:cal="cm_cov_twoyears_style" class="cov_twoyears">')
    svg.text("cover_year_end", w / 2 - 14, 700, "2027", "cm_cov_start_year")
    svg.text("cover_year", w / 2, 700, "/", None)
    svg.text("cover_year_start", w / 2 + 14, 700, "2028", "cm_cov_end_year")
    svg.close()
    # Twelve short month names: the longest upper-case form is 4.8 em bold, 9 pt gives 43 pt of 45.
    step = (w - 2 * m) / 12
    for i in range(12):
        svg.text("cover_month", m + (i + 0.5) * step, 760, "MAR", "m%02d_month_short_uc" % i)
    svg.rect("cover_rule", m, 735, w - 2 * m, 1)
    return svg.result()


def planner_month():
    w, h = A4_W, A4_H
    svg = Svg(210, 297, w, h, "Planner month page (A4 portrait): one line per day with weekday, holidays, "
              "week numbers and room to write")
    m = 28.0
    svg.rect("page", 0, 0, w, h)
    svg.text("title_month", m, 62, "September", "lcm_month_full")
    svg.text("title_year", w - m, 62, "2027", "lcm_year")
    # Week numbers of the month, caption (longest 8.7 em at 7 pt) then up to six numbers.
    svg.text("list_caption", m, 80, "Kalenderwoche", "lcm_weekcaption")
    for n in range(6):
        svg.open('<g vako:cal="lcm_week%d_style" class="lcm_cal_week%d">' % (n, n))
        svg.text("list_weeks", m + 74 + n * 20, 80, str(10 + n), "lcm_week%d" % n)
        svg.close()
    top = 92.0
    row_h = (h - m - top) / 31
    for i in range(31):
        slot = "%02d" % i
        y = top + i * row_h
        svg.open('<g vako:cal="lcm_day%s_style" class="lcm_cal_weekday0">' % slot)
        svg.rect("slot_even" if i % 2 == 0 else "slot_odd", m, y, w - 2 * m, row_h)
        # Bar at the left edge, its stroke alternating by week row.
        svg.add('<line class="week_bar" x1="%s" y1="%s" x2="%s" y2="%s"/>' % (
            fmt(m + 1.5), fmt(y + 1), fmt(m + 1.5), fmt(y + row_h - 1)))
        svg.text("list_num", m + 26, y + row_h - 7, "28", "lcm_day2d%s" % slot)
        # Weekday: the longest name is 8.3 em bold; 9 pt gives 75 pt of the 80 pt column.
        svg.text("list_name", m + 32, y + row_h - 7, "Wednesday", "lcm_dayname%s" % slot)
        # Two names of up to 28 em (7.5 pt) and 25 em; the compiler shrinks or wraps longer ones
        # (three shipped names) within their column.
        svg.text("list_holiday", m + 118, y + row_h - 7, "", "lcm_holiday%s0" % slot,
                 ("lcm_%s0" % slot, 206, y + 9, 7.5))
        svg.text("list_holiday", m + 330, y + row_h - 7, "", "lcm_holiday%s1" % slot,
                 ("lcm_%s1" % slot, w - 2 * m - 330 - 20, y + 9, 7.5))
        svg.image("lcm_imageholiday%s" % slot, w - m - 16, y + (row_h - 12) / 2, 12, 12)
        svg.close()
    svg.add('<line class="list_rule" x1="%s" y1="%s" x2="%s" y2="%s"/>' % (fmt(m + 112), fmt(top), fmt(m + 112), fmt(top + 31 * row_h)))
    return svg.result()


def year_overview():
    w, h = A4_H, A4_W
    svg = Svg(297, 210, w, h, "Year overview (A4 landscape): twelve month grids with week numbers and holidays")
    m = 28.0
    svg.rect("page", 0, 0, w, h)
    svg.text("year_title", w / 2, 62, "2027", "m00_year")
    gap_x, gap_y = 16.0, 12.0
    box_w = (w - 2 * m - 3 * gap_x) / 4
    box_h = (h - 84 - m - 2 * gap_y) / 3
    week_w = box_w / 8
    cell_w = week_w
    for i in range(12):
        prefix = "m%02d" % i
        bx = m + (i % 4) * (box_w + gap_x)
        by = 84 + (i // 4) * (box_h + gap_y)
        svg.open("<g>")
        # Month names: 10.07 em bold at 11 pt is 111 pt of the 187 pt box.
        svg.text("mini_month", bx + box_w / 2, by + 12, "September", prefix + "_month_full")
        svg.rect("mini_band", bx, by + 17, box_w, 10)
        svg.text("mini_head", bx + week_w / 2, by + 24.5, "KW", prefix + "_weekcaption_short")
        for col in range(7):
            # Short weekday names: 2.7 em bold at 6 pt.
            svg.text("mini_head_sunday" if col == 6 else "mini_head", bx + week_w + (col + 0.5) * cell_w, by + 24.5,
                     "Mi", "%s_dayname_short%d" % (prefix, col))
        cell_h = (box_h - 30) / 6

        def cell(svg, p, cid, cx, cy):
            svg.text("mini_day", cx + cell_w / 2, cy + cell_h - 3.5, "28", "%s_day%s" % (p, cid))

        block_grid(svg, prefix, bx, by + 29, cell_w, cell_h, week_w,
                   {"week": "mini_week", "week_dy": cell_h - 3.5, "cell": cell})
        svg.close()
    return svg.result()


def css(title, comment, c):
    font = FONT
    rules = [
        "/* %s */" % comment,
        "/* Written by tools/templates/generate.py; class names are those of the calendar templates and of the",
        "   instructions factory (<prefix>_cal_<type><row>, <prefix>_cal_week<row>, cov_oneyear, cov_twoyears). */",
        "",
        ".page { fill: #ffffff; }",
        ".pic_sky { fill: %s; }" % c["sky"],
        ".pic_sun { fill: %s; }" % c["sun"],
        ".pic_far { fill: %s; }" % c["far"],
        ".pic_near { fill: %s; }" % c["near"],
        ".pic_ground { fill: %s; }" % c["ground"],
        ".pic_tree { fill: %s; }" % c["tree"],
        ".pic_frame { fill: none; stroke: %s; stroke-width: 1; }" % c["text"],
        "",
        ".title_month { %s font-size: 36px; font-weight: bold; fill: %s; }" % (font, c["text"]),
        ".title_year { %s font-size: 36px; fill: %s; }" % (font, c["accent"]),
        ".head_band { fill: %s; }" % c["band"],
        ".head_day { %s font-size: 7.5px; font-weight: bold; fill: %s; }" % (font, c["text"]),
        ".head_day_sunday { %s font-size: 7.5px; font-weight: bold; fill: %s; }" % (font, c["accent"]),
        ".head_week { %s font-size: 6.5px; fill: %s; }" % (font, c["muted"]),
        ".weeknum { %s font-size: 7px; fill: %s; }" % (font, c["muted"]),
        ".cell { fill: none; stroke: %s; stroke-width: 0.5; }" % c["grid"],
        ".daynum { %s font-size: 18px; font-weight: bold; }" % font,
        ".holiday { %s font-size: 4.2px; fill: %s; }" % (font, c["label"]),
        "",
        ".cover_year { %s font-size: 72px; font-weight: bold; fill: %s; }" % (font, c["text"]),
        ".cover_year_end { %s font-size: 72px; font-weight: bold; fill: %s; }" % (font, c["text"]),
        ".cover_year_start { %s font-size: 72px; font-weight: bold; fill: %s; }" % (font, c["text"]),
        ".cover_month { %s font-size: 9px; font-weight: bold; fill: %s; }" % (font, c["muted"]),
        ".cover_rule { fill: %s; }" % c["accent"],
        ".cov_oneyear, .cov_twoyears { fill: %s; }" % c["text"],
        "",
        ".list_caption { %s font-size: 7px; fill: %s; }" % (font, c["muted"]),
        ".list_weeks { %s font-size: 7px; font-weight: bold; fill: %s; }" % (font, c["text"]),
        ".slot_even { fill: #ffffff; stroke: none; }",
        ".slot_odd { fill: %s; stroke: none; }" % c["zebra"],
        ".week_bar { stroke-width: 3; stroke-opacity: 1; }",
        ".list_num { %s font-size: 13px; font-weight: bold; stroke: none; }" % font,
        ".list_name { %s font-size: 9px; stroke: none; }" % font,
        ".list_holiday { %s font-size: 7.5px; fill: %s; stroke: none; }" % (font, c["label"]),
        ".list_rule { stroke: %s; stroke-width: 0.5; }" % c["grid"],
        "",
        ".year_title { %s font-size: 40px; font-weight: bold; fill: %s; }" % (font, c["text"]),
        ".mini_month { %s font-size: 11px; font-weight: bold; fill: %s; }" % (font, c["accent"]),
        ".mini_band { fill: %s; }" % c["band"],
        ".mini_head { %s font-size: 6px; font-weight: bold; fill: %s; }" % (font, c["text"]),
        ".mini_head_sunday { %s font-size: 6px; font-weight: bold; fill: %s; }" % (font, c["accent"]),
        ".mini_week { %s font-size: 5.5px; fill: %s; }" % (font, c["muted"]),
        ".mini_day { %s font-size: 8px; }" % font,
        "",
        "/* Day cells and list slots by kind of day; public holidays come as \"sunday\". */",
    ]
    anchors = {"middle": ["head_day", "head_day_sunday", "head_week", "weeknum", "cover_year", "cover_month",
                          "list_weeks", "year_title", "mini_month", "mini_head", "mini_head_sunday", "mini_week", "mini_day"],
               "end": ["title_year", "cover_year_end", "list_num"], "start": ["cover_year_start"]}
    for anchor, classes in anchors.items():
        for cls in classes:
            index = next(i for i, rule in enumerate(rules) if rule.startswith("." + cls + " {"))
            rules[index] = rules[index][:-1] + "text-anchor: %s; }" % anchor
    colour = {"weekday": c["text"], "saturday": c["muted"], "sunday": c["accent"]}
    for kind in TYPES:
        for prefixes in (BLOCK_PREFIXES, LIST_PREFIXES):
            selectors = ["%s_cal_%s%d" % (p, kind, row) for p in prefixes for row in range(6)]
            rules.append(", ".join("." + s for s in selectors) + " { fill: %s; }" % colour[kind])
    # List slots: the bar at each slot's left edge alternates by week row. The slot's other
    # children, the compiler's hit rectangle among them, inherit the stroke invisibly.
    for parity, key in ((0, "week_a"), (1, "week_b")):
        selectors = [".%s_cal_%s%d" % (p, kind, row) for p in LIST_PREFIXES for kind in TYPES for row in range(parity, 6, 2)]
        rules.append(", ".join(selectors) + " { stroke: %s; stroke-opacity: 0; }" % c[key])
    return "\n".join(rules) + "\n"


def outputs():
    files = {
        os.path.join(TEMPLATES, "wall-month.svg"): wall_month(),
        os.path.join(TEMPLATES, "wall-cover.svg"): wall_cover(),
        os.path.join(TEMPLATES, "planner-month.svg"): planner_month(),
        os.path.join(TEMPLATES, "year-overview.svg"): year_overview(),
    }
    for title, name, comment, colours in SCHEMES:
        files[os.path.join(CSS, name)] = css(title, comment, colours)
    return files


def main():
    check = "--check" in sys.argv[1:]
    stale = []
    for path, text in sorted(outputs().items()):
        old = open(path, encoding="utf-8").read() if os.path.exists(path) else None
        if old == text:
            continue
        if check:
            stale.append(os.path.relpath(path, ROOT))
            continue
        os.makedirs(os.path.dirname(path), exist_ok=True)
        with open(path, "w", encoding="utf-8") as out:
            out.write(text)
        print("wrote", os.path.relpath(path, ROOT))
    if stale:
        print("out of date (run tools/templates/generate.py):", " ".join(stale))
        return 1
    return 0


if __name__ == "__main__":
    sys.exit(main())
