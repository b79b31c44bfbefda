"""The test module stands beside the real one in the build folder."""

import pathlib
import sys

import _Yul

sys.path.insert(0, str(pathlib.Path(_Yul.__file__).parents[1] / 'python_tests'))
