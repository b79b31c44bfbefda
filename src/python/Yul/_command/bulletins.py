"""list the bulletins of a raw WMO feed

One line a bulletin whose heading fits the pattern: its heading, product identifier and number of lines. With --text the
bulletins themselves; with --json a record each. Patterns: SAUS, S[AP]., SA*KWBC ..., see docs/bulletins.md.
"""

from datetime import datetime
import json

from Yul import WmoParse, Yul

from ._common import Failure, check_input, is_terminal


def declare(parser):
    parser.add_argument('files', metavar='FILE', nargs='+', help='feeds that follow each other; - for standard input')
    parser.add_argument('--header', metavar='PATTERN', help='only bulletins whose heading fits')
    parser.add_argument('--id', metavar='TEXT', help='only bulletins that hold the text, from that line on')
    parser.add_argument('--index', metavar='FILE', help='index of the feed: only what it lists is read')
    parser.add_argument('--date', metavar='YYYY-MM-DD', help='when the feed was taken, for the month and year of times')
    group = parser.add_mutually_exclusive_group()
    group.add_argument('--text', action='store_true', help='print the bulletins')
    group.add_argument('--json', action='store_true', help='a record a line')


def taken(text):
    try:
        return datetime.fromisoformat(text) if text else None
    except ValueError:
        raise Failure(Yul.BADPARAM, f'not a date: {text}') from None


def run(arguments):
    date = taken(arguments.date)
    for name in [*arguments.files, *filter(None, [arguments.index])]:
        check_input(name)
    if arguments.index and len(arguments.files) > 1:
        raise Failure(Yul.BADPARAM, 'an index belongs to one feed')
    feed = WmoParse(arguments.files[0] if len(arguments.files) == 1 else arguments.files, arguments.index,
                    header=arguments.header, identifier=arguments.id, date=date)
    if not feed.isOpen():
        raise Failure(Yul.NOINPUT)
    bold, plain = ('\033[1m', '\033[0m') if is_terminal() else ('', '')
    count = 0
    for bulletin in feed:
        count += 1
        if arguments.json:
            time = bulletin.time
            print(json.dumps({'heading': bulletin.heading, 'identifier': bulletin.identifier, 'position': bulletin.position,
                              'time': time and time.strftime('%Y-%m-%dT%H:%M:%SZ'), 'lines': bulletin.lines},
                             ensure_ascii=False))
        elif arguments.text:
            print(f'{bold}{bulletin.heading}{plain}', *filter(None, [bulletin.identifier]), bulletin.text, '', sep='\n')
        else:
            print(f'{bulletin.heading:<26}{bulletin.identifier:<8}{len(bulletin.lines):>6} lines')
    if count == 0:
        raise Failure(Yul.NODATA, 'no bulletin' + (f' whose heading fits {arguments.header}' if arguments.header else ''))
