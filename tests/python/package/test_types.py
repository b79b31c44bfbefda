"""Documentation, completion and type stubs of the package."""

import ast
import importlib.util
import os
from pathlib import Path
import pydoc
import re
import rlcompleter
import subprocess
import sys

import pytest

import Yul
import _Yul

PACKAGE = Path(Yul.__file__).parent
IS_INSTALLED = not (PACKAGE.parent / '_Yul.pyi').exists()  # a wheel has it as a package of stubs
EXAMPLES = sorted(path for path in (Path(__file__).resolve().parents[3] / 'examples').rglob('*.py')
                  if 'dask' not in path.name or importlib.util.find_spec('dask'))

pytestmark = pytest.mark.skipif(not (PACKAGE / '__init__.pyi').exists(),
                                reason='a build with sanitizers cannot write stubs and tables')


def test_help_tells_what_the_header_says():
    text = pydoc.plain(pydoc.render_doc(Yul.Domain.tran))
    for part in ('tran(earth: EarthPoint, point: Point, /) -> int', 'degrees', '100 km', 'return  1; 0',
                 'tran(index: int, grid: GridPoint, /) -> int'):
        assert part in text
    assert 'Lets levels 1 to `level` through' in pydoc.plain(pydoc.render_doc(Yul.Yul.setMessageLevel))
    assert 'line width, dots' in pydoc.plain(pydoc.render_doc(Yul.PlotAttr.width))
    assert 'row 0 in the north' in Yul.Grid.__doc__ and 'missing' in Yul.Grid.__doc__
    assert 'Converts a position' in _Yul.Domain_tran.__doc__


def test_every_operation_is_documented_with_how_it_is_called():
    for function in _Yul._signatures():
        if not function.endswith(('_registerclass', '_attach', '_get', '_set')) and not function.startswith('delete_'):
            assert re.match(r'\w+\(.*\) -> ', getattr(_Yul, function).__doc__), function


def test_documentation_is_texts_by_function_and_survives_its_dict():
    texts = {'Yul_getVersion': ''.join(['a text ', 'made here']), 'no such function': 'x'}
    before = _Yul.Yul_getVersion.__doc__
    _Yul._document(texts)
    del texts
    assert _Yul.Yul_getVersion.__doc__ == 'a text made here'
    for wrong in (None, 'text', {'Yul_getVersion': 5}, {'Yul_getVersion': '\ud800'}):
        with pytest.raises((TypeError, UnicodeEncodeError)):
            _Yul._document(wrong)
    assert _Yul.Yul_getVersion.__doc__ == 'a text made here'
    _Yul._document({'Yul_getVersion': before})


def completions(text, names):
    completer, found = rlcompleter.Completer(names), []
    while (word := completer.complete(text, len(found))) is not None:
        found.append(word)
    return {word.rpartition('.')[2].rstrip('()') for word in found}


def test_completion_offers_what_there_is_to_use():
    offered = completions('Yul.', {'Yul': Yul})
    assert offered == set(Yul.__all__)
    offered = {name for name in dir(Yul.Domain('ll,50,10,5,5,1,1')) if not name.startswith('__')}
    assert {'tran', 'getNx', 'lats'} <= offered
    assert not {name for name in offered if name.startswith('_')} and not {'this', 'MERC'} & offered
    assert {'tran', 'getNx', 'lats'} <= completions('domain.', {'domain': Yul.Domain()})
    assert 'MERC' in completions('Domain.', {'Domain': Yul.Domain})


# ---- stubs ------------------------------------------------------------------------------------------------------

@pytest.fixture(scope='module')
def stub():
    return ast.parse((PACKAGE / '__init__.pyi').read_text(encoding='utf-8'))


def test_stubs_have_every_public_name(stub):
    classes = {node.name: node for node in stub.body if isinstance(node, ast.ClassDef)}
    for name in _Yul._classes():
        declared = set()
        for node in classes[name].body:
            declared |= {getattr(node, 'name', None), getattr(getattr(node, 'target', None), 'id', None)}
        actual = {key for key in vars(getattr(Yul, name)) if not key.startswith('_') or key in ('__lt__', '__iadd__')}
        assert actual <= declared, name
    top = {getattr(node, 'name', None) or getattr(getattr(node, 'target', None), 'id', None) for node in stub.body}
    top |= {alias.asname for node in stub.body if isinstance(node, ast.ImportFrom) for alias in node.names}
    assert set(Yul.__all__) <= top


def test_stubs_are_fully_typed(stub):
    for cls in [node for node in stub.body if isinstance(node, ast.ClassDef)] + [stub]:
        for node in cls.body:
            if isinstance(node, ast.FunctionDef):
                parameters = [*node.args.posonlyargs, *node.args.args, *node.args.kwonlyargs,
                              *filter(None, (node.args.vararg, node.args.kwarg))]
                untyped = [parameter.arg for parameter in parameters
                           if parameter.annotation is None and parameter.arg not in ('self', 'cls')]
                assert not untyped and node.returns is not None, \
                    f'annotate {getattr(cls, "name", "Yul")}.{node.name} in the package\'s source'


def mypy(*arguments, folder):
    try:
        from mypy.version import __version__ as version
    except ImportError:
        pytest.skip('mypy is not installed')
    if tuple(map(int, version.split('.')[:2])) < (1, 16):
        pytest.skip(f'mypy {version} is older than 1.16, which knows buffers')
    environment = dict(os.environ)
    if not IS_INSTALLED:
        environment['MYPYPATH'] = str(PACKAGE.parent)
    run = subprocess.run([sys.executable, '-m', 'mypy', '--strict', '--cache-dir', str(folder), *map(str, arguments)],
                         capture_output=True, text=True, env=environment, cwd=folder, timeout=300)
    return run.stdout + run.stderr


def test_examples_and_stubs_pass_a_strict_type_checker(tmp_path):
    stubs = [] if IS_INSTALLED else [PACKAGE / '__init__.pyi', PACKAGE.parent / '_Yul.pyi']
    said = mypy(*stubs, *EXAMPLES, folder=tmp_path)
    assert 'Success: no issues found' in said, said


def test_a_type_checker_finds_wrong_calls(tmp_path):
    script = tmp_path / 'wrong.py'
    script.write_text('from Yul import Date, Domain, EarthPoint, Grid, Point, Points\n'
                      'Domain().tran(EarthPoint(), EarthPoint())\n'
                      'Date().addDays("3")\n'
                      'Grid().getNx().upper()\n'
                      'points: Points = Grid()\n'
                      'for point in Points(): point.x.lower()\n'
                      'ok: float = Points()[0].x + Date().getYear() + Domain.MERC\n')
    lines = {int(number) for number in re.findall(r'wrong\.py:(\d+): error', mypy(script, folder=tmp_path))}
    assert lines == {2, 3, 4, 5, 6}
