"""Real feeds, octet for octet against a second splitter. YUL_FEED_SAMPLES names their folder."""

import pytest
import splitter

from Yul import WmoParse, reports

# Feed, and whether a product identifier follows the heading.
FEEDS = {'metar-feed.txt': False, 'products-feed.txt': True, 'synop-feed.txt': False, 'starred-feed.txt': False}


def expected(path, identifiers):
    octets = path.read_bytes()
    split = splitter.bulletins if b'\1\r\r' in octets else splitter.starred_bulletins
    return split(octets, identifiers)


@pytest.fixture(params=FEEDS)
def feed(request, samples):
    path = samples / request.param
    if not path.exists():
        pytest.skip(f'no {request.param}')
    return path, FEEDS[request.param]


def test_bulletins_are_those_of_the_second_splitter(feed):
    path, identifiers = feed
    found = [(b.heading, b.identifier, b.lines) for b in WmoParse(path, expect_identifier=identifiers)]
    assert found == expected(path, identifiers)


def test_reports_are_those_of_the_second_splitter(feed):
    path, identifiers = feed
    found = [(report.kind, report.station, report.text) for report in reports(path)]
    assert found == list(splitter.reports(expected(path, identifiers)))


def test_lines_and_bulletins_agree(feed, lines_of):
    """What getLine hands out line by line is what the bulletins hold, but for ETX and the blanks behind it."""
    path, identifiers = feed
    parse = WmoParse(path, expect_identifier=identifiers)
    by_line = [(code, text.rstrip('\r\n')) for code, text in lines_of(parse)]
    by_bulletin = [pair for b in WmoParse(path, expect_identifier=identifiers) for pair in zip(b.codes, b.lines)]
    strip = [(code, text) for code, text in by_line if text.strip('\x03 ')]
    assert strip == [(code, text) for code, text in by_bulletin if text.strip()]


def test_index_and_heading_pattern_select_the_same(samples):
    path = samples / 'metar-feed.txt'
    pattern = 'S[AP]US7'
    alone = [b.text for b in WmoParse(path, header=pattern, expect_identifier=False)]
    listed = [b.text for b in WmoParse(path, path.with_suffix('.idx'), header=pattern, expect_identifier=False)]
    assert alone == listed and len(alone) > 50
    by_hand = [b for b in expected(path, False) if b[0][0] == 'S' and b[0][1] in 'AP' and b[0][2:5] == 'US7']
    assert alone == ['\n'.join(lines) for _, _, lines in by_hand]


def test_every_index_line_finds_its_bulletin(samples):
    path = samples / 'products-feed.txt'
    parse = WmoParse(path, path.with_suffix('.idx'))
    bulletins = {b.position: b for b in WmoParse(path)}
    for line in path.with_suffix('.idx').read_text().splitlines():
        offset, rest = line.split(' ', 1)
        heading, identifier = rest.split(' / ')
        assert parse.setLoc(int(offset)) == 1
        found = next(iter(parse))
        assert (found.heading, found.identifier) == (heading, identifier)
        assert found.text == bulletins[int(offset)].text
