"""The pattern language for headings and identifiers, and zone lines."""

import pytest

import _Yul

# Heading, identifier, pattern, whether it matches, and the verdict's mark in the trace.
CASES = [
    ('SAUS70 KWBC 060000', '', '', 1, '  1'),
    ('SAUS70 KWBC 060000', '', 'SAUS70 KWBC', 1, '  1'),
    ('SAUS70 KWBC 060000', '', 'SA..70_KWBC', 1, '  1'),
    ('SAUS70 KWBC 060000', '', 'SA??70_KWBC', 1, '  1'),
    ('SAUS70 KWBC 060000', '', 'SAUS71', 0, '0 L'),
    ('SAUS70 KWBC 060000', '', 'saus', 0, '0 L'),
    ('SAUS70', '', 'SAUS70_KWBC', 0, '0 E'),
    ('', '', 'S', 0, '0 E'),
    ('', '', '', 1, '  1'),
    ('** SAUS70 KWBC', '', 'SAUS', 1, '  1'),
    ('**', '', 'S', 0, '0 E'),
    ('SAUS70 KWBC', '', 'S[AP]US', 1, '  1'),
    ('SAUS70 KWBC', '', 'S[^AP]US', 0, '0 ]'),
    ('SXUS70 KWBC', '', 'S[^AP]US', 1, '  1'),
    ('SXUS70 KWBC', '', 'S[AP]', 1, '1 ]'),  # at the pattern's end
    ('SXUS70 KWBC', '', 'S[AP]U', 0, '0 ]'),
    ('S', '', 'S[AP]', 0, '0 E'),
    ('SAUS70 KWBC', '', 'S(AUS|PUS)7', 1, '  1'),
    ('SAUS70 KWBC', '', 'S(AU|AUS)7', 0, '0 L'),  # the first that fits is final
    ('SAUS70 KWBC', '', 'S(P.S|[AX]?S)70', 1, '  1'),
    ('SAUS70 KWBC', '', 'S(X|Y)', 0, '0 )'),
    ('S', '', 'S(X|Y)', 1, '1 )'),
    ('SAUS70 KWBC', '', 'SA-_KWBC', 1, '  1'),
    ('SAUS70 KWBC', '', 'SA*_KWBC', 1, '  1'),
    ('SAUS70 KWBC', '', '-KWBC', 1, '  1'),
    ('SAUS70 KKWBC', '', '-KWBC', 0, '0 L'),  # never goes back
    ('SAUS70 KWBC', '', '-X', 0, '- E'),
    ('SAUS70 KWBC', '', 'SA*', 1, '  1'),
    ('SAUS70 KWBC', '', '-', 1, '  1'),
    ('NWUS54 KJAN', '  LSRJAN', 'NWUS/LSR', 1, '  1'),
    ('NWUS54 KJAN', 'LSRJAN', '/AFD', 0, '0 L'),
    ('NWUS54 KJAN', '', '/AFD', 0, '0 E'),
    ('NWUS54 KJAN', '', 'NWUS54/', 1, '  1'),
    ('YHXX', 'GRIB1 M81 G3 L500 H24', '/M81H24', 1, '1 G'),
    ('YHXX', 'GRIB1 M81 G3 L500 H24', '/M81 H36', 0, '0 G'),
    ('YHXX', 'GRIB2 S1M2G3T4L5H6V7', 'YH/V7T4S1', 1, '1 G'),
    ('YHXX', 'GRIB1 M81 G3', '/L500', 0, '0 G'),
    ('YHXX', 'GRIB1 L-5', '/L-5', 1, '1 G'),
    ('YHXX', 'GRIB', '/', 1, '1 G'),
    ('SA', '', 'S[A', 1, '  1'),
    ('SA', '', 'S(A', 1, '  1'),
]


@pytest.mark.parametrize('heading, identifier, pattern, matches, mark', CASES)
def test_headings_match_patterns(heading, identifier, pattern, matches, mark, capfd):
    feed = _Yul.new_WmoParse()
    _Yul.Yul_setMessageLevel('+debug7')
    assert _Yul.WmoParse_compare(feed, heading, identifier, pattern) == matches
    _Yul.Yul_setMessageLevel('mess')
    assert capfd.readouterr().out == f'{mark} CMP:{heading}:{identifier}:{pattern}:\n'


@pytest.mark.parametrize('line, zone, matches', [
    ('WIZ063>065-070-', 'WIZ064', 1), ('WIZ063>065-070-', 'WIZ063', 1), ('WIZ063>065-070-', 'WIZ065', 1),
    ('WIZ063>065-070-', 'WIZ066', 0), ('WIZ063>065-070-', 'wiz064', 1), ('WIZ063>065-070-', 'WIC064', 0),
    ('WIZ063>065-070-', 'WIZALL', 1), ('WIZ063>065-070-', 'ILZALL', 0), ('WIZ063>065-070-', 'WIZ64', 1),
    ('WIZ063>065-070-', 'WIZ070', 0),  # fewer than 8 characters are left
    ('WIZ063>065-070-102015-', 'WIZ070', 1), ('WIZ063-070-102015-\r\r\n', 'WIZ102', 0),
    ('WIZ063-070-ILZ001-002-102015-', 'ILZ002', 1), ('WIZ063-070-ILZ001-002-102015-', 'ILZ063', 0),
    ('WIZ001-ILZ002-WIZ003-ILZ004-102015-', 'WIZ003', 1), ('WIZ001-ILZ002-WIZ003-ILZ004-102015-', 'WIZ004', 0),
    ('WIZ001-ILZ002-WIZ003-ILZ004-102015-', 'WIZ002', 0),
    ('WIZWIZ063', 'WIZ063', 0), ('WIZWIZ063-065-070-', 'WIZ063', 1), ('WIZ', 'WIZ063', 0), ('', 'WIZ063', 0),
    ('WIZ063>065-070-', 'WI', 0), ('WIZ063>065-070-', '', 0), ('WIZ---------------', 'WIZ000', 1)])
def test_zone_lines(line, zone, matches):
    assert _Yul.WmoParse_checkZone(line, zone) == matches
    assert _Yul.WmoParse_checkZone(_Yul.new_WmoParse(), line, zone) == matches
