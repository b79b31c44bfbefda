"""What a field is of an ensemble: a member, a percentile, the probability of an event or a statistic of all members."""

from dataclasses import dataclass

import numpy as np

from . import cvar
from ._habits.base import or_none

# Of derived forecasts (code table 4.7): how their arrays are named where needed, and the method of the CF conventions.
DERIVED = {
    0: ('mean', 'mean'), 1: ('weighted_mean', 'mean'), 2: ('std', 'standard_deviation'), 3: ('normalized_std', None),
    4: ('spread', 'standard_deviation'), 5: ('large_anomaly_index', None), 6: ('cluster_mean', 'mean'),
    7: ('interquartile_range', None), 8: ('min', 'minimum'), 9: ('max', 'maximum'), 10: ('variance', 'variance'),
}

# Of probabilities (code table 4.9): the name, the event, and which limits it has.
LOWER, UPPER, BOTH, NEITHER = (0,), (1,), (0, 1), ()
EVENTS = {
    0: ('below', 'below the threshold', LOWER), 1: ('above', 'above the threshold', UPPER),
    2: ('between', 'between the lower and the upper threshold', BOTH), 3: ('above', 'above the threshold', LOWER),
    4: ('below', 'below the threshold', UPPER), 5: ('equal', 'equal to the threshold', LOWER),
    6: ('above_normal', 'in the above-normal category', NEITHER), 7: ('near_normal', 'in the near-normal category', NEITHER),
    8: ('below_normal', 'in the below-normal category', NEITHER),
}

AXES = {
    'realization': {'standard_name': 'realization', 'units': '1'},
    'percentile': {'long_name': 'percentile of the ensemble', 'units': '%'},
}


@dataclass(frozen=True)
class Kind:
    """What the fields of an array have in common, and the name of the dimension along which they differ, if any."""
    axis: str | None = None
    derived: int | None = None
    event: int | None = None

    @property
    def name(self):
        """What is put behind the name of a variable to tell it from others."""
        if self.derived is not None:
            return DERIVED.get(self.derived, (f'derived_{self.derived}',))[0]
        return 'percentile' if self.axis == 'percentile' else ''

    @property
    def ending(self):
        """What is always put there: a probability is none of the variable's own values."""
        return '' if self.event is None else f'_prob_{EVENTS.get(self.event, (self.event,))[0]}'

    def attributes(self, long_name):
        """The attributes that it gives to an array."""
        if self.event is not None:
            event = EVENTS.get(self.event, ('', f'in the range of the thresholds (type {self.event} of code table 4.9)'))[1]
            return {'long_name': f'probability of {long_name} {event}', 'units': '%', 'standard_name': None}
        method = DERIVED.get(self.derived, (None, None))[1]
        return {'cell_methods': f'realization: {method}'} if method else {}

    def columns(self, products, units):
        """Names, values and attributes of what stands along the dimension, for the field's places there."""
        if self.axis != 'threshold':
            return {self.axis: (np.array(products), AXES[self.axis])}
        limits = np.array(products, 'f8').T
        limits[limits == cvar.Const_MISS] = np.nan
        if len(limits) == 1:
            return {'threshold': (limits[0], {'long_name': 'limit of the event', 'units': units})}
        return {f'threshold_{which}': (values, {'long_name': f'{which} limit of the event', 'units': units})
                for which, values in zip(('lower', 'upper'), limits)}


def product_of(header):
    """The kind of a message's field, and where it stands along that kind's dimension."""
    for axis, number in (('realization', header.getMember()), ('percentile', header.getPercentile())):
        if number != cvar.Const_MISS:
            return Kind(axis), number
    event = header.getProbability()
    if event != cvar.Const_MISS:
        limits = header.getLowerLimit(), header.getUpperLimit()
        has = EVENTS.get(event, ('', '', BOTH))[2]
        if len(has) == 1:  # some write the one limit in the place of the other
            limits = [limit for limit in (limits[has[0]], *limits) if limit != cvar.Const_MISS][:1]
        has_limits = has and any(limit != cvar.Const_MISS for limit in limits)
        return Kind('threshold' if has_limits else None, event=event), tuple(limits) if has_limits else 0
    return Kind(derived=or_none(header.getDerived())), 0
