"""What the figures were measured on and beside: machine, compiler, versions of the peers."""

from importlib import metadata
from pathlib import Path
import os
import platform
import re
import subprocess

BUILD = Path(__file__).resolve().parent.parent.parent / 'build'
# Name -> the Debian package or the Python package that knows the version.
LIBRARIES = {'ecCodes': 'libeccodes-dev', 'g2c': 'libg2c-dev', 'OpenJPEG': 'libopenjp2-7-dev', 'libpng': 'libpng-dev',
             'PROJ': 'libproj-dev', 'GMT': 'gmt', 'Magics': 'libmagics++-dev', 'pybind11': 'pybind11-dev'}
MODULES = {'NumPy': 'numpy', 'SciPy': 'scipy', 'contourpy': 'contourpy', 'matplotlib': 'matplotlib'}


def first_match(pattern, text, otherwise='unknown'):
    found = re.search(pattern, text, re.MULTILINE)
    return found[1].strip() if found else otherwise


def output_of(*command):
    """What a command prints; nothing when it fails or is not there."""
    try:
        return subprocess.run(command, capture_output=True, text=True, check=True).stdout
    except (OSError, subprocess.CalledProcessError):
        return ''


def text_of(path):
    return Path(path).read_text() if Path(path).exists() else ''


def package_version(package):
    """The upstream version of an installed Debian package, or None."""
    return first_match(r'^(?:\d+:)?([\w.]+)', output_of('dpkg-query', '-W', '-f', '${Version}', package), None)


def module_version(module):
    try:
        return metadata.version(module)
    except metadata.PackageNotFoundError:
        return None


def peers():
    """Name -> version, None where it is not installed."""
    return ({name: package_version(package) for name, package in LIBRARIES.items()}
            | {name: module_version(module) for name, module in MODULES.items()})


def describe():
    """The machine and its software, a line each."""
    cpu = first_match(r'^model name\s*:(.*)', text_of('/proc/cpuinfo'), platform.machine())
    memory = int(first_match(r'^MemTotal:\s*(\d+)', text_of('/proc/meminfo'), '0')) / 2**20
    cache = text_of(BUILD / 'CMakeCache.txt')
    compiler = output_of(first_match(r'^CMAKE_CXX_COMPILER:\w+=(.*)', cache, 'c++'), '--version').partition('\n')[0]
    system = first_match(r'^PRETTY_NAME="(.*)"', text_of('/etc/os-release'), platform.system())
    found = peers()
    return [
        f'machine: {cpu}, {os.cpu_count()} processors, {memory:.0f} GiB of memory',
        f'system: {system}, {" ".join(platform.libc_ver())}, Python {platform.python_version()}',
        f'compiler: {compiler or "unknown"}, {first_match("^CMAKE_BUILD_TYPE:STRING=(.*)", cache)}',
        'peers: ' + ', '.join(f'{name} {version}' for name, version in found.items() if version),
        *(f'# {name} is not installed: its rows are missing' for name, version in found.items() if not version),
    ]
