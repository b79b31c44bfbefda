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


# For each class what is kept, and how an empty object is filled with it.
RECORDS = {
    'String': (lambda text: (str(text),), lambda text, value: text.set(value)),
    'Strings': (tuple, _set_list),
    'EarthPoint': (tuple, lambda point, *values: point.set(*values)),
    'Point': (tuple, lambda point, *values: point.set(*values)),
    'GridPoint': (tuple, lambda point, *values: point.set(*values)),
    'Rect': (tuple, lambda rect, *values: rect.setu(*values)),
    'Range': (tuple, lambda window, *values: [setattr(window, *pair) for pair in zip(('min', 'max'), values)]),
    'EarthPoints': (tuple, _set_list),
    'Points': (tuple, _set_list),
    'GridPoints': (tuple, _set_list),
    'Grids': (tuple, _set_list),
    'Filename': (lambda names: tuple((names.get(i), names.getIndex(i)) for i in range(names.getNum())),
                 lambda names, *values: [names.add(*value) for value in values]),
    'DateVal': (_fields, _set_fields),
    'Date': (_date_values, _set_date),
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
}


def rebuild(cls, values):
    """An object of the class from what was kept."""
    made = cls()
    RECORDS[cls.__name__][1](made, *values)
    return made


def reduce(record):
    """What pickle asks of an object."""
    cls = type(record)
    return rebuild, (cls, RECORDS[cls.__name__][0](record))
