#!/usr/bin/env python3
"""Puts the licence texts of the libraries that a repaired wheel brings along into it: add_licences.py RAW WHEEL

RAW is the wheel before its repair: what its module is linked with on this machine tells where each library came from. The
texts are the distribution's own, /usr/share/doc/<package>/copyright, and become licenses/<package>.txt in the wheel's
dist-info folder. Exit status 1, and the wheel stays as it is, when one has no text.
"""

import base64
import hashlib
from pathlib import Path
import re
import subprocess
import sys
import tempfile
import zipfile


def libraries_of(wheel):
    """The names of the bundled libraries as they were before the repair, which puts a part of a hash into each:
    "libpng16-d00bd151.so.16.39.0" was "libpng16.so.16.39.0"."""
    names = (Path(name).name for name in zipfile.ZipFile(wheel).namelist() if '.libs/' in name)
    return [re.sub(r'-[0-9a-f]{8}(?=\.so)', '', name) for name in names if '.so' in name]


def linked_files(raw):
    """Base name -> file of all that the module is linked with here, under every name that leads to the file."""
    with tempfile.TemporaryDirectory() as folder:
        modules = [name for name in zipfile.ZipFile(raw).namelist() if name.endswith('.so')]
        zipfile.ZipFile(raw).extractall(folder, modules)
        said = ''.join(subprocess.run(['ldd', Path(folder, module)], capture_output=True, text=True, check=True).stdout
                       for module in modules)
    files = [Path(path) for path in re.findall(r'=> (/\S+)', said)]
    return {name: file for file in files for name in (file.name, file.resolve().name)}


def copyright_of(file):
    """The package that a library belongs to and its licence text."""
    for name in (file.resolve(), file, Path('/usr', *file.parts[1:]), Path('/', *file.resolve().parts[2:])):
        run = subprocess.run(['dpkg-query', '-S', name], capture_output=True, text=True)
        if run.returncode == 0:
            package = run.stdout.partition(':')[0]
            return package, Path('/usr/share/doc', package, 'copyright').read_bytes()
    raise OSError(f'no package has {file}')


def add(wheel, texts):
    """Writes the wheel anew, with the texts and their lines in RECORD."""
    with zipfile.ZipFile(wheel) as old, zipfile.ZipFile(f'{wheel}.new', 'w', zipfile.ZIP_DEFLATED) as new:
        [record] = [name for name in old.namelist() if name.endswith('.dist-info/RECORD')]
        folder, lines = record.removesuffix('RECORD'), old.read(record).decode()
        for item in old.infolist():
            if item.filename != record:
                new.writestr(item, old.read(item))
        for package, text in texts.items():
            name, digest = f'{folder}licenses/{package}.txt', hashlib.sha256(text).digest()
            new.writestr(name, text)
            lines += f'{name},sha256={base64.urlsafe_b64encode(digest).decode().rstrip("=")},{len(text)}\n'
        new.writestr(record, lines)
    Path(f'{wheel}.new').replace(wheel)


def main():
    raw, wheel = sys.argv[1:]
    linked, texts = linked_files(raw), {}
    for name in libraries_of(wheel):
        if name not in linked:
            sys.exit(f'add_licences: {name}: not what the module is linked with here')
        try:
            package, text = copyright_of(linked[name])
        except OSError as error:
            sys.exit(f'add_licences: {name}: no licence text: {error}')
        texts[package] = text
    add(wheel, texts)
    print('add_licences:', ', '.join(sorted(texts)))


if __name__ == '__main__':
    main()
