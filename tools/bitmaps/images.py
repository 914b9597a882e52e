#!/usr/bin/env python3
"""Draws the library's button images, icons and cursor, each for 100 % and 200 %.

Run from the repository root: python3 tools/bitmaps/images.py
The files under resources/bitmaps are committed; this documents how they were
made and remakes them. Nothing is downloaded: every image is a few shapes
rasterised here.

- Button images (8-bit BMP, NAME.bmp and NAME_200.bmp at twice the size): light
  grey (192, 192, 192) is the button face; the library loads them with
  LR_LOADMAP3DCOLORS, so that grey becomes the face colour of the user's scheme.
  Pixels are either covered or not (no blending into the face grey).
- Icons (.ico: 16, 32 and 64 pixels, 32-bit with alpha) and the pointing-hand
  cursor (.cur: 32 and 64 pixels, hot spot on the finger tip).
"""
import math
import struct

OUT = "resources/bitmaps/"
FACE = (192, 192, 192)
SUB = 4  # samples per pixel and axis


# ---- shapes in unit coordinates (0..1 across the image, y down) -------------------------

def ring(cx, cy, r, width, a0, a1):
    """A circular stroke from angle a0 to a1 (degrees, counter-clockwise, 0 = right)."""
    def inside(x, y):
        d = math.hypot(x - cx, y - cy)
        if abs(d - r) > width / 2:
            return False
        a = math.degrees(math.atan2(cy - y, x - cx)) % 360
        lo, hi = a0 % 360, a1 % 360
        return lo <= a <= hi if lo <= hi else (a >= lo or a <= hi)
    return inside


def polygon(points):
    def inside(x, y):
        n, c = len(points), False
        for i in range(n):
            (x1, y1), (x2, y2) = points[i], points[(i + 1) % n]
            if (y1 > y) != (y2 > y) and x < (x2 - x1) * (y - y1) / (y2 - y1) + x1:
                c = not c
        return c
    return inside


def rect(x0, y0, x1, y1):
    return lambda x, y: x0 <= x <= x1 and y0 <= y <= y1


def disc(cx, cy, r):
    return lambda x, y: (x - cx) ** 2 + (y - cy) ** 2 <= r * r


def outline(shape, inner):
    return lambda x, y: shape(x, y) and not inner(x, y)


def head(cx, cy, r, angle, size, ccw):
    """An arrow head at the end of a ring at `angle`, pointing along the ring."""
    a = math.radians(angle)
    px, py = cx + r * math.cos(a), cy - r * math.sin(a)
    # tangent in the direction of travel
    tx, ty = (-math.sin(a), -math.cos(a)) if ccw else (math.sin(a), math.cos(a))
    nx, ny = math.cos(a), -math.sin(a)
    tip = (px + tx * size, py + ty * size)
    return polygon([tip, (px + nx * size, py + ny * size), (px - nx * size, py - ny * size)])


def mirror_x(shape):
    return lambda x, y: shape(1 - x, y)


def swap_xy(shape):
    return lambda x, y: shape(y, x)


# ---- images: lists of (shape, colour), later ones on top ---------------------------------

DARK = (40, 60, 110)
BLUE = (50, 110, 200)
LIGHT_BLUE = (170, 200, 240)
GREEN = (30, 150, 60)
RED = (200, 40, 40)
WHITE = (255, 255, 255)
BLACK = (0, 0, 0)
GREY = (90, 90, 90)
YELLOW = (250, 200, 40)

ROTATE_LEFT = [
    (ring(0.5, 0.52, 0.3, 0.12, 110, 40), DARK),
    (head(0.5, 0.52, 0.3, 40, 0.2, True), DARK),
]
ROTATE_180 = [
    (ring(0.5, 0.5, 0.3, 0.12, 20, 180), DARK),
    (head(0.5, 0.5, 0.3, 20, 0.18, False), DARK),
    (ring(0.5, 0.5, 0.3, 0.12, 200, 360), BLUE),
    (head(0.5, 0.5, 0.3, 200, 0.18, False), BLUE),
]
FLIP_H = [
    (polygon([(0.42, 0.2), (0.42, 0.8), (0.08, 0.8)]), DARK),
    (outline(polygon([(0.58, 0.2), (0.58, 0.8), (0.92, 0.8)]),
             polygon([(0.645, 0.38), (0.645, 0.735), (0.84, 0.735)])), BLUE),
    (lambda x, y: 0.47 <= x <= 0.53 and int(y * 8) % 2 == 0, GREY),
]
# No rotation or flip: the letter F as it stands.
FLIP_NONE = [
    (rect(0.3, 0.15, 0.45, 0.85), DARK),
    (rect(0.3, 0.15, 0.75, 0.3), DARK),
    (rect(0.3, 0.45, 0.65, 0.58), DARK),
]
# Live: a video camera; capture: a still camera.
LIVE = [
    (rect(0.08, 0.3, 0.65, 0.75), GREEN),
    (polygon([(0.65, 0.52), (0.94, 0.3), (0.94, 0.75)]), GREEN),
    (disc(0.25, 0.2, 0.1), GREEN),
    (disc(0.48, 0.2, 0.1), GREEN),
]
CAPTURE = [
    (rect(0.08, 0.3, 0.92, 0.82), GREY),
    (rect(0.32, 0.18, 0.62, 0.32), GREY),
    (disc(0.5, 0.56, 0.2), WHITE),
    (disc(0.5, 0.56, 0.12), BLUE),
    (rect(0.74, 0.38, 0.85, 0.46), RED),
]
CHECK_MARK = polygon([(0.22, 0.5), (0.34, 0.38), (0.45, 0.52), (0.7, 0.22), (0.8, 0.33), (0.45, 0.76)])


def xp_box(checked):
    box = [
        (rect(0, 0, 1, 1), (28, 81, 128)),
        (rect(0.08, 0.08, 0.92, 0.92), (232, 232, 225)),
        (rect(0.16, 0.16, 0.84, 0.84), WHITE),
    ]
    if checked:
        box.append((CHECK_MARK, (33, 161, 33)))
    return box


CAUTION = [
    (polygon([(0.5, 0.04), (0.98, 0.94), (0.02, 0.94)]), BLACK),
    (polygon([(0.5, 0.16), (0.87, 0.87), (0.13, 0.87)]), YELLOW),
    (rect(0.45, 0.36, 0.55, 0.66), BLACK),
    (rect(0.45, 0.72, 0.55, 0.81), BLACK),
]
SELECT = [
    (rect(0.06, 0.28, 0.94, 0.86), DARK),
    (rect(0.3, 0.14, 0.64, 0.3), DARK),
    (disc(0.5, 0.57, 0.24), LIGHT_BLUE),
    (disc(0.5, 0.57, 0.14), BLUE),
    (rect(0.76, 0.36, 0.88, 0.44), WHITE),
]
HAND = [  # pointing hand, index finger up, outlined
    (rect(0.32, 0.02, 0.52, 0.56), BLACK),
    (rect(0.2, 0.42, 0.84, 0.96), BLACK),
    (polygon([(0.02, 0.56), (0.12, 0.5), (0.32, 0.66), (0.32, 0.9), (0.2, 0.9)]), BLACK),
    (rect(0.36, 0.06, 0.48, 0.6), WHITE),
    (rect(0.24, 0.46, 0.8, 0.92), WHITE),
    (polygon([(0.08, 0.56), (0.13, 0.55), (0.3, 0.69), (0.28, 0.84), (0.22, 0.84)]), WHITE),
    (rect(0.52, 0.46, 0.55, 0.62), BLACK),
    (rect(0.66, 0.46, 0.69, 0.62), BLACK),
]


def render(layers, size):
    """Rows of (colour, coverage 0..1) per pixel; the topmost covering layer wins."""
    rows = []
    for py in range(size):
        row = []
        for px in range(size):
            counts = {}
            for sy in range(SUB):
                for sx in range(SUB):
                    x, y = (px + (sx + 0.5) / SUB) / size, (py + (sy + 0.5) / SUB) / size
                    colour = None
                    for shape, c in layers:
                        if shape(x, y):
                            colour = c
                    counts[colour] = counts.get(colour, 0) + 1
            covered = SUB * SUB - counts.get(None, 0)
            if covered == 0:
                row.append((None, 0.0))
            else:
                best = max((k for k in counts if k is not None), key=lambda k: counts[k])
                row.append((best, covered / (SUB * SUB)))
        rows.append(row)
    return rows


def write_bmp(name, layers, size):
    """8-bit BMP, face grey where less than half a pixel is covered."""
    rows = render(layers, size)
    palette = [FACE]
    index = []
    for row in rows:
        line = []
        for colour, cover in row:
            c = colour if colour is not None and cover >= 0.5 else FACE
            if c not in palette:
                palette.append(c)
            line.append(palette.index(c))
        index.append(line)
    row_bytes = (size + 3) & ~3
    pal = b"".join(struct.pack("<BBBB", b, g, r, 0) for r, g, b in palette) + b"\0" * 4 * (256 - len(palette))
    data = b"".join(bytes(line) + b"\0" * (row_bytes - size) for line in reversed(index))
    off = 14 + 40 + len(pal)
    head_ = struct.pack("<2sIHHI", b"BM", off + len(data), 0, 0, off)
    info = struct.pack("<IiiHHIIiiII", 40, size, size, 1, 8, 0, len(data), 2835, 2835, 256, 0)
    with open(OUT + name + ".bmp", "wb") as f:
        f.write(head_ + info + pal + data)


def dib32(layers, size):
    """One icon image: BITMAPINFOHEADER (double height), BGRA bottom-up, AND mask."""
    rows = render(layers, size)
    xor = b""
    mask = b""
    mask_row = ((size + 31) // 32) * 4
    for row in reversed(rows):
        bits = 0
        line = b""
        for i, (colour, cover) in enumerate(row):
            r, g, b = colour if colour else (0, 0, 0)
            a = int(round(cover * 255))
            line += bytes((b, g, r, a))
            if a == 0:
                bits |= 1 << (size - 1 - i)
        xor += line
        mask += bits.to_bytes(mask_row, "big")[:mask_row] if size % 32 == 0 else \
            (bits << (mask_row * 8 - size)).to_bytes(mask_row, "big")
    info = struct.pack("<IiiHHIIiiII", 40, size, size * 2, 1, 32, 0, len(xor) + len(mask), 0, 0, 0, 0)
    return info + xor + mask


def write_icon(name, layers, sizes, cursor_hot=None):
    images = [dib32(layers, s) for s in sizes]
    kind = 2 if cursor_hot else 1
    out = struct.pack("<HHH", 0, kind, len(sizes))
    offset = 6 + 16 * len(sizes)
    for s, img in zip(sizes, images):
        if cursor_hot:
            a, b = int(cursor_hot[0] * s), int(cursor_hot[1] * s)
        else:
            a, b = 1, 32
        out += struct.pack("<BBBBHHII", s % 256, s % 256, 0, 0, a, b, len(img), offset)
        offset += len(img)
    with open(OUT + name + (".cur" if cursor_hot else ".ico"), "wb") as f:
        f.write(out + b"".join(images))


BUTTONS = {
    "rotate_left": ROTATE_LEFT,
    "rotate_right": [(mirror_x(s), c) for s, c in ROTATE_LEFT],
    "rotate_180": ROTATE_180,
    "flip_h": FLIP_H,
    "flip_v": [(swap_xy(s), c) for s, c in FLIP_H],
    "flip_none": FLIP_NONE,
    "live": LIVE,
    "capture": CAPTURE,
}

for name, layers in BUTTONS.items():
    write_bmp(name, layers, 16)
    write_bmp(name + "_200", layers, 32)
for name, checked in (("checkboxxpon", True), ("checkboxxpoff", False)):
    write_bmp(name, xp_box(checked), 13)
    write_bmp(name + "_200", xp_box(checked), 26)
write_icon("caution", CAUTION, [16, 32, 64])
write_icon("select", SELECT, [16, 32, 64])
write_icon("pointing_hand", HAND, [32, 64], cursor_hot=(0.42, 0.03))
