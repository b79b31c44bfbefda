"""The module's tables as the package keeps them: `_tables.py`."""

import ast
import pprint

import _Yul
from pytypes import result_type

RENAMED = {'__print': 'print'}


def parts_of(function):
    """Class and name of an operation from the name of its function."""
    if function.startswith(('new_', 'delete_')):
        kind, _, cls = function.partition('_')
        return cls, kind
    cls, _, name = function.partition('_')
    return cls, RENAMED.get(f'_{name}', name)


def documentation(library):
    """Function -> how it is called and what its header says."""
    texts = {}
    for function in library.signatures:
        cls, name = parts_of(function)
        if name in ('registerclass', 'attach', 'delete'):
            continue
        if name == 'new':
            texts[function] = library.text(library.operations(cls, cls, function), cls)
        elif name.endswith(('_get', '_set')):
            member, (_, result, _) = name[:-4], library.signatures[f'{cls}_{name[:-4]}_get'][0]
            declaration = library.declaration(cls, member, [])
            doc = declaration.doc if declaration else []
            texts[function] = '\n'.join([f'{member}: {result_type(result)}', *(f'    {line}'.rstrip() for line in doc)])
        else:
            operators = {'__lt__': 'operator<', '__gt__': 'operator>', '__iadd__': 'operator+='}
            found = library.operations(cls, operators.get(name, name), function)
            texts[function] = library.text(found, name)
    return texts


def class_documentation(library, habits):
    """Class -> what the package says of it, then its header."""
    own = {cls: ast.get_docstring(node) or '' for cls, node in habits.items()}
    texts = {cls: '\n\n'.join(filter(None, [own.get(cls, ''), '\n'.join(library.class_doc(cls))]))
             for cls in _Yul._classes()}
    return {cls: text for cls, text in texts.items() if text}


def write(library, habits, path):
    static = {function for function, rows in library.signatures.items() if all(row[0] == 'static' for row in rows)}
    tables = {
        'BASES': _Yul._classes(),
        'STATIC': static,
        'CLASS_DOCS': class_documentation(library, habits),
        'DOCS': documentation(library),
    }
    with open(path, 'w', encoding='utf-8') as file:
        for name, content in tables.items():
            file.write(f'{name} = {pprint.pformat(content, width=120)}\n')
