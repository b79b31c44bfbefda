#!/usr/bin/env python3
"""Makes data/yul.reg from the table of regions below: make_regions.py > data/yul.reg

A region is a box of latitudes and longitudes with some room around it. Near the equator it becomes a Mercator map, in
middle latitudes a Lambert map with standard latitudes at a sixth of the box from its edges, near a pole a polar
stereographic map; grids have about 100 points along the longer side.
"""

import math

HEADER = """\
# Regions: name, a colon, and the domain text of the region. One a line; lines that begin with "#" are comments. Names
# are looked up whatever the case of their letters; the first of several counts. Made by scripts/make_regions.py.
"""

EARTH = 63.7122  # units of 100 km

# Whole maps, by their domain texts.
MAPS = """
world: ll:0:0,0,0,361,181,1,1
world pacific: ll:0:180,0,180,361,181,1,1
world mercator: merc:0:0,0,0,361,241,1.112,1.112
world mollweide: moll:0:0,0,0,181,91,2,2
tropics: merc:0:0,0,0,361,81,1.112,1.112
northern hemisphere: ps:90:0,90,0,191,191,1.27,1.27
southern hemisphere: ps:-90:0,-90,0,191,191,1.27,1.27
arctic: ps:90:0,90,0,101,101,.65,.65
antarctic: ps:-90:0,-90,0,101,101,.7,.7
full disk east: sat:0:-75.2,0,-75.2,201,201,.00153,.00153
full disk west: sat:0:-137.2,0,-137.2,201,201,.00153,.00153
full disk 0: sat:0:0,0,0,201,201,.00153,.00153
full disk 45 east: sat:0:45.5,0,45.5,201,201,.00153,.00153
full disk 140 east: sat:0:140.7,0,140.7,201,201,.00153,.00153
"""

# south, west, north, east, name; longitudes beyond 180 lie behind the date line
BOXES = """
  5 -170  75  -50 north america
  7 -120  33  -60 central america
-57  -85  14  -33 south america
 34  -12  72   42 europe
-36  -20  38   53 africa
  0   25  75  150 asia
-48  110   0  180 oceania
 23 -127  51  -65 united states
 30 -127  50 -102 western united states
 24 -105  50  -66 eastern united states
 41  -75  48  -66 new england
 37  -93  50  -75 great lakes
 30 -105  50  -88 great plains
 24  -92  38  -74 southeast united states
 28 -118  42 -101 southwest united states
 41 -126  50 -110 northwest united states
 50 -172  72 -128 alaska
 18 -162  24 -153 hawaii
 41 -142  84  -50 canada
 42  -96  63  -56 eastern canada
 47 -140  62  -95 western canada
 43  -68  61  -52 atlantic provinces
 44  -80  63  -56 quebec
 14 -118  33  -86 mexico
 10  -86  25  -59 caribbean
 59  -75  84  -10 greenland
 62  -26  68  -12 iceland
 49  -11  61    3 british isles
 54    3  72   32 scandinavia
 41   -6  52   10 france
 46    5  56   16 germany
 35  -10  45    5 iberia
 36    6  48   19 italy
 43   12  56   28 central europe
 34   18  48   30 balkans
 34   25  43   46 turkey
 29  -10  47   38 mediterranean
 40   26  48   43 black sea
 53    9  66   31 baltic sea
 50   -5  62   12 north sea
 48   28  62   62 eastern europe
 48   55  78  180 siberia
 12   34  42   63 middle east
  6   66  37   98 india
 17   73  54  136 china
 30  128  46  147 japan
 33  123  44  132 korea
-12   92  29  130 southeast asia
  4  116  20  128 philippines
-12   94   8  142 indonesia
-45  111  -9  155 australia
-48  165 -33  180 new zealand
-36   15 -21   34 south africa
  3   -19  28   17 west africa
-12   28  16   52 east africa
 15  -18  38   36 north africa
-27   42 -11   52 madagascar
-57  -77 -20  -52 southern cone
-35  -75   6  -33 brazil
 20  -82  66    2 north atlantic
-60  -70   5   20 south atlantic
 10  125  62  235 north pacific
-60 -180   5  -70 south pacific
-45   35  28  118 indian ocean
 17  -98  31  -80 gulf of mexico
  5   42  26   78 arabian sea
  4   78  24   98 bay of bengal
  0  102  25  122 south china sea
  8 -100  45  -15 tropical atlantic
-15 -180  15  -75 eastern pacific
"""


def trim(value):
    return f'{value:.3f}'.rstrip('0').rstrip('.')


def mercator_y(lat):
    return EARTH * math.log(math.tan(math.radians(45 + lat / 2)))


def domain(south, west, north, east):
    middle, centre = (south + north) / 2, (west + east) / 2
    wide = EARTH * math.radians(east - west)
    if abs(middle) < 23:
        kind = f'merc:0:{trim(centre)}'
        low, high = mercator_y(south), mercator_y(north)
        middle = 2 * math.degrees(math.atan(math.exp((low + high) / 2 / EARTH))) - 90
        width, height = wide, high - low
    else:
        # the widest parallel of the box, and its height with the sag of the parallels
        near = min(abs(south), abs(north)) if south * north > 0 else 0
        half = math.radians(min(east - west, 180) / 2)
        sine = math.sin(math.radians(abs(middle)))
        width = 2 * EARTH * math.cos(math.radians(near)) * math.sin(half * sine) / sine
        height = EARTH * (math.radians(north - south) + math.cos(math.radians(near)) * (1 - math.cos(half * sine)) / 2)
        if abs(middle) > 65:
            kind = f'ps:{90 if middle > 0 else -90}:{trim(centre)}'
        else:
            sixth = (north - south) / 6
            kind = f'lamb:{trim(middle)}:{trim(centre)}:{trim(south + sixth)}:{trim(north - sixth)}'
    width, height = 1.06 * width, 1.06 * height
    step = max(width, height) / 100
    nx, ny = round(width / step) + 1, round(height / step) + 1
    return f'{kind},{trim(middle)},{trim(centre)},{nx},{ny},{trim(step)},{trim(step)}'


def main():
    lines = MAPS.strip().splitlines()
    for row in BOXES.strip().splitlines():
        *box, name = row.split(None, 4)
        lines.append(f'{name}: {domain(*map(float, box))}')
    print(HEADER + '\n'.join(lines))


if __name__ == '__main__':
    main()
