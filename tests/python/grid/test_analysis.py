"""Objective analysis: messages and settings of the flat module, and the package's function for arrays."""

import numpy as np
import pytest

import _Yul as y
import Yul

MISS = -9999.0
DOMAIN = 'll,45,10,9,7,1,1'


def analysis(parameters=''):
    made = Yul.ObjectAnal()
    made.setDomain(Yul.Domain(DOMAIN))
    assert made.setParam(parameters) == 1
    return made


def reports(*rows, fields=1):
    """Stations from (lat, lon, value, ...)."""
    data = Yul.StationData(fields)
    for lat, lon, *values in rows:
        station = data.add(Yul.EarthPoint(lat, lon))
        for field, value in enumerate(values):
            assert data.setValue(station, field, value) == 1
    return data


def printed(capfd, run, level='out4'):
    Yul.Yul.setMessageLevel(level)
    run()
    return capfd.readouterr().out


def test_progress_is_told_at_level_8(capfd):
    data = reports((45.5, 10.5, 10.0, MISS), (44.5, 9.5, 20.0, MISS), (45.5, 9.5, MISS, MISS), fields=2)
    data.setName(0, 'TMP')
    made = analysis('pass=2,filter=2,rad_inf=4')
    grids = Yul.Grids()
    out = printed(capfd, lambda: made.compute(data, grids))
    first, last = out.split('Pass: 2...\n')
    head, errors = first.split('Computing residuals...\n')
    assert head == ('Objective analysis\nNumber of stations: 3\nFilter parameter: 2.000\nRadius of influence: 4.000\n'
                    'Number of passes: 2\nConvergence factor: 0.200\nMin stations per gridpoint: 1\n'
                    'Data field: TMP\nData field: \n')
    grid = grids.get(0)
    analysed = [grid.getValue(Yul.EarthPoint(45.5, 10.5)), grid.getValue(Yul.EarthPoint(44.5, 9.5))]
    rms = np.sqrt(np.mean(np.square(np.subtract([10, 20], analysed))))
    line, none = errors.splitlines()
    assert line.startswith('RMS Error for field 0: ') and line.endswith(' 2')
    assert none == 'RMS Error for field 1: no stations'
    assert last == f'Computing residuals...\nRMS Error for field 0: {made.getRms(0):f}\nRMS Error for field 1: no stations\n'
    assert made.getRms(0) == pytest.approx(rms, abs=1e-5)
    assert made.getRms(0) < float(line.split()[5])
    assert made.getRms(1) == made.getRms(2) == made.getRms(-1) == MISS
    assert printed(capfd, lambda: made.compute(data, grids), 'out3') == ''


def test_print_lists_the_parameters(capfd):
    assert printed(capfd, analysis('filter=2,min_sta=4,miss=5').print, 'none').splitlines() == [
        'Filter parameter: 2.000', 'Radius of influence: 3.000', 'Number of passes: 1', 'Convergence factor: 0.200',
        'Value for missing ones: 5.000', 'Min stations per gridpoint: 4']


def test_the_setting_holds_for_new_analyses_until_they_set_more(capfd):
    Yul.Yul.setResrc('object_param', 'filter=3,pass=2,bogus=1')
    try:
        made = Yul.ObjectAnal()
        assert (made.getFilter(), made.getNumPass(), made.getRadInf()) == (3, 2, 3)
        made.setParam('filter=7,miss=1')
        assert made.init() == 1
        assert (made.getFilter(), made.getMissVal()) == (3, MISS)
    finally:
        Yul.Yul.setResrc('object_param', '')
    assert capfd.readouterr().err == 'ObjectAnal::setParam: Invalid parameter: bogus=1\n' * 2
    assert Yul.ObjectAnal().getFilter() == 1


def test_failures_tell_why_once(capfd):
    grids = Yul.Grids()
    assert Yul.ObjectAnal().compute(reports((45, 10, 1)), grids) == 0
    assert analysis().compute(Yul.StationData(0), grids) == 0
    assert analysis().set('x') == 0
    assert Yul.StationData(-1).getFields() == 0
    assert capfd.readouterr().err.splitlines() == [
        'ObjectAnal::compute: The domain has no grid', 'ObjectAnal::compute: The data have no fields',
        'ObjectAnal::set: Invalid parameters: x', 'StationData: Invalid number of fields: -1']


def test_a_location_finds_its_station_after_others_were_added():
    data = reports((45, 10, 1))
    location = data.getLocation(0)
    for i in range(1000):
        data.add(Yul.EarthPoint(float(i), 0.0))
    assert tuple(location) == (45, 10)
    location.lat = 46.0
    assert data.getLocation(0).lat == 46


def test_arrays_are_analysed_as_single_reports_are():
    random = np.random.default_rng(3)
    lats, lons = random.uniform(42, 48, 50), random.uniform(6, 14, 50)
    values = random.normal(10, 5, 50)
    values[::7] = np.nan
    grid = Yul.analyse(lats, lons, values, DOMAIN, variable='TMP[C]', passes=np.int64(3), radius=np.float32(4),
                       stations=2)
    one_by_one = reports(*zip(lats.tolist(), lons.tolist(), np.nan_to_num(values, nan=MISS).tolist()))
    grids = Yul.Grids()
    analysis('pass=3,rad_inf=4,min_sta=2').compute(one_by_one, grids)
    assert np.array_equal(grid.values, grids[0].values) and (grid.values != MISS).any()
    assert (grid.getVar().getName(), grid.getUnits()) == ('TMP', 'C')
    for same in (np.ma.masked_invalid(values), np.where(np.isnan(values), MISS, values),
                 np.where(np.isnan(values), np.inf, values), list(values)):
        again = Yul.analyse(lats.reshape(5, 10), lons, same, Yul.Domain(DOMAIN), passes=3, radius=4, stations=2)
        assert np.array_equal(again.values, grid.values)


def test_several_fields_come_back_by_name():
    lats, lons = [44, 45, 46], [9, 10, 11]
    grids = Yul.analyse(lats, lons, {'TMP': [1, 2, 3], 'RH': [np.nan] * 3}, DOMAIN)
    assert list(grids) == ['TMP', 'RH']
    assert grids['TMP'].getVar().getName() == 'TMP' and grids['TMP'].values.max() == 3
    assert (grids['RH'].values == MISS).all()
    assert Yul.analyse([], [], [], DOMAIN).getValid() == 0


@pytest.mark.parametrize('arguments, options', [
    (([45], [10, 11], [1], DOMAIN), {}),
    (([45], [10], [1, 2], DOMAIN), {}),
    (([45], [10], {'TMP': [1], 'RH': []}, DOMAIN), {}),
    (([45], [10], [1], 'nowhere'), {}),
    (([45], [10], [1], DOMAIN), {'convergence': 1.5}),
    (([45], [10], [1], DOMAIN), {'filter': 0}),
    (([45], [10], [1], DOMAIN), {'radius': float('nan')}),
    (([45], [10], [1], DOMAIN), {'stations': 0}),
    (([45], [10], [1], DOMAIN), {'passes': 0}),
    (([45], [10], [1], DOMAIN), {'missing': float('inf')}),
    (([45], [10], {}, DOMAIN), {}),
])
def test_bad_arguments_raise(arguments, options):
    with pytest.raises(ValueError, match='analyse: '):
        Yul.analyse(*arguments, **options)


def test_the_flat_module_survives_what_has_no_sense(capfd):
    data, made, grids = y.new_StationData(1), y.new_ObjectAnal(), y.new_Grids()
    for text in ('', ',,,,', 'oa', 'oa=', 'filter', '=' * 500, 'x,' * 50, '%s%n', '\x01\x02'):
        assert y.ObjectAnal_setParam(made, text) in (0, 1)
        y.ObjectAnal_set(made, text)
    assert y.ObjectAnal_setParam(made, None) == 1 and y.ObjectAnal_set(made, None) == 0
    with pytest.raises(ValueError, match='null reference'):
        y.ObjectAnal_compute(made, None, grids)
    with pytest.raises(TypeError):
        y.StationData_add(data, np.zeros(3), np.zeros(3))  # of doubles
    assert y.StationData_add(data, np.zeros(3, 'f4'), np.zeros(2, 'f4')) == -1
