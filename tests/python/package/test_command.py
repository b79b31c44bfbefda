"""`python -m Yul` as people at a terminal use it."""

import json
import os
import pty
import shutil
import subprocess
import sys

import numpy as np
import pytest

from Yul import GribFile, Yul
import gribwriter

AREA = gribwriter.LatLon(52, 0, 50, 3)
FIELD = 5400 + 10 * np.arange(12.0).reshape(3, 4)
HEIGHT = gribwriter.grib2(FIELD, AREA, hours=24)
TEMPERATURE = gribwriter.grib2(FIELD - 5130, AREA, parameter=(0, 0, 0), level=(100, 85000))


@pytest.fixture
def command(tmp_path):
    folder = tmp_path / 'here'
    folder.mkdir()

    def command(*arguments, **options):
        options = {'cwd': folder, 'capture_output': True, 'timeout': 60, 'text': True} | options
        result = subprocess.run([sys.executable, '-m', 'Yul', *map(str, arguments)], **options)
        result.folder = folder
        return result

    command.folder = folder
    return command


# ---- ls ---------------------------------------------------------------------------------------------------------

def test_ls_lists_one_line_a_field(command, write_grib):
    result = command('ls', write_grib(HEIGHT, TEMPERATURE))
    title, first, second = result.stdout.splitlines()
    assert (result.returncode, result.stderr) == (0, '') and '\033' not in title
    assert title.split() == ['number', 'variable', 'level', 'forecast', 'valid', 'size', 'description']
    assert first.split()[:5] == ['1', 'HGT', '500', 'hPa', '24h'] and first.endswith('Geopotential height [gpm]')
    assert second.split()[:4] == ['2', 'TMP', '850', 'hPa'] and '4x3' in second


def test_ls_json_has_a_record_a_field(command, write_grib):
    name = write_grib(HEIGHT, TEMPERATURE)
    records = json.loads(command('ls', '--json', name).stdout)
    assert [(r['file'], r['number'], r['name'], r['level'], r['nx'], r['ny']) for r in records] == [
        (name, 1, 'HGT', 500, 4, 3), (name, 2, 'TMP', 850, 4, 3)]
    assert records[0]['hours'] == 24 and records[0]['valid'].endswith('Z')
    assert json.loads(command('ls', '--json', '--match', 'temperature', name).stdout) == records[1:]


def test_ls_reads_a_pipe_and_stops_with_its_reader(command, write_grib):
    with open(write_grib(HEIGHT), 'rb') as file:
        result = command('ls', '-', stdin=file)
    assert (result.returncode, len(result.stdout.splitlines())) == (0, 2)
    many = write_grib(*[HEIGHT] * 2000, name='many.grib')
    shell = subprocess.run(f'"{sys.executable}" -m Yul ls "{many}" | head -n 2', shell=True, capture_output=True, text=True)
    assert (shell.returncode, shell.stderr, len(shell.stdout.splitlines())) == (0, '', 2)


@pytest.fixture
def terminal():
    """Both ends of one, for tests that close them."""
    try:
        return pty.openpty()
    except OSError as error:
        pytest.skip(f'this machine has no terminals to give: {error}')


@pytest.mark.parametrize('variables, coloured', [({}, True), ({'NO_COLOR': '1'}, False), ({'TERM': 'dumb'}, False)])
def test_colours_only_for_a_terminal(command, write_grib, terminal, variables, coloured):
    name = write_grib(HEIGHT)
    near, far = terminal
    command('ls', name, capture_output=False, stdout=far, text=False,
            env={key: value for key, value in os.environ.items() if key != 'NO_COLOR'} | {'TERM': 'xterm'} | variables)
    os.close(far)
    written = os.read(near, 100000)
    os.close(near)
    assert (b'\033[' in written) == coloured and b'HGT' in written


def test_every_file_is_listed_though_one_fails(command, write_grib, tmp_path):
    result = command('ls', tmp_path / 'nowhere', write_grib(HEIGHT, name='a.grib'), write_grib(HEIGHT, name='b.grib'))
    assert result.returncode == Yul.NOFILE and len(result.stderr.splitlines()) == 1
    assert result.stdout.count('HGT') == 2 and 'a.grib:' in result.stdout


# ---- convert ----------------------------------------------------------------------------------------------------

def test_convert_writes_edition_1(command, write_grib):
    result = command('convert', write_grib(HEIGHT, TEMPERATURE), 'out.grib', '--decimals', 1)
    assert (result.returncode, result.stdout, result.stderr) == (0, 'out.grib: 2 of 2 fields\n', '')
    grids = list(GribFile(str(result.folder / 'out.grib')))
    assert [grid.getVersion() for grid in grids] == [1, 1] and os.listdir(result.folder) == ['out.grib']
    np.testing.assert_allclose(grids[1].values, FIELD - 5130, atol=0.051)


def test_convert_can_pick_fields(command, write_grib):
    result = command('convert', write_grib(HEIGHT, TEMPERATURE), 'out.grib', '--match', '850 hPa', '--bits', 8)
    assert result.stdout == 'out.grib: 1 of 1 fields\n'
    assert [grid.getVar().getName() for grid in GribFile(str(result.folder / 'out.grib'))] == ['TMP']


@pytest.mark.parametrize('options', [(), ('--to', 'text'), ('--to', 'native')])
def test_convert_writes_native_files_that_the_other_commands_read(command, write_grib, options):
    name = write_grib(HEIGHT, TEMPERATURE)
    assert command('convert', name, 'out', *options).stdout == 'out: 2 of 2 fields\n'
    listed = command('ls', name).stdout, command('ls', 'out').stdout
    assert [line.split()[:5] for line in listed[0].splitlines()] == [line.split()[:5] for line in listed[1].splitlines()]
    assert command('plot', 'out', '--match', 'temperature').returncode == 0
    assert command('convert', 'out', 'back.grb', '--decimals', 1).returncode == 0
    back = list(GribFile(str(command.folder / 'back.grb')))
    np.testing.assert_allclose(back[0].values, FIELD, atol=0.11)


# ---- plot -------------------------------------------------------------------------------------------------------

def test_plot_draws_the_field_that_matches(command, write_grib):
    name = write_grib(HEIGHT, TEMPERATURE)
    result = command('plot', name, '--match', 'temperature', '--output', 'map.ps', '--interval', 10)
    assert (result.returncode, result.stderr) == (0, '') and os.listdir(result.folder) == ['map.ps']
    assert result.stdout.startswith('map.ps: Temperature [K] at 850 hPa, ')
    assert (result.folder / 'map.ps').read_text().startswith('%!PS')
    gray = command('plot', name, '--gray', '--domain', 'merc:0:1,51,1,21,15,.2')
    assert gray.returncode == 0 and 'setrgbcolor' not in (gray.folder / 'yul.ps').read_text()


@pytest.mark.skipif(shutil.which('gs') is None, reason='Ghostscript is not installed')
def test_plot_makes_a_picture(command, write_grib):
    result = command('plot', write_grib(HEIGHT), '--png', '--fill', '--title', 'the title')
    assert (result.returncode, result.stderr, os.listdir(result.folder)) == (0, '', ['yul.png'])
    assert (result.folder / 'yul.png').read_bytes().startswith(b'\x89PNG')


# ---- bulletins --------------------------------------------------------------------------------------------------

def test_bulletins_are_listed_by_heading(command, root):
    feed = root / 'examples' / 'data' / 'bulletins.txt'
    result = command('bulletins', feed, '--header', 'S[AP].')
    assert (result.returncode, result.stderr) == (0, '')
    assert [line.split()[:3] for line in result.stdout.splitlines()] == [
        ['SAUS70', 'KWBC', '201200'], ['SPCN31', 'CWAO', '201207'], ['SAUK31', 'EGRR', '201220']]
    records = [json.loads(line) for line in command('bulletins', feed, '--header', 'SA', '--json', '--date', '2020-11-20T12:30')
               .stdout.splitlines()]
    assert [record['time'] for record in records] == ['2020-11-20T12:00:00Z', '2020-11-20T12:20:00Z']
    text = command('bulletins', feed, '--header', 'SAUK', '--text').stdout
    assert text.startswith('SAUK31 EGRR 201220\n') and 'EGLL 201220Z' in text
    with open(feed, 'rb') as file:
        assert command('bulletins', '-', '--header', 'SAUK', '--text', stdin=file).stdout == text
    assert command('bulletins', feed, '--header', 'ZZZZ').returncode == Yul.NODATA
    assert command('bulletins', feed, '--date', 'soon').returncode == Yul.BADPARAM


# ---- bad input --------------------------------------------------------------------------------------------------

BAD = [
    (['ls', '{folder}/nowhere'], 'NOFILE'), (['ls', '{folder}'], 'NOINPUT'), (['ls', '{empty}'], 'NODATA'),
    (['ls', '{text}'], 'NODATA'), (['ls', '{grib}', '--match', 'humidity'], 'NODATA'),
    (['ls'], 'BADPARAM'), ([], 'BADPARAM'), (['fly'], 'BADPARAM'), (['ls', '--fly', '{grib}'], 'BADPARAM'),
    (['convert', '{folder}/nowhere', 'out'], 'NOFILE'), (['convert', '{text}', 'out'], 'NODATA'),
    (['convert', '{grib}', '{grib}'], 'BADPARAM'), (['convert', '{grib}', '{folder}/no/out'], 'NOWRITE'),
    (['convert', '{grib}', '{folder}'], 'NOWRITE'), (['convert', '{grib}', 'out.grb', '--bits', '99'], 'BADPARAM'),
    (['convert', '{grib}', 'out.grb', '--bits', '0'], 'BADPARAM'), (['convert', '{grib}', 'out.grb', '--decimals', '77'], 'BADPARAM'),
    (['plot', '{folder}/nowhere'], 'NOFILE'), (['plot', '{text}'], 'NODATA'), (['plot', '{grib}', '--match', 'x'], 'NODATA'),
    (['plot', '{grib}', '--interval', 'nan'], 'BADPARAM'), (['plot', '{grib}', '--interval', '-5'], 'BADPARAM'),
    (['plot', '{grib}', '--domain', 'no such place'], 'BADPARAM'), (['plot', '{grib}', '--output', '{grib}'], 'BADPARAM'),
    (['plot', '{grib}', '--output', '{folder}/no/map.ps'], 'NOWRITE'), (['plot', '{grib}', '--output', '{folder}'], 'NOWRITE'),
    (['convert', '{grib}', 'out', '--match', 'humidity'], 'NODATA'), (['convert', '{grib}', 'out', '--bits', '8'], 'BADPARAM'),
    (['convert', '{grib}', 'out', '--to', 'netcdf'], 'BADPARAM'),
]


@pytest.mark.parametrize('arguments, status', BAD, ids=lambda value: ' '.join(value)
                         if isinstance(value, list) else value)
def test_a_bad_request_says_why_and_writes_nothing(command, write_grib, tmp_path, arguments, status):
    places = {'folder': tmp_path / 'other', 'empty': write_grib(b'', name='empty'), 'grib': write_grib(HEIGHT),
              'text': write_grib(b'no data here\n' * 50, name='text')}
    places['folder'].mkdir()
    result = command(*(argument.format(**places) for argument in arguments))
    assert result.returncode == getattr(Yul, status) and result.stdout == ''
    assert 1 <= len(result.stderr.splitlines()) <= 2 and 'Traceback' not in result.stderr
    assert os.listdir(result.folder) == [] and os.listdir(places['folder']) == []
    with open(places['grib'], 'rb') as file:
        assert file.read() == HEIGHT


def test_a_full_disk_is_reported(command, write_grib):
    with open('/dev/full', 'w') as full:
        result = command('ls', write_grib(HEIGHT), capture_output=False, stdout=full, stderr=subprocess.PIPE)
    assert result.returncode == Yul.NOWRITE and len(result.stderr.splitlines()) == 1


def test_help_is_there_for_every_command(command):
    overview = command('--help')
    assert overview.returncode == 0
    for name in ('ls', 'plot', 'convert'):
        assert name in overview.stdout
        text = command(name, '--help').stdout
        assert '--match' in text and text.startswith(f'usage: python -m Yul {name}')
