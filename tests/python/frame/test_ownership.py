"""Who frees an object, how results are wrapped, and how objects pass as their bases."""

import gc
import sys

import _frametest as f
import pytest
from running import python


class Proxy:
    def __setattr__(self, name, value):
        raise AttributeError(name)


class Thing(Proxy):
    def __init__(self, *arguments):
        f.Thing_attach(self, f.new_Thing(*arguments))


class SubThing(Thing):
    pass


class Both(Proxy):
    def __init__(self):
        f.Both_attach(self, f.new_Both())


@pytest.fixture(autouse=True)
def registered():
    f.Thing_registerclass(Thing)
    f.Both_registerclass(Both)
    gc.collect()
    before = f.Thing_count()
    yield
    gc.collect()
    assert f.Thing_count() == before, 'objects leaked or freed twice'


def test_a_new_object_is_a_bare_owning_pointer():
    pointer = f.new_Thing(3)
    assert type(pointer).__name__ == 'PointerObject' and pointer.own()
    assert f.Thing_getNumber(pointer) == 3


def test_the_last_reference_frees_the_object():
    before = f.Thing_count()
    thing, subclassed = Thing(1), SubThing(2)
    assert f.Thing_count() == before + 2
    assert f.Thing_getNumber(subclassed) == 2
    del thing, subclassed
    assert f.Thing_count() == before


def test_disowned_objects_stay_until_somebody_takes_them():
    before = f.Thing_count()
    thing = Thing(1)
    thing.this.disown()
    pointer = thing.this
    del thing
    assert f.Thing_count() == before + 1 and not pointer.own()
    pointer.acquire()
    assert pointer.own(False) is True and pointer.own(True) is False and pointer.own()
    del pointer
    assert f.Thing_count() == before


def test_delete_frees_at_once_and_only_once():
    before = f.Thing_count()
    thing = Thing(1)
    place = int(thing.this)
    assert f.delete_Thing(thing) is None
    assert f.Thing_count() == before
    assert not thing.this.own() and int(thing.this) == place
    assert f.delete_Thing(thing) is None
    thing.this.acquire()
    assert not thing.this.own()
    with pytest.raises(ValueError, match="invalid null reference in method 'Thing_getNumber'"):
        f.Thing_getNumber(thing)
    assert f.delete_Thing(None) is None


def test_a_refused_delete_does_not_disown():
    thing, things = Thing(1), f.new_Things()
    f.Things_add(things, thing)
    for refused in (thing, 5, f.Things_get(things, 0)):
        with pytest.raises(TypeError, match="in method 'delete_"):
            (f.delete_Both if refused is thing else f.delete_Thing)(refused)
    assert thing.this.own()
    assert f.Things_get(things, 0).this.own() is False
    f.delete_Things(things)


def test_results_by_value_own_and_results_by_reference_do_not():
    thing = Thing(4)
    copy, same = f.Thing_copy(thing), f.Thing_self(thing)
    assert type(copy) is type(same) is Thing
    assert copy.this.own() and copy.this != thing.this
    assert not same.this.own() and same.this == thing.this
    f.Thing_number_set(same, 9)
    assert (f.Thing_getNumber(thing), f.Thing_getNumber(copy)) == (9, 4)


def test_add_assign_returns_the_left_operand_without_owning_it():
    pointer = f.new_Thing(4)
    result = f.Thing___iadd__(pointer, 3)
    assert result.this == pointer and not result.this.own() and pointer.own()
    for _ in range(100000):
        result = f.Thing___iadd__(result, 1)
    assert f.Thing_getNumber(pointer) == 100007


def test_parts_keep_the_whole_alive_and_end_with_it():
    members = f.new_Members()
    f.Members_registerclass(type('Members', (), {}))
    part = f.Members_thing_get(members)
    del members
    assert f.Thing_getNumber(part) == 10
    members = f.new_Members()
    part = f.Members_thing_get(members)
    f.delete_Members(members)
    with pytest.raises(ValueError, match='invalid null reference'):
        f.Thing_getNumber(part)


def test_what_the_library_hands_out_is_not_acquired():
    thing, things, members, before = Thing(1), f.new_Things(), f.new_Members(), f.Thing_count()
    f.Things_add(things, thing)
    for handed_out in (f.Thing_self(thing), f.Things_get(things, 0), f.Members_thing_get(members)):
        handed_out.this.acquire()
        assert handed_out.this.own(True) is False and handed_out.this.own() is False
        del handed_out
    assert f.Thing_count() == before + 1 and thing.this.own()
    f.delete_Things(things)
    f.delete_Members(members)


def test_compares_as_the_class_does():
    small, large = Thing(1), Thing(2)
    assert f.Thing___lt__(small, large) is True and f.Thing___gt__(small, large) is False


def test_print_returns_none():
    thing = Thing(6)
    assert f.Thing__print(thing) is None and f.Thing_print(thing) == 6


def test_operations_written_for_the_binding_take_the_object_first():
    assert f.Thing_twice(Thing(6)) == 12


@pytest.mark.parametrize('make', [f.new_Both, Both, f.new_More])
def test_derived_objects_pass_as_any_base(make):
    derived = make()
    assert f.Tree_readLeft(derived) == 1
    assert f.Tree_readRight(derived) == 2
    assert f.Tree_readBoth(derived) == 3
    f.Right_right_set(derived, 20)
    assert f.Both_right_get(derived) == f.Tree_readRight(derived) == 20
    right = f.Tree_asRight(derived)
    assert f.Right_right_get(right) == 20
    assert int(right) != int(getattr(derived, 'this', derived))
    if make is not Both:
        f.delete_Both(derived)


def test_bases_do_not_pass_as_derived():
    with pytest.raises(TypeError):
        f.Tree_readBoth(f.Tree_asRight(Both()))


def test_deleting_as_a_base_frees_the_whole():
    both = Both()
    f.delete_Right(both)
    with pytest.raises(ValueError):
        f.Tree_readLeft(both)


def test_a_second_attach_appends_a_view():
    class Two:
        pass

    two = Two()
    f.Thing_attach(two, f.new_Thing(5))
    f.Both_attach(two, f.new_Both())
    assert f.Thing_getNumber(two) == 5 and f.Tree_readRight(two) == 2
    assert two.this.next() == two.this.next() and two.this.next().next() is None
    with pytest.raises(ValueError):
        two.this.next().append(two.this)
    with pytest.raises(ValueError):
        two.this.append(two.this)
    last, other = two.this.next(), f.new_Thing(6)
    other.append(last)
    for pointer, added in ((two.this, last), (last, last), (two.this, other), (other, two.this)):
        with pytest.raises(ValueError):
            pointer.append(added)


@pytest.mark.parametrize('function, arguments', [
    (f.Thing_registerclass, (5,)),
    (f.Thing_attach, (object, 5)),
    (f.Thing_attach, (SubThing.__new__(SubThing), f.Tree_asRight(f.new_Both()))),
    (f.Thing_attach, (f.Tree_asRight(f.new_Both()), f.Tree_asRight(f.new_Both()))),
])
def test_registering_and_attaching_check_their_arguments(function, arguments):
    with pytest.raises(TypeError, match=f"in method '{function.__name__}', argument"):
        function(*arguments)


def test_objects_that_are_referred_to_stay_alive():
    before, things = f.Thing_count(), f.new_Things()
    for _ in range(3):
        assert f.Things_refer(things, Thing(5)) == 1
    gc.collect()
    assert f.Things_getReferred(things) == 5 and f.Thing_count() == before + 3
    assert f.Things_refer(things, None) == 1
    f.delete_Things(things)
    assert f.Thing_count() == before


def test_instances_that_cannot_hold_this_are_refused():
    with pytest.raises(AttributeError):
        f.Thing_attach(object(), f.new_Thing(1))


def test_garbage_under_the_name_this_is_refused():
    class Ring:
        pass

    class Fails:
        @property
        def this(self):
            raise RuntimeError('no')

    class Passing:
        @property
        def this(self):
            return f.new_Thing(8)

    ring = Ring()
    ring.this = ring
    for wrong in (ring, Fails(), Thing, 5):
        with pytest.raises(TypeError):
            f.Thing_getNumber(wrong)
    assert f.Thing_getNumber(Passing()) == 8


def test_a_long_chain_of_views_ends_quietly():
    first = f.new_Thing(0)
    for n in range(2000):
        f.new_Thing(n)
        last = f.new_Thing(n)
        last.append(first)
        first = last
    del first, last


UNREGISTERED = '''
import sys
sys.path[:] = {path!r}
import _frametest as f
thing = f.new_Thing(1)
del thing
print(f.Thing_count())
'''


def test_without_a_registered_class_the_object_is_left_with_a_warning():
    run = python(UNREGISTERED.format(path=sys.path))
    assert run.stdout == '1\n' and run.returncode == 0
    assert 'frametest::Thing *' in run.stderr


def test_pointers_compare_hash_and_show_their_place():
    a, b = Thing(1).this, Thing(1).this
    same = f.Thing_self(a).this
    assert a == same and hash(a) == hash(same) and a != b and a != int(a)
    assert (a < b) == (int(a) < int(b))
    assert f"'frametest::Thing *' at 0x{int(a):x}" in repr(a) == a.__repr__()
    with pytest.raises(TypeError):
        type(a)()


@pytest.mark.parametrize('name, text', [
    ('disown', 'releases ownership of the pointer'),
    ('acquire', 'acquires ownership of the pointer'),
    ('own', 'returns/sets ownership of the pointer'),
    ('append', "appends another 'this' object"),
    ('next', "returns the next 'this' object"),
    ('__repr__', 'returns object representation'),
])
def test_pointer_methods_say_what_they_do(name, text):
    assert getattr(type(f.new_Left()), name).__doc__ == text


def test_types_are_shared_by_all_modules_of_the_process():
    import _Yul

    assert type(_Yul.new_Const()) is type(f.new_Left())
