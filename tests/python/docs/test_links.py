"""The links of the documents lead somewhere."""

from pathlib import Path
import re

import pytest

import _Yul

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


def test_every_page_of_the_guide_is_on_the_front_page():
    linked = {name for name, _ in LINK.findall((ROOT / 'docs' / 'index.md').read_text(encoding='utf-8'))}
    assert {page.name for page in ROOT.glob('docs/*.md')} - linked == {'index.md'}


def test_what_is_said_not_to_be_there_is_not_there():
    table = re.findall(r'^\|.*\|(.*)\|$', (ROOT / 'docs' / 'not_included.md').read_text(encoding='utf-8'), re.MULTILINE)
    named = {name for row in table for name in re.findall(r'`(\w+)`', row)}
    assert len(named) > 40 and not named & set(_Yul._classes())
