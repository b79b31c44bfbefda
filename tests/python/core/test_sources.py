"""Where settings come from: resource files, environment and arguments, as a program's start reads them."""

import os

import pytest

import Yul


@pytest.fixture(autouse=True)
def _alone(tmp_path, monkeypatch):
    """An empty directory to work in, on a search path of its own; the present and the messages as they were."""
    monkeypatch.chdir(tmp_path)
    monkeypatch.setenv('yuldefault', '.')
    yield
    Yul.Yul.setInitTime(-9999)
    Yul.Yul.setMessageLevel(6)


def start(*arguments, keyed=(), positional=(), program='plot'):
    return Yul.start([program, *arguments], keyed, positional)


def typed(name):
    return Yul.settings.get(name), Yul.Yul.getResrcType(name)


# Lines of a file, and what the settings of the same names are then (None: not set).
FILES = {
    'patterns': ('*.f_a 1\n*f_b 2\nplot.f_c 3\nPlot.f_d 4\nf_e 5\n*.f_* 6\nother.f_f 7\n*.p*f_g 8\n',
                 {'f_a': '1', 'f_b': '2', 'f_c': '3', 'f_d': '4', 'f_e': None, 'f_': None, 'f_f': None, 'f_g': None}),
    'cuts': (f'*.f_h "{"q " * 200}"\n*.f_i {"v" * 400}\n*.{"n" * 60} x\n*.{"m" * 30} y\n*.{"o" * 31} z\n',
             {'f_h': ('q ' * 200)[:249], 'f_i': 'v' * 249, 'n' * 47: None, 'm' * 30: 'y', 'o' * 31: None}),
    'quotes': ('*.f_j: "a  b" c\n*.f_k "open \n*.f_l "\n*.f_m a"b c"\n*.f_n:: 1\n',
               {'f_j': 'a  b', 'f_k': 'open ', 'f_l': '', 'f_m': 'a"b', 'f_n:': '1'}),
    'nesting': ('DEF A\nIF A\nIF B\n*.f_o 1\nELSE\n*.f_p 2\nEND\nELIF A\n*.f_q 3\nELSE\n*.f_r 4\nEND\n*.f_s 5\n',
                {'f_o': None, 'f_p': '2', 'f_q': None, 'f_r': None, 'f_s': '5'}),
    'outer branch': ('IF B\nIF V6\n*.f_t 1\nELSE\n*.f_u 2\nEND\n*.f_v 3\nEND\nEND\n*.f_w 4\nIF B\n',
                     {'f_t': None, 'f_u': None, 'f_v': None, 'f_w': '4'}),
}


@pytest.mark.parametrize('case', FILES)
def test_lines_of_a_file(case, tmp_path):
    text, settings = FILES[case]
    (tmp_path / 'yul.cfg').write_text(text)
    start()
    assert {name: Yul.settings.get(name) for name in settings} == settings


def test_misplaced_directives_are_warnings(tmp_path, capfd):
    (tmp_path / 'yul.cfg').write_text('ELSE\nelif x\nelif\nEnd x\nIF A\nEND\n')
    start()
    lines = ('else', 'elif', 'end')
    assert capfd.readouterr().err == ''.join(f'ResrcFile::get: {line} without an if\n' for line in lines)
    Yul.Yul.setMessageLevel('error')
    start()
    assert capfd.readouterr().err == ''


def test_path_is_read_in_order_with_tags(tmp_path):
    (tmp_path / 'a').mkdir()
    (tmp_path / 'a' / '.yuldef').write_text('*.p_last a\nDEF own\nIF tag\n*.p_tag a\nEND\n')
    (tmp_path / 'a' / 'Yul.res').write_text('*.p_third yes\n')
    (tmp_path / 'b.txt').write_text('*.p_last b\nIF own\n*.p_leak yes\nEND\nIF TAG\n*.p_tag b\nEND\n' +
                                    ''.join(f'DEF s{i}\n' for i in range(10)) +
                                    'IF s8\n*.p_ninth yes\nEND\nIF s9\n*.p_tenth yes\nEND\n')
    (tmp_path / 'yul.cfg').write_text('*.p_here yes\nIF tag\n*.p_early yes\nEND\n')
    start('-df', '.:missing:+tag:a:b.txt')
    names = ('p_here', 'p_early', 'p_last', 'p_tag', 'p_third', 'p_leak', 'p_ninth', 'p_tenth')
    assert [Yul.settings.get(n) for n in names] == ['yes', None, 'b', 'b', None, None, 'yes', None]
    (tmp_path / 'yul.cfg').write_text('*.p_empty yes\n')
    start('-df=a::missing')
    assert Yul.settings['p_empty'] == 'yes'


def test_names_of_program_and_use(tmp_path, monkeypatch):
    long = 'p' * 31
    (tmp_path / 'yul.cfg').write_text(f'{long[:30]}.x.u_cut 1\n{long}.x.u_long 2\nplot.u_prog 3\nplot.n.u_both 4\n'
                                      'n.u_use 5\nplot.u_key 6\n*u_key 7\n')
    monkeypatch.setenv(f'yul_{long}_x_u_env', 'whole')
    start('-na', '+x', program=f'/bin/{long}', keyed=['u_env'])
    assert [Yul.settings.get(n) for n in ('u_cut', 'u_long')] == ['1', None]
    assert Yul.settings['u_env'] == 'whole'
    start('-n=+n')
    assert [Yul.settings.get(n) for n in ('u_both', 'u_use', 'u_prog')] == ['4', None, None]
    monkeypatch.setenv('yul_n_default', 'missing')  # asked for before the use is known
    start('word', '--nam', 'n', keyed=['u_key', ('key', None, 'u_key'), 'both'])
    assert [Yul.settings.get(n) for n in ('u_use', 'u_prog', 'u_key', 'name')] == ['5', None, '7', 'n']


def test_a_line_sets_every_option_that_it_fits(tmp_path):
    (tmp_path / 'yul.cfg').write_text('*.m_a 1\n*m_* 2\n*a 3\n')
    start(keyed=['m_a', 'x.m_a'], positional=['y.m_a'])
    assert [Yul.settings[n] for n in ('m_a', 'x.m_a', 'y.m_a')] == ['3', '3', '3']
    assert 'a' not in Yul.settings


def test_arguments(tmp_path):
    (tmp_path / 'yul.cfg').write_text('*.first file\n')
    keyed = ['a_level', 'a_lev', ('a_default', None, 'a_l'), 'first']
    start('-a_lev=1', '-def', '2', '-a_l', '3', '--', '--a_def', '--', '-first', 'x', '-5', '-.5', 'é', '', '-first',
          keyed=keyed, positional=['first', 'a_rest'])
    assert [typed(n) for n in keyed[:2]] == [('3', 4), (None, 0)]  # the first declared one that fits
    assert typed('a_default') == ('--', 4)
    assert typed('first') == ('', 4) and Yul.settings['a_rest'] == '-.5\né\n'
    start('-first=x', '-5', keyed=keyed, positional=['first'])
    assert Yul.settings['first'] == 'x\n-5'  # joined to what an option gave
    start('-5', 'y', positional=['b_only'])
    assert typed('b_only') == ('-5\ny', 4)


def test_absurd_input_is_taken_in_stride(tmp_path, capfd):
    cfg = tmp_path / 'yul.cfg'
    for i, text in enumerate((b'*.g_long ' + b'v' * (3 << 20) + b'\n', bytes(range(256)) * 4096 + b'\n',
                              b'IF a\n' * 50000 + b'END\n' * 50000, b'DEF ' + b's' * (2 << 20) + b'\n', b'"' * 4096 + b'\n',
                              b'*' * 4096 + b' x\n')):
        cfg.write_bytes(text + b'*.g_after%d yes\n' % i)
        start('-' + 'k' * 100000, 'v' * 1000000, '-' + '=' * 100, '--=', '-')
        assert Yul.settings[f'g_after{i}'] == 'yes'
    assert Yul.settings['g_long'] == 'v' * 249
    cfg.unlink()
    cfg.mkdir()
    start('-df', f'.:{tmp_path}:+{"t" * 500}:{"x" * 100000}:/dev/null')
    assert capfd.readouterr().err == ''


def test_start_sets_level_path_and_present(tmp_path):
    start()
    assert Yul.Yul.getMessageLevel() == 0x3f  # not given: left alone
    for text, seconds in (('#202611141200', 1794657600), ('12', 12), ('#99991231', 2**31 - 1), ('x', 0)):
        start('-cur_time', text, '-message=none,+Debug2', '-file_path', str(tmp_path),
              keyed=['cur_time', 'message', 'file_path'])
        assert Yul.Yul.getInitTime() == seconds
    assert Yul.Yul.getMessageLevel() == 1 << 13 and Yul.Yul.getDatabasePath() == os.fspath(tmp_path)
