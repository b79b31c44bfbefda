#!/usr/bin/env python3
"""Compares what xarray reads from GRIB files by our engine and by cfgrib: compare_engines.py FILE...

Prints a table of Markdown: the fields that each gives, and how many of cfgrib's have an equal among ours (same times,
same values at the same places, to a unit in the last place of single precision). Needs xarray and cfgrib.
"""

import contextlib
from dataclasses import dataclass
import io
import logging
from pathlib import Path
import sys
import warnings

import numpy as np
import xarray

ULPS = 1.2e-7  # of single precision


@dataclass
class Slice:
    """One field: its times, its values with row 0 in the north and column 0 in the west."""
    start: object
    period: object
    values: np.ndarray


def upright(values, lat, lon):
    """The values, and whether their rows run south and columns east after turning."""
    if lat.ndim == 1 and values.ndim == 2:
        lat, lon = np.broadcast_to(lat[:, None], values.shape), np.broadcast_to(lon[None, :], values.shape)
    row, column = values.shape[0] // 2, values.shape[1] // 2
    if values.shape[0] > 1 and lat[0, column] < lat[-1, column]:
        values = values[::-1]
    if values.shape[1] > 1:
        step = (lon[row, 1] - lon[row, 0] + 540) % 360 - 180
        values = values[:, ::-1] if step < 0 else values
    return values


def slices(array, names):
    """The fields of an array; names are those of the reference time and the period in its dataset."""
    leading = [dim for dim in array.dims if dim not in array.dims[-2:]]
    lat, lon = (next((np.asarray(array.coords[name]) for name in array.coords if name.startswith(kind)
                      and array.coords[name].dims and set(array.coords[name].dims) <= set(array.dims[-2:])), None)
                for kind in ('latitude', 'longitude'))
    if lat is None:
        yield None  # numbers without a place
        return
    for where in np.ndindex(*(array.sizes[dim] for dim in leading)):
        part = array.isel(dict(zip(leading, where)))
        start, period = (part.coords[name].values if name in part.coords else np.datetime64('NaT') for name in names)
        values = np.asarray(part.values)
        if not np.isnan(values).all():
            yield Slice(start, period, upright(values, lat, lon))


def ours(name):
    with xarray.open_dataset(name, engine='yul') as dataset:
        for array in dataset.data_vars.values():
            names = [next(coord for coord in array.coords if coord.startswith(prefix) and
                          set(array.coords[coord].dims) <= set(array.dims))
                     for prefix in ('forecast_reference_time', 'forecast_period')]
            yield from slices(array, names)


def theirs(name):
    import cfgrib
    for dataset in cfgrib.open_datasets(name, indexpath='', backend_kwargs={'indexpath': ''}):
        for array in dataset.data_vars.values():
            if array.ndim < 2 or {'values'} & set(array.dims):
                yield None  # no grid of rows and columns
                continue
            yield from slices(array, ['time', 'step'])


def attempt(read, name):
    """The fields, or what went wrong in a few words."""
    try:
        with contextlib.redirect_stdout(io.StringIO()), warnings.catch_warnings():
            warnings.simplefilter('ignore')
            return list(read(name)), ''
    except Exception as error:  # whatever an engine raises is its answer
        return [], f'{type(error).__name__}: {str(error).splitlines()[0][:60] if str(error) else ""}'


def same(a, b):
    if a.values.shape != b.values.shape or str(a.start) != str(b.start) or a.period != b.period:
        return False
    largest = np.nanmax(np.abs(b.values), initial=0)
    return np.array_equal(np.isnan(a.values), np.isnan(b.values)) and \
        bool((np.abs(a.values - b.values)[~np.isnan(a.values)] <= ULPS * np.maximum(np.abs(b.values), largest / 65536)
              [~np.isnan(a.values)]).all())


def compare(name):
    """Our fields, theirs, how many of theirs have an equal among ours, and what each could not do."""
    mine, fault = attempt(ours, name)
    other, other_fault = attempt(theirs, name)
    gridded = [item for item in other if item is not None]
    equal, free = 0, list(mine)
    for item in gridded:
        found = next((i for i, candidate in enumerate(free) if same(candidate, item)), None)
        if found is not None:
            equal += 1
            del free[found]
    return len(mine), len(gridded), equal, fault, other_fault or ('no rows and columns, or no places' if len(gridded) < len(other) else '')


def main():
    logging.disable(logging.CRITICAL)
    print('| file | ours | cfgrib | equal | |\n|---|---|---|---|---|')
    for name in sys.argv[1:]:
        mine, other, equal, fault, other_fault = compare(name)
        notes = '; '.join(filter(None, [fault and f'ours: {fault}', other_fault and f'cfgrib: {other_fault}']))
        print(f'| {Path(name).name} | {mine or "-"} | {other or "-"} | {equal if mine and other else ""} | {notes} |', flush=True)


if __name__ == '__main__':
    main()
