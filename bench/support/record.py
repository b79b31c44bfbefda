"""The page of the documents that holds the figures."""

from pathlib import Path
import re

DOCS = Path(__file__).resolve().parent.parent.parent / 'docs'
PAGE, IMAGES = DOCS / 'performance.md', DOCS / 'images'


def replace_block(name, lines):
    """Puts lines between the marks `<!-- NAME -->` and `<!-- end of NAME -->` of the page."""
    start, end = f'<!-- {name} -->', f'<!-- end of {name} -->'
    page = PAGE.read_text(encoding='utf-8')
    block = re.compile(f'{start}.*?{end}', re.DOTALL)
    if len(block.findall(page)) != 1:
        raise ValueError(f'{PAGE}: no block {name}')
    PAGE.write_text(block.sub(lambda _: '\n'.join([start, '', *lines, '', end]), page), encoding='utf-8')
