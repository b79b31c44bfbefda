"""Contours on a map.

The 500 hPa height of the shipped file. Land, sea and lakes lie under the contours, coastlines and boundaries over them.
"""

from pathlib import Path
import sys

from Yul import GribFile, contour_map

FIELD = Path(__file__).parent.parent / 'data' / 'height500.grib2'

grid = next(iter(GribFile(FIELD)))
contour_map(grid, sys.argv[1], domain='stereo:90:-25,53,-25,57,43,1.5', interval=60, lines='navy:wi=2',
            map='sea,land,water,coast=saddlebrown:wi=2,country=rosybrown')
