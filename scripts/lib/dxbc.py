#!/usr/bin/env python3
"""DXBC containers: what is in one, and the finish that vkd3d-compiler leaves out.

usage: dxbc.py finish COMPILED FINISHED    label shader model 5 code, renew the checksum
       dxbc.py show FILE...                print the chunks, and whether the checksum holds

A container is a header ("DXBC", 16 bytes of checksum, 1, the size, the number of chunks, their
offsets), then the chunks, each of a four-letter name, a size and its bytes; all little-endian.
"""

import math
import struct
import sys

CHECKSUM = slice(4, 20)
AFTER_CHECKSUM = 20


class DxbcError(Exception):
    """The bytes are no DXBC container."""


def md5_block(state, block):
    """One step of MD5 (RFC 1321): 64 bytes into the state of four words."""
    shifts = ((7, 12, 17, 22), (5, 9, 14, 20), (4, 11, 16, 23), (6, 10, 15, 21))
    words = struct.unpack("<16I", block)
    a, b, c, d = state
    for i in range(64):
        if i < 16:
            mix, word = (b & c) | (~b & d), i
        elif i < 32:
            mix, word = (d & b) | (~d & c), (5 * i + 1) % 16
        elif i < 48:
            mix, word = b ^ c ^ d, (3 * i + 5) % 16
        else:
            mix, word = c ^ (b | ~d), (7 * i) % 16
        constant = int(abs(math.sin(i + 1)) * 2**32)
        total = (a + mix + constant + words[word]) & 0xFFFFFFFF
        shift = shifts[i // 16][i % 4]
        total = (total << shift | total >> (32 - shift)) & 0xFFFFFFFF
        a, b, c, d = d, (b + total) & 0xFFFFFFFF, b, c
    return tuple((x + y) & 0xFFFFFFFF for x, y in zip(state, (a, b, c, d)))


def checksum(container):
    """MD5 of all that follows the checksum, with DXBC's own padding: the length in bits opens
    the last block instead of closing it, and a second number made of it closes it."""
    data = container[AFTER_CHECKSUM:]
    state = (0x67452301, 0xEFCDAB89, 0x98BADCFE, 0x10325476)
    whole = len(data) - len(data) % 64
    for start in range(0, whole, 64):
        state = md5_block(state, data[start : start + 64])
    bits = len(data) * 8
    rest = data[whole:] + b"\x80"
    first, last = struct.pack("<I", bits & 0xFFFFFFFF), struct.pack("<I", (bits >> 2 | 1) & 0xFFFFFFFF)
    if len(rest) > 56:
        state = md5_block(state, rest.ljust(64, b"\0"))
        rest = b""
    state = md5_block(state, (first + rest).ljust(60, b"\0") + last)
    return struct.pack("<4I", *state)


def chunks(container):
    """Yields (offset, name, bytes) of every chunk."""
    if len(container) < 32 or container[:4] != b"DXBC":
        raise DxbcError("no DXBC header")
    one, size, count = struct.unpack_from("<3I", container, AFTER_CHECKSUM)
    if one != 1 or size != len(container) or len(container) < 32 + 4 * count:
        raise DxbcError("the header does not fit the file")
    for offset in struct.unpack_from(f"<{count}I", container, 32):
        if offset + 8 > size:
            raise DxbcError("a chunk begins past the end")
        name, length = struct.unpack_from("<4sI", container, offset)
        if offset + 8 + length > size:
            raise DxbcError(f"chunk {name!r} ends past the end")
        yield offset, name.decode("ascii", "replace"), container[offset + 8 : offset + 8 + length]


def build(named_chunks):
    """Builds a container of (name, bytes) pairs, checksum included."""
    body, offsets = b"", []
    start = 32 + 4 * len(named_chunks)
    for name, content in named_chunks:
        offsets.append(start + len(body))
        body += struct.pack("<4sI", name.encode("ascii"), len(content)) + content
    header = b"DXBC" + bytes(16) + struct.pack("<3I", 1, start + len(body), len(named_chunks))
    result = bytearray(header + struct.pack(f"<{len(offsets)}I", *offsets) + body)
    result[CHECKSUM] = checksum(result)
    return bytes(result)


def finish(container):
    """Names shader model 5 code SHEX, as Microsoft's compiler does, and renews the checksum."""
    result = bytearray(container)
    for offset, name, code in chunks(container):
        if name == "SHDR" and code and code[0] >> 4 >= 5:
            result[offset : offset + 4] = b"SHEX"
    result[CHECKSUM] = checksum(result)
    return bytes(result)


def signature(chunk):
    """Yields "SEMANTIC0 register mask" of every element of an ISGN or OSGN chunk."""
    (count,) = struct.unpack_from("<I", chunk)
    for i in range(count):
        name, index, _, _, register, masks = struct.unpack_from("<6I", chunk, 8 + 24 * i)
        text = chunk[name : chunk.index(b"\0", name)].decode("ascii")
        mask = "".join(letter for bit, letter in enumerate("xyzw") if masks >> bit & 1)
        yield f"{text}{index} v{register}.{mask}"


def show(path):
    with open(path, "rb") as file:
        container = file.read()
    holds = checksum(container) == container[CHECKSUM]
    print(f"{path}: {len(container)} bytes, checksum {'holds' if holds else 'is wrong'}")
    for _, name, chunk in chunks(container):
        elements = ", ".join(signature(chunk)) if name in ("ISGN", "OSGN") else ""
        print(f"  {name} {len(chunk):6} bytes  {elements}".rstrip())


def main(arguments):
    if len(arguments) == 3 and arguments[0] == "finish":
        with open(arguments[1], "rb") as file:
            container = finish(file.read())
        with open(arguments[2], "wb") as file:
            file.write(container)
        return 0
    if len(arguments) >= 2 and arguments[0] == "show":
        for path in arguments[1:]:
            show(path)
        return 0
    print(__doc__, file=sys.stderr)
    return 2


if __name__ == "__main__":
    try:
        sys.exit(main(sys.argv[1:]))
    except DxbcError as error:
        sys.exit(f"dxbc.py: {error}")
