"""A second splitter of feeds, written with regular expressions over the whole text, to compare the library with."""

import re

AIRPORT_KINDS = {'SA': 'METAR', 'SP': 'SPECI', 'FT': 'TAF', 'FC': 'TAF'}
START = re.compile('^\x03?\x01\r\r[^\n]*\n', re.MULTILINE)
STARRED = re.compile(r'^\*\* ([^\n]*?) ?\*{0,4}[\r]*\n', re.MULTILINE)
AIRPORT = r'[A-Z][A-Z0-9]{3}'
BEGINNING = re.compile(rf'=|^[ \t]*(?=(?:METAR|SPECI|TAF)\b)|^[ \t]*(?=(?:COR )?{AIRPORT} (?:\d{{6}}Z|NIL)\b)', re.MULTILINE)
AIRPORT_REPORT = re.compile(rf'(?:(METAR|SPECI|TAF) )?(?:(?:COR|AMD) )?({AIRPORT}) (?:COR )?(\d{{4,6}}[Zz]?|NIL)\b')
SECTION = re.compile(r'AAXX (\d{4}[\d/]) ?')
LAND_REPORT = re.compile(r'(\d{5}) ([\d/]{5}|NIL)(?= |$)')
SHIP_REPORT = re.compile(r'(?:BBXX )?(\w{3,9}) \d{4}[\d/] 99')


def text_of(octets):
    return octets.decode('utf-8', 'surrogateescape')


def lines_of(body):
    """The lines of a bulletin's body, without the ETX that ends it and the blanks behind that."""
    lines = [line.rstrip('\r') for line in body.split('\n')]
    if not lines[-1]:
        lines.pop()
    for i, line in enumerate(lines):
        if line.endswith('\x03'):
            rest = [other for other in lines[i + 1:] if other.strip()]
            return lines[:i] + [line[:-1]] * bool(line[:-1].strip()) + rest
    return lines


def bulletins(octets, identifiers):
    """(heading, identifier, lines) of every bulletin."""
    found = []
    for piece in START.split(text_of(octets))[1:]:
        _, heading, body = (piece.split('\n', 2) + ['', ''])[:3]
        identifier, body = (body.split('\n', 1) + [''])[:2] if identifiers else ('', body)
        found.append((heading.strip(), identifier.strip(), lines_of(body)))
    return found


def starred_bulletins(octets, identifiers):
    pieces = STARRED.split(text_of(octets))[1:]
    found = []
    for heading, body in zip(pieces[::2], pieces[1::2]):
        identifier, body = (body.split('\n', 1) + [''])[:2] if identifiers else ('', body)
        found.append((heading.strip(), identifier.strip(), lines_of(body)))
    return found


def reports(found):
    """(kind, station, text) of every METAR, SPECI, TAF, SYNOP and SHIP report in the bulletins."""
    for heading, _, lines in found:
        body = '\n'.join(lines)
        if heading[:2] in AIRPORT_KINDS:
            yield from airport_reports(body, AIRPORT_KINDS[heading[:2]])
        elif heading[:2] in ('SM', 'SI', 'SN'):
            for text in body.split('='):
                text = SECTION.sub('', ' '.join(text.split()))
                if match := LAND_REPORT.match(text):
                    yield 'SYNOP', match[1], text
                elif match := SHIP_REPORT.match(text.removeprefix('BBXX ')):
                    yield 'SHIP', match[1], text.removeprefix('BBXX ')


def airport_reports(body, kind):
    for text in BEGINNING.split(body):
        text = ' '.join(text.split())
        if text in ('METAR', 'SPECI', 'TAF', 'METAR COR', 'TAF AMD'):
            kind = text.split()[0]
        elif match := AIRPORT_REPORT.match(text):
            kind = match[1] or kind
            yield kind, match[2], text
