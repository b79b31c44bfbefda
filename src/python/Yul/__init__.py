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
from ._analysis import analyse
from ._bulletins import Bulletin, reports
from ._charts import Page, contour_map
from ._progress import progress
from ._settings import settings, start

globals().update(_proxy.classes)
cvar = _module.cvar
__all__ = [*_proxy.classes, 'analyse', 'Bulletin', 'contour_map', 'cvar', 'Page', 'progress', 'reports', 'settings', 'start']


def __dir__():
    return __all__


if not _module.Yul_getDatabasePath():
    _module.Yul_setDatabasePath(_path.join(_path.dirname(__file__), 'data'))
