"""String, Strings and FileTool."""

import _Yul as y
import pytest


@pytest.mark.parametrize('arguments, text', [
    ((), ''), ((30,), ''), ((-5,), ''), ((2**31 - 1,), ''), (('text',), 'text'), (('ü',), 'ü'),
])
def test_strings_start_with_a_text_or_a_capacity(arguments, text):
    string = y.new_String(*arguments)
    assert y.String_get(string) == text and y.String_length(string) == len(text.encode())


def test_strings_are_copied_and_grow():
    a = y.new_String('one')
    b = y.new_String(a)
    assert y.String_append(b, ' two') == 1 and y.String_append(b, a) == 1 and y.String_append(b, b) == 1
    assert y.String_get(b) == 'one twooneone twoone' and y.String_get(a) == 'one'
    assert y.String_set(a, b) == 1 and y.String_get(a) == y.String_get(b)
    assert y.String_copy(a, 'three') == 1 and y.String_copy(b, a) == 1 and y.String_get(b) == 'three'
    assert y.String_clear(b) == 1 and y.String_get(b) == '' and y.String_init(a, 80) == 1 and y.String_get(a) == ''


def test_formats_take_the_format_alone():
    string = y.new_String()
    assert y.String_printf(string, '100%% done', 5) == 9
    assert y.String_aprintf(string, '%s%d') == 16
    assert y.String_get(string) == '100% done(null)0'
    assert y.String_scanf(string, '%d') == 0 and y.String_scanp(string, 99, '%d') == 0


@pytest.mark.parametrize('text, separator, items', [
    ('a,b,c', ',', ['a', 'b', 'c']),
    ('a:b', 58, ['a', 'b']),
    (',a,,', ',', ['', 'a', '', '']),
    ('', ',', []),
    (None, ',', []),
    ('alone', ',', ['alone']),
])
def test_splits_at_a_separator(text, separator, items):
    strings = y.new_Strings(text, separator)
    assert [y.Strings_getString(strings, i) for i in range(y.Strings_getNum(strings))] == items
    assert y.Strings_get(strings, len(items)) is y.Strings_get(strings, -1) is None
    assert y.Strings_add(strings, 'more') == 1 and y.Strings_get(strings, len(items)) == 'more'
    assert y.Strings_clear(strings) == 1 and y.Strings_getNum(strings) == 0


def test_joins_paths_and_looks_at_files(tmp_path):
    path = y.new_String()
    for directory, name, expected in [('/data', 'a', '/data/a'), ('/data/', 'a', '/data/a'), ('', 'a', 'a'),
                                      ('/data', '/a', '/a'), (None, None, '')]:
        assert y.FileTool_addPath(directory, name, path) == 1
        assert y.String_get(path) == expected
    (tmp_path / 'file').write_text('12345')
    assert y.FileTool_exist(str(tmp_path / 'file')) is True and y.FileTool_getSize(str(tmp_path / 'file')) == 5
    assert y.FileTool_exist(str(tmp_path / 'none')) is False and y.FileTool_getSize(None) == -1
    assert [y.FileAttr_getText(mode) for mode in (0, 1, 2, 3, -1)] == ['r', 'w', 'a', None, None]
