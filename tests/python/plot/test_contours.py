"""Contour pages read back: the lines lie where the field has their level."""

import re

import numpy
import pytest

from Yul import ContPlot, Domain, EarthPoint, Grid, GridBox, Plot, PlotAttr, Point, String, Tools, Yul

INTERVAL = 5.0
LINE = re.compile(r'^%%PL:2\n.*\n(.*) dot lw\n.*\nnp\n(\S+) (\S+) mv\n(\S+) (\S+) ln\nstroke$', re.M)


@pytest.fixture
def page(tmp_path, monkeypatch):
    """A file name in the present folder: a device keeps only 60 characters."""
    monkeypatch.chdir(tmp_path)
    Yul.setResrc('device', 'postscript')
    yield tmp_path / 'page.ps'
    Yul.setResrc('device', '')


def wavy(text):
    """A grid with waves round the earth, 0 to about 100."""
    domain = Domain(text)
    grid = Grid(domain.getNx(), domain.getNy())
    grid.setDomain(domain)
    earth = EarthPoint()
    values = grid.values
    for row in range(grid.getNy()):
        for column in range(grid.getNx()):
            grid.tran(row * grid.getNx() + column, earth)
            lat, lon = numpy.radians([earth.lat, earth.lon])
            values[row, column] = 50 + 30 * numpy.sin(lat) + 20 * numpy.cos(lat) * numpy.cos(3 * lon)
    return grid


def finish(plot, page):
    """Closes the plot; its lines as ((x1, y1), (x2, y2)), and a function from such a place to an earth position."""
    frame = plot.getFrame()
    window = frame.x1, frame.y1, frame.x2, frame.y2
    domain = Domain(plot.getDomain().get())
    graph = plot.getGraph()
    graph.setTran(0)
    view = graph.getDeviceViewport()
    device = view.x1, view.y1, view.x2, view.y2
    assert plot.close() == 1

    def to_earth(x, y):
        point = Point(window[0] + (x - device[0]) / (device[2] - device[0]) * (window[2] - window[0]),
                      window[1] + (y - device[1]) / (device[3] - device[1]) * (window[3] - window[1]))
        earth = EarthPoint()
        assert domain.tran(point, earth) == 1
        return earth

    lines = []
    for found in LINE.findall(page.read_text()):
        x1, y1, x2, y2 = (float(number) for number in found[1:])
        lines.append(((x1, y1), (x2, y2)))
    return lines, to_earth


@pytest.mark.parametrize('grid_text, plot_text', [
    ('ll,45,0,61,41,1,1', ''),
    ('ll,45,180,61,41,1,1', 'lambert:45:180:30:60,45,180,61,41,1,1'),
    ('pstereo:90:-90,60,-90,61,51,2,2', ''),
])
def test_contours_lie_where_the_field_has_the_level(page, grid_text, plot_text):
    grid = wavy(grid_text)
    plot = Plot()
    assert plot.open('page.ps') == 1
    if plot_text:
        assert plot.setDomain(Domain(plot_text)) == 1
    contours = ContPlot()
    contours.setInterval(INTERVAL)
    assert contours.draw(plot, grid) == 1
    lines, to_earth = finish(plot, page)
    assert len(lines) > 200
    seen = 0
    for line in lines:
        for place in line:
            value = grid.getValue(to_earth(*place))
            if value != -9999:
                assert abs(value - INTERVAL * round(value / INTERVAL)) < INTERVAL / 100
                seen += 1
    assert seen > 1.8 * len(lines)


@pytest.mark.parametrize('map_text', ['', 'latlon,0,0,71,37,5,5', 'stereo:90:0,90,0,40,40,2.5', 'merc,20,0,41,31,1,1'])
def test_a_field_round_the_earth_has_no_seam(page, map_text):
    grid = wavy('latlon,0,177.5,72,37,5,5')
    plot = Plot()
    assert plot.open('page.ps') == 1
    if map_text:
        assert plot.setDomain(Domain(map_text)) == 1
    contours = ContPlot()
    contours.setInterval(INTERVAL)
    assert contours.draw(plot, grid) == 1
    lines, to_earth = finish(plot, page)
    in_gap = sum(-5 < to_earth((x1 + x2) / 2, (y1 + y2) / 2).lon < 0 for (x1, y1), (x2, y2) in lines)
    assert (in_gap > 1) == (map_text != '')  # its own area ends before the seam


def test_a_second_layer_is_drawn_in_the_domain_of_the_first(page):
    plot, contours = Plot(), ContPlot()
    assert plot.open('page.ps') == contours.setInterval(INTERVAL) == 1
    first = wavy('ll,45,0,41,31,1,1')
    for grid in first, wavy('ll,40,10,41,31,2,2'):
        assert contours.draw(plot, grid) == 1
        assert (plot.getFrame().x1, plot.getFrame().y2) == (-20, 60)
    lines, to_earth = finish(plot, page)
    values = [first.getValue(to_earth(*place)) for line in lines for place in line]
    known = [value for value in values if value != -9999]
    assert len(known) > 0.9 * len(values) > 300
    assert all(abs(value - INTERVAL * round(value / INTERVAL)) < INTERVAL / 10 for value in known)


def test_names_that_scripts_rely_on(page):
    attr = PlotAttr('red:wi=2:st=dsh', 'blue:fi=3%')
    assert (attr.color_name, attr.width, attr.style, attr.fill, attr.color) == ('red', 2, 2, 13, -9999)
    assert Tools.calcInterval(1000.0, 0.0, 9) == 112
    box = GridBox()
    box.setTweak(0.001)
    box.setValues(1.0, 0.0, 0.0, 1.0)
    box.setPoints(Point(0, 1), Point(1, 1), Point(0, 0), Point(1, 0))
    assert box.setLevel(0.5) == box.getNumCross() == 4
    assert (box.getCross(0).x, box.getCross(0).y) == (0.5, 1)
    assert (box.getPosition(), box.getSaddle(), box.getSide(2)) == (0, 2, 0.5)

    plot = Plot()
    assert plot.setDrawing('map,-text') == 1
    assert [plot.getDrawing(i) for i in range(13)] == [0, 0, 1] + [0] * 10
    assert [plot.getLabelPosIndex(name) for name in ('ul', 'UR', 'lr', 'cc', 'xx')] == [0, 2, 5, 7, -1]
    assert plot.setLabel('cc', 'only images stand there') == 0
    out = String()
    assert plot.open('page.ps') == plot.setLabel('ul', '%p') == plot.formatLabel('%p', out) == 1
    assert out.get() == Yul.getProgramName()
    assert plot.drawBorder() == plot.drawLabels() == plot.close() == 1
    assert plot.close() == 0


def test_levels_are_chosen_for_the_grid():
    grid = Grid(3, 3)
    grid.values[:] = numpy.linspace(0, 100, 9).reshape(3, 3)
    contours = ContPlot()
    contours.setInterval(10.0)
    assert contours.calcLevels(grid) == 1
    assert [contours.getLevel(i) for i in range(contours.getNumLevels())] == [10.0 * i for i in range(12)]
    assert contours.setValues('5,50') == contours.calcLevels(grid) == 1
    assert [contours.getLevel(i) for i in range(3)] == [5, 50, 101]
    assert contours.setValues('5,x') == contours.setInterval(-1.0) == contours.setInterval(float('nan')) == 0
    assert contours.calcLevels(Grid()) == 0
