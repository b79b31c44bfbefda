"""No argument of any kind crashes a function of the module: each either works or raises.

Every class of the module is run in a process of its own, so that a crash names it. The calls are deterministic.
"""

import subprocess
import sys

import _Yul
import pytest
from running import python, without_sanitizers

# These end or stop the process, as they should.
EXCLUDED = {'Yul_exit', 'Yul_sleep', 'Yul_pause'}

PROBE = '''
import itertools, math, os, random, sys
sys.path[:] = {path!r}
import _Yul as y
os.chdir({folder!r})
os.dup2(os.open(os.devnull, os.O_WRONLY), 1)

NAME = {name!r}
EXCLUDED = {excluded!r}
signatures = y._signatures()
classes = list(y._classes())
for cls in classes:
    getattr(y, cls + "_registerclass")(type(cls, (), {{}}))


class Ring:
    pass


ring = Ring()
ring.this = ring

WRONG = [None, True, 0, 1, -1, 7, 2**31 - 1, -2**31, 2**31, 2**63, 10**400, 0.0, -0.5, 3.5, 1e39, math.nan, math.inf,
         -math.inf, "", "a", "text", "%d %s %n %99999999d", ",,:-+", "x" * 100000, chr(0xd800), chr(0xdcff), "a" + chr(0) + "b",
         "\\u00dc\\U0001f300", b"bytes", [], {{}}, (), object(), ring, 1j, Ring]


def make(cls):
    """A new object of the class, by whatever constructor takes plain values."""
    plain = {{"char const *": "1", "int": 4, "float": 1.5, "double": 1.5, "char": ",", "long": 3, "bool": True}}
    for kind, result, parameters in signatures.get("new_" + cls, ()):
        try:
            return getattr(y, "new_" + cls)(*[plain[p] for p in parameters])
        except (KeyError, TypeError, ValueError):
            continue
    return None


def dead(cls):
    thing = make(cls)
    if thing is not None and "delete_" + cls in signatures:
        getattr(y, "delete_" + cls)(thing)
    return thing


def fitting(type_name, chooser):
    """An argument of the right kind, often an absurd one."""
    for cls in classes:
        if type_name.split(" ")[0] in ("Yul::" + cls,) and type_name.endswith(("*", "&", cls)):
            return make(cls)
    if "char const *" in type_name:
        return chooser.choice([None, "", "a", "text", "1,2,3", "x" * 5000, "%s %d %5.2f", chr(0xdcff), "0", "-1", "|false"])
    if type_name in ("float", "double"):
        return chooser.choice([0.0, 1.5, -1.0, math.nan, math.inf, -math.inf, 3.4e38, -9999.0, 1e-40])
    if type_name == "bool":
        return chooser.choice([True, False])
    if type_name == "char":
        return chooser.choice(["a", ",", chr(0)])
    return chooser.choice([0, 1, -1, 2, 3, 100, -9999, 2**31 - 1, -2**31, 12])


def call(function, arguments):
    try:
        function(*arguments)
    except (TypeError, ValueError, OverflowError, AttributeError, MemoryError, RuntimeError) as error:
        str(error)


chooser = random.Random(7)
mine = [name for name in signatures
        if (name.startswith((NAME + "_", "new_" + NAME, "delete_" + NAME)))
        and name not in EXCLUDED and not name.endswith("_registerclass")]
others = [thing for thing in (make(cls) for cls in classes) if thing is not None]
ended = dead(NAME)
for name in mine:
    function = getattr(y, name)
    most = max(len(overload[2]) for overload in signatures[name])
    for count in range(most + 3):
        call(function, [None] * count)
        call(function, [make(NAME)] * count)
    for wrong in [*WRONG, ended, *others]:
        for overload in signatures[name]:
            for position in range(len(overload[2])):
                arguments = [fitting(p, chooser) for p in overload[2]]
                arguments[position] = wrong
                if name.startswith("delete_") and any(wrong is other for other in others):
                    continue
                call(function, arguments)
    for overload in signatures[name]:
        for _ in range(20):
            arguments = [fitting(p, chooser) for p in overload[2]]
            call(function, arguments)

# Parts of an object that has been deleted.
for name in mine:
    for kind, result, parameters in signatures[name]:
        part_class = result.removeprefix("Yul::").split(" ")[0]
        if kind != "method" or part_class not in classes or not result.endswith(("&", "*")):
            continue
        whole = make(NAME)
        if whole is None:
            continue
        try:
            part = getattr(y, name)(whole, *[fitting(p, chooser) for p in parameters[1:]])
        except (TypeError, ValueError, OverflowError):
            continue
        getattr(y, "delete_" + NAME)(whole)
        for other, overloads in signatures.items():
            if other.startswith(part_class + "_") and overloads[0][0] == "method":
                for overload in overloads:
                    call(getattr(y, other), [part, *[fitting(p, chooser) for p in overload[2][1:]]])
sys.stderr.write("survived " + NAME)
'''


@pytest.mark.parametrize('name', list(_Yul._classes()))
def test_every_function_survives_any_argument(name, tmp_path):
    script = PROBE.format(path=sys.path, folder=str(tmp_path), name=name, excluded=EXCLUDED)
    run = python(script, stdin=subprocess.DEVNULL, errors='replace')
    assert run.returncode == 0 and f'survived {name}' in run.stderr, run.stderr[-3000:]


def test_all_functions_belong_to_a_class():
    names = tuple(_Yul._classes())
    for function in _Yul._signatures():
        owner = function.removeprefix('new_').removeprefix('delete_')
        assert owner.split('_')[0] in names, function


@without_sanitizers('they slow the import down')
def test_import_is_quick_and_needs_nothing_else():
    script = ("import sys, time; before = set(sys.modules); start = time.process_time(); import _Yul; "
              "print(time.process_time() - start, sorted(set(sys.modules) - before))")
    seconds, modules = min(python(script).stdout.split(' ', 1) for _ in range(5))
    assert float(seconds) < 0.005 and modules.strip() == "['_Yul']"
