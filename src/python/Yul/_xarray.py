"""Grids as xarray.DataArray, with the names of the CF conventions."""

import numpy as np
import xarray

from . import Domain, ForeTime, Level, cvar
from ._arrays import as_array
from ._projections import METRES

# Standard names of the CF conventions by short name.
STANDARD_NAMES = {
    'TMP': 'air_temperature', 'DPT': 'dew_point_temperature', 'POT': 'air_potential_temperature',
    'EPOT': 'air_equivalent_potential_temperature', 'VTMP': 'virtual_temperature', 'TMAX': 'air_temperature',
    'TMIN': 'air_temperature', 'HGT': 'geopotential_height', 'GP': 'geopotential', 'DIST': 'altitude',
    'PRES': 'air_pressure', 'PRMSL': 'air_pressure_at_mean_sea_level', 'MSLET': 'air_pressure_at_mean_sea_level',
    'RH': 'relative_humidity', 'SPFH': 'specific_humidity', 'MIXR': 'humidity_mixing_ratio',
    'PWAT': 'atmosphere_mass_content_of_water_vapor', 'CLMR': 'cloud_liquid_water_mixing_ratio',
    'WIND': 'wind_speed', 'WDIR': 'wind_from_direction', 'GUST': 'wind_speed_of_gust',
    'VVEL': 'lagrangian_tendency_of_air_pressure', 'DZDT': 'upward_air_velocity',
    'ABSV': 'atmosphere_absolute_vorticity', 'RELV': 'atmosphere_relative_vorticity', 'RELD': 'divergence_of_wind',
    'APCP': 'precipitation_amount', 'ACPCP': 'convective_precipitation_amount',
    'NCPCP': 'large_scale_precipitation_amount', 'PRATE': 'precipitation_flux', 'SNOD': 'surface_snow_thickness',
    'WEASD': 'surface_snow_amount', 'TCDC': 'cloud_area_fraction', 'LCDC': 'low_type_cloud_area_fraction',
    'MCDC': 'medium_type_cloud_area_fraction', 'HCDC': 'high_type_cloud_area_fraction', 'VIS': 'visibility_in_air',
    'CAPE': 'atmosphere_convective_available_potential_energy', 'CIN': 'atmosphere_convective_inhibition',
    'LAND': 'land_binary_mask', 'ICEC': 'sea_ice_area_fraction', 'WTMP': 'sea_surface_temperature',
    'HTSGW': 'sea_surface_wave_significant_height', 'SHTFL': 'surface_upward_sensible_heat_flux',
    'LHTFL': 'surface_upward_latent_heat_flux', 'DSWRF': 'downwelling_shortwave_flux_in_air',
    'DLWRF': 'downwelling_longwave_flux_in_air',
}
# Where columns run east, components along the grid are those along the parallels.
LATLON_NAMES = {'UGRD': 'eastward_wind', 'VGRD': 'northward_wind'}

# The coordinate of a kind of level: its name and attributes.
LEVELS = {
    Level.PRES: ('isobaric', {'standard_name': 'air_pressure', 'units': 'hPa', 'positive': 'down'}),
    Level.HGT: ('height', {'standard_name': 'height', 'units': 'm', 'positive': 'up'}),
    Level.HGT_MSL: ('altitude', {'standard_name': 'altitude', 'units': 'm', 'positive': 'up'}),
    Level.SIGMA: ('sigma', {'standard_name': 'atmosphere_sigma_coordinate', 'units': '1', 'positive': 'down'}),
    Level.HYBRID: ('hybrid', {'long_name': 'hybrid level', 'units': '1', 'positive': 'down'}),
    Level.THETA: ('theta', {'standard_name': 'air_potential_temperature', 'units': 'K', 'positive': 'up'}),
    Level.DEPTH: ('depth', {'standard_name': 'depth', 'units': 'cm', 'positive': 'down'}),
    Level.DEPTH_SEA: ('depth', {'standard_name': 'depth', 'units': 'm', 'positive': 'down'}),
}

CELL_METHODS = {ForeTime.ACC: 'sum', ForeTime.AVG: 'mean', ForeTime.MAX: 'maximum', ForeTime.MIN: 'minimum'}

LATITUDE = {'standard_name': 'latitude', 'long_name': 'latitude', 'units': 'degrees_north'}
LONGITUDE = {'standard_name': 'longitude', 'long_name': 'longitude', 'units': 'degrees_east'}


def _horizontal(domain):
    """Dimensions and coordinates of the points."""
    if domain.isMiss():
        return ('y', 'x'), {}
    lats, lons = (np.where(values == cvar.Const_MISS, np.nan, values) for values in (domain.lats, domain.lons))
    mapping = domain.cf
    coords = {} if mapping is None else {'crs': ((), 0, mapping)}
    if domain.get().proj == Domain.LATLON:
        east = np.unwrap(lons[0].astype('f8'), period=360)
        return ('latitude', 'longitude'), coords | {'latitude': ('latitude', lats[:, 0].astype('f8'), LATITUDE),
                                                    'longitude': ('longitude', east, LONGITUDE)}
    limits, val = domain.getLimits(), domain.get()
    is_angle = val.proj == Domain.SAT
    scale, unit = (1, 'radian') if is_angle else (METRES, 'm')
    name = 'projection_{}_angular_coordinate' if is_angle else 'projection_{}_coordinate'
    planes = {'x': limits.x1 + np.arange(val.nx) * val.dx, 'y': limits.y2 - np.arange(val.ny) * val.dy}
    for axis, places in planes.items():
        coords[axis] = (axis, places * scale, {'standard_name': name.format(axis), 'units': unit})
    coords['latitude'] = (('y', 'x'), lats, LATITUDE)
    coords['longitude'] = (('y', 'x'), lons, LONGITUDE)
    return ('y', 'x'), coords


def _vertical(level):
    """The coordinate of the level, a layer with its bounds as an attribute; a level without a number as an attribute."""
    if not level.isSet():
        return {}, {}
    name, attributes = LEVELS.get(level.getType(), ('level', {'units': level.getUnits() or '1'}))
    if level.getValue() == cvar.Const_MISS:
        return {}, {'level': str(level)}
    values = [level.getValue()] + ([level.getValue2()] if level.isLayer() else [])
    if level.isLayer():
        attributes = attributes | {'layer': values}
    return {name: ((), sum(values) / len(values), attributes)}, {'level': str(level)}


def _times(grid):
    """Times as CF names them, as far as they are set."""
    coords = {}
    start, fore = grid.date, grid.getForeTime()
    if start.isSet():
        coords['forecast_reference_time'] = ((), start.datetime64.astype('datetime64[ns]'),
                                             {'standard_name': 'forecast_reference_time'})
        coords['time'] = ((), grid.valid.datetime64.astype('datetime64[ns]'), {'standard_name': 'time'})
    if fore.getSeconds() != cvar.Const_MISS:
        coords['forecast_period'] = ((), np.timedelta64(fore.getSeconds(), 's').astype('timedelta64[ns]'),
                                     {'standard_name': 'forecast_period'})
    return coords


def _standard_name(grid):
    name = grid.getVar().getName()
    if grid.getProj() == Domain.LATLON and name in LATLON_NAMES:
        return LATLON_NAMES[name]
    return STANDARD_NAMES.get(name)


def data_array(grid):
    """See Grid.to_xarray."""
    if not grid.isData():
        raise ValueError('Grid.to_xarray: the grid has no values')
    domain = grid.getDomain()
    if not domain.isMiss() and (domain.getNx(), domain.getNy()) != (grid.getNx(), grid.getNy()):
        raise ValueError('Grid.to_xarray: the domain has another size than the grid')
    dims, coords = _horizontal(domain)
    vertical, attributes = _vertical(grid.getLevel())
    var = grid.getVar()
    attributes |= {'long_name': var.getLongName() or grid.info, 'units': grid.getUnits(),
                   'standard_name': _standard_name(grid), 'source': grid.getGenName(),
                   'grid_mapping': 'crs' if 'crs' in coords else None}
    method = CELL_METHODS.get(grid.getForeTime().getType())
    if method:
        attributes['cell_methods'] = f'time: {method}'
    return xarray.DataArray(as_array(grid), coords | vertical | _times(grid), dims, var.getName() or None,
                            {key: value for key, value in attributes.items() if value})
