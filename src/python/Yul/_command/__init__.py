"""The command `python -m Yul`, one file a subcommand.

A subcommand has `declare(parser)` for its arguments and `run(arguments)`, which does the work and raises Failure.
The exit status is one of the library's error codes; what is wrong is said in one line on standard error.
"""

import argparse
import os
import signal
import sys

from Yul import Yul

from . import bulletins, converting, listing, plotting
from ._common import Failure

SUBCOMMANDS = {'ls': listing, 'plot': plotting, 'convert': converting, 'bulletins': bulletins}


class Parser(argparse.ArgumentParser):
    def error(self, message):
        self.exit(Yul.BADPARAM, f'{self.prog}: {message}; see {self.prog} --help\n')


def make_parser():
    parser = Parser(prog='python -m Yul', description='Reads, draws and converts the data of meteorology.',
                    epilog='Exit status: 0, or the library\'s error code (6 no file, 8 nothing written, 9 no such input, '
                           '10 no data, 11 bad argument).')
    parser.add_argument('--version', action='version', version=f'Yul {Yul.getVersion()}')
    subparsers = parser.add_subparsers(title='commands', metavar='COMMAND', required=True, parser_class=Parser)
    for name, module in SUBCOMMANDS.items():
        summary, _, description = module.__doc__.partition('\n')
        subparser = subparsers.add_parser(name, help=summary, description=module.__doc__,
                                          formatter_class=argparse.RawDescriptionHelpFormatter)
        module.declare(subparser)
        subparser.set_defaults(run=module.run, prog=subparser.prog)
    return parser


def main(arguments=None):
    """Runs the command and ends the process with its status."""
    signal.signal(signal.SIGPIPE, signal.SIG_DFL)  # a reader that has seen enough ends us, as other programs
    chosen = make_parser().parse_args(arguments)
    Yul.setProgramName('Yul')
    Yul.setMessageLevel('warn')
    try:
        chosen.run(chosen)
        sys.stdout.flush()
    except Failure as failure:
        if failure.text:
            print(f'{chosen.prog}: {failure.text}', file=sys.stderr)
        sys.exit(failure.status)
    except OSError as error:
        os.dup2(os.open(os.devnull, os.O_WRONLY), sys.stdout.fileno())  # what is left to write has nowhere to go
        print(f'{chosen.prog}: {error.filename or "standard output"}: {error.strerror}', file=sys.stderr)
        sys.exit(Yul.NOWRITE)
    except KeyboardInterrupt:
        sys.exit(128 + signal.SIGINT)
