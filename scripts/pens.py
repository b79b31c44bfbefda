"""The pens that draw the skeleton of a font: each turns the strokes of a glyph into those that the font file has.

A stroke is a list of places; one of a single place is a full stop.
"""

import math

import glyphs

STOP_RADII = 4.0, 2.0
BOLD_STOP_RADII = 5.5, 2.5
STOP_STEP = 45  # degrees

BOLD_OFFSET = 4.0  # of the outline from the middle
BOLD_HALF = 7.0  # half the width of a bold stroke: with half of the pen
CROWDED = "%@©®¼½¾ªº¹²³$¢¤§£¥«»*"  # drawn less bold
SLIM = "´#&ð"  # accents among them
STOP_LIFT = 13.0  # of the dot of an i
SHARP = 0.5  # cosine of the turn at a corner from which on it is filled
MITER_LIMIT = 0.12  # least 1 + cos of the turn at a corner that is mitred
LEVELS = (glyphs.DESCENDER, 0, glyphs.X_HEIGHT, glyphs.CAP, glyphs.ASCENDER)  # where stems end

NIB = 3.0, 1.0  # half of the broad nib's edge
SERIF_REACH = 10.5
SERIF_RISE = 13.0  # of the serif at the end of an arm
STEEP = 1.05  # dx over dy of what counts as a stem
UPRIGHT = 0.15
LONG = 14.0  # a straight stroke, no part of a curve


def stop(x, y, radii=STOP_RADII):
    """A full stop: rings small enough to fill it."""
    return [[(x + r * math.cos(math.radians(a)), y + r * math.sin(math.radians(a))) for a in range(0, 361, STOP_STEP)]
            for r in radii]


def split(strokes):
    """Lines, and places of full stops."""
    return [s for s in strokes if len(s) > 1], [s[0] for s in strokes if len(s) == 1]


def thin(_name, strokes):
    lines, stops = split(strokes)
    return lines + [ring for place in stops for ring in stop(*place)]


# ---- bold: the outline of a broad stroke, and a line in its middle ----


def bold(name, strokes):
    share = 0.45 if name in CROWDED else 0.7 if name in SLIM else 1
    half = BOLD_HALF * share
    pen = BOLD_HALF - BOLD_OFFSET  # half the width of the line that draws the outline
    scale = (glyphs.CAP - 2 * half) / glyphs.CAP

    def height(y):
        """Horizontal strokes stay within the height that single strokes have."""
        return half + y * scale

    lines, stops = split(strokes)
    drawn = []
    for line in map(without_doubles, lines):
        levels = [level_of(*line[0]), level_of(*line[-1])]
        low, high = (height(f(y for _, y in line)) + d for f, d in ((min, pen - half), (max, half - pen)))
        inner = [(x, height(y)) for x, y in line]
        sides = [parallel(inner, offset * share) for offset in (-BOLD_OFFSET, 0, BOLD_OFFSET)]
        for side in sides:
            for end, level in zip((0, -1), levels):
                if level is not None:
                    extend(side, end, height(level) + (half - pen if level > 0 else pen - half))
        fillings = [corner_filling(inner, sides, i, low, high) for i in range(1, len(inner) - 1)]
        left, middle, right = (clipped(side, low, high) for side in sides)
        is_closed = math.dist(line[0], line[-1]) < 0.5
        if not is_closed:  # one outline, from the middle of an end and back to it
            left, right = [middle[0]] + left + right[::-1] + [middle[0]], []
        drawn += filter(None, [left, right, middle, *fillings])
    for x, y in stops:
        rise = half + pen - 4 if y < 10 else STOP_LIFT if y > glyphs.X_HEIGHT else 0
        drawn += stop(x, height(y) - half + rise, BOLD_STOP_RADII if share == 1 else STOP_RADII)
    return drawn


def without_doubles(line):
    return [p for i, p in enumerate(line) if i == 0 or math.dist(p, line[i - 1]) > 0.2]


def level_of(_x, y):
    near = [level for level in LEVELS if abs(level - y) <= 2.5]
    return near[0] if near else None


def parallel(line, offset):
    """The line at a distance to its left; closed lines stay closed."""
    normals = []
    for (x1, y1), (x2, y2) in zip(line, line[1:]):
        length = math.dist((x1, y1), (x2, y2))
        normals.append(((y1 - y2) / length, (x2 - x1) / length))
    is_closed = math.dist(line[0], line[-1]) < 0.5
    places = []
    for i, (x, y) in enumerate(line):
        a = normals[i - 1] if i > 0 else normals[-1] if is_closed else normals[0]
        b = normals[i] if i < len(normals) else normals[0] if is_closed else normals[-1]
        share = offset / max(1 + a[0] * b[0] + a[1] * b[1], MITER_LIMIT)
        places.append((x + share * (a[0] + b[0]), y + share * (a[1] + b[1])))
    return places


def extend(line, end, level):
    """Moves an end along its direction to a height, when it stands steep."""
    (x1, y1), (x2, y2) = (line[1], line[0]) if end == 0 else (line[-2], line[-1])
    if abs(x2 - x1) < 1.2 * abs(y2 - y1):
        line[end] = x2 + (level - y2) * (x2 - x1) / (y2 - y1), level


def corner_filling(line, sides, i, low, high):
    """A line across a sharp corner, where those beside one another drift apart."""
    before, after = math.dist(line[i - 1], line[i]), math.dist(line[i], line[i + 1])
    cosine = sum((line[i][k] - line[i - 1][k]) * (line[i + 1][k] - line[i][k]) for k in (0, 1)) / (before * after)
    return [(side[i][0], min(max(side[i][1], low), high)) for side in sides] if cosine < SHARP else None


def clipped(line, low, high):
    """The line without what stands out above or below: sharp corners become flat."""
    kept = []
    for i, (x, y) in enumerate(line):
        level = min(max(y, low), high)
        if level == y:
            kept.append((x, y))
            continue
        for other in line[max(i - 1, 0):i] + line[i + 1:i + 2]:
            if low <= other[1] <= high:
                t = (level - other[1]) / (y - other[1])
                kept.append((other[0] + t * (x - other[0]), level))
    return kept


# ---- serif: a broad nib, and what stands at the ends of the strokes ----


def serif(name, strokes):
    lines, stops = split(strokes)
    drawn = [[(x + k * NIB[0], y + k * NIB[1]) for x, y in line] for line in lines for k in (-1, 0, 1)]
    if name.isalnum():
        drawn += stem_serifs(name, lines)
        width = max((x for line in lines for x, _ in line), default=0)
        scale = width / max(x for line in _plain(name) for x, _ in line) if name in glyphs.TERMINALS else 1
        for token in glyphs.TERMINALS.get(name, "").split():
            values = [float(v) for v in token.lstrip(".").split(",")]
            if token[0] == ".":
                stops.append((values[0] * scale, values[1]))
            else:
                x, low, high = values
                drawn += [[(x * scale + k, low), (x * scale + k, high)] for k in (-1, 1)]
    return drawn + [ring for place in stops for ring in stop(*place, (5.0, 2.5))]


def _plain(name):
    import make_fonts  # the skeleton as it was drawn, for the scale of a narrowed one

    table = {**glyphs.CAPITALS, **glyphs.SMALL, **glyphs.FIGURES, **glyphs.SIGNS}
    return make_fonts.strokes_of(table[name], table)


def touches(place, line):
    """Whether a place lies on a line."""
    for (x1, y1), (x2, y2) in zip(line, line[1:]):
        length = math.dist((x1, y1), (x2, y2)) or 1
        t = min(max(((place[0] - x1) * (x2 - x1) + (place[1] - y1) * (y2 - y1)) / length**2, 0), 1)
        if math.dist(place, (x1 + t * (x2 - x1), y1 + t * (y2 - y1))) < 1.5:
            return True
    return False


def stem_serifs(name, lines):
    """Serifs at the ends of stems, and at those of the arms of some letters."""
    found = []
    rules = glyphs.SERIF_RULES.get(name, "")
    for line in lines:
        others = [other for other in lines if other is not line]
        for i, (x, y) in enumerate(line):
            neighbours = [line[j] for j in (i - 1, i + 1) if 0 <= j < len(line)]
            is_end = len(neighbours) == 1
            stems = [n for n in neighbours if is_stem((x, y), n)]
            if not stems or (is_end and any(math.dist((x, y), p) < 1 for o in others for p in (o[0], o[-1]))):
                if is_end and name in glyphs.ARMED and not any(touches((x, y), other) for other in others):
                    found += arm_serif(x, y, neighbours[0])
                continue
            if level_of(x, y) is None or len(stems) == 2:
                continue
            is_upright = abs(stems[0][0] - x) <= UPRIGHT * abs(stems[0][1] - y)
            if not is_end and not is_upright:
                continue
            left, right = sides(name, rules, x, y, is_upright and name.islower())
            if not is_end:  # the other neighbour is an arm or a bow: nothing on its side
                other = next(n for n in neighbours if n is not stems[0])
                left, right = (left, 0) if other[0] > x else (0, right)
            if left or right:
                found.append([(x - left, y), (x + right, y)])
    for token in rules.split():
        if token[0] in "+":
            found.append([tuple(map(float, p.split(","))) for p in token[1:].split(";")])
    return found


def is_stem(a, b):
    return abs(a[0] - b[0]) < STEEP * abs(a[1] - b[1]) and math.dist(a, b) > LONG


def sides(name, rules, x, y, is_small_stem):
    """Reach of a serif to the left and to the right."""
    if y > 1 and "notop" in rules or y <= 1 and "nofoot" in rules:
        return 0, 0
    if y > 1 and is_small_stem:
        return SERIF_REACH, 0
    if y <= 1 and "rightfoot" in rules:
        return 0, SERIF_REACH
    return SERIF_REACH, SERIF_REACH


def arm_serif(x, y, neighbour):
    """The upright stroke at the end of an arm."""
    if abs(neighbour[1] - y) > 0.3 * abs(neighbour[0] - x) or math.dist((x, y), neighbour) < LONG:
        return []
    low, high = (y - SERIF_RISE, y) if y >= glyphs.X_HEIGHT - 2 else \
        (y, y + SERIF_RISE) if y < 2 else (y - SERIF_RISE / 2, y + SERIF_RISE / 2)
    return [[(x, low), (x, high)]]
