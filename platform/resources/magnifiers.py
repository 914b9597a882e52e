#!/usr/bin/env python3
"""Writes the magnifier images of the histogram's view button as 8-bit BMPs:
QEN_MAG1 (one bar: back to the combined view) and QEN_MAG2 (three bars: to the
per-colour view). Light grey is the button face (mapped when loaded)."""
import struct

SIZE = 18
FACE, BLACK, WHITE, DARK, RED, GREEN, BLUE = range(7)
PALETTE = [(192, 192, 192), (0, 0, 0), (255, 255, 255), (64, 64, 64), (200, 0, 0), (0, 150, 0), (0, 0, 220)]


def image(bars):
    px = [[FACE] * SIZE for _ in range(SIZE)]
    cx = cy = 7
    for y in range(SIZE):
        for x in range(SIZE):
            d2 = (x - cx) ** 2 + (y - cy) ** 2
            if d2 <= 5.2 ** 2:
                px[y][x] = WHITE
            elif d2 <= 6.6 ** 2:
                px[y][x] = BLACK
    for i in range(5):  # the handle, two pixels thick, to the lower right
        for dx, dy in ((0, 0), (1, 0), (0, 1), (1, 1)):
            x, y = 12 + i + dx, 12 + i + dy
            if x < SIZE and y < SIZE:
                px[y][x] = DARK
    for x0, top, colour in bars:
        for y in range(top, 11):
            px[y][x0] = px[y][x0 + 1] = colour
    return px


def write(name, px):
    row = (SIZE + 3) // 4 * 4
    pal = b"".join(struct.pack("<BBBB", b, g, r, 0) for r, g, b in PALETTE)
    pal += b"\0" * (4 * (256 - len(PALETTE)))
    data = b"".join(bytes(px[y]) + b"\0" * (row - SIZE) for y in reversed(range(SIZE)))
    off = 14 + 40 + len(pal)
    head = struct.pack("<2sIHHI", b"BM", off + len(data), 0, 0, off)
    info = struct.pack("<IiiHHIIiiII", 40, SIZE, SIZE, 1, 8, 0, len(data), 2835, 2835, 256, 0)
    with open(name, "wb") as f:
        f.write(head + info + pal + data)


write("qen_mag1.bmp", image([(6, 4, DARK)]))
write("qen_mag2.bmp", image([(3, 7, RED), (6, 3, GREEN), (9, 5, BLUE)]))
