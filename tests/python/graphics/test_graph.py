"""Drawing from Python: what reaches the page, and what is refused."""

import math
import os
import re
import shutil
import subprocess

import pytest

from Yul import ColorMap, Graph, GTran, Image, Point, Points, Rect, RGB


@pytest.fixture
def graph(tmp_path, monkeypatch):
    """A portrait colour page whose window is the page in points."""
    monkeypatch.chdir(tmp_path)
    made = Graph()
    assert made.open('postscript', 'page.ps,port,color') == 1
    made.setWindow(Rect(0.0, 0.0, 756.0, 576.0))
    made.setViewport(made.getMaxViewport())
    yield made
    made.close()


needs_ghostscript = pytest.mark.skipif(shutil.which('gs') is None, reason='Ghostscript is not installed')


def rendered(name, *options):
    """The octets of a page as a gray picture; Ghostscript has nothing to say of it."""
    run = subprocess.run(['gs', '-q', '-dNOPAUSE', '-dBATCH', '-sDEVICE=pgmraw', '-sOutputFile=page.pgm', *options, name],
                         capture_output=True, text=True)
    assert (run.returncode, run.stdout, run.stderr) == (0, '', '')
    with open('page.pgm', 'rb') as picture:
        return picture.read()


def drawn(graph):
    """What stands on the page between prolog and trailer."""
    graph.close()
    with open('page.ps') as page:
        text = page.read()
    return text[text.index('\n', text.index('%%Yul Plot')) + 1:text.index('%%End of plot')]


def test_every_figure_reaches_the_page(graph):
    line = Points()
    for place in ((10.0, 10.0), (20.0, 15.0), (30.0, 10.0)):
        line.add(Point(*place))
    image = Image(2, 1)
    image.setPixel(1, 0, 0x0000ff)
    graph.setTextHeight(8.0)
    results = [
        graph.drawLine(1.0, 2.0, 3.0, 4.0), graph.drawLine(Point(1.0, 2.0), Point(3.0, 4.0)), graph.drawLine(line),
        graph.drawRect(Rect(1.0, 1.0, 9.0, 9.0)), graph.drawCircle(50.0, 50.0, 5.0), graph.drawFill(line),
        graph.drawFill(Rect(1.0, 1.0, 9.0, 9.0)), graph.drawFillarea(line), graph.drawText(5.0, 5.0, 'Zürich −5 °C'),
        graph.drawText(Point(5.0, 5.0), 'x'), graph.drawTextLine(5.0, 5.0, 'x'), graph.drawFormText(5.0, 5.0, 'x'),
        graph.drawMark(5.0, 5.0), graph.drawMarkLine(5.0, 5.0, 9.0), graph.drawSymbol(9.0, 9.0, 'rain', 9.0),
        graph.drawImage(image, 5.0, 5.0), graph.drawImage(image, 0, 5.0, 5.0), graph.setClip(Rect(0.0, 0.0, 9.0, 9.0)),
        graph.setClip(),
    ]
    assert results == [1] * len(results)
    page = drawn(graph)
    assert page.startswith('%%PL:2\n0.00 0.00 0.00 setrgbcolor\n1.0 dot lw\n[] 0 setdash\nnp\n1.00 2.00 mv\n3.00 4.00 ln\nstroke\n')
    assert page.count('FFFFFF0000FF\n') == 2
    assert len(re.findall('initclip', page)) == 2


def test_colors_become_values_of_the_device(graph):
    colors = ColorMap(300)
    assert colors.read('yul.clr') == 1
    for i in range(colors.getNum()):
        rgb = RGB()
        colors.get(i, rgb)
        colors.setValue(i, graph.allocColor(rgb))
    assert colors.getValue('orange') == 0xffa500
    assert colors.getValue(colors.getInd('#FF8000')) == 0  # not allocated yet
    assert graph.setLineColor(colors.getValue('red')) == 1
    assert graph.setLineColor(colors.getValue('red')) == 0
    graph.drawLine(0.0, 0.0, 1.0, 1.0)
    assert '1.00 0.00 0.00 setrgbcolor' in drawn(graph)


def test_transforms_go_both_ways(graph):
    page, back, other = GTran(), Point(), Point()
    device = Rect()
    device.setu(0.0, 576.0, 756.0, 0.0)
    page.set(device)
    assert page.getNdc().y2 == pytest.approx(576 / 756)
    assert page.tranWindowPlotX(50.0) == 30000.0
    assert graph.tranPlotWindow(378.0, 288.0, back) == 1
    assert (back.x, back.y) == pytest.approx((378, 288))
    graph.setWindow(2, Rect(-1.0, -1.0, 1.0, 1.0))
    graph.setViewport(2, graph.getMaxViewport())
    assert graph.tranWindow(0, 378.0, 288.0, 2, other) == 1
    assert (other.x, other.y) == pytest.approx((0, 0), abs=1e-6)
    assert graph.tranWindow(0, 378.0, 288.0, 4, other) == 0


def test_numbers_that_are_none_draw_nothing(graph):
    bad = Points()
    bad.add(Point(math.nan, 0.0))
    bad.add(Point(1.0, math.inf))
    assert graph.drawLine(bad) == 0
    assert graph.drawText(math.nan, math.inf, 'x' * 1000000) == 0
    assert graph.drawCircle(math.nan, 0.0, -math.inf) == 0
    assert graph.drawMarkLine(0.0, 0.0, math.inf) == 0
    assert graph.setWindow(Rect(math.nan, 0.0, 1.0, 1.0)) == 0
    assert graph.setViewportAspect(Rect(0.0, 0.0, 1.0, 1.0), math.nan) == 0
    assert graph.setTextDirection(math.inf, 0.0) == 0
    assert graph.drawText(0.0, 0.0, '\n' * 100000) == 1
    assert drawn(graph) == ''


def test_closed_graph_does_nothing(graph):
    graph.close()
    assert (graph.drawLine(0.0, 0.0, 1.0, 1.0), graph.setLineColor(5), graph.drawText(0.0, 0.0, 'x'), graph.close()) == (0,) * 4


def test_lost_output_is_reported(capfd):
    graph = Graph()
    graph.open('postscript', '/dev/full')
    assert graph.close() == 0
    assert capfd.readouterr().err == 'Postscript::close: unable to write all of the plot to: /dev/full\n'


@needs_ghostscript
@pytest.mark.parametrize('params', ['', ',eps', ',eps,port,color', ',color,scale=0.5,a4'])
def test_page_renders_without_a_word(tmp_path, monkeypatch, params):
    monkeypatch.chdir(tmp_path)
    graph = Graph()
    graph.open('postscript', f'page.ps{params}')
    graph.setTextHeight(0.05)
    graph.drawText(0.1, 0.3, 'Height (500 hPa)')
    graph.drawSymbol(0.5, 0.5, 'n6', 0.2)
    graph.setMarkType(4)
    graph.drawMarkLine(0.2, 0.6, 0.1)
    image = Image(45, 3)
    graph.drawImage(image, 0.7, 0.2)
    assert graph.close() == 1
    name = 'page.ps'
    if 'eps' in params:  # inside another document
        name = 'outer.ps'
        with open('page.ps') as inner, open(name, 'w') as outer:
            outer.write('%!PS\nsave /showpage {} def 0.5 0.5 scale\n' + inner.read() +
                        '\nrestore 0 0 moveto 9 9 lineto stroke\nshowpage\n')
    assert rendered(name, '-r40').count(0) > 100  # ink


@needs_ghostscript
@pytest.mark.parametrize('params, frame', [('eps,port', (8, 8, 748, 568)), ('eps', (44, 8, 564, 748))])
def test_picture_stands_at_its_box_in_a_document(tmp_path, monkeypatch, params, frame):
    """The frame, on the page of the picture itself, is found where the document puts it; nothing else changes."""
    monkeypatch.chdir(tmp_path)
    graph = Graph('postscript', f'in.eps,{params}')
    assert graph.open() == 1
    graph.setWindow(Rect(0.0, 0.0, 756.0, 576.0))
    upright = Rect(8.0, 8.0, 748.0, 568.0) if 'port' in params else Rect(8.0, 48.0, 748.0, 568.0)
    graph.drawFill(upright)
    assert graph.close() == 1
    with open('in.eps') as inner, open('out.ps', 'w') as outer:
        outer.write('%!PS\n/keep save def /showpage {} def 100 200 translate 0.25 0.25 scale\n' + inner.read() +
                    'keep restore\n10 10 20 20 rectfill\nshowpage\n')
    samples = rendered('out.ps', '-r72', '-dDEVICEWIDTHPOINTS=612', '-dDEVICEHEIGHTPOINTS=792')[-612 * 792:]
    dark = [(i % 612, 792 - i // 612) for i, sample in enumerate(samples) if sample < 128]
    inner = [place for place in dark if place[1] > 100]
    assert len(dark) - len(inner) == 400  # the document's own square, where it belongs
    box = (min(x for x, _ in inner), min(y for _, y in inner), max(x for x, _ in inner), max(y for _, y in inner))
    expected = [offset + 0.25 * side for offset, side in zip((100, 200, 100, 200), frame)]
    assert box == pytest.approx(expected, abs=1.5)


def test_directory_is_no_page(tmp_path, monkeypatch, capfd):
    monkeypatch.chdir(tmp_path)
    os.mkdir('folder')
    assert Graph().open('postscript', 'folder') == 0
    assert capfd.readouterr().err == 'Postscript: unable to output to file\n'
