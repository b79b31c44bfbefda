#!/usr/bin/env python3
"""Writes the wind barbs into the symbol file: make_barbs.py [FILE]     (default: data/wx.smb)

A barb stands upright, for a wind from the north, with the feathers of the northern hemisphere (towards the lower
pressure). The shaft leaves room for a station circle in its middle. Feathers are set from its end inwards: a
pennant for each 50 knots, a long feather for each 10, a short one for 5; a short one alone stands a step inside.
Source: WMO-No. 485, Manual on the Global Data-processing and Forecasting System, appendix II-4.
"""

import pathlib
import sys

HEADING = '# ---- wind barbs, knots, made by scripts/make_barbs.py; wind0 is a calm ----\n'
TOP_SPEED = 200
SHAFT = 20, 100  # from the station circle to the end
LONG = 38, 13  # of a feather: across and along the shaft
PENNANT_BASE = 14
STEP = 10  # between feathers
CALM_RADIUS = 20


def counts(speed):
    """Pennants, long and short feathers."""
    return speed // 50, speed % 50 // 10, speed % 10 // 5


def barb(speed):
    pennants, long, short = counts(speed)
    step = min(STEP, (SHAFT[1] - SHAFT[0]) / max(1, pennants * (PENNANT_BASE + 2) / STEP + long + short))
    y = SHAFT[1]
    lines = [f'line 0 {SHAFT[0]} 0 {SHAFT[1]}']
    for _ in range(pennants):
        base = PENNANT_BASE * step / STEP
        lines.append(f'fill 0 {y:.1f} {LONG[0]} {y:.1f} 0 {y - base:.1f}')
        y -= base + 2
    if pennants and (long or short):
        y -= step / 2
    if (pennants, long) == (0, 0):
        y -= step
    for part in [1.0] * long + [0.5] * short:
        lines.append(f'line 0 {y:.1f} {LONG[0] * part:.1f} {min(y + LONG[1] * part, 110):.1f}')
        y -= step
    return [line.replace('.0', '') for line in lines]


def main():
    path = pathlib.Path(sys.argv[1]) if len(sys.argv) > 1 else pathlib.Path(__file__).parent.parent / 'data' / 'wx.smb'
    text = path.read_text().split(HEADING)[0]
    lines = ['symbol wind0 calm', f'circle 0 0 {CALM_RADIUS}']
    for speed in range(5, TOP_SPEED + 1, 5):
        lines += [f'symbol wind{speed}', *barb(speed)]
    path.write_text(text + HEADING + '\n'.join(lines) + '\n')


if __name__ == '__main__':
    main()
