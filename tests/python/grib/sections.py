"""Edition 2 messages taken apart and put together."""

import zlib

import numpy as np


def split(octets):
    """The sections of a message by number, the end excluded."""
    position, sections = 16, {}
    while octets[position:position + 4] != b'7777':
        length = int.from_bytes(octets[position:position + 4], 'big')
        sections[octets[position + 4]] = octets[position:position + length]
        position += length
    return sections


def section(number, octets):
    return (len(octets) + 5).to_bytes(4, 'big') + bytes([number]) + octets


def join(*sections):
    body = b''.join(sections) + b'7777'
    return b'GRIB\0\0\0\2' + (16 + len(body)).to_bytes(8, 'big') + body


def chunk(name, data):
    return len(data).to_bytes(4, 'big') + name + data + zlib.crc32(name + data).to_bytes(4, 'big')


def png_packed(octets, integers, bits, more=b''):
    """The message with its values as samples of a PNG picture, R 0 and no scales: gray up to 16 bits, else in channels.

    more  chunks to stand before the samples."""
    ny, nx = integers.shape
    planes = np.unpackbits(integers.astype('>u4').view(np.uint8)).reshape(ny, nx, 32)[:, :, 32 - bits:]
    rows = np.packbits(planes.reshape(ny, nx * bits), axis=1)
    depth, colour = {24: (8, 2), 32: (8, 6)}.get(bits, (bits, 0))
    header = nx.to_bytes(4, 'big') + ny.to_bytes(4, 'big') + bytes([depth, colour, 0, 0, 0])
    picture = (b'\x89PNG\r\n\x1a\n' + chunk(b'IHDR', header) + more
               + chunk(b'IDAT', zlib.compress(b''.join(b'\0' + row.tobytes() for row in rows))) + chunk(b'IEND', b''))
    sections = split(octets)
    data = bytearray(sections[5])
    data[9:11] = (41).to_bytes(2, 'big')
    data[11:20] = bytes(8) + bytes([bits])
    sections[5] = bytes(data)
    sections[7] = (5 + len(picture)).to_bytes(4, 'big') + b'\7' + picture
    return join(*(sections[number] for number in sorted(sections)))
