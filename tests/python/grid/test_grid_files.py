"""The library's own grid files as the flat module and the package see them."""

import os

import numpy as np
import pytest

import _Yul as y
from Yul import Date, Domain, Filename, ForeTime, Grid, GridFile, Grids, GridSpec, GridYulFile, Level, String, VarName
from running import python, without_sanitizers

RANDOM = np.random.default_rng(20)
KEYWORDS = ('ll', 'ps', 'lamb', 'me', 'ortho', 'gnom', 'moll', 'lambaz', 'alb', 'sat', 'radial')
LEVELS = (Level.SFC, Level.PRES, Level.MSL, Level.HGT, Level.SIGMA, Level.HYBRID, Level.DEPTH, Level.THETA, Level.ATMOS)
SPANS = (ForeTime.ACC, ForeTime.AVG, ForeTime.MAX, ForeTime.MIN)


def thousandths(low, high):
    """A number that six decimals keep."""
    return round(float(RANDOM.uniform(low, high)), 3)


def random_domain(rows, columns):
    keyword = str(RANDOM.choice(KEYWORDS))
    lat, lon = thousandths(-80, 80), thousandths(-180, 180)
    reference = f':{thousandths(-89, 89)}:{thousandths(-180, 180)}' if RANDOM.random() < 0.5 else ''
    if keyword in ('lamb', 'alb') and RANDOM.random() < 0.5:
        reference = f':{"e:" if RANDOM.random() < 0.2 else ""}40:-95:30:60'
    text = f'{keyword}{reference},{lat},{lon},{columns},{rows},{thousandths(0.01, 3)},{thousandths(0.01, 3)}'
    return Domain(text)


def random_grid():
    rows, columns = (int(n) for n in RANDOM.integers(1, 9, 2))
    grid = Grid(columns, rows)
    grid.values[...] = RANDOM.integers(0, 2**32, (rows, columns), np.uint32).view(np.float32)
    grid.values[RANDOM.random((rows, columns)) < 0.2] = -9999
    grid.setDomain(random_domain(rows, columns))
    date = Date(int(RANDOM.integers(1950, 2050)), int(RANDOM.integers(1, 13)), int(RANDOM.integers(1, 29)),
                int(RANDOM.integers(0, 24)), int(RANDOM.integers(0, 60)), float(RANDOM.integers(0, 60)))
    grid.setDate(date)
    grid.setDatim(str(date))
    kind = int(RANDOM.choice(LEVELS))
    grid.setLevel(Level(kind, float(RANDOM.integers(0, 1000)) / 4, *([float(RANDOM.integers(0, 30))] * int(RANDOM.random() < 0.3))))
    hours = sorted(int(n) for n in RANDOM.integers(0, 400, 2))
    grid.setForeTime(ForeTime(hours[0]) if RANDOM.random() < 0.5 else ForeTime(int(RANDOM.choice(SPANS)), *hours))
    grid.setVar(VarName.get(int(RANDOM.integers(VarName.getNum()))).getName())
    grid.setUnits(str(RANDOM.choice(['K', 'm s-1', 'kg m-2 s-1', '%', 'gpm'])))
    grid.setInfo(f'field {RANDOM.integers(1000)} [{grid.getUnits()}]')
    return grid


def said(grid):
    """What a file keeps of a grid, beside its values."""
    text = String()
    grid.getDomain().toString(text)
    return (grid.getDatim(), grid.date.getSeconds(), grid.getInfo(), str(text), grid.getVar().getIndex(),
            grid.getUnits().replace(' ', '_'), str(grid.getForeTime()), (grid.getNx(), grid.getNy()))


def test_any_grid_survives_a_file(tmp_path):
    name = str(tmp_path / 'grids')
    before = y.cvar.Domain_earth_rad
    for version, form in ((4, GridYulFile.BINARY), (4, GridYulFile.TEXT)):
        grids = [random_grid() for _ in range(60)]
        with GridYulFile(name, GridYulFile.WRITE, form) as file:
            file.setVer(version)
            assert all(file.write(grid) for grid in grids)
        back = list(GridFile(name))
        assert len(back) == len(grids)
        for grid, other in zip(grids, back):
            assert said(other) == said(grid)
            assert other.getLevel().compare(grid.getLevel())
            if form == GridYulFile.BINARY:
                assert other.values.tobytes() == grid.values.tobytes()
            else:
                assert np.array_equal(np.where(np.isnan(grid.values), np.float32(-9999), grid.values), other.values)
    assert y.cvar.Domain_earth_rad == before


def test_a_binary_file_is_the_values_as_numpy_writes_them(tmp_path):
    grid = Grid.from_array(RANDOM.normal(280, 10, (4, 5)), 'll,45,10,5,4,1,1')
    with GridYulFile(str(tmp_path / 'grid'), 1, 2) as file:
        file.write(grid)
    octets = (tmp_path / 'grid').read_bytes()
    assert octets.endswith(grid.values.astype('>f4').tobytes() + b'\n')
    assert octets.startswith(b'YulGRID4B\n')


@pytest.fixture
def three(tmp_path):
    """A file of three grids, of levels 1000, 850 and 500."""
    name = str(tmp_path / 'three')
    with GridYulFile(name, GridYulFile.WRITE, GridYulFile.BINARY) as file:
        for i, level in enumerate(('1000mb', '850mb', '500mb')):
            file.write(Grid.from_array(np.full((2, 3), i), 'll,45,10,3,2,1,1', date='12Z 14 NOV 2026', level=level,
                                       fore='24', var='TMP'))
    return name


def test_files_are_iterables_of_grids(three):
    for cls in (GridFile, GridYulFile):
        assert [grid.values[0, 0] for grid in cls(three)] == [0, 1, 2]
        with cls(three) as file:
            records = file.inventory()
            records = records if isinstance(records, list) else records.to_dict('records')
            assert [record['level'] for record in records] == [1000, 850, 500]
            assert file.rewind()
            assert [grid.values[0, 0] for grid in file.select(name='TMP', level=850)] == [1]
        with pytest.raises(OSError):
            list(cls(three + '.not'))
    grids, grid = Grids(), Grid()
    assert GridFile(three).read(grids) == 1 and len(grids) == 3
    assert GridFile(three).read(GridSpec('TMP,500mb,24h'), grid) == 1 and grid.values[0, 0] == 2


def test_a_pipe_is_read_like_a_file(three):
    program = ('from Yul import Grid, GridFile, GridSpec, Grids\n'
               'file, grid, grids = GridFile("-"), Grid(), Grids()\n'
               'print(file.peek(grid), str(grid.getLevel()), file.read(GridSpec("TMP,850mb"), grid), grid.values.sum(), '
               'file.read(grids), len(grids), file.rewind())')
    for cut, expected in ((None, '1 1000 hPa 1 6.0 1 1 0'), (-1, '1 1000 hPa 1 6.0 0 0 0')):
        octets = open(three, 'rb').read()[:cut]
        run = python(program, input=octets)
        assert run.stdout.decode().strip() == expected
        assert ('GridYulFile::' in run.stderr.decode()) == (cut is not None)


def test_grids_of_many_pieces(tmp_path, capfd):
    """Read into one grid, in whichever order; cut ones are not read."""
    name, grid = str(tmp_path / 'large'), Grid()
    fields = [RANDOM.normal(280, 10, (301, 401)).astype('f4') for _ in range(3)]
    with GridYulFile(name, GridYulFile.WRITE, GridYulFile.BINARY) as file:
        for field in fields:
            assert file.write(Grid.from_array(field, 'll,45,10,401,301,0.1,0.1'))
    size = os.path.getsize(name)
    for octets, whole in ((size, 3), (size - 2, 2), (size - 2, 2), (size - fields[0].nbytes // 2, 2), (size // 2, 1)):
        os.truncate(name, octets)
        with GridYulFile(name) as file:
            for field in fields[:whole]:
                assert file.read(grid) == 1 and np.array_equal(grid.values, field)
            assert file.read(grid) == 0
        assert ('the values are cut off' in capfd.readouterr().err) == (whole < 3)


@without_sanitizers('they reserve more than the limit')
def test_an_absurd_size_from_a_pipe_takes_no_memory():
    program = ('import resource; from Yul import Grid, GridFile\n'
               'resource.setrlimit(resource.RLIMIT_AS, (1 << 29, 1 << 29))\n'
               'print(GridFile("-").read(Grid()))')
    octets = b'YulGRID4B\n\n\n1 1 1 1 1 1 1 1\nll,0,0,30000,30000,1,1\n' + b'x' * 1000
    run = python(program, input=octets)
    assert run.stdout == b'0\n'
    assert run.stderr == b'GridYulFile::readData: -: the values are cut off\n'


@pytest.mark.parametrize('octets, message', [
    (b'no grid\n', 'no grid begins here'),
    (b'YulGRID4\n', 'the header is cut off'),
    (b'YulGRID7\n\n\n', 'unknown version 7'),
    (b'YulGRID3\n\n\n1 1 1 1 1 1 1 1\nLL 0 0 1 1 0 5\n', 'invalid size: 0 x 5'),
    (b'YulGRID3\n\n\n1 1 1 1 1 1 1 1\nLL 0 0 1 1 65536 65536\n', 'invalid size: 65536 x 65536'),
])
def test_a_faulty_file_gives_one_message(octets, message, tmp_path, capfd):
    (tmp_path / 'faulty').write_bytes(octets)
    name = str(tmp_path / 'faulty')
    grid = Grid()
    assert GridYulFile(name).read(grid) == 0
    assert capfd.readouterr().err == f'GridYulFile::readHdr: {name}: {message}\n'
    assert GridYulFile(name).peek(grid) == 0
    assert capfd.readouterr().err == f'GridYulFile::peek: {name}: {message}\n'


def test_what_is_not_read_is_named(tmp_path, capfd):
    for octets, message in ((b'CDF\1', 'netCDF files are not supported'), (b'other', 'Unknown type of file')):
        (tmp_path / 'file').write_bytes(octets)
        name = str(tmp_path / 'file')
        assert y.GridFile_open(y.new_GridFile(), name) == 0
        assert capfd.readouterr().err == f'GridFile::open: {message}: {name}\n'
    names = Filename()
    assert GridFile().open(names) == 0
    assert capfd.readouterr().err == 'GridFile::open: No file name\n'


def test_a_full_device_is_reported(capfd):
    grid = Grid.from_array(np.zeros((2, 2)), 'll,0,0,2,2,1,1')
    file = GridFile('/dev/full', GridFile.WRITE, GridYulFile.BINARY)
    assert (file.write(grid), file.close()) == (0, 0)
    assert capfd.readouterr().err == ('GridYulFile::write: Unable to write: /dev/full\n'
                                      'GridYulFile::close: Unable to write: /dev/full\n')


def test_settings_reach_the_reader_of_each_form(tmp_path):
    grid = Grid.from_array(np.array([[1, 999], [3, 4]]), 'll,0,0,2,2,1,1', date='12Z 14 NOV 2026', level='500mb',
                           fore='0', var='HGT')
    name = str(tmp_path / 'grid')
    file = GridFile()
    assert (file.setVer(3), file.setFormat('%.1f'), file.setMissValue(999.0), file.setValueBits(12)) == (1, 1, 1, 1)
    assert (file.setMaxBad(5), file.setMaxBad(5, 1.0)) == (1, 1)
    assert file.write(name, GridYulFile.TEXT, grid) and file.close()
    assert open(name).read().endswith('2 2\n1.0\n999.0\n3.0\n4.0\n')
    back = Grid()
    assert file.read(name, back) == 1 and back.getVersion() == 3
    assert back.values.tolist() == [[1, -9999], [3, 4]]
    assert file.write(name, GridFile.GRIB, grid) and file.close()
    assert GridFile.checkType(name) == GridFile.GRIB
    for kind, files, answer in (('GridFile', y.new_GridFile(), GridFile.GRIB), ('GribFile', y.new_GribFile(), 1),
                                ('GridYulFile', y.new_GridYulFile(), 0)):
        check = getattr(y, f'{kind}_checkType')
        assert (check(name), check(files, name)) == (answer, answer)
