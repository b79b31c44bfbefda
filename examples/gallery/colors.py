"""Colours.

The colours of the table "yul.clr" with their names. The first sixteen are the fill scale; the ramps of nine and
eleven serve temperature, precipitation, anomalies and relief.
"""

import sys

from Yul import ColorMap, Graph, Rect, RGB

COLUMNS, GAP = 8, 95.5
BOX = 20.0, 10.0

graph = Graph('postscript', f'{sys.argv[1]},land,color')
colors = ColorMap(500)
if not (graph.open() and colors.read('yul.clr')):
    sys.exit(1)
graph.setWindow(Rect(0.0, 0.0, 756.0, 576.0))
graph.setFont('narrow')
graph.setTextHeight(5.8)
graph.setTextAlign(1, 0)
graph.setLineColor(0x808080)
graph.setLineWidth(0.5)
rows = -(-colors.getNum() // COLUMNS)
for i in range(colors.getNum()):
    rgb = RGB()
    colors.get(i, rgb)
    x = i // rows * GAP
    y = 570 - (i % rows + 1) * (570 / rows)
    box = Rect(x, y, x + BOX[0], y + BOX[1])
    graph.setFillColor(graph.allocColor(rgb))
    graph.drawFill(box)
    graph.drawRect(box)
    graph.drawText(x + BOX[0] + 4, y + 2, colors.getName(i))
if not graph.close():
    sys.exit(1)
