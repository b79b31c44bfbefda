"""One Python class for each class of the flat module `_Yul`, made from its names.

A name there is `<Class>_<rest>`, and the rest says what it is: `new_<Class>` the constructor, `<member>_get` and
`<member>_set` a data member, a capital name with an int an enumerator, a double-underscored name an operator,
anything else an operation. An object's `this` holds the opaque pointer that the flat functions take; instances
come either from a constructor call or from the library, which knows the classes after `registerclass`.
"""

import _Yul


class Object:
    """The base of all classes here. `this` is the library object behind an instance."""

    def __init__(self, *arguments):
        raise TypeError(f'{type(self).__name__} has no constructor')

    def __repr__(self):
        return f'<Yul.{type(self).__name__}>'


def _operation(function, name, doc):
    def operation(self, *arguments):
        return function(self, *arguments)

    operation.__name__ = name
    operation.__doc__ = doc
    return operation


def _constructor(new, attach):
    def __init__(self, *arguments):
        attach(self, new(*arguments))

    return __init__


def _add_assign(function):
    # The flat function's result refers to this same object without owning it; the instance at hand does own it.
    def __iadd__(self, other):
        function(self, other)
        return self

    return __iadd__


def _namespace(name, functions):
    """What the class gets from its flat names."""
    names = {}
    for rest, value in functions.items():
        if rest in ('registerclass', 'attach'):
            continue
        if not callable(value):
            names[rest] = value
        elif rest == '__iadd__':
            names[rest] = _add_assign(value)
        elif rest == '_print':
            names['print'] = _operation(value, 'print', value.__doc__)
        elif rest.endswith('_get') or rest.endswith('_set') and f'{rest[:-4]}_get' in functions:
            member = rest[:-4]
            names[member] = property(functions[f'{member}_get'], functions.get(f'{member}_set'))
        elif is_static(name, rest):
            names[rest] = value
        else:
            names[rest] = _operation(value, rest, value.__doc__)
    return names
