"""write the fields of a file to a file of another kind

OUT becomes GRIB edition 1 when its name ends in .grib, .grib1, .grb or .grb1, else a native grid file; --to says
otherwise. Fields that edition 1 cannot hold are named and left out; the exit status is 8 then. OUT appears when it is
whole: a file of that name that was there before stays until then.
"""

import os

from Yul import GribFile, GridYulFile, Yul
from Yul._progress import progress

from ._common import Failure, has_text, open_fields

ENDINGS = '.grib', '.grib1', '.grb', '.grb1'


def declare(parser):
    parser.add_argument('file', metavar='FILE', help='GRIB or native grid file; - for GRIB from standard input')
    parser.add_argument('output', metavar='OUT', help='file to write')
    parser.add_argument('--match', metavar='TEXT', default='', help='only fields whose description or level has it')
    parser.add_argument('--to', choices=('grib1', 'native', 'text'),
                        help='GRIB edition 1, native with binary values, native with values as text')
    parser.add_argument('--bits', metavar='N', type=int, help='GRIB: bits of a packed value, 1 to 31 (default: 16)')
    parser.add_argument('--decimals', metavar='N', type=int,
                        help='GRIB: decimal places to keep, -30 to 30 (default: as many as the bits hold)')


def open_output(name, arguments):
    kind = arguments.to or ('grib1' if arguments.output.lower().endswith(ENDINGS) else 'native')
    if kind != 'grib1':
        if arguments.bits is not None or arguments.decimals is not None:
            raise Failure(Yul.BADPARAM, '--bits and --decimals are for GRIB')
        output = GridYulFile()
        if not output.open(name, GridYulFile.WRITE, GridYulFile.BINARY if kind == 'native' else GridYulFile.TEXT):
            raise Failure(Yul.NOWRITE)
        return output
    output = GribFile()
    if arguments.bits is not None and not (arguments.bits > 0 and output.setValueBits(arguments.bits)):
        raise Failure(Yul.BADPARAM, f'not a number of bits: {arguments.bits}')
    if arguments.decimals is not None and not output.setDecimalScale(arguments.decimals):
        raise Failure(Yul.BADPARAM, f'not a number of decimal places: {arguments.decimals}')
    if not output.open(name, 1):
        raise Failure(Yul.NOWRITE)
    return output


def run(arguments):
    target = os.path.realpath(arguments.output)
    if os.path.exists(target) and not os.path.isfile(target):
        raise Failure(Yul.NOWRITE, f'{arguments.output}: not a file to write to')
    if arguments.file != '-' and target == os.path.realpath(arguments.file):
        raise Failure(Yul.BADPARAM, f'{arguments.output}: would replace what is read')
    part = f'{target}.{os.getpid()}.part'
    seen = written = 0
    try:
        with open_fields(arguments.file) as file:
            output = open_output(part, arguments)
            for grid in progress(file, 'fields'):
                if has_text(grid, arguments.match):
                    seen += 1
                    written += output.write(grid)
            if not output.close():
                raise Failure(Yul.NOWRITE, f'{arguments.output}: not all could be written')
        if seen == 0:
            raise Failure(Yul.NODATA, f'{arguments.file}: no field to convert')
        if written == 0:
            raise Failure(Yul.NOWRITE, f'{arguments.output}: none of the fields could be written')
        os.replace(part, target)
    finally:
        if os.path.exists(part):
            os.remove(part)
    print(f'{arguments.output}: {written} of {seen} fields')
    if written < seen:
        raise Failure(Yul.NOWRITE)
