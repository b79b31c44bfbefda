"""The tables of docs/times.md say what the library does."""

import re

import pytest

from Yul import Date, DateTool, ForeTime, String, Timezone


@pytest.fixture
def rows(root):
    """The cells of a table, found by its first heading; code quotes taken off."""
    page = (root / 'docs' / 'times.md').read_text(encoding='utf-8')

    def find(*headings):
        table = re.search(r'^\| ' + r' \| '.join(headings) + r' \|\n\|[-|]+\n((?:\|.*\n)+)', page, re.MULTILINE)
        return [[cell.strip().strip('`') for cell in line.strip('|').split('|')] for line in table[1].splitlines()]

    return find


def label(write, *arguments):
    out = String()
    write(*arguments, out)
    return str(out)


def test_format_codes(rows):
    table = rows('Code', 'Field', '`20261114094509.5`', 'Missing')
    assert len(table) == 17
    for code, _, written, missing in table:
        assert f'{Date("20261114094509.5"):{code}}' == written, code
        assert f'{Date():{code}}' == missing, code


def test_header_forms(rows):
    table = rows('Form', 'Where', 'Text', 'Read as')
    assert {int(form) for form, *_ in table} == set(range(1, 14))
    for form, _, text, read in table:
        date = Date()
        DateTool.decode(text, date)
        assert str(date) == read, form


def test_labels(rows):
    table = rows('Date', 'Zone', 'Flags', 'Label')
    assert len(table) > 10
    for date, zone, flags, expected in table:
        assert label(DateTool.createLabel, '', Date(date), Timezone(zone), int(flags)).strip() == expected, date


def test_forecast_times(rows):
    table = rows('Text', 'Type', 'Label', 'Code')
    assert len(table) > 10
    for text, type_name, expected, code in table:
        fore = ForeTime(text)
        assert fore.getType() == getattr(ForeTime, type_name), text
        assert label(fore.toText) == text
        assert label(fore.toTimeLabel) == expected
        assert fore.getCode() == int(code)
