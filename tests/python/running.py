"""What tests run in, and scripts that they run in a Python of their own."""

import os
import subprocess
import sys

import pytest

HAS_SANITIZERS = 'asan' in os.environ.get('LD_PRELOAD', '')


def without_sanitizers(reason):
    """The mark of tests that sanitizers upset."""
    return pytest.mark.skipif(HAS_SANITIZERS, reason=reason)


def python(script, *arguments, **options):
    """A script that has run to its end, with what it printed: octets where its input is, else text."""
    options = {'capture_output': 'stdout' not in options, 'text': not isinstance(options.get('input'), bytes),
               'timeout': 300, **options}
    return subprocess.run([sys.executable, '-c', script, *map(str, arguments)], **options)
