"""A map of contour lines.

One call of `contour_map`: the 500 hPa height of the shipped file on a polar stereographic plane, every fifth line
wider, the lines broken for labels that follow them, highs and lows marked with their values.
"""

from pathlib import Path
import sys

from Yul import GribFile, contour_map

FIELD = Path(__file__).parent.parent / 'data' / 'height500.grib2'
AREA = 'stereo:90:-25,53,-25,57,43,1.5'

contour_map(next(iter(GribFile(FIELD))), sys.argv[1], domain=AREA, interval=60, color=False)
