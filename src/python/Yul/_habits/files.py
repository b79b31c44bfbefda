"""Files by name, and files of grids."""

from __future__ import annotations

from .base import Closing, classes, or_none

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
        grid.getVar().getName(), or_none(level.getValue()), or_none(level.getValue2()), level.getType(),
        or_none(fore.getHours()), or_none(fore.getFromHours()), grid.date.datetime, grid.info, grid.getSource(),
        grid.getModel(), grid.getVersion(), grid.getNx(), grid.getNy())))


class GridReader(Closing):
    """A file of grids. Iterating gives those from here on, each a new Grid."""

    def __iter__(self) -> Iterator[Grid]:
        self._check_open()
        while (is_read := self.read(grid := classes['Grid']())) or self._has_bad():
            if is_read:
                yield grid

    def _has_bad(self):
        """Whether the grid that could not be read was one of bad data, behind which the file goes on."""
        return self.isBad()

    def _headers(self):
        """The fields from here on, each described in one Grid without values that is used again."""
        grid = classes['Grid']()
        while grid.reset() and self.peek(grid):
            yield grid

    _more_keys: tuple[str, ...] = ()

    @classmethod
    def _keys(cls):
        """The keys of the records of such a file."""
        return *RECORD_KEYS, *cls._more_keys

    def _record(self, grid):
        return header_record(grid)

    def _is_wanted(self, grid, wanted):
        """Whether the record of the field has these values."""
        if not wanted:
            return True
        record = self._record(grid)
        return all(record[key] == value for key, value in wanted.items())

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
        unknown = wanted.keys() - set(self._keys())
        if unknown:
            raise TypeError(f'{type(self).__name__}.select: no such key: {", ".join(sorted(unknown))}')

        for header in self._headers():
            if not self._is_wanted(header, wanted):
                self.next()
            elif self.read(grid := classes['Grid']()) and self._is_wanted(grid, wanted):  # another one, if that was damaged
                yield grid


class GribFile(GridReader):
    """A file of GRIB messages, editions 1 and 2. Iterating gives the fields from here on, each a new Grid."""

    _more_keys = ('member', 'derived', 'percentile', 'probability', 'lower', 'upper')

    def _record(self, grid):
        header = self.getHeader()
        numbers = (header.getMember(), header.getDerived(), header.getPercentile(), header.getProbability(),
                   header.getLowerLimit(), header.getUpperLimit())
        return {**header_record(grid), **dict(zip(self._more_keys, map(or_none, numbers)))}


class GridYulFile(GridReader):
    """A file of the library's own form. Iterating gives the grids from here on, each a new Grid."""

    def _has_bad(self):
        return False  # it has no detector


class GridFile(GridReader):
    """A file of grids in any form that the library reads. Iterating gives the grids from here on, each a new Grid."""
