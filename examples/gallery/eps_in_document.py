"""Encapsulated PostScript in a document.

Two pictures made with the parameter "eps", set into a page of text at the boxes that their headers name: one upright in
colour, one lying in gray. The box of a lying picture ends half an inch above the foot of its area, so that is left free.
"""

from pathlib import Path
import sys
import tempfile

from Yul import Graph, Rect

WIDTH, LEFT, BOTTOM = 225.0, (72.0, 315.0), 300.0
TEXT = (
    ('Helvetica-Bold', 20, 690, 'Pictures in a document'),
    ('Times-Roman', 12, 662, 'A document scales each picture to the width of a column and clips it to the box that the'),
    ('Times-Roman', 12, 646, 'picture names in its header. Nothing of the picture stays behind: what follows on the page'),
    ('Times-Roman', 12, 630, 'is drawn as if it had not been there.'),
    ('Times-Italic', 10, 282, 'Left: eps,port,color. Right: eps,land,gray, turned by a quarter.'),
)


def draw(folder: str, params: str) -> str:
    """A picture that fills its box."""
    name = f'{folder}/picture.eps'
    graph = Graph('postscript', f'{name},{params}')
    if not graph.open():
        sys.exit(1)
    free = 36 if 'land' in params else 0
    graph.setWindow(Rect(0.0, 0.0, 756.0, 576.0))
    graph.setViewport(Rect(0.0, free / 756, 1.0, 576 / 756))
    graph.setLineWidth(4.0)
    graph.drawRect(Rect(6.0, 6.0, 750.0, 570.0))
    for i in range(12):
        graph.setFillColor(0x2060a0 + 0x0a0806 * i)
        graph.drawFill(Rect(60 + 53.0 * i, 60.0, 100 + 53.0 * i, 100 + 30.0 * (i % 5)))
    graph.setFont('serif')
    graph.setTextHeight(90.0)
    graph.setTextAlign(2, 0)
    graph.drawText(378.0, 400.0, 'Yul')
    graph.setTextHeight(36.0)
    graph.drawText(378.0, 310.0, params)
    if not graph.close():
        sys.exit(1)
    return Path(name).read_text()


def embedded(picture: str, left: float) -> str:
    """The picture between the lines that a document writes round it."""
    box = next(line.split()[1:] for line in picture.splitlines() if line.startswith('%%BoundingBox:'))
    x1, y1, x2, y2 = (float(number) for number in box)
    scale = WIDTH / (x2 - x1)
    return (f'/before save def /showpage {{}} def\n'
            f'{left} {BOTTOM} translate {scale:.5f} dup scale {-x1} {-y1} translate\n'
            f'{x1} {y1} moveto {x2} {y1} lineto {x2} {y2} lineto {x1} {y2} lineto closepath clip newpath\n'
            f'%%BeginDocument: picture.eps\n{picture}%%EndDocument\nbefore restore\n')


page = '%!PS-Adobe-3.0 EPSF-3.0\n%%BoundingBox: 54 252 558 720\n%%EndComments\n'
for font, size, y, line in TEXT:
    page += f'/{font} findfont {size} scalefont setfont 72 {y} moveto ({line}) show\n'
with tempfile.TemporaryDirectory() as folder:
    for params, left in zip(('eps,port,color', 'eps,land,gray'), LEFT):
        page += embedded(draw(folder, params), left)
page += '72 270 moveto 540 270 lineto stroke\nshowpage\n%%EOF\n'
Path(sys.argv[1]).write_text(page)
