"""Data members, arrays and linked global variables."""

import gc
from array import array

import _frametest as f
import pytest


@pytest.fixture
def members():
    return f.new_Members()


@pytest.mark.parametrize('name, value, expected', [
    ('whole', 5, 5),
    ('part', 0.25, 0.25),
    ('flag', True, True),
    ('letter', 'z', 'z'),
    ('code', 'wxyz', 'wxyz'),
    ('code', '', ''),
    ('code', 'é', 'é'),
    ('text', 'longer text', 'longer text'),
    ('color', 2, 2),
])
def test_writes_and_reads_back(members, name, value, expected):
    assert getattr(f, f'Members_{name}_set')(members, value) is None
    assert getattr(f, f'Members_{name}_get')(members) == expected


@pytest.mark.parametrize('name, value, error, text', [
    ('whole', 'x', TypeError, "in method 'Members_whole_set', argument 2 of type 'int'"),
    ('whole', 2**31, OverflowError, "in method 'Members_whole_set', argument 2 of type 'int'"),
    ('code', 'vwxyz', TypeError, "in method 'Members_code_set', argument 2 of type 'char [5]'"),
    ('code', None, TypeError, "in method 'Members_code_set', argument 2 of type 'char [5]'"),
    ('table', 1.5, TypeError, "in method 'Members_table_set', argument 2 of type 'double [4]'"),
    ('table', None, ValueError,
     "invalid null reference in method 'Members_table_set', argument 2 of type 'double [4]'"),
    ('thing', 5, TypeError, "in method 'Members_thing_set', argument 2 of type 'frametest::Thing *'"),
    ('thing', None, ValueError,
     "invalid null reference in method 'Members_thing_set', argument 2 of type 'frametest::Thing *'"),
])
def test_refuses_what_does_not_fit_and_keeps_the_value(members, name, value, error, text):
    with pytest.raises(error) as raised:
        getattr(f, f'Members_{name}_set')(members, value)
    assert str(raised.value) == text
    assert (f.Members_whole_get(members), f.Members_code_get(members)) == (1, 'abcd')


@pytest.mark.parametrize('name', ['fixed', 'link', 'pair', 'label'])
def test_constants_and_pointers_cannot_be_written(name):
    assert hasattr(f, f'Members_{name}_get') and not hasattr(f, f'Members_{name}_set')


def test_object_members_are_live_parts(members):
    f.Thing_number_set(f.Members_thing_get(members), 77)
    assert f.Thing_number_get(f.Members_link_get(members)) == 77
    f.Members_thing_set(members, f.new_Thing(5))
    assert f.Thing_number_get(f.Members_link_get(members)) == 5
    assert f.Thing_number_get(f.Members_pair_get(members)) == 0
    assert f.Members_label_get(members) == 'label'


def test_array_members_are_copied(members):
    other = f.new_Members()
    table = f.Members_table_get(members)
    assert repr(table).startswith("<PointerObject of type 'double *'")
    assert f.Members_table_set(other, table) is None
    assert f.Members_table_set(members, table) is None


def test_properties_stand_for_members():
    field = f.new_Field(3, 2)
    assert f.Field_columns_set(field, 4) is None
    assert (f.Field_columns_get(field), f.Field_rows_get(field)) == (4, 2)
    assert not hasattr(f, 'Field_rows_set')


def test_views_share_the_values_and_outlive_the_object():
    field = f.new_Field(3, 2)
    view = f.Field_view(field)
    assert (view.format, view.shape, view.strides, view.readonly) == ('f', (2, 3), (12, 4), False)
    view[1, 2] = 7.5
    assert f.Field_get(field, 2, 1) == 7.5
    f.delete_Field(field)
    del field
    gc.collect()
    assert view[1, 2] == 7.5
    assert f.Field_view(f.new_Field(0, 2)).tolist() == [[], []]


def test_arrays_are_read_and_written_in_place():
    for letter, size in (('f', 4), ('d', 8)):
        values = array(letter, [1.5, -2, 3])
        out = array(letter, [0] * 4)
        assert f.Field_twice(values, out) == 3
        assert out.tolist() == [3, -4, 6, 0]
        assert f.Field_twice(memoryview(values).cast('B').cast(letter, (1, 3)), out) == 3
        assert f.Field_twice(array(letter), out) == 0
        out.append(1)  # nothing holds the buffer any more
        blank = memoryview(bytearray(8 * size + 1))
        refused = [None, 1.5, 'text', [1.5], b'12345678', array('i', [1]), array('fd'[letter == 'f'], [1]),
                   memoryview(out)[::2], blank[1:].cast(letter)]
        for wrong in refused:
            with pytest.raises((TypeError, NotImplementedError)):
                f.Field_twice(wrong, out)
        for wrong in (*refused, memoryview(values).toreadonly()):
            with pytest.raises((TypeError, NotImplementedError)):
                f.Field_twice(values, wrong)
    assert f.Field_sum(memoryview(array('d', [1, 2])).toreadonly()) == 3
    with pytest.raises(TypeError, match=r"in method 'Field_sum', argument 1 of type 'double const \[\]'"):
        f.Field_sum(None)


def test_variables_are_read_and_written():
    assert (f.cvar.Globals_LIMIT, f.cvar.Globals_radius, f.cvar.Globals_offset) == (99, 2.5, 0.5)
    f.cvar.Globals_radius = 3
    f.cvar.Globals_offset = 0.25
    assert (f.cvar.Globals_radius, f.cvar.Globals_offset) == (3.0, 0.25)
    table = f.cvar.Globals_table
    assert [f.Globals_at(table, i) for i in (0, 12)] == [0, 12]
    f.cvar.Globals_other = table
    assert f.Globals_at(f.cvar.Globals_other, 12) == 12
    assert 'Globals_few' in dir(f.cvar) and repr(f.cvar)


@pytest.mark.parametrize('name, value, error, text', [
    ('Globals_LIMIT', 3, AttributeError, 'Variable Globals_LIMIT is read-only.'),
    ('Globals_none', 3, AttributeError, "Unknown C global variable 'Globals_none'"),
    ('__class__', 3, AttributeError, "Unknown C global variable '__class__'"),
    ('Globals_radius', 'x', TypeError, "in variable 'frametest::Globals::radius' of type 'double'"),
    ('Globals_offset', 1e39, OverflowError, "in variable 'frametest::Globals::offset' of type 'float'"),
    ('Globals_table', None, ValueError,
     "invalid null reference in variable 'frametest::Globals::table' of type 'int [13]'"),
    ('Globals_table', 5, TypeError, "in variable 'frametest::Globals::table' of type 'int [13]'"),
    ('Globals_table', f.cvar.Globals_few, TypeError, "in variable 'frametest::Globals::table' of type 'int [13]'"),
])
def test_variables_refuse_what_does_not_fit(name, value, error, text):
    with pytest.raises(error) as raised:
        setattr(f.cvar, name, value)
    assert str(raised.value) == text


def test_unknown_variables_are_named():
    for name in ('nothing', '__nothing__'):
        with pytest.raises(AttributeError) as raised:
            getattr(f.cvar, name)
        assert str(raised.value) == f"Unknown C global variable '{name}'"
    with pytest.raises(AttributeError):
        del f.cvar.Globals_radius
