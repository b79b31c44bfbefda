#!/usr/bin/env python3
"""Makes the stroke font files of data/ from the outlines in glyphs.py.

usage: scripts/make_fonts.py [DIRECTORY]     (default: data/ beside scripts/)

Arcs and curves become short straight strokes on an integer raster. The cell of a letter, from which the gap
to its neighbours is measured, is its ink, moved outwards at upright sides and inwards where the side is open
or slants: by part of the mean distance between the side's outermost ink and its ink at each height.
"""

import math
import pathlib
import sys

import glyphs

BASELINE = 40  # of the raster, so that no coordinate is negative
MAX_X = 125
ARC_STEP = 11  # degrees
CURVE_STEPS = 10
STOP_RADII = (4.0, 2.0)

UPRIGHT_MARGIN = 2.0  # what an upright side gets
OPEN_LIMIT = 14.0  # a side counts as at most this deep
OPEN_SHARE = 0.47  # of the mean depth that is taken off

HEADER = """YulFont 1
# A light sans stroke font. The outlines were drawn for this file and are in scripts/glyphs.py;
# scripts/make_fonts.py wrote it.
#
# name NAME
# metrics BASELINE CAPITAL_HEIGHT
# glyph CODE LEFT RIGHT        ISO 8859-1 code, left and right edge of the cell
#   followed by pairs of numbers: a first number of 254 or more ends the glyph, 128 or more moves
#   to (number - 128, y), a smaller one draws to (number, y)
name {name}
metrics {baseline} {cap}
"""


def numbers(text):
    return [float(part) for part in text.split(",")]


def arc(cx, cy, rx, ry, start, end):
    steps = max(2, round(abs(end - start) / ARC_STEP))
    angles = [math.radians(start + (end - start) * i / steps) for i in range(steps + 1)]
    return [(cx + rx * math.cos(a), cy + ry * math.sin(a)) for a in angles]


def curve(p0, p1, p2, p3):
    def at(t):
        s = 1 - t
        return tuple(s**3 * a + 3 * s * s * t * b + 3 * s * t * t * c + t**3 * d for a, b, c, d in zip(p0, p1, p2, p3))

    return [at(i / CURVE_STEPS) for i in range(1, CURVE_STEPS + 1)]


def stop(x, y):
    """A full stop: rings small enough to fill it at the usual line widths."""
    return [[(x + r * math.cos(math.radians(a)), y + r * math.sin(math.radians(a))) for a in range(0, 361, 45)]
            for r in STOP_RADII]


def moved(strokes, dx, dy):
    return [[(x + dx, y + dy) for x, y in stroke] for stroke in strokes]


def strokes_of(text, table):
    """The strokes of an outline text as lists of places."""
    strokes = []
    for part in filter(None, (part.strip() for part in text.split("|"))):
        stroke = []
        for token in part.split():
            kind, rest = token[0], token[1:]
            if kind == "+":
                name, _, offset = rest.partition(":")
                strokes += moved(strokes_of(table[name], table), *numbers(offset or "0,0"))
            elif kind == ".":
                strokes += stop(*numbers(rest))
            elif kind == "@":
                stroke += arc(*numbers(rest))
            elif kind == "~":
                x1, y1, x2, y2, x3, y3 = numbers(rest)
                stroke += curve(stroke[-1], (x1, y1), (x2, y2), (x3, y3))
            else:
                stroke.append(tuple(numbers(token)))
        if stroke:
            strokes.append(stroke)
    return strokes


def accented(table):
    """The accented letters as strokes."""
    letters = {}
    for row in glyphs.ACCENTED.split(","):
        letter, base, accent, middle = row.split()
        rise = glyphs.CAPITAL_RISE if base.isupper() and accent != "cedilla" else 0
        mark = strokes_of(glyphs.ACCENTS[accent], table)
        letters[letter] = (base, strokes_of(table[base], table) + moved(mark, float(middle), rise))
    return letters


def extent(strokes):
    xs = [x for stroke in strokes for x, _ in stroke]
    return min(xs), max(xs)


def depths(strokes, low, high, side):
    """How far inside the outermost ink the ink begins at each height; side -1 left, 1 right."""
    outermost = max(side * x for stroke in strokes for x, _ in stroke)
    rows = []
    for y in range(low, high + 1, 2):
        reach = None
        for stroke in strokes:
            for (x1, y1), (x2, y2) in zip(stroke, stroke[1:]):
                if min(y1, y2) - 1 <= y <= max(y1, y2) + 1:
                    t = 0.5 if y1 == y2 else min(max((y - y1) / (y2 - y1), 0), 1)
                    places = (x1, x2) if y1 == y2 else (x1 + t * (x2 - x1),)
                    best = max(side * x for x in places)
                    reach = best if reach is None else max(reach, best)
        rows.append(OPEN_LIMIT if reach is None else min(outermost - reach, OPEN_LIMIT))
    return rows


def margin(strokes, high, side):
    rows = depths(strokes, 0, high, side)
    return UPRIGHT_MARGIN - OPEN_SHARE * sum(rows) / len(rows)


def cell_of(name, strokes):
    """Left and right edge of the cell."""
    if name == " ":
        return 0, 24
    left, right = extent(strokes)
    if name in glyphs.FIGURES:
        return 0, glyphs.FIGURE
    if not name.isalpha() or name in "ªº":
        trim = 1 if right - left > 8 else -UPRIGHT_MARGIN
        return left + trim, right - trim
    high = glyphs.X_HEIGHT if name in "acegmnopqrsuvwxyzæøþıµ" else glyphs.CAP
    return left - margin(strokes, high, -1), right + margin(strokes, high, 1)


def all_glyphs():
    """Character -> (cell left, cell right, strokes)."""
    table = {**glyphs.CAPITALS, **glyphs.SMALL, **glyphs.FIGURES, **glyphs.SIGNS}
    found = {}
    for name, text in table.items():
        strokes = strokes_of(text, table)
        found[name] = (*cell_of(name, strokes), strokes)
    for name, (base, strokes) in accented(table).items():
        left, right = extent(strokes)  # an accent wider than its letter needs room of its own
        found[name] = (min(found[base][0], left + 2), max(found[base][1], right - 2), strokes)
    found["\u00a0"] = found[" "]
    return {name: glyph for name, glyph in found.items() if ord(name) < 256}


def encode(strokes, shift):
    """The strokes as the pairs of a glyph, without doubled places."""
    codes = []
    for stroke in strokes:
        places = [(round(x + shift), round(y + BASELINE)) for x, y in stroke]
        kept = [place for i, place in enumerate(places) if i == 0 or place != places[i - 1]]
        for i, (x, y) in enumerate(kept):
            assert 0 <= x <= MAX_X and 0 <= y <= 255, (x, y)
            codes += [x + 128 if i == 0 else x, y]
    return codes + [254]


def lines_of(codes, width=100):
    line = ""
    for code in map(str, codes):
        if len(line) + 1 + len(code) > width:
            yield line
            line = ""
        line += (" " if line else "") + code
    yield line


def write_font(path, name):
    with open(path, "w", encoding="ascii") as out:
        out.write(HEADER.format(name=name, baseline=BASELINE, cap=glyphs.CAP))
        for character, (left, right, strokes) in sorted(all_glyphs().items()):
            shift = max(0, math.ceil(-extent(strokes)[0])) if strokes else 0
            out.write(f"glyph {ord(character)} {round(left + shift)} {round(right + shift)}\n")
            for line in lines_of(encode(strokes, shift)):
                out.write(line + "\n")


def main():
    data = pathlib.Path(sys.argv[1]) if len(sys.argv) > 1 else pathlib.Path(__file__).parent.parent / "data"
    write_font(data / "modern.fnt", "modern")


if __name__ == "__main__":
    main()
