"""Positions, ranges and map domains: as numbers, as arrays, in the terms of other software."""

from __future__ import annotations

import _Yul

from .base import Record, Sequence

TYPE_CHECKING = False
if TYPE_CHECKING:
    from typing import Any
    import numpy as np
    from numpy.typing import ArrayLike, NDArray


class EarthPoint(Record):
    """A position on the earth: latitude and longitude in degrees, north and east positive."""
    fields = ('lat', 'lon')


class Point(Record):
    """A position in the plane of a projection, x to the right and y up, in units of 100 km."""
    fields = ('x', 'y')


class GridPoint(Record):
    """A position in a grid: fractional column and row, row 0 in the north."""
    fields = ('x', 'y')


class Rect(Record):
    """A rectangle by two corners."""
    fields = ('x1', 'y1', 'x2', 'y2')


class EarthRange(Record):
    fields = ('lat1', 'lon1', 'lat2', 'lon2')


class EarthPoints(Sequence):
    """A growable list of EarthPoint."""


class Points(Sequence):
    """A growable list of Point."""


class GridPoints(Sequence):
    """A growable list of GridPoint."""


class DomainVal:
    """The plain values of a domain."""


class Domain:
    """Where a grid or a plot lies, and the conversions between earth, projection plane and grid."""

    @property
    def lats(self) -> NDArray[np.float32] | Any:
        """Latitudes of all grid points, an array (rows, columns) of float32; -9999 where there is no position. None
        without a grid."""
        return self._earth(0)

    @property
    def lons(self) -> NDArray[np.float32] | Any:
        """Longitudes of all grid points, -180 to 180, as `lats`."""
        return self._earth(1)

    def _earth(self, i):
        view = self.viewEarth()
        if view is None:
            return None
        from numpy import asarray
        return asarray(view)[i]

    def forward(self, lat: ArrayLike, lon: ArrayLike) -> tuple[NDArray[Any], NDArray[Any]]:
        """The plane coordinates x and y of latitudes and longitudes, numbers or arrays that broadcast: two arrays,
        -9999 where there is no image. They are float32 when both inputs are, else float64."""
        return self._convert(_Yul.Domain_forward, lat, lon)

    def inverse(self, x: ArrayLike, y: ArrayLike) -> tuple[NDArray[Any], NDArray[Any]]:
        """The latitudes and longitudes of plane coordinates, as `forward`."""
        return self._convert(_Yul.Domain_inverse, x, y)

    def _convert(self, convert, *inputs):
        import numpy as np
        inputs = [np.asarray(values) for values in inputs]
        shape = np.broadcast_shapes(*(values.shape for values in inputs))
        real = np.float32 if all(values.dtype == np.float32 for values in inputs) else np.float64
        inputs = [np.require(np.broadcast_to(values, shape), real, 'CA') for values in inputs]
        outputs = tuple(np.empty(shape, real) for _ in inputs)
        convert(self, *inputs, *outputs)
        return outputs

    @property
    def proj(self) -> str | None:
        """The projection as a PROJ text whose plane is this domain's; None where PROJ has no such plane."""
        from .._projections import proj_text
        return proj_text(self)

    @property
    def cf(self) -> dict[str, Any] | None:
        """The projection as the attributes of a CF grid mapping, in metres and degrees; None where CF has none."""
        from .._projections import cf_mapping
        return cf_mapping(self)
