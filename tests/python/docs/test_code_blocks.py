"""The code blocks of the documents run in order and print what the text block behind them shows; so do the commands of
console blocks."""

import pathlib
import re
import subprocess
import sys

import pytest
from running import HAS_SANITIZERS, python

ROOT = pathlib.Path(__file__).resolve().parents[3]
PAGES = [ROOT / "README.md", *sorted((ROOT / "docs").glob("*.md"))]
BLOCK = re.compile(r"^```(\w+)\n(.*?)^```$", re.MULTILINE | re.DOTALL)


def script_and_output(page):
    """The page's Python blocks as one script, and the text blocks that follow them directly."""
    script, output, previous = [], [], None
    for kind, body in BLOCK.findall(page.read_text(encoding="utf-8")):
        if kind == "python":
            script.append(body)
        elif kind == "text" and previous == "python":
            output.append(body)
        previous = kind
    return "".join(script), "".join(output)


@pytest.mark.parametrize("page", [p for p in PAGES if "```python" in p.read_text()], ids=lambda p: p.stem)
def test_code_blocks_print_what_the_page_shows(page, tmp_path):
    for name in re.findall(r"<!-- needs (\w+) -->", page.read_text(encoding="utf-8")):
        if HAS_SANITIZERS:
            pytest.skip(f"{name} and sanitizers do not go together")
        pytest.importorskip(name, reason=f"{name} is not installed")
    script, output = script_and_output(page)
    (tmp_path / "examples").symlink_to(ROOT / "examples")
    run = python(script, cwd=tmp_path)
    assert run.stderr == ""
    assert run.stdout == output


def commands_and_output(page):
    """The commands of the page's console blocks ("$ ..."), each with the lines below it."""
    for kind, body in BLOCK.findall(page.read_text(encoding="utf-8")):
        if kind == "console":
            for part in re.split(r"^\$ ", body, flags=re.MULTILINE)[1:]:
                command, _, output = part.partition("\n")
                yield command, output


@pytest.mark.parametrize("page", [p for p in PAGES if "```console" in p.read_text()], ids=lambda p: p.stem)
def test_commands_print_what_the_page_shows(page, tmp_path):
    (tmp_path / "examples").symlink_to(ROOT / "examples")
    for command, output in commands_and_output(page):
        run = subprocess.run(
            command.replace("python ", f"{sys.executable} "),
            shell=True,
            cwd=tmp_path,
            stdout=subprocess.PIPE,
            stderr=subprocess.STDOUT,
            text=True,
            check=False,
        )
        assert run.stdout == output, command
