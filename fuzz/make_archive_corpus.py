#!/usr/bin/env python3
"""Writes the seeds of archive_fuzz into corpus/archive: python3 fuzz/make_archive_corpus.py

A seed is the fuzzer's five bytes (odd: the rest is content; then what to read loosely) and an archive's content, or a
whole archive with its header."""

import pathlib
import struct


def text(value):
    units = value.encode("utf-16-le", "surrogatepass")
    return struct.pack("<Q", len(units) // 2) + units


def record(fields):
    return struct.pack("<Q", len(fields)) + fields


def number(value):
    return struct.pack("<i", value)


NULL = text("")


def node(value, caption, child=NULL, more=b""):
    base = record(b"\0" + number(60))
    fields = b"\0" + base + b"\1" + number(value) + text(caption) + b"\2" + child + more
    return text("ATestNode") + record(record(fields))


def whole(content):
    total = 0xCBF29CE484222325
    for byte in content:
        total = (total ^ byte) * 0x100000001B3 % 2**64
    return b"KZAR" + struct.pack("<IQQ", 1, len(content), total) + content


def steps(*digits):
    return struct.pack("<I", sum(digit << 3 * place for place, digit in enumerate(digits)))


def chain(length):
    made = NULL
    for depth in range(length):
        made = node(depth, "", made)
    return made


content = {
    "empty": b"",
    "null": NULL,
    "node": node(1, "Fill/Red"),
    "node_in_node": node(1, "outer", node(2, "inner")),
    "two_nodes": node(1, "a") + node(2, "b"),
    "lone_surrogate": node(3, "\ud800"),
    "later_version": node(4, "", NULL, b"\3" + number(9)),
    "unknown_class": text("AUnknown") + record(b"whatever") + node(5, "next"),
    "deepest": chain(64),
    "too_deep": chain(66),
    "length_beyond_the_end": text("ATestNode") + struct.pack("<Q", 2**63),
    "count_beyond_the_end": struct.pack("<Q", 2**64 - 1),
    "open_record": struct.pack("<Q", 30) + b"\0" + number(1),
}

if __name__ == "__main__":
    folder = pathlib.Path(__file__).parent / "corpus" / "archive"
    folder.mkdir(parents=True, exist_ok=True)
    for name, bytes_ in content.items():
        (folder / name).write_bytes(b"\1" + steps() + bytes_)
    (folder / "whole").write_bytes(b"\0" + steps() + whole(node(1, "whole")))
    (folder / "whole_damaged").write_bytes(b"\0" + steps() + whole(node(1, "whole"))[:-1] + b"\1")
    (folder / "loose_record").write_bytes(
        b"\1" + steps(1, 2, 5, 3, 6, 4, 5) + record(b"\0" + number(1) + b"\1" + text("t")) + number(2))
    (folder / "loose_nested").write_bytes(
        b"\1" + steps(1, 2, 1, 3, 7, 4, 4, 5) + record(b"\0" + record(b"\1" + node(6, "n"))) + number(2))
