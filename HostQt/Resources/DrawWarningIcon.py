#!/usr/bin/env python3
"""Draws the warning image (images/ntsc-warning.png) shown when a colour is not safe for
broadcast: an amber triangle with a dark rim and an exclamation mark. 32 x 32 pixels,
anti-aliased by 4 x 4 samples a pixel. Run it from this folder."""

import math
import struct
import zlib

SIZE, SAMPLES = 32, 4
RIM = (104, 72, 0)
FILL = (245, 183, 0)
MARK = (40, 28, 0)
TOP, LEFT, RIGHT = (16.0, 2.0), (1.5, 29.5), (30.5, 29.5)


def inside_triangle(x, y, inset):
    """Whether (x, y) lies inside the triangle shrunk by inset on every side."""
    corners = [TOP, RIGHT, LEFT]
    for (ax, ay), (bx, by) in zip(corners, corners[1:] + corners[:1]):
        length = math.hypot(bx - ax, by - ay)
        # Distance to the edge, positive on the inner side (the corners run clockwise on screen).
        if ((bx - ax) * (y - ay) - (by - ay) * (x - ax)) / length < inset:
            return False
    return True


def segment_distance(px, py, ax, ay, bx, by):
    dx, dy = bx - ax, by - ay
    t = max(0.0, min(1.0, ((px - ax) * dx + (py - ay) * dy) / (dx * dx + dy * dy)))
    return math.hypot(px - (ax + t * dx), py - (ay + t * dy))


def colour_at(x, y):
    """The colour of the topmost shape at (x, y), or None outside the image's shapes."""
    if segment_distance(x, y, 16, 12, 16, 20.5) <= 1.7 or math.hypot(x - 16, y - 25) <= 1.8:
        return MARK
    if inside_triangle(x, y, 1.6):
        return FILL
    if inside_triangle(x, y, 0.0):
        return RIM
    return None


def render(path):
    rows = []
    for j in range(SIZE):
        row = bytearray([0])
        for i in range(SIZE):
            hits = [colour_at(i + (si + 0.5) / SAMPLES, j + (sj + 0.5) / SAMPLES)
                    for sj in range(SAMPLES) for si in range(SAMPLES)]
            hits = [c for c in hits if c is not None]
            if hits:
                colour = [round(sum(c[k] for c in hits) / len(hits)) for k in range(3)]
            else:
                colour = [0, 0, 0]
            row += bytes(colour) + bytes([round(255 * len(hits) / SAMPLES ** 2)])
        rows.append(bytes(row))

    def chunk(kind, data):
        return struct.pack(">I", len(data)) + kind + data + struct.pack(">I", zlib.crc32(kind + data))

    header = struct.pack(">IIBBBBB", SIZE, SIZE, 8, 6, 0, 0, 0)
    with open(path, "wb") as out:
        out.write(b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", header) +
                  chunk(b"IDAT", zlib.compress(b"".join(rows), 9)) + chunk(b"IEND", b""))


render("images/ntsc-warning.png")
