"""list the fields of files

One line a field, from the headers alone: number in the file, variable, level, forecast time, valid time, size of the
grid, description. With --json one array of records with the same keys for every field.
"""

import json
import sys

from Yul import Yul

from ._common import Failure, has_text, is_terminal, open_fields

COLUMNS = 'number', 'variable', 'level', 'forecast', 'valid', 'size', 'description'
RIGHT = 'number', 'size'


def declare(parser):
    parser.add_argument('files', metavar='FILE', nargs='+', help='GRIB or native grid file; - for GRIB from standard input')
    parser.add_argument('--match', metavar='TEXT', default='', help='only fields whose description or level has it')
    parser.add_argument('--json', action='store_true', help='records instead of a table')


def record_of(number, name, grid):
    """A field as JSON has it."""
    from Yul._habits.files import header_record
    record = {'file': name, 'number': number, **header_record(grid), 'valid': grid.valid.datetime,
              'label': str(grid.getLevel()), 'units': grid.getUnits(), 'domain': str(grid.getDomain())}
    return {key: value.strftime('%Y-%m-%dT%H:%M:%SZ') if hasattr(value, 'strftime') else value
            for key, value in record.items()}


def row_of(number, grid):
    fore = str(grid.getForeTime())
    return (str(number), grid.getVar().getName() or '', str(grid.getLevel()), fore + 'h' if fore.isdigit() else fore,
            format(grid.valid, '%Y-%m-%d %H:%M') if grid.valid.isSet() else '', f'{grid.getNx()}x{grid.getNy()}', grid.info)


def fields_of(name, text):
    """Number and header of each field; the grid is used again for the next one."""
    with open_fields(name) as file:
        number = 0
        for grid in file._headers():
            number += 1
            if has_text(grid, text):
                yield number, grid
            file.next()
        if number == 0:
            raise Failure(Yul.NODATA)  # the library has said why


def print_table(name, rows, *, with_name, in_colour):
    widths = [max(len(row[i]) for row in [COLUMNS, *rows]) for i in range(len(COLUMNS) - 1)]

    def line(row):
        cells = [cell.rjust(width) if title in RIGHT else cell.ljust(width)
                 for cell, width, title in zip(row, widths, COLUMNS)]
        return '  '.join([*cells, row[-1]]).rstrip()

    if with_name:
        print(f'{name}:')
    print(f'\033[1m{line(COLUMNS)}\033[0m' if in_colour else line(COLUMNS))
    for row in rows:
        print(line(row))


def run(arguments):
    records, failure, found = [], None, False
    for name in arguments.files:
        try:
            if arguments.json:
                records += [record_of(number, name, grid) for number, grid in fields_of(name, arguments.match)]
                continue
            rows = [row_of(number, grid) for number, grid in fields_of(name, arguments.match)]
        except Failure as problem:  # the other files are listed all the same
            if problem.text:
                print(f'{arguments.prog}: {problem.text}', file=sys.stderr)
            failure = problem
            continue
        if rows:
            if found:
                print()
            print_table(name, rows, with_name=len(arguments.files) > 1, in_colour=is_terminal())
            found = True
    if arguments.json:
        json.dump(records, sys.stdout, indent=1, ensure_ascii=False)
        print()
    if failure is not None:
        raise Failure(failure.status)
    if not records and not found:
        raise Failure(Yul.NODATA, f'no field matches "{arguments.match}"')
