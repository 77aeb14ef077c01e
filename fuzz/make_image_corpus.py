#!/usr/bin/env python3
"""Writes the seeds of image_fuzz: small PNG files of every kind, and the files of other kinds that
the tests have."""
import pathlib
import re
import struct
import zlib

HERE = pathlib.Path(__file__).resolve().parent
SEEDS = HERE / "corpus" / "image"


def chunk(kind, data):
    return struct.pack(">I", len(data)) + kind + data + struct.pack(">I", zlib.crc32(kind + data))


def png(width, height, color, depth, rows, more=b"", interlaced=0):
    header = struct.pack(">IIBBBBB", width, height, depth, color, 0, 0, interlaced)
    return (b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", header) + more + chunk(b"IDAT", zlib.compress(rows))
            + chunk(b"IEND", b""))


PALETTE = chunk(b"PLTE", b"\xff\0\0\0\xff\0\0\0\xff")
FILES = {
    "gray_1": png(8, 2, 0, 1, b"\0\xa5\0\x5a"),
    "gray_8": png(3, 1, 0, 8, b"\1\0\xff\x80"),
    "gray_16": png(2, 1, 0, 16, b"\0\xff\xff\0\0"),
    "rgb_8": png(2, 2, 2, 8, b"\0\xff\0\0\0\0\xff" + b"\2\1\2\3\4\5\6"),
    "rgb_key": png(2, 1, 2, 8, b"\0\xff\0\0\0\0\xff", chunk(b"tRNS", b"\0\xff\0\0\0\0")),
    "palette_2": png(4, 1, 3, 2, b"\0\x18", PALETTE),
    "palette_alpha": png(3, 1, 3, 8, b"\0\2\1\0", PALETTE + chunk(b"tRNS", b"\xff\0")),
    "gray_alpha": png(2, 1, 4, 8, b"\0\xff\xff\xff\0"),
    "rgba_8": png(2, 2, 6, 8, b"\4\xff\x80\0\x80\1\2\3\4" + b"\3\1\2\3\4\5\6\7\x08"),
    "rgba_16": png(1, 1, 6, 16, b"\0\xff\0\x80\0\0\0\x80\0"),
    "interlaced": png(2, 2, 0, 8, b"\0\1" + b"\0\2" + b"\0\3\4", interlaced=1),
}


def main():
    SEEDS.mkdir(parents=True, exist_ok=True)
    for name, data in FILES.items():
        (SEEDS / f"{name}.png").write_bytes(data)
    for header in ("small_jpegs.h", "small_images.h"):
        text = (HERE.parent / "tests" / "support" / header).read_text()
        for name, digits in re.findall(r"k(\w+)\[\] = \{([^}]*)\}", text):
            data = bytes(int(digit, 16) for digit in re.findall(r"0x(\w\w)", digits))
            kind = "gif" if data.startswith(b"GIF") else "webp" if data.startswith(b"RIFF") else "jpg"
            (SEEDS / (re.sub(r"(?<!^)([A-Z])", r"_\1", name).lower() + "." + kind)).write_bytes(data)


if __name__ == "__main__":
    main()
