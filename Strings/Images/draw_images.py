#!/usr/bin/env python3
"""Draws the welcome screen's images into this folder as PNG files (run: python3 draw_images.py)."""

import math
import os
import struct
import zlib


def write_png(path, width, height, pixel):
    """pixel(x, y) -> (r, g, b, a); writes an 8-bit RGBA PNG."""
    rows = bytearray()
    for y in range(height):
        rows.append(0)
        for x in range(width):
            rows.extend(pixel(x, y))

    def chunk(kind, data):
        return struct.pack(">I", len(data)) + kind + data + struct.pack(">I", zlib.crc32(kind + data) & 0xFFFFFFFF)

    header = struct.pack(">IIBBBBB", width, height, 8, 6, 0, 0, 0)
    with open(path, "wb") as out:
        out.write(b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", header) + chunk(b"IDAT", zlib.compress(bytes(rows), 9))
                  + chunk(b"IEND", b""))


def mix(a, b, t):
    return tuple(round(p + (q - p) * t) for p, q in zip(a, b))


DEEP = (24, 44, 78)
LIGHT = (70, 130, 200)
ACCENT = (240, 170, 60)
CLEAR = (0, 0, 0, 0)


def banner(width, height, stripes):
    def pixel(x, y):
        colour = mix(DEEP, LIGHT, x / (width - 1))
        # Film-strip perforations along the edges of the top banner.
        if stripes and (y < 6 or y >= height - 6) and (x // 8) % 2 == 0 and 2 <= y % (height - 4) <= 4:
            colour = mix(colour, (255, 255, 255), 0.6)
        return colour + (255,)
    return pixel


def icon(shape):
    def pixel(x, y):
        return (ACCENT + (255,)) if shape(x + 0.5, y + 0.5) else CLEAR
    return pixel


def plus(x, y):
    return (13 <= x <= 19 and 4 <= y <= 28) or (13 <= y <= 19 and 4 <= x <= 28)


def folder(x, y):
    tab = 4 <= x <= 14 and 6 <= y <= 10
    body = 4 <= x <= 28 and 10 <= y <= 26
    inside = 6 <= x <= 26 and 12 <= y <= 24
    return tab or (body and not inside) or (6 <= x <= 26 and 16 <= y <= 18)


def question(x, y):
    distance = math.hypot(x - 16, y - 16)
    ring = 12 <= distance <= 15
    dot = math.hypot(x - 16, y - 22) <= 2
    hook = 4 <= math.hypot(x - 16, y - 12) <= 6 and not (y > 12 and x < 16)
    stem = 15 <= x <= 17 and 16 <= y <= 19
    return ring or dot or hook or stem


def main():
    here = os.path.dirname(os.path.abspath(__file__))
    images = {
        "kResDLGQuickStartDialogTop": (480, 64, banner(480, 64, True)),
        "kResDLGQuickStartDialogBottom": (480, 16, banner(480, 16, False)),
        "kResDLGQuickStartNew": (32, 32, icon(plus)),
        "kResDLGQuickStartOpen": (32, 32, icon(folder)),
        "kResDLGQuickStartHelp": (32, 32, icon(question)),
    }
    for name, (width, height, pixel) in images.items():
        write_png(os.path.join(here, name + ".png"), width, height, pixel)


if __name__ == "__main__":
    main()
