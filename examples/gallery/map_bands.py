"""Bands of colour.

The same field with the bands between the levels filled from the colour table, and a bar that says what the colours
mean. The lines are thin, so that the bands carry the map.
"""

from pathlib import Path
import sys

from Yul import GribFile, contour_map

FIELD = Path(__file__).parent.parent / 'data' / 'height500.grib2'

contour_map(next(iter(GribFile(FIELD))), sys.argv[1], domain='lambert:50:-20:40:60,51,-20,69,47,1', interval=60,
            fill=True, every=0, title='%v at %l{ (%u)}')
