"""The contour segments of a field beside contourpy's lines: one thread, data in memory, in turns."""

import ctypes
import importlib.util
from pathlib import Path
import sys

import numpy as np

sys.path.insert(0, str(Path(__file__).resolve().parent))

from support.fields import levels_of, temperature, waves  # noqa: E402
from support.interleaved import medians, print_row  # noqa: E402

PROGRAM = Path(__file__).resolve().parent.parent / 'build' / 'bench' / 'contour_segments.so'
ROUNDS = 11


def by_us(field, levels, room):
    """The segments, rows of x1, y1, x2, y2, in the given room."""
    library = ctypes.CDLL(str(PROGRAM))
    library.contour_segments.restype = ctypes.c_size_t

    def pointer(array):
        return array.ctypes.data_as(ctypes.POINTER(ctypes.c_float))

    tweak = (field.max() - field.min()) / 10000

    def run():
        count = library.contour_segments(pointer(field), field.shape[1], field.shape[0], pointer(levels), len(levels),
                                         ctypes.c_float(tweak), pointer(room), ctypes.c_size_t(len(room)))
        assert count <= len(room)
        return room[:count]
    return run


def by_contourpy(field, levels):
    import contourpy
    z = field.astype(np.float64)

    def run():
        generator = contourpy.contour_generator(z=z, name='serial', line_type=contourpy.LineType.Separate)
        return [line for level in levels for line in generator.lines(level)]
    return run


def length_of(steps):
    return np.hypot(steps[:, 0], steps[:, 1]).sum(dtype=np.float64)


def compare(job, field, count, least):
    levels = levels_of(field, count)
    ours, peer = by_us(field, levels, np.empty((1000000, 4), np.float32)), by_contourpy(field, levels)
    segments, lines = ours(), peer()
    lengths = length_of(segments[:, 2:] - segments[:, :2]), sum(length_of(np.diff(line, axis=0)) for line in lines)
    assert abs(lengths[0] / lengths[1] - 1) < 1e-3, lengths
    print(f'# {job}: {len(segments)} segments, {len(lines)} lines of contourpy (serial)')
    own, other = medians(ROUNDS, ours, peer)
    print_row(f'contour segments, {job}', f'{own * 1e3:.3g} ms', f'contourpy {other * 1e3:.3g} ms', other / own, least)


def main():
    if importlib.util.find_spec('contourpy') is None:
        print('# contourpy (python3-contourpy) is not installed: no peer for contour segments')
        return
    compare('1000 x 1000, 12 levels', waves(), 12, 6)
    compare('1440 x 721, 40 levels', temperature(), 40, 12)


if __name__ == '__main__':
    main()
