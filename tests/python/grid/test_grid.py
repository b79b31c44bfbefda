"""Grids and their vocabularies as the flat module shows them."""

import gc
import math

import numpy
import pytest

import _Yul as y

MISS = -9999


@pytest.fixture(autouse=True, scope='module')
def destructors():
    """Without classes of their own, owning pointers would be left allocated."""
    import Yul  # noqa: F401


def text_of(write, *arguments):
    out = y.new_String()
    write(*arguments, out)
    return y.String_get(out)


def grid_of(rows):
    grid = y.new_Grid(len(rows[0]), len(rows))
    numpy.asarray(y.Grid_view(grid))[...] = rows
    return grid


def test_view_is_the_live_values_and_writable():
    grid = grid_of([[1, 2, 3], [4, 5, 6]])
    view = y.Grid_view(grid)
    assert (view.shape, view.format, view.itemsize, view.readonly) == ((2, 3), 'f', 4, False)
    assert y.Grid_getValue(grid, 2, 0) == 3 and y.Grid_getValue(grid, 0, 1) == 4
    y.Grid_setValue(grid, 1, 1, 50.0)
    assert numpy.asarray(view)[1, 1] == 50
    assert y.Grid_view(y.new_Grid()) is None


def test_view_keeps_the_values_alive():
    values = numpy.asarray(y.Grid_view(grid_of([[1, 2], [3, 4]])))
    gc.collect()
    assert values.tolist() == [[1, 2], [3, 4]]


@pytest.mark.parametrize('change', [
    lambda grid: y.Grid_init(grid),
    lambda grid: (y.Grid_setSize(grid, 300, 200), y.Grid_allocData(grid)),
    lambda grid: (y.Grid_setSize(grid, 1, 1), y.Grid_allocData(grid)),
    lambda grid: y.Grid_copy(grid, y.new_Grid(50, 50)),
    lambda grid: y.Grid_freeData(grid),
    lambda grid: y.delete_Grid(grid),
])
def test_view_survives_what_happens_to_the_grid(change):
    grid = grid_of([[1, 2], [3, 4]])
    values = numpy.asarray(y.Grid_view(grid))
    change(grid)
    assert values.tolist() == [[1, 2], [3, 4]]
    values[...] = 7


def test_missing_values_are_skipped_and_kept():
    grid = grid_of([[1, MISS, math.nan], [4, 5, -6]])
    reference = numpy.array([1, 4, 5, -6], 'f')
    assert y.Grid_getValid(grid) == 4
    assert y.Grid_getAverage(grid) == reference.mean()
    found = y.new_Range()
    assert y.Grid_getRange(grid, found) == 1
    assert (y.Range_getMin(found), y.Range_getMax(found)) == (-6, 5)
    assert y.Grid_scale(grid, 2.0) == y.Grid_offset(grid, 1.0) == 1
    assert [y.Grid_getValue(grid, i, 0) for i in range(3)] == [3, MISS, MISS]


def test_statistics_agree_with_numpy():
    random = numpy.random.default_rng(5)
    for shape in ((1, 1), (3, 5), (7, 9), (64, 33)):
        values = random.normal(280, 20, shape).astype('f')
        values[random.random(shape) < 0.3] = MISS
        grid = grid_of(values.tolist())
        present = values[values != MISS]
        assert y.Grid_getValid(grid) == present.size
        if present.size:
            assert y.Grid_getAverage(grid) == pytest.approx(present.mean(dtype='d'), rel=1e-7)


def test_interpolation_agrees_with_the_formula():
    random = numpy.random.default_rng(6)
    values = random.normal(280, 20, (6, 8)).astype('f').astype('d')
    grid = grid_of(values.tolist())
    for x, fy in zip(random.uniform(0, 7, 200).astype('f'), random.uniform(0, 5, 200).astype('f')):
        i, j = min(int(x), 6), min(int(fy), 4)
        a, b = float(x) - i, float(fy) - j
        expected = ((1 - b) * ((1 - a) * values[j, i] + a * values[j, i + 1])
                    + b * ((1 - a) * values[j + 1, i] + a * values[j + 1, i + 1]))
        assert y.Grid_getValue(grid, y.new_GridPoint(float(x), float(fy))) == pytest.approx(expected, rel=2e-7)


def test_earth_and_plane_positions_go_through_the_domain():
    grid = grid_of([[1, 2], [3, 4]])
    assert y.Grid_setDomain(grid, y.new_Domain('ll,45,10,2,2,10,10')) == 1
    assert y.Grid_getValue(grid, y.new_EarthPoint(45.0, 10.0)) == 2.5
    point = y.new_Point()
    assert y.Grid_tran(grid, y.new_EarthPoint(50.0, 5.0), point) == 1
    assert y.Grid_getValue(grid, point) == 1
    assert y.Grid_getValue(grid, y.new_EarthPoint(0.0, 10.0)) == MISS
    assert (y.Grid_getDx(grid), y.Grid_getDy(grid), y.Grid_getProj(grid)) == (10, 10, 2)


def test_copies_share_nothing():
    grid = grid_of([[1, 2], [3, 4]])
    y.Grid_setInfo(grid, 'Height [gpm]')
    copy = y.new_Grid(grid)
    y.Grid_setValue(grid, 0, 0, 9.0)
    y.Grid_setInfo(grid, 'other')
    assert y.Grid_getValue(copy, 0, 0) == 1 and y.Grid_getInfo(copy) == 'Height [gpm]'
    assert y.Grid_copy(grid, grid) == 1 and y.Grid_getValue(grid, 0, 0) == 9


@pytest.mark.parametrize('nx, ny', [(46341, 46341), (65536, 65536), (2**31 - 1, 2**31 - 1), (-1, 5), (0, 0), (5, -9999)])
def test_absurd_sizes_are_refused_with_a_message(nx, ny, capfd):
    grid = y.new_Grid(nx, ny)
    assert not y.Grid_isData(grid) and y.Grid_getSize(grid) == MISS
    assert 'Grid::setSize: Invalid size' in capfd.readouterr().err
    assert y.Grid_allocData(grid) == 0


def test_units_stand_at_the_end_of_the_info():
    grid = y.new_Grid(1, 1)
    y.Grid_setVar(grid, 'HGT')
    y.Grid_setInfo(grid, 'Height')
    assert [y.Grid_setUnits(grid, units) for units in ('gpm', 'dam', '', None)] == [1, 1, 0, 0]
    assert y.Grid_getInfo(grid) == 'Height [dam]' and y.Grid_getUnits(grid) == 'dam'


def test_a_grid_gives_its_spec():
    grid = y.new_Grid(2, 2)
    y.Grid_setVar(grid, 'hgt')
    y.Grid_setLevel(grid, '500 hPa')
    y.Grid_setForeTime(grid, '24h')
    y.Grid_setSource(grid, 7)
    y.Grid_setModel(grid, 96)
    spec = y.Grid_getSpec(grid)
    assert text_of(y.GridSpec_toString, spec) == 'HGT,500mb,24h,7:96'
    assert y.GridSpec_match(y.new_GridSpec('HGT,500,1d'), spec)
    assert not y.GridSpec_match(y.new_GridSpec('HGT,500,12'), spec)
    assert y.Grid_getForeHours(grid) == 24 and y.Grid_getForeSeconds(grid) == 86400
    grids = y.new_Grids()
    y.Grids_add(grids, y.new_Grid(1, 1))
    y.Grids_add(grids, grid)
    assert y.Grids_find(grids, spec) == 1
    assert y.Variable_getName(y.Grid_getVar(y.Grids_get(grids, 1))) == 'HGT'


@pytest.mark.parametrize('set_text, message', [
    (lambda text: y.Level_set(y.new_Level(), text), 'Level::set: Invalid level: no, no\n'),
    (lambda text: y.Variable_set(y.new_Variable(), text), 'Variable::set: Invalid variable: no, no\n'),
    (lambda text: y.GridSpec_set(y.new_GridSpec(), text), 'GridSpec::set: Invalid grid specification: no, no\n'),
    (lambda text: y.ModelSpec_set(y.new_ModelSpec(), text), 'ModelSpec::set: Invalid model: no, no\n'),
])
def test_a_text_that_cannot_be_read_gives_one_message(set_text, message, capfd):
    assert set_text('no, no') == 0
    assert capfd.readouterr().err == message


def test_variables_and_levels_by_their_codes():
    item = y.VarName_findGrib2(7, 0, 7, 6)
    assert (y.VarNameItem_getName(item), y.VarNameItem_getGrib1(item)) == ('CAPE', 157)
    assert y.VarName_findGrib2(98, 0, 7, 193) is None
    level = y.new_Level()
    assert y.Level_setGrib1(level, 101, 100, 50) == 1
    assert text_of(y.Level_toLabel, level) == '1000-500 hPa'
    assert y.Level_getType(level) == y.Level_PRES == 100
    assert y.Unit_convertValue(0.0, 'C', 'F') == 32
