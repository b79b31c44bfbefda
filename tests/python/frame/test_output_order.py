"""What Python and the library write appears in the order of writing, wherever it goes."""

import os
import subprocess
import sys
import time

import pytest

from running import python

ORDER = '''
import sys
import _Yul as y
print("1 python")
y.Yul_print("2 library\\n")
sys.stderr.write("3 python ")
y.Yul_outError("4 library\\n")
print("5 python", end="")
y.Yul_outMessage(" 6 library\\n")
sys.stdout.write("7 python\\n")
y.Yul_outWarning("8 library\\n")
print("9 python")
'''
LINES = ['1 python', '2 library', '3 python 4 library', '5 python 6 library', '7 python', '8 library', '9 python']


def run(script, **options):
    return python(script, **{'stdout': subprocess.PIPE, 'stderr': subprocess.STDOUT, **options})


def test_order_is_kept_in_a_pipe():
    assert run(ORDER).stdout.splitlines() == LINES


def test_order_is_kept_in_a_file(tmp_path):
    with open(tmp_path / 'out', 'w+') as file:
        run(ORDER, stdout=file)
        file.seek(0)
        assert file.read().splitlines() == LINES


def test_errors_go_to_standard_output_while_the_variable_is_defined():
    script = 'import os, _Yul as y; y.Yul_outError("a\\n"); os.environ["yulerrtoout"] = ""; y.Yul_outError("b\\n")'
    done = run(script, stderr=subprocess.PIPE, env={k: v for k, v in os.environ.items() if k != 'yulerrtoout'})
    assert (done.stderr, done.stdout) == ('a\n', 'b\n')


STREAMS = [
    'sys.stdout = None',
    'sys.stderr = None',
    'del sys.stdout',
    'sys.stdout = object()',
    'sys.stdout = io.StringIO()',
]


@pytest.mark.parametrize('change', STREAMS)
def test_replaced_streams_do_no_harm(change):
    script = f'import io, sys, _Yul as y\n{change}\ny.Yul_print("text\\n"); y.Yul_outError("error\\n")\nsys.stdout = sys.stderr = None'
    done = run(script)
    assert (done.returncode, done.stdout) == (0, 'text\nerror\n')


def test_a_flush_that_calls_the_library_ends():
    script = '''
import sys, _Yul as y
class Stream:
    def write(self, text): pass
    def flush(self): y.Yul_print("inner\\n")
sys.stdout = Stream()
y.Yul_print("outer\\n")
sys.stdout = sys.__stdout__
'''
    assert run(script).stdout == 'inner\nouter\n'


def test_a_pending_exception_survives_the_flush():
    script = '''
import sys, _Yul as y
class Stream:
    def write(self, text): pass
    def flush(self): raise OSError("flush")
sys.stdout = Stream()
try:
    y.Yul_print("text\\n")
    raise KeyError("kept")
except KeyError as error:
    y.Yul_print(f"{error}\\n")
sys.stdout = sys.__stdout__
'''
    assert run(script).stdout == "text\n'kept'\n"


def test_exit_loses_nothing(tmp_path):
    script = f'''
import atexit, sys, _Yul as y
file = open({str(tmp_path / "left-open")!r}, "w")
def leave():
    file.write("file")
    atexit.register(lambda: y.Yul_print("handler\\n"))
    print("python")
    y.Yul_exit(y.Yul_BADPARAM)
leave()
'''
    done = run(script)
    assert (done.returncode, done.stdout) == (11, 'python\nhandler\n')
    assert (tmp_path / 'left-open').read_text() == 'file'


def test_the_lock_is_held_while_the_library_sleeps():
    script = '''
import threading, time, _Yul as y
ticks = []
threading.Thread(target=lambda: [ticks.append(time.monotonic()) or time.sleep(0.01) for _ in range(30)]).start()
time.sleep(0.05)
before = len(ticks)
y.Yul_sleep(0.1)
y.Yul_print(str(len(ticks) - before))
'''
    assert int(run(script).stdout) <= 1


def test_signals_take_nothing_from_what_is_printed():
    script = ('import signal, _Yul as y\n'
              'signal.signal(signal.SIGALRM, lambda number, frame: None)\n'
              'signal.setitimer(signal.ITIMER_REAL, 0.001, 0.001)\n'
              'for i in range(3000):\n'
              '    y.Yul_print(f"{i:05d} {\'x\' * 60}\\n")\n'
              'signal.setitimer(signal.ITIMER_REAL, 0)\n')
    with subprocess.Popen([sys.executable, '-c', script], stdout=subprocess.PIPE, text=True) as child:
        time.sleep(0.5)  # the pipe is full, and the alarms come while the library waits
        lines = child.stdout.read().splitlines()
    assert child.returncode == 0 and [line[:5] for line in lines] == [f'{i:05d}' for i in range(3000)]


def test_an_interrupt_while_streams_are_flushed_is_kept():
    script = ('import signal, sys, _Yul as y\n'
              'signal.signal(signal.SIGINT, signal.default_int_handler)\n'  # a shell's background job starts without
              'class Stream:\n'
              '    def flush(self): raise KeyboardInterrupt\n'
              'try:\n'
              '    standard, sys.stdout = sys.stdout, Stream()\n'
              '    y.Yul_print("text\\n")\n'
              '    while True: pass\n'
              'except KeyboardInterrupt:\n'
              '    print("interrupted", file=standard)\n'
              '    sys.stdout = standard\n')
    assert run(script, timeout=30).stdout == 'text\ninterrupted\n'
