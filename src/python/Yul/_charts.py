"""Charts in one call, and pages as pictures."""

from __future__ import annotations

import os  # others where they are needed: most pages need none

TYPE_CHECKING = False
if TYPE_CHECKING:
    from collections.abc import Mapping, Sequence
    from os import PathLike

LONGEST_NAME = 60  # octets of a file name that the device takes
CONTOURS = 12  # about as many when no interval is given
ROUND = 1, 2, 4, 5, 10

# How a page lies, and on an upright sheet its printable area in inches. A picture to embed stands upright in the
# fixed box that its header names.
LYING, UPRIGHT, EMBEDDED = 'land', 'port,sz=8:10.5', 'port,eps'
LETTER = 612, 792  # points


class Page:
    """A finished page of PostScript; a notebook shows it as a picture.

    path    the full name of the file, None for a page that was not given one
    data    the page, octets of PostScript
    """

    def __init__(self, path: str | None = None, data: bytes | None = None) -> None:
        self.path = path
        self._data = data

    @property
    def data(self) -> bytes:
        if self._data is None:
            with open(self.path, 'rb') as file:
                return file.read()
        return self._data

    def save(self, name: str | PathLike[str]) -> None:
        """Writes the page to a file: a picture when the name ends on ".png", else PostScript."""
        data = self.png() if os.fspath(name).lower().endswith('.png') else self.data
        if data is None:
            raise OSError('Page.save: Ghostscript is needed for a picture')
        with open(name, 'wb') as file:
            file.write(data)

    def png(self, dpi: int = 96) -> bytes | None:
        """The page as PNG; None where Ghostscript is not installed."""
        return render(self.data, dpi)

    def _repr_png_(self):
        return self.png()

    def __repr__(self) -> str:
        return f'<Yul.Page {self.path or f"of {len(self.data)} octets"}>'


def render(data, dpi):
    """A page of ours as PNG, turned so that it reads upright; None where Ghostscript is not installed.

    data    octets of PostScript
    """
    import shutil
    import subprocess
    program = shutil.which('gs')
    if program is None:
        return None
    head = data[:4096]
    is_lying = b'\n90 rotate\n' in head
    if head.startswith(b'%!PS-Adobe-3.0 EPSF'):
        sheet, start = ['-dEPSCrop'], ''
    else:
        width, height = reversed(LETTER) if is_lying else LETTER
        sheet = ['-dFIXEDMEDIA', f'-dDEVICEWIDTHPOINTS={width}', f'-dDEVICEHEIGHTPOINTS={height}']
        start = f'<< /Install {{ 0 {height} translate -90 rotate }} >> setpagedevice' if is_lying else ''
    command = [program, '-q', '-dSAFER', '-dBATCH', '-dNOPAUSE', '-sDEVICE=png16m', f'-r{dpi}', '-dTextAlphaBits=4',
               '-dGraphicsAlphaBits=4', *sheet, '-sOutputFile=%stdout', '-sstdout=%stderr', '-c', start, '-f', '-']
    result = subprocess.run(command, input=data, capture_output=True)
    if result.returncode != 0:
        raise OSError(f'Ghostscript: {(result.stderr or result.stdout).decode(errors="replace").strip()}')
    return result.stdout


def round_interval(low, high):
    """A round number that cuts a range into about a dozen parts; 0 for an empty or endless one."""
    import math
    spread = (high - low) / CONTOURS
    if not 0 < spread < math.inf:
        return 0.0
    power = 10.0 ** math.floor(math.log10(spread))
    return power * next(digit for digit in ROUND if digit * power >= spread or digit == ROUND[-1])


def _joined(items, separator=':'):
    """A list as a text of the library; a text stays as it is."""
    return items if isinstance(items, str) else separator.join(format(item, '.9g') if not isinstance(item, str) else item
                                                               for item in items)


def _domain(area, grid):
    """The domain of the map: the text's, the domain's own, or the grid's."""
    from . import Domain, DomainTool
    if area is None:
        domain = grid.getDomain()
        if not domain.isMiss():
            return domain
        area = Domain()
        area.set(grid.getNx(), grid.getNy())
        return area
    if not isinstance(area, str):
        return area
    domain = Domain()
    if not DomainTool.decode(area, domain):
        raise ValueError(f'contour_map: not a domain: {area}')
    return domain


def _contours(values, options):
    """The layers from below to above: filled bands, if any, and lines."""
    from . import ContPlot

    def layer(*params):
        contours = ContPlot()
        if options['levels'] is not None:
            if not contours.setValues(_joined(options['levels'])):
                raise ValueError(f'contour_map: not levels: {options["levels"]}')
        else:
            interval = round_interval(values.min, values.max) if options['interval'] is None else options['interval']
            if interval < 0 or not contours.setInterval(interval):
                raise ValueError(f'contour_map: not an interval: {interval}')
        if options['base'] is not None and not contours.setBase(options['base']):
            raise ValueError(f'contour_map: not a base: {options["base"]}')
        if values.min == values.max:  # a level on that value would draw the sides of all cells
            contours.setLow(values.max + abs(values.max) / 100 + 1)
        contours.setParam(','.join(filter(None, params)))
        return contours

    layers = []
    if options['fill']:
        colors = options['fill']
        layers.append(layer('line=off', 'fill' if colors is True else f'fill={_joined(colors)}'))
    if options['lines']:
        look = options['lines']
        wide = options['every'] if options['levels'] is None else 0
        layers.append(layer('' if look is True else f'line={look}', 'lab' if options['labels'] else '',
                            options['highs'] or '', f'every={wide}', options['params'] or ''))
    return layers


def _map(wanted):
    """The map under and over the contours; None for none. The graticule is the chart's own."""
    from . import MapPlot
    if not wanted or isinstance(wanted, MapPlot):
        return wanted or None
    background = MapPlot()
    background.setParam('nogrid')
    if isinstance(wanted, str):
        background.setParam(wanted)
    return background


def contour_map(grid: Grid, output: str | PathLike[str] | None = None, *, domain: Domain | str | None = None,
                interval: float | None = None, base: float | None = None, levels: Sequence[float] | str | None = None,
                fill: bool | str | Sequence[str] = False, lines: bool | str = True, labels: bool = True,
                highs: bool = True, every: int = 5, title: str | None = None, texts: Mapping[str, str] | None = None,
                map: bool | str | MapPlot = True, graticule: bool | str = True, bar: bool | str | None = None,
                color: bool = True, portrait: bool = False, params: str | None = None) -> Page:
    """Draws a grid as a contour map; one call, one page.

        contour_map(grid, "height.ps", domain="stereo:90:-25,53,-25,57,43,1.5", interval=60)

    grid        what to draw
    output      the file: ".ps" a page, ".eps" a picture to embed, ".png" a picture (by Ghostscript); None for none:
                the result shows itself in a notebook
    domain      the area of the map, a Domain or its text; the grid's own unless given
    interval, base    the step from level to level (a round one unless given), and a level to count from
    levels      the levels themselves, numbers, in the place of the interval
    fill        True fills the bands in the colours of the colour table, a list of colours in these
    lines       False for none, or an attribute text such as "blue:wi=2"
    labels, highs     labels in the lines; highs and lows marked
    every       every nth line is wider; 0 for none
    title, texts      the upper left label; other labels by position ("ul" to "lr"), codes as in Plot.formatLabel
    map         coastlines and boundaries; False for none, or what MapPlot.setParam takes ("land,sea,river,nocoast"),
                or a MapPlot. Areas are filled under everything, lines are drawn over the contours
    graticule   parallels and meridians, or an attribute text for them
    bar         a colour bar, True, "right" or "bottom"; with filled bands unless False
    color       False for shades of gray
    portrait    an upright page
    params      further parameters of ContPlot.setParam, for the lines

    Returns the Page. Raises ValueError for what cannot be drawn and OSError for what cannot be written.
    """
    from . import Plot, Range
    options = dict(interval=interval, base=base, levels=levels, fill=fill, lines=lines, labels=labels, highs=highs,
                   every=every, params=params)
    options['highs'] = highs and ('hilo' if color else 'hilo=black:black')
    values = Range()
    grid.getRange(values)
    if values.min == -9999 and values.max == -9999:
        raise ValueError('contour_map: the field has no values')
    area, layers, background = _domain(domain, grid), _contours(values, options), _map(map)
    kind = os.path.splitext(os.fspath(output))[1].lower() if output is not None else ''
    has_bar = bool(fill) if bar is None else bar
    device = [EMBEDDED if kind == '.eps' else UPRIGHT if portrait else LYING, 'color' if color else 'gray', 'de=p',
              f'bar={has_bar if isinstance(has_bar, str) else "right"}' if has_bar else '']

    def draw(name):
        plot = Plot()
        if not _open_quietly(plot, ','.join(filter(None, [name, *device]))):
            raise OSError(f'contour_map: unable to write to {output or name}')
        if not plot.setDomain(area):
            raise ValueError(f'contour_map: not an area to draw: {area}')
        for position, text in ({'ul': title} | (texts or {})).items():
            if text is not None and not plot.setLabel(position, text):
                raise ValueError(f'contour_map: no such position: {position}')
        if values.min == values.max:
            plot.setLabel('ll', '%a{ %u} everywhere')
        if background is not None:
            background.drawFill(plot)
        for i, contours in enumerate(layers):
            if i == len(layers) - 1:  # over the bands, under the lines
                plot.drawGraticule(*[graticule] if isinstance(graticule, str) else []) if graticule else None
            if not contours.drawLines(plot, grid):
                raise ValueError(f'contour_map: the field has no values on this map: {area}')
        if background is not None:
            background.drawLines(plot)
        for contours in layers:
            contours.drawTexts(plot)
        plot.drawBorder()
        plot.drawLabels()
        if not plot.close():
            raise OSError(f'contour_map: unable to write all of the page to {output or name}')

    return _draw_to(draw, output, kind)


def _open_quietly(plot, params):
    """Opens a plot without the notice where it goes: that name is not the one it ends with."""
    from . import Yul
    if not Yul.checkMessage(Yul.PRINT):
        return plot.open(params)
    Yul.setMessageLevel('-print')
    try:
        return plot.open(params)
    finally:
        Yul.setMessageLevel('+print')


def _draw_to(draw, output, kind):
    """Draws to a file that gets its name once it is finished."""
    path = None if output is None else os.path.abspath(output)
    part = f'{path}.{os.getpid()}.part'
    if path is not None and kind != '.png' and ',' not in part and len(os.fsencode(part)) <= LONGEST_NAME:
        try:
            draw(part)
            os.replace(part, path)
        finally:
            if os.path.exists(part):
                os.remove(part)
        return Page(path)
    import shutil
    import tempfile
    with tempfile.TemporaryDirectory(prefix='yul') as folder:
        name = os.path.join(folder, 'page.ps')
        draw(name)
        with open(name, 'rb') as file:
            page = Page(path, file.read())
        if kind == '.png':
            page.save(path)
        elif path is not None:
            shutil.move(name, path)
    return page
