"""Text.

Alignment, direction, expansion, spacing, boxes and shadows. A position is marked with a cross: lines are centred on
their ink, and only the last line of an unaligned text stands on its position.
"""

import math
import sys

from Yul import ColorMap, Graph, Rect, RGB

graph = Graph('postscript', f'{sys.argv[1]},land,color')
colors = ColorMap(500)
if not (graph.open() and colors.read('yul.clr')):
    sys.exit(1)
graph.setWindow(Rect(0.0, 0.0, 756.0, 576.0))
graph.setMarkType(2)


def color(name: str) -> int:
    rgb = RGB()
    colors.get(colors.getInd(name), rgb)
    return graph.allocColor(rgb)


def heading(x: float, y: float, text: str) -> None:
    graph.setFont('bold')
    graph.setTextHeight(9.0)
    graph.setTextAlign(1, 0)
    graph.drawText(x, y, text)
    graph.setFont('modern')
    graph.setTextHeight(12.0)


graph.setMarkColor(color('red'))
heading(4.0, 550.0, 'Alignment')
for column, horizontal in enumerate((1, 2, 3)):
    for row, vertical in enumerate((0, 1, 3)):
        x, y = (60.0, 190.0, 320.0)[column], (490.0, 430.0, 345.0)[row]
        graph.setTextAlign(horizontal, vertical)
        graph.drawText(x, y, 'Jan Mayen\n−4 °C\n15 kt')
        graph.drawMarkLine(x, y, 12.0)

heading(440.0, 550.0, 'Direction')
graph.setTextAlign(1, 0)
for angle in range(0, 360, 30):
    turn = math.radians(angle)
    graph.setTextDirection(-math.sin(turn), math.cos(turn))
    graph.drawText(590 + 34 * math.cos(turn), 420 + 34 * math.sin(turn), f'{angle}° height')
graph.setTextDirection(0.0, 1.0)

heading(4.0, 270.0, 'Expansion, spacing and one width')
for row, (expansion, spacing, width) in enumerate(((0.7, 0.25, 0.0), (1.0, 0.25, 0.0), (1.4, 0.25, 0.0),
                                                   (1.0, 0.6, 0.0), (1.0, 0.1, 0.0), (1.0, 0.25, 0.9))):
    graph.setTextExpansion(expansion)
    graph.setTextSpacing(spacing)
    graph.setTextCharWidth(width)
    graph.drawText(4.0, 240.0 - 27 * row, 'Geopotential 5520')
graph.setTextExpansion(1.0)
graph.setTextSpacing(0.25)
graph.setTextCharWidth(0.0)

heading(440.0, 270.0, 'Boxes and shadows')
graph.setFillColor(color('steelblue'))
for i in range(12):
    graph.drawFill(Rect(440.0, 60 + 16.0 * i, 740.0, 68 + 16.0 * i))
graph.setTextAlign(2, 0)
graph.setTextBoxColor(color('white'))
graph.drawText(590.0, 200.0, 'Box behind text\non two lines')
graph.setTextBoxColor(color('lightyellow'))
graph.setFont('bold')
graph.drawText(590.0, 150.0, '1013.2 hPa')
graph.setTextBoxColor(0)
graph.setTextHeight(24.0)
graph.setTextColor(color('gold'))
graph.setDropColor(color('black'))
graph.setDropShadow(3)
graph.drawText(590.0, 85.0, 'Storm')
if not graph.close():
    sys.exit(1)
