"""What pickles and what does not: every class of the module is in one of two tables."""

import copy
import functools
import pickle

import numpy as np
import pytest

from Yul import CityData, Color, ColorFill, ColorMap, Const, Date, DateRange, DateTool, DateVal, Domain, DomainTool, DomainVal
from Yul import EarthPoint, EarthPoints, EarthRange, FileAttr, Filename, FileTool, ForeTime, GeomBox, GribFile, GribParam, Grid
from Yul import GridPoint, GridPoints, Grids, GridSpec, GTran, Image, Level, ModelSpec, NameConvFile, PlotAttr, Point, Points
from Yul import Range, Rect, ResrcDBItem, ResrcDBList, RGB, SfcWmoData, SfcWmoFile, StationData, String, Strings, Timezone, Tools
from Yul import Unit, Variable, VarName, VarNameItem, WmoParse, WmoProduct
import Yul
import _Yul
import gribwriter

MISS = -9999


def made(record, *steps):
    """The object after operations (name, argument...) and data members (name, value)."""
    for name, *arguments in steps:
        if isinstance(getattr(type(record), name), property):
            setattr(record, name, *arguments)
        else:
            getattr(record, name)(*arguments)
    return record


def zoned():
    date = Date(2026, 11, 14, 12, MISS, MISS)
    date.changeTimezone(-5 * 3600, 'EST')
    return date


def field():
    grid = Grid.from_array(np.array([[1, 2, np.nan], [4, 5, 6]], 'f'), 'll,45,10,3,2,5,5', date='12Z 14 NOV 2026', level='500mb',
                           fore='24h', var='HGT', source=7, model=96)
    grid.values[1, 1] = np.uint32(0x7fc12345).view('f')
    grid.setGenName('a model')
    return grid


def picture(is_indexed):
    image = made(Image(), ('initIndexed' if is_indexed else 'init', 3, 2), ('setPixel', 2, 1, 0xff8000), ('setPixel', 0, 0, 0x102030))
    if is_indexed:
        image.setColor(1, 0x102030)  # now there twice
    return image


def colors():
    table = made(ColorMap(4), ('add', 'own', 0.25, 0.5, 1.0), ('add', 'red', 1.0, 0.0, 0.0), ('setValue', 1, 17))
    assert table.setNumFill(1)
    return table


def city():
    place = CityData()
    place.id.set('10381')
    place.name.set('Berlin-Dahlem')
    place.country.set('DE')
    place.location.set(52.4675, 13.3)
    place.elevation = 51.5
    return place


REPORT = '\r\r\n'.join(['\x01', '123', 'SAUS70 KWBC 060000 CCA', 'METAR COR KDEN 060053Z 10SM=', 'KLAX 060053Z NIL='])


def report():
    data = made(SfcWmoData(), ('setReport', 'METAR', 'KDEN', 'KDEN 060053Z \udcff', 'METAR KDEN 060053Z \udcff'),
                ('setDate', Date('202611060053')), ('setBulletin', 'SAUS70 KWBC 060000', 123, SfcWmoData.HOURLY, SfcWmoData.USA),
                ('setFlags', False, True))
    assert data.kind == 'METAR'
    return data


def stations():
    return made(StationData(2), ('add', EarthPoint(51, 11)), ('setName', 1, 'TMP[C]'), ('setValue', 0, 1, 12.5))


def options():
    return made(ResrcDBList(), ('add', 'plot_domain', None, 'dom', 'Domain of the plot'), ('add', 'device', 'DEV', 'd', ''))


# The classes that pickle: objects of each, an empty one among them where there is one.
RECORDS = {
    CityData: [CityData(), city()],
    Color: [Color(), Color('own', 0.25, 0.5, 1), made(Color(), ('setRGB', 0.25, 0.5, 1.0), ('value', 9))],
    ColorFill: [ColorFill(), made(ColorFill(), ('setValues', '1,-2.5e-7,0.1'), ('setColors', 'red:blue:blue'), ('setInterval', 0.1)),
                made(ColorFill(), ('setNumColors', 10), ('setBase', -5.0))],
    ColorMap: [ColorMap(0), colors()],
    Const: [Const()],
    Date: [Date(), made(Date(), ('year', 2026), ('day', 3)), Date(MISS, MISS, MISS, MISS, MISS, MISS), Date(2026, 11, 14, 12, 45, 30.25), Date('20261114'), zoned(),
           made(Date('20261114'), ('addMinutes', 90)),  # the seconds know of the hour
           made(Date(2026, 1, 31, 12, 0, 0.0), ('addMonths', 1)),
           made(Date(), ('set', made(DateVal(), ('hour', 5), ('second', 30.25)), -16200, 'VET'))],
    DateRange: [DateRange(), DateRange(Date('2026111412'), 30, 60)],
    DateTool: [DateTool()],
    DateVal: [DateVal(), made(DateVal(), ('year', 2026), ('second', 1.5))],
    Domain: [Domain(), Domain('lamb:e:40:-95:30:60,40,-95,101,81,0.5,0.25'),
             made(Domain('40,-95,11,12,1,2'), ('setView', Rect(0.1, 0.2, 0.3, 0.4)))],  # without a projection
    DomainTool: [DomainTool()],
    DomainVal: [DomainVal(), Domain('ps:60:-100,40,-95,101,81,0.5,0.25').get()],
    EarthPoint: [EarthPoint(), EarthPoint(45, -120)],
    EarthPoints: [EarthPoints(), made(EarthPoints(), ('add', EarthPoint(1, 2)), ('add', EarthPoint(3, 4)))],
    EarthRange: [EarthRange(), EarthRange(50, 170, 40, -160)],
    FileAttr: [FileAttr()],
    FileTool: [FileTool()],
    Filename: [Filename(), made(Filename(), ('add', 'file', 'index'), ('add', 'other \udcfc'))],
    ForeTime: [ForeTime(), ForeTime('24h'), ForeTime('0-6 acc'), ForeTime('any')],
    GTran: [GTran(), made(GTran(Rect(0, 1, 640, 480)), ('setWindow', -5.0, 8.0, 5.5, -7.0), ('setViewport', 0.1, 0.2, 0.9, 0.5))],
    GeomBox: [GeomBox(), GeomBox(640, 480, 1, -1)],
    GribParam: [GribParam(), made(GribParam(), ('find', 2, 0, 7, 2, 0)), made(GribParam(), ('set', 1, 2, 3, 4), ('setText', 'A', 'K', 'text'))],
    Grid: [Grid(), Grid(3, 2), field()],
    GridPoint: [GridPoint(), GridPoint(3, 4)],
    GridPoints: [GridPoints(), made(GridPoints(), ('add', GridPoint(1, 2)))],
    GridSpec: [GridSpec(), GridSpec('TMP,,24h'), GridSpec('HGT,500mb,0-6 acc,7:96')],
    Grids: [Grids(), made(Grids(), ('add', field()), ('add', Grid()))],
    Image: [Image(), picture(False), picture(True)],
    Level: [Level(), Level('500mb'), Level('1000-500mb'), Level('sfc'), Level(123, 4.5)],
    ModelSpec: [ModelSpec(), ModelSpec('7:*')],
    NameConvFile: [NameConvFile(), made(NameConvFile(), ('setFilename', 'field.grib'))],
    PlotAttr: [PlotAttr(), PlotAttr('red:wi=2:st=dsh:fo=modern')],
    Point: [Point(), Point(1.5, 2.5)],
    Points: [Points(), made(Points(), ('add', Point(1, 2)))],
    RGB: [RGB(), RGB(0.25, 0.5, 1)],
    Range: [Range(), Range(1, 2)],
    Rect: [Rect(), Rect(5, 1, 2, 8), made(Rect(), ('setu', 5.0, 1.0, 2.0, 8.0))],
    ResrcDBItem: [ResrcDBItem(), ResrcDBItem('device', None, 'd', 'Output device')],
    ResrcDBList: [ResrcDBList(), options()],
    SfcWmoData: [SfcWmoData(), report()],
    StationData: [StationData(0), stations()],
    String: [String(), String('text'), String('\udcff')],
    Strings: [Strings(), Strings('a,b', ',')],
    Timezone: [Timezone(), *map(Timezone, ('CST:-6', '+IST:5.5', '-AB:-0.0125', 'X:0.00028', '+:', 'NPT:5.75'))],
    Tools: [Tools()],
    Unit: [Unit(), Unit('C', 'K'), Unit('kt', 'm s-1')],
    VarName: [VarName()],
    VarNameItem: [VarNameItem(), VarName.find('TMP')],
    Variable: [Variable(), Variable('TMP[C]'), Variable('Own[units]')],
    WmoProduct: [WmoProduct(), made(WmoProduct(), ('add', 'feed'), ('set', 'SAUS70 KWBC 060000', 'MTRDEN', 77),
                                    ('setLines', 'one\n\nthree', '\x10\x10\x12'))],
}

# Those that do not, and a word of the reason.
STAYING = {
    'process; pass its name': [Yul.CityFile, GribFile, Yul.GridFile, Yul.GridYulFile, Yul.MapFile, SfcWmoFile, WmoParse],
    'device': [Yul.Graph, Yul.Listener, Yul.Plot],
    'settings': [Yul.ContPlot, Yul.MapPlot, Yul.Resrc, Yul.ResrcDB, Yul.Yul, Yul.ObjectAnal, Yul.GridBox],
    'inventory': [Yul.GribPDB],
    'open file': [Yul.MapFileHeader],
    'NameConvFile': [Yul.NameConv],
}


def test_every_class_is_in_one_table():
    staying = [cls for classes in STAYING.values() for cls in classes]
    assert sorted(cls.__name__ for cls in [*RECORDS, *staying]) == sorted(_Yul._classes())
    assert all(type(record) is cls for cls, records in RECORDS.items() for record in records)


SIGNATURES = _Yul._signatures()
# Members that are made of others, and the address of an array.
DERIVED = {'this', 'cf', 'lats', 'lons', 'masked', 'values', 'param'}


@functools.cache
def questions(cls):
    """What an object of the class can be asked: its data members, its operations without arguments that begin with "get" and
    "is", and those with a place alone."""
    members = [name for name in dir(cls) if isinstance(getattr(cls, name), property) and name not in DERIVED]
    operations, places = [], []
    for base in cls.__mro__:
        for name in vars(base):
            for kind, _, types in SIGNATURES.get(f'{base.__name__}_{name}', ()):
                if kind != 'static' and name.startswith(('get', 'is')):
                    operations += [name] if len(types) == 1 else []
                    places += [name] if types[1:] == ('int',) else []
    return members, operations, places


def told(record):
    """All that an object tells."""
    if isinstance(record, memoryview):
        return record.tolist()
    if not isinstance(record, Yul._proxy.Object):
        return repr(record)
    members, operations, places = questions(type(record))
    found = [told(getattr(record, name)) for name in members]
    found += [told(getattr(record, name)()) for name in operations]
    found += [told(getattr(record, name)(i)) for name in places for i in range(5)]
    return found, CONTENT.get(type(record), str)(record)


CONTENT = {
    Grid: lambda grid: grid.view() and bytes(grid.view()),
    Image: lambda image: bytes(image.getSamples()),
    StationData: lambda data: [(told(data.getLocation(i)), [data.getValue(i, field) for field in range(data.getFields())])
                               for i in range(data.getNum())],
    ColorMap: lambda table: [[(table.get(i, rgb), told(rgb), table.getValue(i)) for rgb in [RGB()]] for i in range(table.getNum())],
    ColorFill: lambda fill: [fill.getValue(i) for i in range(fill.getNumValues())],
}


@pytest.mark.parametrize('cls', RECORDS, ids=lambda cls: cls.__name__)
def test_objects_come_back_as_they_were(cls):
    for record in RECORDS[cls]:
        before = told(record)
        for protocol in range(pickle.HIGHEST_PROTOCOL + 1):
            back = pickle.loads(pickle.dumps(record, protocol))
            assert type(back) is cls and back is not record and told(back) == before
        assert told(copy.copy(record)) == told(copy.deepcopy(record)) == told(record) == before


@pytest.mark.parametrize('cls, reason', [(cls, reason) for reason, classes in STAYING.items() for cls in classes],
                         ids=lambda part: getattr(part, '__name__', ''))
def test_what_belongs_to_this_process_says_so(cls, reason):
    for protocol in range(pickle.HIGHEST_PROTOCOL + 1):
        with pytest.raises(TypeError, match=f"cannot pickle '{cls.__name__}' object: .*{reason}"):
            pickle.dumps(cls(), protocol)
    with pytest.raises(TypeError):
        copy.deepcopy(cls())


def test_open_files_and_bare_pointers_do_not_pickle(write_grib):
    with GribFile(write_grib(gribwriter.grib1(np.zeros((2, 2)), gribwriter.LatLon(1, 0, 0, 1)))) as file:
        [grid] = file
        for held in (file, file.getHeader(), grid.this, _Yul.new_Date(), [grid, file]):
            for protocol in range(pickle.HIGHEST_PROTOCOL + 1):
                with pytest.raises((TypeError, pickle.PicklingError), match="(?i)can(not|'t) pickle"):
                    pickle.dumps(held, protocol)
        assert pickle.loads(pickle.dumps(grid)).getNx() == 2


class Place(EarthPoint):
    """A class of a script, with state and a constructor of its own."""

    def __init__(self, name, lat, lon):
        super().__init__(lat, lon)
        self.name = name


class Feed(GribFile):
    """A class of a script on one that stays."""


def test_classes_of_scripts_are_like_those_they_derive_from():
    back = pickle.loads(pickle.dumps(Place('Hof', 50.3, 11.9)))
    assert type(back) is Place and back.name == 'Hof' and back.lat == pytest.approx(50.3)
    with pytest.raises(TypeError, match="cannot pickle 'GribFile' object"):
        pickle.dumps(Feed())


def test_reports_and_bulletins_of_a_feed_go_to_other_processes(tmp_path):
    name = tmp_path / 'feed'
    name.write_text(REPORT, newline='')
    reports = list(Yul.reports(name, date=Date('2026110612')))
    assert [(data.station, data.nil, data.corrected) for data in reports] == [('KDEN', False, True), ('KLAX', True, False)]
    assert told(pickle.loads(pickle.dumps(reports))[1]) == told(reports[1])
    [bulletin] = WmoParse(name)
    back = pickle.loads(pickle.dumps(bulletin))
    assert (back.heading, back.lines, back.codes, back.time) == (bulletin.heading, bulletin.lines, bulletin.codes, bulletin.time)
    product = WmoProduct()
    with WmoParse(name) as feed:
        assert feed.getProduct(product)
    assert told(pickle.loads(pickle.dumps(product))) == told(product) and product.getNumLines()


def test_reports_and_bulletins_made_by_hand_are_held_to_their_form():
    data, product = report(), WmoProduct()
    assert not data.setBulletin('SA', 0, 7, 1) and not data.setBulletin('SA', 0, 1, 0) and data.getLoc() == 123
    assert data.setBulletin('x' * 99, 0, 1, 1) and len(data.heading) == 80
    assert data.setReport('NOWORD', None, None, None) and (data.kind, data.station) == ('', '')
    assert product.setLines('one\ntwo', 'ab') and not product.setLines('one\ntwo', 'a') and not product.setLines('', 'ab')
    assert (product.getNumLines(), product.getText()) == (2, 'one\ntwo')
    assert product.setLines(None, None) and product.getNumLines() == 0


@pytest.mark.parametrize('record', [field(), picture(False), picture(True)], ids=lambda record: type(record).__name__)
def test_octets_of_a_machine_of_the_other_order_are_turned(record):
    rebuild, (cls, values, state) = record.__reduce__()
    order, octets = values[-1]
    turned = {'little': 'big', 'big': 'little'}[order], np.frombuffer(octets, 'i4').byteswap().tobytes()
    assert told(rebuild(cls, (*values[:-1], turned), state)) == told(record)
