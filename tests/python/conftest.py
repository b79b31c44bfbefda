"""Shared by all Python tests."""

from pathlib import Path
import sys

import pytest

HERE = Path(__file__).resolve().parent
sys.path.insert(0, str(HERE))  # the test writer, wherever a test lies


@pytest.fixture(scope='session')
def root():
    """The top of the source tree."""
    return HERE.parent.parent


@pytest.fixture
def write_grib(tmp_path):
    """Writes messages (or any octets) to a file and returns its name."""
    def write(*messages, name='field.grib'):
        path = tmp_path / name
        path.write_bytes(b''.join(messages))
        return str(path)

    return write
