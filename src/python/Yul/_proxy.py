"""One Python class for each class of the flat module `_Yul`, made from its names.

A name there is `<Class>_<rest>`, and the rest says what it is: `<member>_get` and `<member>_set` a data member, an
int an enumerator, a double-underscored name an operator, anything else an operation; `new_<Class>` constructs. An
object's `this` holds the opaque pointer that the flat functions take. Instances come from a constructor call, or
from the library, which wraps its results once it knows the class by `registerclass`.
"""

import _Yul

from ._habits import added, classes as known_classes, text_of
from ._numbers import taking_numbers
from ._paths import taking_paths

try:
    from ._tables import BASES, CLASS_DOCS, DOCS, STATIC
except ImportError:  # the build has not written them, or could not run what it built
    from ._describe import describe
    BASES, CLASS_DOCS, DOCS, STATIC = describe()
_Yul._document(DOCS)


class Object:
    """The base of all classes of the library. `this` is the library object behind an instance."""

    def __init__(self, *arguments):
        raise TypeError(f'{type(self).__name__} has no constructor')

    def __dir__(self):
        """What there is to use: operations and data members, no enumerators (they are the class's) and no machinery."""
        return [name for name in dir(type(self))
                if (name[0] != '_' or name.startswith('__')) and type(getattr(type(self), name, None)) is not int]

    def __reduce__(self):
        from ._pickling import reduce
        return reduce(self)

    def __str__(self):
        write = getattr(self, 'toText', None) or getattr(self, 'toString', None)
        return repr(self) if write is None else text_of(write)

    def __repr__(self):
        is_text = hasattr(self, 'toText') or hasattr(self, 'toString')
        return f'<Yul.{type(self).__name__} {self}>' if is_text else f'<Yul.{type(self).__name__}>'


def _operation(function, class_name, name):
    """The flat function as a method, or as a static one when it takes no object."""
    full_name = function.__name__
    operation = taking_numbers(taking_paths(function, full_name))
    operation.__module__ = 'Yul'
    operation.__name__ = name
    operation.__qualname__ = f'{class_name}.{name}'
    operation.__doc__ = DOCS[full_name]
    return staticmethod(operation) if full_name in STATIC else operation


def _constructor(new, attach):
    full_name = new.__name__
    new = taking_numbers(taking_paths(new, full_name))

    def __init__(self, *arguments):
        attach(self, new(*arguments))

    __init__.__doc__ = DOCS[full_name]
    return __init__


def _member(get, set_value):
    return property(get, taking_numbers(set_value) if set_value else None)


def _attributes(name, flat):
    """What a class has by its flat names, those without the class in front."""
    attributes = {}
    for rest, value in flat.items():
        if rest in ('registerclass', 'attach'):
            continue
        if rest.endswith('_get'):
            attributes[rest[:-4]] = _member(value, flat.get(f'{rest[:-4]}_set'))
        elif rest == '_print':
            attributes.setdefault('print', _operation(value, name, 'print'))
        elif not callable(value):
            attributes[rest] = value
        elif not rest.endswith('_set'):
            attributes[rest] = _operation(value, name, rest)
    return attributes


def _make(name, flat, made):
    """The class of that name, its bases first; kept in `made`."""
    if name in made:
        return made[name]
    bases = tuple(_make(base, flat, made) for base in BASES[name]) or (Object,)
    attributes = {'__module__': 'Yul', **_attributes(name, flat[name])}
    new = getattr(_Yul, f'new_{name}', None)
    if new is not None:
        attributes['__init__'] = _constructor(new, flat[name]['attach'])
    habits = added.get(name)
    for source in reversed(habits.__mro__[:-1] if habits else ()):
        attributes.update((key, value) for key, value in vars(source).items()
                          if key not in ('__module__', '__dict__', '__weakref__', '__qualname__', '__doc__'))
    attributes['__doc__'] = CLASS_DOCS.get(name) or habits and habits.__doc__
    made[name] = type(name, bases, attributes)
    flat[name]['registerclass'](made[name])
    return made[name]


def make_classes():
    """All classes by name, in the order of the module."""
    flat = {}
    for full_name, value in vars(_Yul).items():
        name, _, rest = full_name.partition('_')
        flat.setdefault(name, {})[rest] = value
    made = {}
    for name in BASES:
        _make(name, flat, made)
    return made


classes = make_classes()
known_classes.update(classes)
