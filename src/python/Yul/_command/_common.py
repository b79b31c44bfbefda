"""What the subcommands share."""

import os
import sys

from Yul import GribFile, GridFile, GridYulFile, Yul


class Failure(Exception):
    """What to tell the user (nothing when the library did), and the status to end with."""

    def __init__(self, status, text=''):
        super().__init__(text)
        self.status = status
        self.text = text


def check_input(name):
    """Refuses what cannot be a file of data; "-" is standard input."""
    if name == '-':
        return
    try:
        if os.path.isdir(name):
            raise Failure(Yul.NOINPUT, f'{name}: a folder')
        if os.stat(name).st_size == 0 and os.path.isfile(name):
            raise Failure(Yul.NODATA, f'{name}: the file is empty')
        open(name, 'rb').close()
    except FileNotFoundError:
        raise Failure(Yul.NOFILE, f'{name}: no such file') from None
    except (OSError, ValueError) as error:
        raise Failure(Yul.NOINPUT, f'{name}: {getattr(error, "strerror", None) or error}') from None


def open_fields(name):
    """A file of GRIB or of the library's own form; standard input is GRIB."""
    check_input(name)
    is_own = name != '-' and GridFile.checkType(name) == GridFile.YUL
    file = GridYulFile(name) if is_own else GribFile(name)
    if not file.isOpen():
        raise Failure(Yul.NOINPUT)
    return file


def has_text(grid, text):
    """Whether a field's description or its variable, level and time have the text."""
    return not text or text.lower() in f'{grid.info} {grid.getLevel()}'.lower()


def is_terminal(stream=None):
    """Whether to write for eyes: colours, a bar."""
    stream = stream or sys.stdout
    return stream.isatty() and 'NO_COLOR' not in os.environ and os.environ.get('TERM') != 'dumb'
