"""Plots, and the plain values that describe them."""

from __future__ import annotations

from .base import Closing, Record


class RGB(Record):
    fields = ('r', 'g', 'b')


class GeomBox(Record):
    fields = ('width', 'height', 'x', 'y')


class Range(Record):
    """Smallest and largest value."""
    fields = ('min', 'max')


class Graph(Closing):
    pass


class Plot(Closing):
    """A picture: output device, map domain, labels and border; the layers draw on it.

    A notebook shows a plot that is closed and went to a file, where Ghostscript is installed.
    """

    def _repr_png_(self):
        if self.isOpen() or not self.getFile():
            return None
        from .._charts import Page
        return Page(self.getFile()).png()
