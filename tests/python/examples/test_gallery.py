"""Every script of the gallery draws a page, and the gallery shows its picture."""

from pathlib import Path
import subprocess
import sys

import pytest

ROOT = Path(__file__).resolve().parents[3]
SCRIPTS = sorted((ROOT / 'examples' / 'gallery').glob('*.py'))
LARGEST = 120_000  # octets


@pytest.mark.parametrize('script', SCRIPTS, ids=lambda script: script.stem)
def test_script_draws_a_page_that_the_gallery_shows(script, tmp_path):
    result = subprocess.run([sys.executable, script, 'page.ps'], cwd=tmp_path, capture_output=True, text=True, timeout=120)
    assert (result.returncode, result.stderr) == (0, '')
    assert [path.name for path in tmp_path.iterdir()] == ['page.ps']
    page = (tmp_path / 'page.ps').read_text()
    assert page.count('stroke\n') + page.count('fill\n') + page.count('readhexstring') > 10
    assert page.endswith('%%EOF\n')
    picture = ROOT / 'docs' / 'gallery' / f'{script.stem}.png'
    assert 0 < picture.stat().st_size < LARGEST
    assert f'(gallery/{script.stem}.png)](../examples/gallery/{script.name})' in (ROOT / 'docs' / 'gallery.md').read_text()
