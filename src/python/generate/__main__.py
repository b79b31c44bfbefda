"""Writes into an importable tree what the package keeps of its module: python generate SOURCE TREE

SOURCE is the folder of the rooms with their headers, TREE the folder with the module and the package.
"""

from pathlib import Path
import sys

from pytypes import Library
from stubs import Stubs
import tables


def main():
    source, tree = map(Path, sys.argv[1:])
    library = Library(source)
    stubs = Stubs(library, tree / 'Yul')
    tables.write(library, stubs.habits.classes, tree / 'Yul' / '_tables.py')
    (tree / 'Yul' / '__init__.pyi').write_text(stubs.package_text(), encoding='utf-8')
    (tree / '_Yul.pyi').write_text(stubs.module_text(), encoding='utf-8')
    (tree / 'Yul' / 'py.typed').touch()


if __name__ == '__main__':
    main()
