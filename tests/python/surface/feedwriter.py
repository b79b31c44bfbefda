"""Writes bulletins as feeds hold them."""


def bulletin(heading, *lines, number='123 ', end='\r\r\n', mark='\x01\r\r\n'):
    """One bulletin in its frame."""
    return mark + end.join([number, heading, *lines]) + end + '\x03'
