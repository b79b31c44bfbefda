"""examples/contour_map.py as a user runs it: the pages it draws, and what it says to bad input."""

import os
import re
import resource
import stat
import subprocess
import sys

import numpy as np
import pytest

import gribwriter

AREA = gribwriter.LatLon(60, -30, 40, 0)
FIELD = 5500 + 2.0 * np.arange(31)[None, :] + 10.0 * np.arange(21)[:, None]


@pytest.fixture
def draw(root, tmp_path):
    """Runs the example in an empty folder and returns what became of it."""
    folder = tmp_path / 'out'
    folder.mkdir()

    def draw(*arguments, **options):
        result = subprocess.run([sys.executable, root / 'examples' / 'contour_map.py', *map(str, arguments)],
                                cwd=folder, capture_output=True, text=True, timeout=60, **options)
        result.files = sorted(os.listdir(folder))
        result.folder = folder
        return result

    return draw


def segments(page):
    """Number of two-point lines on a page."""
    return len(re.findall(r'^%%PL:2$', page, re.MULTILINE))


def test_the_shipped_file_becomes_a_finished_page(draw, root):
    result = draw(root / 'examples' / 'data' / 'height500.grib2', '--interval', 60, '--output', 'map.ps')
    assert (result.returncode, result.stderr, result.files) == (0, '', ['map.ps'])
    page = (result.folder / 'map.ps').read_text()
    assert page.startswith('%!PS-Adobe-1.0') and page.endswith('%%EOF\n')
    assert segments(page) > 1000
    assert '90 rotate' in page and '0 setgray' in page


@pytest.mark.parametrize('options, name, has, has_not', [
    ((), 'yul.ps', '90 rotate', 'setrgbcolor'),
    (('--portrait',), 'yul.ps', '.25 inch .25 inch translate', '90 rotate'),
    (('--device', 'eps'), 'yul.eps', '%%BoundingBox', 'setrgbcolor'),
    (('--no-labels',), 'yul.ps', '%%PL:2', 'setrgbcolor'),
    (('--color', 'red'), 'yul.ps', '1.00 0.00 0.00 setrgbcolor', 'setgray'),
    (('--domain', 'stereo:90:-15,50,-15,21,15,1'), 'yul.ps', '%%PL:2', 'setrgbcolor'),
    (('--domain', 'lambert:45:-15,50,-15,21,15,1'), 'yul.ps', '%%PL:2', 'setrgbcolor'),
    (('--domain', 'merc:0:-15,50,-15,21,15,1'), 'yul.ps', '%%PL:2', 'setrgbcolor'),
], ids=lambda value: ' '.join(value) if isinstance(value, tuple) else '')
def test_options_show_on_the_page(draw, write_grib, options, name, has, has_not):
    result = draw(write_grib(gribwriter.grib2(FIELD, AREA)), '--interval', 10, *options)
    assert (result.returncode, result.stderr, result.files) == (0, '', [name])
    page = (result.folder / name).read_text()
    assert has in page and has_not not in page


@pytest.mark.parametrize('options, name, width, height', [
    ((), 'yul.ps', 756, 576),
    (('--portrait',), 'yul.ps', 576, 756),
    (('--device', 'eps'), 'yul.eps', 756, 576),
])
def test_the_picture_lies_within_its_sheet_or_box(draw, write_grib, options, name, width, height):
    page = (draw(write_grib(gribwriter.grib2(FIELD, AREA)), *options).folder / name).read_text()
    places = np.array(re.findall(r'^(\S+) (\S+) (?:mv|ln)$', page, re.MULTILINE), float)
    assert np.all(places >= 0) and np.all(places <= (width, height))
    assert np.ptp(places[:, 0]) > 0.8 * width
    if name == 'yul.eps':
        assert f'%%BoundingBox: 0 0 {width} {height}\n' in page and 'rotate' not in page


def test_contours_have_labels_and_a_round_interval(draw, write_grib):
    name = write_grib(gribwriter.grib2(FIELD * 1.07, AREA))
    labelled, bare = ((draw(name, *options).folder / 'yul.ps').read_text() for options in ((), ('--no-labels',)))
    strokes = [len(re.findall(r'^%%PL:(?!2$)', page, re.MULTILINE)) for page in (labelled, bare)]
    assert strokes[0] > 1.2 * strokes[1]
    given = (draw(name, '--no-labels', '--interval', 40).folder / 'yul.ps').read_text()  # above 278 / 12
    assert given.partition('%%Begin plot')[2] == bare.partition('%%Begin plot')[2]


@pytest.mark.parametrize('value', [0, 5500, -40])
def test_a_flat_field_has_no_contours(draw, write_grib, value):
    name = write_grib(gribwriter.grib2(0 * FIELD + value, AREA))
    assert segments((draw(name, '--interval', 10).folder / 'yul.ps').read_text()) < 200


def test_a_smaller_interval_draws_more(draw, write_grib):
    name = write_grib(gribwriter.grib2(FIELD, AREA))
    counts = []
    for interval in (40, 10):
        draw(name, '--interval', interval)
        counts.append(segments((draw(name, '--interval', interval).folder / 'yul.ps').read_text()))
    assert counts[1] > 2.5 * counts[0] > 0


def test_match_chooses_the_field(draw, write_grib):
    name = write_grib(gribwriter.grib2(FIELD, AREA), gribwriter.grib2(FIELD - 5300, AREA, parameter=(0, 0, 0)))
    first, second = draw(name, '--output', 'a.ps'), draw(name, '--match', 'TEMPERATURE', '--output', 'b.ps')
    assert (first.returncode, second.returncode) == (0, 0)
    assert 'emperature' in second.stdout and 'emperature' not in first.stdout
    missing = draw(name, '--match', 'humidity')
    assert missing.returncode == 1 and 'emperature' in missing.stderr and len(missing.stderr.splitlines()) == 1


def test_a_long_output_name_with_commas_and_bars_is_only_a_name(draw, write_grib, tmp_path):
    target = tmp_path / ('folder ' + 30 * 'x') / f'|a,b+{40 * "y"}.ps'
    target.parent.mkdir()
    result = draw(write_grib(gribwriter.grib2(FIELD, AREA)), '--output', target)
    assert (result.returncode, result.stderr) == (0, '')
    assert [path.name for path in target.parent.iterdir()] == [target.name]


MESSAGE = gribwriter.grib2(FIELD, AREA)
BAD_FILES = {
    'empty': b'',
    'not GRIB': b'This is a text about something else.\n' * 200,
    'almost GRIB': b'GRIB' + bytes(200),
    'head only': MESSAGE[:100],
    'cut in the data': MESSAGE[:-400],
}


@pytest.mark.parametrize('octets', BAD_FILES.values(), ids=BAD_FILES)
def test_a_bad_file_gives_one_message_and_no_page(draw, write_grib, octets):
    result = draw(write_grib(octets, name='bad.grib'))
    assert result.returncode == 1 and result.files == []
    assert len(result.stderr.splitlines()) == 1 and 'bad.grib' in result.stderr
    assert result.stdout == ''


@pytest.mark.parametrize('arguments, word', [
    (['{folder}/nowhere.grib'], 'nowhere.grib'),
    (['{folder}'], '{folder}'),
    (['{file}', '--domain', 'no such place'], 'no such place'),
    (['{file}', '--domain', 'lambert:x,1,2,3'], 'lambert:x,1,2,3'),
    (['{file}', '--output', '{folder}/nowhere/map.ps'], 'nowhere/map.ps'),
    (['{file}', '--output', '{folder}'], '{folder}'),
    (['{file}', '--output', '{pipe}'], 'not a file to write to'),
    (['{file}', '--output', '{file}'], 'replace the field'),
    (['{pipe}'], 'not a file'),
    (['{file}', '--interval', 'nan'], 'interval'),
    (['{file}', '--interval', 'wide'], 'wide'),
    (['{file}', '--interval', '-5'], 'interval'),
    (['{file}', '--color', 'nocolour'], 'nocolour'),
    (['{file}', '--domain', 'stereo:-90:0,-70,100,21,21,1'], 'no values on this map'),
    (['{file}', '--domain', 'll,50,120,21,21,1,1'], 'no values on this map'),
    (['{file}', '--domain', 'll,-50,-15,21,21,1,1'], 'no values on this map'),
])
def test_a_bad_request_gives_one_message_and_no_page(draw, write_grib, tmp_path, arguments, word):
    places = {'file': write_grib(MESSAGE), 'folder': str(tmp_path / 'elsewhere'), 'pipe': str(tmp_path / 'pipe')}
    os.mkdir(places['folder'])
    os.mkfifo(places['pipe'])
    result = draw(*(argument.format(**places) for argument in arguments))
    with open(places['file'], 'rb') as file:
        assert file.read() == MESSAGE
    assert stat.S_ISFIFO(os.stat(places['pipe']).st_mode)
    assert result.returncode == 1 and result.files == [] and os.listdir(places['folder']) == []
    assert len(result.stderr.splitlines()) == 1 and word.format(**places) in result.stderr


@pytest.mark.skipif(os.geteuid() == 0, reason='root may write everywhere')
def test_a_folder_that_may_not_be_written_to_gives_one_message(draw, write_grib, tmp_path):
    folder = tmp_path / 'closed'
    folder.mkdir(mode=0o500)
    result = draw(write_grib(MESSAGE), '--output', folder / 'map.ps')
    assert result.returncode == 1 and len(result.stderr.splitlines()) == 1 and os.listdir(folder) == []


def test_a_page_that_does_not_fit_on_the_disk_gives_one_message(draw, write_grib):
    few = resource.RLIMIT_FSIZE, (20000, 20000)
    result = draw(write_grib(MESSAGE), '--interval', 1, preexec_fn=lambda: resource.setrlimit(*few))
    assert (result.returncode, len(result.stderr.splitlines()), result.files) == (1, 1, [])


def test_a_page_that_was_there_stays_when_drawing_fails(draw, write_grib, tmp_path):
    page = tmp_path / 'map.ps'
    page.write_text('the old page')
    assert draw(write_grib(b'', name='bad.grib'), '--output', page).returncode == 1
    assert page.read_text() == 'the old page'


def test_every_option_is_explained(draw):
    text = draw('--help').stdout
    for option in ('--match', '--domain', '--interval', '--device', '--output', '--portrait', '--color', '--labels'):
        assert option in text
