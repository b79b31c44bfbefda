"""Calendar times beside those of Python and NumPy."""

from __future__ import annotations

import _Yul

from .base import classes, text_of

TYPE_CHECKING = False
if TYPE_CHECKING:
    from collections.abc import Iterator
    from datetime import datetime as DateTime, timedelta as TimeDelta
    from typing import Self, overload
    import numpy as np


class DateVal:
    """A calendar time as plain fields, each of which may be missing."""


class ForeTime:
    """When a field holds, counted from its initial time."""


LARGEST_FRACTION = 0.99999  # a second is a float: 59.999999 would be 60, and the whole second before it lost


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
        if hasattr(step, '__index__'):
            _Yul.Date___iadd__(self, step.__index__())
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
        date.setFractionalSecond(min(since.microseconds / 1e6, LARGEST_FRACTION))
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
