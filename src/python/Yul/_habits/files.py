"""Files by name, and files of grids."""

from __future__ import annotations

import _Yul

from .base import Closing, classes

TYPE_CHECKING = False
if TYPE_CHECKING:
    from collections.abc import Iterator
    from datetime import datetime as DateTime
    from typing import Any


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


RECORD_KEYS = ('name', 'level', 'level2', 'level_type', 'hours', 'from_hours', 'date', 'info', 'source', 'model',
               'edition', 'nx', 'ny')


def header_record(grid):
    """What an inventory says of a field."""
    level, fore = grid.getLevel(), grid.getForeTime()
    return dict(zip(RECORD_KEYS, (
        grid.getVar().getName(), _or_none(level.getValue()), _or_none(level.getValue2()), level.getType(),
        _or_none(fore.getHours()), _or_none(fore.getFromHours()), grid.date.datetime, grid.info, grid.getSource(),
        grid.getModel(), grid.getVersion(), grid.getNx(), grid.getNy())))


def _or_none(value):
    return None if value == _Yul.cvar.Const_MISS else value


class GridReader(Closing):
    """A file of grids. Iterating gives those from here on, each a new Grid."""

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
        return header_record(grid)

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


class GribFile(GridReader):
    """A file of GRIB messages, editions 1 and 2. Iterating gives the fields from here on, each a new Grid."""

    _more_keys = ('member', 'derived', 'percentile', 'probability', 'lower', 'upper')

    def _record(self, grid):
        header = self.getHeader()
        numbers = (header.getMember(), header.getDerived(), header.getPercentile(), header.getProbability(),
                   header.getLowerLimit(), header.getUpperLimit())
        return {**header_record(grid), **dict(zip(self._more_keys, map(_or_none, numbers)))}


class GridYulFile(GridReader):
    """A file of the library's own form. Iterating gives the grids from here on, each a new Grid."""


class GridFile(GridReader):
    """A file of grids in any form that the library reads. Iterating gives the grids from here on, each a new Grid."""
