"""Grids and NumPy: grids from arrays, arithmetic with grids, values at many places.

To NumPy a grid is an array (rows, columns) of float32 with NaN where values are missing.
"""

from datetime import timedelta
from numbers import Real

import numpy as np

import _Yul

from . import Date, DateTool, Domain, Grid, String

MISS = np.float32(_Yul.cvar.Const_MISS)


def as_array(grid):
    """A copy of the values, NaN for missing ones; an array without points for a grid without values."""
    values = grid.values
    if values is None:
        return np.empty((0, 0), np.float32)
    return np.where(values == MISS, np.float32(np.nan), values)


def fill(grid, values):
    """Writes an array of the grid's shape into it: what is masked or NaN becomes missing."""
    values = np.ma.filled(np.ma.asarray(values, np.float32), np.nan)
    np.copyto(grid.values, np.where(np.isnan(values), MISS, values))
    return grid


def apply(ufunc, method, inputs, keywords):
    """A NumPy function on grids. The result of the shape of the first grid is a grid with that one's fields, if it is
    numbers; anything else stays an array. NotImplemented for what has no such meaning."""
    if method == 'at':
        return NotImplemented
    out = keywords.pop('out', ())
    model = next((item for item in inputs if isinstance(item, Grid)), None)
    arrays = [as_array(item) if isinstance(item, Grid) else item for item in inputs]
    result = getattr(ufunc, method)(*arrays, **keywords)
    if out:
        return _into(out, result)
    if model is None or method != '__call__' or isinstance(result, tuple) or result.dtype.kind not in 'fiu' \
            or result.shape != (model.getNy(), model.getNx()):
        return result
    grid = Grid()
    grid.copyInfo(model)
    grid.allocData()
    return fill(grid, result)


def _into(out, result):
    if len(out) != 1:
        return NotImplemented
    target = out[0]
    if isinstance(target, Grid):
        return fill(target, np.broadcast_to(result, target.values.shape))
    target[...] = result
    return target


def at(grid, lat, lon):
    """See Grid.at."""
    lat, lon = np.broadcast_arrays(np.asarray(lat, np.float64), np.asarray(lon, np.float64))
    out = np.empty(lat.shape, np.float32)
    grid.getValues(np.require(lat, None, 'CA'), np.require(lon, None, 'CA'), out)
    return out if out.shape else float(out)


def _sized(domain, rows, columns):
    """The domain for so many points; one that has no counts gets these."""
    domain = Domain(domain)
    val = domain.get()
    if val.nx == val.ny == MISS:
        val.nx, val.ny = columns, rows
        domain.set(val)
    if domain.isMiss():
        raise ValueError('Grid.from_array: the domain is missing')
    if (domain.getNy(), domain.getNx()) != (rows, columns):
        raise ValueError(f'Grid.from_array: {rows} x {columns} values for a domain of {domain.getNy()} rows and '
                         f'{domain.getNx()} columns')
    return domain


def _field(name, value):
    """A forecast time or level given as a number, in hours or hPa, or as a timedelta: its text."""
    if name == 'ForeTime' and isinstance(value, (timedelta, np.timedelta64)):
        return f'{np.timedelta64(value) // np.timedelta64(1, "s")}s'
    return str(value) if name in ('ForeTime', 'Level') and isinstance(value, Real) else value


def from_array(grid, values, domain, date, fields, units, info):
    """See Grid.from_array."""
    values = np.ma.asarray(values)
    if values.ndim != 2:
        raise ValueError(f'Grid.from_array: values have {values.ndim} dimensions, not 2')
    grid.setDomain(_sized(domain, *values.shape))
    if not (grid.setSize(values.shape[1], values.shape[0]) and grid.allocData()):
        raise ValueError(f'Grid.from_array: no grid of {values.shape[0]} x {values.shape[1]} values')
    fill(grid, values)
    for name, value in fields.items():
        if value is not None and not getattr(grid, f'set{name}')(_field(name, value)):
            raise ValueError(f'Grid.from_array: invalid {name}: {value}')
    if date is not None:
        _set_date(grid, date)
    var = grid.getVar()
    grid.setInfo(info if info is not None else var.getLongName() or var.getName())
    if units or (info is None and grid.getUnits()):
        grid.setUnits(units or str(grid.getUnits()))
    return grid


def _read_date(text):
    """As headers of data have it ("12Z 14 NOV 2026"), or as Date takes it."""
    date = Date()
    DateTool.decode(text, date)
    return date if date.isSet() else Date(text)


def _set_date(grid, date):
    """From a Date, a datetime, a numpy.datetime64 or a text, which is kept as the text of the date."""
    if isinstance(date, str):
        grid.setDatim(date)
        date = _read_date(date)
    elif isinstance(date, np.datetime64):
        date = Date.fromDatetime64(date)
    elif not isinstance(date, Date):
        date = Date.fromDatetime(date)
    if not date.isSet():
        raise ValueError('Grid.from_array: the date cannot be read')
    grid.setDate(date)
    if not grid.getDatim():
        text = String()
        date.toText(text)
        grid.setDatim(str(text))
