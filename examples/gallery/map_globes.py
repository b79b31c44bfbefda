"""Globes.

The earth seen from afar and projected from its centre: orthographic, the view from a geostationary satellite,
Lambert's equal-area map of the whole earth, and the gnomonic map on which great circles are straight.
"""

import sys

from Yul import Domain, MapPlot, Plot

MAPS = (('Orthographic', 'ortho:35:-30,35,-30,131,131,1,1'),
        ('Satellite at 75 W', 'sat:e:0:-75,0,-75,121,121,0.00258,0.00258'),
        ('Lambert azimuthal equal-area', 'lambaz:20:20,20,20,131,131,2,2'),
        ('Gnomonic', 'gnom:50:10,50,10,161,121,1.4,1.4'))

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
