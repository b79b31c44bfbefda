"""Panels.

Four forecast times on one page. The panels share what they can: tick labels stand only on the outer sides, one title
and one colour bar serve all. `full_lab` gives every panel its own.
"""

from pathlib import Path
import sys

import numpy

from Yul import ContPlot, Domain, GribFile, Plot

FIELD = Path(__file__).parent.parent / 'data' / 'height500.grib2'
AREA = Domain('stereo:90:-25,53,-25,57,43,1.5')

grid = next(iter(GribFile(FIELD)))
start = numpy.array(grid.values)
plot = Plot()
if not plot.open(f'{sys.argv[1]},de=p,color,land,pan=2x2,bar,ti=A wave on its way: 500 hPa height'):
    sys.exit(1)
for i, hours in enumerate((24, 36, 48, 60)):
    if i > 0:
        plot.newPanel('')
    columns = 6 * i
    grid.values = start * (1 - columns / 400) + numpy.roll(start, columns, axis=1) * (columns / 400)
    grid.setForeTime(str(hours))
    plot.setDomain(AREA)
    bands, lines = ContPlot(), ContPlot()
    bands.setParam('int=120,low=4800,high=5880,fill,line=off')
    lines.setParam('int=120,lab,hilo')
    bands.draw(plot, grid)
    plot.drawGraticule('dimgray:wi=1:st=5')
    lines.draw(plot, grid)
    plot.setLabel('ul', 'h + %h')
    plot.setLabel('ur', '%t')
    plot.setLabel('ll', '')
    plot.drawBorder()
    plot.drawLabels()
if not plot.close():
    sys.exit(1)
