"""An upright page in gray.

Anomalies on an upright sheet without colour: bands in shades of gray with none round zero, negative lines dashed, and
levels chosen one by one, the colour bar below.
"""

import sys

import numpy

from Yul import Domain, Grid, contour_map

domain = Domain('ll,20,15,41,49,2.5,2.5')
grid = Grid(domain.getNx(), domain.getNy())
grid.setDomain(domain)
lat, lon = numpy.radians(domain.lats), numpy.radians(domain.lons)
grid.values = 6 * numpy.sin(2.5 * lon + 1) * numpy.cos(3 * lat) + 3 * numpy.cos(5 * lon - 2 * lat) * numpy.cos(lat)
grid.setInfo('Temperature anomaly [K]')
grid.setUnits('K')

contour_map(grid, sys.argv[1], levels=[-6, -4, -2, 2, 4, 6, 8], portrait=True, color=False, bar='bottom',
            fill=['#8C8C8C', '#BEBEBE', 'off', '#E1E1E1', '#BEBEBE', '#9B9B9B', '#787878'],
            params='dash=-1,base=0', title='Temperature anomaly (K)')
