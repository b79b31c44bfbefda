"""Pages of contours beside the rules of the cell, worked out here step by step in single precision."""

import math
import re

import numpy as np
import pytest

from Yul import ContPlot, Domain, Grid, GridBox, Plot, Point, Tools, Yul

MISS = np.float32(-9999)
LINE = re.compile(r'^%%PL:2\n(.*)\n(.*)\n(.*)\nnp\n(\S+) (\S+) mv\n(\S+) (\S+) ln\nstroke$', re.M)
DOMAIN = 'cart,0,0,{},{},1,1'
SIDES = (0, 1, 0), (3, 1, 1), (2, 3, 3), (2, 0, 2)  # start, end and tested corner


def cross_cell(corners, level, tweak):
    """Side fractions, number of crossings and saddle total of one level; moves the corners that lie on it."""
    f = np.float32
    sides, count = [f(-5)] * 4, 0
    if level < corners.low or level > corners.high or MISS in corners.values:
        return sides, 0, f(0)
    for i, value in enumerate(corners.values):
        if value == level:
            corners.values[i] = f(value - tweak)
    for i, (start, end, tested) in enumerate(SIDES):
        a, b = corners.values[start], corners.values[end]
        if a == b:
            sides[i] = f(-4) if a == level else f(-5)
        elif corners.values[tested] == level:
            sides[i] = f(-1)
        else:
            t = f(f(level - a) / f(b - a))
            sides[i] = f(-2) if t < 0 else f(-3) if t > 1 else t
    count = sum(t >= 0 for t in sides)

    def clear_ends():
        for i, t in enumerate(sides):
            if t in (0, 1):
                sides[i] = f(-1)

    if sides.count(-4) > 1:
        clear_ends()
        count = 0
    if count == 1:
        if f(-1) in sides:
            first = sides.index(f(-1))
            sides[first] = f(1) if first in (1, 2) else f(0)
            count = 2
        else:
            clear_ends()
            count = 0
    elif count == 3:
        if sides[0] in (0, 1):
            sides[0] = f(-1)
        elif sides[1] in (0, 1):
            sides[1] = f(-1)
        count = 2
    return sides, count, f(f(sides[2] + sides[3]) + f(f(f(2) - sides[0]) - sides[1]))


class Corners:
    def __init__(self, values):
        self.values = [np.float32(value) for value in values]
        self.low, self.high = min(self.values), max(self.values)


def contour(values, levels):
    """All segments (level number, x1, y1, x2, y2) in drawing order; columns to the right, rows downward."""
    values = np.asarray(values, np.float32)
    real = values[values != MISS]
    tweak = np.float32(np.float32(real.max() - real.min()) / np.float32(10000))
    found = []
    rows, columns = values.shape
    for j in range(rows - 1):
        for i in range(columns - 1):
            corners = Corners([values[j, i], values[j, i + 1], values[j + 1, i], values[j + 1, i + 1]])
            place = [(i, j), (i + 1, j), (i, j + 1), (i + 1, j + 1)]
            for k, level in enumerate(levels):
                sides, count, saddle = cross_cell(corners, np.float32(level), tweak)
                points = []
                for t, (start, end, _) in zip(sides, SIDES):
                    if t == -4:
                        found.append((k, *place[start], *place[end]))
                    if t >= 0:
                        points.append(tuple(a + float(t) * (b - a) for a, b in zip(place[start], place[end])))
                pairs = [(0, 1)] if count == 2 else ([(0, 1), (2, 3)] if saddle >= 2 else [(0, 3), (1, 2)]) if count == 4 \
                    else []
                found += [(k, *points[a], *points[b]) for a, b in pairs]
    return found


@pytest.fixture
def draw(tmp_path, monkeypatch):
    """Draws values with contour settings; the contours, and the segments of the page as pens and grid positions."""
    monkeypatch.chdir(tmp_path)

    def draw(values, **settings):
        values = np.asarray(values, np.float32)
        rows, columns = values.shape
        grid = Grid(columns, rows)
        grid.setDomain(Domain(DOMAIN.format(columns, rows)))
        grid.values[:] = values
        contours, plot = ContPlot(), Plot()
        for name, value in settings.items():
            assert getattr(contours, name)(value) == 1
        assert plot.open('page.ps,de=p,color') == 1
        assert contours.draw(plot, grid) == 1
        view = plot.getGraph().getDeviceViewport()
        left, right, low, high = view.x1, view.x2, view.y1, view.y2
        assert plot.close() == 1
        segments = []
        for found in LINE.findall((tmp_path / 'page.ps').read_text()):
            x1, y1, x2, y2 = map(float, found[3:])
            across, down = (right - left) / (columns - 1), (high - low) / (rows - 1)
            segments.append((found[:3], (x1 - left) / across, (high - y1) / down, (x2 - left) / across,
                             (high - y2) / down))
        return contours, segments
    return draw


def fields():
    """Small fields full of corners on levels, flat places, saddles and missing values."""
    random = np.random.default_rng(99)
    for i in range(24):
        shape = random.integers(2, 9, 2)
        values = random.integers(0, 5, shape).astype(np.float32)
        if i % 3 == 1:
            values += random.random(shape).astype(np.float32)
        if i % 4 == 3:
            values[tuple(random.integers(0, shape))] = -9999
        values[0, 0], values[-1, -1] = 0, 4
        yield values
    yield np.indices((6, 6)).sum(0) % 2  # nothing but saddles
    yield np.where(np.indices((5, 5))[1] < 3, 1, 2)  # flat on both sides of a step
    yield np.outer(np.arange(5), np.arange(-2, 3))


@pytest.mark.parametrize('settings', [{'setInterval': 1.0}, {'setInterval': 0.5, 'setBase': 0.25},
                                      {'setValues': '0.5,1,2,3.5'}, {'setInterval': 0.7}], ids=str)
def test_the_page_holds_the_segments_of_every_cell_in_order(draw, settings):
    number = 0
    for values in fields():
        contours, segments = draw(values, **settings)
        levels = [contours.getLevel(i) for i in range(contours.getNumLevels())]
        expected = contour(values, levels)
        assert len(segments) == len(expected)
        for (_, *place), (_, *wanted) in zip(segments, expected):
            assert np.allclose(place, wanted, atol=2e-4)
        number += len(expected)
    assert number > 1000


def test_a_flat_field_draws_only_its_sides(draw):
    _, segments = draw(np.full((3, 4), 5.0), setValues='4,5,6')
    places = [tuple(map(round, place)) for _, *place in segments]
    assert len(places) == 6 * 4 and len(set(places)) == 4 * 2 + 3 * 3  # sides inside are those of two cells
    box = GridBox()
    box.setTweak(0.0)
    box.setValues(5.0, 5.0, 5.0, 5.0)
    assert box.setLevel(5.0) == 0 and [box.getSide(i) for i in range(4)] == [-4] * 4


def test_the_cell_worker_agrees(draw):
    random = np.random.default_rng(5)
    kinds = set()
    for _ in range(3000):
        values = random.integers(-2, 3, 4).astype(np.float32)
        tweak = np.float32(random.choice([0, 1e-3, 0.5, 1]))
        level = np.float32(random.choice([-1, 0, 0.5, 1, 3]))
        corners, box = Corners(values), GridBox()
        box.setTweak(float(tweak))
        box.setValues(*map(float, values))
        box.setPoints(Point(0.0, 1.0), Point(1.0, 1.0), Point(0.0, 0.0), Point(1.0, 0.0))
        sides, count, saddle = cross_cell(corners, level, tweak)
        assert box.setLevel(float(level)) == count == box.getNumCross()
        assert [box.getSide(i) for i in range(4)] == sides
        assert box.getPosition() == (-1 if level < values.min() else level > values.max())
        if count:
            assert box.getSaddle() == saddle
        assert [box.getValue(i) for i in range(4)] == corners.values
        kinds.add((count, tuple(side if side in (-1, -4) else 0 for side in sides)))
    assert len(kinds) > 20


def test_a_tweak_that_was_not_set_comes_from_the_first_corner_on_the_level():
    box = GridBox()
    for value, moved in ((100.0, 99.995), (-100.0, -99.995), (0.0, 0.0)):
        box.init()
        box.setValues(value, value + 1, value, value + 1)
        box.setLevel(value)
        assert box.getValue(0) == pytest.approx(moved, abs=1e-5) and box.getValue(2) == box.getValue(0)
        assert box.getTweak() == pytest.approx(value * 5e-5)


def test_levels_by_the_rules():
    grid, contours = Grid(2, 2), ContPlot()

    def levels(low, high, **settings):
        grid.values[:] = [[low, high], [low, high]]
        contours.init()
        for name, value in settings.items():
            assert getattr(contours, name)(value) == 1
        assert contours.calcLevels(grid) == 1
        return contours.getInterval(), contours.getLow(), contours.getHigh(), contours.getNumLevels()

    assert levels(0, 100, setInterval=10.0) == (10, 0, 110, 12)
    assert levels(0, 100, setInterval=0.0) == (12, 0, 108, 10)
    assert levels(-35, 35, setInterval=10.0, setBase=5.0) == (10, -35, 35, 8)
    # Kept: the top level is compared with the range as it is counted from the base.
    assert levels(-35, 40, setInterval=10.0, setBase=5.0) == (10, -35, 45, 9)
    assert levels(3, 3, setInterval=2.0) == (2, 2, 4, 2)
    assert levels(4, 4, setInterval=2.0) == (2, 4, 6, 2)
    interval, low, high, count = levels(0, 100, setValues='3,50')
    assert (interval, low, count) == (-9999, 3, 2) and [contours.getLevel(i) for i in range(4)] == [3, 50, 101, 101]
    fill = contours.getFill()
    assert (fill.getInterval(), fill.getBase()) == (-9999, 3)
    levels(7, 33, setInterval=5.0)
    assert (contours.getFill().getInterval(), contours.getFill().getBase()) == (5, 5)
    assert contours.getLevel(50) == 5 + 50 * 5
    levels(7, 33, setInterval=5.0, setBase=2.0)
    assert contours.getFill().getBase() == 2
    empty = Grid(2, 2)
    contours.calcLevels(empty)
    assert (contours.getInterval(), contours.getLow(), contours.getNumLevels()) == (1, 0, 0)


def test_too_many_levels_are_counted_anew(capfd):
    grid, contours = Grid(2, 2), ContPlot()
    grid.values[:] = [[0, 150], [75, 60]]
    contours.setInterval(1.0)
    contours.calcLevels(grid)  # 0 to 151
    assert capfd.readouterr().err == 'Contour interval too small, recomputing...\n'
    assert contours.getInterval() == math.ceil(150 / 9) == Tools.calcInterval(150.0, 0.0, 9)
    grid.values[0, 1] = 149
    contours.setInterval(1.0)
    contours.calcLevels(grid)
    assert contours.getNumLevels() == 10 and capfd.readouterr().err
    grid.values[0, 1] = 148.5
    contours.calcLevels(grid)
    assert contours.getNumLevels() == 150 and not capfd.readouterr().err


def test_dashes_and_widths_by_level(draw):
    values = np.outer(np.ones(3), np.linspace(-2, 2, 9))
    dashes = {'solid': '[] 0 setdash', 'dashed': '[6] 0 setdash'}

    def styles(**settings):
        _, segments = draw(values, setInterval=0.75, **settings)
        # levels -2.25 .. 2.25; the segments go by columns
        return {round(-2 + (x1 + x2) / 2 * 0.5, 2): pen[2] for pen, x1, _, x2, _ in segments}

    by_base = styles(setDash=-1)
    assert by_base and all((style == dashes['dashed']) == (level < 0) for level, style in by_base.items())
    by_base = styles(setDash=-1, setBase=0.75)
    assert all((style == dashes['dashed']) == (level < 0.7) for level, style in by_base.items())
    assert set(styles(setDash=1).values()) == {dashes['dashed']}
    assert set(styles(setDash=7).values()) == set(styles().values()) == {dashes['solid']}
    _, segments = draw(values, setInterval=0.75)
    assert {pen[1] for pen, *_ in segments} == {'1.0 dot lw'}  # a width of 0 draws as one dot
    _, segments = draw(values, setInterval=0.75, setParam='line=red:wi=3,every=2')
    widths = {round(-2 + (x1 + x2) / 2 * 0.5, 2): pen[1] for pen, x1, _, x2, _ in segments}
    assert {round(level, 2) for level, width in widths.items() if width == '6.6 dot lw'} == {-1.5, 0, 1.5}
    assert {pen[0] for pen, *_ in segments} == {'1.00 0.00 0.00 setrgbcolor'}


def test_colours_by_level(draw):
    values = np.outer(np.ones(3), np.arange(5))
    _, segments = draw(values, setValues='0.5,1.5,2.5,3.5', setParam='col=red:blue:off:lime')
    assert [(pen[0], round(x1, 1)) for pen, x1, *_ in segments[:3]] == [
        ('1.00 0.00 0.00 setrgbcolor', 0.5), ('0.00 0.00 1.00 setrgbcolor', 1.5), ('0.00 1.00 0.00 setrgbcolor', 3.5)]
    _, segments = draw(values, setValues='0.5,1.5,2.5,3.5', setParam='col')
    assert len({pen[0] for pen, *_ in segments}) == 4
    assert draw(values, setValues='0.5', setParam='line=off')[1] == []
