#!/usr/bin/env python3
"""Makes data/yul.map from text files of map lines: make_map.py FOLDER data/yul.map

The folder has the files coast, countries, states, lakes, rivers and land at both scales (coast-110m.txt,
coast-50m.txt, ...). Each line of the map is two lines of text: "COUNT CLOSED RANK", then "LAT,LON" pairs. The shipped
file was made from Natural Earth vectors, which are in the public domain.

Land is cut into areas that a drawing program can fill one by one: small enough to lie on one side of any projection,
without holes, reaching over the 180th meridian where land does, and overlapping a little so that no gap shows between
them.
"""

from collections import defaultdict
from math import cos, radians
from pathlib import Path
import sys

from Yul import EarthPoint, EarthPoints, MapFile, MapFileHeader

SOURCE = """\
Made with Natural Earth, naturalearthdata.com: coastlines, boundaries, lakes, rivers and land
at 1 : 110 million and 1 : 50 million. The data are in the public domain."""

#         layer      file         kind
LAYERS = (('coast', 'coast', MapFileHeader.LINE),
          ('country', 'countries', MapFileHeader.LINE),
          ('state', 'states', MapFileHeader.LINE),
          ('river', 'rivers', MapFileHeader.LINE),
          ('lake', 'lakes', MapFileHeader.AREA),
          ('land', 'land', MapFileHeader.AREA))
#         scale units overlap of areas in degrees
SCALES = ((110, 100, 0.4), (50, 1000, 0.15))

WIDEST = 12  # degrees of an area
MOST_POINTS = 250
STRIP = 200  # degrees east and west that land is laid out over, so that it runs on over the 180th meridian


def read_lines(path):
    """Points (lon, lat) and rank of each line."""
    header = None
    for text in path.read_text(encoding='ascii').splitlines():
        if ',' not in text:
            header = text.split()
            continue
        points = [tuple(map(float, pair.split(',')))[::-1] for pair in text.split()]
        assert len(points) == int(header[0]), path
        yield points, int(header[2])


def without_seam(points):
    """The line in the parts that do not run along the 180th meridian."""
    part = points[:1]
    for before, point in zip(points, points[1:]):
        if before[0] == point[0] and abs(point[0]) == 180:
            if len(part) > 1:
                yield part
            part = []
        part.append(point)
    if len(part) > 1:
        yield part


# ---- land ----

def snapped(ring):
    """The ring without its repeated point, its points close to the 180th meridian and the pole on them."""
    points = []
    for lon, lat in ring:
        point = (round(lon / 180) * 180.0 if abs(lon) > 179.9985 else lon, -90.0 if lat < -89.99 else lat)
        if not points or points[-1] != point:
            points.append(point)
    return points[:-1] if points[0] == points[-1] else points


def edges_of(rings):
    """All directed edges of the rings and of their copies one turn to each side; edges along the 180th meridian are
    cut at every point that lies there."""
    copies = [[(lon + shift, lat) for lon, lat in ring] for ring in rings for shift in (-360, 0, 360)]
    copies = [ring for ring in copies if min(ring)[0] <= STRIP and max(ring)[0] >= -STRIP]
    on_seam = defaultdict(set)
    for ring in copies:
        for lon, lat in ring:
            if abs(lon) == 180:
                on_seam[lon].add(lat)
    for ring in copies:
        for a, b in zip(ring, ring[1:] + ring[:1]):
            stops = [a, b]
            if a[0] == b[0] and a[0] in on_seam:
                low, high = sorted((a[1], b[1]))
                stops = [(a[0], lat) for lat in sorted(on_seam[a[0]], reverse=a[1] > b[1]) if low <= lat <= high]
            yield from zip(stops, stops[1:])


def join_over_seam(rings):
    """The rings as they are without the cut along the 180th meridian: edges that run there both ways vanish."""
    following = defaultdict(list)
    for a, b in edges_of(rings):
        if a in following[b]:
            following[b].remove(a)
        else:
            following[a].append(b)
    joined = []
    for start in list(following):
        while following[start]:
            ring, point = [start], following[start].pop()
            while point != start:
                ring.append(point)
                point = following[point].pop()
            joined.append(ring)
    return joined


def crossing(p, q, axis, at):
    share = (at - p[axis]) / (q[axis] - p[axis])
    other = p[1 - axis] + share * (q[1 - axis] - p[1 - axis])
    return (at, other) if axis == 0 else (other, at)


def clip(rings, axis, at, sign):
    """The part of the areas inside the rings (one inside another is a hole) with sign * coordinate <= sign * at."""
    whole, chains = [], []
    for ring in rings:
        inside = [sign * point[axis] <= sign * at for point in ring]
        if all(inside):
            whole.append(ring)
        elif any(inside):
            start = inside.index(False)
            chain = None
            for i in range(start, start + len(ring)):
                p, q = ring[i % len(ring)], ring[(i + 1) % len(ring)]
                was, is_in = inside[i % len(ring)], inside[(i + 1) % len(ring)]
                if was != is_in:
                    cut = crossing(p, q, axis, at)
                    if is_in:
                        chain = [cut]
                    else:
                        chain.append(cut)
                        chains.append(chain)
                if is_in:
                    chain.append(q)
    # along the cut the ends of chains lie in pairs, with area between the two of a pair
    ends = sorted((chain[-end][1 - axis], i, end) for i, chain in enumerate(chains) for end in (0, 1))
    partner = {}
    for (_, i, a), (_, j, b) in zip(ends[::2], ends[1::2]):
        partner[i, a], partner[j, b] = (j, b), (i, a)
    free = set(range(len(chains)))
    while free:
        i, entered = min(free), 0
        ring = []
        while i in free:
            free.remove(i)
            ring += chains[i] if entered == 0 else chains[i][::-1]
            i, entered = partner[i, 1 - entered]
        ring = [p for p, q in zip(ring, ring[1:] + ring[:1]) if p != q]
        if len(ring) > 2:
            whole.append(ring)
    return whole


def contains(ring, point):
    x, y = point
    is_in = False
    for (x1, y1), (x2, y2) in zip(ring, ring[1:] + ring[:1]):
        if (y1 > y) != (y2 > y) and x < x1 + (y - y1) / (y2 - y1) * (x2 - x1):
            is_in = not is_in
    return is_in


def find_hole(rings):
    boxes = [(min(x for x, _ in r), max(x for x, _ in r), min(y for _, y in r), max(y for _, y in r)) for r in rings]
    for ring, box in zip(rings, boxes):
        for other, around in zip(rings, boxes):
            if (other is not ring and around[0] < box[0] and box[1] < around[1] and around[2] < box[2]
                    and box[3] < around[3] and contains(other, ring[0])):
                return box
    return None


def cut_up(rings, core, overlap):
    """Areas without holes, each a little larger than its part of the core (west, east, south, north)."""
    if not rings:
        return
    west, east, south, north = core
    width, height = east - west, north - south
    stretch = 1 / max(cos(radians((south + north) / 2)), 0.05)
    axis, at = None, None
    if width > WIDEST or height > WIDEST or max(map(len, rings)) > MOST_POINTS:
        axis = 0 if width > WIDEST or (height <= WIDEST and width / stretch >= height) else 1
        at = (west + east) / 2 if axis == 0 else (south + north) / 2
    elif hole := find_hole(rings):
        axis, at = 0, (hole[0] + hole[1]) / 2
        overlap = min(overlap, (hole[1] - hole[0]) / 4 / stretch)
    if axis is None:
        yield from rings
        return
    reach = min(overlap * stretch, width / 4) if axis == 0 else min(overlap, height / 4)
    low, high = ((west, at, south, north), (at, east, south, north)) if axis == 0 else (
        (west, east, south, at), (west, east, at, north))
    yield from cut_up(clip(rings, axis, at + reach, 1), low, overlap)
    yield from cut_up(clip(rings, axis, at - reach, -1), high, overlap)


def land_areas(lines, overlap):
    rings = join_over_seam([snapped(points) for points, _ in lines])
    edge = 180 + overlap
    return cut_up(clip(clip(rings, 0, edge, 1), 0, -edge, -1), (-180, 180, -90, 90), overlap)


# ---- the file ----

def add(file, points, rank):
    line = EarthPoints()
    for lon, lat in points:
        line.add(EarthPoint(lat, lon))
    assert file.addLine(line, rank), points


def main():
    if len(sys.argv) != 3:
        sys.exit(__doc__)
    folder = Path(sys.argv[1])
    file = MapFile()
    assert file.setSource(SOURCE)
    for scale, units, overlap in SCALES:
        for name, source, kind in LAYERS:
            header = MapFileHeader()
            assert header.setName(name) and header.setScale(scale) and header.setUnits(units) and header.setKind(kind)
            assert file.addLayer(header)
            lines = list(read_lines(folder / f'{source}-{scale}m.txt'))
            if name == 'land':
                for ring in land_areas(lines, overlap):
                    add(file, ring, 0)
            elif kind == MapFileHeader.AREA:
                for points, rank in lines:
                    add(file, points[:-1], rank)
            else:
                for points, rank in lines:
                    for part in without_seam(points):
                        add(file, part, rank)
            file.getHeader(file.getNumLayers() - 1).print()
    if not file.write(sys.argv[2]):
        sys.exit(1)


if __name__ == '__main__':
    main()
