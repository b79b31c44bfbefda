"""Pictures of the figures, drawn by the library on one page each and rendered with Ghostscript."""

from contextlib import contextmanager
from math import ceil, floor, log10
from pathlib import Path
import subprocess
import tempfile

from Yul import Graph, Image, Point, Points, Rect, Yul

RENDER = Path(__file__).resolve().parent.parent.parent / 'scripts' / 'render-page'
LANDSCAPE, PORTRAIT = ('land', 756.0, 576.0), ('port,sz=8:10.5', 576.0, 756.0)  # width and height between the margins, points
BLACK, GRAY, PALE, BLUE, RED = 0x000000, 0x808080, 0xD8D8D8, 0x2F6DB5, 0xC8402F
LEFT, CENTER, RIGHT = 1, 2, 3


@contextmanager
def page(picture, paper, dpi=110):
    """A graph whose window is the page in points; the picture is there when the block ends."""
    side, width, height = paper
    with tempfile.TemporaryDirectory() as folder:
        name = str(Path(folder) / 'page.ps')
        Yul.setMessageLevel('-print')
        graph = Graph('postscript', f'{name},{side},color')
        if not graph.open():
            raise OSError(f'{name}: cannot be drawn')
        graph.setWindow(Rect(0.0, 0.0, width, height))
        graph.setFont('modern')
        yield graph
        if not graph.close():
            raise OSError(f'{name}: not complete')
        subprocess.run([RENDER, name, picture, str(dpi)], check=True)
    image = Image()
    if not (image.read(str(picture)) and image.toIndexed(64) and image.write(str(picture))):
        raise OSError(f'{picture}: cannot be reduced')


def text(graph, x, y, words, height=6.0, align=LEFT, color=BLACK):
    graph.setTextHeight(height)
    graph.setTextAlign(align, 0)
    graph.setTextColor(color)
    graph.drawText(x, y, words)


def line(graph, points, color=BLACK, width=1.0, style=1):
    graph.setLineColor(color)
    graph.setLineWidth(width)
    graph.setLineStyle(style)
    path = Points()
    for x, y in points:
        path.add(Point(x, y))
    graph.drawLine(path)


def power_of_ten(graph, x, y, exponent, height=6.0, align=CENTER):
    """10 with its exponent raised; 0.1 to 1000 in digits."""
    if -1 <= exponent <= 3:
        text(graph, x, y, f'{10.0**exponent:g}', height, align)
        return
    graph.setTextHeight(height)
    base = graph.getTextWidth('10') * 1.08
    graph.setTextHeight(height * 0.7)
    shift = {LEFT: 0.0, CENTER: 0.5, RIGHT: 1.0}[align] * (base + graph.getTextWidth(str(exponent)))
    text(graph, x - shift, y, '10', height)
    text(graph, x - shift + base, y + 0.55 * height, str(exponent), height * 0.7)


class LogAxis:
    """Whole decades around some numbers, laid out between two places of the page."""

    def __init__(self, numbers, start, end):
        self.first, self.last = floor(log10(min(numbers)) + 1e-9), ceil(log10(max(numbers)) - 1e-9)
        self.start, self.end = start, end

    def place(self, number):
        return self.start + (log10(number) - self.first) / (self.last - self.first) * (self.end - self.start)

    def decades(self, most=99):
        """Exponents to label, no more than some, and their places."""
        step = ceil((self.last - self.first + 1) / most)
        return [(exponent, self.place(10.0**exponent)) for exponent in range(self.first, self.last + 1, step)]


def panel(graph, box, title, unit, work, seconds):
    """Seconds against work, both on logarithmic scales, with a line of slope 1 through the last point."""
    left, bottom, right, top = box
    across, up = LogAxis(work, left, right), LogAxis(seconds, bottom, top)
    for exponent, x in across.decades():
        line(graph, [(x, bottom), (x, top)], PALE, 0.7)
        power_of_ten(graph, x, bottom - 11, exponent)
    for exponent, y in up.decades():
        line(graph, [(left, y), (right, y)], PALE, 0.7)
        power_of_ten(graph, left - 4, y - 3, exponent, align=RIGHT)
    start = max(work[0], work[-1] * 10.0**up.first / seconds[-1])
    line(graph, [(across.place(n), up.place(seconds[-1] * n / work[-1])) for n in (start, work[-1])], GRAY, 1.5, 2)
    places = [(across.place(n), up.place(s)) for n, s in zip(work, seconds)]
    line(graph, places, BLUE, 2.5)
    graph.setMarkType(4)
    graph.setMarkColor(BLUE)
    graph.setMarkWeight(2.5)
    for x, y in places:
        graph.drawMarkLine(x, y, 6.0)
    line(graph, [(left, bottom), (right, bottom), (right, top), (left, top), (left, bottom)])
    text(graph, (left + right) / 2, top + 7, title, 8.0, CENTER)
    text(graph, (left + right) / 2, bottom - 24, unit, 6.5, CENTER)
    text(graph, left - 4, top + 7, 's', 6.5, RIGHT)


def growth(picture, series):
    """Panels three in a row; a series is title, unit of work, work, seconds."""
    with page(picture, LANDSCAPE) as graph:
        for i, one in enumerate(series):
            left, bottom = 40.0 + 250 * (i % 3), 335.0 - 275 * (i // 3)
            panel(graph, (left, bottom, left + 200, bottom + 200), *one)
        line(graph, [(290, 12), (320, 12)], GRAY, 1.5, 2)
        text(graph, 326, 9, 'slope 1: time grows as the work does', 6.5)


def ratios(picture, rows):
    """A bar a row: job, ratio, and what it has to reach, whose place is marked."""
    left, right, top = 262.0, 545.0, 742.0
    step = min(11.0, (top - 14) / len(rows))
    with page(picture, PORTRAIT, 130) as graph:
        axis = LogAxis([value for _, ratio, least in rows for value in (ratio, least)], left, right)
        foot = top - step * len(rows) - 2
        for exponent, x in axis.decades():
            line(graph, [(x, foot), (x, top)], GRAY if exponent == 0 else PALE, 0.7)
            power_of_ten(graph, x, foot - 9, exponent, 5.5)
            power_of_ten(graph, x, top + 3, exponent, 5.5)
        for i, (job, ratio, least) in enumerate(rows):
            y = top - step * (i + 1)
            text(graph, left - 5, y + 1.5, job, 4.2, RIGHT)
            graph.setFillColor(BLUE if ratio >= least else RED)
            graph.drawFill(Rect(left, y, axis.place(ratio), y + 0.7 * step))
            mark = axis.place(least)
            line(graph, [(mark, y - 0.15 * step), (mark, y + 0.85 * step)], BLACK, 2.5)
            text(graph, max(axis.place(ratio), mark) + 4, y + 1.5, f'{ratio:.3g}', 4.2)
