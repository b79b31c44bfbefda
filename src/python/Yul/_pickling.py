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
    """The fields, the seconds, which may know more than the fields (None where none are reckoned), and the zone."""
    seconds = date.getSeconds()
    is_reckoned = seconds != MISS or date.getDayOfWeek() != MISS
    return _fields(date), seconds if is_reckoned else None, date.getZoneOffset(), date.getZoneName()


def _set_date(date, fields, seconds, offset, name):
    from . import DateVal
    if seconds is not None:
        date.set(DateVal(), offset, name)
        date.set(seconds)
    _set_fields(date, *fields)


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


def _set_projected(domain, val, view):
    domain.set(val)
    domain.setView(view)


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
    """The text that gives the zone."""
    if not zone.isSet():
        return ()
    clock = {1: '+', -1: '-'}.get(zone.getPM(), '')
    return (f'{clock}{zone.getName()}:{zone.getOffset() / 3600:.12f}',)


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


def _set_city(city, location, *values):
    city.location.set(*location)
    for name, value in zip(('id', 'name', 'country'), values):
        getattr(city, name).set(value)
    city.elevation = values[-1]


def _unit_values(unit):
    return (unit.getFactor(), unit.getOffset()) if unit.isValid() else ()


def _set_parameter(param, numbers, texts, level_code, var_code):
    param.set(*numbers)
    param.setText(*texts)
    param.setLevelCode(level_code)
    param.setVarCode(var_code)


def _report_values(report):
    return ((report.getWord(), report.getStation(), report.getText(), report.getMessage()), report.getDate(),
            (report.getHeader(), report.getLoc(), report.getKind(), report.getCountry()),
            (report.isNil(), report.isCorrected()))


def _set_report(report, texts, date, bulletin, flags):
    report.setReport(*texts)
    report.setDate(date)
    report.setBulletin(*bulletin)
    report.setFlags(*flags)


def _file_names(names):
    return tuple((names.get(i), names.getIndex(i)) for i in range(names.getNum()))


def _add_file_names(names, *values):
    for value in values:
        names.add(*value)


def _set_bulletin(bulletin, names, heading, lines):
    _add_file_names(bulletin, *names)
    bulletin.set(*heading)
    bulletin.setLines(*lines)


def _color_map_values(table):
    from . import RGB
    rgb, colors = RGB(), []
    for i in range(table.getNum()):
        table.get(i, rgb)
        colors.append((table.getName(i), tuple(rgb), table.getValue(i)))
    return table.getSize(), table.getNumFill(), tuple(colors)


def _set_color_map(table, size, num_fill, colors):
    for i, (name, rgb, value) in enumerate(colors):
        table.add(name, *rgb)
        table.setValue(i, value)
    table.setNumFill(num_fill)


def _color_fill_values(fill):
    return (tuple(fill.getValue(i) for i in range(fill.getNumValues())),
            tuple(fill.getColor(i) for i in range(fill.getNumListed())), fill.getNumGiven(), fill.getInterval(), fill.getBase())


def _set_color_fill(fill, values, colors, number, interval, base):
    fill.setValues(','.join(map(repr, values)))
    fill.setColors(','.join(colors))
    if number != MISS:
        fill.setNumColors(number)
    fill.setInterval(interval)
    fill.setBase(base)


def _image_values(image):
    palette = tuple(image.getColor(i) for i in range(image.getNumColors()))
    return (image.getWidth(), image.getHeight()), palette, (_byte_order(), bytes(image.getSamples()))


def _set_image(image, size, palette, samples):
    if size == (0, 0):
        return
    if not (image.initIndexed(*size) if palette else image.init(*size)):
        raise MemoryError('no memory for the samples of an image')
    for i in range(1, len(palette)):
        image.addColor(i)  # a place; the palette may hold a colour twice
    for i, color in enumerate(palette):
        image.setColor(i, color)
    from array import array
    values = array('i')
    values.frombytes(samples[1])
    if samples[0] != _byte_order():
        values.byteswap()
    image.setSamples(values)


def _members(*names):
    """A record that its data members make."""
    return (lambda record: tuple(getattr(record, name) for name in names),
            lambda record, *values: [setattr(record, name, value) for name, value in zip(names, values)])


def _set_transform(tran, plot, window, viewport):
    tran.set(plot)
    tran.setWindow(window)
    tran.setViewport(viewport)


def _set_options(options, *items):
    for item in items:
        options.add(*item)


def _option_values(item):
    return item.getKey(), item.getEnv(), item.getBrief(), item.getHelp()


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
    'Filename': (_file_names, _add_file_names),
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
    'Domain': (lambda domain: (domain.get(), domain.getView()), _set_projected),
    'Grid': (_grid_values, _set_grid),
    'StationData': (_station_values, _set_stations),
    'CityData': (lambda city: (tuple(city.location), str(city.id), str(city.name), str(city.country), city.elevation),
                 _set_city),
    'Unit': (_unit_values, lambda unit, *numbers: unit.set(*numbers) if numbers else None),
    'GribParam': (lambda param: ((param.getNumber(), param.getCentre(), param.getTable(), param.getKey()),
                                 (param.getName(), param.getUnits(), param.getText()), param.getLevelCode(),
                                 param.getVarCode()), _set_parameter),
    'SfcWmoData': (_report_values, _set_report),
    'WmoProduct': (lambda bulletin: (_file_names(bulletin), (bulletin.getHeader(), bulletin.getAwip(), bulletin.getLoc()),
                                     (bulletin.getText(), bulletin.getCodes())), _set_bulletin),
    'ColorMap': (_color_map_values, _set_color_map),
    'ColorFill': (_color_fill_values, _set_color_fill),
    'Image': (_image_values, _set_image),
    'GTran': (lambda tran: (tran.getPlot(), tran.getWindow(), tran.getViewport()), _set_transform),
    'ResrcDBItem': (_option_values, lambda item, *texts: item.set(*texts)),
    'ResrcDBList': (lambda options: tuple(_option_values(options.get(i)) for i in range(options.getNum())), _set_options),
    **dict.fromkeys(('Const', 'DateTool', 'DomainTool', 'FileAttr', 'FileTool', 'Tools', 'VarName'),
                    (lambda tool: (), lambda tool: None)),  # operations alone, nothing held
}

# Why objects of the others stay where they are.
STAYING = {
    **dict.fromkeys(('CityFile', 'GribFile', 'GridFile', 'GridYulFile', 'MapFile', 'SfcWmoFile', 'WmoParse'),
                    'an open file belongs to its process; pass its name'),
    **dict.fromkeys(('Graph', 'Listener', 'Plot'), 'a device belongs to its process'),
    **dict.fromkeys(('ContPlot', 'MapPlot'), 'a layer of a plot belongs to its process; pass its settings'),
    **dict.fromkeys(('Resrc', 'ResrcDB', 'Yul'), 'settings belong to their process'),
    **dict.fromkeys(('GridBox', 'ObjectAnal'), 'a calculation belongs to its process; pass its settings'),
    'GribPDB': 'it describes the message that a file is at; take a record of the inventory',
    'MapFileHeader': 'it describes a layer of an open file',
    'NameConv': 'a search of directories belongs to its machine; pass its text, or the NameConvFile that it finds',
}

# Those that are not made empty: what their constructor takes of it.
MADE_OF = {'StationData': lambda names, *_: (len(names),), 'ColorMap': lambda size, *_: (size,)}


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


def _variable_row(cls, index):
    """The row of the table of variables, or an empty one."""
    from . import VarName
    return VarName.find(index) or cls()


def reduce(record):
    """What pickle asks of an object."""
    cls = type(record)
    name = _library_class(cls).__name__
    if name == 'VarNameItem':
        return _variable_row, (cls, record.getIndex())
    if name not in RECORDS:
        raise TypeError(f"cannot pickle '{name}' object: {STAYING[name]}")
    state = {key: value for key, value in vars(record).items() if key != 'this'}
    return rebuild, (cls, RECORDS[name][0](record), state)
