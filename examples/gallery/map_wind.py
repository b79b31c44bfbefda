"""A field of one's own.

The geostrophic wind, worked out with NumPy from the height of the shipped file, in bands of colour; over it the height
itself.
"""

from pathlib import Path
import sys

import numpy as np

from Yul import ContPlot, Domain, Grid, GribFile, MapPlot, Plot

FIELD = Path(__file__).parent.parent / 'data' / 'height500.grib2'
GRAVITY, TURN, DEGREE = 9.80665, 7.292e-5, 111_199  # m s-2, rotation of the earth s-1, m

height = next(iter(GribFile(FIELD)))
lats = np.radians(height.getDomain().lats)
southward, eastward = (slope / DEGREE for slope in np.gradient(height.masked))
u = GRAVITY / (2 * TURN * np.sin(lats)) * southward
v = GRAVITY / (2 * TURN * np.sin(lats)) * eastward / np.cos(lats)
wind = Grid.from_array(np.hypot(u, v), height.getDomain(), date=height.date, level=height.getLevel(),
                       fore=height.getForeTime(), var='WIND')
wind.convertUnits('kt')

plot, bands, lines, coasts = Plot(), ContPlot(), ContPlot(), MapPlot()
if not plot.open(f'{sys.argv[1]},de=p,color,land,bar'):
    sys.exit(1)
plot.setDomain(Domain('stereo:90:-25,53,-25,57,43,1.5'))
bands.setParam('val=40:60:80:100:120:140,fill=paleturquoise:skyblue:deepskyblue:royalblue:blue:navy,line=off')
lines.setParam('int=60,lab,hilo=black:black,every=5')
coasts.setParam('nogrid')
bands.draw(plot, wind)
plot.drawGraticule()
lines.drawLines(plot, height)
coasts.drawLines(plot)
lines.drawTexts(plot)
plot.setLabel('ul', 'Geostrophic wind (kt) and height at %l')
plot.drawBorder()
plot.drawLabels()
if not plot.close():
    sys.exit(1)
