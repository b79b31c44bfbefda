"""The operations that take the names of files: there an object with a path, such as pathlib.Path, serves as well as a text.

`_Yul` itself takes texts alone.
"""

from os import fsdecode

# Class -> its operations, "new" for the constructor.
OPERATIONS = {
    'Resrc': 'add set put append prepend',
    'Yul': 'setDatabasePath addResrc putResrc setResrc appendResrc',
    'ColorMap': 'read',
    'Filename': 'new set add',
    'NameConvFile': 'set setFilename',
    'NameConv': 'setPath',
    'FileTool': 'addPath exist getSize isDirectory',
    'CityFile': 'new open',
    'ResrcDB': 'decodeProgramName',
    'WmoParse': 'open',
    'GribFile': 'new open read checkType',
    'GridFile': 'new open read write checkType',
    'GridYulFile': 'new open read write checkType',
    'Image': 'read write writeGif',
    'Plot': 'drawImage saveImage',
    'MapPlot': 'setFile',
    'MapFile': 'new open write',
}
# Parameters of theirs that are no names of files, for type checkers.
NOT_PATHS = {'Resrc': ('name',), 'Yul': ('name',), 'Plot': ('position', 'type')}

FUNCTIONS = {f'new_{name}' if operation == 'new' else f'{name}_{operation}'
             for name, operations in OPERATIONS.items() for operation in operations.split()}


def taking_paths(function, name):
    """The flat function of that name with paths as texts; any other function as it is."""
    if name not in FUNCTIONS:
        return function

    def call(*arguments):
        return function(*(fsdecode(item) if hasattr(type(item), '__fspath__') else item for item in arguments))

    return call
