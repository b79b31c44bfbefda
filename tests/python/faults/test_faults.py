"""What becomes of files while the machine or somebody else goes wrong: every writer and every reader in turn.

A fault gives 0 and a message with the name of the file, leaves nothing that a reader takes for whole, and what is done
next goes as if nothing had been.
"""

from pathlib import Path
import contextlib
import os
import re
import signal
import subprocess
import sys
import tempfile

import pytest

from Yul import EarthPoints, GribFile, Grid, GridYulFile, MapFile, WmoParse, WmoProduct
from gribwriter import LatLon, grib2, uint
from jobs import GRID, MAKERS, READERS, WRITERS, file_of, octets
from running import python, without_sanitizers

HERE = Path(__file__).resolve().parent
MESSAGE = re.compile(r'[\w ]+(::\w+)?: ')
# The first two are not read by the library; the others say by their result alone that a file does not open.
QUIET = 'page', 'gif', 'feed', 'reports', 'cities', 'settings', 'feed index'
no_sanitizers = without_sanitizers('they reserve more than the limit')


def outcomes(text):
    """What `run_each` said: results by kind. A failure has a message of its own."""
    found, said = {}, []
    for line in text.splitlines():
        if match := re.fullmatch(r'([\w. ]+): (done|failed)', line):
            kind, result = match.groups()
            assert result == 'done' or said or kind in QUIET, kind
            found[kind], said = result, []
        else:
            assert MESSAGE.match(line), line
            said.append(line)
    return found


def in_child(program, *arguments, status=0):
    """The outcomes of a program of its own, which knows the jobs; it has to end with a status."""
    prolog = f'import os, resource, signal, sys\nsys.path.insert(0, {str(HERE)!r})\nfrom jobs import *\n'
    run = python(prolog + program, *arguments)
    assert run.returncode == status, run.stderr
    return outcomes(run.stderr)


def check_refused(kind, name, capfd, folder):
    """The writer fails on this name, says so, and the next file is fine."""
    capfd.readouterr()
    assert not WRITERS[kind](str(name))
    said = capfd.readouterr().err.splitlines()
    assert said and all(MESSAGE.match(line) and str(name) in line for line in said)
    again = str(folder / 'again')
    assert WRITERS[kind](again) and READERS[kind](again) is not None


@pytest.fixture
def tmp_path():
    """With a shorter name than elsewhere: that of a page has to fit into a description of it."""
    with tempfile.TemporaryDirectory(prefix='yul') as folder:
        yield Path(folder)


@pytest.fixture(scope='module')
def folder():
    with tempfile.TemporaryDirectory(prefix='yul') as made:
        yield Path(made)


@pytest.fixture(scope='module')
def samples(folder):
    """A folder with a good file of each kind."""
    for kind, make in MAKERS.items():
        assert make(file_of(folder, kind)), kind
    return folder


@pytest.fixture(scope='module')
def small_disk(folder):
    """A disk of 8 kB."""
    folder = folder / 'disk'
    folder.mkdir()
    mounted = subprocess.run(['mount', '-t', 'tmpfs', '-o', 'size=8k', 'tmpfs', str(folder)], capture_output=True)
    if mounted.returncode != 0:
        pytest.skip('no small disk: only root may mount one, and not everywhere')
    yield folder
    subprocess.run(['umount', '-l', str(folder)], check=True)


@pytest.mark.parametrize('kind', MAKERS)
def test_samples_are_read(kind, samples):
    assert READERS[kind](file_of(samples, kind)) is not None


@pytest.mark.parametrize('kind', WRITERS)
def test_a_full_device_is_told(kind, tmp_path, capfd):
    check_refused(kind, '/dev/full', capfd, tmp_path)


@pytest.mark.parametrize('kind', WRITERS)
def test_a_full_disk_leaves_nothing_that_looks_finished(kind, small_disk, tmp_path, capfd):
    check_refused(kind, small_disk / 'file', capfd, tmp_path)
    assert READERS[kind](str(small_disk / 'file')) is None
    for left in small_disk.iterdir():
        left.unlink()


def test_a_closed_pipe_ends_no_process(tmp_path):
    found = in_child('signal.signal(signal.SIGPIPE, signal.SIG_DFL)\n'
                     'run_each({f"closed {kind}": write for kind, write in WRITERS.items()}, "|exit 3 #")\n'
                     'run_each(WRITERS, sys.argv[1])', tmp_path)
    assert found == dict.fromkeys((f'closed {kind}' for kind in WRITERS), 'failed') | dict.fromkeys(WRITERS, 'done')


def test_what_is_not_allowed_is_told(samples, tmp_path):
    protected = tmp_path / 'protected'
    protected.mkdir()
    for sample in filter(Path.is_file, samples.iterdir()):
        (protected / sample.name).write_bytes(sample.read_bytes())
        (protected / sample.name).chmod(0)
    protected.chmod(0o555)
    try:
        found = in_child('if os.getuid() == 0:\n'
                         '    os.setgroups([]), os.setgid(65534), os.setuid(65534)\n'
                         'run_each({kind: READERS[kind] for kind in MAKERS}, sys.argv[1])\n'
                         'run_each({f"new {kind}": write for kind, write in WRITERS.items()}, sys.argv[1])', protected)
    finally:
        protected.chmod(0o755)
    assert found == dict.fromkeys([*MAKERS, *(f'new {kind}' for kind in WRITERS)], 'failed')


@without_sanitizers('the one for undefined behaviour looks at memory through pipes of its own')
def test_out_of_descriptors(samples, tmp_path):
    program = ('resource.setrlimit(resource.RLIMIT_NOFILE, (64, 64))\n'
               'jobs, folder = globals()[sys.argv[1]], sys.argv[2]\n'
               'held = []\n'
               'while sys.argv[3] == "full":\n'
               '    try:\n'
               '        held.append(os.open("/dev/null", os.O_RDONLY))\n'
               '    except OSError:\n'
               '        break\n'
               'run_each(jobs, folder)\n'
               'if held:\n'
               '    sys.stderr.flush()\n'
               '    for descriptor in held:\n'
               '        os.close(descriptor)\n'
               '    for job in jobs:\n'
               '        assert jobs[job](file_of(folder, job)) not in (None, False), job\n')
    for jobs, folder in (('WRITERS', tmp_path), ('READERS', samples)):
        assert set(in_child(program, jobs, folder, 'full').values()) == {'failed'}


@no_sanitizers
def test_out_of_memory(tmp_path):
    side = 16000
    field = grib2([[0.0] * 5] * 3, LatLon(60, 0, 0, 60))
    for small, large in ((uint(5, 4) + uint(3, 4), uint(side, 4) * 2), (uint(15, 4), uint(side * side, 4))):
        assert small in field
        field = field.replace(small, large)
    (tmp_path / 'grib').write_bytes(field)
    header = b'YulGRID4B\n\n\n1 1 1 1 1 1 1 1\nll,0,0,%d,%d,.01,.01\n' % (side, side)
    (tmp_path / 'native').write_bytes(header)
    os.truncate(tmp_path / 'native', len(header) + side * side * 4 + 100)
    (tmp_path / 'feed').write_bytes(b'\1\r\r\n001\r\r\nSAUS70 KWBC 061200\r\r\n')
    with open(tmp_path / 'feed', 'ab') as feed:
        for _ in range(1200):
            feed.write(b'x' * 500000 + b'\r\r\n')
    found = in_child('''
from Yul import Domain, Grids, ObjectAnal, StationData
def allocate(name):
    grid = Grid()
    return grid.setSize(16000, 16000) and grid.allocData()
def picture(name):
    return Image(30000, 30000).setPixel(29999, 29999, 1)
def analyse(name):
    analysis, stations = ObjectAnal(), StationData(1)
    analysis.setDomain(Domain('ll,0,0,16000,16000,.01,.01'))
    stations.add(EarthPoint(1.0, 1.0)), stations.setValue(0, 0, 1.0)
    return analysis.compute(stations, Grids())
jobs = {'grib': READERS['grib'], 'native': READERS['native binary'], 'feed': READERS['feed']}
quiet = {'allocate': allocate, 'picture': picture, 'analyse': analyse}
with open('/proc/self/statm') as sizes:
    size = int(sizes.read().split()[0]) * 4096
resource.setrlimit(resource.RLIMIT_AS, (size + (1 << 26),) * 2)
run_each(jobs, sys.argv[1])
for name, job in quiet.items():
    assert not job(name), name
assert all(write(sys.argv[1] + '/again') and READERS[kind](sys.argv[1] + '/again') for kind, write in WRITERS.items())
''', tmp_path)
    assert found == {'grib': 'failed', 'native': 'failed', 'feed': 'failed'}


def opened_grids(kind):
    def begin(name):
        grid, file = Grid(), kind(name)
        assert file.read(grid)
        return lambda: sum(1 for _ in iter(lambda: file.read(grid), 0))
    return begin


def opened_feed(name):
    file, product = WmoParse(), WmoProduct()
    assert file.open(name) and file.getProduct(product)
    return lambda: sum(1 for _ in iter(lambda: file.getProduct(product), 0))


def opened_map(name):
    file, line = MapFile(), EarthPoints()
    assert file.open(name)
    return lambda: sum(file.getLine(0, i, line) for i in range(3))


@pytest.fixture
def several(tmp_path, samples):
    """A long file of each kind, by kind."""
    for name, form in (('native text', GridYulFile.TEXT), ('native binary', GridYulFile.BINARY)):
        file = GridYulFile()
        assert file.open(str(tmp_path / name), GridYulFile.WRITE, form) and all(file.write(GRID) for _ in range(20))
        assert file.close()
    (tmp_path / 'grib').write_bytes((samples / 'grib').read_bytes() * 20)
    (tmp_path / 'feed').write_bytes((samples / 'feed').read_bytes() * 20)
    (tmp_path / 'map').write_bytes((samples / 'map').read_bytes())
    return tmp_path


@pytest.mark.parametrize('kind, begin, count', [
    ('native text', opened_grids(GridYulFile), 19), ('native binary', opened_grids(GridYulFile), 19),
    ('grib', opened_grids(GribFile), 19), ('feed', opened_feed, 5999), ('map', opened_map, 1)])
def test_a_file_that_is_cut_or_removed_while_open(kind, begin, count, several, capfd):
    name = several / kind
    go_on = begin(str(name))
    size = name.stat().st_size
    (several / 'kept').hardlink_to(name)
    name.unlink()  # the octets stay as long as somebody holds the file
    assert go_on() == count
    capfd.readouterr()
    (several / 'kept').rename(name)
    go_on = begin(str(name))
    os.truncate(name, size // 2 + 7)
    assert go_on() < count
    said = capfd.readouterr().err.splitlines()
    assert (kind == 'feed' or said) and all(MESSAGE.match(line) and str(name) in line for line in said)
    assert go_on() == 0


@pytest.mark.parametrize('kind', WRITERS)
def test_a_writer_that_is_killed_leaves_nothing_that_looks_finished(kind, samples, tmp_path):
    """The operating system kills who goes beyond the largest file that is allowed, behind the last octet that is."""
    whole = file_of(samples, kind)
    size = len(octets(whole))
    sizes = [0, 1, 7, *range(size // 7, size - 16, size // 7), *range(size - 16, size)]
    in_child('resource.setrlimit(resource.RLIMIT_CORE, (0, 0))\n'
             'for size in map(int, sys.argv[3:]):\n'
             '    child = os.fork()\n'
             '    if child == 0:\n'
             '        signal.signal(signal.SIGXFSZ, signal.SIG_DFL)\n'
             '        resource.setrlimit(resource.RLIMIT_FSIZE, (size, size))\n'
             '        WRITERS[sys.argv[1]](f"{sys.argv[2]}/{size}")\n'
             '        os._exit(0)\n'
             '    assert os.waitstatus_to_exitcode(os.waitpid(child, 0)[1]) == -signal.SIGXFSZ, size\n',
             kind, tmp_path, *sizes)
    assert [len(octets(tmp_path / str(size))) for size in sizes] == sizes
    # The mark that ends a GRIB message or a PNG picture may be lost: everything before it is there.
    taken = {size - left: found for left in sizes if (found := READERS[kind](str(tmp_path / str(left)))) is not None}
    assert all(found == READERS[kind](whole) for found in taken.values())
    assert max(taken, default=0) <= {'grib': 4, 'png': 16}.get(kind, 0)


@pytest.mark.parametrize('kind, opened', [
    ('grib', 'GribFile(), ()'), ('native text', 'GridYulFile(), (GridYulFile.TEXT,)'),
    ('native binary', 'GridYulFile(), (GridYulFile.BINARY,)')])
def test_a_process_that_is_killed_loses_what_it_wrote_last(kind, opened, samples, tmp_path, capfd):
    """A file of many fields: those in front are whole, and a message tells where one is cut."""
    name = str(tmp_path / 'left')
    in_child(f'name = sys.argv[1]\nfile, form = {opened}\n'
             'assert file.open(name, GridYulFile.WRITE, *form)\n'
             'while file.write(GRID):\n'
             '    if os.path.getsize(name) > 1000000:\n'
             '        os.kill(os.getpid(), signal.SIGKILL)\n', name, status=-signal.SIGKILL)
    whole, size = READERS[kind](file_of(samples, kind)), len(octets(file_of(samples, kind)))
    grid, file = Grid(), (GribFile if kind == 'grib' else GridYulFile)(name)
    count = 0
    while file.read(grid):
        assert grid.values.tolist() == whole
        count += 1
    assert count == os.path.getsize(name) // size > 0
    said = capfd.readouterr().err.splitlines()
    assert bool(said) == bool(os.path.getsize(name) % size) and all(MESSAGE.match(line) and name in line for line in said)


def test_a_side_file_that_is_a_pipe_keeps_nothing_waiting(samples, tmp_path):
    """Files that a text from outside may name: pipes that nobody writes to, then devices without an end."""
    for kind in ('feed', 'grib'):
        (tmp_path / kind).write_bytes(octets(file_of(samples, kind)))
    (tmp_path / 'settings').mkdir()
    kinds = 'map', 'cities', 'colors', 'font', 'symbols', 'conventions', 'logo.png', 'feed index', 'grib index'
    names = [tmp_path / 'settings' / 'yul.cfg', *(Path(file_of(tmp_path, kind)) for kind in kinds)]
    expected = {kind: 'done' if 'index' in kind else 'failed' for kind in [*kinds, 'settings']}
    for make in (os.mkfifo, lambda name: name.symlink_to('/dev/zero')):
        for name in names:
            name.unlink(missing_ok=True)
            make(name)
        assert expected == in_child('run_each({kind: READERS[kind] for kind in sys.argv[2:]}, sys.argv[1])', tmp_path,
                                    *expected)


@contextlib.contextmanager
def hail():
    """Signals of three kinds, some thousand a second, with handlers that do nothing else."""
    kinds = signal.SIGALRM, signal.SIGTERM, signal.SIGINT
    counts = dict.fromkeys(kinds, 0)

    def count(number, _):
        counts[number] += 1

    before = {kind: signal.signal(kind, count) for kind in kinds}
    sender = subprocess.Popen([sys.executable, '-c', 'import os, time\nwhile True:\n'
                               f'    for kind in {[int(kind) for kind in kinds]}:\n'
                               f'        os.kill({os.getpid()}, kind), time.sleep(0.0002)'])
    try:
        yield counts
    finally:
        sender.kill(), sender.wait()
        for kind, handler in before.items():
            signal.signal(kind, handler)
    assert all(counts.values())


@pytest.mark.parametrize('kind', WRITERS)
def test_signals_take_nothing_from_what_is_written(kind, tmp_path):
    calm = str(tmp_path / 'calm')
    assert WRITERS[kind](calm)
    shaken, piped = str(tmp_path / 'shaken'), str(tmp_path / 'piped')
    with hail() as counts:
        assert WRITERS[kind](shaken)
        while not all(counts.values()):
            assert WRITERS[kind](shaken)
        assert WRITERS[kind](f'|sleep 0.2; cat > {piped}')
    assert len(octets(shaken)) == len(octets(piped)) == len(octets(calm))
    assert READERS[kind](shaken) == READERS[kind](piped) or kind == 'page'


@pytest.mark.parametrize('kind', ['native text', 'native binary', 'feed'])
def test_signals_take_nothing_from_what_is_read(kind, samples, tmp_path):
    sample, fifo = file_of(samples, kind), tmp_path / 'fifo'
    os.mkfifo(fifo)
    feeder = subprocess.Popen(f'exec 3<{sample} >{fifo}; head -c 5000 <&3; sleep 0.2; cat <&3', shell=True)
    with hail():
        found = READERS[kind](str(fifo))
    assert feeder.wait() == 0
    assert found == READERS[kind](sample)
