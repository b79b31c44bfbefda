"""Map projections.

One field of the whole earth in every projection that shows a good part of it. The grid is projected into each plane as
it is drawn; outlines follow the seam and the horizon of the projection.
"""

import sys

import numpy

from Yul import ContPlot, Domain, Grid, Plot

PLANES = {
    'latlon': 'll,0,0,361,181,1,1',
    'Mercator': 'merc:0:0,0,0,361,271,1.1,1.1',
    'Mollweide': 'moll:0:0,0,0,362,182,1,1',
    'polar stereographic': 'pstereo:90:0,90,0,161,121,1,1',
    'oblique stereographic': 'stereo:45:10,45,10,121,91,1,1',
    'Lambert conformal': 'lambert:50:10:35:65,52,10,111,83,1,1',
    'Albers equal area': 'albers:50:10:35:65,48,10,121,91,1,1',
    'Lambert azimuthal': 'lambaz:45:10,45,10,161,121,1,1',
    'orthographic': 'ortho:40:10,40,10,129,129,1,1',
    'gnomonic': 'gnom:60:10,60,10,121,91,1,1',
    'satellite': 'sat:0:0,0,0,121,121,0.0025,0.0025',
    'stereographic, south': 'pstereo:-90:0,-90,0,161,121,1,1',
}

world = Domain('ll,0,0,361,181,1,1')
grid = Grid(world.getNx(), world.getNy())
grid.setDomain(world)
lat, lon = numpy.radians(world.lats), numpy.radians(world.lons)
grid.values = 30 * numpy.abs(numpy.cos(lat)) ** 1.5 - 5 + 7 * numpy.cos(lat) * numpy.sin(3 * lon + 2 * lat) * numpy.cos(4 * lat)

plot = Plot()
if not plot.open(f'{sys.argv[1]},de=p,color,land,pan=3x4'):
    sys.exit(1)
plot.setParam('full_lab')
for i, (name, text) in enumerate(PLANES.items()):
    if i > 0:
        plot.newPanel('')
    if not plot.setDomain(Domain(text)):
        sys.exit(f'{name}: {text}')
    contours = ContPlot()
    contours.setParam('int=3,fill,line=off')
    contours.draw(plot, grid)
    plot.drawGraticule('dimgray:wi=1:st=1')
    for position in ('ul', 'ur', 'll', 'lr'):
        plot.setLabel(position, '')
    plot.setLabel('uc', name)
    plot.drawBorder()
    plot.drawLabels()
if not plot.close():
    sys.exit(1)
