"""Hemispheres, cones and a radar plane.

Polar stereographic maps of both hemispheres, a Lambert conformal map with the gap where its cone is cut open, Albers'
equal-area cone, the southern ocean, and the plane of a radar with the finer set of lines.
"""

import sys

from Yul import Domain, MapPlot, Plot

MAPS = (('Polar stereographic, north', 'pstereo:90:-30,90,0,101,101,2.4,2.4'),
        ('Polar stereographic, south', 'pstereo:-90:20,-90,0,101,101,2.4,2.4'),
        ('Lambert conformal', 'lambert:40:-95:30:60,55,-95,121,121,1.7,1.7'),
        ('Albers equal-area', 'albers:45:15:40:60,42,15,121,121,1.5,1.5'),
        ('Lambert azimuthal, south pole', 'lambaz:-90:0,-90,0,101,101,1.6,1.6'),
        ('Radial', 'radial:51:7,51,7,101,101,0.08,0.08'))

plot, background = Plot(), MapPlot()
background.setParam('sea,land,water,river')
if not plot.open(f'{sys.argv[1]},de=p,land,color,pan=2x3'):
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
