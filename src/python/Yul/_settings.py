"""The library's settings as a mapping, and the start of a program."""

from __future__ import annotations

import sys
from _collections_abc import Mapping  # collections.abc without the rest of collections: quick to import

import _Yul

TYPE_CHECKING = False
if TYPE_CHECKING:
    from collections.abc import Iterator, Mapping, Sequence


class Settings(Mapping[str, str]):
    """Every setting by name, as a text: `settings['device']`, `'device' in settings`, iteration in the order of setting.

    A setting without a value is the empty text. Assigning sets it for this program; None sets it without a value.
    """

    def __getitem__(self, name: str) -> str:
        value = _Yul.Yul_getResrc(name)
        if value is None:
            raise KeyError(name)
        return value

    def __setitem__(self, name: str, value: object) -> None:
        _Yul.Yul_setResrc(name, None if value is None else str(value))

    def __contains__(self, name: object) -> bool:
        return isinstance(name, str) and _Yul.Yul_getResrc(name) is not None

    def __iter__(self) -> Iterator[str]:
        names = []
        _Yul.Yul_rewindResrc()
        while (name := _Yul.Yul_nextResrc()) is not None:
            names.append(name)
        return iter(names)

    def __len__(self) -> int:
        return sum(1 for _ in self)

    def __repr__(self) -> str:
        return f'<Yul.settings {dict(self)}>'


settings = Settings()


def start(arguments: Sequence[object] | None = None, keyed: Sequence[str | Sequence[str | None]] = (),
          positional: Sequence[str | Sequence[str | None]] = ()) -> Settings:
    """Starts a program: settings from files, environment and arguments, the strongest last.

    arguments   the argument list with the program's path first, `sys.argv` unless given
    keyed       options given as "-key value": names, or tuples of name, environment variable, short name, help line
    positional  options given by place, in the same form; the last one takes all that are left
    Returns the settings.
    """
    from . import ResrcDB, ResrcDBList, Strings

    def options(declared):
        items = ResrcDBList()
        for option in declared:
            names = (option,) if isinstance(option, str) else tuple(option)
            items.add(*names, *(None,) * (4 - len(names)))
        return items

    words, places = Strings(), options(positional)
    for argument in sys.argv if arguments is None else arguments:
        words.add(str(argument))
    # What an earlier start took from its arguments gives way to this one's, where they would be joined to it.
    for name in (places.get(i).getKey() for i in range(places.getNum())):
        if _Yul.Yul_getResrcType(name) == _Yul.Resrc_COMMAND:
            _Yul.Yul_addResrc(name, _Yul.Yul_getResrc(name), _Yul.Resrc_BASE)
    ResrcDB.create(words, options(keyed), places)
    return settings
