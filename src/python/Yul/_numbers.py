"""Numbers that are none of Python's own, such as elements of NumPy arrays, serve as arguments too.

`_Yul` itself takes int and float alone.
"""


def taking_numbers(function):
    """The flat function, called once more with such numbers as int or float when it has refused its arguments."""
    def call(*arguments):
        try:
            return function(*arguments)
        except TypeError:
            plain = [_plain(argument) for argument in arguments]
            if all(new is old for new, old in zip(plain, arguments)):
                raise
        return function(*plain)

    return call


def _plain(value):
    from numbers import Integral, Real  # rarely needed, so no part of the package's import
    if type(value) in (int, float, bool) or not isinstance(value, Real):
        return value
    return int(value) if isinstance(value, Integral) else float(value)
