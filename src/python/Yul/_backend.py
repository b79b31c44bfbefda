"""GRIB files as xarray datasets: `xarray.open_dataset(name, engine="yul")`.

The headers of all fields are read once. Fields of one variable, kind of level and grid become one array, with a dimension
for whatever differs among them: ensemble member, percentile or threshold, reference time, forecast period, level. Values are unpacked when they
are touched, field by field, from the place of their message.
"""

from collections.abc import Mapping
from dataclasses import dataclass, field
from itertools import product
import os

import numpy as np
from xarray import Dataset, Variable
from xarray.backends import BackendArray, BackendEntrypoint
from xarray.core import indexing

from . import ForeTime, GribFile, Grid, cvar
from ._arrays import as_array
from ._ensembles import Kind, product_of
from ._habits.base import or_none
from ._xarray import CELL_METHODS, _horizontal, _standard_name, _vertical

UNSET = np.datetime64('NaT', 'ms')  # one object, which is equal to itself as a key
ENDINGS = '.grib', '.grib1', '.grib2', '.grb', '.grb1', '.grb2', '.gb2'
TIME = {'standard_name': 'time', 'long_name': 'time for which the field holds'}
AXES = {
    'record': {'long_name': 'number among fields that their headers do not tell apart', 'units': '1'},
    'forecast_reference_time': {'standard_name': 'forecast_reference_time'},
    'forecast_period': {'standard_name': 'forecast_period'},
}


@dataclass(frozen=True)
class Place:
    """Where a field is: the octet of its message, and how many fields stand before it there."""
    octet: int
    number: int


@dataclass
class Group:
    """Fields that make one array; `places` by their coordinates along the axes."""
    header: Grid
    level: tuple  # name and attributes of the coordinate, none for a level without numbers
    domain: tuple
    period: tuple
    kind: Kind
    places: dict = field(default_factory=dict)

    def values(self, i):
        """The coordinates along an axis, in order."""
        return sorted({key[i] for key in self.places})


def _domain_key(domain):
    val = domain.get()
    return (val.proj, val.plat, val.plon, *(val.getParam(i) for i in range(4)), val.clat, val.clon, val.dx, val.dy,
            val.nx, val.ny, val.ellipse)


def _period_of(fore):
    """What kind of time a field holds for: an instant, or spans that start at 0 or are of one length."""
    if not fore.isSpan():
        return ()
    start, end = fore.getFromSeconds(), fore.getSeconds()
    return (fore.getType(), 0 if start == 0 else end - start)


def scan(name, wanted):
    """The groups of a file's fields, from its headers, in the order of their first field."""
    groups, file, octet, number = {}, GribFile(name), None, 0
    if not file.isOpen():
        raise FileNotFoundError(f'unable to open {name}')
    with file:
        for grid in file._headers():
            number = number + 1 if file.getLoc() == octet else 0
            octet = file.getLoc()
            if file._is_wanted(grid, wanted):
                _add(groups, grid, Place(octet, number), *product_of(file.getHeader()))
            file.next()
    if octet is None:
        raise OSError(f'{name}: no GRIB field that can be read')
    if not groups:
        raise ValueError(f'{name}: no field is {", ".join(f"{key} {value}" for key, value in wanted.items())}')
    return list(groups.values())


def _add(groups, grid, place, kind, product):
    vertical, _ = _vertical(grid.getLevel())
    (axis, (_, height, attributes)), = vertical.items() or ((None, (None, None, None)),)
    fore = grid.getForeTime()
    key = (grid.getVar().getName() or grid.info, axis or str(grid.getLevel()), _domain_key(grid.getDomain()),
           _period_of(fore), kind)
    if key not in groups:
        header = Grid()
        header.copyInfo(grid)
        groups[key] = Group(header, (axis, attributes), key[2], key[3], kind)
    start = grid.date.datetime64 if grid.date.isSet() and grid.date.getYear() != cvar.Const_MISS else UNSET
    where = (product, start, or_none(fore.getSeconds()) or 0, height if height is not None else 0.0)
    record = 0
    while (record, *where) in groups[key].places:
        record += 1
    groups[key].places[record, *where] = place


class Fields(BackendArray):
    """The values of a group: leading dimensions choose fields, the last two are rows and columns."""

    dtype = np.dtype(np.float32)

    def __init__(self, name, places, shape):
        self.name = name
        self.places = places  # by position along the leading dimensions, in order
        self.shape = shape

    def __getitem__(self, key):
        return indexing.explicit_indexing_adapter(key, self.shape, indexing.IndexingSupport.OUTER, self._read)

    def _read(self, key):
        leading, (rows, columns) = key[:-2], key[-2:]
        chosen = [np.arange(size)[part] for part, size in zip(leading, self.shape)]
        lengths = [part.shape for part in chosen]
        spatial = np.empty(self.shape[-2:], bool)[rows][..., columns].shape
        out = np.full([size for shape in lengths for size in shape] + list(spatial), np.nan, self.dtype)
        places = [self.places[np.ravel_multi_index([int(i) for i in where], self.shape[:-2]) if where else 0]
                  for where in product(*(np.atleast_1d(part) for part in chosen))]
        flat = out.reshape(len(places), *spatial)
        grid = Grid()
        with GribFile(self.name) as file:
            for i in sorted((i for i, place in enumerate(places) if place is not None), key=lambda i: places[i].octet):
                flat[i] = self._field(file, places[i], grid)[rows][..., columns]
        return out

    def _field(self, file, place, grid):
        is_there = file.setLoc(place.octet)
        for _ in range(place.number):
            is_there = is_there and file.next()
        if not (is_there and file.read(grid)) or file.getLoc() != place.octet \
                or (grid.getNy(), grid.getNx()) != self.shape[-2:]:
            raise OSError(f'{self.name}: the field at octet {place.octet} cannot be read')
        return as_array(grid)


class Axes:
    """The names of dimensions and coordinates: the same values have the same name, other values get a number."""

    def __init__(self):
        self.variables = {}
        self.known = {}  # name -> [(key, name in the dataset)]

    def name(self, name, key):
        known = self.known.setdefault(name, [])
        for other, given in known:
            if other == key:
                return given, False
        given = name if not known else f'{name}{len(known) + 1}'
        known.append((key, given))
        return given, True

    def add(self, coordinate, has_dimension):
        """The dimension of the coordinate, or none where it is one value for the whole dataset."""
        given, is_new = self.name(coordinate.axis, coordinate.key)
        ending = given.removeprefix(coordinate.axis)
        for name, (values, attributes) in coordinate.columns.items() if is_new else ():
            self.variables[name + ending] = Variable((given,) if has_dimension else (), values if has_dimension else values[0],
                                                     attributes)
        return given

    def add_grid(self, header, key):
        """The two dimensions of a grid and the name of its mapping."""
        dims, coords = _horizontal(header.getDomain())
        given, is_new = self.name(dims[0], key)
        ending = given.removeprefix(dims[0])
        if is_new:
            for name, (of, *content) in coords.items():
                of = (of,) if isinstance(of, str) else of
                self.variables[name + ending] = Variable(tuple(dim + ending for dim in of), *content)
        return tuple(dim + ending for dim in dims), f'crs{ending}' if 'crs' in coords else None


@dataclass
class Coordinate:
    """What stands along an axis: names, values and attributes; one of them alone has the name of the axis."""
    axis: str
    columns: dict

    @property
    def key(self):
        return tuple(tuple(values.tolist()) for values, _ in self.columns.values())

    @property
    def values(self):
        return next(iter(self.columns.values()))[0]


def _coordinates(group):
    """The coordinates along the leading axes; None for an axis that the group does not have."""
    records, products, starts, periods, heights = (group.values(i) for i in range(5))
    level, attributes = group.level

    def plain(axis, values):
        return Coordinate(axis, {axis: (values, AXES[axis])})

    return [
        plain('record', np.array(records)) if len(records) > 1 else None,
        Coordinate(group.kind.axis, group.kind.columns(products, group.header.getUnits())) if group.kind.axis else None,
        plain('forecast_reference_time', np.array(starts, 'M8[ms]').astype('M8[ns]')),
        plain('forecast_period', np.array(periods, 'm8[s]').astype('m8[ns]')),
        Coordinate(level, {level: (np.array(heights), attributes)}) if level else None,
    ]


def _names(groups):
    """A name for each group: the variable's, with what tells it from others of that name."""
    names = [(group.header.getVar().getName() or 'unknown') + group.kind.ending for group in groups]
    suffixes = (lambda group: group.kind.name, lambda group: group.level[0] or str(group.header.getLevel()).lower().replace(' ', '_'),
                lambda group: _span_text(group.period), lambda group: f'{group.domain[-3]}x{group.domain[-2]}')
    for suffix in suffixes:
        crowded = {name for name in names if names.count(name) > 1}
        texts = [suffix(group) for group in groups]
        differing = {name for name in crowded if len({text for n, text in zip(names, texts) if n == name}) > 1}
        names = [f'{name}_{text}' if name in differing and text else name for name, text in zip(names, texts)]
    for i, name in enumerate(names):
        count = names[:i].count(name)
        if count:
            names[i] = f'{name}_{count + 1}'
    return names


def _span_text(period):
    if not period:
        return ''
    kind, length = period
    words = {ForeTime.ACC: 'acc', ForeTime.AVG: 'avg', ForeTime.MAX: 'max', ForeTime.MIN: 'min', ForeTime.DIFF: 'diff'}
    return words.get(kind, 'span') + (f'{length // 3600}h' if length else '')


def dataset(name, wanted=None, dropped=()):
    """The dataset of a file."""
    groups = scan(name, wanted or {})
    axes, variables, rows = Axes(), {}, [(group, _coordinates(group)) for group in groups]
    sole = {coordinate.axis for _, coordinates in rows for coordinate in coordinates if coordinate}
    for axis in list(sole):  # a coordinate with one value for all arrays needs no dimension
        found = [next((c.key for c in coordinates if c and c.axis == axis), None) for _, coordinates in rows]
        if len(set(found)) > 1 or len(found[0][0]) > 1:
            sole.discard(axis)
    for variable, (group, coordinates) in zip(_names(groups), rows):
        if variable not in dropped:
            variables[variable] = _array(name, group, coordinates, axes, sole)
    attributes = {'Conventions': 'CF-1.8', 'title': os.path.basename(name)}
    return Dataset(variables, axes.variables, attributes)


def _array(name, group, coordinates, axes, sole):
    header, dims, shape, keys = group.header, [], [], []
    times = {}
    for i, coordinate in enumerate(coordinates):
        if coordinate is None:
            keys.append([group.values(i)[0]])
            continue
        is_dimension = coordinate.axis not in sole
        given = axes.add(coordinate, is_dimension)
        keys.append(group.values(i))
        if is_dimension:
            dims.append(given)
            shape.append(len(keys[-1]))
        times[coordinate.axis] = (given if is_dimension else None, coordinate.values)
    horizontal, mapping = axes.add_grid(header, group.domain)
    _add_time(axes, times)
    places = [group.places.get(where) for where in product(*keys)]
    shape += [header.getDomain().getNy(), header.getDomain().getNx()]
    data = indexing.LazilyIndexedArray(Fields(name, places, tuple(shape)))
    variable = Variable((*dims, *horizontal), data, _attributes(group, mapping))
    variable.encoding = {'source': name, 'original_shape': tuple(shape), 'dtype': Fields.dtype,
                         'preferred_chunks': dict.fromkeys(dims, 1)}
    return variable


def _add_time(axes, times):
    """The valid time, along the dimensions of reference time and forecast period."""
    (start_dim, starts), (period_dim, periods) = times['forecast_reference_time'], times['forecast_period']
    dims = tuple(dim for dim in (start_dim, period_dim) if dim)
    valid = (starts[:, None] + periods[None, :]).reshape([len(v) for d, v in ((start_dim, starts), (period_dim, periods)) if d])
    given, is_new = axes.name('time', (dims, tuple(valid.ravel().tolist())))
    if is_new:
        axes.variables[given] = Variable(dims, valid, TIME)


def _attributes(group, mapping):
    header = group.header
    var, method = header.getVar(), CELL_METHODS.get(group.period[0]) if group.period else None
    long_name = var.getLongName() or header.info
    attributes = {
        'long_name': long_name, 'units': header.getUnits(), 'standard_name': _standard_name(header),
        'level': None if group.level[0] else str(header.getLevel()), 'source': header.getGenName(), 'grid_mapping': mapping,
    }
    attributes |= group.kind.attributes(long_name)
    methods = filter(None, [method and f'time: {method}', attributes.get('cell_methods')])
    attributes['cell_methods'] = ' '.join(methods)
    return {key: value for key, value in attributes.items() if value}


class YulBackend(BackendEntrypoint):
    """The engine "yul"."""

    description = 'Open GRIB files, editions 1 and 2, lazily'
    open_dataset_parameters = ('filename_or_obj', 'drop_variables', 'select')

    def open_dataset(self, filename_or_obj, *, drop_variables=None, select=None):
        """select   what fields to take, by the keys of GribFile.inventory: {"name": "TMP", "level": 500}"""
        if not isinstance(select, Mapping | None):
            raise TypeError('select: a mapping by the keys of GribFile.inventory')
        keys = GribFile._keys()
        unknown = set(select or ()) - set(keys)
        if unknown:
            raise ValueError(f'select: no such key: {", ".join(sorted(unknown))}; there is: {", ".join(keys)}')
        dropped = [drop_variables] if isinstance(drop_variables, str) else drop_variables or ()
        return dataset(os.path.abspath(os.fspath(filename_or_obj)), select, dropped)

    def guess_can_open(self, filename_or_obj):
        try:
            name = os.fspath(filename_or_obj)
        except TypeError:
            return False
        return isinstance(name, str) and name.lower().endswith(ENDINGS)
