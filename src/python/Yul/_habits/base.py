"""Texts and lists, and what several classes have in common."""

from __future__ import annotations

import _Yul

TYPE_CHECKING = False
if TYPE_CHECKING:
    from collections.abc import Iterable, Iterator
    from typing import Self, overload

# The classes of the package by name; filled when they are made.
classes = {}


def text_of(write, *arguments):
    """The text that a library operation writes into a String."""
    text = _Yul.new_String()
    write(*arguments, text)
    return _Yul.String_get(text) or ''


def or_none(value):
    """A number of the library, None where it is missing."""
    return None if value == _Yul.cvar.Const_MISS else value


class Record:
    """A few named numbers: prints as they are made, compares by value, unpacks."""

    fields = ()

    def __iter__(self) -> Iterator[float]:
        return iter([getattr(self, name) for name in self.fields])

    def __repr__(self) -> str:
        return f'{type(self).__name__}({", ".join(format(value, "g") for value in self)})'

    def __eq__(self, other: object) -> bool:
        return isinstance(other, type(self)) and list(self) == list(other) or NotImplemented

    __hash__ = None


class Sequence:
    """A growable list of the library as a Python sequence. Items are the list's own, not copies."""

    def __len__(self) -> int:
        return self.getNum()

    if TYPE_CHECKING:
        @overload
        def __getitem__(self, index: int) -> Item: ...

        @overload
        def __getitem__(self, index: slice) -> list[Item]: ...

    def __getitem__(self, index):
        count = self.getNum()
        if isinstance(index, slice):
            return [self._item(i) for i in range(*index.indices(count))]
        if not -count <= index < count:
            raise IndexError(f'index {index} in a list of {count}')
        return self._item(index % count)

    def _item(self, i):
        return self.get(i)

    def __iter__(self) -> Iterator[Item]:
        i = 0
        while i < self.getNum():
            yield self.get(i)
            i += 1

    def append(self, item: Item) -> None:
        self.add(item)

    def extend(self, items: Iterable[Item]) -> None:
        for item in items:
            self.add(item)

    def __repr__(self) -> str:
        return f'<Yul.{type(self).__name__} of {len(self)}>'


class Closing:
    """Closed at the end of a `with` block."""

    def __enter__(self) -> Self:
        return self

    def __exit__(self, *exception: object) -> None:
        self.close()

    def _check_open(self):
        if not self.isOpen():
            raise OSError(f'{type(self).__name__}: no file is open')


class String:
    def __str__(self) -> str:
        return self.get() or ''

    def __len__(self) -> int:
        return self.length()

    def __repr__(self) -> str:
        return f'String({str(self)!r})'


class Strings(Sequence):
    if TYPE_CHECKING:
        @overload
        def __getitem__(self, index: int) -> str: ...

        @overload
        def __getitem__(self, index: slice) -> list[str]: ...

    def _item(self, i):
        return self.getString(i)

    def __iter__(self) -> Iterator[str]:
        return (self.getString(i) for i in range(len(self)))
