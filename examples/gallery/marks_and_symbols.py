"""Marks and symbols.

The ten mark types, and the symbols of "wx.smb" for clouds, pressure tendency, wind, storms and places.
"""

import sys

from Yul import Graph, Rect

MARKS = 'point', 'plus', 'star', 'circle', 'cross', 'square', 'triangle', 'dot', 'inverted', 'lightning'
ROWS = (
    ('Total cloud', [f'n{i}' for i in range(10)] + ['n/']),
    ('Low cloud', [f'cl{i}' for i in range(1, 10)]),
    ('Middle cloud', [f'cm{i}' for i in range(1, 10)]),
    ('High cloud', [f'ch{i}' for i in range(1, 10)]),
    ('Tendency', [f'a{i}' for i in range(9)]),
    ('Past weather', ['w3', 'w3b', 'w4', 'w5', 'w6', 'w7', 'w8', 'w9']),
    ('Storms', ['tropical_storm', 'hurricane']),
    ('Places', ['city', 'disc', 'capital', 'square', 'square_filled', 'triangle', 'mountain', 'diamond', 'star',
                'star_filled', 'airport']),
)
SPEEDS = 0, 5, 10, 15, 25, 40, 50, 65, 85, 100, 145  # knots
STEP, LEFT, SIZE = 57.0, 120.0, 34.0

graph = Graph('postscript', f'{sys.argv[1]},land')
if not graph.open():
    sys.exit(1)
graph.setWindow(Rect(0.0, 0.0, 756.0, 576.0))
graph.setMarkWeight(2.0)


def label(x: float, y: float, text: str, align: int, height: float) -> None:
    graph.setTextHeight(height)
    graph.setTextAlign(align, 0)
    graph.drawText(x, y, text)


label(4.0, 536.0, 'Marks', 1, 11.0)
for i, name in enumerate(MARKS):
    graph.setMarkType(i + 1)
    graph.drawMarkLine(LEFT + i * STEP, 541.0, 18.0)
    label(LEFT + i * STEP, 518.0, f'{i + 1} {name}', 2, 5.5)
for row, (title, names) in enumerate(ROWS):
    y = 482.0 - row * 54
    label(4.0, y - 5, title, 1, 11.0)
    for i, name in enumerate(names):
        graph.drawSymbol(LEFT + i * STEP, y, name, SIZE)
        label(LEFT + i * STEP, y - 26, name, 2, 5.5)
label(4.0, 16.0, 'Wind', 1, 11.0)
for i, speed in enumerate(SPEEDS):
    graph.drawWindBarb(LEFT - 12 + i * STEP, 18.0, 30.0, speed, 70.0)
    label(LEFT + i * STEP, -4.0, f'{speed} kt', 2, 5.5)
if not graph.close():
    sys.exit(1)
