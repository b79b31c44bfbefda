"""`python -m Yul`: the library at a terminal."""

from ._command import main

main()
