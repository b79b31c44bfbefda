#!/usr/bin/env python3
"""Draws the gallery: make_gallery.py FOLDER [NAME ...]

Runs every script of examples/gallery (or those named), renders its page with Ghostscript to FOLDER/NAME.png and
writes the page FOLDER.md beside the folder. A script draws one page to the file that its argument names; the first
line of its docstring is the title of the picture, the rest the text below it.
"""

import ast
from pathlib import Path
import subprocess
import sys
import tempfile

from Yul import Image

ROOT = Path(__file__).resolve().parent.parent
SCRIPTS = ROOT / 'examples' / 'gallery'
DPI = 80
COLORS = 256  # of a picture, which makes it half as large
EXACT = ('colors',)  # the pictures that keep all colours
HEADING = """# Gallery

Each picture is a page of PostScript, drawn by the script behind the link and rendered with Ghostscript.
`make gallery` draws them all anew.
"""


def describe(script):
    """Title and text of a picture: the script's docstring."""
    title, _, text = ast.get_docstring(ast.parse(script.read_text())).partition('\n')
    return title.rstrip('.'), text.strip()


def draw(script, picture):
    """Runs a script and renders its page; whatever Ghostscript has to say is a failure."""
    with tempfile.TemporaryDirectory() as folder:
        page = Path(folder) / 'page.ps'
        subprocess.run([sys.executable, script, page.name], cwd=folder, check=True, stdout=subprocess.DEVNULL)
        words = subprocess.run([ROOT / 'scripts' / 'render-page', page, picture, str(DPI)], check=True,
                               capture_output=True, text=True)
    if words.stdout or words.stderr:
        sys.exit(f'{script.name}: {words.stdout}{words.stderr}')
    image = Image()
    if script.stem not in EXACT and not (image.read(str(picture)) and image.toIndexed(COLORS) and image.write(str(picture))):
        sys.exit(1)


def write_page(page, folder):
    """The page that shows all pictures of the folder."""
    lines = [HEADING]
    for script in sorted(SCRIPTS.glob('*.py')):
        title, text = describe(script)
        link = f'../examples/gallery/{script.name}'
        lines += [f'## {title}', '', f'[![{title}]({folder.name}/{script.stem}.png)]({link})', '']
        lines += [text, ''] if text else []
        lines += [f'[{script.name}]({link})', '']
    page.write_text('\n'.join(lines).rstrip() + '\n')


def main():
    folder = Path(sys.argv[1]).resolve()
    folder.mkdir(parents=True, exist_ok=True)
    scripts = sorted(SCRIPTS.glob('*.py'))
    for script in scripts:
        if script.stem in sys.argv[2:] or len(sys.argv) == 2:
            draw(script, folder / f'{script.stem}.png')
    for picture in folder.glob('*.png'):
        if picture.stem not in {script.stem for script in scripts}:
            picture.unlink()
    write_page(folder.with_suffix('.md'), folder)
    print(f'gallery: {folder}.md')


if __name__ == '__main__':
    main()
