"""examples/dask_fields.py gives the same results whichever way it runs."""

import re
import subprocess
import sys

import pytest

from running import HAS_SANITIZERS

if HAS_SANITIZERS:
    pytest.skip('a cluster of workers takes too long with sanitizers', allow_module_level=True)
pytest.importorskip('dask', reason='dask is not installed')


@pytest.mark.parametrize('how', ['all', 'distributed'])
def test_every_way_gives_the_same(root, tmp_path, how):
    pytest.importorskip('distributed', reason='dask.distributed is not installed')
    options = [] if how == 'all' else ['--how', how]
    run = subprocess.run([sys.executable, root / 'examples' / 'dask_fields.py', '--messages', '20', '--workers', '2',
                          '--maps', tmp_path, *options], capture_output=True, text=True, timeout=300)
    assert run.returncode == 0, run.stderr
    ways = re.findall(r'^(\w+): 20 messages in', run.stdout, re.MULTILINE)
    assert ways == (['serial', 'threads', 'processes', 'distributed'] if how == 'all' else [how])
    assert len(list(tmp_path.glob('*.ps'))) == 20 and 'Creating' not in run.stdout
    mean = float(re.search(r'([\d.]+) gpm over western Europe', run.stdout)[1])
    assert 5300 < mean < 5800
