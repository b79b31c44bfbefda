"""What the tests of faults write and read: one function for each kind of file.

A writer says whether every call succeeded; a reader returns what it found, or None when the library did not take it.
"""

from pathlib import Path
import sys

import numpy as np

from Yul import (CityFile, ColorMap, EarthPoint, EarthPoints, Filename, GribFile, Graph, Grid, GridYulFile, Image, MapFile,
                 MapFileHeader, NameConv, Plot, SfcWmoData, SfcWmoFile, WmoParse, WmoProduct, Yul, settings, start)

RANDOM = np.random.default_rng(5)
FIELD = RANDOM.integers(0, 60000, (150, 100)) / 8
GRID = Grid.from_array(FIELD, 'll,0,0,100,150,1,1', date='12Z 14 NOV 2026', level='500mb', fore='0', var='HGT')
PLACES = [(float(lat), float(lon)) for lat, lon in RANDOM.integers(-80, 80, (3000, 2))]
IMAGE = Image(200, 200)
for column, row in np.ndindex(200, 200):
    IMAGE.setPixel(column, row, int(FIELD[row % 150, column % 100] * 997) % 0xffffff)


def write_page(name):
    graph = Graph()
    opened = graph.open('postscript', name)
    drawn = opened and all(graph.drawLine(0.0, 0.0, lat / 100, lon / 100) for lat, lon in PLACES if lon != 0)
    return bool(drawn and graph.close())


def write_native(form):
    def write(name):
        file = GridYulFile()
        written = file.write(name, form, GRID)
        return bool(file.close() and written)
    return write


def write_grib(name):
    file = GribFile()
    opened = file.open(name, GridYulFile.WRITE)
    written = opened and file.write(GRID)
    return bool(file.close() and written)


def write_map(name):
    header, line, file = MapFileHeader(), EarthPoints(), MapFile()
    header.setName('route'), header.setScale(10), header.setKind(MapFileHeader.LINE)
    for place in PLACES:
        line.add(EarthPoint(*place))
    return bool(file.addLayer(header) and file.addLine(line, 0) and file.write(name))


WRITERS = {
    'page': write_page,
    'png': lambda name: bool(IMAGE.write(name)),
    'gif': lambda name: bool(IMAGE.writeGif(name)),
    'native text': write_native(GridYulFile.TEXT),
    'native binary': write_native(GridYulFile.BINARY),
    'grib': write_grib,
    'map': write_map,
}


def octets(name):
    try:
        return Path(name).read_bytes()
    except OSError:
        return b''


def read_native(form):
    def read(name):
        grid = Grid()
        return grid.values.tolist() if GridYulFile().read(name, form, grid) else None
    return read


def read_grib(name):
    grid = Grid()
    return grid.values.tolist() if GribFile(name).read(grid) else None


def read_png(name):
    image = Image()
    return [image.getPixel(i, i) for i in range(image.getWidth())] if image.read(name) else None


def read_map(name):
    file, lines = MapFile(), EarthPoints()
    if not file.open(name):
        return None
    return lines.getNum() if file.getLine(0, 0, lines) else None


def texts_of(feed):
    product, texts = WmoProduct(), []
    while feed.getProduct(product):
        texts.append(product.getText())
    return texts or None


def read_feed(name):
    file = WmoParse()
    return texts_of(file) if file.open(name) else None


def read_feed_index(name):
    """The bulletins of the feed beside the index, chosen by a heading: the index tells where they are."""
    file = WmoParse()
    file.setHeader('SAUS7')
    return texts_of(file) if file.open(Filename(str(Path(name).with_name('feed')), name)) else None


def read_grib_index(name):
    """The first point of the fields of the file beside the index."""
    file, grid, found = GribFile(Filename(str(Path(name).with_name('grib')), name)), Grid(), []
    while file.read(grid):
        found.append(grid.getValue(0, 0))
    return found or None


def read_reports(name):
    file, report, texts = SfcWmoFile(name), SfcWmoData(), []
    while file.read(report):
        texts.append(report.getText())
    return texts or None


def read_cities(name):
    cities = CityFile(name)
    return cities.getNum() or None


def read_colors(name):
    colors = ColorMap(300)
    return colors.getNum() if colors.read(name) else None


def on_page(choose):
    """Something that a page is given by the name of a file."""
    def read(name):
        graph = Graph()
        return 1 if graph.open('postscript', '/dev/null') and choose(graph, name) else None
    return read


def read_logo(name):
    plot = Plot()
    return 1 if plot.open('/dev/null,de=p') and plot.drawImage(name, 0.5, 0.5, 'cc') else None


def read_settings(name):
    settings['probe'] = None
    start(['faults', '-default=' + name])
    return settings['probe'] or None


def read_conventions(name):
    database = Yul.getDatabasePath()
    settings['file_path'], settings['name_conv'] = str(Path(name).parent), Path(name).name
    found = NameConv().set('probe')
    Yul.setDatabasePath(database)
    return found or None


READERS = {
    'page': lambda name: octets(name) if octets(name).endswith(b'%%EOF\n') else None,
    'png': read_png,
    'gif': lambda name: octets(name) if octets(name).endswith(b'\0;') else None,
    'native text': read_native(GridYulFile.TEXT),
    'native binary': read_native(GridYulFile.BINARY),
    'grib': read_grib,
    'map': read_map,
    'feed': read_feed,
    'reports': read_reports,
    'cities': read_cities,
    'colors': read_colors,
    'font': on_page(Graph.setFont),
    'symbols': on_page(Graph.setSymbol),
    'logo.png': read_logo,
    'settings': read_settings,
    'conventions': read_conventions,
    'feed index': read_feed_index,
    'grib index': read_grib_index,
}
FEED = ''.join(f'\1\r\r\n{i:03}\r\r\nSAUS70 KWBC 0612{i % 60:02}\r\r\nMETAR KDEN 061253Z 24010KT CLR 07/M05 A3017=\r\r\n\3'
               for i in range(300))


def make_feed(name):
    return bool(Path(name).write_text(FEED, newline=''))


def make_shipped(shipped):
    """A copy of a file that comes with the library."""
    def make(name):
        return bool(Path(name).write_bytes(Path(Yul.getDatabasePath(), shipped).read_bytes()))
    return make


def make_text(text):
    return lambda name: bool(Path(name).write_text(text))


MAKERS = WRITERS | {
    'feed': make_feed,
    'reports': make_feed,
    'cities': make_shipped('sao.cty'),
    'colors': make_shipped('yul.clr'),
    'font': make_shipped('bold.fnt'),
    'symbols': make_shipped('wx.smb'),
    'logo.png': lambda name: bool(IMAGE.write(name)),
    'settings': make_text('*.probe there\n'),
    'conventions': make_text('probe  %Y%m%d%h.............\n'),
    'feed index': make_text(''.join(f'{i * len(FEED) // 300} SAUS70 KWBC 0612{i % 60:02} / METAR\n' for i in range(300))),
    'grib index': make_text('0\n'),
}


def file_of(folder, kind):
    return f'{folder}/{kind.replace(" ", "_")}'


def run_each(jobs, folder):
    """Runs each job on its file in the folder; tells how it went behind what the library said."""
    for kind, job in jobs.items():
        result = job(file_of(folder, kind))
        print(f'{kind}: {"failed" if result in (None, False) else "done"}', file=sys.stderr, flush=True)
