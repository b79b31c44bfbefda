"""Dates, zones, windows and forecast times through the module, beside Python's own calendar."""

import calendar
import ctypes
from datetime import datetime, timedelta, timezone
import random

import pytest

import _Yul as y

MISS = -9999
EPOCH = datetime(1970, 1, 1)


def text(write, *arguments):
    out = y.new_String()
    write(*arguments, out)
    result = y.String_get(out)
    y.delete_String(out)
    return result


def fields(date):
    return tuple(getattr(y, f'DateVal_get{name}')(date) for name in ('Year', 'Month', 'Day', 'Hour', 'Minute', 'Second'))


@pytest.fixture
def date():
    made = y.new_Date(2026, 11, 14, 12, 45, 30.0)
    yield made
    y.delete_Date(made)


def test_random_times_agree_with_datetime():
    """A hundred thousand moments 1901 to 2099: fields, seconds, weekday, day of the year, texts."""
    rng = random.Random(2)
    first = int((datetime(1901, 1, 1) - EPOCH).total_seconds())
    last = int((datetime(2100, 1, 1) - EPOCH).total_seconds()) - 1
    from_seconds, from_fields, out = y.new_Date(), y.new_Date(), y.new_String()
    for _ in range(100_000):
        seconds = rng.randint(first, last)
        moment = EPOCH + timedelta(seconds=seconds)
        parts = moment.timetuple()
        y.Date_set(from_seconds, seconds)
        assert fields(from_seconds) == parts[:6]
        y.Date_set(from_fields, *parts[:5], float(moment.second))
        assert y.Date_getSeconds(from_fields) == seconds
        for made in (from_seconds, from_fields):
            assert y.Date_getDayOfWeek(made) == (parts.tm_wday + 1) % 7
            assert y.Date_getJulian(made) == parts.tm_yday
        assert y.Date_isLeap(from_fields) == calendar.isleap(moment.year)
        y.Date_toText(from_fields, '%Y-%m-%d %H:%M:%S', out)
        assert y.String_get(out) == str(moment)
    for made in (from_seconds, from_fields):
        y.delete_Date(made)
    y.delete_String(out)


def test_moves_agree_with_timedelta():
    rng = random.Random(3)
    moves = {'Days': 86400, 'Hours': 3600, 'Minutes': 60, 'Seconds': 1}
    for _ in range(5000):
        seconds = rng.randint(0, 4_000_000_000)
        name, unit = rng.choice(list(moves.items()))
        amount = rng.randint(-2000, 2000)
        made = y.new_Date(seconds)
        getattr(y, f'Date_add{name}')(made, amount)
        assert fields(made) == (EPOCH + timedelta(seconds=seconds + amount * unit)).timetuple()[:6]
        y.delete_Date(made)


@pytest.mark.parametrize('arguments, expected', [
    ((), (MISS,) * 6),
    ((2026, 11, 14, 12, 45, 30), (2026, 11, 14, 12, 45, 30)),
    (('2026111412',), (2026, 11, 14, 12, MISS, MISS)),
    ((1794660330,), (2026, 11, 14, 12, 45, 30)),
    ((2**40,), (36812, 2, 20, 0, 36, 16)),
    ((-1,), (1969, 12, 31, 23, 59, 59)),
    ((2**63 - 1,), (MISS,) * 6),
])
def test_constructors_are_chosen_by_their_arguments(arguments, expected):
    made = y.new_Date(*arguments)
    assert fields(made) == expected
    y.delete_Date(made)


def test_records_and_dates_are_told_apart(date):
    record = y.new_DateVal()
    y.DateVal_set(record, 26, 2, 30, 25, 0, 0.0)
    y.Date_changeTimezone(date, 3600, 'CENTRAL')
    copy = y.new_Date(date)
    assert (y.Date_getZoneName(copy), y.Date_getZoneOffset(copy)) == ('CENT', 3600)
    y.Date_set(copy, record)
    assert fields(copy) == (2026, 2, 30, 0, 0, 0) and y.Date_getZoneName(copy) == 'Z'
    assert y.DateVal_getYear(record) == 26
    y.Date_set(copy, record, -18000, 'EST')
    assert fields(copy) == (2026, 2, 30, 0, 0, 0) and y.Date_getZoneOffset(copy) == -18000
    y.Date_set(copy, date)
    assert y.Date_getZoneName(copy) == 'CENT'
    y.delete_Date(copy)
    y.delete_DateVal(record)


@pytest.mark.parametrize('arguments', [(1.5,), (b'2026',), (2026, 1), (2**63,), (2026, 1, 1, 1, 1, '0'), ([],)])
def test_other_arguments_raise(arguments):
    with pytest.raises((TypeError, OverflowError)):
        y.new_Date(*arguments)


def test_operators(date):
    later = y.new_Date(y.Date_getSeconds(date) + 1)
    assert y.Date___lt__(date, later) is True and y.Date___gt__(date, later) is False
    result = y.Date___iadd__(date, 2)
    result = getattr(result, 'this', result)  # an instance once the package has told the module of its classes
    assert result == date and not result.own()
    assert y.Date___gt__(date, later) is True
    y.delete_Date(later)


def test_missing_fields_are_hidden_again():
    made = y.new_Date('2026111423')
    y.Date_addHours(made, 2)
    assert fields(made) == (2026, 11, 15, 1, MISS, MISS)
    assert text(y.Date_toText, made) == '01Z 15 NOV 2026'
    y.delete_Date(made)


def test_leap_rules_differ_on_purpose():
    made = y.new_Date(2100, 3, 1, 0, 0, 0.0)
    assert y.Date_getSeconds(made) == (datetime(2100, 3, 1) - EPOCH).total_seconds() + 86400
    assert y.Date_isLeap(made) is False and y.Date_isYearLeap(2000) is True
    assert y.Date_getJulian(2026, 1, 1) == 2
    y.delete_Date(made)


def test_day_tables_are_live():
    days = (ctypes.c_int * 13).from_address(int(y.cvar.DateVal_num_day))
    before = list(days)
    assert before == [0, 31, 59, 90, 120, 151, 181, 212, 243, 273, 304, 334, 365]
    try:
        y.cvar.DateVal_num_day = y.cvar.DateVal_num_day_leap
        assert days[2] == 60
        assert y.Date_getJulian(2025, 3, 1) == 62
    finally:
        days[:] = before


def test_prints(date, capfd):
    missing = y.new_Date('2026')
    y.Date__print(date)
    y.DateVal__print(missing)
    y.Date__print(missing)
    y.Date_printSeconds(date)
    zone = y.new_Timezone('-CST:-6')
    y.Timezone__print(zone)
    window = y.new_DateRange(date, 45, 15)
    y.DateRange__print(window)
    assert capfd.readouterr().out.splitlines() == [
        '2026/11/14 12:45:30.000',
        '2026/M/M M:M:M',
        '2026/MM/MM MM:MM:MM',
        '1794660330',
        'CST -1 -21600',
        'Start: 2026/11/14 12:00:30.000',
        'End:   2026/11/14 13:00:30.000',
    ]
    assert y.DateRange_valid(window, date) is True and y.DateRange_valid(window, 0) is False
    for name, made in (('Date', missing), ('Timezone', zone), ('DateRange', window)):
        getattr(y, f'delete_{name}')(made)


def test_every_label_form(date):
    zone, unset = y.new_Timezone('-EST:-5'), y.new_Timezone()
    fore = y.new_ForeTime('0-6acc')
    cases = [
        (('At', date, zone, 1), 'At 7:45:30 AM EST [124530Z] SAT 14 NOV 26'),
        (('At', date, zone), 'At 7:45:30 AM EST [124530Z] 14 NOV 26'),
        ((date, zone), '7:45:30 AM EST [124530Z] 14 NOV 26'),
        ((date,), '12:45:30Z 14 NOV 26'),
        ((date, unset, 24.0), '12:45:30Z 15 NOV 26'),
        ((date, unset, 'GFS', 24), 'GFS 24 hour valid 12:45:30Z SUN 15 NOV 26'),
        ((date, unset, 'GFS', fore), 'GFS 0-6 hour accumulation valid 18:45:30Z 14 NOV 26'),
        ((date, 'GFS', 0.0), 'GFS analysis for 12:45:30Z 14 NOV 26'),
    ]
    for arguments, expected in cases:
        assert text(y.DateTool_createLabel, *arguments) == expected
    nothing = y.new_Date()
    assert text(y.DateTool_createLabel, 'At', nothing, unset, 1) == ''
    for name, made in (('Timezone', zone), ('Timezone', unset), ('ForeTime', fore), ('Date', nothing)):
        getattr(y, f'delete_{name}')(made)


def test_forecast_time_constants():
    names = ('NONE', 'FORE', 'ANAL', 'ACC', 'AVG', 'DIFF', 'RANGE', 'MAX', 'MIN', 'ANY')
    assert [getattr(y, f'ForeTime_{name}') for name in names] == [MISS, 0, 1, 2, 3, 4, 5, 6, 7, 9]


def test_current_time():
    made = y.new_Date('current')
    now = datetime.now(timezone.utc).timestamp()
    assert abs(y.Date_getSeconds(made) - now) < 2
    assert abs(y.Date_getCurrentSeconds() - now) < 2
    assert text(y.DateTool_getCurrent, 'ISO8601').startswith('20')
    y.delete_Date(made)
