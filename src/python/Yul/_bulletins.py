"""Bulletins and single reports of feeds. The classes of the library that read them are in _habits/feeds.py."""

from __future__ import annotations

import _Yul

TYPE_CHECKING = False
if TYPE_CHECKING:
    from collections.abc import Iterator
    from datetime import datetime as DateTime
    from os import PathLike
    from typing import IO, Any


def filename_of(source, index):
    """The library's list of files for a path, an open file or pipe, "-" for standard input, or a list of those; and
    what has to stay open while they are read."""
    names, kept = _Yul.new_Filename(), []
    index = None if index is None else _name_of(index, kept)
    for one in source if isinstance(source, (list, tuple)) else [source]:
        _Yul.Filename_add(names, _name_of(one, kept), index)
    return names, kept


def _name_of(source, kept):
    if not hasattr(source, 'read'):
        from os import fsdecode
        return fsdecode(source)
    import io
    kept.append(source)
    bare = getattr(source, 'buffer', source)
    bare = getattr(bare, 'raw', bare)
    if not isinstance(bare, io.FileIO):  # no file of the system stands behind it: unpacked on the way, or in memory
        bare = _copied(source)
        kept.append(bare)
    return f'/dev/fd/{bare.fileno()}' if bare.fileno() else '-'


def _copied(source):
    """A file without a name that holds the rest of another."""
    from os import fdopen, memfd_create
    copy = fdopen(memfd_create('feed'), 'w+b', buffering=0)
    while piece := source.read(1 << 20):
        copy.write(piece.encode('utf-8', 'surrogateescape') if isinstance(piece, str) else piece)
    return copy


def reference_date(date):
    """A Date to complete stated times from; the library's initial time or the clock unless given."""
    from ._habits.base import classes
    Date = classes['Date']
    if date is None:
        start = _Yul.Yul_getInitTime()
        date = Date(start) if start > 0 else Date()
        if start <= 0:
            date.set()
        return date
    return Date(date) if isinstance(date, Date) else Date.fromDatetime(date)


class Bulletin:
    """One bulletin of a feed.

    heading      "SAUS70 KWBC 060000 RRA"
    identifier   the product identifier, "" where none was expected
    lines        the texts of its lines
    codes        the kind of each line, as bytes: WmoParse.DATA (16), NOT_ALNUM (17), END (18), ZONE, EVENT, HEADLINE
    text         the lines in one text
    position     the octet at which its start line stands in the feed
    """

    __slots__ = ('heading', 'identifier', 'position', 'text', 'codes', '_date')
    heading: str
    identifier: str
    position: int
    text: str
    codes: bytes

    def __init__(self, heading: str, identifier: str, position: int, text: str, codes: str,
                 date: DateTime | Date | None) -> None:
        self.heading = heading
        self.identifier = identifier
        self.position = position
        self.text = text
        self.codes = codes.encode('latin-1')
        self._date = date

    @property
    def lines(self) -> list[str]:
        return self.text.split('\n') if self.codes else []

    @property
    def time(self) -> DateTime | None:
        """The heading's time, a datetime in UTC; None when it has none.

        A heading has no month and no year: this is the latest such time before the reference time, or at most a day
        behind it. The reference is the parser's `date`, and unless that was given the initial time or the clock.
        """
        product = _Yul.new_WmoProduct()
        _Yul.WmoProduct_set(product, self.heading, '', 0)
        date = reference_date(self._date)
        return date.datetime if _Yul.WmoProduct_completeDate(product, date) else None

    @property
    def indicator(self) -> str:
        """What follows the time in the heading: "RRA" delayed, "CCA" corrected, "AAA" amended, "PAA" a part; else ""."""
        return ' '.join(self.heading.split()[3:])

    def __iter__(self) -> Iterator[str]:
        return iter(self.lines)

    def __len__(self) -> int:
        return len(self.codes)

    def __str__(self) -> str:
        return self.text

    def __repr__(self) -> str:
        return f'<Yul.Bulletin {self.heading}{self.identifier and " / "}{self.identifier}, {len(self)} lines>'


def reports(source: str | PathLike[str] | IO[Any] | list[Any], kind: str | None = None, *, header: str | None = None,
            index: str | PathLike[str] | None = None, date: DateTime | Date | None = None) -> Iterator[SfcWmoData]:
    """The reports in a feed of bulletins, one SfcWmoData after another.

        for report in reports("feed.txt", kind="METAR"):
            print(report.station, report.time, report.text)

    kind    "METAR", "SPECI", "TAF", "SYNOP", "SHIP", "MOBIL", "BUOY", "CMAN", "CLIMAT", "TEMP" or "PILOT", or a
            code word ("AAXX"); None for all
    The others are those of WmoParse.
    """
    from ._habits.base import classes
    return iter(classes['SfcWmoFile'](source, index, header=header, kind=kind, date=date))
