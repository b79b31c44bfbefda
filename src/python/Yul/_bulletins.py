"""Bulletin feeds in Python: bulletins and single reports by iteration.

The classes here join those of the library with the same name (see _habits), but for Bulletin.
"""

import _Yul

from ._habits import classes


def _filename(source, index):
    """The library's list of files for a path, a list of paths, an open file or pipe, or "-" for standard input."""
    names = _Yul.new_Filename()
    for one in source if isinstance(source, (list, tuple)) else [source]:
        _Yul.Filename_add(names, _name(one), None if index is None else _name(index))
    return names


def _name(source):
    if hasattr(source, 'fileno'):
        number = source.fileno()
        return f'/dev/fd/{number}' if number else '-'
    from os import fsdecode
    return fsdecode(source)


def _reference(date):
    """A Date to complete stated times from; the library's initial time or the clock unless given."""
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

    __slots__ = ('heading', 'identifier', 'position', 'text', '_codes', '_date')

    def __init__(self, heading, identifier, position, text, codes, date):
        self.heading = heading
        self.identifier = identifier
        self.position = position
        self.text = text
        self._codes = codes
        self._date = date

    @property
    def codes(self):
        return self._codes.encode('latin-1')

    @property
    def lines(self):
        return self.text.split('\n') if self._codes else []

    @property
    def time(self):
        """The heading's time, a datetime in UTC; None when it has none.

        A heading has no month and no year: this is the latest such time before the reference time, or at most a day
        behind it. The reference is the parser's `date`, and unless that was given the initial time or the clock.
        """
        product = classes['WmoProduct']()
        product.set(self.heading, '', 0)
        date = _reference(self._date)
        return date.datetime if product.completeDate(date) else None

    @property
    def indicator(self):
        """What follows the time in the heading: "RRA" delayed, "CCA" corrected, "AAA" amended, "PAA" a part; else ""."""
        return ' '.join(self.heading.split()[3:])

    def __iter__(self):
        return iter(self.lines)

    def __len__(self):
        return len(self._codes)

    def __str__(self):
        return self.text

    def __repr__(self):
        return f'<Yul.Bulletin {self.heading}{self.identifier and " / "}{self.identifier}, {len(self)} lines>'


class WmoParse:
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

    def __init__(self, source=None, index=None, *, header=None, identifier=None, expect_identifier=True, options=None,
                 date=None):
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
            self._source = source  # an open file stays open
            self.open(_filename(source, index))

    def _check_open(self):
        if not self.isOpen():
            raise OSError(f'{type(self).__name__}: no file is open')

    def __iter__(self):
        self._check_open()
        product = _Yul.new_WmoProduct()
        read, this, date = _Yul.WmoParse_getProduct, self.this, getattr(self, '_date', None)
        while read(this, product):
            yield Bulletin(_Yul.WmoProduct_getHeader(product), _Yul.WmoProduct_getAwip(product),
                           _Yul.WmoProduct_getLoc(product), _Yul.WmoProduct_getText(product),
                           _Yul.WmoProduct_getCodes(product), date)

    def __enter__(self):
        return self

    def __exit__(self, *exception):
        self.close()


class SfcWmoFile:
    """The single reports of a feed of surface bulletins; iterating gives them from here on. See `reports`."""

    def __init__(self, source=None, index=None, *, header=None, kind=None, date=None):
        _Yul.SfcWmoFile_attach(self, _Yul.new_SfcWmoFile())
        if kind is not None and not self.setType(kind):
            raise ValueError(f'no such kind of report: {kind!r}')
        if date is not None:
            self.setDate(_reference(date))
        self._start(source, index, header, None)

    def __iter__(self):
        self._check_open()
        SfcWmoData = classes['SfcWmoData']
        while self.read(report := SfcWmoData()):
            yield report


class SfcWmoData:
    """One report of a feed, not decoded. Prints as its message."""

    @property
    def text(self):
        """The report as it stands, on one line and without "="."""
        return self.getText()

    @property
    def message(self):
        """The same with what the bulletin says once for several: "METAR KDEN ...", "AAXX 06001 03772 ..."."""
        return self.getMessage()

    @property
    def kind(self):
        """"METAR", "SPECI", "TAF", "SYNOP", "SHIP", "MOBIL", "BUOY", "CMAN", "CLIMAT", "TEMP" or "PILOT"."""
        return self.getType()

    @property
    def station(self):
        """Location indicator, station number or call sign."""
        return self.getStation()

    @property
    def time(self):
        """The report's own time, else that of its section or heading: a datetime in UTC, None where there is none."""
        return self.getDate().datetime

    @property
    def heading(self):
        """The heading of its bulletin."""
        return self.getHeader()

    @property
    def position(self):
        """The octet at which the start line of its bulletin stands in the feed."""
        return self.getLoc()

    @property
    def country(self):
        """1 USA, 2 Canada, 3 Mexico, 4 elsewhere."""
        return self.getCountry()

    @property
    def nil(self):
        """Whether the station has nothing to report."""
        return self.isNil()

    @property
    def corrected(self):
        """Whether it says that it corrects or amends another."""
        return self.isCorrected()

    def __str__(self):
        return self.getMessage()

    def __repr__(self):
        return f'<Yul.SfcWmoData {self.getMessage()[:60]!r}>'


def reports(source, kind=None, *, header=None, index=None, date=None):
    """The reports in a feed of bulletins, one SfcWmoData after another.

        for report in reports("feed.txt", kind="METAR"):
            print(report.station, report.time, report.text)

    kind    "METAR", "SPECI", "TAF", "SYNOP", "SHIP", "MOBIL", "BUOY", "CMAN", "CLIMAT", "TEMP" or "PILOT", or a
            code word ("AAXX"); None for all
    The others are those of WmoParse.
    """
    return iter(classes['SfcWmoFile'](source, index, header=header, kind=kind, date=date))
