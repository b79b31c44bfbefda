#!/usr/bin/env python3
"""Writes the documentation to a folder: make_docs.py FOLDER [OPTION...]

The guide as it stands, the figures, and a reference with a page a room: every class with its operations as Python calls
them, under the comments of the headers. Where the module markdown is installed all of it becomes a site of HTML pages;
without it the Markdown stays. The options go to the example that draws the figure of the front page.
"""

from pathlib import Path
import html
import re
import shutil
import subprocess
import sys

ROOT = Path(__file__).resolve().parent.parent
sys.path.insert(0, str(ROOT / 'src' / 'python' / 'generate'))

import _Yul  # noqa: E402
from pytypes import Library  # noqa: E402
from tables import documentation, parts_of  # noqa: E402

PAGE = '''<!DOCTYPE html>
<html lang="en">
<head>
<meta charset="utf-8">
<meta name="viewport" content="width=device-width, initial-scale=1">
<title>{title} - Yul</title>
<style>
body {{ font: 16px/1.5 sans-serif; margin: 0; color: #222; display: flex; flex-wrap: wrap; }}
nav {{ flex: 0 0 14em; padding: 1.5em; background: #f3f5f7; }}
nav ul {{ list-style: none; padding: 0; margin: 0 0 1em; }}
main {{ flex: 1 1 32em; max-width: 62em; min-width: 0; padding: 1em 2em; }}
a {{ color: #1a5a96; text-decoration: none; }}
a:hover {{ text-decoration: underline; }}
pre {{ background: #f6f8fa; padding: .8em; overflow-x: auto; }}
pre:has(.language-text) {{ background: none; border-left: 4px solid #d5dde5; white-space: pre-wrap; }}
code {{ font: 14px/1.4 monospace; }}
pre code {{ font-size: 13px; }}
table {{ border-collapse: collapse; display: block; overflow-x: auto; }}
td, th {{ border: 1px solid #ccc; padding: .2em .6em; text-align: left; vertical-align: top; }}
img {{ max-width: 100%; }}
</style>
</head>
<body>
<nav>{nav}</nav>
<main>
{body}
</main>
</body>
</html>
'''


def class_lines(library, texts, cls):
    """A class in Markdown: what it is, how its operations are called, its members and enumerators."""
    yield from (f'## {cls}', '', *library.class_doc(cls), '')
    calls, members = [], []
    for function in library.signatures:
        owner, name = parts_of(function)
        if owner == cls and function in texts:
            if name.endswith('_get'):
                members.append(texts[function])
            elif not name.endswith('_set') and not (name == 'print' and function.endswith('__print')):
                calls.append(texts[function])
    for title, items in (('Operations', calls), ('Members', members)):
        if items:
            yield from (f'**{title}**', '', '```text', '\n\n'.join(items), '```', '')
    constants = [f'`{name.removeprefix(cls + "_")}` {value}' for name, value in vars(_Yul).items()
                 if name.startswith(f'{cls}_') and type(value) is int]
    if constants:
        yield from ('**Enumerators**: ' + ', '.join(constants), '')


def write_reference(target):
    """A page a room, in the order of the module's classes; returns the lines that lead to them."""
    library = Library(ROOT / 'src')
    texts, rooms = documentation(library), {}
    for cls in _Yul._classes():
        rooms.setdefault(library.headers[cls].room, []).append(cls)
    folder = target / 'reference'
    folder.mkdir()
    for room, classes in rooms.items():
        lines = [line for cls in classes for line in class_lines(library, texts, cls)]
        (folder / f'{room}.md').write_text('\n'.join([f'# {room}', '', *lines]), encoding='utf-8')
        yield f'- [{room}](reference/{room}.md): ' + ', '.join(f'[{cls}](reference/{room}.md#{cls.lower()})' for cls in classes)


def draw_figure(target, options):
    draw = [sys.executable, ROOT / 'examples' / 'contour_map.py', ROOT / 'examples' / 'data' / 'height500.grib2']
    figure = target / 'images' / 'height500.ps'
    figure.parent.mkdir(exist_ok=True)
    subprocess.run([*draw, *options, '--output', figure], check=True)
    subprocess.run([ROOT / 'scripts' / 'render-page', figure, figure.with_suffix('.png'), '80'], check=True)
    figure.unlink()


def title_of(page):
    return page.read_text(encoding='utf-8').partition('\n')[0].lstrip('# ').strip()


def in_order(target):
    """The pages of the guide in the order of the front page's links, then those of the reference."""
    links = re.findall(r'\]\(([\w/]+\.md)\)', (target / 'index.md').read_text(encoding='utf-8'))
    return [target / 'index.md', *(target / name for name in dict.fromkeys(links))]


def write_site(target, markdown):
    """Each page of Markdown as HTML beside it, with the list of pages at its side; the Markdown goes."""
    pages = in_order(target)
    for page in pages:
        up = '../' * (len(page.relative_to(target).parts) - 1)
        parts = {False: [], True: []}
        for other in pages:
            name = other.relative_to(target).with_suffix('.html').as_posix()
            parts['/' in name].append(f'<li><a href="{up}{name}">{html.escape(title_of(other))}</a></li>')
        nav = f'<ul>{"".join(parts[False])}</ul><b>Reference</b><ul>{"".join(parts[True])}</ul>'
        body = markdown.markdown(page.read_text(encoding='utf-8'), extensions=['tables', 'fenced_code', 'toc', 'sane_lists'])
        body = re.sub(r'href="(?!\w+:)([^"#]*)\.md', r'href="\1.html', body).replace('"../examples/', '"examples/')
        page.with_suffix('.html').write_text(PAGE.format(title=html.escape(title_of(page)), nav=nav, body=body),
                                             encoding='utf-8')
    for page in pages:
        page.unlink()


def main():
    target = Path(sys.argv[1])
    shutil.rmtree(target, ignore_errors=True)
    shutil.copytree(ROOT / 'docs', target)
    shutil.copytree(ROOT / 'examples', target / 'examples', ignore=shutil.ignore_patterns('__pycache__'))
    with open(target / 'index.md', 'a', encoding='utf-8') as page:
        page.write('\n'.join(['', '## Reference', '', *write_reference(target), '']))
    draw_figure(target, sys.argv[2:])
    try:
        import markdown
    except ImportError:
        print(f'documentation: {target}/index.md (the module markdown is not installed: no HTML)')
        return
    write_site(target, markdown)
    print(f'documentation: {target}/index.html')


if __name__ == '__main__':
    main()
