"""Lines: styles and widths.

The five line styles of the device, each at six widths. A width is counted in dots of a third of a point.
"""

import sys

from Yul import Graph, Rect

STYLES = 'solid', 'dashed', 'long gaps', 'dash-dot', 'dotted'
WIDTHS = 0.5, 1, 2, 3, 5, 8

graph = Graph('postscript', f'{sys.argv[1]},land,color')
if not graph.open():
    sys.exit(1)
graph.setWindow(Rect(0.0, 0.0, 756.0, 576.0))
graph.setTextHeight(13.0)
graph.setTextAlign(2, 0)
for column, width in enumerate(WIDTHS):
    graph.drawText(190.0 + 100 * column, 500.0, f'{width:g}')
graph.setTextAlign(1, 0)
for row, name in enumerate(STYLES):
    y = 440.0 - 90 * row
    graph.drawText(20.0, y - 6, f'{row + 1}  {name}')
    graph.setLineStyle(row + 1)
    for column, width in enumerate(WIDTHS):
        graph.setLineWidth(width)
        graph.drawLine(150.0 + 100 * column, y, 230.0 + 100 * column, y)
if not graph.close():
    sys.exit(1)
