"""Stroke fonts.

The fonts of the database directory. "modern" is the default; the bold and serif fonts ask for strokes wide enough
to touch one another, so they stay solid at any height.
"""

import sys

from Yul import Graph, Rect

FONTS = 'modern', 'light', 'italic', 'bold', 'serif', 'serifitalic', 'mono'
LINES = ('ABCDEFGHIJKLMNOPQRSTUVWXYZ 0123456789', 'abcdefghijklmnopqrstuvwxyz !?&@%()[]{}+−±=°',
         'ÀÉÎÕÜÅÇÑØÆ àéîõüåçñøæß «¿¡» Reykjavík 64°08′N −12.5 °C')

graph = Graph('postscript', f'{sys.argv[1]},land')
if not graph.open():
    sys.exit(1)
graph.setWindow(Rect(0.0, 0.0, 756.0, 576.0))
graph.setTextAlign(1, 0)
for row, name in enumerate(FONTS):
    y = 540.0 - 80 * row
    graph.setFont('light')
    graph.setTextHeight(8.0)
    graph.drawText(4.0, y, name)
    graph.setFont(name)
    graph.setTextHeight(13.0)
    for i, line in enumerate(LINES):
        graph.drawText(96.0, y - 24 * i, line)
if not graph.close():
    sys.exit(1)
