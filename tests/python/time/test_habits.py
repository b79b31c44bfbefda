"""What Python users expect of a date: datetime, NumPy, arithmetic, formats, steps."""

from datetime import datetime, timedelta, timezone
import re

import numpy as np
import pytest

from Yul import Date

MOMENT = datetime(2026, 11, 14, 12, 45, 30, 500_000, tzinfo=timezone.utc)


@pytest.mark.parametrize('moment', [
    MOMENT,
    MOMENT.astimezone(timezone(timedelta(hours=-5))),
    datetime(26, 3, 1, tzinfo=timezone.utc),     # no century is added
    datetime(2100, 3, 1, tzinfo=timezone.utc),   # the calendar's leap years, not every fourth
    datetime(1, 1, 1, tzinfo=timezone.utc),
    datetime(9999, 12, 31, 23, 59, 59, tzinfo=timezone.utc),
])
def test_datetimes_come_back(moment):
    date = Date.fromDatetime(moment)
    naive = np.datetime64(moment.astimezone(timezone.utc).replace(tzinfo=None))
    assert date.datetime == moment and date.datetime.tzinfo is timezone.utc
    assert Date.fromDatetime64(naive).datetime64 == naive == date.datetime64
    date.changeTimezone(3600, 'CET')  # whole seconds from here on
    assert date.datetime == moment.replace(microsecond=0)


@pytest.mark.parametrize('second', [0, 16, 59])
@pytest.mark.parametrize('microsecond', [1, 499_999, 999_950, 999_999])
def test_fractions_come_back_to_a_tenth_of_a_millisecond(second, microsecond):
    moment = MOMENT.replace(second=second, microsecond=microsecond)
    assert abs(Date.fromDatetime(moment).datetime - moment) <= timedelta(microseconds=100)


def test_an_unset_date_is_no_moment():
    assert Date().datetime is None and np.isnat(Date().datetime64)
    assert not Date.fromDatetime64(np.datetime64('NaT')).isSet()
    with pytest.raises(ValueError):
        Date() - Date()


def test_comparison_and_hash_go_by_the_seconds():
    day, midnight, later = Date('20261114'), Date('2026111400'), Date('2026111401')
    assert day == midnight and hash(day) == hash(midnight) and len({day, midnight, later}) == 2
    assert day < later and day <= midnight and later >= day and later > day and day != later
    assert day != '20261114'
    with pytest.raises(TypeError):
        day <= '20261114'


def test_arithmetic_keeps_missing_fields():
    date = Date('2026111418')
    assert str(date + timedelta(hours=12)) == '06Z 15 NOV 2026'
    assert str(date - timedelta(days=14, hours=18)) == '00Z 31 OCT 2026'
    assert date + timedelta(hours=6) - date == timedelta(hours=6)
    assert str(date) == '18Z 14 NOV 2026'


def test_format_codes_in_f_strings():
    date = Date('202611141245')
    assert f'{date:%d.%m.%Y %H%M%Z}' == '14.11.2026 1245Z'
    assert f'{date}' == str(date)


@pytest.mark.parametrize('start, stop, step, expected', [
    ('2026111400', '2026111500', {'hours': 6}, ['00Z 14', '06Z 14', '12Z 14', '18Z 14']),
    ('2026111418', '2026111400', {'hours': -9}, ['18Z 14', '09Z 14']),
    ('2026111400', '2026111400', {'hours': 6}, []),
    ('2026111400', '2026111700', {'days': 1, 'hours': 12}, ['00Z 14', '12Z 15']),
])
def test_range_steps_to_the_stop(start, stop, step, expected):
    assert [f'{date:%HZ %d}' for date in Date.range(Date(start), Date(stop), **step)] == expected


def test_range_refuses_no_step():
    with pytest.raises(ValueError):
        list(Date.range(Date('2026'), Date('2027')))


@pytest.mark.parametrize('moment', ['1900-01-01', '1899-12-31', '1900-02-28T06:30', '1896-02-29', '1600-03-01', '2100-03-01',
                                    '2100-02-28T23:59:59', '2400-02-29', '1970-01-01', '2000-02-29T12:00'])
def test_far_dates_keep_to_the_calendar(moment):
    wanted = np.datetime64(moment, 'ms')
    text = str(wanted)
    date = Date(*(int(part) for part in re.split('[-T:.]', text)[:5]), float(text[17:19]))
    assert date.datetime64 == wanted
    assert date.datetime == wanted.astype(datetime).replace(tzinfo=timezone.utc)
    assert Date.fromDatetime64(wanted).datetime64 == wanted
