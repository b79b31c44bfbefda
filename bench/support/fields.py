"""Fields for the benchmarks of contours and pages."""

import numpy as np


def waves(size=1000, span=1):
    """A square of points, smooth: the whole pattern, or so much of its width and height, also more than once."""
    steps = np.linspace(0, 2 * np.pi * span, size)
    x, y = np.meshgrid(steps, steps)
    return (30 * np.sin(2 * x + 0.5) * np.cos(3 * y) + 15 * np.sin(5 * x - 4 * y) + 8 * np.cos(9 * x + 7 * y + 1)
            + 3 * np.sin(15 * x) * np.sin(17 * y + 2)).astype(np.float32)


def temperature():
    """The earth at a quarter of a degree: a gradient, waves of all scales and a little noise, in kelvin."""
    random = np.random.default_rng(11)
    lat = np.radians(np.linspace(90, -90, 721))[:, None]
    lon = np.radians(np.arange(1440) * 0.25)[None, :]
    scales = [(k, 1 + 0.6 * k, 9 / (1 + 0.35 * k)) for k in range(1, 25)]
    scales += [(40 + 9 * i, 30 + 7 * i, 0.12) for i in range(12)]
    field = 240 + 58 * np.cos(lat) + random.normal(scale=0.02, size=(721, 1440))
    for k, l, size in scales:
        a, b = random.uniform(0, 2 * np.pi, 2)
        field += size * np.cos(lat) * np.sin(k * lon + a) * np.sin(l * lat + b)
    return field.astype(np.float32)


def levels_of(field, count):
    """Levels inside a field's range, in equal steps."""
    return np.linspace(field.min(), field.max(), count + 2)[1:-1].astype(np.float32)
