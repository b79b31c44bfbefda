"""GRIB files as xarray datasets: the engine "yul"."""

import os
from pathlib import Path
import pickle

import numpy as np
import pytest

from running import HAS_SANITIZERS

if HAS_SANITIZERS:
    pytest.skip('xarray brings compilers that sanitizers do not bear', allow_module_level=True)
xarray = pytest.importorskip('xarray', reason='xarray is not installed')

from Yul import GribFile  # noqa: E402
import gribwriter  # noqa: E402

AREA = gribwriter.LatLon(52, 0, 50, 3)
FIELD = 5400 + 10 * np.arange(12.0).reshape(3, 4)
SAMPLES = sorted(Path(os.environ.get('YUL_GRIB_SAMPLES', os.devnull)).glob('*.grib*'))


def message(level=500, hours=0, add=0.0, **options):
    return gribwriter.grib2(FIELD + add, AREA, level=(100, 100 * level), hours=hours, **options)


@pytest.fixture
def cube(write_grib):
    """Two levels at three times, one of the six missing, and a temperature."""
    return write_grib(*(message(level, hours, level + hours) for hours in (12, 0, 6) for level in (850, 500)
                        if (level, hours) != (850, 6)), message(850, 6, parameter=(0, 0, 0)))


@pytest.fixture
def unpacked(monkeypatch):
    """The places of the fields that were unpacked."""
    from Yul import _backend
    seen, read = [], _backend.Fields._field
    monkeypatch.setattr(_backend.Fields, '_field',
                        lambda self, file, place, grid: seen.append(place.octet) or read(self, file, place, grid))
    return seen


def test_fields_become_arrays_with_levels_and_times(cube):
    with xarray.open_dataset(cube, engine='yul') as dataset:
        height = dataset['HGT']
        assert height.dims == ('forecast_period', 'isobaric', 'latitude', 'longitude') and height.dtype == np.float32
        assert height.sizes == {'forecast_period': 3, 'isobaric': 2, 'latitude': 3, 'longitude': 4}
        assert height['isobaric'].values.tolist() == [500, 850] and height['isobaric'].attrs['units'] == 'hPa'
        assert (height['forecast_period'].values / np.timedelta64(1, 'h')).tolist() == [0, 6, 12]
        assert height['latitude'].values.tolist() == [52, 51, 50] and height['longitude'].values.tolist() == [0, 1, 2, 3]
        assert (height['time'] - dataset['forecast_reference_time'] == height['forecast_period']).all()
        assert height.attrs['standard_name'] == 'geopotential_height' and height.attrs['units'] == 'gpm'
        assert dataset[height.attrs['grid_mapping']].attrs['grid_mapping_name'] == 'latitude_longitude'
        assert dataset.attrs['Conventions'].startswith('CF-')
        at = {'isobaric': 850, 'forecast_period': np.timedelta64(12, 'h')}
        np.testing.assert_allclose(height.sel(at), FIELD + 862, atol=0.051)
        assert np.isnan(height.sel(isobaric=850, forecast_period=np.timedelta64(6, 'h'))).all()
        assert 'isobaric' not in dataset['TMP'].dims or dataset['TMP'].sizes['forecast_period2'] == 1


def test_only_what_is_touched_is_unpacked(cube, unpacked):
    with xarray.open_dataset(cube, engine='yul') as dataset:
        assert 'HGT' in repr(dataset) and unpacked == []
        dataset['HGT'].isel(forecast_period=2, isobaric=1).load()
        assert len(unpacked) == 1
        dataset['HGT'].isel(isobaric=0, latitude=1).mean().load()
        assert len(unpacked) == 4 and unpacked[1:] == sorted(unpacked[1:])


INDEXERS = [
    {}, {'latitude': 1}, {'latitude': slice(None, None, -1)}, {'longitude': [3, 0]}, {'isobaric': [1, 0, 1]},
    {'isobaric': 1, 'forecast_period': slice(1, None), 'latitude': [0, 2], 'longitude': slice(1, 3)},
    {'isobaric': -1, 'longitude': -1}, {'forecast_period': slice(0, 0)}, {'latitude': slice(5, 9)},
]


@pytest.mark.parametrize('where', INDEXERS, ids=str)
def test_any_part_is_that_part_of_the_whole(cube, where):
    with xarray.open_dataset(cube, engine='yul') as dataset:
        whole = dataset['HGT'].copy(deep=True).load()
    with xarray.open_dataset(cube, engine='yul') as dataset:
        xarray.testing.assert_equal(dataset['HGT'].isel(where).load(), whole.isel(where))


def test_members_domains_and_repetitions_keep_apart(write_grib):
    wide = gribwriter.grib2(np.zeros((2, 2)), gribwriter.LatLon(1, 0, 0, 1))
    with xarray.open_dataset(write_grib(message(), wide, message(add=5)), engine='yul') as dataset:
        assert sorted(dataset.data_vars) == ['HGT_2x2', 'HGT_4x3']
        assert dataset['HGT_2x2'].dims == ('latitude2', 'longitude2')
        assert dataset['HGT_4x3'].dims == ('record', 'latitude', 'longitude')
        np.testing.assert_allclose(dataset['HGT_4x3'].diff('record'), np.full((1, 3, 4), 5), atol=0.11)


def limits(event, lower, upper):
    """A probability of an event, template 4.5; limits in whole units, None for one that the message does not have."""
    return bytes([0, 1, event]) + b''.join(b'\xff' * 5 if limit is None else b'\0' + gribwriter.uint(limit, 4) for limit in (lower, upper))


def test_percentiles_and_statistics_of_an_ensemble_keep_apart(write_grib):
    name = write_grib(*(message(add=percent, product=6, tail=bytes([percent])) for percent in (90, 10, 50)),
                      message(add=1, product=2, tail=bytes([0, 20])), message(add=2, product=2, tail=bytes([4, 20])))
    with xarray.open_dataset(name, engine='yul') as dataset:
        assert sorted(dataset.data_vars) == ['HGT_mean', 'HGT_percentile', 'HGT_spread']
        array = dataset['HGT_percentile']
        assert array.dims[0] == 'percentile' and array['percentile'].values.tolist() == [10, 50, 90]
        assert array['percentile'].attrs['units'] == '%'
        np.testing.assert_allclose(array.sel(percentile=50), FIELD + 50, atol=0.051)
        assert dataset['HGT_mean'].attrs['cell_methods'] == 'realization: mean'
        assert dataset['HGT_spread'].attrs['cell_methods'] == 'realization: standard_deviation'
        np.testing.assert_allclose(dataset['HGT_spread'], FIELD + 2, atol=0.051)
    with xarray.open_dataset(name, engine='yul', select={'percentile': 90}) as dataset:
        assert float(dataset['percentile']) == 90 and dataset['HGT'].dims == ('latitude', 'longitude')


def test_probabilities_have_their_thresholds(write_grib):
    events = [(1, None, 300), (1, None, 250), (0, 250, None), (2, 250, 300), (2, 250, 275), (6, None, None), (3, None, 280)]
    name = write_grib(*(message(add=i, product=5, tail=limits(*event)) for i, event in enumerate(events)), message(add=20))
    with xarray.open_dataset(name, engine='yul') as dataset:
        assert sorted(dataset.data_vars) == ['HGT', 'HGT_prob_above', 'HGT_prob_above_2', 'HGT_prob_above_normal', 'HGT_prob_below',
                                             'HGT_prob_between']
        above, between = dataset['HGT_prob_above'], dataset['HGT_prob_between']
        [axis] = [name for name in above.coords if name.startswith('threshold')]
        assert above[axis].values.tolist() == [250, 300] and above[axis].attrs['units'] == 'gpm'
        np.testing.assert_allclose(above.isel({axis: 1}), FIELD, atol=0.051)
        assert above.attrs['units'] == '%' and 'standard_name' not in above.attrs
        assert above.attrs['long_name'] == 'probability of Geopotential height above the threshold'
        lower, upper = sorted(name for name in between.coords if name.startswith('threshold_'))
        assert between[lower].values.tolist() == [250, 250] and between[upper].values.tolist() == [275, 300]
        np.testing.assert_allclose(between[1], FIELD + 3, atol=0.051)
        assert dataset['HGT_prob_above_normal'].dims == dataset['HGT'].dims == ('latitude', 'longitude')
        assert [dataset['HGT_prob_above_2'][name].values.tolist() for name in dataset['HGT_prob_above_2'].coords
                if name.startswith('threshold')] == [[280]]


def test_fields_can_be_selected_and_dropped(cube):
    with xarray.open_dataset(cube, engine='yul', select={'name': 'HGT', 'level': 500}) as dataset:
        assert list(dataset) == ['HGT'] and dataset['HGT'].sizes['forecast_period'] == 3
    with xarray.open_dataset(cube, engine='yul', drop_variables='HGT') as dataset:
        assert list(dataset) == ['TMP']


def test_a_dataset_goes_to_another_process(cube):
    with xarray.open_dataset(cube, engine='yul') as dataset:
        xarray.testing.assert_equal(pickle.loads(pickle.dumps(dataset)).load(), dataset.load())


def test_the_engine_knows_its_files_by_name():
    from Yul._backend import YulBackend
    known = [name for name in ('a.grib2', Path('B.GRB'), 'c.grib', 'd.nc', 'grib', 5, b'x.grib', None)
             if YulBackend().guess_can_open(name)]
    assert known == ['a.grib2', Path('B.GRB'), 'c.grib']


@pytest.mark.parametrize('content, options, error, word', [
    (None, {}, FileNotFoundError, 'nowhere'), (b'no data here' * 99, {}, OSError, 'no GRIB field'),
    (message(), {'select': {'colour': 1}}, ValueError, 'colour'), (message(), {'select': 'HGT'}, TypeError, 'select'),
    (message(), {'select': {'level': 7}}, ValueError, 'level 7'),
])
def test_bad_requests_raise(write_grib, tmp_path, content, options, error, word):
    name = write_grib(content) if content else str(tmp_path / 'nowhere')
    with pytest.raises(error, match=word):
        xarray.open_dataset(name, engine='yul', **options)


def test_a_file_that_changed_underneath_is_noticed(cube):
    with xarray.open_dataset(cube, engine='yul') as dataset:
        Path(cube).write_bytes(b'another file now')
        with pytest.raises(OSError, match='octet'):
            dataset['HGT'].load()


@pytest.mark.skipif(not SAMPLES, reason='YUL_GRIB_SAMPLES names no folder of sample files')
@pytest.mark.parametrize('path', SAMPLES, ids=lambda path: path.name)
def test_every_field_of_a_file_is_there_once(path):
    wanted = sorted(float(np.nansum(grid.masked.filled(0).astype('f8'))) for grid in GribFile(str(path)) if grid.getValid())
    if not wanted:
        return
    with xarray.open_dataset(path, engine='yul') as dataset:
        found = sorted(float(np.nansum(part.astype('f8'))) for array in dataset.data_vars.values()
                       for part in array.values.reshape(-1, *array.shape[-2:]) if not np.isnan(part).all())
    assert len(found) == len(wanted)
    np.testing.assert_allclose(found, wanted, rtol=1e-6)


# What cfgrib makes of a file in another way, and why ours stands.
OTHERWISE = {
    'g2-0-scan-ineg-jneg.grib2': 'it leaves columns that run west as they are and names them east',
    'g2-0-scan-j-consecutive.grib2': 'it takes columns for rows',
    'g2-0-s2s-templates.grib2': 'it merges ten fields into three',
    'g2-2-ndfd-maxt-lambert.grib2': 'it adds the length of the period; we take the end that the message names',
    'g2-41-mrms-echotop.grib2': 'it drops the seconds of the reference time',
}


@pytest.mark.skipif(not SAMPLES, reason='YUL_GRIB_SAMPLES names no folder of sample files')
@pytest.mark.parametrize('path', [path for path in SAMPLES if path.name not in OTHERWISE], ids=lambda path: path.name)
def test_values_equal_those_of_cfgrib(root, path, monkeypatch):
    pytest.importorskip('cfgrib', reason='cfgrib is not installed')
    monkeypatch.syspath_prepend(str(root / 'scripts'))
    import compare_engines
    ours, theirs, equal, _, _ = compare_engines.compare(str(path))
    if ours and theirs:
        assert equal == theirs
