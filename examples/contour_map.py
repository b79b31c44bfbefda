#!/usr/bin/env python3
"""Draws a contour map of one field of a GRIB file to a PostScript page.

    contour_map.py FILE [--match TEXT] [--domain TEXT] [--interval N] [--device ps|eps] [--output NAME]
                        [--portrait] [--color NAME] [--no-labels] [--no-map]

The field is the first of the file, or the first whose description holds the text of --match. The map is the
field's own area, or the one that --domain describes, for example stereo:90:-25,53,-25,57,43,1.5 (polar
stereographic, 25 W upright, centred at 53 N 25 W, 57 x 43 points of 150 km).
"""

import argparse
import math
import os
import sys
from typing import NoReturn

from Yul import ContPlot, Domain, DomainTool, GribFile, Grid, MapPlot, Plot, PlotAttr, Range, Yul


# How the page lies, and on an upright sheet its printable area in inches. A picture to embed stands upright in
# the fixed box that its header names.
LYING, UPRIGHT, EMBEDDED = 'land', 'port,sz=8:10.5', 'port'

LONGEST_NAME = 60  # octets that the device takes
CONTOURS = 12  # about as many when no interval is given
ROUND = 1, 2, 4, 5, 10


class Failure(Exception):
    """What to tell the user, unless the library did; nothing was drawn."""


class Parser(argparse.ArgumentParser):
    def error(self, message: str) -> NoReturn:
        sys.exit(f'contour_map: {message}')


def parse_arguments() -> argparse.Namespace:
    parser = Parser(description=__doc__.split('\n')[0])
    parser.add_argument('file', help='GRIB file, edition 1 or 2')
    parser.add_argument('--match', metavar='TEXT', default='', help='take the first field whose description has it')
    parser.add_argument('--domain', metavar='TEXT', help='area of the map (default: that of the field)')
    parser.add_argument('--interval', metavar='N', type=float, help='between two contours (default: a round one)')
    parser.add_argument('--device', choices=('ps', 'eps'), default='ps', help='a page, or a picture to embed')
    parser.add_argument('--output', metavar='NAME', help='default: yul.ps or yul.eps')
    parser.add_argument('--portrait', action='store_true', help='upright page (ps)')
    parser.add_argument('--color', metavar='NAME', help='draw in colour, contours in this one')
    parser.add_argument('--labels', action=argparse.BooleanOptionalAction, default=True,
                        help='label the contours, mark highs and lows')
    parser.add_argument('--map', action=argparse.BooleanOptionalAction, default=True,
                        help='draw coastlines and boundaries')
    return parser.parse_args()


def find_field(name: str, text: str) -> Grid:
    """The first field of the file whose description holds the text."""
    try:
        size = os.path.getsize(name)
        if not os.path.isfile(name):
            raise Failure(f'{name}: not a file')
        if size == 0:
            raise Failure(f'{name}: the file is empty')
    except OSError as error:
        raise Failure(f'{name}: {error.strerror}')
    with GribFile(name) as file:
        descriptions = []
        for grid in file if file.isOpen() else ():
            descriptions.append(grid.info)
            if text.lower() in grid.info.lower():
                return grid
    if not descriptions:
        raise Failure(f'{name}: no GRIB field that can be read in the file')
    raise Failure(f'{name}: no field matches "{text}"; there is: ' + ', '.join(dict.fromkeys(descriptions)))


def find_domain(text: str | None, grid: Grid) -> Domain:
    """The area of the map: the text's, or the grid's own."""
    if text is None:
        return grid.getDomain()
    domain = Domain()
    if not DomainTool.decode(text, domain):
        raise Failure(f'not a domain: {text}')
    return domain


def round_interval(values: Range) -> float:
    """A round number that gives about a dozen contours; 0, which leaves the choice open, for a flat field."""
    spread = (values.max - values.min) / CONTOURS
    if not 0 < spread < math.inf:
        return 0
    power = math.pow(10, math.floor(math.log10(spread)))
    return power * next(digit for digit in ROUND if digit * power >= spread or digit == ROUND[-1])


def draw(grid: Grid, domain: Domain, arguments: argparse.Namespace, page: str) -> None:
    """Draws the map to the file `page`."""
    is_eps = arguments.device == 'eps'
    Yul.setResrc('device', ','.join(['postscript', page,
                                     EMBEDDED if is_eps else UPRIGHT if arguments.portrait else LYING,
                                     'eps' if is_eps else 'noeps',
                                     'color' if arguments.color else 'gray']))
    plot, contours, values = Plot(), ContPlot(), Range()
    grid.getRange(values)
    if values.min == values.max == -9999:
        raise Failure('the field has no values')
    if arguments.interval is None:
        contours.setInterval(round_interval(values))
    elif not (arguments.interval > 0 and contours.setInterval(arguments.interval)):
        raise Failure(f'not an interval: {arguments.interval}')
    if not plot.open():
        raise Failure()
    if values.min == values.max:  # a level on that value would draw the sides of all cells
        contours.setLow(values.max + abs(values.max) / 100 + 1)
        plot.setLabel('ll', '%a{ %u} everywhere')
    if arguments.color:
        if plot.getColorMap().getInd(arguments.color) < 0:
            raise Failure(f'not a colour: {arguments.color}')
        contours.setLine(PlotAttr(arguments.color))
    if arguments.labels:
        contours.setParam('lab,hilo,every=5')
    if not plot.setDomain(domain):
        raise Failure(f'not an area to draw: {domain}')
    plot.drawGraticule()
    if not contours.drawLines(plot, grid):
        raise Failure(f'the field has no values on this map: {domain}')
    if arguments.map:
        coast = MapPlot()
        coast.setParam('nogrid')
        if not coast.drawLines(plot):
            raise Failure()
    contours.drawTexts(plot)
    plot.drawBorder()
    plot.drawLabels()
    if not plot.close():
        raise Failure()


def find_output(arguments: argparse.Namespace) -> str:
    """The full name of the page. It may replace a file, but neither the field's nor a device."""
    output = os.path.realpath(arguments.output or f'yul.{arguments.device}')
    if os.path.exists(output) and not os.path.isfile(output):
        raise Failure(f'{output}: not a file to write to')
    if output == os.path.realpath(arguments.file):
        raise Failure(f'{output}: the page would replace the field')
    return output


def part_name(name: str) -> str:
    """What a page is called until it is finished: its name and more, where device parameters can carry that."""
    ending = f'.{os.getpid()}.part'
    is_plain = ',' not in name and name[:1] not in '+|' and len(os.fsencode(name + ending)) <= LONGEST_NAME
    return (name if is_plain else 'contour_map') + ending


def main() -> None:
    arguments = parse_arguments()
    Yul.setProgramName('contour_map')
    Yul.setMessageLevel('error')
    try:
        grid = find_field(arguments.file, arguments.match)
        domain = find_domain(arguments.domain, grid)
        output = find_output(arguments)
        page = part_name(os.path.basename(output))
        try:
            os.chdir(os.path.dirname(output))
            open(page, 'xb').close()
            draw(grid, domain, arguments, page)
            os.replace(page, output)
        except OSError as error:
            raise Failure(f'{output}: {error.strerror}')
        finally:
            if os.path.exists(page):
                os.remove(page)
    except Failure as failure:
        sys.exit(f'contour_map: {failure}' if failure.args else 1)
    print(f'{arguments.output or output}: {grid.info}')


if __name__ == '__main__':
    main()
