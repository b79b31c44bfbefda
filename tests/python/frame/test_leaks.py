"""A million calls through each kind of conversion and ownership leave memory and reference counts as they were."""

from array import array
import gc
import os
import re
import shutil
import subprocess
import sys

import pytest

import _Yul as y
import Yul
from running import without_sanitizers

COUNT = 1_000_000
FAILURES = 100_000  # exceptions take their time
PAGE = os.sysconf('SC_PAGE_SIZE')
LEEWAY = 1_500_000  # octets; a leak of two octets a call shows

pytestmark = without_sanitizers('they keep freed memory')

TEXT = 'a text beyond the small ones, 500 hPa, °C'
text, point, points = y.new_String(TEXT), y.new_Point(1.0, 2.0), y.new_Points()
domain, earth, result = y.new_Domain('ll,50,10,5,5,1,1'), y.new_EarthPoint(50.5, 10.5), y.new_Point()
grid, member, values = y.new_Grid(4, 3), y.new_DomainVal(), (array('f', [50, 51]), array('f', [10, 11]))
y.Points_add(points, point)
places = array('f', [0, 0]), array('f', [0, 0])
image, samples = y.new_Image(2, 1), array('i', [5, -1])
proxy, station = Yul.Domain('ll,50,10,5,5,1,1'), Yul.EarthPoint(50.5, 10.5)


def refused(function, *arguments):
    def call():
        try:
            function(*arguments)
        except (TypeError, ValueError, OverflowError):
            pass
    return call


def given_up():
    pointer = y.new_Point(1.0, 2.0)
    pointer.disown()
    pointer.acquire()


def deleted():
    y.delete_Point(y.new_Point())


def attached():
    Yul.Point(1.0, 2.0)


def chained():
    whole = Yul.Points()
    whole.add(Yul.Point(1.0, 2.0))
    return whole.get(0).x


CALLS = {
    'int and float in': lambda: y.Grid_setValue(grid, 1, 1, 2.5), 'float out': lambda: y.Grid_getValue(grid, 1, 1),
    'bool out': lambda: y.Date_isYearLeap(2024), 'text in': lambda: y.String_set(text, TEXT),
    'text out': lambda: y.String_get(text), 'None for a text': lambda: y.Yul_getResrc(None),
    'object in': lambda: y.Domain_tran(domain, earth, result), 'object by proxy': lambda: proxy.tran(station, result),
    'object out by reference': lambda: y.Domain_getLimits(domain), 'object out by value': lambda: y.Grid_getSpec(grid),
    'null pointer out': lambda: y.VarName_find('no such variable'), 'item of a list': lambda: y.Points_get(points, 0),
    'array out': lambda: y.Grid_view(grid), 'array in': lambda: y.Domain_forward(domain, *values, *places),
    'whole numbers out': lambda: y.Image_getSamples(image), 'whole numbers in': lambda: y.Image_setSamples(image, samples),
    'number member': lambda: y.DomainVal_plat_set(member, 5.0), 'member out': lambda: y.DomainVal_plat_get(member),
    'object member': lambda: y.DomainVal_param_get(member), 'overload by kind': lambda: y.Yul_getResrc('device', 5),
    'variadic': lambda: y.String_printf(text, 'plain', 1, 2), 'variable': lambda: y.cvar.Const_PI,
    'table variable': lambda: y.cvar.DateVal_num_day, 'construct': y.new_Date, 'copy': lambda: y.new_Point(point),
    'delete': deleted, 'disown and acquire': given_up, 'instance': attached, 'part of an instance': chained,
    'operator': lambda: proxy == station, 'documentation': lambda: y.Domain_tran.__doc__,
}
REFUSALS = {
    'wrong type': refused(y.Grid_setValue, grid, 'x', 1, 2.5), 'out of range': refused(y.Grid_setValue, grid, 2**31, 1, 2.5),
    'null reference': refused(y.Domain_getNx, None), 'wrong count': refused(y.Domain_getNx),
    'no overload': refused(y.Yul_setMessageLevel, 3.5), 'surrogates': refused(y.String_set, text, '\ud800'),
    'wrong array': refused(y.Domain_forward, domain, values[0], values[1], b'x', places[0]),
    'dead object': refused(y.Point_getX, (dead := y.new_Point())), 'wrong documentation': refused(y._document, {'Date_set': 5}),
}
y.delete_Point(dead)
HELD = [text, point, points, domain, earth, result, grid, member, proxy, station, image, *values, *places, samples, TEXT, y.new_Date]


def memory():
    gc.collect()
    with open('/proc/self/statm') as file:
        return int(file.read().split()[1]) * PAGE


def repeat(call, count):
    for _ in range(count):
        call()


@pytest.mark.parametrize('kind', [*CALLS, *REFUSALS])
def test_memory_and_reference_counts_stay(kind):
    call, count = (CALLS[kind], COUNT) if kind in CALLS else (REFUSALS[kind], FAILURES)
    repeat(call, count // 20)
    before, counts = memory(), [sys.getrefcount(thing) for thing in HELD]
    repeat(call, count)
    grown = memory() - before
    assert [sys.getrefcount(thing) for thing in HELD] == counts
    assert grown < LEEWAY * count / COUNT + 200_000, f'{grown / count:.1f} octets a call'


SCRIPT = '''
import sys
import _Yul as y, Yul
for grid in Yul.GribFile(sys.argv[1]):
    grid.getDomain().tran(Yul.EarthPoint(51.5, -0.1), Yul.Point())
    points = Yul.Points()
    points.extend(Yul.Point(i, i) for i in range(100))
    kept = points[5]
    del points
    kept.x, str(grid), grid.view()[0, 0], Yul.Date("2026111412").datetime
    page = Yul.contour_map(grid, interval=120)
for wrong in (None, "x", 1.5, [], b"x"):
    try:
        y.Grid_setValue(wrong, wrong, wrong, wrong)
    except (TypeError, ValueError, OverflowError):
        pass
'''


@pytest.mark.skipif(shutil.which('valgrind') is None, reason='valgrind is not installed')
def test_valgrind_sees_no_error_of_ours(root, tmp_path):
    # Python's own allocator reads what it does not own; with the C library's every octet is watched.
    log = tmp_path / 'log'
    subprocess.run(['valgrind', '--quiet', '--error-exitcode=0', f'--log-file={log}', '--errors-for-leak-kinds=definite',
                    '--leak-check=full', '--show-leak-kinds=definite', '--num-callers=40', sys.executable, '-c', SCRIPT,
                    root / 'examples' / 'data' / 'height500.grib2'],
                   env={**os.environ, 'PYTHONMALLOC': 'malloc'}, check=True, timeout=600)
    blocks = [block for block in re.split(r'(?m)^==\d+== *$', log.read_text()) if '_Yul.abi3.so' in block]
    assert not blocks, '\n\n'.join(blocks)
