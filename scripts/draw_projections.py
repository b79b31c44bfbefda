#!/usr/bin/env python3
"""Draws the graticule of every projection: draw_projections.py FOLDER

The pictures of docs/projections.md, made by the library itself; a PNG of 160 dots across for each keyword.
"""

from pathlib import Path
import subprocess
import sys

from Yul import Domain, Plot, Yul

PICTURES = {
    'latlon': 'll:0,0,0,361,181,1,1',
    'pstereo': 'ps:90:-90,90,0,101,101,2.4,2.4',
    'merc': 'me:0,0,0,101,81,4,4',
    'lamb': 'lamb:45:-95:30:60,40,-95,101,81,1.3,1.3',
    'albers': 'alb:23:-96:29.5:45.5,38,-96,101,81,1.3,1.3',
    'lambaz': 'lambaz:50:10,50,10,101,101,1.6,1.6',
    'ortho': 'or:30:10,30,10,101,101,1.3,1.3',
    'gnom': 'gn:50:10,50,10,101,101,1.6,1.6',
    'moll': 'mo:0:0,0,0,185,94,2,2',
    'sat': 'sat:0:0,0,0,101,101,0.0031,0.0031',
    'radial': 'rad:50:10,50,10,101,101,1.3,1.3',
}
STEP = 15, 15  # degrees
DOTS = 160


def draw(text, page, picture):
    Yul.setResrc('device', f'postscript,{page},port,eps,gray')
    plot = Plot()
    if not (plot.open('full') and plot.setDomain(Domain(text)) and plot.drawGraticule('black:wi=1:st=1', *STEP) and
            plot.drawBorder() and plot.close()):
        sys.exit(f'{text}: not drawn')
    box = next(line.split()[1:] for line in page.read_text().splitlines() if line.startswith('%%BoundingBox'))
    left, bottom, right, top = (float(number) for number in box)
    dpi = 72 * DOTS / max(right - left, top - bottom)
    subprocess.run(['gs', '-q', '-dSAFER', '-dBATCH', '-dNOPAUSE', '-dEPSCrop', '-sDEVICE=pnggray', f'-r{dpi}',
                    '-dTextAlphaBits=4', '-dGraphicsAlphaBits=4', f'-sOutputFile={picture}', page], check=True)


def main():
    folder = Path(sys.argv[1])
    folder.mkdir(parents=True, exist_ok=True)
    page = folder / 'page.eps'
    for name, text in PICTURES.items():
        draw(text, page, folder / f'{name}.png')
    page.unlink()


if __name__ == '__main__':
    main()
