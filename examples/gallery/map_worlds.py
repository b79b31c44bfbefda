"""World maps.

The whole earth in a plane that is cut open along a meridian: equidistant cylindrical, Mercator, Mollweide, and
Mollweide with the Pacific in the middle. Land and sea are filled up to the cut and to the poles.
"""

import sys

from Yul import Domain, MapPlot, Plot

MAPS = (('Equidistant cylindrical', 'll,0,0,181,91,2,2'),
        ('Mercator', 'merc:0:10,15,10,201,141,2,2'),
        ('Mollweide', 'moll:0:0,0,0,185,94,2,2'),
        ('Mollweide about 160 W', 'moll:0:-160,0,-160,185,94,2,2'))

plot, background = Plot(), MapPlot()
background.setParam('sea,land,water')
if not plot.open(f'{sys.argv[1]},de=p,land,color,pan=2x2'):
    sys.exit(1)
for i, (title, domain) in enumerate(MAPS):
    if i > 0:
        plot.newPanel('')
    plot.setLabel('ul', title)
    if not (plot.setDomain(Domain(domain)) and background.draw(plot)):
        sys.exit(1)
    plot.drawBorder()
    plot.drawLabels()
if not plot.close():
    sys.exit(1)
