"""What Python users expect of the library's classes beyond the library's own operations, class by class.

The names of a class here join the class of the same name; where both have a name, the one here holds. `None`
stands for "not set", where the library itself speaks of -9999. The build copies the annotations into the type stubs; `Item`
there is what a list holds.
"""

from __future__ import annotations

import _Yul

from ._bulletins import Bulletin, filename_of, reference_date

TYPE_CHECKING = False  # as type checkers know it; importing typing would take as long as the whole package
if TYPE_CHECKING:
    from collections.abc import Iterable, Iterator
    from datetime import datetime as DateTime, timedelta as TimeDelta
    from os import PathLike
    from typing import IO, Any, Self, overload
    import numpy as np
    from numpy.typing import ArrayLike, NDArray


def text_of(write, *arguments):
    """The text that a library operation writes into a String."""
    text = _Yul.new_String()
    write(*arguments, text)
    return _Yul.String_get(text) or ''


class _Record:
    """A few named numbers: prints as they are made, compares by value, unpacks."""

    fields = ()

    def __iter__(self) -> Iterator[float]:
        return iter([getattr(self, name) for name in self.fields])

    def __repr__(self) -> str:
        return f'{type(self).__name__}({", ".join(format(value, "g") for value in self)})'

    def __eq__(self, other: object) -> bool:
        return isinstance(other, type(self)) and list(self) == list(other) or NotImplemented

    __hash__ = None


class _Sequence:
    """A growable list of the library as a Python sequence. Items are the list's own, not copies."""

    def __len__(self) -> int:
        return self.getNum()

    if TYPE_CHECKING:
        @overload
        def __getitem__(self, index: int) -> Item: ...

        @overload
        def __getitem__(self, index: slice) -> list[Item]: ...

    def __getitem__(self, index):
        count = self.getNum()
        if isinstance(index, slice):
            return [self.get(i) for i in range(*index.indices(count))]
        if not -count <= index < count:
            raise IndexError(f'index {index} in a list of {count}')
        return self.get(index % count)

    def __iter__(self) -> Iterator[Item]:
        i = 0
        while i < self.getNum():
            yield self.get(i)
            i += 1

    def append(self, item: Item) -> None:
        self.add(item)

    def extend(self, items: Iterable[Item]) -> None:
        for item in items:
            self.add(item)

    def __repr__(self) -> str:
        return f'<Yul.{type(self).__name__} of {len(self)}>'


class _Closing:
    """Closed at the end of a `with` block."""

    def __enter__(self) -> Self:
        return self

    def __exit__(self, *exception: object) -> None:
        self.close()


class String:
    def __str__(self) -> str:
        return self.get() or ''

    def __len__(self) -> int:
        return self.length()

    def __repr__(self) -> str:
        return f'String({str(self)!r})'


class Strings(_Sequence):
    if TYPE_CHECKING:
        @overload
        def __getitem__(self, index: int) -> str: ...

        @overload
        def __getitem__(self, index: slice) -> list[str]: ...

    def __getitem__(self, index):
        if isinstance(index, slice):
            return [self.getString(i) for i in range(*index.indices(len(self)))]
        if not -len(self) <= index < len(self):
            raise IndexError(f'index {index} in a list of {len(self)}')
        return self.getString(index % len(self))

    def __iter__(self) -> Iterator[str]:
        return (self.getString(i) for i in range(len(self)))


class EarthPoint(_Record):
    """A position on the earth: latitude and longitude in degrees, north and east positive."""
    fields = ('lat', 'lon')


class Point(_Record):
    """A position in the plane of a projection, x to the right and y up, in units of 100 km."""
    fields = ('x', 'y')


class GridPoint(_Record):
    """A position in a grid: fractional column and row, row 0 in the north."""
    fields = ('x', 'y')


class Rect(_Record):
    """A rectangle by two corners."""
    fields = ('x1', 'y1', 'x2', 'y2')


class EarthRange(_Record):
    fields = ('lat1', 'lon1', 'lat2', 'lon2')


class RGB(_Record):
    fields = ('r', 'g', 'b')


class GeomBox(_Record):
    fields = ('width', 'height', 'x', 'y')


class Range(_Record):
    """Smallest and largest value."""
    fields = ('min', 'max')


class EarthPoints(_Sequence):
    """A growable list of EarthPoint."""


class Points(_Sequence):
    """A growable list of Point."""


class GridPoints(_Sequence):
    """A growable list of GridPoint."""


class Grids(_Sequence):
    """A growable list of Grid."""


def _calendar_seconds(date):
    """Seconds since 1970 by the Gregorian calendar. The library's own count, which takes every fourth year as a leap
    year, is the same from 1901 to 2099."""
    year = date.getYear()
    if year == _Yul.cvar.Const_MISS or 1901 <= year <= 2099:
        return date.getSeconds()
    month, day, *clock = (0 if field == _Yul.cvar.Const_MISS else int(field) for field in (
        date.getMonth(), date.getDay(), date.getHour(), date.getMinute(), date.getSecond()))
    year, months = (year, month - 3) if month > 2 else (year - 1, max(month, 1) + 9)  # years that begin in March
    days = 365 * year + year // 4 - year // 100 + year // 400 + (153 * months + 2) // 5 + max(day, 1) - 719469
    hour, minute, second = clock
    return ((days * 24 + hour) * 60 + minute) * 60 + second


class DateVal:
    """A calendar time as plain fields, each of which may be missing."""


class ForeTime:
    """When a field holds, counted from its initial time."""


class Date:
    """A calendar time whose fields may each be missing. UTC unless a time zone was applied for display.

    Dates compare, hash and subtract by the seconds of their clock since 1970: equal dates may differ in the fields
    that are missing. `f'{date:%Y-%m-%d}'` formats with the codes of `toText`.
    """

    def __format__(self, codes: str) -> str:
        return text_of(self.toText, codes) if codes else str(self)

    def __eq__(self, other: object) -> bool:
        return self.getSeconds() == other.getSeconds() if isinstance(other, classes['Date']) else NotImplemented

    def __le__(self, other: Date) -> bool:
        return self.getSeconds() <= other.getSeconds() if isinstance(other, classes['Date']) else NotImplemented

    def __ge__(self, other: Date) -> bool:
        return self.getSeconds() >= other.getSeconds() if isinstance(other, classes['Date']) else NotImplemented

    def __hash__(self) -> int:
        return hash(self.getSeconds())

    if TYPE_CHECKING:
        @overload
        def __sub__(self, other: TimeDelta) -> Date: ...

        @overload
        def __sub__(self, other: Date) -> TimeDelta: ...

    def __sub__(self, other):
        """The timedelta from another date, or the date a timedelta earlier."""
        from datetime import timedelta
        if isinstance(other, timedelta):
            return self + -other
        if not isinstance(other, classes['Date']):
            return NotImplemented
        if not (self.isSet() and other.isSet()):
            raise ValueError('a date that is not set has no distance')
        return timedelta(seconds=self.getSeconds() - other.getSeconds())

    def __add__(self, step: TimeDelta) -> Self:
        """The date a timedelta later, to the second; missing fields stay missing."""
        from datetime import timedelta
        if not isinstance(step, timedelta):
            return NotImplemented
        moved = type(self)(self)
        moved += step
        return moved

    __radd__ = __add__

    def __iadd__(self, step: int | TimeDelta) -> Self:
        """Moves by seconds, which fills all fields, or by a timedelta as `+` does."""
        if isinstance(step, int):
            _Yul.Date___iadd__(self, step)
            return self
        from datetime import timedelta
        if not isinstance(step, timedelta):
            return NotImplemented
        self.addDays(step.days)
        self.addSeconds(step.seconds)
        return self

    def __isub__(self, step: int | TimeDelta) -> Self:
        """Moves back, as `+=` moves on."""
        return self.__iadd__(-step)

    @property
    def datetime(self) -> DateTime | None:
        """The moment as an aware datetime in UTC, to a tenth of a millisecond; None when the date is not set.

        Missing fields count as their first: a date without an hour is at midnight.
        """
        if not self.isSet():
            return None
        from datetime import datetime, timedelta, timezone
        epoch = datetime(1970, 1, 1, tzinfo=timezone.utc)
        second = self.getSecond()
        fraction = round(second % 1, 4) if second != _Yul.cvar.Const_MISS else 0
        return epoch + timedelta(seconds=_calendar_seconds(self) - self.getZoneOffset() + fraction)

    @classmethod
    def fromDatetime(cls, moment: DateTime) -> Self:
        """The date of a datetime; one without a time zone counts as UTC."""
        from datetime import datetime, timezone
        if moment.tzinfo is None:
            moment = moment.replace(tzinfo=timezone.utc)
        since = moment - datetime(1970, 1, 1, tzinfo=timezone.utc)
        date = cls(since.days * 86400 + since.seconds)
        date.setFractionalSecond(since.microseconds / 1e6)
        return date

    @property
    def datetime64(self) -> np.datetime64:
        """The moment in UTC as numpy.datetime64 in milliseconds, not-a-time when the date is not set."""
        from numpy import datetime64
        if not self.isSet():
            return datetime64('NaT', 'ms')
        second = self.getSecond()
        fraction = round(second % 1 * 1000) if second != _Yul.cvar.Const_MISS else 0
        return datetime64((_calendar_seconds(self) - self.getZoneOffset()) * 1000 + fraction, 'ms')

    @classmethod
    def fromDatetime64(cls, moment: np.datetime64) -> Self:
        """The date of a numpy.datetime64, unset for not-a-time."""
        from numpy import datetime64, isnat
        if isnat(moment):
            return cls()
        seconds, milliseconds = divmod(int((moment - datetime64(0, 'ms')).astype('timedelta64[ms]').astype(int)), 1000)
        date = cls(seconds)
        date.setFractionalSecond(milliseconds / 1000)
        return date

    @staticmethod
    def range(start: Date, stop: Date, *, days: float = 0, hours: float = 0, minutes: float = 0,
              seconds: float = 0) -> Iterator[Date]:
        """Dates from `start` on in equal steps, as long as they lie before `stop` (after it, in steps back)."""
        from datetime import timedelta
        step = timedelta(days=days, hours=hours, minutes=minutes, seconds=seconds)
        if not step or step.microseconds:
            raise ValueError('Date.range: the step has to be whole seconds, and not none')
        date = start + timedelta()
        while date < stop if step > timedelta() else date > stop:
            yield date
            date = date + step


class Filename:
    """One file name or an ordered list of them, with the name of an index file that may go with each."""


class NameConv:
    """A file name convention: turns a data type and a time into a file, and finds the latest one."""

    def latest(self, when: str = 'la') -> tuple[str, DateTime | None] | None:
        """The path and the datetime of the file that `when` asks for (see setLatest); None when there is none."""
        found = classes['NameConvFile']()
        if not self.setLatest(when, found):
            return None
        return found.getFilename(), found.getDate().datetime


class DomainVal:
    """The plain values of a domain."""


class Domain:
    """Where a grid or a plot lies, and the conversions between earth, projection plane and grid."""

    @property
    def lats(self) -> NDArray[np.float32] | Any:
        """Latitudes of all grid points, an array (rows, columns) of float32; -9999 where there is no position. None
        without a grid."""
        return self._earth(0)

    @property
    def lons(self) -> NDArray[np.float32] | Any:
        """Longitudes of all grid points, -180 to 180, as `lats`."""
        return self._earth(1)

    def _earth(self, i):
        view = self.viewEarth()
        if view is None:
            return None
        from numpy import asarray
        return asarray(view)[i]

    def forward(self, lat: ArrayLike, lon: ArrayLike) -> tuple[NDArray[Any], NDArray[Any]]:
        """The plane coordinates x and y of latitudes and longitudes, numbers or arrays that broadcast: two arrays,
        -9999 where there is no image. They are float32 when both inputs are, else float64."""
        return self._convert(_Yul.Domain_forward, lat, lon)

    def inverse(self, x: ArrayLike, y: ArrayLike) -> tuple[NDArray[Any], NDArray[Any]]:
        """The latitudes and longitudes of plane coordinates, as `forward`."""
        return self._convert(_Yul.Domain_inverse, x, y)

    def _convert(self, convert, *inputs):
        import numpy as np
        inputs = [np.asarray(values) for values in inputs]
        shape = np.broadcast_shapes(*(values.shape for values in inputs))
        real = np.float32 if all(values.dtype == np.float32 for values in inputs) else np.float64
        inputs = [np.require(np.broadcast_to(values, shape), real, 'CA') for values in inputs]
        outputs = tuple(np.empty(shape, real) for _ in inputs)
        convert(self, *inputs, *outputs)
        return outputs

    @property
    def proj(self) -> str | None:
        """The projection as a PROJ text whose plane is this domain's; None where PROJ has no such plane."""
        from ._projections import proj_text
        return proj_text(self)

    @property
    def cf(self) -> dict[str, Any] | None:
        """The projection as the attributes of a CF grid mapping, in metres and degrees; None where CF has none."""
        from ._projections import cf_mapping
        return cf_mapping(self)


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
        from ._arrays import as_array
        values = as_array(self)
        return values if dtype is None else values.astype(dtype)

    def __array_ufunc__(self, ufunc: np.ufunc, method: str, *inputs: Any, **keywords: Any) -> Any:
        from ._arrays import apply
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
        from ._arrays import from_array
        fields = {'Level': level, 'ForeTime': fore, 'Var': var, 'Source': source, 'Model': model}
        return from_array(cls(), values, domain, date, fields, units, info)

    def at(self, lat: ArrayLike, lon: ArrayLike) -> Any:
        """Values at positions on the earth, interpolated as getValue does: numbers or arrays that broadcast; an array of
        float32, or a number for numbers. -9999 outside the grid and beside missing values."""
        from ._arrays import at
        return at(self, lat, lon)

    def to_xarray(self) -> Any:
        """The grid as an xarray.DataArray with the names, coordinates and attributes of the CF conventions: latitude and
        longitude, or x and y of the projection with its grid mapping `crs`; level, time, forecast_reference_time and
        forecast_period. Missing values are NaN."""
        from ._xarray import data_array
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


class _GridReader(_Closing):
    """A file of grids. Iterating gives those from here on, each a new Grid."""

    def _check_open(self):
        if not self.isOpen():
            raise OSError(f'{type(self).__name__}: no file is open')

    def __iter__(self) -> Iterator[Grid]:
        self._check_open()
        while self.read(grid := classes['Grid']()):
            yield grid

    def _headers(self):
        """The fields from here on, each described in one Grid without values that is used again."""
        grid = classes['Grid']()
        while grid.reset() and self.peek(grid):
            yield grid

    _more_keys: tuple[str, ...] = ()

    def _record(self, grid):
        return _record(grid)

    def inventory(self) -> Any:
        """What the file holds from here on, from headers alone: a record a field, as a pandas DataFrame where pandas
        is there, else as a list of dictionaries."""
        self._check_open()
        records = []
        for grid in self._headers():
            records.append(self._record(grid))
            self.next()
        try:
            from pandas import DataFrame
        except ImportError:
            return records
        return DataFrame.from_records(records)

    def select(self, **wanted: Any) -> Iterator[Grid]:
        """The fields from here on whose record (see inventory) has these values; only they are unpacked.

            for grid in file.select(name="HGT", level=500, hours=24): ...
        """
        self._check_open()
        unknown = wanted.keys() - {*RECORD_KEYS, *self._more_keys}
        if unknown:
            raise TypeError(f'{type(self).__name__}.select: no such key: {", ".join(sorted(unknown))}')

        def is_wanted(grid):
            record = self._record(grid)
            return all(record[key] == value for key, value in wanted.items())

        for header in self._headers():
            if not is_wanted(header):
                self.next()
            elif self.read(grid := classes['Grid']()) and is_wanted(grid):  # another one, if that was damaged
                yield grid


class GribFile(_GridReader):
    """A file of GRIB messages, editions 1 and 2. Iterating gives the fields from here on, each a new Grid."""

    _more_keys = ('member', 'derived', 'percentile', 'probability', 'lower', 'upper')

    def _record(self, grid):
        header = self.getHeader()
        numbers = (header.getMember(), header.getDerived(), header.getPercentile(), header.getProbability(),
                   header.getLowerLimit(), header.getUpperLimit())
        return {**_record(grid), **dict(zip(self._more_keys, map(_or_none, numbers)))}


class GridYulFile(_GridReader):
    """A file of the library's own form. Iterating gives the grids from here on, each a new Grid."""


class GridFile(_GridReader):
    """A file of grids in any form that the library reads. Iterating gives the grids from here on, each a new Grid."""


# What a record of an inventory holds.
RECORD_KEYS = ('name', 'level', 'level2', 'level_type', 'hours', 'from_hours', 'date', 'info', 'source', 'model',
               'edition', 'nx', 'ny')


def _record(grid):
    level, fore = grid.getLevel(), grid.getForeTime()
    return dict(zip(RECORD_KEYS, (
        grid.getVar().getName(), _or_none(level.getValue()), _or_none(level.getValue2()), level.getType(),
        _or_none(fore.getHours()), _or_none(fore.getFromHours()), grid.date.datetime, grid.info, grid.getSource(),
        grid.getModel(), grid.getVersion(), grid.getNx(), grid.getNy())))


def _or_none(value):
    return None if value == _Yul.cvar.Const_MISS else value


class WmoParse(_Closing):
    """A feed of WMO bulletins. Iterating gives the bulletins from here on whose heading fits the pattern.

        for bulletin in WmoParse("feed.txt", header="SAUS"):
            print(bulletin.heading, bulletin.time, bulletin.lines)

    source      a path, a list of paths that follow each other, an open file or pipe, "-" for standard input
    index       the feed's index file: only bulletins that it lists are read
    header      heading pattern (see setHeader)
    identifier  only bulletins that hold this text, from the line on that holds it; "zn:WIZ064" for a zone
    expect_identifier  whether the line behind a heading is a product identifier
    options     "nohdr", "dollar" and "blank", separated by commas
    date        a datetime or Date, the time at which the feed was taken: gives headings their month and year
    """

    def __init__(self, source: str | PathLike[str] | IO[Any] | list[Any] | None = None,
                 index: str | PathLike[str] | None = None, *, header: str | None = None, identifier: str | None = None,
                 expect_identifier: bool = True, options: str | None = None,
                 date: DateTime | Date | None = None) -> None:
        _Yul.WmoParse_attach(self, _Yul.new_WmoParse())
        self._date = date
        self._start(source, index, header, options)
        self.setExpectId(expect_identifier)
        if identifier is not None:
            self.setId(identifier)

    def _start(self, source, index, header, options):
        if header is not None:
            self.setHeader(header)
        if options is not None:
            self.setParam(options)
        if source is not None:
            names, self._kept = filename_of(source, index)
            self.open(names)

    def _check_open(self):
        if not self.isOpen():
            raise OSError(f'{type(self).__name__}: no file is open')

    def __iter__(self) -> Iterator[Bulletin]:
        self._check_open()
        product = _Yul.new_WmoProduct()
        read, this, date = _Yul.WmoParse_getProduct, self.this, getattr(self, '_date', None)
        while read(this, product):
            yield Bulletin(_Yul.WmoProduct_getHeader(product), _Yul.WmoProduct_getAwip(product),
                           _Yul.WmoProduct_getLoc(product), _Yul.WmoProduct_getText(product),
                           _Yul.WmoProduct_getCodes(product), date)


class SfcWmoFile:
    """The single reports of a feed of surface bulletins; iterating gives them from here on. See `reports`."""

    def __init__(self, source: str | PathLike[str] | IO[Any] | list[Any] | None = None,
                 index: str | PathLike[str] | None = None, *, header: str | None = None, kind: str | None = None,
                 date: DateTime | Date | None = None) -> None:
        _Yul.SfcWmoFile_attach(self, _Yul.new_SfcWmoFile())
        if kind is not None and not self.setType(kind):
            raise ValueError(f'no such kind of report: {kind!r}')
        if date is not None:
            self.setDate(reference_date(date))
        self._start(source, index, header, None)

    def __iter__(self) -> Iterator[SfcWmoData]:
        self._check_open()
        SfcWmoData = classes['SfcWmoData']
        while self.read(report := SfcWmoData()):
            yield report


class SfcWmoData:
    """One report of a feed, not decoded. Prints as its message."""

    @property
    def text(self) -> str:
        """The report as it stands, on one line and without "="."""
        return self.getText()

    @property
    def message(self) -> str:
        """The same with what the bulletin says once for several: "METAR KDEN ...", "AAXX 06001 03772 ..."."""
        return self.getMessage()

    @property
    def kind(self) -> str:
        """"METAR", "SPECI", "TAF", "SYNOP", "SHIP", "MOBIL", "BUOY", "CMAN", "CLIMAT", "TEMP" or "PILOT"."""
        return self.getType()

    @property
    def station(self) -> str:
        """Location indicator, station number or call sign."""
        return self.getStation()

    @property
    def time(self) -> DateTime | None:
        """The report's own time, else that of its section or heading: a datetime in UTC, None where there is none."""
        return self.getDate().datetime

    @property
    def heading(self) -> str:
        """The heading of its bulletin."""
        return self.getHeader()

    @property
    def position(self) -> int:
        """The octet at which the start line of its bulletin stands in the feed."""
        return self.getLoc()

    @property
    def country(self) -> int:
        """1 USA, 2 Canada, 3 Mexico, 4 elsewhere."""
        return self.getCountry()

    @property
    def nil(self) -> bool:
        """Whether the station has nothing to report."""
        return self.isNil()

    @property
    def corrected(self) -> bool:
        """Whether it says that it corrects or amends another."""
        return self.isCorrected()

    def __str__(self) -> str:
        return self.getMessage()

    def __repr__(self) -> str:
        return f'<Yul.SfcWmoData {self.getMessage()[:60]!r}>'


class Graph(_Closing):
    pass


class Plot(_Closing):
    """A picture: output device, map domain, labels and border; the layers draw on it.

    A notebook shows a plot that is closed and went to a file, where Ghostscript is installed.
    """

    def _repr_png_(self):
        if self.isOpen() or not self.getFile():
            return None
        from ._charts import Page
        return Page(self.getFile()).png()


# The classes that these join, by name; filled when they are made.
classes = {}
