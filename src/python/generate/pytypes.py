"""The library's types as Python's type checkers know them, and the module's operations with the names and comments
that their headers give."""

from dataclasses import dataclass
import keyword
from pathlib import Path
import re
import runpy

import _Yul
import headers

INTEGERS = {f'{sign}{size}' for sign in ('', 'unsigned ') for size in ('short', 'int', 'long', 'long long', 'char')} - {'char'}
VALUES = {'bool': 'bool', 'float': 'float', 'double': 'float', 'void': 'None', 'std::string': 'str',
          **dict.fromkeys(INTEGERS, 'int')}
OBJECTS = {'Yul::python::ArrayView': 'memoryview[float] | None', 'Yul::python::IntArrayView': 'memoryview[int] | None',
           'Yul::python::BulletinContent': 'tuple[str, str, int, str, bytes]'}
RANKS = {'bool': 1, 'float': 3, 'double': 4, 'char': 5, 'std::string': 6, **dict.fromkeys(INTEGERS, 2)}
CLASSES = tuple(_Yul._classes())
PATH = 'str | PathLike[str] | None'


def bare(name):
    """A type without reference and const of its value."""
    return re.sub(r' const$', '', name.removesuffix(' &')).strip() if not name.endswith('*') else name


def exposed(name):
    """The exposed class behind a type, or none."""
    found = re.match(r'Yul::(\w+)(?: const)?(?: [&*])?$', name)
    return found[1] if found and found[1] in CLASSES else None


def parameter_type(name):
    if cls := exposed(name):
        return f'{cls} | None' if name.endswith('*') else cls
    if name in ('char const *', 'char *') or re.match(r'char \[\d+\]', name):
        return 'str | None'
    if name in ('char', 'char const &'):
        return 'str | int'
    if name.endswith(' []') and not name.startswith('char'):
        return 'Buffer'
    if bare(name) in VALUES and (not name.endswith('&') or ' const ' in name):
        return VALUES[bare(name)]
    if re.match(r'Yul::\w+::\w+$', bare(name)):
        return 'int'  # an enumerator
    return 'PointerObject'


def result_type(name):
    if name in OBJECTS:
        return OBJECTS[name]
    kind = parameter_type(name)
    return {'str | int': 'str', 'str | None': 'str' if '[' in name else 'str | None'}.get(kind, kind)


def rank(name):
    """The place among overloads of one length, as the module tries them: derived classes before their bases."""
    if cls := exposed(name):
        depth, above = 0, _Yul._classes()[cls]
        while above:
            depth, above = depth + 1, _Yul._classes()[above[0]]
        return 0, -depth
    return (0, 1) if name.endswith((' *', '&')) and 'char const' not in name else (RANKS.get(bare(name), 6), 0)


@dataclass
class Operation:
    """One overload of a function of the module, in Python's terms."""
    kind: str  # constructor, method, static
    names: list[str]  # of the parameters, without the object
    types: list[str]
    result: str
    doc: list[str]
    order: tuple
    is_variadic: bool = False

    def signature(self, name, *, first='', types=True):
        """"name(first, a: int, b: str) -> int"."""
        parameters = [first] if first else []
        parameters += [f'{n}: {t}' if types else n for n, t in zip(self.names, self.types)]
        if types and self.names:
            parameters.append('/')
        if self.is_variadic:
            parameters.append('*arguments: object' if types else '*arguments')
        return f'{name}({", ".join(parameters)})' + (f' -> {self.result}' if types else '')


class Library:
    """What the module exposes, joined with what the headers of `source` say of it."""

    def __init__(self, source):
        self.signatures = _Yul._signatures()
        self.headers = headers.read_rooms(source)
        self.paths = runpy.run_path(str(Path(source) / 'python' / 'Yul' / '_paths.py'))

    def class_chain(self, name):
        """The header's class and its bases, exposed or not, nearest first."""
        found = self.headers.get(name)
        if found is None:
            return
        yield found
        for base in found.bases:
            yield from self.class_chain(base.partition('<')[0])

    def class_doc(self, name):
        found = self.headers.get(name)
        return found.doc if found else []

    def declaration(self, cls, name, types):
        """The header's declaration of an overload: of the same types, else of the one that takes more by default, else
        the first of its name."""
        named = [declaration for made in self.class_chain(cls) for declaration in made.named(name)
                 if declaration.kind != 'enumerator']
        wanted = [headers.normal_type(kind) for kind in types]
        def fit(declaration):
            own = [headers.normal_type(spans_as_arrays(parameter.type)) for parameter in declaration.parameters]
            if own == wanted:
                return 3
            return 2 if own[:len(wanted)] == wanted else 1 if len(own) == len(wanted) else 0
        return max(named, key=fit, default=None)

    def overload(self, function, cls, name, row):
        kind, result, types = row
        types = list(types[1:] if kind == 'method' else types)
        is_variadic = types[-1:] == ['...']
        declaration = self.declaration(cls, name, types)
        types = types[:-1] if is_variadic else types
        names = [parameter.name for parameter in declaration.parameters] if declaration else []
        if kind == 'constructor' and [exposed(kind) for kind in types] == [cls]:
            names, declaration = ['other'], None  # a copy
        if len(names) < len(types) or declaration and declaration.kind == 'member':
            names = ['value'] if len(types) == 1 else [f'argument{i + 1}' for i in range(len(types))]
        names = distinct(names[:len(types)])
        return Operation(kind, names, self.parameter_types(function, cls, names, types),
                         cls if kind == 'constructor' else result_type(result),
                         declaration.doc if declaration else [], (len(types), *map(rank, types)), is_variadic)

    def parameter_types(self, function, cls, names, types):
        """Python's types; where names of files are taken, objects with a path too."""
        found = [parameter_type(kind) for kind in types]
        if function not in self.paths['FUNCTIONS']:
            return found
        texts = self.paths['NOT_PATHS'].get(cls, ())
        return [PATH if kind == 'str | None' and name not in texts else kind for name, kind in zip(names, found)]

    def operations(self, cls, name, function):
        """The overloads of a function in the order in which they are tried, each kind of call once."""
        rows = [self.overload(function, cls, name, row) for row in self.signatures[function]]
        unique = {}
        for operation in sorted(rows, key=lambda operation: operation.order):
            unique.setdefault((tuple(operation.types), operation.is_variadic), operation)
        return list(unique.values())

    def text(self, operations, name):
        """The documentation of an operation: how it is called, then what the header says, overloads of one comment
        together."""
        blocks = []
        for operation in operations:
            call = operation.signature(name)
            if blocks and blocks[-1][1] == operation.doc:
                blocks[-1][0].append(call)
            else:
                blocks.append(([call], operation.doc))
        return '\n\n'.join('\n'.join([*calls, *(f'    {line}'.rstrip() for line in doc)]) for calls, doc in blocks)


def spans_as_arrays(kind):
    """Arrays as the module names them: "float const []"."""
    return re.sub(r'(?:std::)?span<(.*)>$', r'\1 []', kind)


def distinct(names):
    """Names that Python takes: no keywords, none twice."""
    made = []
    for i, name in enumerate(names):
        name = name or ('value' if len(names) == 1 else f'argument{i + 1}')
        made.append(f'{name}_' if keyword.iskeyword(name) or name in made or name == 'self' else name)
    return made
