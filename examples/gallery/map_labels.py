"""Labels all round.

The six corner labels with their codes, a logo in a corner of the map, the border with the ticks of the graticule, and
lines in the colours of the table with a bar below.
"""

from pathlib import Path
import sys
import tempfile

from Yul import ContPlot, Domain, GribFile, Image, Plot

FIELD = Path(__file__).parent.parent / 'data' / 'height500.grib2'

SIZE = 64
logo = Image(SIZE, SIZE)
for row in range(SIZE):
    for column in range(SIZE):
        x, y = 2 * column / SIZE - 1, 2 * row / SIZE - 1
        distance = (x * x + y * y) ** 0.5
        if distance < 1:
            logo.setPixel(column, row, 0x1B4F8A if distance > 0.82 or abs(y - 0.35 * x * (1 - x * x) * 3) < 0.12 else 0xDCEBFA)

plot, contours = Plot(), ContPlot()
if not plot.open(f'{sys.argv[1]},de=p,color,land,bar=bottom'):
    sys.exit(1)
plot.setDomain(Domain('merc:0:0,50,-20,91,49,1.2,1.2'))
contours.setParam('int=40,col,line=wi=2,lab=black,hilo')
plot.drawGraticule()
contours.draw(plot, next(iter(GribFile(FIELD))))
for position, text in {'ul': '%l %v', 'uc': 'valid %t', 'ur': 'from %i', 'll': 'every %c %u',
                       'lc': '%a to %z %u', 'lr': '{%m, }h + %h'}.items():
    plot.setLabel(position, text)
plot.drawBorder()
with tempfile.TemporaryDirectory() as folder:
    logo.write(f'{folder}/logo.png')
    plot.setParam(f'lo={folder}/logo.png:ur')
    plot.drawLabels()
if not plot.close():
    sys.exit(1)
