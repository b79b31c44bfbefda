"""The package Yul as a script sees it: classes, Python habits, start-up."""

from datetime import datetime, timedelta, timezone
import gc
import os
from pathlib import Path
import weakref

import numpy as np
import pytest

import Yul
from Yul import Date, Domain, EarthPoint, EarthPoints, GribFile, Grid, GridPoint, Grids, Point, Points, Range, Rect
from Yul import String, Strings
import _Yul
import gribwriter
from running import python

FIELD = 5400 + 10 * np.arange(12.0).reshape(3, 4)
AREA = gribwriter.LatLon(52, 0, 50, 3)


def printed(code):
    run = python(code)
    assert run.returncode == 0, run.stderr
    return run.stdout.strip()


# ---- the classes ------------------------------------------------------------------------------------------------

def test_every_class_of_the_module_is_there():
    names = [name.removesuffix('_registerclass') for name in vars(_Yul) if name.endswith('_registerclass')]
    assert len(names) > 30
    for name in names:
        cls = getattr(Yul, name)
        assert isinstance(cls, type) and cls.__name__ == name and cls.__module__ == 'Yul', name


def test_no_name_of_the_module_is_lost():
    for full_name, value in vars(_Yul).items():
        class_name, _, rest = full_name.partition('_')
        if not hasattr(_Yul, f'{class_name}_registerclass') or rest in ('registerclass', 'attach'):
            continue
        if rest.endswith(('_get', '_set')) and hasattr(_Yul, f'{class_name}_{rest[:-4]}_get'):
            rest = rest[:-4]
        rest = 'print' if rest == '_print' else rest
        assert hasattr(getattr(Yul, class_name), rest), full_name
        if isinstance(value, int):
            assert getattr(getattr(Yul, class_name), rest) == value


def test_results_come_as_instances_of_the_classes():
    domain = Domain('ll,50,10,5,5,1,1')
    assert type(domain.get()) is Yul.DomainVal
    assert type(domain.getLimits()) is Rect
    points = Points()
    points.add(Point(1, 2))
    assert type(points.get(0)) is Point


def test_a_derived_class_takes_its_bases_operations():
    for name, bases in _Yul._classes().items():
        assert all(issubclass(getattr(Yul, name), getattr(Yul, base)) for base in bases), name
    assert issubclass(Date, Yul.DateVal)
    date = Date(2026, 11, 14, 12, 30, 0.0)
    assert (date.getYear(), date.month, date.hour) == (2026, 11, 12)


class Station(EarthPoint):
    """A subclass with state of its own."""

    def __init__(self, name, lat, lon):
        super().__init__(lat, lon)
        self.name = name

    def getLat(self):
        return super().getLat() + 1


def test_python_subclasses_go_where_their_base_goes():
    station = Station('Zugspitze', 47.4, 11.0)
    assert station.name == 'Zugspitze'
    assert station.getLat() == pytest.approx(48.4)
    point = Point()
    assert Domain('ll,50,10,50,50,1,1').tran(station, point) == 1
    assert point.y == pytest.approx(47.4)
    places = EarthPoints()
    places.add(station)
    assert places[0].lon == pytest.approx(11.0)


def test_collecting_an_instance_frees_the_object_and_no_warning_appears():
    code = 'import Yul, gc\nfor _ in range(1000): Yul.Grid(50, 50), Yul.Date(), Yul.Points()\ngc.collect()'
    result = python(code)
    assert (result.returncode, result.stdout, result.stderr) == (0, '', '')


@pytest.mark.parametrize('call', [
    lambda: Point(1, 2, 3),
    lambda: Point('1', 2),
    lambda: Grid().getValue(None),
    lambda: GribFile(5),
    lambda: Points().add(EarthPoint()),
    lambda: Date().addDays(1.5),
    lambda: Yul.Yul.setMessageLevel(3.5),
    lambda: Point().tran(),
], ids=range(8))
def test_wrong_arguments_raise(call):
    with pytest.raises((TypeError, ValueError, AttributeError)):
        call()


def test_numbers_may_be_numpys():
    point = EarthPoint(np.float32(47.5), np.int16(11))
    point.lat = np.float32(48.5)
    grid = Grid(np.int64(4), np.uint8(3))
    assert grid.setValue(np.int64(1), np.int8(2), np.float32(5.5)) == 1
    date = Date(np.int64(1000))
    date += np.int64(60)
    assert (point.lat, point.lon, grid.getValue(np.int64(1), 2)) == (48.5, 11.0, 5.5)
    assert date == Date(1060) and Date.isYearLeap(np.int32(2024)) is True
    for refused in (lambda: grid.getValue(np.float64(1), 2), lambda: grid.setValue(np.float32(1), 2, 3.0),
                    lambda: Date(np.array([1, 2])), lambda: _Yul.Date_isYearLeap(np.int32(2024))):
        with pytest.raises(TypeError):
            refused()


def test_static_operations_work_from_the_class():
    level = Yul.Yul.getMessageLevel()
    assert Yul.Yul.setMessageLevel('warn') == 1
    assert Yul.Yul.checkMessage(Yul.Yul.WARN) is True
    assert Yul.Yul.checkMessage(Yul.Yul.MESS) is False
    Yul.Yul.setMessageLevel('mess')
    assert Yul.Yul.getMessageLevel() >= 0 and isinstance(level, int)
    assert Domain.getProj('lamb') == 4
    assert Date.isYearLeap(2024) is True


# ---- values -----------------------------------------------------------------------------------------------------

def test_values_share_memory_with_the_grid():
    grid = Grid(4, 3)
    values = grid.values
    assert values.shape == (3, 4) and values.dtype == np.float32
    values[:] = FIELD
    assert grid.getValue(3, 2) == 5510
    grid.setValue(0, 0, -9999)
    assert values[0, 0] == -9999
    assert grid.masked.count() == 11
    grid.values = FIELD / 2
    assert values[2, 3] == 2755


def test_values_outlive_their_grid():
    values = Grid(4, 3).values
    values[:] = 7
    gc.collect()
    assert values.sum() == 84


def test_a_grid_without_values_has_none():
    assert Grid().values is None


# ---- files ------------------------------------------------------------------------------------------------------

def test_iterating_a_file_gives_a_new_grid_for_each_field(write_grib):
    name = write_grib(*(gribwriter.grib2(FIELD + i, AREA, level=(100, 100 * level))
                        for i, level in enumerate((500, 700, 850))))
    grids = list(GribFile(name))
    assert [grid.values[0, 0] for grid in grids] == [5400, 5401, 5402]
    np.testing.assert_allclose(grids[1].values, FIELD + 1, atol=0.051)


def test_a_file_is_closed_behind_its_block(write_grib):
    with GribFile(write_grib(gribwriter.grib1(FIELD, AREA))) as file:
        assert file.isOpen() and len(list(file)) == 1
    assert not file.isOpen()


def test_iterating_a_file_that_is_not_open_raises():
    with pytest.raises(OSError):
        list(GribFile())


def test_names_of_files_may_be_paths(write_grib, tmp_path):
    field = Path(write_grib(gribwriter.grib1(FIELD, AREA)))
    [grid] = GribFile(field)
    with Yul.GridFile(field) as file:
        assert [other.getNx() for other in file] == [4]
    own = tmp_path / 'own grid'
    with Yul.GridYulFile() as file:
        assert file.open(own, 1) == 1 and file.write(grid) == 1
    assert Yul.FileTool.getSize(own) > 0 and GribFile().checkType(own) == GribFile().checkType(str(own))
    assert Yul.Filename(field, own).getIndex() == str(own)
    assert Yul.Yul.setDatabasePath(tmp_path) == 1 and Yul.Yul.getDatabasePath() == str(tmp_path)
    # a name that is not text survives as the system's octets
    odd = tmp_path / os.fsdecode(b'f\xfcr')
    odd.write_bytes(field.read_bytes())
    assert len(list(GribFile(odd))) == 1
    for refused in (lambda: Yul.Level(field), lambda: _Yul.new_GribFile(field), lambda: GribFile(bytes(field)),
                    lambda: Grid().setInfo(field)):
        with pytest.raises(TypeError):
            refused()


# ---- lists and records ------------------------------------------------------------------------------------------

@pytest.mark.parametrize('kind, items', [
    (Points, [Point(i, -i) for i in range(4)]),
    (EarthPoints, [EarthPoint(i, -i) for i in range(4)]),
    (GridPoints := Yul.GridPoints, [GridPoint(i, -i) for i in range(4)]),
])
def test_lists_are_sequences(kind, items):
    points = kind()
    assert len(points) == 0 and not list(points)
    points.extend(items[:3])
    points.append(items[3])
    assert len(points) == 4 and list(points) == items
    assert points[-1] == items[3] and points[1:3] == items[1:3]
    assert points[0] != items[1]
    for index in (4, -5):
        with pytest.raises(IndexError):
            points[index]


def test_an_item_of_a_list_is_the_lists_own():
    points = Points()
    points.append(Point(1, 2))
    for point in points:
        point.x = 5
    assert points[0].x == 5


def test_an_item_stays_good_when_its_list_grows_or_empties():
    points, grids = Points(), Grids()
    points.append(Point(1, 2))
    grids.append(Grid(4, 3))
    point, grid = points[0], grids[0]
    points.extend(Point(i, i) for i in range(1000))
    grids.extend(Grid(2, 2) for _ in range(100))
    point.x = 5
    grid.setValue(0, 0, 7)
    assert points[0].x == 5 and point.y == 2
    assert grids[0].getValue(0, 0) == 7 and grid.getNx() == 4
    point.this.acquire()
    assert not point.this.own()
    points.clear()
    grids.clear()
    assert point.x == Point().x and grid.getNx() == Grid().getNx()
    del points, grids
    assert point.y == Point().y


def test_texts_read_as_texts():
    assert str(String('500 hPa ä')) == '500 hPa ä' and len(String('abc')) == 3
    assert list(Strings('a,b,c', ',')) == ['a', 'b', 'c']
    assert Strings('a,b,c', ',')[-1] == 'c'


@pytest.mark.parametrize('record, text', [
    (EarthPoint(51.5, -0.25), 'EarthPoint(51.5, -0.25)'),
    (Point(1, 2), 'Point(1, 2)'),
    (Rect(1, 2, 3, 4), 'Rect(1, 2, 3, 4)'),
])
def test_records_print_as_they_are_made(record, text):
    assert repr(record) == text
    assert eval(text) == record
    assert [*record] == [float(word) for word in text[text.index('(') + 1:-1].split(',')]


def test_a_grids_domain_and_dates_read_as_texts():
    assert str(Domain('ll,50,10,5,4,1,2')).startswith('latlon:')
    assert str(Date(2026, 11, 14, 12, -9999, -9999.0)) == '12Z 14 NOV 2026'


# ---- dates ------------------------------------------------------------------------------------------------------

MOMENTS = [
    datetime(2026, 11, 14, 12, 45, 30, 500000, tzinfo=timezone.utc),
    datetime(1970, 1, 1, tzinfo=timezone.utc),
    datetime(1969, 12, 31, 23, 59, 59, tzinfo=timezone.utc),
    datetime(2024, 2, 29, 6, tzinfo=timezone(timedelta(hours=-5))),
]


@pytest.mark.parametrize('moment', MOMENTS, ids=str)
def test_datetime_and_back(moment):
    date = Date.fromDatetime(moment)
    assert date.datetime == moment and date.datetime.utcoffset() == timedelta(0)


def test_a_display_zone_does_not_move_the_moment():
    date = Date.fromDatetime(MOMENTS[3])
    date.changeTimezone(-5 * 3600, 'EST')
    assert date.getHour() == 6 and date.datetime == MOMENTS[3]


def test_missing_fields_of_a_date():
    assert Date().datetime is None
    assert Date('20261114').datetime == datetime(2026, 11, 14, tzinfo=timezone.utc)


def test_dates_compare_and_add_in_place():
    date, later = Date.fromDatetime(MOMENTS[0]), Date.fromDatetime(MOMENTS[0])
    kept = weakref.ref(later)
    later += 60
    assert kept() is later and later > date and date < later
    assert later.datetime - date.datetime == timedelta(seconds=59.5)  # += counts whole seconds


def test_dates_move_by_timedeltas():
    date = kept = Date(2026, 11, 14, 12, -9999, -9999.0)
    date += timedelta(days=1, hours=13)
    assert date is kept and str(date) == '01Z 16 NOV 2026'
    date -= timedelta(hours=1)
    assert date is kept and str(date) == '00Z 16 NOV 2026' and date - timedelta(days=1) == Date('2026111500')
    date -= 60
    assert date is kept and date.datetime == datetime(2026, 11, 15, 23, 59, tzinfo=timezone.utc)
    for wrong in (1.5, None, 'an hour', date):
        with pytest.raises(TypeError):
            date += wrong
        with pytest.raises(TypeError):
            date + wrong


# ---- start-up ---------------------------------------------------------------------------------------------------

def test_the_package_brings_its_data_unless_another_path_is_set():
    path = printed('import Yul; print(Yul.Yul.getDatabasePath())')
    assert os.path.isdir(path) and path.startswith(os.path.dirname(Yul.__file__))
    assert printed('import _Yul; _Yul.Yul_setDatabasePath("/srv"); import Yul; print(Yul.Yul.getDatabasePath())') == '/srv'


@pytest.mark.skipif(not os.path.exists(os.path.join(os.path.dirname(Yul.__file__), '_tables.py')),
                    reason='a build with sanitizers cannot write the tables that make the import light')
def test_importing_loads_nothing_heavy():
    code = 'import sys; before = set(sys.modules); import Yul; print(*sorted(set(sys.modules) - before))'
    assert {name for name in printed(code).split() if not name.startswith(('Yul', '_Yul'))} <= {'__future__'}


def test_numpy_is_imported_only_when_values_are_asked_for():
    code = 'import sys, Yul; g = Yul.Grid(2, 2); print("numpy" in sys.modules); g.values; print("numpy" in sys.modules)'
    assert printed(code).split() == ['False', 'True']
