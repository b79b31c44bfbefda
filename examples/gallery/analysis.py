"""Objective analysis: from reports to contours.

Above, reports of temperature, one in ten of them missing. Below, what `analyse` makes of them in three passes:
isotherms at every second degree, and nothing where fewer than three reports are near.
"""

from collections.abc import Callable
import sys
from typing import Any

import numpy as np

from Yul import ContPlot, Domain, EarthPoint, Grid, Plot, Point, Yul, analyse

MISS = -9999.0
domain = Domain('stereo:90:5,51,5,61,31,0.5')


def temperatures(lats: Any, lons: Any) -> Any:
    """A gradient to the north, a warm tongue in the west and a front that it drives against cold air, degrees C."""
    front = np.tanh((lons - 4 - 0.6 * (lats - 50)) / 1.5)
    return 13 - 0.9 * (lats - 50) - 4 * front + 2 * np.sin(np.radians(25 * lons)) * np.cos(np.radians(18 * lats))


def show(plot: Plot, draw: Callable[[], None]) -> None:
    """One panel: the map with its lines, what `draw` draws in it, and the frame."""
    plot.setDomain(domain)
    draw()
    plot.drawGraticule('gray60')
    plot.drawBorder()
    plot.drawLabels()


def draw_reports() -> None:
    graph, place = plot.getGraph(), Point()
    graph.setTextHeight(0.42)
    graph.setTextWeight(2.0)
    graph.setTextAlign(2, 2)
    for lat, lon, value in zip(lats.tolist(), lons.tolist(), values.tolist()):
        if domain.tran(EarthPoint(lat, lon), place) and domain.withinExt(place, -1):  # a spacing inside the frame
            graph.drawText(place.x, place.y, '-' if value == MISS else f'{value:.0f}')


def draw_analysis() -> None:
    for look in ('line=off,fill', 'line=gray20,lab,every=5'):
        contours = ContPlot()
        contours.setInterval(2.0)
        contours.setParam(look)
        contours.draw(plot, grid)


random = np.random.default_rng(11)
lats, lons = random.uniform(41, 61, 300), random.uniform(-18, 28, 300)
values = temperatures(lats, lons) + random.normal(0, 0.4, 300)
values[::10] = MISS
analysed = analyse(lats, lons, values, domain, variable='TMP[C]', filter=6, radius=7, passes=3, stations=3)
assert isinstance(analysed, Grid)  # one field in, one out
grid = analysed

Yul.setResrc('device', f'postscript,{sys.argv[1]},port,sz=8:10.5,color')
plot = Plot()
if not plot.open('pan=2x1'):
    sys.exit(1)
plot.setLabel('ul', 'Reports of temperature, °C')
show(plot, draw_reports)
plot.newPanel('')
plot.setLabel('ul', 'Analysis in three passes')
show(plot, draw_analysis)
if not plot.close():
    sys.exit(1)
