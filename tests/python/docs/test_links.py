"""The links of the documents lead somewhere."""

from pathlib import Path
import re

import pytest

ROOT = Path(__file__).resolve().parents[3]
PAGES = [*ROOT.glob('*.md'), *ROOT.glob('docs/*.md'), *ROOT.glob('src/*/README.md')]
LINK = re.compile(r'\]\((?!\w+:)([^)#\s]*)(?:#([^)\s]*))?\)')


def anchors(page):
    titles = re.findall(r'^#+ (.*)$', page.read_text(encoding='utf-8'), re.MULTILINE)
    return {re.sub(r'[^\w -]', '', title).strip().lower().replace(' ', '-') for title in titles}


@pytest.mark.parametrize('page', PAGES, ids=lambda page: str(page.relative_to(ROOT)))
def test_links_lead_to_files_and_headings(page):
    for name, anchor in LINK.findall(page.read_text(encoding='utf-8')):
        target = page.parent / name if name else page
        assert target.exists(), name
        assert not anchor or target.suffix != '.md' or anchor in anchors(target), f'{name}#{anchor}'
