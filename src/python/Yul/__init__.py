"""Meteorological data processing and plotting: GRIB grids, calendar times, map projections, contour maps.

    from Yul import GribFile

    for grid in GribFile("examples/data/height500.grib2"):
        print(grid.info, grid.date, grid.values.mean())

The classes are those of the library: operations that can fail return 1 or 0 and print one message, and missing
values are -9999. On top come iteration, `str`, `Date.datetime`, `Grid.values` (NumPy) and `with`. Texts, numbers
and objects of a wrong kind raise TypeError, OverflowError or ValueError.
"""

from os import path as _path

import _Yul as _module

from . import _proxy
from ._settings import settings, start

globals().update(_proxy.classes)
cvar = _module.cvar
_charts_names = 'contour_map', 'Page'
__all__ = [*_proxy.classes, 'cvar', 'settings', 'start', *_charts_names]


def __getattr__(name):
    """What is loaded when it is first asked for, to keep the import light."""
    if name not in _charts_names:
        raise AttributeError(f'module {__name__!r} has no attribute {name!r}')
    from . import _charts
    globals().update((known, getattr(_charts, known)) for known in _charts_names)
    return globals()[name]



def __dir__():
    return __all__


if not _module.Yul_getDatabasePath():
    _module.Yul_setDatabasePath(_path.join(_path.dirname(__file__), 'data'))
