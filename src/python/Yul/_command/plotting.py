"""draw a field of a file as a contour map

The field is the first of the file, or the first whose description or level has the text of --match. The map is the
field's own area, or the one that --domain describes, for example stereo:90:-25,53,-25,57,43,1.5 (polar stereographic,
25 W upright, centred at 53 N 25 W, 57 x 43 points of 150 km). The ending of --output says what is drawn: .ps a page,
.eps a picture to embed, .png a picture (by Ghostscript).
"""

import math
import os

from Yul import Yul, contour_map

from ._common import Failure, has_text, open_fields


def declare(parser):
    parser.add_argument('file', metavar='FILE', help='GRIB or native grid file; - for GRIB from standard input')
    parser.add_argument('--match', metavar='TEXT', default='', help='the first field whose description or level has it')
    parser.add_argument('--domain', metavar='TEXT', help='area of the map (default: that of the field)')
    parser.add_argument('--interval', metavar='N', type=float, help='between two contours (default: a round one)')
    parser.add_argument('--fill', action='store_true', help='fill the bands between the levels with colours')
    parser.add_argument('--lines', metavar='ATTRIBUTES', default=True, help='of the contours, such as blue:wi=2')
    parser.add_argument('--map', metavar='LAYERS', default=True, help='such as land,sea,river: see MapPlot.setParam')
    parser.add_argument('--no-map', action='store_true', help='no coastlines and boundaries')
    parser.add_argument('--title', metavar='TEXT', help='upper left label')
    parser.add_argument('--output', metavar='NAME', help='default: yul.ps, or yul.png with --png')
    parser.add_argument('--png', action='store_true', help='a picture')
    parser.add_argument('--gray', action='store_true', help='no colours')
    parser.add_argument('--portrait', action='store_true', help='an upright page')
    parser.add_argument('--no-labels', action='store_true', help='no labels in the contours, no highs and lows')


def find_field(name, text):
    """The first field that has the text."""
    seen = {}
    with open_fields(name) as file:
        for grid in file:
            if has_text(grid, text):
                return grid
            seen[f'{grid.info} at {grid.getLevel()}'] = True
    if not seen:
        raise Failure(Yul.NODATA)  # the library has said why
    few = list(seen)[:8]
    raise Failure(Yul.NODATA, f'{name}: no field matches "{text}"; there is: ' + ', '.join(few)
                  + (f' and {len(seen) - len(few)} more' if len(seen) > len(few) else ''))


def output_of(arguments):
    name = arguments.output or ('yul.png' if arguments.png else 'yul.ps')
    if arguments.png and not name.lower().endswith('.png'):
        name += '.png'
    if os.path.exists(name) and not os.path.isfile(name):
        raise Failure(Yul.NOWRITE, f'{name}: not a file to write to')
    if arguments.file != '-' and os.path.realpath(name) == os.path.realpath(arguments.file):
        raise Failure(Yul.BADPARAM, f'{name}: would replace what is read')
    return name


def run(arguments):
    if arguments.interval is not None and not (0 < arguments.interval < math.inf):
        raise Failure(Yul.BADPARAM, f'not an interval: {arguments.interval}')
    grid, output = find_field(arguments.file, arguments.match), output_of(arguments)
    Yul.setMessageLevel(Yul.NONE)  # but errors; what is created says the last line
    try:
        contour_map(grid, output, domain=arguments.domain, interval=arguments.interval,
                    map=not arguments.no_map and arguments.map, fill=arguments.fill,
                    lines=arguments.lines, labels=not arguments.no_labels, highs=not arguments.no_labels,
                    title=arguments.title, color=not arguments.gray, portrait=arguments.portrait)
    except ValueError as error:
        raise Failure(Yul.BADPARAM, str(error).removeprefix('contour_map: ')) from None
    except OSError as error:
        text = str(error).removeprefix('contour_map: ').removeprefix('Page.save: ')
        raise Failure(Yul.NOWRITE, f'{output}: {error.strerror}' if error.strerror else text) from None
    print(f'{output}: {grid.info} at {grid.getLevel()}, {grid.valid}')
