"""Grids as arrays, and what identifies them."""

from __future__ import annotations

import _Yul

from .base import Sequence, classes, text_of

TYPE_CHECKING = False
if TYPE_CHECKING:
    from datetime import datetime as DateTime, timedelta as TimeDelta
    from typing import Any, Self
    import numpy as np
    from numpy.typing import ArrayLike, NDArray


class Level:
    """A vertical level or a layer between two values; prints as a label."""

    def __str__(self) -> str:
        return text_of(self.toLabel)

    def __repr__(self) -> str:
        return f'<Yul.Level {text_of(self.toString)}>'


class Variable:
    """What a grid holds: short name, long name, index and units."""


class ModelSpec:
    """Which model: originating centre and generating process."""


class GridSpec:
    """What identifies a grid: "variable,level,forecast time,model", each part may be open."""


def _arithmetic(name, is_reflected=False):
    """An operator as a NumPy function of two grids, or of a grid and numbers."""
    def operate(self, other):
        import numpy
        inputs = (other, self) if is_reflected else (self, other)
        return getattr(numpy, name)(*inputs)

    return operate


def _in_place(name):
    def operate(self, other):
        import numpy
        return getattr(numpy, name)(self, other, out=self)

    return operate


class Grid:
    """One two-dimensional field on the regular grid of a domain; row 0 in the north, column 0 in the west.

    Operators and NumPy functions work on grids as on arrays of float32 in which missing values are NaN, and missing
    values stay missing. A result of numbers for every point is a grid with the fields (date, level, variable, units)
    of the first grid in the formula; a comparison is an array. `==` compares identity.
    """

    if TYPE_CHECKING:
        def __add__(self, other: ArrayLike) -> Any: ...
        def __radd__(self, other: ArrayLike) -> Any: ...
        def __iadd__(self, other: ArrayLike) -> Grid: ...
        def __sub__(self, other: ArrayLike) -> Any: ...
        def __rsub__(self, other: ArrayLike) -> Any: ...
        def __isub__(self, other: ArrayLike) -> Grid: ...
        def __mul__(self, other: ArrayLike) -> Any: ...
        def __rmul__(self, other: ArrayLike) -> Any: ...
        def __imul__(self, other: ArrayLike) -> Grid: ...
        def __truediv__(self, other: ArrayLike) -> Any: ...
        def __rtruediv__(self, other: ArrayLike) -> Any: ...
        def __itruediv__(self, other: ArrayLike) -> Grid: ...
        def __floordiv__(self, other: ArrayLike) -> Any: ...
        def __rfloordiv__(self, other: ArrayLike) -> Any: ...
        def __ifloordiv__(self, other: ArrayLike) -> Grid: ...
        def __mod__(self, other: ArrayLike) -> Any: ...
        def __rmod__(self, other: ArrayLike) -> Any: ...
        def __imod__(self, other: ArrayLike) -> Grid: ...
        def __pow__(self, other: ArrayLike) -> Any: ...
        def __rpow__(self, other: ArrayLike) -> Any: ...
        def __ipow__(self, other: ArrayLike) -> Grid: ...
        def __lt__(self, other: ArrayLike) -> Any: ...
        def __le__(self, other: ArrayLike) -> Any: ...
        def __gt__(self, other: ArrayLike) -> Any: ...
        def __ge__(self, other: ArrayLike) -> Any: ...
    else:
        for _name, _ufunc in (('add', 'add'), ('sub', 'subtract'), ('mul', 'multiply'), ('truediv', 'true_divide'),
                              ('floordiv', 'floor_divide'), ('mod', 'remainder'), ('pow', 'power')):
            locals()[f'__{_name}__'] = _arithmetic(_ufunc)
            locals()[f'__r{_name}__'] = _arithmetic(_ufunc, True)
            locals()[f'__i{_name}__'] = _in_place(_ufunc)
        for _name, _ufunc in (('lt', 'less'), ('le', 'less_equal'), ('gt', 'greater'), ('ge', 'greater_equal')):
            locals()[f'__{_name}__'] = _arithmetic(_ufunc)
        del _name, _ufunc

    def __neg__(self) -> Any:
        return 0 - self

    def __pos__(self) -> Any:
        return self + 0

    def __abs__(self) -> Any:
        import numpy
        return numpy.absolute(self)

    def __array__(self, dtype: Any = None, copy: bool | None = None) -> NDArray[Any]:
        from .._arrays import as_array
        values = as_array(self)
        return values if dtype is None else values.astype(dtype)

    def __array_ufunc__(self, ufunc: np.ufunc, method: str, *inputs: Any, **keywords: Any) -> Any:
        from .._arrays import apply
        return apply(ufunc, method, inputs, keywords)

    @classmethod
    def from_array(cls, values: ArrayLike, domain: Domain | str, *, date: Date | DateTime | np.datetime64 | str | None = None,
                   level: Level | str | float | None = None,
                   fore: ForeTime | str | float | TimeDelta | np.timedelta64 | None = None,
                   var: Variable | str | None = None, units: str | None = None, info: str | None = None,
                   source: int | None = None, model: int | None = None) -> Self:
        """A grid of the values, an array (rows, columns) with row 0 in the north; masked values and NaN are missing.

        domain  a Domain or its text; one without counts gets those of the array
        date    initial time: a Date, a datetime, a numpy.datetime64 or a text
        level, fore, var  as setLevel, setForeTime and setVar take them; a level may be a number of hPa, a forecast time
                a number of hours or a timedelta; source and model are codes
        info    a descriptive text, the variable's long name unless given; the units are put behind it in brackets
        Raises ValueError for what the grid does not take.
        """
        from .._arrays import from_array
        fields = {'Level': level, 'ForeTime': fore, 'Var': var, 'Source': source, 'Model': model}
        return from_array(cls(), values, domain, date, fields, units, info)

    def at(self, lat: ArrayLike, lon: ArrayLike) -> Any:
        """Values at positions on the earth, interpolated as getValue does: numbers or arrays that broadcast; an array of
        float32, or a number for numbers. -9999 outside the grid and beside missing values."""
        from .._arrays import at
        return at(self, lat, lon)

    def to_xarray(self) -> Any:
        """The grid as an xarray.DataArray with the names, coordinates and attributes of the CF conventions: latitude and
        longitude, or x and y of the projection with its grid mapping `crs`; level, time, forecast_reference_time and
        forecast_period. Missing values are NaN."""
        from .._xarray import data_array
        return data_array(self)

    @property
    def values(self) -> NDArray[np.float32] | Any:
        """The values as a writable NumPy array (rows, columns) of float32 that shares the grid's memory.

        Missing values are -9999. None when the grid has no values. The array stays valid, on the old values,
        when the grid takes others.
        """
        view = self.view()
        if view is None:
            return None
        from numpy import asarray
        return asarray(view)

    @values.setter
    def values(self, values: ArrayLike) -> None:
        self.values[...] = values

    @property
    def masked(self) -> np.ma.MaskedArray[Any, np.dtype[np.float32]]:
        """The same array with the missing values masked."""
        from numpy.ma import masked_equal
        return masked_equal(self.values, _Yul.cvar.Const_MISS, copy=False)

    @property
    def date(self) -> Date:
        """The initial time of the field."""
        return self.getInitDate()

    @property
    def valid(self) -> Date:
        """The time for which the field holds: the initial time moved by the forecast time."""
        date = classes['Date']()
        self.getValidDate(date)
        return date

    @property
    def info(self) -> str:
        """What the field is, with its units in brackets."""
        return self.getInfo() or ''

    def __repr__(self) -> str:
        return f'<Yul.Grid {self.getNx()}x{self.getNy()} {self.getLevel()} {self.info}, {self.valid}>'


class Grids(Sequence):
    """A growable list of Grid."""
