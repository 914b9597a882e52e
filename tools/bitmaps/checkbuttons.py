#!/usr/bin/env python3
"""Draws the four 13 x 13 check-button bitmaps of the library (24-bit BMP).

Run from the repository root: python3 tools/bitmaps/checkbuttons.py
The .bmp files are committed; this only documents how they were made.
"""
import struct

SIZE = 13
# x -> the three rows of the check mark's stroke in that column
MARK = {3: 5, 4: 6, 5: 7, 6: 6, 7: 5, 8: 4, 9: 3}

STATES = {
    # name: (border, inside, mark or None)
    "qen_checked": ((0x33, 0x5E, 0x9C), (0xFF, 0xFF, 0xFF), (0x1A, 0x3C, 0x78)),
    "qen_unchecked": ((0x5A, 0x5A, 0x5A), (0xFF, 0xFF, 0xFF), None),
    "qen_disabled_checked": ((0xB4, 0xB4, 0xB4), (0xF0, 0xF0, 0xF0), (0xA0, 0xA0, 0xA0)),
    "qen_disabled_unchecked": ((0xB4, 0xB4, 0xB4), (0xF0, 0xF0, 0xF0), None),
}


def pixel(x, y, border, inside, mark):
    if x in (0, SIZE - 1) or y in (0, SIZE - 1):
        return border
    if mark and x in MARK and MARK[x] <= y <= MARK[x] + 2:
        return mark
    return inside


def write(name, border, inside, mark):
    row_bytes = (SIZE * 3 + 3) & ~3
    rows = []
    for y in range(SIZE - 1, -1, -1):  # bottom-up
        row = bytearray()
        for x in range(SIZE):
            r, g, b = pixel(x, y, border, inside, mark)
            row += bytes((b, g, r))
        row += b"\0" * (row_bytes - len(row))
        rows.append(bytes(row))
    data = b"".join(rows)
    header = struct.pack("<2sIHHI", b"BM", 14 + 40 + len(data), 0, 0, 14 + 40)
    info = struct.pack("<IiiHHIIiiII", 40, SIZE, SIZE, 1, 24, 0, len(data), 2835, 2835, 0, 0)
    with open("resources/bitmaps/%s.bmp" % name, "wb") as f:
        f.write(header + info + data)


for name, colours in STATES.items():
    write(name, *colours)
