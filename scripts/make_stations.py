#!/usr/bin/env python3
"""Makes data/sao.cty from a table of stations: make_stations.py TABLE.csv > data/sao.cty

The table has a header line and at least the columns icao, lat, lon, elevation_m, country and name. The shipped file
was made from the public list of surface stations of the United States National Weather Service (nsd_cccc.txt).
"""

import csv
import re
import sys

HEADER = """\
# Stations: identifier, latitude, longitude (degrees, north and east positive), elevation (metres above the sea),
# country, name. One a line, separated by commas; the elevation may be empty and the name may hold commas. Lines that
# begin with "#" are comments. Looked up by identifier, whatever the case of its letters; the first of several counts.
"""


def rows(table):
    for row in csv.DictReader(table):
        identifier = row['icao'].strip().upper()
        lat, lon = float(row['lat']), float(row['lon'])
        if not re.fullmatch('[A-Z0-9]{4}', identifier) or abs(lat) > 90 or abs(lon) > 180:
            print(f'passed over: {row}', file=sys.stderr)
            continue
        country = row['country'].replace(',', ' ').strip()
        yield f'{identifier},{lat:.4f},{lon:.4f},{row["elevation_m"].strip()},{country},{row["name"].strip()}'


def main():
    if len(sys.argv) != 2:
        sys.exit(__doc__)
    with open(sys.argv[1], encoding='utf-8', newline='') as table:
        print(HEADER + '\n'.join(sorted(rows(table))))


if __name__ == '__main__':
    main()
