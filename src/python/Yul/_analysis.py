"""Objective analysis of arrays of reports."""

from __future__ import annotations

from ._proxy import classes

TYPE_CHECKING = False
if TYPE_CHECKING:
    from collections.abc import Mapping
    from typing import overload
    from numpy.typing import ArrayLike

    @overload
    def analyse(lats: ArrayLike, lons: ArrayLike, values: Mapping[str, ArrayLike], domain: Domain | str, *,
                filter: float | None = None, radius: float | None = None, passes: int | None = None,
                convergence: float | None = None, stations: int | None = None,
                missing: float | None = None) -> dict[str, Grid]:
        """Makes grids of several fields of scattered values, see below."""

    @overload
    def analyse(lats: ArrayLike, lons: ArrayLike, values: ArrayLike, domain: Domain | str, *, variable: str = '',
                filter: float | None = None, radius: float | None = None, passes: int | None = None,
                convergence: float | None = None, stations: int | None = None, missing: float | None = None) -> Grid:
        """Makes a grid of scattered values by successive corrections with Gaussian weights, see ObjectAnal."""

# Options, and the names of the library's operations for them behind "set" and "get".
OPTIONS = {'filter': 'Filter', 'radius': 'RadInf', 'passes': 'NumPass', 'convergence': 'Converg',
           'stations': 'MinSta', 'missing': 'MissVal'}


def analyse(lats, lons, values, domain, *, variable='', filter=None, radius=None, passes=None, convergence=None,
            stations=None, missing=None):
    """Makes a grid of scattered values by successive corrections with Gaussian weights (see ObjectAnal).

    lats, lons   where the stations are, degrees
    values       one value a station; or several fields by name, which become the variables of their grids. NaN, infinite,
                 masked and -9999 are missing
    domain       where the grid is to be, a Domain or its text
    variable     what the values are, as "TMP" or "TMP[C]"
    filter       square of the distance, in grid lengths, at which a weight is 1/e (1)
    radius       distance in grid lengths up to which a station counts (3)
    passes       how many, the first included (1)
    convergence  what the filter is multiplied by from pass to pass, 0.01 up to 1 (0.2)
    stations     how many must influence a grid point (1)
    missing      the value that a missing one is taken for (none)

    An option that is None is as the setting "object_param" has it, or else as in brackets. Returns the grid, or the
    grids by name. Raises ValueError for arrays that do not fit together, a domain without a grid, a bad option, and
    when memory is short.
    """
    from collections.abc import Mapping
    from math import isclose
    from operator import index
    import numpy as np

    def array(numbers):
        with np.errstate(over='ignore'):
            return np.ravel(np.ma.filled(np.ma.asarray(numbers).astype(np.float32), np.nan))

    has_names = isinstance(values, Mapping)
    fields = {name: array(field) for name, field in (values if has_names else {variable: values}).items()}
    lats, lons = array(lats), array(lons)
    for name, field in {'lons': lons, **fields}.items():
        if len(field) != len(lats):
            raise ValueError(f'analyse: {len(lats)} latitudes and {len(field)} {name or "values"}')
    data = classes['StationData'](len(fields))
    data.add(lats, lons)
    for i, (name, field) in enumerate(fields.items()):
        data.setName(i, name)
        data.setValues(i, field)

    analysis, grids = classes['ObjectAnal'](), classes['Grids']()
    chosen = dict(filter=filter, radius=radius, passes=passes, convergence=convergence, stations=stations, missing=missing)
    for option, value in chosen.items():
        if value is not None:
            value = index(value) if option in ('passes', 'stations') else float(value)
            taken = getattr(analysis, f'set{OPTIONS[option]}')(value)
            held = getattr(analysis, f'get{OPTIONS[option]}')()
            if not taken or not isclose(held, value, rel_tol=1e-6) or option == 'passes' and value < 1:
                raise ValueError(f'analyse: {option} cannot be {value}')
    analysis.setDomain(classes['Domain'](domain) if isinstance(domain, str) else domain)
    if not analysis.compute(data, grids):
        raise ValueError('analyse: no analysis on this domain')
    return dict(zip(fields, grids)) if has_names else grids[0]
