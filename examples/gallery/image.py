"""Images.

The 500 hPa height of the shipped file as a raster: one sample for each grid point, coloured by the fill scale of
"yul.clr", made three times larger. Below, the same picture with palettes of eight and four colours.
"""

from pathlib import Path
import sys

from Yul import ColorMap, Graph, GribFile, Image, Rect, RGB

FIELD = Path(__file__).parent.parent / 'data' / 'height500.grib2'

graph = Graph('postscript', f'{sys.argv[1]},land,color')
colors = ColorMap(500)
if not (graph.open() and colors.read('yul.clr')):
    sys.exit(1)
graph.setWindow(Rect(0.0, 0.0, 756.0, 576.0))

levels = []
for i in range(colors.getNumFill()):
    rgb = RGB()
    colors.get(i, rgb)
    levels.append(graph.allocColor(rgb))
values = next(iter(GribFile(FIELD))).values
low, high = float(values.min()), float(values.max())
rows, columns = values.shape
image = Image(columns, rows)
for row in range(rows):
    for column in range(columns):
        level = int((values[row, column] - low) / (high - low) * len(levels))
        image.setPixel(column, row, levels[min(level, len(levels) - 1)])


def show(picture: Image, x: float, y: float, title: str) -> None:
    graph.setImageAlign(2, 1)
    graph.drawImage(picture, x, y)
    graph.setLineWidth(1.0)
    half = picture.getWidth() / 2
    graph.drawRect(Rect(x - half, y, x + half, y + picture.getHeight()))
    graph.setTextAlign(2, 0)
    graph.setTextHeight(10.0)
    graph.drawText(x, y - 18, title)


large = Image(image)
large.resize(3 * columns, 3 * rows)
show(large, 378.0, 320.0, f'Height at 500 hPa, {low:.0f} to {high:.0f} m, sixteen colours')
for x, count in ((200.0, 8), (556.0, 4)):
    small = Image(image)
    small.resize(columns * 3 // 2, rows * 3 // 2)
    small.toIndexed(count)
    show(small, x, 120.0, f'{small.getNumColors()} colours')
if not graph.close():
    sys.exit(1)
