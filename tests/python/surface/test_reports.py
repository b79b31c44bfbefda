"""Single reports out of bulletins."""

from datetime import datetime, timezone

import pytest
import splitter
from feedwriter import bulletin

import _Yul
from Yul import Date, SfcWmoData, SfcWmoFile, WmoParse, reports

TAKEN = datetime(2020, 1, 6, 1, tzinfo=timezone.utc)


def texts(name, kind=None, **more):
    return [f'{r.kind} {r.station} {r.time:%d%H%M}: {r.text}' if r.time else f'{r.kind} {r.station}: {r.text}'
            for r in reports(name, kind, date=TAKEN, **more)]


# Heading, lines, and the reports "KIND STATION DDHHMM: text" that they hold.
CASES = {
    'the word in each line': (
        'SAUS14 KAWN 060000 RRX', ['METAR KAEG 052349Z 13006KT 10SM=', 'METAR KAQP 052351Z AUTO 25005KT', '     RMK AO2='],
        ['METAR KAEG 052349: METAR KAEG 052349Z 13006KT 10SM',
         'METAR KAQP 052351: METAR KAQP 052351Z AUTO 25005KT RMK AO2']),
    'the word once for all': (
        'SAUS70 KWBC 060000', ['METAR', 'KMYJ 052355Z AUTO=', 'K1V8 052353Z=KVNW 052350Z=', 'SPECI', 'KRCM 052340Z='],
        ['METAR KMYJ 052355: KMYJ 052355Z AUTO', 'METAR K1V8 052353: K1V8 052353Z', 'METAR KVNW 052350: KVNW 052350Z',
         'SPECI KRCM 052340: KRCM 052340Z']),
    'no word at all': ('SPUS70 KWBC 060002', ['KTCM 052356Z 22010KT='], ['SPECI KTCM 052356: KTCM 052356Z 22010KT']),
    'the word with a time': (
        'SASO31 AGGG 060000', ['METAR 060000', '', 'METAR AGGM 060000Z 14005KT=', '', ''],
        ['METAR AGGM 060000: METAR AGGM 060000Z 14005KT']),
    'no terminators': (
        'SAUS43 KDDC 060000 COR', ['MTRP28', 'METAR KP28 052356Z AUTO 01004KT ', 'T00561072', 'SPECI KP29 052356Z', 'A3001',
                                   'KP30 052350Z 00000KT', 'COR KP31 052350Z 00000KT'],
        ['METAR KP28 052356: METAR KP28 052356Z AUTO 01004KT T00561072', 'SPECI KP29 052356: SPECI KP29 052356Z A3001',
         'SPECI KP30 052350: KP30 052350Z 00000KT', 'SPECI KP31 052350: COR KP31 052350Z 00000KT']),
    'times without a Z': (
        'SAXX43 XXXX 060000', ['METAR', 'KP28 052356 01004KT 9999', 'TEMPO 3000 RA', 'KP29 052356 VRB02MPS', 'KP30 052350 9999'],
        ['METAR KP28 052356: KP28 052356 01004KT 9999 TEMPO 3000 RA', 'METAR KP29 052356: KP29 052356 VRB02MPS KP30 052350 9999']),
    'stations without a report': (
        'SAMP31 LMMM 060000', ['METAR HLLT NIL=', 'METAR NCAI 060000Z AUTO', 'NIL=', 'METAR HLLB 060000Z  NIL =', 'NNNN'],
        ['METAR HLLT 060000: METAR HLLT NIL', 'METAR NCAI 060000: METAR NCAI 060000Z AUTO NIL',
         'METAR HLLB 060000: METAR HLLB 060000Z NIL']),
    'nothing at all': ('SAXX60 KWBC 060000', ['METAR', 'NIL='], []),
    'an airport like a word': ('SARS31 UUUU 060000', ['METAR UUDD 060000Z 28004MPS=', 'UUDD NIL=', 'UUAA 060000Z 28004MPS='],
                               ['METAR UUDD 060000: METAR UUDD 060000Z 28004MPS', 'METAR UUDD 060000: UUDD NIL',
                                'METAR UUAA 060000: UUAA 060000Z 28004MPS']),
    'control characters': (
        'SAUS70 KWBC 060000', ['\x1eMETAR KMYJ\t052355Z  AUTO\x00RMK\x02=\x1e', '\x02METAR KMYK 052355Z='],
        ['METAR KMYJ 052355: METAR KMYJ 052355Z AUTO RMK', 'METAR KMYK 052355: METAR KMYK 052355Z']),
    'corrections': (
        'SABZ21 SBVT 060000 CCA', ['METAR COR SBVT 060000Z 01005KT=', 'METAR SBVU 060000Z CCB 01005KT='],
        ['METAR SBVT 060000: METAR COR SBVT 060000Z 01005KT', 'METAR SBVU 060000: METAR SBVU 060000Z CCB 01005KT']),
    'a section of land stations': (
        'SMRO01 YRBK 061200', ['AAXX 06121', '15015 02999 02501 10103', '333 4/000 55310=', '15020 NIL=', '15021 NIL',
                               'AAXX 06124', '15090 02997 53102 10139'],
        ['SYNOP 15015 061200: 15015 02999 02501 10103 333 4/000 55310', 'SYNOP 15020 061200: 15020 NIL',
         'SYNOP 15021 061200: 15021 NIL', 'SYNOP 15090 061200: 15090 02997 53102 10139']),
    'land stations without terminators': (
        'SMRO01 YRBK 061200', ['AAXX', '06121', '15015 02999 02501 10103 333', '20038 31012 55300 10119', '15020 02997 23104 11130'],
        ['SYNOP 15015 061200: 15015 02999 02501 10103 333 20038 31012 55300 10119',
         'SYNOP 15020 061200: 15020 02997 23104 11130']),
    'a section word in each line': (
        'SIVD01 XXXX 060600', ['AAXX 06061 15015 02999=', 'AAXX 06061 15020 02997='],
        ['SYNOP 15015 060600: 15015 02999', 'SYNOP 15020 060600: 15020 02997']),
    'ships': (
        'SSVX01 KWBC 060000', ['BBXX', 'DBBH 06004 99543 70123 46///=', 'PLAT 06003 99543 70123', '22222',
                               'BBXX WDA12 05234 99543 10123='],
        ['SHIP DBBH 060000: DBBH 06004 99543 70123 46///', 'SHIP PLAT 060000: PLAT 06003 99543 70123 22222',
         'SHIP WDA12 052300: BBXX WDA12 05234 99543 10123']),
    'land stations that move': ('SNVD01 XXXX 060000', ['OOXX', 'ABC12 06004 99543 70123 05555 00124='],
                                ['MOBIL ABC12 060000: ABC12 06004 99543 70123 05555 00124']),
    'buoys': (
        'SSVX02 KWBC 060000', ['ZZYY 44137 06010 0015/ 741231 059000 6119/ 11119=', 'ZZYY 4400513 05010 2345/ 741231 059000='],
        ['BUOY 44137 060015: ZZYY 44137 06010 0015/ 741231 059000 6119/ 11119',
         'BUOY 4400513 052345: ZZYY 4400513 05010 2345/ 741231 059000']),
    'coastal stations': ('SXUS20 KWNB 060000', ['CMAN 06004', 'BURL1 46/// /0507 10170=', 'CDRF1 46/// /0507 10170='],
                         ['CMAN BURL1 060000: BURL1 46/// /0507 10170', 'CMAN CDRF1 060000: CDRF1 46/// /0507 10170']),
    'soundings': (
        'USRO01 YRBK 060000', ['TTAA 56001 15420 99000 11850', '00150=', 'TTBB 56008 15420 00000='],
        ['TEMP 15420 060000: TTAA 56001 15420 99000 11850 00150', 'TEMP 15420 060000: TTBB 56008 15420 00000']),
    'climate': ('CSRO01 YRBK 060000', ['CLIMAT 12019', '15015 111 10033=', '15020 111 10044='],
                ['CLIMAT 15015 060000: 15015 111 10033', 'CLIMAT 15020 060000: 15020 111 10044']),
    'forecasts': (
        'FTUS43 KOAX 060520', ['TAFOMA', 'TAF AMD', 'KOMA 060520Z 0606/0706 18010KT P6SM SKC', '     FM061800 20015KT', 'NEXT 061200Z=',
                               'TAF KLNK 060530Z 0606/0706='],
        ['TAF KOMA 060520: KOMA 060520Z 0606/0706 18010KT P6SM SKC FM061800 20015KT NEXT 061200Z',
         'TAF KLNK 060530: TAF KLNK 060530Z 0606/0706']),
    'prose': ('WWUS53 KDEN 060000', ['SVSDEN', 'METAR DATA ARE NOT AVAILABLE', 'KDEN WILL BE CLOSED.', '$$'], []),
    'a second heading': (
        'SAUS70 KWBC 060000', ['KMYJ 052355Z AUTO', 'SACN31 CWAO 060100', 'CYUL 060055Z AUTO='],
        ['METAR KMYJ 052355: KMYJ 052355Z AUTO', 'METAR CYUL 060055: CYUL 060055Z AUTO']),
    'words twice, and ends of messages': (
        'FTUS41 KOKX 060520', ['TAF TAF', 'KOMA 060520Z 0606/0706 NNNN', 'TAF TAF KLNK 060530Z=NNNN', 'NNNN', 'KLNK 060531Z 0606/0706'],
        ['TAF KOMA 060520: KOMA 060520Z 0606/0706', 'TAF KLNK 060530: TAF TAF KLNK 060530Z', 'TAF KLNK 060531: KLNK 060531Z 0606/0706']),
    'broken': ('SAUS70 KWBC 060000', ['= = ==', 'METAR =', '=KMYJ 052355Z=', 'METAR KMYK'], ['METAR KMYJ 052355: KMYJ 052355Z']),
}


@pytest.mark.parametrize('end', ['\r\r\n', '\r\n', '\n'], ids=repr)
@pytest.mark.parametrize('case', CASES)
def test_a_bulletin_is_cut_into_its_reports(case, end, write_feed):
    heading, lines, expected = CASES[case]
    assert texts(write_feed(bulletin(heading, *lines, end=end))) == expected


def test_messages_carry_what_the_bulletin_says_once(write_feed):
    name = write_feed(bulletin('SMRO01 YRBK 061200', 'AAXX 06121', '15015 02999='),
                      bulletin('SAUS70 KWBC 060000', 'METAR COR', 'KMYJ 052355Z=', 'SPECI KMYK 052355Z='),
                      bulletin('SSVX01 KWBC 060000', 'BBXX', 'DBBH 06004 99543 70123='))
    assert [str(report) for report in reports(name)] == [
        'AAXX 06121 15015 02999', 'METAR COR KMYJ 052355Z', 'SPECI KMYK 052355Z', 'BBXX DBBH 06004 99543 70123']


def test_kind_heading_and_country_follow_from_the_bulletin(write_feed):
    name = write_feed(bulletin('SACN31 CWAO 060000', 'CYUL 052355Z=', 'METAR COR CYQB 052355Z NIL='),
                      bulletin('SMRO01 YRBK 061200 CCA', 'AAXX 06121', '15015 02999='))
    found = list(reports(name))
    assert [(r.heading, r.country, r.getKind(), r.nil, r.corrected, r.position) for r in found] == [
        ('SACN31 CWAO 060000', SfcWmoData.CANADA, SfcWmoData.HOURLY, False, False, 0),
        ('SACN31 CWAO 060000', SfcWmoData.CANADA, SfcWmoData.HOURLY, True, True, 0),
        ('SMRO01 YRBK 061200 CCA', SfcWmoData.ELSEWHERE, SfcWmoData.SYNOPTIC, False, False, found[2].position)]
    assert found[2].position > 60


def test_corrections_of_a_section_count_for_its_reports(write_feed):
    name = write_feed(bulletin('FTUS43 KOAX 060000', 'TAF AMD', 'KOMA 060001Z 0600/0624=', 'KLNK 060001Z 0600/0624=', 'TAF KOFF 060000Z 0600/0624='),
                      bulletin('SAUS70 KWBC 060000', 'METAR COR', 'KMYJ NIL=', 'METAR', 'KMYK NIL=', 'METAR RTD KMYL 052350Z='))
    assert [(r.station, r.corrected) for r in reports(name)] == [
        ('KOMA', True), ('KLNK', True), ('KOFF', False), ('KMYJ', True), ('KMYK', False), ('KMYL', False)]


def test_reading_goes_on_where_the_feed_is_set_to(write_feed):
    """Of a bulletin that has been left nothing more comes."""
    parts = [bulletin('SAUS70 KWBC 060000', f'KAA{i} NIL=', f'KBB{i} NIL=', f'KCC{i} NIL=', f'SPECI KDD{i} NIL=') + '\n' for i in range(2)]
    name, other = write_feed(*parts), write_feed(bulletin('SAUS70 KWBC 060000', 'SPECI KOTH NIL='), name='other')
    file, report = SfcWmoFile(name), SfcWmoData()
    for go, expected in ((file.rewind, 'KAA0'), (lambda: file.setLoc(0), 'KAA0'), (lambda: file.seek(len(parts[0])), 'KAA1'),
                         (lambda: file.setType('SPECI'), 'KDD1'), (lambda: file.open(other), 'KOTH'), (lambda: file.open(name), 'KDD0'),
                         (file.close, '')):
        file.read(report)
        go()
        file.read(report)
        assert report.station == expected


def test_a_heading_among_the_lines_counts(write_feed):
    found = list(reports(write_feed(bulletin('SAUS70 KWBC 060000', 'KMYJ NIL', 'SACN31 CWAO 060100 CCA', 'CYUL NIL=')), date=TAKEN))
    assert [(r.heading, r.country, r.time.hour, r.position) for r in found] == [
        ('SAUS70 KWBC 060000', 1, 0, 0), ('SACN31 CWAO 060100 CCA', 2, 1, 0)]


def test_one_kind_is_chosen_by_name_or_word(write_feed):
    name = write_feed(*(bulletin(heading, *lines) for heading, lines, _ in CASES.values()))
    count = {kind: len(texts(name, kind)) for kind in ('METAR', 'speci', 'SYNOP', 'AAXX', 'SHIP', 'TEMP', 'TTBB', None)}
    assert count['SYNOP'] == count['AAXX'] == 8
    assert count['TEMP'] == count['TTBB'] == 2
    assert count[None] > count['METAR'] > count['speci'] > 3
    with pytest.raises(ValueError, match="no such kind of report: 'SNOW'"):
        reports(name, 'SNOW')
    with pytest.raises(OSError):
        next(reports(name + '.none'))


@pytest.mark.parametrize('taken, stated, expected', [
    (datetime(2020, 1, 6, 0), '060000', datetime(2020, 1, 6)),
    (datetime(2020, 1, 6, 0), '062359', datetime(2020, 1, 6, 23, 59)),  # a day ahead at most
    (datetime(2020, 1, 6, 0), '070001', datetime(2019, 12, 7, 0, 1)),
    (datetime(2020, 3, 1, 0), '292300', datetime(2020, 2, 29, 23)),
    (datetime(2021, 3, 1, 0), '312300', datetime(2021, 1, 31, 23)),
    (datetime(2019, 12, 31, 23), '010000', datetime(2020, 1, 1)),
    (datetime(2020, 1, 6, 0), '329900', None),
    (datetime(2020, 1, 6, 0), '000000', None),
])
def test_times_get_month_and_year_from_the_time_of_the_feed(taken, stated, expected, write_feed):
    name = write_feed(bulletin(f'SAUS70 KWBC {stated}', 'METAR KMYJ NIL='))
    expected = expected and expected.replace(tzinfo=timezone.utc)
    assert next(iter(WmoParse(name, date=taken))).time == expected
    assert next(reports(name, date=Date.fromDatetime(taken))).time == expected
    _Yul.Yul_setInitTime(int(taken.replace(tzinfo=timezone.utc).timestamp()))
    assert next(reports(name)).time == expected


# Line, whether it is a heading, what is kept of it, day, hour, minute, kind (0: as before), country.
HEADINGS = [
    ('SAUS70 KWBC 060153', 'WMO: SAUS70 KWBC 060153 - 6 1 53\n', 1, 1),
    ('SAUS70 KWBC 060000 RRA\r\r\n', 'WMO: SAUS70 KWBC 060000 - 6 0 0\n', 1, 1),
    ('SAEW KAWN 060000', 'WMO: SAEW KAWN 060000 - 6 0 0\n', 1, 4),
    ('** SACN31 CWAO 060000 ****', 'WMO* SACN31 CWAO 060000 - 6 0 0\n', 1, 2),
    ('** WXYZ', 'WMO* WXYZ - -9999 -9999 -9999\n', 0, 4),
    ('SMRO01 YRBK 061200', 'WMO: SMRO01 YRBK 061200 - 6 12 0\n', 5, 4),
    ('SPCN31 CWAO 060000', 'WMO: SPCN31 CWAO 060000 - 6 0 0\n', 0, 2),
    *((f'{begin}31 XXXX 060000', f'WMO: {begin}31 XXXX 060000 - 6 0 0\n', kind, country)
      for kind, country, begins in (
          (1, 1, 'SAUE SAUM SAUW SAUC SACA SAXX SAHW SAPA SAPQ SAAK'), (1, 3, 'SAMX'), (1, 4, 'SAAU SACH'),
          (5, 4, 'SIAA SMAA SNAA SSAA'), (0, 4, 'SPUS FTUS'))
      for begin in begins.split()),
    *((line, '', None, None) for line in (
        '', ' SAUS70 KWBC 060000', 'saus70 kwbc 060000', 'SAUS7 KWBC 060000', 'SAUS70 KWB 060000', 'SAUS70 KWBC 06000',
        'SAUS70  KWBC 060000', 'METAR KDEN 060000Z', '** 9', '**SA', None)),
]


def test_headings_tell_time_kind_and_country(capfd):
    file = _Yul.new_SfcWmoFile()
    kind_before = 0
    for line, trace, kind, country in HEADINGS:
        _Yul.Yul_setMessageLevel('debug3')
        result = _Yul.SfcWmoFile_checkHeader(file, line)
        _Yul.Yul_setMessageLevel('mess')
        assert capfd.readouterr().out == trace, line
        assert result == bool(trace), line
        if trace:
            kind_before = kind or kind_before
            assert _Yul.SfcWmoFile_getHeading(file) == trace[5:].split(' - ')[0]
            assert _Yul.SfcWmoFile_getCountry(file) == country, line
        assert _Yul.SfcWmoFile_getKind(file) == kind_before, line


def test_a_report_prints_its_country_and_text(write_feed, capfd):
    name = write_feed(*(bulletin(f'{begin}31 XXXX 060000', 'KDEN NIL=') for begin in ('SAUS', 'SACN', 'SAMX', 'SAAU')))
    for report in reports(name):
        report.print()
    places = 'USA', 'CANADA', 'MEXICO', '4'
    assert capfd.readouterr().out == ''.join(f'Location: {place}\nMETAR KDEN NIL\n' for place in places)


def test_counts_start_anew_with_each_heading(write_feed):
    file, report = SfcWmoFile(write_feed(bulletin('SAUS70 KWBC 060000', 'KAAA NIL=', 'KBBB NIL='),
                                         bulletin('SAUS70 KWBC 060000', 'KCCC NIL='))), SfcWmoData()
    counts = []
    while file.read(report):
        counts.append((report.station, file.getNumReports()))
    assert counts == [('KAAA', 2), ('KBBB', 2), ('KCCC', 1)]
    assert report.text == '' and not report.time


def test_made_bulletins_agree_with_the_second_splitter(write_feed):
    """Reports in random order, with random line breaks and blanks."""
    import random
    chance = random.Random(3)
    parts = []
    for number in range(200):
        kind = chance.choice(('METAR', 'SPECI'))
        lines = [kind] if chance.random() < 0.5 else []
        for _ in range(chance.randint(0, 8)):
            groups = [f'K{chance.choice("ABC")}{chance.choice("DEF")}{chance.choice("GHI")}', f'0600{chance.randint(10, 59)}Z',
                      *chance.choices(('AUTO', '25010KT', '10SM', 'RMK', 'AO2', 'T00561072', '$', '9999', 'TEMPO', 'Q1013'), k=12)]
            if not lines or chance.random() < 0.3:
                groups.insert(0, kind)
            text = ' '.join(groups)
            cut = text.find(' ', chance.randint(30, 60))
            lines += [text[:cut], ' ' * chance.randint(0, 6) + text[cut + 1:] + '=']
        parts.append(bulletin(f'S{kind[0].replace("M", "A").replace("S", "P")}US{number % 90 + 10} KWBC 060000', *lines))
    name = write_feed(*parts)
    expected = list(splitter.reports(splitter.bulletins(''.join(parts).encode(), False)))
    assert [(r.kind, r.station, r.text) for r in reports(name)] == expected
    assert len(expected) > 500
