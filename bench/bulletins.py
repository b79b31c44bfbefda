#!/usr/bin/env python3
"""A feed of 100 MB: bulletins selected by heading and their lines classified, beside two plain Python programs."""

from pathlib import Path
import random
import re
import sys
import tempfile
import time

sys.path.insert(0, str(Path(__file__).resolve().parent))

from support.interleaved import medians, print_row  # noqa: E402

ROUNDS = 5
SIZE = 100_000_000
HEADING = re.compile(rb'S[AP]US\d\d [A-Z]{4} \d{6}')
ZONE = re.compile(rb'[A-Z]{2}[CZ]\d{3}')
EVENT = re.compile(rb'/[A-Z]\.[A-Z]{3}')
HEADLINE = re.compile(rb'\.\.\.[A-Z]{2}')
PATTERN = 'S[AP]US'


def write_feed(path, least=SIZE):
    """A feed of at least so many octets."""
    chance = random.Random(5)
    kinds = ('SAUS', 'SPUS', 'SMNT', 'FTUS', 'WWUS', 'FPUS', 'NOUS', 'UAUS', 'SXUS', 'ASUS')
    prose = ('...WIND ADVISORY IN EFFECT UNTIL 6 PM MST THIS EVENING...', '$$', 'COZ035-036-038-211200-',
             '/O.NEW.KBOU.WI.Y.0012.240115T1200Z-240116T0100Z/', '',
             *['THE NATIONAL WEATHER SERVICE HAS ISSUED AN ADVISORY FOR THIS AREA.'] * 12)
    metars = [f'K{chance.choice("ABCDEFGH")}{chance.choice("IJKLMN")}{chance.choice("OPQRST")} 060053Z '
              f'{chance.randint(0, 35):02d}010KT 10SM FEW{chance.randint(5, 99):03d} SCT250 07/M05 '
              f'A{chance.randint(2950, 3050)} RMK AO2 SLP{chance.randint(0, 999):03d} T00721050=' for _ in range(5000)]
    size, number = 0, 0
    with open(path, 'wb') as file:
        while size < least:
            number += 1
            kind = chance.choice(kinds)
            head = [f'\x01\r\r\n{number % 1000:03d} ', f'{kind}{chance.randint(10, 99)} KWBC 060000', 'MTRDEN']
            body = chance.choices(prose if kind in ('WWUS', 'FPUS') else metars, k=chance.randint(3, 60))
            size += file.write(('\r\r\n'.join(head + body) + '\r\r\n\x03').encode())


def code(line):
    if line.startswith(b'$$'):
        return 18
    if ZONE.match(line):
        return 19
    if EVENT.match(line):
        return 20
    if HEADLINE.match(line):
        return 22
    return 16 if line[:1].isalnum() else 17


def by_split(name):
    bulletins, counts = 0, [0] * 32
    with open(name, 'rb') as file:
        for text in file.read().split(b'\x01\r\r\n')[1:]:
            if not HEADING.match(text, text.find(b'\n') + 1):
                continue
            bulletins += 1
            for line in text.split(b'\r\r\n')[3:]:
                if line != b'\x03':
                    counts[code(line)] += 1
    return bulletins, counts[16]


def by_line(name):
    state, bulletins, counts = 0, 0, [0] * 32
    with open(name, 'rb') as file:
        for raw in file:
            if raw.startswith((b'\x01\r\r', b'\x03\x01\r\r')):
                state = 1
                continue
            line = raw.rstrip(b'\r\n')
            if state == 1:
                state = 2
            elif state == 2:
                is_selected = HEADING.match(line) is not None
                bulletins += is_selected
                state = 3 if is_selected else 5
            elif state == 3:
                state = 16
            elif state == 16:
                counts[code(line)] += 1
    return bulletins, counts[16]


def ours(name):
    from Yul import WmoParse
    bulletins = lines = 0
    for bulletin in WmoParse(name, header=PATTERN):
        bulletins += 1
        lines += bulletin.codes.count(16)
    return bulletins, lines


def flat(name):
    """The same through the module's functions alone."""
    import _Yul
    feed, product = _Yul.new_WmoParse(name), _Yul.new_WmoProduct()
    _Yul.WmoParse_setHeader(feed, PATTERN)
    bulletins = lines = 0
    while _Yul.WmoParse_getProduct(feed, product):
        bulletins += 1
        lines += _Yul.WmoProduct_getCodes(product).count('\x10')
    return bulletins, lines


def row(job, mine, peer, peer_name, name, least):
    assert mine(name) == peer(name), job
    seconds, peer_seconds = medians(ROUNDS, lambda: mine(name), lambda: peer(name))
    megabytes = Path(name).stat().st_size / 1e6
    print_row(job, f'{megabytes / seconds:.0f} MB/s', f'{peer_name} {megabytes / peer_seconds:.0f} MB/s',
              peer_seconds / seconds, least)


def main():
    from Yul import reports
    with tempfile.TemporaryDirectory() as folder:
        name = str(Path(folder) / 'feed')
        write_feed(name)
        row('bulletins by heading, lines classified, Yul', ours, by_split, 'Python split', name, 6)
        row('bulletins by heading, lines classified, _Yul', flat, by_split, 'Python split', name, 6)
        row('bulletins by heading, lines classified, Yul', ours, by_line, 'Python lines', name, 6)
        start = time.perf_counter()
        count = sum(1 for _ in reports(name, kind='METAR', header='SAUS'))
        print(f'# {count} single METAR reports out of the same feed: {time.perf_counter() - start:.2f} s')


if __name__ == '__main__':
    main()
