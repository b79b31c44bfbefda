"""Settings as Python sees them: the mapping, the start of a program, file names by type and time."""

import gc

import pytest

import _Yul
import Yul


@pytest.fixture(autouse=True)
def _alone(tmp_path, monkeypatch):
    """An empty directory to work in and no search path beyond it."""
    monkeypatch.chdir(tmp_path)
    monkeypatch.setenv('yuldefault', '.')
    for name in ('yulcurtime', 'yullevel', 'yul_forecast_level'):
        monkeypatch.delenv(name, raising=False)
    yield
    Yul.Yul.setInitTime(-9999)
    Yul.Yul.setMessageLevel(6)


def test_settings_are_a_mapping():
    Yul.settings['mapping_a'] = 12
    Yul.settings['mapping_b'] = None
    assert Yul.settings['mapping_a'] == '12'
    assert Yul.settings['mapping_b'] == ''
    assert 'mapping_a' in Yul.settings and 'mapping_c' not in Yul.settings and 5 not in Yul.settings
    assert list(Yul.settings)[-2:] == ['mapping_a', 'mapping_b']
    assert dict(Yul.settings)['mapping_a'] == '12'
    assert len(Yul.settings) == len(list(Yul.settings))
    with pytest.raises(KeyError):
        Yul.settings['mapping_c']


def test_start_merges_files_environment_and_arguments(tmp_path, monkeypatch):
    (tmp_path / 'yul.cfg').write_text('*.level file\n*.area "west alps"\n*.extra 1\n*.cur_time #202611141200\n')
    keyed = [('level', None, 'lv', 'level'), ('area', 'AREA_NAME', 'ar', 'area'), 'cur_time']
    Yul.start(['/bin/forecast', 'a', '--lev=5', 'b', '-5', 'c d'], keyed, ['first', 'rest'])
    assert Yul.settings['prog'] == 'forecast' == Yul.Yul.getProgramName()
    assert (Yul.settings['level'], Yul.Yul.getResrcType('level')) == ('5', _Yul.Resrc_COMMAND)
    assert (Yul.settings['area'], Yul.Yul.getResrcType('area')) == ('west alps', _Yul.Resrc_FILE)
    assert Yul.settings['extra'] == '1'
    assert Yul.settings['first'] == 'a'
    assert Yul.settings['rest'] == 'b\n-5\nc d'
    assert Yul.Yul.getInitTime() == 1794657600

    monkeypatch.setenv('AREA_NAME', '')
    Yul.start(['forecast'], keyed)
    assert (Yul.settings['area'], Yul.Yul.getResrcType('area')) == ('', _Yul.Resrc_ENV)


def test_a_second_start_takes_its_own_arguments():
    for arguments, first, rest in (('a b c', 'a', 'b\nc'), ('d e', 'd', 'e'), ('-again_first f g', 'f\ng', 'e')):
        Yul.start(['forecast', *arguments.split()], ['again_first'], ['again_first', 'again_rest'])
        assert (Yul.settings['again_first'], Yul.settings['again_rest']) == (first, rest)


def test_options_keep_copies_of_their_texts():
    items = Yul.ResrcDBList()
    item = Yul.ResrcDBItem('k' * 50, None, 'b' * 50, 'h' * 50)
    items.add(item)
    items.add('key' + str(len('four')), 'env', 'brief', 'help')
    del item
    gc.collect()
    assert [items.get(i).getKey() for i in range(items.getNum())] == ['k' * 50, 'key4']
    assert items.get(0).getEnv() == '' and items.get(2) is None
    assert items.first().getHelp() == 'h' * 50 and items.next().getBrief() == 'brief' and items.next() is None


def test_latest_file_is_a_path_and_a_time(tmp_path):
    (tmp_path / '2026111406.grb').write_text('x')
    Yul.Yul.setInitTime(1794676980)
    convention = Yul.NameConv('@%Y%m%d%h.grb')
    path, time = convention.latest()
    assert path == '2026111406.grb'
    assert time.isoformat() == '2026-11-14T06:23:00+00:00'
    assert convention.latest('+la') is None
