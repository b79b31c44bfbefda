"""Feeds made for the tests."""

import os
from pathlib import Path
import sys

import pytest

import _Yul
import Yul  # noqa: F401: its classes free what the module makes

sys.path.insert(0, str(Path(__file__).resolve().parent))  # the writer of bulletins, the second splitter


@pytest.fixture
def write_feed(tmp_path):
    """Writes texts or octets as one file and returns its name."""
    def write(*parts, name='feed'):
        path = tmp_path / name
        path.write_bytes(b''.join(part if isinstance(part, bytes) else part.encode('latin-1') for part in parts))
        return str(path)

    return write


@pytest.fixture
def lines_of():
    """All data lines of an open feed as (code, text), through the module's own functions."""
    def read(feed):
        line, lines = _Yul.new_String(), []
        while code := _Yul.WmoParse_getLine(feed, line):
            lines.append((code, _Yul.String_get(line)))
        return lines

    return read


@pytest.fixture(scope='session')
def samples():
    """The folder with real feeds that YUL_FEED_SAMPLES names."""
    folder = os.environ.get('YUL_FEED_SAMPLES')
    if not folder:
        pytest.skip('YUL_FEED_SAMPLES names no folder with real feeds')
    return Path(folder)
