"""Overloads: the order in which they are tried and what is said when none fits."""

import _frametest as f
import pytest

HEAD = "Wrong number or type of arguments for overloaded function 'Picks_pick'.\n  Possible prototypes are:\n"
PROTOTYPES = ''.join(f'    frametest::Picks::pick{arguments}\n' for arguments in [
    '(char const *)', '(double)', '(int)', '(frametest::Left const &)', '(frametest::Both const &)', '(bool)',
    '(frametest::Thing *)', '(float)', '() const', '(int,float)', '(int,int)', '(float,char const *)',
    '(int,char const *)',
])


@pytest.fixture
def picks():
    return f.new_Picks()


PICKED = [
    ((), 'nothing'),
    ((f.new_Left(),), 'Left'),
    ((f.new_Both(),), 'Both'),
    ((f.new_More(),), 'Both'),
    ((f.new_Thing(),), 'Thing'),
    ((True,), 'bool'),
    ((5,), 'int'),
    ((2**40,), 'float'),
    ((1e39,), 'double'),
    ((5.0,), 'float'),
    (('5',), 'text'),
    ((1, 2), 'int int'),
    ((1, 2.0), 'int float'),
    ((1, '2'), 'int text'),
    ((1.0, '2'), 'float text'),
]


@pytest.mark.parametrize('arguments, expected', PICKED)
def test_takes_the_first_that_accepts_all(picks, arguments, expected):
    assert f.Picks_pick(picks, *arguments) == expected


@pytest.mark.parametrize('arguments', [(1j,), (b'5',), (10**400,), (1, None, ), ('a', 'b'), (f.new_Right(),)])
def test_lists_the_prototypes_as_declared(picks, arguments):
    if arguments == (1, None):
        assert f.Picks_pick(picks, *arguments) == 'int text'  # None is a null text
        return
    with pytest.raises(TypeError) as raised:
        f.Picks_pick(picks, *arguments)
    assert str(raised.value) == HEAD + PROTOTYPES


@pytest.mark.parametrize('count, text', [
    (0, 'Picks_pick expected at least 1 arguments, got none'),
    (4, 'Picks_pick expected at most 3 arguments, got 4'),
])
def test_a_wrong_count_comes_before_the_prototypes(picks, count, text):
    with pytest.raises(TypeError) as raised:
        f.Picks_pick(*[picks] * count)
    assert str(raised.value) == f'{text}\nAdditional information:\n{HEAD}{PROTOTYPES}'


def test_none_passes_for_an_object_and_fails_in_the_conversion(picks):
    with pytest.raises(ValueError) as raised:
        f.Picks_pick(picks, None)
    assert str(raised.value) == (
        "invalid null reference in method 'Picks_pick', argument 2 of type 'frametest::Both const &'")


def test_constructors_and_inherited_operations_show_the_bound_class():
    with pytest.raises(TypeError) as raised:
        f.new_Thing('text')
    assert str(raised.value).splitlines()[2:] == [
        '    frametest::Thing::Thing()',
        '    frametest::Thing::Thing(int)',
        '    frametest::Thing::Thing(frametest::Thing const &)',
    ]
    with pytest.raises(TypeError) as raised:
        f.Things_get(f.new_Things(), 'first')
    assert str(raised.value).splitlines()[2:] == ['    frametest::Things::get(int)', '    frametest::Things::get()']
