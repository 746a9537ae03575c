#!/usr/bin/env python3
"""Draws the gang view's link images (images/GangLinked.png, images/GangUnlinked.png): a
vertical chain whose links join (linked) or stand apart with break marks (unlinked). Each
image is 24 x 48 pixels, anti-aliased by 4 x 4 samples a pixel. Run it from this folder."""

import math
import struct
import zlib

WIDTH, HEIGHT, SAMPLES = 24, 48, 4
LINKED = (47, 111, 191)
UNLINKED = (122, 127, 133)
STROKE = 2.6


def segment_distance(px, py, ax, ay, bx, by):
    dx, dy = bx - ax, by - ay
    length = dx * dx + dy * dy
    t = 0.0 if length == 0 else max(0.0, min(1.0, ((px - ax) * dx + (py - ay) * dy) / length))
    return math.hypot(px - (ax + t * dx), py - (ay + t * dy))


def link(top, bottom, radius=5.0):
    """A link seen face on: a stadium outline around a vertical segment."""
    return lambda x, y: abs(segment_distance(x, y, 12, top + radius, 12, bottom - radius) - radius) <= STROKE / 2


def bar(top, bottom):
    """A link seen edge on: a short thick bar."""
    return lambda x, y: segment_distance(x, y, 12, top, 12, bottom) <= STROKE * 0.75


def tick(ax, ay, bx, by):
    return lambda x, y: segment_distance(x, y, ax, ay, bx, by) <= STROKE / 2.5


def render(shapes, colour, path):
    rows = []
    for j in range(HEIGHT):
        row = bytearray([0])
        for i in range(WIDTH):
            hits = 0
            for sj in range(SAMPLES):
                for si in range(SAMPLES):
                    x = i + (si + 0.5) / SAMPLES
                    y = j + (sj + 0.5) / SAMPLES
                    hits += any(shape(x, y) for shape in shapes)
            row += bytes(colour) + bytes([round(255 * hits / SAMPLES ** 2)])
        rows.append(bytes(row))

    def chunk(kind, data):
        return struct.pack(">I", len(data)) + kind + data + struct.pack(">I", zlib.crc32(kind + data))

    header = struct.pack(">IIBBBBB", WIDTH, HEIGHT, 8, 6, 0, 0, 0)
    with open(path, "wb") as out:
        out.write(b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", header) +
                  chunk(b"IDAT", zlib.compress(b"".join(rows), 9)) + chunk(b"IEND", b""))


render([link(4, 21), bar(16, 32), link(27, 44)], LINKED, "images/GangLinked.png")
render([link(2, 18), link(30, 46), tick(3, 21, 8, 23), tick(16, 25, 21, 27)], UNLINKED, "images/GangUnlinked.png")
