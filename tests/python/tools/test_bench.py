"""The collector of the benchmarks: what it takes for a row, and how it judges one."""

import importlib.util

import pytest


@pytest.fixture(scope='module')
def run(root):
    spec = importlib.util.spec_from_file_location('bench_run', root / 'bench' / 'run.py')
    module = importlib.util.module_from_spec(spec)
    spec.loader.exec_module(module)
    return module


def test_rows_notes_and_faults_are_told_apart(run):
    text = ('# 12 fields\n'
            'read\t2 ns\tpeer 4 ns\t2\t>= 1.7\n'
            'two words  1 GB/s  NumPy 3 GB/s  3\n'
            'rate\t1 ns\tpeer 1e6 ns\t1e+06\t\n'
            '\n'
            'bare number\t1 ns\tpeer 4 ns\t4\t6\n'
            'other side\t1 ns\tpeer 4 ns\t4\t<= 6\n'
            'no ratio\t1 ns\tpeer 4 ns\tfast\n'
            'too few\t1 ns\n')
    rows, notes, faults = run.parse(text)
    assert rows == [run.Row('read', '2 ns', 'peer 4 ns', '2', '>= 1.7'),
                    run.Row('two words', '1 GB/s', 'NumPy 3 GB/s', '3'),
                    run.Row('rate', '1 ns', 'peer 1e6 ns', '1e+06')]
    assert notes == ['# 12 fields']
    assert [fault.split('\t')[0] for fault in faults] == [
        'no row: bare number', 'no row: other side', 'no row: no ratio', 'no row: too few']


@pytest.mark.parametrize('ratio, limit, is_held', [
    ('1.7', '>= 1.7', True), ('1.69', '>= 1.7', False), ('1e+02', '>= 50', True), ('0.3', '', True), ('0', '>= 1', False)])
def test_a_ratio_reaches_its_limit_or_misses_it(run, ratio, limit, is_held):
    row = run.Row('job', 'ours', 'peer', ratio, limit)
    assert row.is_held == is_held
    assert list(run.table([row]))[1].endswith('<-- missed') != is_held


def test_the_last_line_counts_only_rows_with_a_target(run):
    rows = [run.Row('a', '', '', '2', '>= 1'), run.Row('b', '', '', '1', '>= 6'), run.Row('c', '', '', '1')]
    assert run.verdict(rows) == '1 targets held, 1 missed'
    assert run.verdict([]) == '0 targets held, 0 missed'


def test_of_several_processes_the_middle_one_counts_for_each_job(run):
    tables = [[run.Row('a', ours, '', ratio), run.Row('b', ours, '', other)]
              for ours, ratio, other in (('1 ns', '9', '1e+02'), ('2 ns', '10', '12'), ('3 ns', '2', '11'))]
    assert [(row.job, row.ours) for row in run.middle(tables)] == [('a', '1 ns'), ('b', '2 ns')]
    assert run.middle(tables[:1]) == tables[0]


def test_every_benchmark_is_found_and_no_helper(run, root):
    found = run.benchmarks([])
    files = [path for path in (root / 'bench').iterdir() if path.suffix in ('.cpp', '.py') and path.name not in run.COMMANDS]
    assert len(found) == len(files)
    assert {'grib', 'projections', 'pages', 'contours'} <= set(found)
    assert not {'run', 'fields', 'interleaved', 'machine'} & set(found)
    assert list(run.benchmarks(['psn'])) == ['psnum']


def rows_of(run, page, name):
    """The rows of a table of the documents, whatever was printed bold."""
    block = page.split(f'<!-- {name} -->')[1].split(f'<!-- end of {name} -->')[0]
    cells = [[cell.strip() for cell in line.strip('|').split('|')] for line in block.splitlines() if line.startswith('| ')]
    assert cells[0] == list(run.Row._fields)
    return block, [run.Row(*(cell.strip('*') for cell in row)) for row in cells[1:]], cells[1:]


def test_the_documents_tell_of_every_job(run, root):
    page = (root / 'docs' / 'performance.md').read_text(encoding='utf-8')
    block, rows, cells = rows_of(run, page, 'table')
    assert len(rows) > 60
    assert run.verdict(rows) in block
    assert [row[3].startswith('**') for row in cells] == [not row.is_held for row in rows]
    told = tuple(name for line in page.split('## Where the time goes')[1].split('## Memory')[0].splitlines()
                 for name in line.split('**')[1::2])
    assert [row.job for row in rows if not row.job.startswith(told)] == []
    assert [name for name in told if not any(row.job.startswith(name) for row in rows)] == []
    memory = rows_of(run, page, 'memory')[1]
    assert len(memory) > 20 and not any(row.has_target for row in memory)
