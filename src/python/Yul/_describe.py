"""What the module says of itself, in the form that the package needs.

The build keeps the same in `_tables.py`, with the comments of the headers; this serves where it could not.
"""

import _Yul


def _prototype(kind, result, parameters):
    """An overload as text, a method's object left out."""
    return f'({", ".join(parameters[kind == "method":])}) -> {result}'


def describe():
    """The bases of each class, the comments of classes (none), the functions' documentation, and the functions that
    take no object."""
    static, texts = set(), {}
    for name, overloads in _Yul._signatures().items():
        texts[name] = '\n'.join(_prototype(*overload) for overload in overloads)
        if all(kind == 'static' for kind, *_ in overloads):
            static.add(name)
    return _Yul._classes(), {}, texts, static
