"""Symbols of present weather.

The hundred codes of present weather as "wx.smb" has them, drawn on the page with `Graph.drawSymbol`.
"""

import sys

from Yul import Graph, Rect

COLUMNS, CELL_WIDTH, CELL_HEIGHT = 10, 75.0, 55.0

graph = Graph('postscript', f'{sys.argv[1]},land')
if not graph.open():
    sys.exit(1)
graph.setWindow(Rect(0.0, 0.0, 756.0, 576.0))
graph.setTextAlign(1, 0)
graph.setMarkWeight(2.0)
for code in range(100):
    x = 3 + code % COLUMNS * CELL_WIDTH
    y = 520 - code // COLUMNS * CELL_HEIGHT
    graph.setTextHeight(8.0)
    graph.drawText(x, y + 36, f'{code:02}')
    graph.drawSymbol(x + 40, y + 22, f'ww{code:02}', 40.0)
if not graph.close():
    sys.exit(1)
