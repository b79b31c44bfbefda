"""A progress bar for long loops."""

from __future__ import annotations

import sys

TYPE_CHECKING = False
if TYPE_CHECKING:
    from collections.abc import Iterable
    from typing import TypeVar
    T = TypeVar('T')


def progress(items: Iterable[T], text: str = '', total: int | None = None) -> Iterable[T]:
    """The same items, with a progress bar on standard error where that is a terminal and tqdm is installed.

        for grid in progress(GribFile(name), "fields"): ...
    """
    if sys.stderr is None or not sys.stderr.isatty():
        return items
    try:
        from tqdm import tqdm
    except ImportError:
        return items
    return tqdm(items, desc=text or None, total=total, unit='', leave=False)
