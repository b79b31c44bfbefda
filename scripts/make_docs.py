#!/usr/bin/env python3
"""Writes the documentation to a folder: the guide as it stands, the figures, and a reference page a room.

The reference comes from the headers: each class with the comment in front of it, then its public operations and
members, each under the comment that covers it.
"""

from pathlib import Path
import re
import shutil
import subprocess
import sys

ROOT = Path(__file__).resolve().parent.parent
ROOMS = ('core', 'time', 'program', 'naming', 'geo', 'grid', 'surface', 'graphics', 'plot')
ACCESS = re.compile(r'\s*(public|protected|private):')
CLASS = re.compile(r'^(?:class|struct) (\w+)[^;]*$')


class Header:
    """The documented part of one header, as lines of Markdown."""

    def __init__(self, path):
        self.lines = []
        self.comment = []
        self.is_public = False
        self.is_internal = False
        self.declaration = ''
        self.depth = 0
        for line in path.read_text().splitlines():
            self.read(line)

    def read(self, line):
        stripped = line.strip()
        if stripped.startswith('namespace Yul'):
            self.is_internal = 'detail' in stripped
        elif self.is_internal:
            pass
        elif stripped.startswith('///') and not self.depth:
            self.comment.append(stripped[3:].strip())
        elif match := CLASS.match(line):
            self.is_public = line.startswith('struct')
            self.lines += [f'## {match[1]}', '', *self.take_comment(), '']
        elif match := ACCESS.match(line):
            self.is_public = match[1] == 'public'
            self.comment = []
        elif line.startswith('};'):
            self.is_public = False
        elif self.is_public and stripped and not stripped.startswith(('//', '{', '#')):
            self.add_declaration(stripped)

    def add_declaration(self, text):
        """Declarations may span lines; bodies are left out."""
        if not self.depth:
            self.declaration = f'{self.declaration} {text}'.strip()
        self.depth = max(self.depth + text.count('{') - text.count('}'), 0)
        if self.depth or not self.declaration.endswith((';', '}')):
            return
        if self.declaration.strip('};'):
            signature = re.sub(r'\s*(\{.*|;.*)$', '', self.declaration)
            signature = re.sub(r'\[\[.*?\]\]\s*|\bexplicit |\bvirtual | = default| noexcept| override', '', signature)
            comment = self.take_comment()
            self.lines += ['', *comment, ''] if comment else []
            self.lines.append(f'- `{signature}`')
        self.declaration = ''

    def take_comment(self):
        comment, self.comment = self.comment, []
        return comment


def main():
    target = Path(sys.argv[1])
    shutil.rmtree(target, ignore_errors=True)
    shutil.copytree(ROOT / 'docs', target)
    (target / 'reference').mkdir()
    index = ['', '## Reference', '']
    for room in ROOMS:
        pages = [Header(path).lines for path in sorted((ROOT / 'src' / room).glob('*.h'))]
        lines = [line for page in pages for line in page + [''] if page]
        if lines:
            (target / 'reference' / f'{room}.md').write_text('\n'.join([f'# {room}', '', *lines]))
            index.append(f'- [{room}](reference/{room}.md)')
    with open(target / 'index.md', 'a') as page:
        page.write('\n'.join(index) + '\n')
    draw = [sys.executable, ROOT / 'examples' / 'contour_map.py', ROOT / 'examples' / 'data' / 'height500.grib2']
    figure = target / 'images' / 'height500.ps'
    figure.parent.mkdir(exist_ok=True)
    subprocess.run([*draw, *sys.argv[2:], '--output', figure], check=True)
    subprocess.run([ROOT / 'scripts' / 'render-page', figure, figure.with_suffix('.png'), '80'], check=True)
    figure.unlink()
    print(f'documentation: {target}/index.md')


if __name__ == '__main__':
    main()
