#!/usr/bin/env python3
"""Makes the stroke font files of data/ from the outlines in glyphs.py.

usage: scripts/make_fonts.py [DIRECTORY]     (default: data/ beside scripts/)

All fonts share one skeleton. Arcs and curves become short straight strokes on an integer raster. A font is the
skeleton drawn with a pen of its own (pens.py): a thin one, a bold one, a broad nib with serifs added; narrowed,
slanted, or fitted into cells of one width. The cell of a letter, from which the gap to its neighbours is measured,
is the skeleton, moved outwards at upright sides and inwards where the side is open or slants: by part of the mean
distance between the side's outermost ink and its ink at each height.
"""

from dataclasses import dataclass, field
import math
import pathlib
import sys
from typing import Callable

import glyphs
import pens

BASELINE = 40  # of the raster, so that no coordinate is negative
MAX_X = 125
ARC_STEP = 11  # degrees
CURVE_STEPS = 10

UPRIGHT_MARGIN = 2.0  # what an upright side gets
OPEN_LIMIT = 14.0  # a side counts as at most this deep
OPEN_SHARE = 0.47  # of the mean depth that is taken off
SLANT = math.tan(math.radians(12))

HEADER = """YulFont 1
# {title}
# The outlines were drawn for this file and are in scripts/glyphs.py; scripts/make_fonts.py wrote it.
#
# name NAME
# metrics BASELINE CAPITAL_HEIGHT
# pen WIDTH                    the least width of a stroke, for fonts whose strokes are to touch one another
# glyph CODE LEFT RIGHT        ISO 8859-1 code, left and right edge of the cell
#   followed by pairs of numbers: a first number of 254 or more ends the glyph, 128 or more moves
#   to (number - 128, y), a smaller one draws to (number, y)
name {name}
metrics {baseline} {cap}
"""


@dataclass
class Font:
    """A font file: its name, its title, and how it is made of the skeleton."""

    name: str
    title: str
    draw: Callable = pens.thin  # strokes of the skeleton -> strokes of the font
    pen: int = 0  # least width of a stroke; 0: any will do
    narrowing: float = 1.0
    slant: float = 0.0
    cell: int = 0  # above 0: the one width of all cells
    tightening: float = 0.0  # what each side of a cell gives away
    outlines: dict = field(default_factory=dict)  # instead of the usual ones


FONTS = (
    Font('modern', 'A sans stroke font of single strokes, the default.'),
    Font('light', 'A light sans stroke font, narrow, for crowded maps.', narrowing=0.8),
    Font('italic', 'A slanted sans stroke font of single strokes.', slant=SLANT),
    Font('bold', 'A bold sans stroke font.', draw=pens.bold, pen=6, tightening=-2.0, outlines=glyphs.BOLD),
    Font('serif', 'A serif stroke font.', draw=pens.serif, pen=4, narrowing=0.96, tightening=-2.5),
    Font('serifitalic', 'A slanted serif stroke font, as for the names of waters.', draw=pens.serif, pen=4,
         narrowing=0.92, slant=SLANT, tightening=-2.5),
    Font('mono', 'A stroke font whose characters have one width.', cell=50, outlines=glyphs.MONO),
)


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


def mapped(strokes, place):
    return [[place(x, y) for x, y in stroke] for stroke in strokes]


def moved(strokes, dx, dy):
    return mapped(strokes, lambda x, y: (x + dx, y + dy))


def strokes_of(text, table):
    """The strokes of an outline text as lists of places; a full stop is a stroke of one place."""
    strokes = []
    for part in filter(None, (part.strip() for part in text.split("|"))):
        stroke = []
        for token in part.split():
            kind, rest = token[0], token[1:]
            if kind == "+":
                name, _, offset = rest.partition(":")
                strokes += moved(strokes_of(table[name], table), *numbers(offset or "0,0"))
            elif kind == ".":
                strokes.append([tuple(numbers(rest))])
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


def extent(strokes):
    """Least and greatest x, of full stops with their rings."""
    reach = [(x, pens.STOP_RADII[0] if len(stroke) == 1 else 0) for stroke in strokes for x, _ in stroke]
    return min(x - r for x, r in reach), max(x + r for x, r in reach)


def skeletons(font):
    """Character -> strokes, the unaccented letters first; accented letter -> (base, strokes of its accent)."""
    table = {**glyphs.CAPITALS, **glyphs.SMALL, **glyphs.FIGURES, **glyphs.SIGNS, **font.outlines}
    base = {name: strokes_of(text, table) for name, text in table.items()}
    if font.cell:
        base = {name: fitted(strokes, font.cell) for name, strokes in base.items()}
    base = {name: mapped(strokes, lambda x, y: (x * font.narrowing, y)) for name, strokes in base.items()}
    accented = {}
    for row in glyphs.ACCENTED.split(","):
        letter, plain, accent, middle = row.split()
        rise = glyphs.CAPITAL_RISE if plain.isupper() and accent != "cedilla" else 0
        middle = sum(extent(base[plain])) / 2 if font.cell else float(middle) * font.narrowing
        accented[letter] = (plain, moved(strokes_of(glyphs.ACCENTS[accent], table), middle, rise))
    return base, accented


def fitted(strokes, cell):
    """A glyph made to fit into a cell, in its middle."""
    if not strokes:
        return strokes
    left, right = extent(strokes)
    scale = min(1, cell / max(right - left, 1))
    return mapped(strokes, lambda x, y: ((x - (left + right) / 2) * scale + cell / 2, y))


def depths(strokes, low, high, side):
    """How far inside the outermost ink the ink begins at each height; side -1 left, 1 right."""
    outermost = max(side * x for stroke in strokes for x, _ in stroke)
    rows = []
    for y in range(low, high + 1, 2):
        reach = None
        for stroke in strokes:
            for (x1, y1), (x2, y2) in zip(stroke, stroke[1:] or stroke):
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


def cell_of(name, strokes, font):
    """Left and right edge of the cell."""
    if font.cell:
        return 0, font.cell
    if name in " \u00a0":
        return 0, 24 * font.narrowing
    left, right = extent(strokes)
    if name in glyphs.FIGURES:
        return 0, glyphs.FIGURE * font.narrowing
    if not name.isalpha() or name in "ªº":
        trim = 1 if right - left > 8 else -UPRIGHT_MARGIN
        return left + trim + font.tightening, right - trim - font.tightening
    high = glyphs.X_HEIGHT if name in "acegmnopqrsuvwxyzæøþıµ" else glyphs.CAP
    return (left - margin(strokes, high, -1) + font.tightening,
            right + margin(strokes, high, 1) - font.tightening)


def all_glyphs(font):
    """Character -> (cell left, cell right, strokes)."""
    base, accented = skeletons(font)
    cells = {name: cell_of(name, strokes, font) for name, strokes in base.items()}
    found = {name: (*cells[name], font.draw(name, strokes)) for name, strokes in base.items()}
    for name, (plain, accent) in accented.items():
        cell = cells[plain]
        if not font.cell:  # an accent wider than its letter needs room of its own
            left, right = extent(accent)
            cell = min(cell[0], left + 2), max(cell[1], right - 2)
        found[name] = (*cell, found[plain][2] + font.draw("´", accent))
    found["\u00a0"] = found[" "]
    return {name: glyph for name, glyph in found.items() if ord(name) < 256}


def slanted(strokes, slant):
    """Leaning to the right about half the height of a small letter, so that the cell stays where it is."""
    return mapped(strokes, lambda x, y: (x + (y - glyphs.X_HEIGHT / 2) * slant, y))


def encode(strokes, shift):
    """The strokes as the pairs of a glyph, without doubled places."""
    codes = []
    for stroke in strokes:
        places = [(math.floor(x + shift + 0.5), math.floor(y + BASELINE + 0.5)) for x, y in stroke]
        kept = [place for i, place in enumerate(places) if i == 0 or place != places[i - 1]]
        for i, (x, y) in enumerate(kept if len(kept) > 1 else []):
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


def write_font(path, font):
    with open(path, "w", encoding="ascii") as out:
        out.write(HEADER.format(title=font.title, name=font.name, baseline=BASELINE, cap=glyphs.CAP))
        if font.pen:
            out.write(f"pen {font.pen}\n")
        for character, (left, right, strokes) in sorted(all_glyphs(font).items()):
            strokes = slanted(strokes, font.slant)
            shift = max(0, math.ceil(-extent(strokes)[0])) if strokes else 0
            out.write(f"glyph {ord(character)} {round(left + shift)} {round(right + shift)}\n")
            for line in lines_of(encode(strokes, shift)):
                out.write(line + "\n")


def main():
    data = pathlib.Path(sys.argv[1]) if len(sys.argv) > 1 else pathlib.Path(__file__).parent.parent / "data"
    for font in FONTS:
        write_font(data / f"{font.name}.fnt", font)


if __name__ == "__main__":
    main()
