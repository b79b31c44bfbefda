"""Messages, errors, identity and system services of the class Yul."""

import os
import pathlib
import socket
import subprocess
import sys
import time

import _Yul as y
import pytest

ALL_UP_TO = {level: (1 << level) - 1 for level in range(32)}


@pytest.fixture(autouse=True)
def quiet_state():
    """The state of the process as it starts."""
    yield
    y.Yul_setMessageLevel(6)
    y.Yul_setError(0)
    y.Yul_setProgramName('')
    y.Yul_setInitTime(-9999)


def run(script, stdin='', **environment):
    environment = {k: v for k, v in os.environ.items() if k != 'yulerrtoout'} | environment
    return subprocess.run([sys.executable, '-c', f'import _Yul as y\n{script}'], input=stdin, env=environment,
                          capture_output=True, text=True, timeout=60)


def test_constants():
    levels = ['NONE', 'PRINT', 'ERROR', 'WARN', 'MESS', *(f'OUT{n}' for n in range(1, 9)),
              *(f'DEBUG{n}' for n in range(1, 9))]
    codes = ['NOERR', 'NORUN', 'MISC', 'NOMEMORY', 'NOGRAPH', 'NOINIT', 'NOFILE', 'NODBASE', 'NOWRITE', 'NOINPUT',
             'NODATA', 'BADPARAM']
    for names in (levels, codes):
        assert [getattr(y, f'Yul_{name}') for name in names] == list(range(len(names)))
    assert (y.FileAttr_READ, y.FileAttr_WRITE, y.FileAttr_APPEND) == (0, 1, 2)


@pytest.mark.parametrize('name, value', [
    ('MISS', -9999), ('PI', 3.1415926535898), ('EARTH', 63.7122), ('TWO_PI', 6.283185307), ('DRC', 0.017453293),
    ('RDC', 57.29577951), ('R', 287.05), ('G', 9.8), ('CP', 1004), ('CV', 717),
])
def test_shared_constants(name, value):
    assert getattr(y.cvar, f'Const_{name}') == pytest.approx(value, rel=1e-7)
    with pytest.raises(AttributeError, match=f'Variable Const_{name} is read-only\\.'):
        setattr(y.cvar, f'Const_{name}', value)


def test_state_at_the_start():
    done = run('print(hex(y.Yul_getMessageLevel()), y.Yul_getError(), y.Yul_getProgramName(), '
               'repr(y.Yul_getDatabasePath()), y.Yul_getInitTime(), y.Yul_nextResrc())')
    assert done.stdout == "0x3f False Yul '' -9999 None\n"


@pytest.mark.parametrize('level, mask', [
    (0, 0), (1, 1), (3, 7), (6, 0x3f), (20, 0xfffff), (31, 0x7fffffff), (32, 0), (34, 3), (-1, 0x7fffffff),
    (-2**31, 0), (2**31 - 1, 0x7fffffff),
])
def test_a_level_lets_all_up_to_it_through(level, mask):
    assert y.Yul_setMessageLevel(level) == 1
    assert y.Yul_getMessageLevel() == mask


TEXTS = [
    ('warn', 7),
    ('mess,+debug3', 0xf | 1 << 14),
    ('debug', 0xfffff),
    ('DEBUG2', ALL_UP_TO[14]),
    ('Print', 1),
    ('mess,-warn', 0b1011),
    ('mess,-warn,-warn', 0b1111),
    ('none', 0),
    ('none,+none', 1 << 31),
    ('none,-none,-none', 0),
    ('bogus', 0x3f),
    ('bogus,+out8,,', 0x3f | 1 << 11),
    ('warn ', 0x3f),
    ('war', 0x3f),
    ('+', 0x3f),
    ('', 0x3f),
    (None, 0x3f),
]


@pytest.mark.parametrize('text, mask', TEXTS)
def test_level_names_set_add_and_toggle(text, mask):
    y.Yul_setMessageLevel(6)
    assert y.Yul_setMessageLevel(text) == 1
    assert y.Yul_getMessageLevel() == mask


def test_checks_one_level_or_any_debug_level():
    assert y.Yul_checkMessage(6) is True and y.Yul_checkMessage(7) is False
    assert y.Yul_isDebug() is False
    y.Yul_setMessageLevel('none,+debug8')
    assert y.Yul_isDebug() is True and y.Yul_isDebug(8) is True and y.Yul_isDebug(7) is False
    y.Yul_setMessageLevel('none,+out8')
    assert y.Yul_isDebug() is False and y.Yul_isDebug(0) is True
    for absurd in (-2**31, 2**31 - 1):
        y.Yul_checkMessage(absurd), y.Yul_isDebug(absurd), y.Yul_outDebug(absurd, '')


# What each operation writes while only its own level is on, and while only that level is off.
OUTPUT = [
    ('y.Yul_outMessage("text\\n")', 1, 'stdout'),
    ('y.Yul_outMessage(3, "text\\n")', 3, 'stdout'),
    ('y.Yul_outMessage(12, "text\\n")', 12, 'stdout'),
    ('y.Yul_outWarning("text\\n")', 3, 'stderr'),
    ('y.Yul_outDebug("text\\n")', 13, 'stdout'),
    ('y.Yul_outDebug(8, "text\\n")', 20, 'stdout'),
]


@pytest.mark.parametrize('call, level, stream', OUTPUT)
def test_messages_follow_their_level(call, level, stream):
    name = f'out{level - 4}' if 4 < level < 13 else f'debug{level - 12}' if level > 12 else \
        ['none', 'print', 'error', 'warn', 'mess'][level]
    done = run(f'y.Yul_setMessageLevel("none,+{name}")\nassert {call} == 1\n'
               f'y.Yul_setMessageLevel("debug,-{name}")\nassert {call} == 1')
    assert {'stdout': done.stdout, 'stderr': done.stderr} == {'stdout': '', 'stderr': '', stream: 'text\n'}


def test_errors_and_plain_prints_ignore_the_mask():
    done = run('y.Yul_setMessageLevel(0)\ny.Yul_outError("error\\n")\ny.Yul_print("%d 100%% \\u00fc\\n")')
    assert (done.stderr, done.stdout) == ('error\n', '%d 100%% ü\n')


def test_formats_add_nothing_and_a_double_percent_is_one():
    assert run('y.Yul_outMessage("a 100%% b")').stdout == 'a 100% b'


@pytest.mark.parametrize('value', ['', '1'])
def test_warnings_and_errors_move_while_the_variable_is_defined(value):
    done = run('y.Yul_outWarning("warning\\n")\ny.Yul_outError("error\\n")', yulerrtoout=value)
    assert (done.stdout, done.stderr) == ('warning\nerror\n', '')


def test_an_error_code_is_told_as_a_bool():
    for code in (7, -1, 2**31 - 1):
        assert y.Yul_setError(code) == 1 and y.Yul_getError() is True
    y.Yul_setError(0)
    assert y.Yul_getError() is False


def test_exit_ends_the_process_with_the_code():
    done = run('import sys\nsys.stdout.write("before ")\ny.Yul_print("after")\nsys.stdout.write(" last")\ny.Yul_exit(6)')
    assert (done.returncode, done.stdout) == (6, 'before after last')


def test_program_name_and_paths():
    assert y.Yul_getProgramName() == 'Yul'
    for given, kept in [('plot', 'plot'), ('x' * 23, 'x' * 23), ('x' * 5000, 'x' * 23), ('', 'Yul'), (None, 'Yul')]:
        assert y.Yul_setProgramName(given) == 1
        assert y.Yul_getProgramName() == kept
    before = y.Yul_getDatabasePath()
    for given, kept in [('/data', '/data'), ('', ''), (None, ''), (before, before)]:
        assert y.Yul_setDatabasePath(given) == 1
        assert y.Yul_getDatabasePath() == kept
    y.Yul_setInitTime(123)
    assert y.Yul_getInitTime() == 123


def test_system_services():
    assert abs(y.Yul_getTime() - time.time()) < 5
    assert y.Yul_getComputerName() == socket.gethostname()[:39]
    size = int(pathlib.Path('/proc/self/stat').read_text().split()[22])
    assert y.Yul_getVirtMem() in (min(size, 2**31 - 1), pytest.approx(size, rel=0.5))
    assert y.Yul_getVersion() == '6.74.6-LINUX-X11'
    start = time.monotonic()
    assert y.Yul_sleep(0.02) == 1 and time.monotonic() - start >= 0.02
    for nothing in (-1.0, float('nan'), 0):
        assert y.Yul_sleep(nothing) == 1


def test_pause_reads_one_character():
    done = run('print("asked", end=" ")\nprint(y.Yul_pause())', stdin='ab')
    assert done.stdout == 'asked 1\n'


def test_the_class_makes_empty_objects():
    thing = y.new_Yul()
    assert thing.own() and y.delete_Yul(thing) is None
