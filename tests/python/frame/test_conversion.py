"""Arguments and results: every row of the conversion table, with the texts of its errors."""

import enum
import math

import _frametest as f
import pytest

FLOAT_MAX = 3.4028234663852886e38
WIDE = 2**31


class Number(enum.IntEnum):
    FIVE = 5


class Index:
    def __index__(self):
        return 5


class Whole(int):
    pass


class Part(float):
    pass


@pytest.fixture
def rows():
    return f.new_Rows()


ACCEPTED = [
    ('takeInt', -WIDE, -WIDE),
    ('takeInt', WIDE - 1, WIDE - 1),
    ('takeInt', True, 1),
    ('takeInt', Number.FIVE, 5),
    ('takeInt', Whole(7), 7),
    ('takeShort', -32768, -32768),
    ('takeUnsignedShort', 65535, 65535),
    ('takeUnsigned', 4294967295, 4294967295),
    ('takeLong', -2**63, -2**63),
    ('takeUnsignedLong', 2**64 - 1, 2**64 - 1),
    ('takeUnsignedLong', Whole(3), 3),
    ('takeFloat', 0.5, 0.5),
    ('takeFloat', 3, 3.0),
    ('takeFloat', True, 1.0),
    ('takeFloat', Part(0.25), 0.25),
    ('takeFloat', FLOAT_MAX, FLOAT_MAX),
    ('takeFloat', -FLOAT_MAX, -FLOAT_MAX),
    ('takeFloat', math.inf, math.inf),
    ('takeFloatConstReference', 0.5, 0.5),
    ('takeDouble', 1e300, 1e300),
    ('takeDouble', 2**70, float(2**70)),
    ('takeBool', True, True),
    ('takeBool', False, False),
    ('takeChar', 'a', 'a'),
    ('takeChar', '\0', '\0'),
    ('takeChar', 65, 'A'),
    ('takeChar', -23, '\udce9'),
    ('takeChar', '\udce9', '\udce9'),
    ('takeEnum', 2, 2),
    ('takeText', 'text', 'text'),
    ('takeText', '', ''),
    ('takeText', None, None),
    ('takeText', 'Überlingen \U0001f300', 'Überlingen \U0001f300'),
    ('takeText', 'cut\0off', 'cut'),
    ('takeText', 'octet \udcff', 'octet \udcff'),
    ('takeString', 'text', 'text'),
    ('takePointer', None, -1),
]


@pytest.mark.parametrize('method, value, expected', ACCEPTED)
def test_accepts_and_gives_back(rows, method, value, expected):
    result = getattr(f, f'Rows_{method}')(rows, value)
    assert result == expected and type(result) is type(expected)


REFUSED = [
    ('takeInt', 'int', OverflowError, WIDE, -WIDE - 1, 10**400),
    ('takeInt', 'int', TypeError, 1.0, '1', None, Index(), b'1', []),
    ('takeShort', 'short', OverflowError, 32768),
    ('takeUnsignedShort', 'unsigned short', OverflowError, -1, 65536),
    ('takeUnsigned', 'unsigned int', OverflowError, -1, 2**32),
    ('takeLong', 'long', OverflowError, 2**63, -2**63 - 1),
    ('takeLong', 'long', TypeError, 0.5),
    ('takeUnsignedLong', 'unsigned long', OverflowError, 2**64, -1),
    ('takeUnsignedLong', 'unsigned long', TypeError, 1.0),
    ('takeFloat', 'float', OverflowError, math.nextafter(FLOAT_MAX, math.inf), -1e39, 10**400),
    ('takeFloat', 'float', TypeError, '1.0', None, 1j),
    ('takeDouble', 'double', TypeError, '1.0', None, 10**400),
    ('takeFloatConstReference', 'float const &', TypeError, None),
    ('takeBool', 'bool', TypeError, 0, 1, None, 'True'),
    ('takeChar', 'char', OverflowError, 128, -129),
    ('takeChar', 'char', TypeError, '', 'ab', 'é', None, 0.5),
    ('takeEnum', 'frametest::Color', OverflowError, WIDE),
    ('takeEnum', 'frametest::Color', TypeError, 'RED'),
    ('takeText', 'char const *', TypeError, b'text', 5, '\ud800', []),
    ('changeBuffer', 'char *', TypeError, b'text', 5),
    ('takeString', 'std::string const &', TypeError, None, 5, '\ud800'),
    ('takePointer', 'frametest::Thing *', TypeError, 5, 'Thing', object()),
    ('takeReference', 'frametest::Thing const &', TypeError, 5),
    ('takeValue', 'frametest::Thing', TypeError, 5),
    ('takeIntReference', 'int &', TypeError, 5, None),
    ('takeFloatPointer', 'float *', TypeError, 1.0, None, [1.0]),
    ('takeShortReference', 'unsigned short &', TypeError, 1),
    ('takeAddress', 'void const *', TypeError, 1, None),
    ('takeTexts', 'char const *[]', TypeError, ['a'], None),
]


@pytest.mark.parametrize('method, type_name, error, values', [(*row[:3], row[3:]) for row in REFUSED])
def test_refuses_with_the_type_as_declared(rows, method, type_name, error, values):
    for value in values:
        with pytest.raises(error) as raised:
            getattr(f, f'Rows_{method}')(rows, value)
        assert type(raised.value) is error, value
        assert str(raised.value) == f"in method 'Rows_{method}', argument 2 of type '{type_name}'"


@pytest.mark.parametrize('method, type_name', [
    ('takeReference', 'frametest::Thing const &'),
    ('takeValue', 'frametest::Thing'),
])
def test_none_is_no_reference(rows, method, type_name):
    with pytest.raises(ValueError) as raised:
        getattr(f, f'Rows_{method}')(rows, None)
    assert str(raised.value) == (
        f"invalid null reference in method 'Rows_{method}', argument 2 of type '{type_name}'")


def test_the_object_is_argument_one_and_checked_first(rows):
    with pytest.raises(TypeError, match="in method 'Rows_takeInt', argument 1 of type 'frametest::Rows \\*'"):
        f.Rows_takeInt('no', 'object')
    with pytest.raises(ValueError, match="invalid null reference in method 'Thing_getNumber', "
                                         "argument 1 of type 'frametest::Thing const \\*'"):
        f.Thing_getNumber(None)


def test_nan_passes(rows):
    assert math.isnan(f.Rows_takeFloat(rows, math.nan))
    assert math.isnan(f.Rows_takeDouble(rows, math.nan))


COUNTS = [
    (f.Rows_takeInt, 0, 'Rows_takeInt expected 2 arguments, got none'),
    (f.Rows_takeInt, 1, 'Rows_takeInt expected 2 arguments, got 1'),
    (f.Rows_takeInt, 3, 'Rows_takeInt expected 2 arguments, got 3'),
    (f.Thing_count, 1, 'Thing_count expected 0 arguments, got 1'),
    (f.Rows_format, 1, 'Rows_format expected at least 2 arguments, got 1'),
    (f.Rows_format, 0, 'Rows_format expected at least 2 arguments, got none'),
]


@pytest.mark.parametrize('function, count, text', COUNTS)
def test_counts_arguments_first(function, count, text):
    with pytest.raises(TypeError) as raised:
        function(*[None] * count)
    assert str(raised.value) == text


def test_keywords_are_refused(rows):
    with pytest.raises(TypeError):
        f.Rows_takeInt(rows, v=1)


def test_plain_pointers_pass_as_their_exact_type(rows):
    number = f.Rows_intReference(rows)
    assert f.Rows_takeIntReference(rows, number) == 8
    assert f.Rows_takeIntReference(rows, number) == 9
    values, constant = f.Rows_floatPointer(rows), f.Rows_constFloatPointer(rows)
    assert f.Rows_takeFloatPointer(rows, values) == 2.0
    assert f.Rows_takeConstFloatPointer(rows, values) == f.Rows_takeConstFloatPointer(rows, constant) == 2.0
    assert f.Rows_takeShortReference(rows, f.Rows_shortReference(rows)) == 5
    assert f.Rows_takeAddress(rows, f.Rows_address(rows)) == 1
    assert f.Rows_takeTexts(rows, f.Rows_texts(rows)) == 'two'
    for wrong in (constant, number, f.Rows_address(rows), rows):
        with pytest.raises(TypeError, match='float \\*'):
            f.Rows_takeFloatPointer(rows, wrong)


def test_a_mutable_buffer_is_a_copy(rows):
    text = 'once'
    assert f.Rows_changeBuffer(rows, text) == 4 and text == 'once'
    assert f.Rows_changeBuffer(rows, None) == -1


def test_results_without_an_object_or_valid_text(rows):
    assert f.Rows_nothing(rows) is None
    assert f.Rows_badText(rows) == '\udcff\udce9ok'
    assert f.delete_Rows(f.new_Rows()) is None


def test_variadic_operations_get_one_null_pointer(rows):
    assert f.Rows_format(rows, 'four') == 4
    assert f.Rows_format(rows, '%d', 1, 'two', object()) == 2


def test_exceptions_of_the_operation_arrive(rows):
    with pytest.raises(RuntimeError, match='the operation failed'):
        f.Rows_fail(rows)
    with pytest.raises(MemoryError):
        f.Rows_failMemory(rows)


def test_packed_values_are_passed_on(rows):
    packed = f.Rows_operation(rows)
    assert 'int (frametest::Thing::*)() const' in repr(packed)
    assert f.Rows_apply(rows, packed, f.new_Thing(12)) == 12
    with pytest.raises(TypeError):
        f.Rows_apply(rows, 5, f.new_Thing(12))


def test_constants_are_ints():
    assert (f.Rows_RED, f.Rows_BLUE, f.Rows_FAR) == (1, 2, -9999)
    assert type(f.Rows_RED) is int


def test_signatures_tell_kind_result_and_parameters():
    signatures = f._signatures()
    assert signatures['Rows_takeTexts'] == (
        ('method', 'char const *', ('frametest::Rows *', 'char const *[]')),)
    assert signatures['new_Thing'][1] == ('constructor', 'frametest::Thing *', ('int',))
    assert f._classes()['Both'] == ('Left', 'Right')
