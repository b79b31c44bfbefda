"""Station plots.

Surface reports as they stand on a chart: cloud amount in the ring, wind barb, temperatures, present weather,
visibility, pressure with its tendency, and the types of low, middle and high cloud.
"""

import sys
from typing import Any

from Yul import Graph, Rect

# name, wind from (degrees) and speed (kt), cloud amount, temperature, dew point, present weather, visibility code,
# pressure (tenths), tendency and its value, past weather, low, middle, high cloud
REPORTS = (
    ('Valentia', 230, 25, 8, 12, 11, 63, 92, 9873, 7, -34, 6, 7, 2, 0),
    ('Kirkwall', 140, 40, 8, 6, 5, 65, 91, 9795, 8, -58, 6, 7, 2, 0),
    ('Reykjavík', 40, 15, 6, -3, -6, 85, 95, 10042, 2, 12, 7, 9, 0, 1),
    ('Bergen', 120, 20, 7, 3, 1, 68, 93, 9968, 6, -41, 7, 5, 1, 0),
    ('Brest', 250, 15, 5, 13, 10, 80, 97, 10107, 3, 8, 8, 3, 3, 9),
    ('Jan Mayen', 10, 65, 9, -9, -11, 39, 90, 9921, 0, 3, 0, 0, 0, 0),
    ('De Bilt', 0, 0, 9, 4, 4, 45, 2, 10161, 4, 0, 4, 0, 0, 0),
    ('Madrid', 320, 5, 1, 16, 3, 2, 99, 10284, 1, 6, 0, 1, 0, 4),
    ('Palermo', 180, 10, 6, 21, 17, 95, 96, 10093, 5, -9, 9, 9, 6, 8),
)
RING, SYMBOL = 20.0, 24.0

graph = Graph('postscript', f'{sys.argv[1]},land')
if not graph.open():
    sys.exit(1)
graph.setWindow(Rect(0.0, 0.0, 756.0, 576.0))
graph.setMarkWeight(2.5)
graph.setTextWeight(2.0)


def number(x: float, y: float, value: object, align: int) -> None:
    graph.setTextHeight(11.0)
    graph.setTextAlign(align, 0)
    graph.drawText(x, y - 5, str(value).replace('-', '−'))


def plot(x: float, y: float, report: tuple[Any, ...]) -> None:
    (name, direction, speed, amount, warmth, dew, weather, visibility, pressure, trend, change, past, low, middle,
     high) = report
    graph.setTextBoxColor(0xffffff)  # what is written breaks the shaft behind it
    graph.drawWindBarb(x, y, float(direction), float(speed), 160.0)
    graph.drawSymbol(x, y, f'n{amount}', RING / 0.8)
    number(x - 24, y + 22, warmth, 3)
    number(x - 24, y - 22, dew, 3)
    graph.drawSymbol(x - 30, y, f'ww{weather:02}', SYMBOL)
    number(x - 50, y, f'{visibility:02}', 3)
    number(x + 20, y + 22, f'{pressure % 1000:03}', 1)
    number(x + 20, y, f'{change:+}', 1)
    graph.drawSymbol(x + 64, y, f'a{trend}', 16.0)
    if past > 3:
        graph.drawSymbol(x + 34, y - 22, f'w{past}', SYMBOL)
    for code, family, dy in ((low, 'cl', -26), (middle, 'cm', 28), (high, 'ch', 54)):
        if code:
            graph.drawSymbol(x, y + dy, f'{family}{code}', 20.0)
    graph.setFont('italic')
    graph.setTextHeight(8.0)
    graph.setTextAlign(2, 0)
    graph.drawText(x - 60, y - 62, name)
    graph.setFont('modern')


for i, report in enumerate(REPORTS):
    plot(130.0 + i % 3 * 250, 490.0 - i // 3 * 195, report)
if not graph.close():
    sys.exit(1)
