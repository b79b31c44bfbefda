"""Shared by all Python tests."""

from pathlib import Path
import os
import sys

import pytest

import _Yul

HERE = Path(__file__).resolve().parent
# Programs that the tests start find the same module, wherever they run.
os.environ['PYTHONPATH'] = str(Path(_Yul.__file__).resolve().parent)
sys.path.insert(0, str(HERE))  # the test writer, wherever a test lies


@pytest.fixture(scope='session')
def root():
    """The top of the source tree."""
    return HERE.parent.parent


@pytest.fixture(autouse=True)
def _state_kept():
    """What the library holds for the whole process is after a test as it was before it, but for named settings."""
    path, time = _Yul.Yul_getDatabasePath(), _Yul.Yul_getInitTime()
    yield
    _Yul.Yul_setDatabasePath(path)
    _Yul.Yul_setInitTime(time)
    _Yul.Yul_setMessageLevel(_Yul.Yul_OUT2)


@pytest.fixture
def write_grib(tmp_path):
    """Writes messages (or any octets) to a file and returns its name."""
    def write(*messages, name='field.grib'):
        path = tmp_path / name
        path.write_bytes(b''.join(messages))
        return str(path)

    return write
