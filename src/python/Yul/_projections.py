"""Projections of the library in the words of PROJ and of the CF conventions."""

import _Yul

METRES = 100000.0  # in a unit of the plane
DOMAIN = {code: getattr(_Yul, f'Domain_{code}') for code in (
    'PSTEREO', 'LATLON', 'MERC', 'LAMB', 'ORTHO', 'GNOM', 'MOLL', 'LAMBAZ', 'ALBERS', 'SAT', 'RADIAL')}
NAMES = {code: name for name, code in DOMAIN.items()}

# The PROJ texts; `pole` is the pole of the map's hemisphere, `polar` gives the scale of a polar map.
PROJ = {
    'PSTEREO': '+proj=stere +lat_0={pole} {polar} +lon_0={plon:.9g}',
    'RADIAL': '+proj=stere +lat_0={pole} {polar} +lon_0={plon:.9g} +y_0={site:.9g}',
    'LATLON': '+proj=eqc +lon_0={plon:.9g}',
    'MERC': '+proj=merc +lat_ts={true:.9g} +lon_0={plon:.9g}',
    'LAMB': '+proj=lcc +lat_1={std1:.9g} +lat_2={std2:.9g} +lat_0={pole} +lon_0={plon:.9g}',
    'ALBERS': '+proj=aea +lat_1={std1:.9g} +lat_2={std2:.9g} +lat_0={plat:.9g} +lon_0={plon:.9g}',
    'ORTHO': '+proj=ortho +lat_0={plat:.9g} +lon_0={plon:.9g}',
    'GNOM': '+proj=gnom +lat_0={plat:.9g} +lon_0={plon:.9g}',
    'LAMBAZ': '+proj=laea +lat_0={plat:.9g} +lon_0={plon:.9g}',
    'MOLL': '+proj=moll +lon_0={plon:.9g}',
    'SAT': '+proj=geos +h={height:.9g} +lon_0={plon:.9g}',
}

# Grid mapping names, and the attribute of each number.
CF = {
    'LATLON': ('latitude_longitude', {}),
    'PSTEREO': ('polar_stereographic', {'latitude_of_projection_origin': 'pole', 'standard_parallel': 'std1',
                                        'scale_factor_at_projection_origin': 'at_pole',
                                        'straight_vertical_longitude_from_pole': 'plon'}),
    'MERC': ('mercator', {'longitude_of_projection_origin': 'plon', 'standard_parallel': 'true'}),
    'LAMB': ('lambert_conformal_conic', {'standard_parallel': 'both', 'longitude_of_central_meridian': 'plon',
                                         'latitude_of_projection_origin': 'pole'}),
    'ALBERS': ('albers_conical_equal_area', {'standard_parallel': 'both', 'longitude_of_central_meridian': 'plon',
                                             'latitude_of_projection_origin': 'plat'}),
    'LAMBAZ': ('lambert_azimuthal_equal_area', {'longitude_of_projection_origin': 'plon',
                                                'latitude_of_projection_origin': 'plat'}),
    'ORTHO': ('orthographic', {'longitude_of_projection_origin': 'plon', 'latitude_of_projection_origin': 'plat'}),
    'SAT': ('geostationary', {'longitude_of_projection_origin': 'plon', 'latitude_of_projection_origin': 'plat',
                              'perspective_point_height': 'height'}),
}


def _numbers(domain, name):
    """What the texts and attributes are filled with, None for those that do not apply; None for a projection without
    an equal elsewhere and for parameters that allow no plane."""
    val = domain.get()
    point = _Yul.new_Point()
    if not domain.tran(_Yul.new_EarthPoint(val.plat / 2, val.plon), point):  # every plane has this position
        return None
    ellipse = val.ellipse and name in ('MERC', 'SAT')
    globals_ = _Yul.cvar
    major = (globals_.Domain_earth_maj if ellipse else globals_.Domain_earth_rad) * METRES
    minor = (globals_.Domain_earth_min if ellipse else globals_.Domain_earth_rad) * METRES
    if name == 'SAT' and val.plat != 0:
        return None
    from math import radians, sin, tan
    north = 1.0 if val.plat >= 0 else -1.0
    std1, std2 = domain.getStdLat(1), domain.getStdLat(2)
    # A polar map that is true on the other hemisphere: elsewhere a latitude counts by its size, so its scale is given.
    at_pole = (1 + north * sin(radians(std1))) / 2
    is_true = north * std1 >= 0
    return {
        'plat': val.plat, 'plon': val.plon, 'pole': 90 * north,
        'site': north * 2 * at_pole * major * tan(radians(45 - abs(val.plat) / 2)),
        'polar': f'+lat_ts={std1:.9g}' if is_true else f'+k_0={at_pole:.12g}',
        'at_pole': None if is_true else at_pole, 'std1': std1 if is_true else None, 'both': [std1, std2],
        'std2': std2, 'true': std1 if ellipse else 0.0,
        'height': type(domain).satelliteDistance(val) * METRES - major, 'major': major, 'minor': minor,
    }


def proj_text(domain):
    name = NAMES.get(domain.get().proj)
    numbers = _numbers(domain, name) if name else None
    if numbers is None:
        return None
    from math import radians
    unit = {'LATLON': radians(1) * numbers['major'], 'SAT': numbers['height']}.get(name, METRES)
    earth = (f'+R={numbers["major"]:.9g}' if numbers['major'] == numbers['minor']
             else f'+a={numbers["major"]:.9g} +b={numbers["minor"]:.9g}')
    return f'{PROJ[name].format(**numbers)} {earth} +to_meter={unit:.12g} +no_defs'


def cf_mapping(domain):
    name = NAMES.get(domain.get().proj)
    numbers = _numbers(domain, name) if name in CF else None
    if numbers is None:
        return None
    mapping, attributes = CF[name]
    earth = ({'earth_radius': numbers['major']} if numbers['major'] == numbers['minor']
             else {'semi_major_axis': numbers['major'], 'semi_minor_axis': numbers['minor']})
    sweep = {'sweep_angle_axis': 'y'} if name == 'SAT' else {}
    given = {key: numbers[value] for key, value in attributes.items() if numbers[value] is not None}
    return {'grid_mapping_name': mapping, **given, **sweep, **earth}
