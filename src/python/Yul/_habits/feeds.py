"""Feeds of bulletins and their single reports."""

from __future__ import annotations

import _Yul

from .._bulletins import Bulletin, filename_of, reference_date
from .base import Closing, classes

TYPE_CHECKING = False
if TYPE_CHECKING:
    from collections.abc import Iterator
    from datetime import datetime as DateTime
    from os import PathLike
    from typing import IO, Any


class WmoParse(Closing):
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

    def __iter__(self) -> Iterator[Bulletin]:
        self._check_open()
        feed, product, date = self.this, _Yul.new_WmoProduct(), getattr(self, '_date', None)
        read, content, new = _Yul.WmoParse_getProduct, _Yul.WmoProduct_getContent, object.__new__
        while read(feed, product):
            bulletin = new(Bulletin)  # past __init__: a call from C into Python would cost as much as all of this
            bulletin.heading, bulletin.identifier, bulletin.position, bulletin.text, bulletin.codes = content(product)
            bulletin._date = date
            yield bulletin


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
        """Whether it, or what stands once for several, says that it corrects or amends another."""
        return self.isCorrected()

    def __str__(self) -> str:
        return self.getMessage()

    def __repr__(self) -> str:
        return f'<Yul.SfcWmoData {self.getMessage()[:60]!r}>'
