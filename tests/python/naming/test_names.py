"""File names by type and time: the convention file, the templates and the search for the latest file."""

import _Yul as y
import pytest

import Yul

NOW = 1794676980  # 2026-11-14 17:23:00 UTC
TABLE = '''# a comment that is long enough to be a line
s  19 characters...
exact   %D/%Y%m%d%h.a   %D/h%n   100,dat   min=60
swap    %D/%Y%m%d%h.a   -        dat,100   size=2,min=601
open    %D/%Y%m%d%h.a
never   %D/%Y%m%d%h.a   -        x,-5
open_b  %D/hidden.......
keys    %{x}%k.%2k.%z.%e........
'''


@pytest.fixture(autouse=True)
def folder(tmp_path, monkeypatch):
    """A convention file, two directories of data and a fixed present."""
    monkeypatch.chdir(tmp_path)
    (tmp_path / 'name.cnv').write_text(TABLE)
    for name, size in (('one/2026111410.a', 99), ('two/2026111409.a', 100), ('one/2026111405.a', 2),
                       ('two/2026111500.a', 200), ('two/2026111417.a', 0)):
        (tmp_path / name).parent.mkdir(exist_ok=True)
        (tmp_path / name).write_bytes(bytes(size))
    for name, value in (('file_path', '.'), ('name_conv', 'name.cnv'), ('data_path', 'one,two'), ('x', 'one'),
                        ('with_gap', 'one,none,two')):
        Yul.settings[name] = value
    y.Yul_setInitTime(NOW)
    yield tmp_path
    y.Yul_setInitTime(-9999)
    y.Yul_setMessageLevel(6)


def encode(convention, which=0):
    name = Yul.String()
    return convention.encode(Yul.Date(NOW), which, name), str(name)


@pytest.mark.parametrize('spec, file, header, extension', [
    ('EXACT', 'one/2026111417.a', 'one/h23', ''),
    ('exact_x_y', 'one/2026111417.a', 'one/h23', 'y'),
    ('open_b', 'one/2026111417.a', '', 'b'),  # an earlier line for a shorter type
    ('open', 'one/2026111417.a', '', ''),     # nothing is left over from the lines before
    ('swap,%Yown', 'one/2026111417.a', '', ''),
    ('keys:k=a bc:z:q=,', 'onea.a.0.........', '', ''),
    ('KEYS_e:z=0123456789012345678901234,', 'one0.0.0.e........', '', 'e'),
    ('other %h:k=v,head %k', 'other_17', 'head_v', ''),
    ('@exact,%Y', 'exact,2026', '', ''),
    ('@%', '', '', ''), ('@a%{', 'a', '', ''), ('@a%{}', 'a.', '', ''), ('@%5{x', 'one', '', ''), ('@%0f', '', '', ''),
    ('@' + 'x' * 100, 'x' * 80, '', ''),
    ('None', '', '', ''),
])
def test_types_become_names(spec, file, header, extension):
    convention = Yul.NameConv(spec)
    assert (encode(convention)[1], encode(convention, 1)[1], convention.getExt()) == (file, header, extension)


@pytest.mark.parametrize('spec, result', [('@%Y', (1, '2026')), ('@{}', (1, '')), ('@%e', (1, '')), ('@', (0, '')), ('none', (0, ''))])
def test_only_an_empty_template_gives_no_name(spec, result):
    assert encode(Yul.NameConv(spec)) == result


@pytest.mark.parametrize('spec, when, found', [
    ('exact', 'la', 'two/2026111409.a'),
    ('exact', 'la#8', None),
    ('exact', 'la#9', 'two/2026111409.a'),
    ('exact', '+la', 'two/2026111500.a'),
    ('swap', 'la', 'one/2026111410.a'),   # "size=" of the options over the size of the column
    ('swap', '-7:30la#1', 'two/2026111409.a'),
    ('open', 'la', 'one/2026111410.a'),   # all of the first directory before the second one
    ('open', '0', 'two/2026111417.a'),
    ('open', '-12+la', 'one/2026111405.a'),
    ('open', '>la', 'one/2026111417.a'),
    ('open,,,size=100', '-8', 'two/2026111409.a'),
    ('never', 'la', None),
    ('@%{with_gap}/%Y%m%d%h.a', 'la#3', 'two/2026111417.a'),  # a missing directory ends its own pass only
    ('@none/%D/%h', '>la', None),
    ('@%D/%Y%m%d%3h.a', 'LA#4', 'two/2026111409.a'),  # steps of three hours from 17:23 on
    ('@%D/%Y%m%d%h.a', '-999999999d', None), ('@%D/%Y%m%d%h.a', '>+999999999d', None),
    ('@%D/%Y%m%d%h.a', '>-740000d', None), ('@%D/%Y%m%d.a', '-735000dla#99999999999', None),
    ('open', '', 'one/2026111410.a'), ('open', '+', None), ('open', 'zz', None), ('open', 'la#', 'one/2026111410.a'),
    ('open', 'la#0', None),
])
def test_searches(spec, when, found):
    latest = Yul.NameConv(spec).latest(when)
    assert (latest and latest[0]) == found


def test_limits_of_a_search():
    for spec, limit, found in (('exact', 1, None), ('exact', 9, 'two/2026111409.a'), ('swap', 1, 'one/2026111410.a'),
                               ('open', 1, 'two/2026111417.a'), ('open', -1, None)):
        convention = Yul.NameConv(spec)
        convention.setLateLimit(limit)  # tries; late minutes allow more
        latest = convention.latest()
        assert (latest and latest[0]) == found


def test_fixed_fields_from_a_record():
    for fields, found in (((y.cvar.Const_MISS,) * 3 + (12, 30, 0.0), '202611141130'),
                          ((1999, 12, 20) + (y.cvar.Const_MISS,) * 3, '202511201723'),
                          ((y.cvar.Const_MISS,) * 3 + (-6, -10, 0.0), '202611141220'),
                          ((y.cvar.Const_MISS, 99, 99, -2**31, 2**31 - 1, 0.0), '202510132323')):
        convention = Yul.NameConv('@%Y%m%d%h%n')
        fixed = Yul.DateVal()
        fixed.set(*fields)
        convention.setFixDate(fixed)
        assert convention.latest('>0')[0] == found, fields


def test_debug_levels_tell_every_try(capfd):
    y.Yul_setMessageLevel('none,+debug3,+debug4,+debug5')
    Yul.NameConv('swap').latest('la#2')
    Yul.NameConv('open_c').latest('0')
    Yul.NameConv('zz')
    assert capfd.readouterr().out == (
        'Opening name convention file: ./name.cnv\nFile name match for: swap\nLATE LIMIT: 2\n'
        'LATE:2026 11 14 17 23\nLATE: one/2026111417.a 0 2 -1\nLATE:2026 11 14 16 23\nLATE: one/2026111416.a 0 2 -1\n'
        'LATE:2026 11 14 17 23\nLATE: two/2026111417.a 0 2 0\nLATE:2026 11 14 16 23\nLATE: two/2026111416.a 0 2 -1\n'
        'Opening name convention file: ./name.cnv\nFile name partial match for: open-open_c ext: c\n'
        'LATE0: one/2026111417.a\nLATE0: two/2026111417.a\n'
        'Opening name convention file: ./name.cnv\nNo file name conversion for: zz\n')


def test_damaged_convention_files(folder, capfd):
    table = folder / 'name.cnv'
    for octets in (bytes(range(256)) * 5000, b'open ' + b'x' * (3 << 20), b'\n' * 100000, b'open ' + b'%' * 200):
        table.write_bytes(octets + b'\nlate   last%h.............\n')
        assert encode(Yul.NameConv('late'))[1] == 'last17.............'
        assert len(encode(Yul.NameConv('open'))[1]) <= 80
    table.unlink()
    table.mkdir()
    assert y.NameConv_set(y.new_NameConv(), 'open_%h') == 0
    assert encode(Yul.NameConv('open_%h'))[1] == 'open_17'
    assert capfd.readouterr().err == 'NameConv: No file name convention file: ./name.cnv\n' * 2
