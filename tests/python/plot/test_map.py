"""Maps and map files through Python."""

import re

import pytest

import Yul
import _Yul
from Yul import Domain, EarthPoint, EarthPoints, EarthRange, MapFile, MapFileHeader, MapPlot, Plot, PlotAttr


@pytest.fixture
def draw(tmp_path, monkeypatch):
    """Draws on a page of the Alps and returns the page."""
    monkeypatch.chdir(tmp_path)

    def draw(background, draw_on=lambda plot: None):
        plot = Plot()
        assert plot.open('map.ps,de=p,color') and plot.setDomain(Domain('ll,46,10,41,31,0.5,0.5'))
        result = background.draw(plot)
        draw_on(plot)
        assert plot.close()
        return result, (tmp_path / 'map.ps').read_text()

    return draw


def test_layers_are_drawn_with_their_attributes(draw):
    background = MapPlot()
    background.clearLayers()
    assert background.setLayer('coast', 'red:wi=5') and background.setLayer('land', PlotAttr('lime'))
    assert background.setDetail(50) and background.getDetail() == 50
    result, page = draw(background)
    assert result == 1
    assert page.index('0.00 1.00 0.00 setrgbcolor') < page.index('1.00 0.00 0.00 setrgbcolor')
    assert page.index('%%FA') < page.index('%%PL') and page.rindex('%%FA') < page.index('%%PL')


def test_detail_follows_the_scale_unless_it_is_set(draw):
    points = {}
    for detail in (0, 50, 110):
        background = MapPlot()
        background.setParam(f'none,coast,detail={detail}')
        points[detail] = draw(background)[1].count(' ln\n')
    assert points[0] == points[50] > 3 * points[110] > 0


def test_a_file_of_ones_own_is_drawn(draw, tmp_path):
    header, line, file = MapFileHeader(), EarthPoints(), MapFile()
    assert header.setName('route') and header.setScale(10) and header.setKind(MapFileHeader.LINE)
    for lat, lon in ((46, 6), (47, 9), (45, 12), (46, 179), (46, -179)):
        line.add(EarthPoint(lat, lon))
    assert file.addLayer(header) and file.addLine(line, 2) and file.write('own.map')
    assert file.open('own.map') and file.isOpen() and file.getNumLayers() == 1
    copy, reach = EarthPoints(), EarthRange()
    assert file.getLine(0, 0, copy) and [tuple(p) for p in copy] == [tuple(p) for p in line]
    assert file.getRange(0, 0, reach) and (reach.lat1, reach.lat2) == (45, 47)
    assert file.getRank(0, 0) == 2 and file.findLayer('route', 50) == 0 and file.getHeader(0).getName() == 'route'

    background = MapPlot()
    background.setParam('none,file=own.map,route=blue:wi=3')
    result, page = draw(background)
    assert result == 1 and '0.00 0.00 1.00 setrgbcolor' in page
    assert len(re.findall(r' (?:mv|ln)$', page, re.MULTILINE)) >= 4


def test_the_graticule_is_one_of_the_layers(draw):
    background, plain = MapPlot(), MapPlot()
    background.setParam('none,grid=red:st=1,step=10')
    plain.setParam('none,grid=red:st=1,step=5')
    coarse, fine = (draw(layers)[1].count('%%PL') for layers in (background, plain))
    assert 0 < coarse < fine


@pytest.mark.parametrize('wanted, lines, areas', [
    (False, False, False), (True, True, False), ('land,sea', True, True), ('none,land', False, True),
])
def test_contour_map_has_a_map(tmp_path, root, wanted, lines, areas):
    grid = next(iter(Yul.GribFile(str(root / 'examples' / 'data' / 'height500.grib2'))))

    def longest(page):
        return max(map(int, re.findall(r'^%%PL:(\d+)$', page, re.MULTILINE)))

    pages = []
    for i, map_wanted in enumerate((wanted, False)):
        name = tmp_path / f'{i}.ps'
        Yul.contour_map(grid, name, interval=60, map=map_wanted, graticule=False)
        pages.append(name.read_text())
    assert ('%%FA' in pages[0]) == areas
    assert (longest(pages[0]) > 2 * longest(pages[1])) == lines
    if areas and lines:  # areas, then the contours, then coastlines
        areas_end = pages[0].rindex('%%FA')
        assert areas_end < pages[0].index('%%PL:2\n') < pages[0].index(f'%%PL:{longest(pages[0])}\n')


def test_every_operation_takes_absurd_arguments(capfd):
    nothing, number = float('nan'), 2**31 - 1
    background, file, header, plot = MapPlot(), MapFile(), MapFileHeader(), Plot()
    for text in (None, '', ',', '=', 'x' * 1000000, '\udcff', '%s%n', 'coast=' + 'wi=1e999:' * 1000):
        background.setParam(text), background.setLayer(text, text or ''), background.setFile(text), background.isLayer(text)
        header.setName(text), file.findLayer(text, number), file.setSource(text), file.write(text and None), file.open(text)
        assert background.drawLines(plot) == 0
    for value in (-number, number, 0):
        background.setDetail(value), background.setRank(value)
        header.setScale(value), header.setKind(value), header.setUnits(value)
        file.getHeader(value).print(), file.getRank(value, value), file.getLine(value, value, EarthPoints())
    background.setSteps(nothing, float('inf'))
    points = EarthPoints()
    points.add(EarthPoint(nothing, nothing))
    assert file.addLine(points, 0) == 0
    assert _Yul.MapFileHeader_AREA == 1


def test_objects_are_freed_with_their_python_owners():
    for _ in range(200):
        file = MapFile()
        assert file.open('yul.map')
        MapPlot(MapPlot()), MapFileHeader(file.getHeader(0))
