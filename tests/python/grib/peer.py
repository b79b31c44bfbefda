"""Messages that another library packs, and what it reads from them."""

import pytest

eccodes = pytest.importorskip('eccodes')
MISS = -9999.0


def packed(field, packing, bits, missing, edition=2):
    """The message of another library, and its own values."""
    message = eccodes.codes_grib_new_from_samples(f'regular_ll_pl_grib{edition}')
    ny, nx = field.shape
    step = 1 if nx < 100 else 0.05
    keys = {'Ni': nx, 'Nj': ny, 'latitudeOfFirstGridPointInDegrees': 60, 'latitudeOfLastGridPointInDegrees': 60 - (ny - 1) * step,
            'longitudeOfFirstGridPointInDegrees': 0, 'longitudeOfLastGridPointInDegrees': (nx - 1) * step,
            'iDirectionIncrementInDegrees': step, 'jDirectionIncrementInDegrees': step, 'missingValue': MISS,
            'bitmapPresent': int(missing), 'bitsPerValue': bits}
    for key, value in keys.items():
        eccodes.codes_set(message, key, value)
    try:
        eccodes.codes_set_values(message, field.ravel())
        eccodes.codes_set(message, 'packingType', packing)
    except eccodes.CodesInternalError as error:
        pytest.skip(f'{packing}: {error}')
    octets = eccodes.codes_get_message(message)
    eccodes.codes_release(message)
    again = eccodes.codes_new_from_message(octets)
    eccodes.codes_set(again, 'missingValue', MISS)
    values = eccodes.codes_get_values(again).reshape(field.shape)
    eccodes.codes_release(again)
    return octets, values
