"""The module holds what the headers declare: every public operation, member and enumerator, each once."""

from collections import Counter
from dataclasses import replace
import re
import sys
from types import SimpleNamespace

import pytest

import _Yul

# Left out on purpose, with the reason.
OMITTED = {
    'ColorFill::getValues': 'Python reads the levels one by one',
    'ForeTime::operator==': 'ForeTime::match and the texts compare',
    'GribPDB::set': 'made by the reader alone',
    'Grid::data': 'Grid_view gives the values',
    'Grid::getLocateX': 'Grid_getLocate gives single locations',
    'Grid::getLocateY': 'Grid_getLocate gives single locations',
    'Grid::getValues': 'Grid_view gives the values',
    'Grid::prepareData': 'hands out memory that is not filled',
    'Grid::shareData': 'Grid_view holds the memory',
    'Listener::Listener': 'a receiver is not copied',
    'MapFile::getChunks': 'MapFile_getLine gives whole lines',
    'MapFile::read': 'MapFile_getLine gives whole lines',
    'Plot::callback': 'Listener_callback comes to it',
    'Plot::proposeLabel': 'for layers, which are written in C++',
    'Plot::getFacts': 'for layers, which are written in C++',
    'Plot::getColorBar': 'for layers, which are written in C++',
    'Plot::setColorBar': 'for layers, which are written in C++',
    'Plot::getLayout': 'for layers, which are written in C++',
    'StationData::getLocations': 'StationData_getLocation gives single locations',
    'String::view': 'String_get gives the text',
    'String::assign': 'String_set sets it',
    'String::append': 'as text of a pointer and as String',
    'WmoProduct::view': 'WmoProduct_getText gives the text',
    'Unit::convert': 'the static one is Unit_convertValue: one name is either static or not',
}
OPERATORS = {'operator<': '__lt__', 'operator>': '__gt__', 'operator+=': '__iadd__'}
# Arguments that Python cannot make: the operation is there with others (a result, a list, nothing).
NOT_PYTHON = re.compile(r'^(char|(float|int|Point|Level|void)(const)?)[*]$|detail::|vector<|\(\*')


@pytest.fixture(scope='session')
def headers(root):
    sys.path.insert(0, str(root / 'src' / 'python' / 'generate'))
    try:
        import headers
    finally:
        sys.path.pop(0)
    return SimpleNamespace(classes=headers.read_rooms(root / 'src'), normal=headers.normal_type)


def public_declarations(classes, name):
    """What the class and its bases declare, but for bases that are exposed themselves."""
    yield from classes[name].declarations
    for base in classes[name].bases:
        base, _, item = base.removesuffix('>').partition('<')
        if base not in _Yul._classes() and base in classes:
            for declaration in public_declarations(classes, base):
                if declaration.kind != 'constructor':
                    parameters = [replace(parameter, type=re.sub(r'\bItem\b', item or 'Item', parameter.type))
                                  for parameter in declaration.parameters]
                    yield replace(declaration, parameters=parameters)


def is_exposed(headers, cls, declaration):
    """Whether the module has the declaration; texts compare by their types without namespaces."""
    full_name = f'{cls}_{OPERATORS.get(declaration.name, declaration.name)}'
    if declaration.kind == 'enumerator':
        return type(vars(_Yul).get(full_name)) is int
    if declaration.kind == 'member':
        return f'{full_name}_get' in vars(_Yul) or full_name in dir(_Yul.cvar)
    function = f'new_{cls}' if declaration.kind == 'constructor' else full_name
    wanted = [headers.normal(re.sub(r'std::span<(.*)>', r'\1[]', parameter.type)) for parameter in declaration.parameters]
    known = [[headers.normal(kind) for kind in (kinds[1:] if role == 'method' else kinds)]
             for role, _, kinds in _Yul._signatures().get(function, ())]
    return wanted in known or known and any(NOT_PYTHON.search(kind) for kind in wanted)


def is_for_python(cls, declaration):
    """Not what the language needs for itself: copies, moves, destructors, limits that hold at compile time."""
    if declaration.is_deleted or declaration.name.startswith('~') or declaration.name == 'operator=':
        return False
    if declaration.kind == 'constructor':
        return [parameter.type for parameter in declaration.parameters] != [f'{cls} &&']
    if 'std::vector<' in declaration.type:
        return False
    return not (declaration.kind == 'member' and declaration.is_static and declaration.name.isupper()
                and f'{cls}_{declaration.name}' not in dir(_Yul.cvar))


def test_every_public_declaration_is_exposed(headers):
    missing = [f'{cls}: {declaration.text}' for cls in _Yul._classes()
               for declaration in public_declarations(headers.classes, cls)
               if is_for_python(cls, declaration) and f'{cls}::{declaration.name}' not in OMITTED
               and not is_exposed(headers, cls, declaration)]
    assert not missing, 'bind these, or give a reason in OMITTED:\n' + '\n'.join(missing)


def needs_no_word(cls, declaration):
    """Copies, moves, what a class has by default, and the end of its life."""
    own = [f'{cls}const&'], [f'{cls}&&'], []
    return (declaration.kind not in ('function', 'constructor') or declaration.is_deleted
            or declaration.name.startswith('~') or declaration.name in ('operator=', 'operator==')
            or declaration.kind == 'constructor' and [re.sub(r'\s', '', parameter.type)
                                                      for parameter in declaration.parameters] in own)


def test_every_public_operation_is_documented(headers):
    silent = [f'{cls}: {declaration.text}' for cls in _Yul._classes()
              for declaration in public_declarations(headers.classes, cls)
              if not declaration.doc and not needs_no_word(cls, declaration)]
    assert not silent, 'give these a comment:\n' + '\n'.join(silent)


def test_nothing_is_exposed_twice():
    for function, overloads in _Yul._signatures().items():
        twice = [kinds for kinds, count in Counter(row[2] for row in overloads).items() if count > 1]
        assert not twice, f'{function}: {twice}'


def test_overloads_are_listed_in_the_order_of_the_header(headers):
    for cls in _Yul._classes():
        declared = {}
        for declaration in headers.classes[cls].declarations:
            kinds = tuple(headers.normal(parameter.type) for parameter in declaration.parameters)
            declared.setdefault(declaration.name, []).append(kinds)
        for name, kinds in declared.items():
            function = f'new_{cls}' if name == cls else f'{cls}_{name}'
            bound = [tuple(map(headers.normal, row[1:] if role == 'method' else row))
                     for role, _, row in _Yul._signatures().get(function, ())]
            listed = [row for row in bound if row in kinds]
            assert listed == sorted(listed, key=kinds.index), function


def test_every_listing_has_a_form_that_returns_none():
    missing = [cls for cls in _Yul._classes() if hasattr(_Yul, f'{cls}_print') and not hasattr(_Yul, f'{cls}__print')]
    assert not missing


def test_omissions_are_declared_and_left_out(headers):
    for name in OMITTED:
        cls, _, rest = name.partition('::')
        declared = [declaration for declaration in public_declarations(headers.classes, cls) if declaration.name == rest]
        assert any(not is_exposed(headers, cls, declaration) for declaration in declared), name


def test_enumerators_have_the_values_of_their_headers(headers):
    checked = set()
    for cls in _Yul._classes():
        value = -1
        for declaration in headers.classes[cls].declarations:
            name = f'{cls}_{declaration.name}'
            given = declaration.text.partition('=')[2].strip()
            if declaration.kind == 'enumerator':
                value = int(given) if re.fullmatch(r'-?\d+', given) else value + 1
                if given and not given.lstrip('-').isdigit() or value and name.endswith('_NONE') and not given:
                    value = getattr(_Yul, name)  # an expression, or the start of the next enumeration
                assert getattr(_Yul, name) == value, declaration.text
            if declaration.kind == 'enumerator' or declaration.is_static:
                checked.add(name)
    constants = {name for name, value in vars(_Yul).items() if type(value) is int}
    assert constants <= checked and len(constants) > 100
