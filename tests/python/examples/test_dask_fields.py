"""examples/dask_fields.py gives the same results whichever way it runs."""

import re
import subprocess
import sys

import pytest

from running import HAS_SANITIZERS

if HAS_SANITIZERS:
    pytest.skip('a cluster of workers takes too long with sanitizers', allow_module_level=True)
pytest.importorskip('dask', reason='dask is not installed')
pytest.importorskip('distributed', reason='dask.distributed is not installed')

WAYS = ['serial', 'threads', 'processes', 'distributed']


@pytest.fixture
def example(root, tmp_path):
    """Runs it; returns the ways of its table, what it says of the first message, and the pages that it keeps."""
    def run(*options, maps=None):
        keep = []
        if maps is not None:
            (tmp_path / maps).mkdir()
            keep = ['--maps', tmp_path / maps]
        done = subprocess.run([sys.executable, root / 'examples' / 'dask_fields.py', '--workers', '2', *options, *keep],
                              capture_output=True, text=True, timeout=300)
        assert done.returncode == 0, done.stderr
        ways = re.findall(r'^\| (\w+) \| [12] \| [\d.]+ \| [\d.]+ \| \d+ \| [\d.]+ \|$', done.stdout, re.MULTILINE)
        pages = {page.name: re.sub(rb'%%(Title|CreationDate).*', b'', page.read_bytes())
                 for page in (tmp_path / maps).glob('*.ps')} if maps is not None else {}
        assert 'Creating' not in done.stdout
        return ways, done.stdout.splitlines()[-1], pages
    return run


def test_all_ways_in_one_run_agree(example):
    ways, told, _ = example('--messages', '10', '--slice', '4', '--every', '10')  # it fails where the results differ
    mean, error = map(float, re.findall(r'([\d.]+) gpm', told))
    assert ways == WAYS and 5200 < mean < 5700 and 0 < error < 20


def test_every_way_draws_the_same_pages(example):
    found = {how: example('--messages', '9', '--slice', '2', '--every', '2', '--how', how, maps=how) for how in WAYS}
    _, told, pages = found['serial']
    assert sorted(pages) == [f'20261114{hour:02}.ps' for hour in range(0, 9, 2)] and all(map(len, pages.values()))
    for how, result in found.items():
        assert result == ([how], told, pages)
