"""Feeds as Python users read them: by iteration, from files, pipes and what else can be read."""

import copy
from datetime import datetime, timezone
import gzip
import io
import os
from pathlib import Path
import pickle
import subprocess

from feedwriter import bulletin
import pytest

import _Yul
from Yul import Bulletin, WmoParse, reports
from running import python, without_sanitizers

FEED = (bulletin('SAUS70 KWBC 060000 RRA', 'MTRDEN', 'KDEN 060053Z=', '', '$$'), '\n',
        bulletin('SPCN31 CWAO 060100', 'SPXX', 'CYUL 060055Z='), '\n',
        bulletin('WWUS53 KMKX 060200', 'SVRMKX', 'WIZ063-064-070-', '...WIND...'), '\n',
        bulletin('SACN31 CWAO 060300', '', mark='\x03\x01\r\r\n'), '\r\r\n')
HEADINGS = ['SAUS70 KWBC 060000 RRA', 'SPCN31 CWAO 060100', 'WWUS53 KMKX 060200', 'SACN31 CWAO 060300']


@pytest.fixture
def name(write_feed):
    return write_feed(*FEED)


def headings(source, **more):
    return [b.heading for b in WmoParse(source, **more)]


def test_a_bulletin_tells_what_it_is(name):
    first, _, third, last = WmoParse(name, date=datetime(2020, 1, 6, 12))
    assert (first.heading, first.identifier, first.indicator, first.position) == (HEADINGS[0], 'MTRDEN', 'RRA', 0)
    assert first.lines == list(first) == ['KDEN 060053Z=', '', '$$'] and len(first) == 3
    assert list(first.codes) == [WmoParse.DATA, WmoParse.NOT_ALNUM, WmoParse.END]
    assert first.text == str(first) == 'KDEN 060053Z=\n\n$$'
    assert first.time == datetime(2020, 1, 6, tzinfo=timezone.utc)
    assert list(third.codes) == [WmoParse.ZONE, WmoParse.HEADLINE]
    assert ''.join(FEED)[third.position:].startswith('\x01\r\r\n123 \r\r\nWWUS')
    assert ''.join(FEED)[last.position:].startswith('\x03\x01\r\r\n')
    assert last.lines == [] and last.text == '' and last.identifier == ''
    assert repr(third) == '<Yul.Bulletin WWUS53 KMKX 060200 / SVRMKX, 2 lines>'


def test_a_bulletin_is_all_that_the_product_tells(write_feed):
    heading, lines = 'SA\udcff KWBC 060000', 'a\udce9\n$$\n'
    name = write_feed(bulletin(heading, 'id', *lines.split('\n')).encode('utf-8', 'surrogateescape'))
    made, = WmoParse(name)
    feed, product = _Yul.new_WmoParse(name), _Yul.new_WmoProduct()
    assert _Yul.WmoProduct_getContent(product) == ('', '', _Yul.WmoProduct_getLoc(product), '', b'')
    assert _Yul.WmoParse_getProduct(feed, product)
    content = (_Yul.WmoProduct_getHeader(product), _Yul.WmoProduct_getAwip(product), _Yul.WmoProduct_getLoc(product),
               _Yul.WmoProduct_getText(product), _Yul.WmoProduct_getCodes(product).encode())
    assert _Yul.WmoProduct_getContent(product) == content == (heading, 'id', 0, lines, b'\x10\x12\x11')
    for same in (made, Bulletin(*content[:4], '\x10\x12\x11', None), copy.copy(made), pickle.loads(pickle.dumps(made))):
        assert (same.heading, same.identifier, same.position, same.text, same.codes) == content


@pytest.mark.parametrize('header, expected', [
    ('SA', [0, 3]), ('S[AP]CN', [1, 3]), ('SA....', [0, 3]), ('(SP|WW)', [1, 2]), ('-_CWAO', [1, 3]), ('*/SVR', []),
    ('WWUS53_KMKX_060200/SVR', [2]), (None, [0, 1, 2, 3]), ('', [0, 1, 2, 3]), ('X', [])])
def test_headings_select_without_an_index(header, expected, name):
    assert headings(name, header=header) == [HEADINGS[i] for i in expected]


def test_other_choices(name):
    assert [b.lines for b in WmoParse(name, identifier='CYUL')] == [['CYUL 060055Z=']]
    assert [b.lines for b in WmoParse(name, identifier='zn:WIZ064')] == [['WIZ063-064-070-', '...WIND...']]
    assert [b.lines for b in WmoParse(name, header='SA', expect_identifier=False)] == [
        ['MTRDEN', 'KDEN 060053Z=', '', '$$'], ['']]
    assert [len(b) for b in WmoParse(name, options='blank')] == [2, 1, 2, 0]
    assert [r.station for r in reports(name, header='SP')] == ['CYUL']


@pytest.mark.parametrize('expects', [True, False])
def test_bulletins_of_a_heading_alone(expects, write_feed):
    head = '\x01\r\r\n123 \r\r\n'
    name = write_feed(head, 'A\r\r\n', head, 'B\r\r\nid\r\r\n', head, head, 'C\r\r\n', '** D\r\r\n', '** E\r\r\nid\r\r\n', head, 'F')
    found = [(b.heading, b.identifier, b.lines) for b in WmoParse(name, expect_identifier=expects)]
    if expects:  # "** D" stands where the identifier of C does
        assert found == [('A', '', []), ('B', 'id', []), ('C', '** D', []), ('', 'id', [])]
    else:
        assert found == [('A', '', []), ('B', '', ['id']), ('C', '', []), ('', '', []), ('', '', ['id'])]


def test_lines_of_every_length_come_whole(write_feed):
    """Also round 4 kB, where a block of lines ends; of a CR before the ETX nothing stays."""
    bodies = [['x' * n, 'a', '/O.NEW.', '* b', '', 'c\r'] for n in (1, *range(4060, 4110), 8192, 300_000)]
    found = list(WmoParse(write_feed(*('\x01\r\r\n1\r\r\nA\r\r\nid\r\r\n' + '\r\r\n'.join(body) + '\x03\r\r\n'
                                       for body in bodies))))
    assert [b.lines for b in found] == [[*body[:-1], 'c'] for body in bodies]
    assert {b.codes for b in found} == {bytes([16, 16, 20, 17, 17, 16])}


def test_iteration_goes_on_where_it_was(name):
    parse = WmoParse(name)
    assert next(iter(parse)).heading == HEADINGS[0]
    assert [b.heading for b in parse] == HEADINGS[1:]
    assert [b.heading for b in parse] == []
    parse.rewind()
    assert [b.heading for b in parse] == HEADINGS


def test_a_position_finds_its_bulletin_again(name, tmp_path):
    index = tmp_path / 'index'
    index.write_text(''.join(f'{b.position} {b.heading} / {b.identifier}\n' for b in WmoParse(name)))
    parse = WmoParse(name, index)
    for bulletin_there in list(WmoParse(name))[::-1]:
        assert parse.setLoc(bulletin_there.position) == 1
        assert next(iter(parse)).text == bulletin_there.text
    parse.rewind()
    assert [b.text for b in parse] == [b.text for b in WmoParse(name)]
    assert headings(name, index=index, header='SP') == [HEADINGS[1]]


def test_with_closes_and_a_missing_file_raises(name, tmp_path):
    with WmoParse(name) as parse:
        assert parse.isOpen()
    assert not parse.isOpen()
    with pytest.raises(OSError, match='no file is open'):
        list(parse)
    with pytest.raises(OSError, match='no file is open'):
        list(WmoParse(tmp_path / 'missing'))
    with pytest.raises(TypeError):
        WmoParse(5)


@pytest.mark.parametrize('open_source', [
    str, Path, os.fsencode, lambda name: open(name, 'rb'), lambda name: open(name, encoding='latin-1'),
    lambda name: io.BytesIO(Path(name).read_bytes()), lambda name: io.StringIO(Path(name).read_bytes().decode()),
    lambda name: gzip.open(io.BytesIO(gzip.compress(Path(name).read_bytes()))),
    lambda name: subprocess.Popen(['cat', name], stdout=subprocess.PIPE).stdout],
    ids=['str', 'Path', 'bytes', 'binary', 'text', 'BytesIO', 'StringIO', 'gzip', 'pipe'])
def test_sources(open_source, name):
    source = open_source(name)
    assert headings(source) == HEADINGS
    if hasattr(source, 'close'):
        source.close()


def test_several_sources_follow_each_other(name):
    assert headings([name, open(name, 'rb'), Path(name)]) == HEADINGS * 3


LIVE = """
import os, _Yul
read_end, write_end = os.pipe()
feed, line = _Yul.new_WmoParse(f'/dev/fd/{read_end}'), _Yul.new_String()
os.write(write_end, FIRST)
print(_Yul.WmoParse_getLine(feed, line), repr(_Yul.String_get(line)))
os.write(write_end, REST)
os.close(write_end)
while _Yul.WmoParse_getLine(feed, line):
    print(repr(_Yul.String_get(line)))
"""


def test_lines_of_a_live_pipe_come_as_they_are_written():
    """A line is read while the writer keeps the pipe open and has written no more."""
    script = LIVE.replace('FIRST', repr(FEED[0].encode())).replace('REST', repr(''.join(FEED[1:]).encode()))
    run = python(script)
    assert run.stdout.splitlines()[0] == r"16 'KDEN 060053Z=\r\r\n'", run.stderr
    assert r"'...WIND...\r\r\n'" in run.stdout.splitlines()


SCRIPT = '''
from Yul import WmoParse, reports
import sys
for bulletin in WmoParse(sys.stdin if sys.argv[1] == "object" else "-", header="S"):
    print(bulletin.heading)
'''


@pytest.mark.parametrize('way', ['object', 'name'])
@pytest.mark.parametrize('is_pipe', [True, False])
def test_standard_input(way, is_pipe, name):
    if is_pipe:
        run = python(SCRIPT, way, input=''.join(FEED))
    else:
        with open(name) as file:
            run = python(SCRIPT, way, stdin=file)
    assert run.stdout.splitlines() == [HEADINGS[i] for i in (0, 1, 3)], run.stderr


def test_a_growing_feed_is_read_on(name):
    parse = WmoParse(name)
    assert len(list(parse)) == 4
    with open(name, 'ab') as file:
        file.write(bulletin('SAUS70 KWBC 060400', 'id', 'first').encode())
    assert [(b.heading, b.lines) for b in parse] == [('SAUS70 KWBC 060400', ['first'])]
    with open(name, 'ab') as file:
        file.write(('\n' + bulletin('SAUS70 KWBC 060500', 'id', 'be')[:-4]).encode())
    assert [(b.heading, b.lines) for b in parse] == [('SAUS70 KWBC 060500', ['be'])]
    with open(name, 'ab') as file:
        file.write(b'hind\r\r\nrest\r\r\n\x03')
    assert [(b.heading, b.lines) for b in parse] == [('SAUS70 KWBC 060500', ['hind', 'rest'])]


def test_octets_that_are_no_text_come_back_escaped(write_feed):
    parse = WmoParse(write_feed(bulletin('SA\xff', 'id', '\xcd\x00\x80')))
    found = next(iter(parse))
    assert found.heading == 'SA\udcff' and found.lines == ['\udccd \udc80']


@without_sanitizers('they keep freed memory')
def test_memory_does_not_grow_with_the_feed(tmp_path):
    """Twenty times the feed, hardly more memory."""
    script = '''
import sys
from Yul import WmoParse
count = sum(1 for bulletin in WmoParse(sys.argv[1]))
peak = next(line.split()[1] for line in open('/proc/self/status') if line.startswith('VmHWM'))
print(count, peak)
'''
    part = ''.join(bulletin('SAUS70 KWBC 060000', 'id', *['x' * 70] * 40) + '\n' for _ in range(300)).encode()
    peaks = []
    for times in (1, 20):
        path = tmp_path / 'feed'
        path.write_bytes(part * times)
        run = python(script, path, check=True)
        count, peak = map(int, run.stdout.split())
        assert count == 300 * times
        peaks.append(peak)
    assert peaks[1] - peaks[0] < 4000  # kB; the larger feed has 18 MB
