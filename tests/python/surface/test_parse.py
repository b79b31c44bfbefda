"""Feeds line by line, through the module's own functions: framing, states, filters, index files, positions."""

from feedwriter import bulletin
import pytest

import _Yul


def feed_of(names, index=None, header=None, identifier=None, options=None):
    feed = _Yul.new_WmoParse()
    for setter, value in ((_Yul.WmoParse_setHeader, header), (_Yul.WmoParse_setId, identifier),
                          (_Yul.WmoParse_setParam, options)):
        if value is not None:
            setter(feed, value)
    files = _Yul.new_Filename()
    for name in [names] if isinstance(names, str) else names:
        _Yul.Filename_add(files, name, index)
    assert _Yul.WmoParse_open(feed, files) == 1
    return feed


@pytest.fixture
def traced(capfd):
    """Runs a call at a debug level and gives what it printed."""
    def run(level, call, *arguments):
        capfd.readouterr()
        _Yul.Yul_setMessageLevel('mess')
        _Yul.Yul_setMessageLevel(f'+debug{level}')
        call(*arguments)
        _Yul.Yul_setMessageLevel('mess')
        return capfd.readouterr().out

    return run


TWO = (bulletin('SAUS70 KWBC 060000', 'MTRDEN', 'KDEN 060053Z', '', '$$', 'WIZ063-070-', '/O.NEW.KMKX', '...WIND', 'KAPA'),
       '\n', bulletin('WWUS53 KMKX 060100 RRA', 'SVRMKX', 'text', mark='\x03\x01\r\r\n'))


def test_every_line_has_its_state(write_feed, traced, lines_of):
    """States 1 to 4 of the frame, 5 in front of it, 10 to 16 (hexadecimal) of data."""
    name = write_feed('junk\n', *TWO, '\n** FPUS51 KOKX 060200 ****\nCLIOKX\n  indented\n$1\n')
    out = traced(6, lines_of, feed_of(name))
    assert [line.partition(':')[2].split(':')[0] for line in out.splitlines() if line.startswith('line:')] == (
        '5 1 2 3 4 10 11 12 13 14 16 10 11 1 2 3 4 10 11 3 4 11 11'.split())
    assert 'line:5:0-0:junk\n' in out
    assert 'line:3:0-0:SAUS70 KWBC 060000\r\r\n' in out
    assert 'line:4:1-1:MTRDEN\r\r\n' in out
    assert 'line:10:1-1:KDEN 060053Z\r\r\n' in out


def test_lines_come_with_codes_headings_and_positions(write_feed):
    octets = ''.join(TWO)
    feed, line, seen = feed_of(write_feed(octets)), _Yul.new_String(), []
    while code := _Yul.WmoParse_getLine(feed, line):
        text = _Yul.String_get(line)
        seen.append((code, text.rstrip('\r\n'), _Yul.WmoParse_getHeader(feed), _Yul.WmoParse_getAwip(feed),
                     _Yul.WmoParse_isNewProd(feed)))
        assert octets[_Yul.WmoParse_getLoc(feed):].startswith(text)
        assert octets[_Yul.WmoParse_getHeaderLoc(feed):].startswith(_Yul.WmoParse_getHeader(feed))
        assert _Yul.WmoParse_isData(feed)
        assert _Yul.WmoParse_tell(feed) == _Yul.WmoParse_getLoc(feed) + len(text)
    first, second = ('SAUS70 KWBC 060000', 'MTRDEN'), ('WWUS53 KMKX 060100 RRA', 'SVRMKX')
    assert seen == [
        (16, 'KDEN 060053Z', *first, True), (17, '', *first, False), (18, '$$', *first, False),
        (19, 'WIZ063-070-', *first, False), (20, '/O.NEW.KMKX', *first, False), (22, '...WIND', *first, False),
        (16, 'KAPA', *first, False), (17, '\x03', *first, False),
        (16, 'text', *second, True), (17, '\x03', *second, False)]
    assert not _Yul.WmoParse_isData(feed) and _Yul.String_get(line) == ''


@pytest.mark.parametrize('text, is_start', [
    ('\1\r\r\n', True), ('\3\1\r\r\n', True), ('** SA', True), ('\1\r\n', False), ('\1\n', False), ('\3\r\r\n', False),
    ('**SA', False), (' \1\r\r\n', False), ('', False), (None, False)])
def test_what_begins_a_bulletin(text, is_start):
    assert _Yul.WmoParse_isStart(text) is is_start
    assert _Yul.WmoParse_isStart(_Yul.new_WmoParse(), text) is is_start


@pytest.mark.parametrize('line, heading', [
    ('** SAUS70 KWBC 060000 ****', 'SAUS70 KWBC 060000'), ('** SAUS70 KWBC 060000 RRX ****', 'SAUS70 KWBC 060000 RRX'),
    ('** ****', ''), ('** ', ''), ('** A', '')])
@pytest.mark.parametrize('end', ['\n', '\r\n', '\r\r\n'], ids=repr)
def test_a_starred_heading_loses_its_end(line, heading, end, write_feed, lines_of):
    feed = feed_of(write_feed(end.join([line, 'id', 'data', ''])))
    assert lines_of(feed) == [(16, 'data' + end)]
    assert _Yul.WmoParse_getHeader(feed) == heading


def test_heading_and_identifier_are_found_by_place(write_feed, lines_of):
    name = write_feed(bulletin('...KDEN', '$$', 'a'), '\n', bulletin('** SAUS', '** KDEN', 'KDEN'))
    feed = feed_of(name, identifier='KDEN')
    line = _Yul.new_String()
    assert _Yul.WmoParse_getLine(feed, line) == 16  # neither heading nor identifier is searched
    assert (_Yul.String_get(line), _Yul.WmoParse_getHeader(feed), _Yul.WmoParse_getAwip(feed)) == (
        'KDEN\r\r\n', '** SAUS', '** KDEN')


def test_no_identifier_expected(write_feed, lines_of):
    feed = feed_of(write_feed(*TWO))
    _Yul.WmoParse_setExpectId(feed, False)
    assert lines_of(feed)[0] == (16, 'MTRDEN\r\r\n')
    assert _Yul.WmoParse_getAwip(feed) == ''


FILTERED = (bulletin('SAUS70 KWBC 060000', 'METAR', 'KAAA 1', 'KDEN 2', 'KBBB 3'), '\n',
            bulletin('SAUS71 KWBC 060000', 'METAR', 'KAAA 4'), '\n',
            bulletin('WWUS53 KMKX 060000', 'SVRMKX', 'about WIZ064', 'WIZ063>065-070-102015-', 'KAAA 5'))


@pytest.mark.parametrize('identifier, expected', [
    ('KDEN', ['KDEN 2', 'KBBB 3']),  # from the line that holds it on
    ('zn:WIZ064', ['WIZ063>065-070-102015-', 'KAAA 5']),
    ('zn:wiz070', ['WIZ063>065-070-102015-', 'KAAA 5']),
    ('zn:WIZALL', ['WIZ063>065-070-102015-', 'KAAA 5']),
    ('zn:WIZ102', []), ('zn:', []), ('METAR', []),
    ('', ['KAAA 1', 'KDEN 2', 'KBBB 3', 'KAAA 4', 'about WIZ064', 'WIZ063>065-070-102015-', 'KAAA 5']),
    ('KAAA', ['KAAA 1', 'KDEN 2', 'KBBB 3', 'KAAA 4', 'KAAA 5'])])
def test_identifier_filter(identifier, expected, write_feed, lines_of):
    lines = lines_of(feed_of(write_feed(*FILTERED), identifier=identifier))
    assert [text.rstrip() for code, text in lines if code != 17] == expected


def test_filters_are_cut_to_80_characters(write_feed, lines_of):
    line = 'x' * 80 + 'yz'
    name = write_feed(bulletin('A' * 130, 'B' * 130, line))
    feed = feed_of(name, identifier='x' * 80 + 'not there')
    assert lines_of(feed)[0] == (16, line + '\r\r\n')
    assert _Yul.WmoParse_getHeader(feed) == 'A' * 120 and _Yul.WmoParse_getAwip(feed) == 'B' * 120
    assert _Yul.WmoParse_setHeader(feed, 'A' * 80 + 'C') == 1
    product = _Yul.new_WmoProduct()
    assert _Yul.WmoParse_rewind(feed) == 1 and _Yul.WmoParse_getProduct(feed, product) == 1
    assert _Yul.WmoProduct_getHeader(product) == 'A' * 80


@pytest.mark.parametrize('options, expected', [
    ('', ['a', '', '$$', 'b', '', '\3', 'c', '\3']), ('dollar', ['a', '', '$$', 'c', '\3']),
    ('blank', ['a', '$$', 'b', '\3', 'c', '\3']), (' DOLLAR ,what,Blank', ['a', '$$', 'c', '\3'])])
def test_options(options, expected, write_feed, lines_of):
    name = write_feed(bulletin('A', 'id', 'a', '', '$$', 'b', '  '), '\n', bulletin('B', 'id', 'c'))
    assert [text.strip('\r\n ') for _, text in lines_of(feed_of(name, options=options))] == expected


def test_options_come_from_the_settings_too(write_feed):
    _Yul.Yul_setResrc('parameter', 'dollar')
    try:
        feed = _Yul.new_WmoParse(write_feed(bulletin('A', 'id', '$$', 'b')))
        line = _Yul.new_String()
        assert _Yul.WmoParse_getLine(feed, line) == 18
        assert _Yul.WmoParse_getLine(feed, line) == 0
    finally:
        _Yul.Yul_setResrc('parameter', '')


# ---- index files ------------------------------------------------------------------------------------------------

@pytest.fixture
def indexed(write_feed):
    """A feed of five bulletins, and the offsets of their start lines."""
    parts, offsets, at = [], [], 0
    for number, begin in enumerate(('SAUS', 'FPUS', 'SPUS', 'SACN', 'WWUS')):
        part = bulletin(f'{begin}7{number} KWBC 060000', f'ID{number}', f'line {number}') + '\n'
        parts.append(part)
        offsets.append(at)
        at += len(part)
    return write_feed(*parts), offsets


def index_lines(offsets, *order):
    begins = 'SAUS', 'FPUS', 'SPUS', 'SACN', 'WWUS'
    return ''.join(f'{offsets[i]} {begins[i]}7{i} KWBC 060000 / ID{i}\n' for i in order)


def data(lines):
    return [int(text.split()[1]) for code, text in lines if code == 16]


@pytest.mark.parametrize('header, expected', [
    ('', [0, 1, 2, 3, 4]), ('SA', [0, 3]), ('S', [0, 2, 3]), ('FPUS71_KWBC/ID1', [1]), ('FPUS71_KWBC/ID2', []), ('X', [])])
def test_the_index_selects_by_heading(header, expected, indexed, write_feed, lines_of):
    name, offsets = indexed
    index = write_feed(index_lines(offsets, 0, 1, 2, 3, 4), name='index')
    assert data(lines_of(feed_of(name, index, header))) == expected
    # Without an index every bulletin passes.
    assert data(lines_of(feed_of(name, None, header))) == [0, 1, 2, 3, 4]
    assert data(lines_of(feed_of(name, index, header, options='nohdr'))) == [0, 1, 2, 3, 4]
    assert data(lines_of(feed_of(name, index + '.none', header))) == [0, 1, 2, 3, 4]


@pytest.mark.parametrize('order, junk, expected', [
    ((4, 2, 0), '', [4, 2, 0]),  # out of order, the last one first
    ((0, 2), '99999999 SAUS70 KWBC 060000 / PAST\n9223372036854775807 S / X\n-5 S / X\n', [0, 2]),
    ((0, 2), 'nonsense\n\n12\n / \n5 /\nSAUS70 / 0\n99999999999999999999999 S / X\n', [0, 2]),
    ((0, 2, 0), '', [0, 2, 0]), ((), '', [])])
@pytest.mark.parametrize('is_behind', [True, False])
def test_an_index_in_disorder_loses_nothing(order, junk, is_behind, expected, indexed, write_feed, lines_of):
    name, offsets = indexed
    parts = [index_lines(offsets, *order), junk]
    index = write_feed(*(parts if is_behind else parts[::-1]), name='index')
    assert data(lines_of(feed_of(name, index))) == expected


def test_the_trace_of_an_index(indexed, write_feed, lines_of, traced):
    name, offsets = indexed
    index = write_feed(index_lines(offsets, 0, 1), name='index')
    out = traced(6, lines_of, feed_of(name, index, 'F'))
    assert [line for line in out.splitlines() if line.startswith('HDR')] == [
        'HDR 0 SAUS70 KWBC 060000 / ID0', f'HDR {offsets[1]} FPUS71 KWBC 060000 / ID1']
    assert traced(3, feed_of, name) == f'Parsing file: {name}\n'


def test_peek_lists_what_the_pattern_selects(indexed, write_feed):
    name, offsets = indexed
    index = write_feed(index_lines(offsets, 0, 1, 2, 3, 4), name='index')
    feed, product, listed = feed_of(name, index, 'S'), _Yul.new_WmoProduct(), []
    while _Yul.WmoParse_peek(feed, product):
        listed.append((_Yul.WmoProduct_getHeader(product), _Yul.WmoProduct_getAwip(product),
                       offsets.index(_Yul.WmoProduct_getLoc(product)), _Yul.Filename_get(product)))
    assert listed == [('SAUS70 KWBC 060000', 'ID0', 0, name), ('SPUS72 KWBC 060000', 'ID2', 2, name),
                      ('SACN73 KWBC 060000', 'ID3', 3, name)]
    assert _Yul.WmoParse_read(feed, product) == 1
    assert _Yul.WmoProduct_init(product) == 1
    assert _Yul.WmoProduct_getHeader(product) == '' and _Yul.WmoProduct_getLoc(product) == -9999
    assert _Yul.WmoParse_peek(feed_of(name), product) == 0


def test_setLoc_after_each_peek(indexed, write_feed, lines_of):
    """The index goes on behind the entry of the bulletin that was chosen."""
    name, offsets = indexed
    index = write_feed(index_lines(offsets, 0, 1, 2, 3, 4), name='index')
    feed, product, line, seen = feed_of(name, index, 'S'), _Yul.new_WmoProduct(), _Yul.new_String(), []
    while _Yul.WmoParse_peek(feed, product):
        assert _Yul.WmoParse_setLoc(feed, _Yul.WmoProduct_getLoc(product)) == 1
        assert _Yul.WmoParse_getLine(feed, line) == 16
        seen.append(_Yul.String_get(line).strip())
    assert seen == ['line 0', 'line 2', 'line 3']
    assert _Yul.WmoParse_setLoc(feed, offsets[1]) == 1
    for wrong in (offsets[4] + 1, -1, 2**62):  # refused, and nothing is lost
        assert _Yul.WmoParse_setLoc(feed, wrong) == 0
    assert data(lines_of(feed)) == [1, 2, 3]


@pytest.mark.parametrize('heading', ['SAUS70 KWBC 060000', 'SAUS70 KWBC 060000 RRA', '** SAUS70 KWBC 060000 ****'])
def test_the_index_may_point_at_the_heading(heading, write_feed, lines_of):
    parts = ['\1\r\r\n1 \r\r\n' if heading[0] == 'S' else '', f'{heading}\r\r\nid\r\r\n', 'line {}\r\r\n']
    name = write_feed(*(''.join(parts).format(i) for i in range(3)))
    offsets = [i * len(''.join(parts).format(0)) + len(parts[0]) for i in range(3)]
    index = write_feed(''.join(f'{at} SAUS70 KWBC 060000 / id\n' for at in offsets), name='index')
    feed = feed_of(name, index, 'SAUS')
    assert data(lines_of(feed)) == [0, 1, 2]
    assert _Yul.WmoParse_getHeader(feed) == heading.strip('* ') and _Yul.WmoParse_getAwip(feed) == 'id'
    assert _Yul.WmoParse_setLoc(feed, offsets[1]) == 1 and data(lines_of(feed)) == [1, 2]


def test_setLoc_chooses_a_bulletin(indexed, write_feed, lines_of):
    name, offsets = indexed
    index = write_feed(index_lines(offsets, 0, 1, 2, 3, 4), name='index')
    feed, line = feed_of(name, index, 'SA', 'nowhere'), _Yul.new_String()
    for i in (1, 4, 4, 0, 2):  # a step back begins the index anew
        assert _Yul.WmoParse_setLoc(feed, offsets[i]) == 1
        assert _Yul.WmoParse_getLine(feed, line) == 16
        assert _Yul.String_get(line).strip() == f'line {i}'
        assert _Yul.WmoParse_getAwip(feed) == f'ID{i}'
    _Yul.WmoParse_setId(feed, '')
    assert data(lines_of(feed)) == [3]  # behind it the pattern selects again
    for wrong in (offsets[4] + 1, -1 - 2**62, 2**62):
        result = _Yul.WmoParse_setLoc(feed, wrong)
        assert result == 0
    assert _Yul.WmoParse_setLoc(feed, 0, offsets[3]) == 1
    assert data(lines_of(feed)) == [3]
    assert _Yul.WmoParse_setLoc(feed, 1, 0) == 0 and _Yul.WmoParse_setLoc(feed, -1, 0) == 0
    plain = feed_of(name)
    assert _Yul.WmoParse_setLoc(plain, offsets[3]) == 1
    assert data(lines_of(plain)) == [3, 4]


def test_seek_and_rewind(indexed, write_feed, lines_of):
    name, offsets = indexed
    index = write_feed(index_lines(offsets, 0, 1, 2, 3, 4), name='index')
    feed, line = feed_of(name), _Yul.new_String()
    assert _Yul.WmoParse_getLine(feed, line) == 16
    place = _Yul.WmoParse_getLoc(feed)
    assert data(lines_of(feed)) == [1, 2, 3, 4]
    assert _Yul.WmoParse_rewind(feed) == 1 and data(lines_of(feed)) == [0, 1, 2, 3, 4]
    assert _Yul.WmoParse_seek(feed, place) == 1 and data(lines_of(feed)) == [0, 1, 2, 3, 4]
    assert _Yul.WmoParse_seek(feed, -1) == 0
    assert _Yul.WmoParse_seek(feed, 10**9) == 1 and lines_of(feed) == []
    feed = feed_of(name, index, 'S')
    assert _Yul.WmoParse_seek(feed, offsets[2]) == 1 and data(lines_of(feed)) == [2, 3]
    assert _Yul.WmoParse_rewind(feed) == 1 and data(lines_of(feed)) == [0, 2, 3]
    assert _Yul.WmoParse_close(feed) == 1 and _Yul.WmoParse_tell(feed) == -9999
    assert _Yul.WmoParse_seek(feed, 0) == 0 == _Yul.WmoParse_rewind(feed) and not _Yul.WmoParse_isOpen(feed)
    assert lines_of(feed) == []


# ---- several files ----------------------------------------------------------------------------------------------

def test_files_follow_each_other(tmp_path, write_feed, lines_of):
    names = [write_feed(bulletin(f'SAUS7{i} KWBC 060000', 'ID', f'line {i}'), name=f'feed{i}') for i in range(3)]
    names[1:1] = [str(tmp_path / 'missing'), str(tmp_path), write_feed('', name='empty')]
    feed, line = feed_of(names), _Yul.new_String()
    seen = []
    while _Yul.WmoParse_getLine(feed, line):
        seen.append((_Yul.WmoParse_getFileInd(feed), _Yul.String_get(line).strip('\r\n\3')))
    assert seen == [(0, 'line 0'), (0, ''), (4, 'line 1'), (4, ''), (5, 'line 2'), (5, '')]
    assert _Yul.WmoParse_newFile(feed) == 0 and _Yul.WmoParse_isOpen(feed)
    assert _Yul.WmoParse_setLoc(feed, 4, 0) == 1 and data(lines_of(feed)) == [1, 2]
    single = feed_of(names[0])
    assert _Yul.WmoParse_newFile(single) == 0
    assert _Yul.WmoParse_open(single, str(tmp_path / 'missing')) == 0 and not _Yul.WmoParse_isOpen(single)


def test_each_file_has_its_index(write_feed, lines_of):
    feed, files = _Yul.new_WmoParse(), _Yul.new_Filename()
    for i in range(3):
        octets = bulletin(f'SAUS7{i} KWBC 060000', 'ID', f'line {2 * i}') + '\n'
        name = write_feed(octets, bulletin(f'FPUS7{i} KWBC 060000', 'ID', f'line {2 * i + 1}'), name=f'feed{i}')
        index = write_feed(f'0 SAUS7{i} KWBC 060000 / ID\n{len(octets)} FPUS7{i} KWBC 060000 / ID\n', name=f'index{i}')
        _Yul.Filename_add(files, name, index if i != 1 else None)
    _Yul.WmoParse_setHeader(feed, 'SA')
    assert _Yul.WmoParse_open(feed, files) == 1
    assert data(lines_of(feed)) == [0, 2, 3, 4]  # the file without an index comes whole


# ---- damaged and growing feeds ----------------------------------------------------------------------------------

def test_cuts_at_every_octet_lose_nothing_that_is_whole(write_feed, lines_of):
    octets = ''.join(TWO)

    def text_of(end):
        return ''.join(text for _, text in lines_of(feed_of(write_feed(octets[:end])))).replace('\3', '')

    whole, at_line_end = text_of(len(octets)), ''
    for cut in range(len(octets)):
        text = text_of(cut)
        assert whole.startswith(text) and text.startswith(at_line_end), cut
        if octets[cut - 1:cut] == '\n':
            at_line_end = text  # every further cut keeps it


def test_a_feed_that_grows_octet_by_octet_is_read_whole(tmp_path):
    """After every octet all lines that are there are read; in the end nothing is missing."""
    octets = ''.join(TWO) + '\n** FPUS51 KOKX 060200 ****\nCLIOKX\nlast line\n'
    path = tmp_path / 'feed'
    path.write_bytes(b'')
    feed, line, seen = feed_of(str(path)), _Yul.new_String(), {}
    with open(path, 'ab', buffering=0) as file:
        for i in range(len(octets)):
            file.write(octets[i:i + 1].encode())
            while _Yul.WmoParse_getLine(feed, line):
                seen.setdefault(_Yul.WmoParse_getHeader(feed), []).append(_Yul.String_get(line))
    assert {heading: ''.join(texts).replace('\3', '') for heading, texts in seen.items()} == {
        'SAUS70 KWBC 060000': 'KDEN 060053Z\r\r\n\r\r\n$$\r\r\nWIZ063-070-\r\r\n/O.NEW.KMKX\r\r\n...WIND\r\r\nKAPA\r\r\n\n',
        'WWUS53 KMKX 060100 RRA': 'text\r\r\n\n', 'FPUS51 KOKX 060200': 'last line\n'}


def test_an_index_that_grows(indexed, tmp_path, lines_of):
    name, offsets = indexed
    index = tmp_path / 'index'
    index.write_text('')
    feed, seen = feed_of(name, str(index)), []
    with open(index, 'ab', buffering=0) as file:
        for octet in index_lines(offsets, 0, 1, 2, 3, 4):
            file.write(octet.encode())
            seen += data(lines_of(feed))
    assert seen == [0, 1, 2, 3, 4]


def test_long_lines_and_nul_octets(write_feed, lines_of):
    long = 'y' * 40_000_000
    lines = lines_of(feed_of(write_feed(bulletin('A', 'id', 'a\0b', long, 'c'), '\n', bulletin('B', 'id', 'd'))))
    assert lines[0] == (16, 'a b\r\r\n')
    pieces = [text for _, text in lines[1:-4]]
    assert ''.join(pieces) == long + '\r\r\n' and max(map(len, pieces)) <= 1 << 24
    assert [text.strip('\3\r\n') for _, text in lines[-4:]] == ['c', '', 'd', '']


def test_only_one_character_lines_and_marks_everywhere(write_feed, lines_of):
    """Marks in wrong places begin nothing."""
    name = write_feed(bulletin('A', 'id', 'x\1\r\r', ' \1\r\r', 'x** B ****', '*', '\3\3\1\r\r', '\1\r', '\1', end='\n'), '\n')
    feed = feed_of(name)
    assert len(lines_of(feed)) == 8
    assert _Yul.WmoParse_getHeader(feed) == 'A'


def test_null_and_closed(lines_of):
    feed = _Yul.new_WmoParse(None)
    assert not _Yul.WmoParse_isOpen(feed) and lines_of(feed) == []
    for function in (_Yul.WmoParse_setParam, _Yul.WmoParse_setHeader, _Yul.WmoParse_setId):
        assert function(feed, None) == 1
    assert _Yul.WmoParse_compare(feed, None, None, None) == 1
    assert _Yul.WmoParse_checkZone(None, None) == 0
