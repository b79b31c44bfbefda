"""Records of the library as plain values and back: what pickle and copy keep of them."""

import _Yul

MISS = _Yul.cvar.Const_MISS
DATE = ('year', 'month', 'day', 'hour', 'minute', 'second')
DOMAIN = ('proj', 'plat', 'plon', 'clat', 'clon', 'dx', 'dy', 'nx', 'ny', 'ellipse')
GRID = ('Type', 'Source', 'Version', 'Model', 'GenName', 'Datim', 'Info', 'Date', 'Nz', 'Domain', 'Level', 'ForeTime',
        'Var')


def _fields(date):
    return tuple(getattr(date, name) for name in DATE)


def _date_values(date):
    """The fields in UTC, and the zone that they are shown in."""
    utc = type(date)(date)
    offset, name = date.getZoneOffset(), date.getZoneName()
    if offset:
        utc.changeTimezone(0, 'Z')
    return _fields(utc), offset, name


def _set_date(date, fields, offset, name):
    date.set(*fields)
    if offset or name != 'Z':
        date.changeTimezone(offset, name)


def _set_fields(date, *fields):
    for name, value in zip(DATE, fields):
        setattr(date, name, value)


def _set_list(items, *values):
    for value in values:
        items.add(value)


def _domain_values(val):
    return tuple(getattr(val, name) for name in DOMAIN), tuple(val.getParam(i) for i in range(4))


def _set_domain(val, fields, params):
    for name, value in zip(DOMAIN, fields):
        setattr(val, name, value)
    for i, value in enumerate(params):
        val.setParam(i, value)


def _grid_values(grid):
    """Every field, and the values as octets of the machine's floats; numbers without an equal have to survive."""
    view = grid.view()
    values = None if view is None else (_byte_order(), bytes(view))
    return tuple(getattr(grid, f'get{name}')() for name in GRID), (grid.getNx(), grid.getNy()), values


def _byte_order():
    from sys import byteorder
    return byteorder


def _set_grid(grid, fields, size, values):
    for name, value in zip(GRID, fields):
        getattr(grid, f'set{name}')(value)
    if size != (MISS, MISS):
        grid.setSize(*size)
    if values is None:
        return
    order, octets = values
    if not grid.allocData():
        raise MemoryError('no memory for the values of a grid')
    if order == _byte_order():
        grid.view().cast('B')[:] = octets
    else:
        from numpy import frombuffer
        grid.values[...] = frombuffer(octets, 'f4').byteswap().reshape(grid.values.shape)


def _zone_values(zone):
    """The text that gives the zone, its offset half a second larger, since reading it cuts fractions off."""
    if not zone.isSet():
        return ()
    clock = {1: '+', -1: '-'}.get(zone.getPM(), '')
    offset = zone.getOffset()
    return (f'{clock}{zone.getName()}:{(offset + (offset > 0) / 2 - (offset < 0) / 2) / 3600:.12f}',)


def _set_range(window, center, before, after):
    from . import Date
    window.set(Date(center))
    window.set(before, after)


def _set_file(file, name, date, seconds):
    if seconds == MISS:
        file.setFilename(name)
    else:
        file.set(name, date)


def _set_color(color, name, rgb, value):
    color.setName(name)
    color.setRGB(*rgb)
    color.value = value


def _station_values(data):
    fields, stations = range(data.getFields()), range(data.getNum())
    return (tuple(data.getName(field) for field in fields), tuple(tuple(data.getLocation(i)) for i in stations),
            tuple(tuple(data.getValue(i, field) for i in stations) for field in fields))


def _set_stations(data, names, places, columns):
    from array import array
    data.add(array('f', [lat for lat, _ in places]), array('f', [lon for _, lon in places]))
    for field, (name, column) in enumerate(zip(names, columns)):
        data.setName(field, name)
        data.setValues(field, array('f', column))


def _members(*names):
    """A record that its data members make."""
    return (lambda record: tuple(getattr(record, name) for name in names),
            lambda record, *values: [setattr(record, name, value) for name, value in zip(names, values)])


# For each class what is kept, and how an empty object is filled with it.
RECORDS = {
    'String': (lambda text: (str(text),), lambda text, value: text.set(value)),
    'Strings': (tuple, _set_list),
    'EarthPoint': (tuple, lambda point, *values: point.set(*values)),
    'Point': (tuple, lambda point, *values: point.set(*values)),
    'GridPoint': (tuple, lambda point, *values: point.set(*values)),
    'Rect': (tuple, lambda rect, *values: rect.setu(*values)),
    'Range': (tuple, lambda window, *values: [setattr(window, *pair) for pair in zip(('min', 'max'), values)]),
    'EarthRange': _members('lat1', 'lon1', 'lat2', 'lon2'),
    'RGB': _members('r', 'g', 'b'),
    'Color': (lambda color: (color.getName(), tuple(color.rgb), color.value), _set_color),
    'GeomBox': _members('width', 'height', 'x', 'y'),
    'PlotAttr': _members('width', 'size', 'weight', 'expansion', 'style', 'shadow', 'fill', 'color', 'color_name', 'font',
                         'label_color'),
    'EarthPoints': (tuple, _set_list),
    'Points': (tuple, _set_list),
    'GridPoints': (tuple, _set_list),
    'Grids': (tuple, _set_list),
    'Filename': (lambda names: tuple((names.get(i), names.getIndex(i)) for i in range(names.getNum())),
                 lambda names, *values: [names.add(*value) for value in values]),
    'DateVal': (_fields, _set_fields),
    'Date': (_date_values, _set_date),
    'Timezone': (_zone_values, lambda zone, *text: zone.set(*text) if text else None),
    'DateRange': (lambda window: (window.getCenter(), window.getBefore(), window.getAfter()), _set_range),
    'NameConvFile': (lambda file: (file.getFilename(), file.getDate(), file.getSeconds()), _set_file),
    'ForeTime': (lambda fore: (fore.getType(), fore.getFromSeconds(), fore.getSeconds()),
                 lambda fore, *values: fore.setSeconds(*values)),
    'Level': (lambda level: (level.getType(), level.getValue(), level.getValue2()),
              lambda level, *values: level.set(*values)),
    'Variable': (lambda var: (var.getName(), var.getLongName(), var.getUnits(), var.getIndex()),
                 lambda var, *values: var.set(*values) if values[0] else var.setUnits(values[2])),
    'ModelSpec': (lambda spec: (spec.getSource(), spec.getModel()), lambda spec, *values: spec.set(*values)),
    'GridSpec': (lambda spec: (spec.getVar(), spec.getLevel(), spec.getForeTime(), spec.getModel()),
                 lambda spec, *values: [getattr(spec, f'set{part}')(value)
                                        for part, value in zip(('Var', 'Level', 'ForeTime', 'Model'), values)]),
    'DomainVal': (_domain_values, _set_domain),
    'Domain': (lambda domain: (domain.get(),), lambda domain, val: None if val.isMiss() else domain.set(val)),
    'Grid': (_grid_values, _set_grid),
    'StationData': (_station_values, _set_stations),
}

# Those that are not made empty: what their constructor takes of it.
MADE_OF = {'StationData': lambda names, *_: (len(names),)}


def _library_class(cls):
    """The library's class that a Python class is, or derives from."""
    return next(base for base in cls.__mro__ if base.__module__ == 'Yul')


def rebuild(cls, values, state):
    """An object of the class from what was kept; `state` is what a Python class derived from it holds besides."""
    kind = _library_class(cls)
    made = cls.__new__(cls)
    kind.__init__(made, *MADE_OF.get(kind.__name__, lambda *_: ())(*values))
    RECORDS[kind.__name__][1](made, *values)
    vars(made).update(state)
    return made


def reduce(record):
    """What pickle asks of an object."""
    cls = type(record)
    name = _library_class(cls).__name__
    if name not in RECORDS:
        raise TypeError(f"cannot pickle '{name}' object")
    state = {key: value for key, value in vars(record).items() if key != 'this'}
    return rebuild, (cls, RECORDS[name][0](record), state)
