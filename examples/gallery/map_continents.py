"""Continents.

A map for each, with boundaries of countries and states, rivers and lakes. Which detail is drawn follows from the scale
of the page.
"""

import sys

from Yul import Domain, MapPlot, Plot

MAPS = (('Europe', 'lambert:50:15:40:65,52,14,71,61,0.7,0.7'),
        ('Asia', 'lambaz:35:90,32,92,101,86,1.05,1.05'),
        ('Africa', 'lambaz:0:18,1,18,91,96,0.98,0.98'),
        ('North America', 'lambert:50:-97:35:65,48,-96,101,86,0.98,0.98'),
        ('South America', 'lambaz:-20:-60,-22,-60,71,76,1.1,1.1'),
        ('Australia and Oceania', 'merc:0:150,-22,150,81,66,1.05,1.05'))

plot, background = Plot(), MapPlot()
background.setParam('sea,land,water,lake,river,state')
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
