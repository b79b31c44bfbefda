"""The plot itself: set-up from settings and parameters, panels, labels, pictures and colour bars on the page."""

import re

import numpy as np
import pytest

from Yul import ContPlot, Domain, GeomBox, Grid, Image, MapPlot, Plot, PlotAttr, String, Yul, contour_map
from running import python

SETTINGS = ('device', 'geometry', 'inverse', 'background', 'icon', 'title', 'name', 'output', 'logo', 'draw', 'timezone',
            'parameter', 'color_table', 'color_label', 'plot_domain', 'inter', 'image_path')
MAP = 'll,45,0,41,31,1,1'
RED = '1.00 0.00 0.00 setrgbcolor'


@pytest.fixture(autouse=True)
def folder(tmp_path, monkeypatch):
    monkeypatch.chdir(tmp_path)
    yield tmp_path
    for name in SETTINGS:
        Yul.setResrc(name, '')


def hills(text=MAP, missing=0):
    domain = Domain(text)
    grid = Grid(domain.getNx(), domain.getNy())
    grid.setDomain(domain)
    y, x = np.indices((domain.getNy(), domain.getNx()))
    grid.values[:] = 10 * np.sin(x / 4) * np.cos(y / 3)
    if missing:
        grid.values[:missing, :missing] = -9999
    return grid


def page_of(*params, grid=None, contours='int=4', labels=None, panels=1):
    """The text of a page with a map on it."""
    plot = Plot()
    assert plot.open(','.join(['page.ps', 'de=p', 'color', *params])) == 1
    for panel in range(panels):
        if panel:
            assert plot.newPanel('') == 1
        layer = ContPlot()
        layer.setParam(contours)
        assert layer.draw(plot, grid or hills()) == 1
        for position, text in (labels or {}).items():
            assert plot.setLabel(position, text) == 1
        assert plot.drawBorder() == plot.drawLabels() == 1
    assert plot.close() == 1
    return open('page.ps').read()


def figures(page, kind='PL'):
    """The points of all lines or filled areas of a page, with the colour operator before each."""
    for match in re.finditer(rf'^%%{kind}:\d+\n(.*)\n(?:.*\n)*?np\n((?:\S+ \S+ (?:mv|ln)\n)+)', page, re.M):
        yield match[1], np.array([[float(n) for n in row.split()[:2]] for row in match[2].splitlines()])


def frames(page):
    """The rectangles drawn with the width of map frames."""
    found = []
    for match in re.finditer(r'^%%PL:5\n.*\n3\.0 dot lw\n.*\nnp\n((?:\S+ \S+ (?:mv|ln)\n)+)', page, re.M):
        points = np.array([[float(n) for n in row.split()[:2]] for row in match[1].splitlines()])
        found.append((*points.min(0), *points.max(0)))
    return found


def area(points):
    x, y = points.T
    return abs(np.dot(x, np.roll(y, -1)) - np.dot(y, np.roll(x, -1))) / 2


# ---- set-up ------------------------------------------------------------------------------------------------------

@pytest.mark.parametrize('setting, params, name', [
    ('postscript', 'a.ps', 'a.ps'),                   # the parameters go to a device without its own
    ('postscript,b.ps,eps', 'a.ps', 'b.ps'),          # and are ignored by one that has some
    ('postscript,b.ps,eps', 'a.ps,de=p', 'a.ps'),     # which an item of the parameters replaces as a whole
    ('hpgl', 'a.ps,de=postscript', 'a.ps'),
    ('Post', 'a.ps', 'a.ps'),
    ('p,', 'a.ps', 'yul.ps'),
])
def test_the_device_and_its_parameters(folder, setting, params, name):
    Yul.setResrc('device', setting)
    plot = Plot()
    assert plot.open(params) == plot.close() == 1
    assert [file.name for file in folder.iterdir()] == [name]
    assert ('EPSF' in (folder / name).read_text()) == (name == 'b.ps')


@pytest.mark.parametrize('setting', ['window', 'hpgl,x', 'meta', 'other', None])
def test_a_device_that_is_not_in_the_build_is_one_message(capfd, folder, setting):
    if setting is not None:
        Yul.setResrc('device', setting)
    assert Plot().open('a.ps') == 0
    said = capfd.readouterr()
    assert len((said.out + said.err).splitlines()) == 1 and list(folder.iterdir()) == []


@pytest.mark.parametrize('answer, is_drawn', [('p', True), ('Postscript', True), ('d', False), ('', False), ('x', False)])
def test_an_interactive_run_asks(folder, answer, is_drawn):
    script = ("from Yul import Plot, Yul\nYul.setResrc('inter', 'on')\nplot = Plot()\n"
              "print(plot.open('a.ps'), plot.close())\n")
    run = python(script, input=answer + '\n')
    assert run.stdout.startswith('Display (D) or Postscript (P): ')
    assert run.stdout.rstrip().endswith('1 1' if is_drawn else '0 0')


def test_settings_and_parameters_reach_the_page(capfd):
    Yul.setResrc('title', 'From the setting')
    assert '%%Title: Yul Graphics Display: From the setting\n' in page_of()
    Yul.setResrc('parameter', 'ti=From parameter')
    assert 'Display: From parameter\n' in page_of()
    assert 'Display: At hand\n' in page_of('ti=At hand')
    Yul.setResrc('title', None)
    Yul.setResrc('parameter', None)
    Yul.setResrc('name', 'demo')
    assert 'Display: demo\n' in page_of()
    assert RED in page_of('col=red') and RED not in page_of()
    Yul.setResrc('color_label', 'red')
    assert RED in page_of()
    capfd.readouterr()
    Yul.setResrc('color_table', 'nosuch.clr')
    page_of()
    assert 'nosuch.clr' in capfd.readouterr().err
    open('mine.clr', 'w').write('YulColors 1\ncolor mine 255 0 0\n')
    Yul.setResrc('color_table', None)
    Yul.setResrc('color_label', None)
    assert RED in page_of('ct=mine.clr', 'col=mine')


def test_geometry_and_drawing_lists(capfd):
    plot, box = Plot(), GeomBox()
    for text, result, values in (('800x600+10-20', 2, (800, 600, 10, -20)), ('800x600', 1, (800, 600, -9999, -9999)),
                                 ('+5+5', 3, (-9999, -9999, 5, 5)), ('800x600+5', 0, (1, 2, 3, 4)),
                                 ('', 0, (1, 2, 3, 4)), ('800x600-7.5+8', 2, (800, 600, -7.5, 8))):
        box.width, box.height, box.x, box.y = 1, 2, 3, 4
        assert plot.decodeGeometryStr(text, box) == result
        assert (box.width, box.height, box.x, box.y) == values
    for text, on in (('', ()), ('-map', set(range(13)) - {2}), ('map,-text', {2}), ('-all', ()), ('all', range(13)),
                     ('text', range(3, 10)), ('sum,text_lr', {0, 8}), ('data,grid,none', ()), ('Map', ()),
                     ('+map,bord', {2, 9}), ('plot,-plot,+data', {1})):
        assert plot.setDrawing(text) == 1
        assert {i for i in range(13) if plot.getDrawing(i)} == set(on), text
    plot.printDrawing()
    assert capfd.readouterr().out == ''.join(f'draw[{i}] = {int(i == 1)}\n' for i in range(13))
    assert plot.clearLabels() == 1 and capfd.readouterr().out == 'Plot labels cleared\n'
    attr = PlotAttr('red:wi=2:st=dsh:hi=1.5:fo=modern.fnt')
    attr.print()
    assert capfd.readouterr().out == ('PlotAttr co: red -9999 st: 2 he:  1.50 we: -9999.00 wi:  2.00 ex: -9999.00 '
                                      'fi: -9999 sh: -9999 fo: modern.fnt\n')


# ---- panels and labels -------------------------------------------------------------------------------------------

@pytest.mark.parametrize('params, rows, columns', [(['pan=2x3'], 2, 3), (['pan=2x3', 'full_lab'], 2, 3),
                                                   (['pan=2x3', 'full'], 2, 3), (['pan=4'], 2, 2), ([], 1, 1)])
def test_panels_stand_in_rows_and_columns(params, rows, columns):
    count = rows * columns
    boxes = frames(page_of(*params, panels=count))
    assert len(boxes) == count
    for i, (x1, y1, x2, y2) in enumerate(boxes):
        assert x2 - x1 == pytest.approx(boxes[0][2] - boxes[0][0], abs=0.02)
        assert i % columns == 0 or x1 > boxes[i - 1][2] - 0.02
        assert i < columns or y2 < boxes[i - columns][1] + 0.02
    assert boxes[0][0] >= 0 and boxes[-1][2] <= 756 and boxes[0][3] <= 576 and boxes[-1][1] >= 0


def test_shared_labels_leave_more_room_for_the_maps():
    def size(*params):
        x1, y1, x2, y2 = frames(page_of(*params, panels=4))[0]
        return (x2 - x1) * (y2 - y1)
    assert size('pan=2x2', 'full') > size('pan=2x2') > 1.1 * size('pan=2x2', 'full_lab')
    strokes = [len(re.findall('%%PL', page_of('pan=2x2', *more, panels=4))) for more in ([], ['full_lab'])]
    assert strokes[0] < strokes[1]  # no tick labels inside the page


def test_the_next_panel_after_the_last_is_the_first():
    boxes = frames(page_of('pan=1x2', panels=3))
    assert boxes[2] == boxes[0] != boxes[1]


def test_the_domain_of_the_settings_holds_in_every_panel():
    def lefts():
        plot, layer = Plot(), ContPlot()
        assert plot.open('page.ps,de=p,pan=1x3') == 1
        for grid in hills(), hills('ll,45,10,41,31,1,1'):
            assert layer.draw(plot, grid) == 1
            yield plot.getFrame().x1
            assert plot.newPanel('') == 1
    assert list(lefts()) == [-20, -20]  # in the plane of each grid, about its own centre
    Yul.setResrc('plot_domain', 'll,45,5,31,21,1,1')
    assert list(lefts()) == [-15, -15]


def test_between_all_steps_the_graph_draws_in_the_map():
    plot = Plot()
    assert plot.open('page.ps,de=p,bar') == 1
    graph, layer = plot.getGraph(), ContPlot()
    layer.setParam('fill,lab,hilo')
    steps = (lambda: layer.draw(plot, hills()), lambda: layer.drawLines(plot, hills()), lambda: layer.drawTexts(plot),
             plot.drawGraticule, plot.drawBorder, plot.drawLabels, plot.drawBar, lambda: plot.newPanel(''))
    assert [(step(), graph.getTran()) for step in steps] == [(1, 0)] * len(steps)


@pytest.mark.parametrize('layer', ['contours', 'their labels', 'graticule', 'map'])
def test_every_layer_takes_a_colour_by_its_index(layer):
    plot, contours, background, attr = Plot(), ContPlot(), MapPlot(), PlotAttr()
    assert plot.open('page.ps,de=p,color') == plot.setDomain(Domain('ll,46,10,41,31,0.5,0.5')) == 1
    attr.color = plot.getColorMap().getInd('red')
    background.clearLayers()
    assert contours.setLine(attr) == contours.setLabel(attr) == background.setLayer('coast', attr) == 1
    steps = {'contours': lambda: contours.drawLines(plot, hills()), 'map': lambda: background.draw(plot),
             'graticule': lambda: plot.drawGraticule(attr, 5.0, 5.0), 'their labels': lambda: contours.draw(plot, hills())}
    if layer == 'their labels':
        contours.setLine(PlotAttr('blue'))
    assert steps[layer]() == plot.close() == 1
    used = {color for color, _ in figures(open('page.ps').read())}
    assert used - {'0.00 0.00 1.00 setrgbcolor'} == {RED}


def test_corner_labels_stand_where_they_are_named():
    x1, y1, x2, y2 = frames(page_of(labels={}))[0]
    Yul.setResrc('draw', '-bord')
    empty = {position: '' for position in ('ul', 'uc', 'ur', 'll', 'lc', 'lr')}
    without = list(figures(page_of('draw', labels=empty)))
    for position in empty:
        page = page_of('draw', labels=empty | {position: 'Xx'})
        ink = np.concatenate([points for _, points in figures(page)][len(without):])
        x, y = ink.mean(0)
        assert (y > y2) == (position[0] == 'u') and (y < y1) == (position[0] == 'l')
        place = (x - x1) / (x2 - x1)
        assert {'l': place < 0.1, 'c': 0.4 < place < 0.6, 'r': place > 0.9}[position[1]], position


def test_labels_hold_facts_of_the_field():
    grid = hills()
    grid.setVar('TMP')
    grid.setLevel('850mb')
    plot, layer, text = Plot(), ContPlot(), String()
    assert plot.open('page.ps,de=p,ti=Title') == 1
    layer.setInterval(2.5)
    assert layer.draw(plot, grid) == 1
    for codes, expected in (('%n at %l', 'TMP at 850 hPa'), ('%c/%T', '2.5/Title'), ('{%m: }%n', 'TMP'),
                            ('%%%q', '%q'), ('a\\nb', 'a\nb'), ('{open', 'open'), ('}', '}'), ('%', '%')):
        assert plot.formatLabel(codes, text) == 1 and text.get() == expected


# ---- pictures ----------------------------------------------------------------------------------------------------

def picture(name, width=6, height=4, color=0x00ff00):
    image = Image(width, height)
    for row in range(height):
        for column in range(width):
            image.setPixel(column, row, 0xff0000 if column == row == 0 else color)
    assert image.write(name) == 1


def images(page):
    """Lower left corner, size and samples of the images of a page."""
    return [(*map(int, match[:4]), match[4].replace('\n', '')) for match in re.findall(
        r'^gsave\n(\S+) (\S+) translate\n(\d+) (\d+) scale\n(?:.*\n){4}((?:[0-9A-F]+\n)+)grestore$', page, re.M)]


def test_logos_and_labels_that_are_pictures(folder, capfd):
    picture('logo.png')
    [(left, bottom, width, height, samples)] = images(page_of('lo=logo.png'))
    x1, y1, x2, y2 = frames(page_of())[0]
    assert (width, height) == (6, 4) and samples[:12] == 'FF000000FF00'
    assert x2 - 30 < left + 6 < x2 and y1 < bottom < y1 + 30
    [(left, bottom, *_)] = images(page_of('lo=logo:ul'))
    assert x1 < left < x1 + 30 and y2 - 30 < bottom + 4 < y2
    samples = images(page_of('lo=logo', 'trans_col=lime'))[0][4]
    assert samples == 'FF0000' + 'FFFFFF' * 23
    [(left, bottom, *_)] = images(page_of(labels={'ul': 'im:logo.png'}))
    assert left == pytest.approx(x1, abs=1) and bottom > y2
    [(left, bottom, *_)] = images(page_of(labels={'cc'.replace('cc', 'lr'): 'if:logo.png:0.5:0.25'}))
    assert (left + 6, bottom) == (378, 189)
    (folder / 'pics').mkdir()
    (folder / 'logo.png').rename(folder / 'pics' / 'other.png')
    Yul.setResrc('image_path', 'pics')
    assert len(images(page_of('lo=other'))) == 1
    capfd.readouterr()
    assert images(page_of('lo=nosuch')) == [] and capfd.readouterr().err == 'Logo not found: nosuch\n'
    assert images(page_of(labels={'ul': 'im:'})) == []
    picture('large.png', 900, 900)
    assert images(page_of('lo=large'))[0][2] < 0.16 * (x2 - x1)


@pytest.mark.parametrize('position, place', [('ul', (0, 1)), ('lr', (1, 0)), ('cc', (0.5, 0.5)), ('ur', (1, 1))])
def test_pictures_without_a_place_stand_inside_the_frame(position, place):
    picture('logo.png')
    x1, y1, x2, y2 = frames(page_of())[0]
    plot = Plot()
    plot.open('page.ps,de=p')
    assert ContPlot().draw(plot, hills()) == 1 and plot.drawImage('logo.png', -9999.0, -9999.0, position) == 1
    assert plot.drawBorder() == plot.close() == 1
    [(left, bottom, width, height, _)] = images(open('page.ps').read())
    assert x1 <= left and left + width <= x2 and y1 <= bottom and bottom + height <= y2
    assert abs(left + width / 2 - x1 - place[0] * (x2 - x1)) < 30 and abs(bottom + height / 2 - y1 - place[1] * (y2 - y1)) < 30


def test_pictures_at_any_place(capfd):
    picture('logo.png')
    plot = Plot()
    assert plot.drawImage('logo.png', 0.5, 0.5, 'cc') == 0  # not open
    plot.open('page.ps,de=p')
    assert plot.drawImage('logo.png', 0.5, 0.25, 'cc') == plot.drawImage('logo.png', 0.5, 0.25, 'ur') == 1
    assert plot.drawImage('logo.png', 0.5, 0.25, None) == 1
    assert plot.drawImage('logo.png', 0.5, 0.25, 'xx') == plot.drawImage('logo.png', float('nan'), 0.0, 'cc') == 0
    assert plot.drawImage(None, 0.5, 0.25, 'cc') == 0
    plot.close()
    corners = [found[:2] for found in images(open('page.ps').read())] or re.findall(r'(\d+) (\d+) translate',
                                                                                 open('page.ps').read())
    assert [tuple(map(int, corner)) for corner in corners] == [(375, 187), (372, 185), (378, 189)]


def test_a_device_without_a_picture_says_so(capfd):
    plot = Plot()
    plot.open('page.ps,de=p')
    capfd.readouterr()
    assert plot.saveImage('demo') == plot.saveImage('demo', 'gif') == 0
    assert capfd.readouterr().err == 2 * 'Plot::saveImage: The device has no picture to copy\n'
    assert plot.saveImage('demo', 'bmp') == 0 and 'bmp' in capfd.readouterr().err
    assert plot.close() == 1
    Yul.setResrc('output', 'png24')
    plot.open('page.ps,de=p')
    assert plot.close() == 0 and open('page.ps').read().endswith('%%EOF\n')


def test_gif_files_hold_the_picture(tmp_path):
    pillow = pytest.importorskip('PIL.Image')
    random = np.random.default_rng(1)
    for width, height, colors in ((1, 1, 1), (5, 7, 2), (301, 200, 256), (90, 70, 17), (64, 64, 3000)):
        image, palette = Image(width, height), random.integers(0, 1 << 24, colors)
        for row in range(height):
            for column in range(width):
                image.setPixel(column, row, int(palette[(row * column + column // 7) % colors]))
        image.setPixel(width - 1, 0, -1)
        assert image.writeGif('a.gif') == 1
        image.toIndexed()
        read = np.array(pillow.open('a.gif').convert('RGBA'), int)
        own = np.array([[image.getPixel(column, row) for column in range(width)] for row in range(height)])
        assert np.array_equal(own < 0, read[..., 3] == 0)
        packed = read[..., 0] << 16 | read[..., 1] << 8 | read[..., 2]
        assert np.array_equal(own[own >= 0], packed[own >= 0])
    assert Image().writeGif('b.gif') == Image(2, 2).writeGif('no/such/b.gif') == Image(2, 2).writeGif(None) == 0


# ---- bands and their bar -----------------------------------------------------------------------------------------

def test_texts_wait_for_what_comes_over_the_lines(folder, capfd):
    def page_in(steps):
        plot, contours = Plot(), ContPlot()
        assert contours.setParam('int=2,lab=red,hilo,fill') and plot.open('two.ps,de=p,color')
        steps(plot, contours, hills())
        assert plot.close() and contours.drawTexts(plot) == 0
        return re.findall(r'.* (?:mv|ln|setrgbcolor)$', (folder / 'two.ps').read_text(), re.MULTILINE)

    def at_once(plot, contours, grid):
        assert contours.draw(plot, grid) and contours.drawTexts(plot)  # nothing is left to draw

    def in_two_steps(plot, contours, grid):
        assert contours.drawLines(plot, grid) and contours.drawTexts(plot)

    def with_a_line_between(plot, contours, grid):
        assert contours.drawLines(plot, grid)
        plot.getGraph().setLineColor(0x00ff00)
        plot.getGraph().drawLine(0, 0, 1, 1)
        assert contours.drawTexts(plot)

    assert page_in(at_once) == page_in(in_two_steps)
    page = page_in(with_a_line_between)
    assert page.index('0.00 1.00 0.00 setrgbcolor') < page.index('1.00 0.00 0.00 setrgbcolor')
    assert capfd.readouterr().err.count('ContPlot::drawTexts: The plot is not open') == 3


def test_bands_cover_the_map_without_gaps():
    page = page_of(contours='val=-20:-5:0:5,fill=#000000:#0000FF:#00FF00:#FF0000,line=off', labels={})
    x1, y1, x2, y2 = frames(page)[0]
    bands = [(color, area(points)) for color, points in figures(page, 'FA')]
    by_color = {}
    for color, size in bands:
        by_color[color] = by_color.get(color, 0) + size
    covered = [by_color[color] for color in dict.fromkeys(color for color, _ in bands)]
    assert covered[0] == pytest.approx((x2 - x1) * (y2 - y1), rel=1e-3)  # all is above the lowest level
    assert covered == sorted(covered, reverse=True)
    values = hills().values
    middle = (values[1:, 1:] + values[:-1, :-1] + values[:-1, 1:] + values[1:, :-1]) / 4
    for size, level in zip(covered, (-20, -5, 0, 5)):
        assert size / covered[0] == pytest.approx((middle >= level).mean(), abs=0.03)


def test_bands_leave_out_what_is_missing_off_or_below():
    whole = page_of(contours='val=-20,fill=red,line=off')
    holed = page_of(contours='val=-20,fill=red,line=off', grid=hills(missing=10))
    sizes = [sum(area(points) for _, points in figures(page, 'FA')) for page in (whole, holed)]
    assert sizes[1] / sizes[0] == pytest.approx(1 - 100 / 1200, rel=1e-3)
    above = page_of(contours='val=5,fill=red,line=off')
    assert 0 < sum(area(points) for _, points in figures(above, 'FA')) < 0.4 * sizes[0]
    parts = page_of(contours='val=-20:-5:5,fill=red:off:red,line=off')
    size = sum(area(points) for _, points in figures(parts, 'FA'))
    values = hills().values
    assert size / sizes[0] == pytest.approx((abs(values) >= 5).mean(), abs=0.05)


def test_the_bar_shows_the_colours_in_their_order():
    colors = ['0.00 0.00 1.00 setrgbcolor', '0.00 1.00 0.00 setrgbcolor', RED]
    contours = 'val=-8:0:4,fill=blue:lime:red,line=off'
    plain = len(list(figures(page_of(contours=contours), 'FA')))
    for place, axis in (('bar', 1), ('bar=bottom', 0)):
        page = page_of(place, contours=contours)
        boxes = list(figures(page, 'FA'))[plain:]
        assert [color for color, _ in boxes] == colors
        lows = [points[:, axis].min() for _, points in boxes]
        assert lows == sorted(lows)
        x1, y1, x2, y2 = frames(page)[0]
        assert all(points[:, 0].min() > x2 if axis else points[:, 1].max() < y1 for _, points in boxes)
        ink = np.concatenate([points for _, points in figures(page)])
        assert ink.min() >= 0 and (ink.max(0) <= (756, 576)).all()
    assert len(list(figures(page_of('bar=off', contours=contours), 'FA'))) == plain
    shared = page_of('bar', 'pan=2x2', contours=contours, panels=4)
    full = page_of('bar', 'pan=2x2', 'full_lab', contours=contours, panels=4)
    assert len(list(figures(shared, 'FA'))) == 4 * plain + 3 and len(list(figures(full, 'FA'))) == 4 * plain + 12


# ---- one call ----------------------------------------------------------------------------------------------------

def test_a_map_in_one_call(folder):
    page = contour_map(hills(), 'map.ps', interval=5, title='Hills', fill=True)
    assert page.path == str(folder / 'map.ps') and page.data == (folder / 'map.ps').read_bytes()
    assert page.data.endswith(b'%%EOF\n') and b'%%FA:' in page.data
    long_name = 'a folder, with a comma/' + 60 * 'x' + '.ps'
    (folder / 'a folder, with a comma').mkdir()
    assert contour_map(hills(), long_name).data == (folder / long_name).read_bytes()
    memory = contour_map(hills(), domain='merc:0:0,45,0,21,15,1', color=False)
    assert memory.path is None and b'setrgbcolor' not in memory.data
    memory.save('saved.ps')
    assert (folder / 'saved.ps').read_bytes() == memory.data
    assert sorted(file.name for file in folder.glob('*.*')) == ['map.ps', 'saved.ps']


@pytest.mark.parametrize('arguments, words', [
    (dict(domain='nowhere'), 'nowhere'), (dict(interval=-1), 'interval'), (dict(levels='1,x'), 'levels'),
    (dict(texts={'xx': 'y'}), 'xx'), (dict(domain='merc:0:0,-45,0,21,15,1'), 'no values on this map'),
    (dict(domain='ll,-45,0,41,31,1,1'), 'no values on this map'), (dict(domain='ll,45,170,11,11,1,1'), 'no values'),
    (dict(domain='stereo:-90:0,-80,0,21,21,1'), 'no values'),
])
def test_what_cannot_be_drawn_is_an_error_and_leaves_no_file(folder, arguments, words):
    with pytest.raises(ValueError, match=words):
        contour_map(hills(), 'map.ps', **arguments)
    assert list(folder.iterdir()) == []


def test_fields_without_values_or_place_on_disk(folder):
    with pytest.raises(ValueError, match='no values'):
        contour_map(Grid(3, 3))
    with pytest.raises(OSError):
        contour_map(hills(), 'no/such/folder/map.ps')
    flat = hills()
    flat.values[:] = 7
    page = contour_map(flat, labels=False, graticule=False)
    assert b'%%PL:2\n' in page.data  # ticks and labels, but no cell sides
    assert page.data.count(b'%%PL:2\n') < 200


def test_pages_and_plots_show_themselves(folder):
    page = contour_map(hills())
    if page.png() is None:
        pytest.skip('Ghostscript is not installed')
    shown = page._repr_png_()
    assert shown.startswith(b'\x89PNG')
    contour_map(hills(), 'map.png', portrait=True)
    assert (folder / 'map.png').read_bytes().startswith(b'\x89PNG')
    (folder / 'map.png').unlink()
    for name in ('map.eps', 'map.ps'):
        image = Image()
        contour_map(hills(), name).save('shown.png')
        assert image.read('shown.png') == 1
        assert {image.getPixel(column, row) for row in range(0, image.getHeight(), 3)
                for column in range(0, image.getWidth(), 3)} != {0xffffff}
    plot = Plot()
    assert plot._repr_png_() is None
    plot.open('plot.ps,de=p')
    assert plot._repr_png_() is None  # not finished
    plot.drawBorder()
    plot.close()
    assert plot._repr_png_().startswith(b'\x89PNG')
