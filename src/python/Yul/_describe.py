"""What the module says of itself, in the form that the package needs.

The build calls `write` once and keeps the answer as `_tables.py` beside this file: reading it there takes a fraction
of the time of asking anew at every import.
"""

import pprint

import _Yul


def _prototype(kind, result, parameters):
    """An overload as text, a method's object left out."""
    return f'({", ".join(parameters[kind == "method":])}) -> {result}'


def describe():
    """The bases of each class, the functions that take no object, and the prototypes of each function."""
    static, prototypes = set(), {}
    for name, overloads in _Yul._signatures().items():
        prototypes[name] = '\n'.join(_prototype(*overload) for overload in overloads)
        if all(kind == 'static' for kind, *_ in overloads):
            static.add(name)
    return {'BASES': _Yul._classes(), 'STATIC': static, 'PROTOTYPES': prototypes}


def write(name):
    """Keeps the answer as a Python file."""
    with open(name, 'w', encoding='utf-8') as file:
        for table, content in describe().items():
            file.write(f'{table} = {pprint.pformat(content, width=120)}\n')
