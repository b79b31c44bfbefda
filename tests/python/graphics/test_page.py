"""The octets of a page, drawn through the functions of the module as any caller would."""

import math
import re

import pytest

import _Yul as y

START = '%%Begin plot\n%%Yul Plot: {}\n'
PROLOG = ('/inch {72 mul} def\n/dot {.33 mul} def\n/mv {moveto} def\n/ln {lineto} def\n/lw {setlinewidth} def\n'
          '/np {newpath} def\n/cp {closepath} def\n')
STATE = '2 setlinejoin\n1 dot lw\n[] 0 setdash\n'
NUMBER = re.compile(r'^(-?\d+\.\d\d) (-?\d+\.\d\d) (mv|ln)$', re.MULTILINE)


@pytest.fixture(autouse=True)
def _database(root):
    y.Yul_setDatabasePath(str(root / 'data'))


def rect(x1, y1, x2, y2):
    """A rectangle whose corners stay as they are given."""
    made = y.new_Rect()
    y.Rect_setu(made, float(x1), float(y1), float(x2), float(y2))
    return made


def corners(r):
    return y.Rect_x1_get(r), y.Rect_y1_get(r), y.Rect_x2_get(r), y.Rect_y2_get(r)


@pytest.fixture
def open_page(tmp_path, monkeypatch, capfd):
    """Opens a page in an empty folder; its window are the points of its area."""
    monkeypatch.chdir(tmp_path)

    def open_page(params='port', window=(0, 0, 756, 576)):
        graph = y.new_Graph()
        assert y.Graph_setDevice(graph, 'postscript', f'page.ps,{params}') == 1
        assert y.Graph_open(graph) == 1
        if window:
            assert y.Graph_setWindow(graph, rect(*window)) == 1
        capfd.readouterr()
        return graph

    return open_page


def drawn(graph, name='page.ps'):
    """What stands between prolog and trailer."""
    assert y.Graph_close(graph) == 1
    with open(name) as page:
        text = page.read()
    return text[text.index('\n', text.index('%%Yul Plot')) + 1:text.index('%%End of plot')]


def places(text):
    """The lines of a page as lists of places."""
    lines = []
    for x, v, verb in NUMBER.findall(text):
        if verb == 'mv':
            lines.append([])
        lines[-1].append((float(x), float(v)))
    return lines


def ink(text):
    xs, vs = zip(*(place for line in places(text) for place in line))
    return min(xs), min(vs), max(xs), max(vs)


# ---- header, prolog, trailer, notices ----

EPS_STATE = '1 dict begin save (saveobj) cvn exch def\n'


@pytest.mark.parametrize('params, magic, placement, color, scale, state', [
    ('', '%!PS-Adobe-1.0\n', '90 rotate\n.25 inch -8.25 inch translate\n', '0 setgray\n', '1.00', ''),
    ('PORT,Color', '%!PS-Adobe-1.0\n', '.25 inch .25 inch translate\n', '0 0 0 setrgbcolor\n', '1.00', ''),
    ('port,land,color,gray,scale=0.8,what', '%!PS-Adobe-1.0\n', '90 rotate\n.25 inch -8.25 inch translate\n',
     '0 setgray\n', '0.80', ''),
    ('eps', '%!PS-Adobe-3.0 EPSF-3.0\n%%BoundingBox: 0 0 576 756\n', '90 rotate\n0. inch -8.5 inch translate\n',
     '0 setgray\n', '1.00', EPS_STATE),
    ('eps,port,a4', '%!PS-Adobe-3.0 EPSF-3.0\n%%BoundingBox: 0 0 756 576\n', '', '0 setgray\n', '1.00', EPS_STATE),
    ('eps,noeps,port', '%!PS-Adobe-1.0\n', '.25 inch .25 inch translate\n', '0 setgray\n', '1.00', ''),
])
def test_whole_page_without_a_figure(tmp_path, monkeypatch, capfd, params, magic, placement, color, scale, state):
    monkeypatch.chdir(tmp_path)
    graph = y.new_Graph()
    y.Graph_setDevice(graph, 'postscript', f'out.ps,{params}')
    y.Graph_setTitle(graph, 'Height')
    assert (y.Graph_open(graph), y.Graph_isOpen(graph), y.Graph_getDeviceKind(graph)) == (1, True, 2)
    assert capfd.readouterr() == ('Creating: out.ps\n', '')
    assert y.Graph_close(graph) == 1
    text = (tmp_path / 'out.ps').read_text()
    date = re.search(r'^%%CreationDate: (.+)$', text, re.MULTILINE)
    begin = '' if 'EPSF' in magic else '30 dict begin\n/saveobj save def\n'
    assert text == (
        f'{magic}%%Title: Yul Graphics Display: Height\n%%Creator: Yul Postscript Processor-5.5\n{date[0]}\n'
        f'%%EndComments\n%%Postscript initialization\n{begin}{PROLOG}{placement}{color}{STATE}{scale} {scale} scale\n'
        f'{START.format("Height")}{state}%%End of plot\nsaveobj restore\nshowpage\nend\n%%EOF\n')


def test_names_that_append_pipe_or_fail(tmp_path, monkeypatch, capfd):
    monkeypatch.chdir(tmp_path)
    graph = y.new_Graph()
    for _ in range(2):
        assert y.Graph_open(graph, 'postscript', '+all.ps') == 1
        assert capfd.readouterr().out == 'Appending to: all.ps\n'
        assert y.Graph_close(graph) == 1
    text = (tmp_path / 'all.ps').read_text()
    assert (text.count('%!PS-Adobe-1.0'), text.count('showpage'), text.endswith('%%End of plot\n')) == (2, 0, True)
    assert y.Graph_open(graph, 'postscript', '|cat > piped.ps') == 1
    assert capfd.readouterr().out == 'Spooling to: |cat > piped.ps\n'
    assert y.Graph_close(graph) == 1
    assert (tmp_path / 'piped.ps').read_text().endswith('%%EOF\n')  # the command is done
    assert y.Graph_open(graph, 'postscript', 'no/such/place.ps') == 0
    assert capfd.readouterr() == ('Creating: no/such/place.ps\n', 'Postscript: unable to output to file\n')
    assert (y.Graph_isOpen(graph), y.Graph_drawLine(graph, 0.0, 0.0, 1.0, 1.0)) == (False, 0)
    assert y.Graph_open(graph, 'postscript', '') == 1  # the name stays what it was at first
    assert capfd.readouterr().out == 'Creating: yul.ps\n'
    y.delete_Graph(graph)  # which finishes an open page
    assert (tmp_path / 'yul.ps').read_text().endswith('%%EOF\n')


@pytest.mark.parametrize('name, title', [('hpgl', 'HP-GL'), ('meta', 'metafile'), ('display', 'window'),
                                         ('PostScript', 'window'), ('', 'window'), (None, 'window')])
def test_device_that_is_not_there_says_so_once(capfd, name, title):
    graph = y.new_Graph()
    if name is not None:
        assert y.Graph_setDevice(graph, name, 'a,b') == 1
    assert (y.Graph_open(graph), y.Graph_isOpen(graph)) == (0, False)
    assert capfd.readouterr().err == f'Graph::setDevice: The {title} device is not part of this build\n'
    assert y.Graph_getDeviceKind(graph) == {'hpgl': 3, 'meta': 4}.get(name, 1)


@pytest.mark.parametrize('item, width, height', [
    ('letter', 756, 576), ('legal', 972, 576), ('11x17', 1188, 756), ('a4', 806.4, 561.6), ('A3', 1108.8, 806.4),
    ('ansid', 2412, 1548), ('sz=8:6', 576, 432), ('sz=0:6', 756, 576), ('huge', 756, 576)])
def test_page_area(open_page, item, width, height):
    graph = open_page(item, None)
    largest = corners(y.Graph_getMaxViewport(graph))
    longest = max(width, height)
    assert largest == pytest.approx((0, 0, width / longest, height / longest))
    corner = y.new_Point()
    y.Graph_tranPlotWindow(graph, float(width), 0.0, corner)
    assert y.Point_x_get(corner) == pytest.approx(largest[2])
    assert corners(y.Graph_getDeviceViewport(graph)) == pytest.approx((0, 0, width, height))


# ---- figures ----

def test_pen_keeps_its_state_and_every_figure_writes_it(open_page):
    graph = open_page('port,color,lwidth=2')
    assert [y.Graph_setLineColor(graph, 0xff8000), y.Graph_setLineColor(graph, 0xff8000)] == [1, 0]
    assert [y.Graph_setLineWidth(graph, 1.5), y.Graph_setLineWidth(graph, 1.5)] == [1, 0]
    for style, dash in ((1, '[] 0 setdash\n'), (2, '[6] 0 setdash\n'), (3, '[3 6] 0 setdash\n'),
                        (4, '[6 6 3 6] 0 setdash\n'), (5, '[2] 0 setdash\n'), (0, ''), (6, '')):
        assert y.Graph_setLineStyle(graph, style) == (style != 1)
        assert y.Graph_drawLine(graph, 1.0, 2.0, 3.0, 4.0) == 1
    y.Graph_setMarkWeight(graph, 4.0)
    y.Graph_setMarkType(graph, 8)
    y.Graph_drawMarkLine(graph, 10.0, 10.0, 20.0)
    text = drawn(graph)
    line = '%%PL:2\n1.00 0.50 0.00 setrgbcolor\n3.0 dot lw\n{}np\n1.00 2.00 mv\n3.00 4.00 ln\nstroke\n'
    mark = ('%%PL:2\n0.00 0.00 0.00 setrgbcolor\n[] 0 setdash\n8.0 dot lw\nnp\n10.00 10.00 mv\n11.00 11.00 ln\n'
            'stroke\n')
    assert text == ''.join(map(line.format, ('[] 0 setdash\n', '[6] 0 setdash\n', '[3 6] 0 setdash\n',
                                             '[6 6 3 6] 0 setdash\n', '[2] 0 setdash\n', '', ''))) + mark


@pytest.mark.parametrize('color, gray', [(0xff0000, '0.33'), (0x00ff00, '0.37'), (0x0000ff, '0.30'), (0xffffff, '1.00'),
                                         (0x808080, '0.50')])
def test_gray_of_a_color(open_page, color, gray):
    graph = open_page('port,gray')
    y.Graph_setFillColor(graph, color)
    y.Graph_drawFill(graph, rect(0, 0, 1, 1))
    assert drawn(graph).startswith(f'%%FA:4\n{gray} setgray\nnp\n')


def test_width_of_nothing_is_one_dot(open_page):
    graph = open_page()
    assert y.Graph_setLineWidth(graph, 0.0) == 1
    y.Graph_drawLine(graph, 0.0, 0.0, 40000.0, -40000.0)
    assert drawn(graph) == ('%%PL:2\n0.00 setgray\n1.0 dot lw\n[] 0 setdash\nnp\n0.00 0.00 mv\n30000.00 -30000.00 ln\n'
                            'stroke\n')


def test_clip_and_image(open_page):
    graph = open_page('port,color')
    y.Graph_setClip(graph, rect(10, 20, 30, 40))
    image = y.new_Image(3, 1)
    y.Image_setPixel(image, 0, 0, 0x0a0b0c)
    y.Image_setPixel(image, 2, 0, 0xff0000)
    y.Graph_drawImage(graph, image, 50.0, 60.0)
    y.Graph_drawImage(graph, y.new_Image(), 50.0, 60.0)
    assert drawn(graph) == (
        'initclip\nnp\n10.00 20.00 mv\n30.00 20.00 ln\n30.00 40.00 ln\n10.00 40.00 ln\ncp\nclip\n'
        'gsave\n50 60 translate\n3 1 scale\n/picstr 3 string def\n3 1 8 [ 3 0 0 -1 0 1 ]\n'
        '{ currentfile picstr readhexstring pop }\nfalse 3 colorimage\n0A0B0CFFFFFFFF0000\ngrestore\n')


def test_marks_are_their_figures(open_page):
    graph = open_page()
    y.Graph_setMarkSize(graph, 20.0)
    for kind in range(2, 11):
        y.Graph_setMarkType(graph, kind)
        y.Graph_drawMark(graph, 100.0, 100.0)
    lines = [[(round(x - 100, 2), round(v - 100, 2)) for x, v in line] for line in places(drawn(graph))]
    assert lines[0:2] == [[(-10, 0), (10, 0)], [(0, -10), (0, 10)]]
    assert set(lines[2]) == {(0, 0), (-10, 0), (10, 0), (0, 10), (0, -10), (10, 10), (-10, -10), (-10, 10), (10, -10)}
    assert (len(lines[3]), lines[3][0]) == (13, lines[3][-1])
    assert set(lines[3]) == {(sx * a, sy * b) for a, b in ((10, 0), (8.66, 5), (5, 8.66), (0, 10))
                             for sx in (1, -1) for sy in (1, -1)}
    assert lines[4:6] == [[(-10, -10), (10, 10)], [(10, -10), (-10, 10)]]
    assert lines[6] == [(-10, 10), (10, 10), (10, -10), (-10, -10), (-10, 10)]
    assert lines[7] == [(-10, -10), (10, -10), (0, 10), (-10, -10)]
    assert lines[8] == [(0, 0), (1, 1)]
    assert lines[9] == [(-10, 10), (10, 10), (0, -10), (-10, 10)]
    assert lines[10] == [(0, 10), (5, 0), (-5, 0), (0, -10)]


# ---- transforms ----

def test_transform_follows_its_formulas():
    tran = y.new_GTran()
    y.GTran_set(tran, rect(0, 576, 756, 0))
    assert corners(y.GTran_getNdc(tran)) == pytest.approx((0, 0, 1, 576 / 756))
    y.GTran_setWindow(tran, rect(-20, 10, 30, 60))
    y.GTran_setViewport(tran, rect(0.1, 0.2, 0.6, 0.7))
    ndc = (5 + 20) * 0.5 / 50 + 0.1, (20 - 10) * 0.5 / 50 + 0.2
    assert (y.GTran_tranWindowNdcX(tran, 5.0), y.GTran_tranWindowNdcY(tran, 20.0)) == pytest.approx(ndc)
    plot = ndc[0] * 756, (576 / 756 - ndc[1]) * -576 / (576 / 756) + 576
    assert (y.GTran_tranWindowPlotX(tran, 5.0), y.GTran_tranWindowPlotY(tran, 20.0)) == pytest.approx(plot)
    assert y.GTran_tranPlotWindowX(tran, plot[0]) == pytest.approx(5)
    assert y.GTran_tranPlotWindowY(tran, plot[1]) == pytest.approx(20)
    assert y.GTran_tranPlotNdcY(tran, plot[1]) == pytest.approx(ndc[1])
    for far in (1e6, 1e38):
        assert (y.GTran_tranWindowPlotX(tran, far), y.GTran_tranWindowPlotX(tran, -far)) == (30000, -30000)
    assert y.GTran_tranWindowNdcX(tran, 1e6) > 9000  # only places on the device are held
    other = y.new_GTran(tran)
    y.GTran_setWindow(other, rect(0, 0, 5, 5))
    assert y.GTran_tranWindowX(tran, other, 5.0) == pytest.approx(2.5)
    y.GTran_resize(tran, rect(0, 0, 500, 500))
    assert corners(y.GTran_getNdc(tran)) == corners(y.GTran_getWindow(tran)) == (0, 0, 1, 1)


@pytest.mark.parametrize('aspect, h, v, expected', [
    (1, 2, 2, (0.25, 0.25, 0.75, 0.75)), (2, 1, 1, (0.1, 0.2, 0.9, 0.6)), (2, 3, 3, (0.1, 0.4, 0.9, 0.8)),
    (0.5, 1, 1, (0.1, 0.2, 0.4, 0.8)), (0.5, 3, 9, (0.6, 0.2, 0.9, 0.8)), (0, 2, 2, (0.1, 0.2, 0.9, 0.8))])
def test_viewport_of_an_aspect(open_page, aspect, h, v, expected):
    graph = open_page('sz=8:8')
    box = (0.1, 0.2, 0.9, 0.8) if aspect != 1 else (-0.25, -0.25, -0.25, -0.25)  # insets from each edge
    assert y.Graph_setViewportAspect(graph, rect(*box), float(aspect), h, v) == 1
    assert corners(y.Graph_getViewport(graph)) == pytest.approx(expected)


# ---- text ----

@pytest.mark.parametrize('font', ['modern', 'light', 'bold', 'serif', 'mono', 'italic', 'serifitalic'])
def test_text_is_aligned_on_its_ink(open_page, font):
    for h, anchor in ((0, 0), (1, 0), (2, 0.5), (3, 1), (4, 0)):
        graph = open_page()
        y.Graph_setFont(graph, font)
        y.Graph_setTextHeight(graph, 42.0)
        y.Graph_setTextAlign(graph, h, 0)
        assert y.Graph_drawText(graph, 300.0, 300.0, 'Jf 5Wj') == 1
        x1, _, x2, _ = ink(drawn(graph))
        assert x1 + anchor * (x2 - x1) == pytest.approx(300, abs=0.02), h


def test_lines_step_downward_from_the_aligned_start(open_page):
    step = 1.3 * 20
    for v, first in ((0, 2 * step), (1, 0), (2, 0), (3, step), (7, 2 * step)):
        graph = open_page()
        y.Graph_setTextHeight(graph, 20.0)
        y.Graph_setTextAlign(graph, 1, v)
        y.Graph_drawText(graph, 300.0, 300.0, 'L\nL\nL')
        tops = sorted({round(max(place[1] for place in line) - 20 - 300, 1) for line in places(drawn(graph))})
        assert tops == pytest.approx([first - 2 * step, first - step, first], abs=0.06), v


def test_gaps_between_upright_stems_are_even(open_page):
    graph = open_page()
    y.Graph_setTextHeight(graph, 84.0)
    y.Graph_drawText(graph, 0.0, 100.0, 'HIHNMIH')
    stems = sorted({x for line in places(drawn(graph)) for (x, v), (x2, v2) in zip(line, line[1:])
                    if x == x2 and abs(v - v2) > 80})
    letters = [(0, 1), (2, 2), (3, 4), (5, 6), (7, 8), (9, 9), (10, 11)]  # first and last stem of each
    gaps = [stems[b[0]] - stems[a[1]] for a, b in zip(letters, letters[1:])]
    assert max(gaps) - min(gaps) <= 1  # a font unit is a point here


# ---- colours ----

def test_color_texts(capfd):
    table = y.new_ColorMap(4)
    assert [y.ColorMap_add(table, 'Red', 1.0, 0.0, 0.0), y.ColorMap_add(table, 'sea', 0.0, 0.5, 1.0)] == [0, 1]
    for text, index in (('', -1), (None, -1), ('end', -2), ('none', -1), ('off', -1), ('back', -1), ('RED', 0), ('sea', 1),
                        ('pblk', 500), ('pbblk', 501), ('ptblk', 502), ('pwht', 503), ('pbwht', 504), ('ptwht', 505),
                        ('pgry', 506), ('pbgry', 507), ('ptgry', 508), ('12', 12), ('7up', 7), ('what', -1),
                        ('#FF8000', 2), ('#ff8000', 2), ('#255128000', 3), ('#12', -1), ('#GG0000', -1)):
        assert y.ColorMap_getInd(table, text) == index, text
    a, b = y.new_RGB(), y.new_RGB()
    y.ColorMap_get(table, 2, a)
    y.ColorMap_get(table, 3, b)
    assert (y.RGB_r_get(a), y.RGB_g_get(a), y.RGB_b_get(a)) == pytest.approx((1, 128 / 255, 0))
    assert y.ColorMap_isColorNear(table, 2, b) is True and y.ColorMap_isColorNear(table, -1, b) is False
    y.ColorMap_get(table, 99, b)  # past the end: the last
    assert y.RGB_g_get(b) == pytest.approx(128 / 255)
    y.ColorMap_get(table, -1, b)
    assert (y.RGB_r_get(b), y.RGB_g_get(b), y.RGB_b_get(b)) == (-1, -1, -1)
    capfd.readouterr()
    assert y.ColorMap_add(table, 'Red', 0.0, 0.0, 0.0) == -1  # full, even for a name that is there
    assert capfd.readouterr().err == 'Color map size exceeded 4 > 4\n'
    assert [y.ColorMap_setNumFill(table, n) for n in (4, 5, -1)] == [True, False, False]
    y.ColorMap_setValue(table, 1, 0x0080ff)
    getattr(y, 'ColorMap_print', getattr(y, 'ColorMap__print', None))(table)
    assert capfd.readouterr().out == ('  0 -        0 (1.00,0.00,0.00) Red\n  1 -    33023 (0.00,0.50,1.00) sea\n'
                                      '  2 -        0 (1.00,0.50,0.00) #FF8000\n'
                                      '  3 -        0 (1.00,0.50,0.00) #255128000\nFill: 4\n')


# ---- what is refused ----

def test_absurd_arguments_leave_no_trace(open_page, capfd):
    graph = open_page()
    bad = (math.nan, math.inf, -math.inf, 3e38)
    for x in bad[:1]:
        assert y.Graph_drawLine(graph, x, 0.0, 1.0, 1.0) == y.Graph_drawMark(graph, x, 0.0) == 0
        assert y.Graph_drawSymbol(graph, 0.0, x, 'rain', 5.0) == y.Graph_drawCircle(graph, 0.0, 0.0, x) == 0
    for x in bad:
        for call in (y.Graph_setLineWidth, y.Graph_setTextHeight, y.Graph_setMarkSize, y.Graph_setTextSpacing):
            assert call(graph, x) in (0, 1)
        y.Graph_setTextDirection(graph, x, x)
        y.Graph_setViewportAspect(graph, rect(x, x, x, x), x)
        y.Graph_setWindow(graph, rect(x, 0, 1, 1))
    for code in (-2**31, 2**31 - 1):
        for call in (y.Graph_setLineStyle, y.Graph_setFillStyle, y.Graph_setMarkType, y.Graph_setDropShadow,
                     y.Graph_setTextBoxColor, y.Graph_setTran, y.Graph_setDropWidth):
            call(graph, code)
        y.Graph_setTextAlign(graph, code, code)
    long = 'x' * 1_000_000
    for text in (None, '', long, '\n' * 1000, '\udcff', '中文'):
        if text != '\udcff':
            y.Graph_setFont(graph, text)
            y.Graph_setSymbol(graph, text)
            y.Graph_drawSymbol(graph, 1.0, 1.0, text, 1.0)
            y.Graph_setTitle(graph, text)
            y.Graph_drawText(graph, 1.0, 1.0, text)
    capfd.readouterr()
    assert y.Graph_close(graph) == 1
    with open('page.ps') as page:
        assert not re.search(r'\b(nan|inf)\b', page.read())
    for call in (y.Graph_update, y.Graph_clear, y.Graph_manage, y.Graph_getNumFrames, y.Graph_close):
        assert call(graph) == 0
