"""What Python users expect of the library's classes beyond the library's own operations, class by class.

The names of a class here join the class of the same name; where both have a name, the one here holds. `None`
stands for "not set", where the library itself speaks of -9999. The build copies the annotations into the type stubs; `Item`
there is what a list holds. What only type checkers need stands under TYPE_CHECKING; importing typing would take as long as
the whole package.
"""

from . import base, dates, feeds, files, geo, grids, plots
from .base import classes, text_of

added = {name: value for module in (base, dates, geo, grids, files, feeds, plots)
         for name, value in vars(module).items() if isinstance(value, type)}
