"""The resource store, as an object of its own and behind the class Yul."""

import _Yul as y
import pytest
from running import python


@pytest.fixture
def store():
    return y.new_Resrc()


def names(store):
    """All names by iteration."""
    y.Resrc_rewind(store)
    return list(iter(lambda: y.Resrc_getNext(store), None))


def test_types_are_numbered():
    kinds = ('NONE', 'BASE', 'FILE', 'ENV', 'COMMAND', 'USER')
    assert [getattr(y, f'Resrc_{kind}') for kind in kinds] == list(range(6))


def test_a_bare_switch_differs_from_a_missing_name(store):
    assert y.Resrc_add(store, 'switch', None, y.Resrc_COMMAND) == 1
    assert y.Resrc_get(store, 'switch') == '' and y.Resrc_getBool(store, 'switch') is True
    assert y.Resrc_get(store, 'missing') is None and y.Resrc_getBool(store, 'missing') is False
    assert (y.Resrc_getType(store, 'switch'), y.Resrc_getType(store, 'missing')) == (4, 0)


def test_the_last_add_wins_and_keeps_the_place(store):
    y.Resrc_add(store, 'a', '1', y.Resrc_COMMAND)
    y.Resrc_set(store, 'b', '2', y.Resrc_ENV)
    y.Resrc_put(store, 'A', '3')
    assert y.Resrc_add(store, 'a', '4', y.Resrc_BASE) == 1
    assert names(store) == ['a', 'b', 'A']
    assert [y.Resrc_get(store, name) for name in names(store)] == ['4', '2', '3']
    assert [y.Resrc_getType(store, name) for name in names(store)] == [1, 3, 5]


def test_set_takes_a_text_or_a_string(store):
    text = y.new_String('from a string')
    assert y.Resrc_set(store, 'a', 'text') == 1 and y.Resrc_get(store, 'a') == 'text'
    assert y.Resrc_set(store, 'a', text) == 1 and y.Resrc_get(store, 'a') == 'from a string'
    y.String_clear(text)
    assert y.Resrc_get(store, 'a') == 'from a string' and y.Resrc_getType(store, 'a') == y.Resrc_USER


JOINS = [
    # value at first (False: none at all), what is joined, separator, appended, prepended
    ('old', 'new', ',', 'old,new', 'new,old'),
    ('old', 'new', '\0', 'old\nnew', 'new\nold'),
    ('old', 'new', 0, 'old\nnew', 'new\nold'),
    ('', 'new', ',', ',new', 'new,'),
    ('old', '', ',', 'old,', ',old'),
    ('old', None, ',', 'old', 'old'),
    (None, 'new', ',', 'new', 'new'),
    (False, 'new', ',', 'new', 'new'),
    (False, None, ',', '', ''),
]


@pytest.mark.parametrize('first, joined, separator, appended, prepended', JOINS)
@pytest.mark.parametrize('at_end', [True, False])
def test_joins_with_a_separator(store, first, joined, separator, appended, prepended, at_end):
    if first is not False:
        y.Resrc_add(store, 'key', first, y.Resrc_ENV)
    join = y.Resrc_append if at_end else y.Resrc_prepend
    assert join(store, 'key', joined, separator) == 1
    assert y.Resrc_get(store, 'key') == (appended if at_end else prepended)
    assert y.Resrc_getType(store, 'key') == (y.Resrc_NONE if first is False else y.Resrc_ENV)


NUMBERS = [
    # text, as an int with the default 7, as a float with the default 0.5
    ('12', 12, 12.0),
    ('12abc', 12, 12.0),
    ('1.75', 1, 1.75),
    ('1e3', 1, 1000.0),
    ('0x10', 0, 16.0),
    ('0x-4', 0, 0.0),
    ('0xinf', 0, 0.0),
    ('1E-400', 1, 0.0),
    ('0.' + '0' * 400 + '1', 0, 0.0),
    ('1E400', 1, float('inf')),
    ('1' + '0' * 400 + 'e-5', 2**31 - 1, float('inf')),
    ('-3', 7, 0.5),
    ('+3', 7, 0.5),
    ('.5', 7, 0.5),
    (' 3', 7, 0.5),
    ('', 7, 0.5),
    (None, 7, 0.5),
    ('text', 7, 0.5),
    ('99999999999', 2**31 - 1, pytest.approx(99999999999, rel=1e-7)),
]


@pytest.mark.parametrize('text, whole, part', NUMBERS)
def test_numbers_begin_with_a_digit(store, text, whole, part):
    y.Resrc_add(store, 'n', text, 5)
    assert y.Resrc_get(store, 'n', 7) == whole and type(y.Resrc_get(store, 'n', 7)) is int
    assert y.Resrc_get(store, 'n', 0.5) == part and type(y.Resrc_get(store, 'n', 0.5)) is float
    assert y.Resrc_get(store, 'n', 'default') == (text or '')


def test_defaults_stand_for_missing_names(store):
    assert y.Resrc_get(store, 'missing', 7) == 7
    assert y.Resrc_get(store, 'missing', 2.5) == 2.5
    assert y.Resrc_get(store, 'missing', 'default') == 'default'
    assert y.Resrc_get(store, 'missing', None) is None


@pytest.mark.parametrize('text, expected', [
    ('no', False), ('No', False), ('OFF', False), ('false', False), ('False', False),
    ('', True), ('0', True), ('yes', True), ('n', True), ('nope', True), ('off ', True),
])
def test_three_words_are_false(store, text, expected):
    y.Resrc_put(store, 'flag', text)
    assert y.Resrc_getBool(store, 'flag') is expected


def test_one_cursor_serves_all_iteration(store):
    for name in 'abc':
        y.Resrc_put(store, name, name.upper())
    name, value = y.new_String(), y.new_String()

    def values(following):
        found = y.Resrc_getValues(store, name, value, following)
        return found, y.String_get(name), y.String_get(value)

    assert y.Resrc_getNext(store) is None
    assert y.Resrc_rewind(store) == 1 and y.Resrc_getNext(store) == 'a'
    assert values(1) == (1, 'b', 'B')
    assert values(0) == (1, 'a', 'A')
    assert y.Resrc_getNext(store) == 'b'
    assert values(1) == (1, 'c', 'C')
    assert values(1)[0] == 0 and y.Resrc_getNext(store) is None
    assert y.Resrc_clear(store) == 1 and values(0)[0] == 0 and names(store) == []
    y.Resrc_put(store, 'd', None)
    assert values(0) == (1, 'd', '') and y.Resrc_init(store) == 1 and names(store) == []


def test_scanf_reads_nothing_into_a_null_pointer(store):
    y.Resrc_put(store, 'n', '12 13')
    assert y.Resrc_scanf(store, 'n', '%d %d', 'ignored') == 0
    assert y.Resrc_scanf(store, 'missing', '%d') == 0


LISTING = '''
import _Yul as y
store = y.new_Resrc()
for number, name in enumerate(["none", "base", "file", "env", "command", "user"]):
    y.Resrc_add(store, name, "value %d", number)
y.Resrc_add(store, "bare", None, y.Resrc_COMMAND)
y.Resrc_add(store, "base", "later", y.Resrc_FILE)
assert y.Resrc_printAll(store) == 1
assert y.Resrc_print(store, "base") == 1 and y.Resrc__print(store, "missing") is None
y.Yul_addResrc("key", "value", y.Resrc_ENV)
y.Yul_appendResrc("key", "more")
y.Yul_printAllResrc()
y.delete_Resrc(store)
'''


def test_listings():
    done = python(LISTING)
    assert done.stderr == ''
    assert done.stdout.splitlines() == [
        'none: value %d', 'base (file): later', 'file (file): value %d', 'env (env): value %d',
        'command (cmd): value %d', 'user: value %d', 'bare (cmd): ', 'base: later', 'missing: not set',
        'key (env): value', 'more']


def test_the_process_wide_store_takes_the_same_operations():
    assert y.Yul_addResrc('test.a', '5', y.Resrc_FILE) == 1 and y.Yul_getResrcType('test.a') == 2
    assert y.Yul_putResrc('test.b', 'off') == 1 and y.Yul_getResrcBool('test.b') is False
    assert y.Yul_setResrc('test.c', None) == 1 and y.Yul_getResrc('test.c') == ''
    assert y.Yul_appendResrc('test.c', 'x') == 1 and y.Yul_appendResrc('test.c', 'y') == 1
    assert y.Yul_getResrc('test.c') == 'x\ny'
    assert y.Yul_getResrc('test.a', 1) == 5 and y.Yul_getResrc('test.a', 1.0) == 5.0
    assert y.Yul_getResrc('test.missing', 5) == 5 and y.Yul_getResrc('test.missing', 3000000000) == 3e9
    y.Yul_rewindResrc()
    assert {'test.a', 'test.b', 'test.c'} <= set(iter(y.Yul_nextResrc, None))


def test_values_outlive_the_texts_they_came_from(store):
    for number in range(1000):
        y.Resrc_put(store, f'name {number}', f'value {number}')
    assert [y.Resrc_get(store, f'name {n}') for n in (0, 500, 999)] == ['value 0', 'value 500', 'value 999']
    assert names(store) == [f'name {n}' for n in range(1000)]


def test_joining_a_value_to_itself(store):
    y.Resrc_put(store, 'a', 'twice')
    y.Resrc_append(store, 'a', y.Resrc_get(store, 'a'), ' ')
    y.Resrc_add(store, None, 'x', 5)
    assert y.Resrc_get(store, 'a') == 'twice twice' and names(store) == ['a']
