#!/usr/bin/env python3
"""Writes the seeds of prefs_fuzz into corpus/prefs: python3 fuzz/make_prefs_corpus.py

A seed is the fuzzer's first byte (odd: the rest is content) and an archive's content, or a whole file."""

import pathlib

from make_archive_corpus import NULL, node, number, record, text, whole


def pair(first, second, name="AStoredPair", more=b""):
    base = record(b"\0" + number(60))
    return text(name) + record(b"\0" + base + b"\1" + number(first) + b"\2" + number(second) + more)


def node_file(made):
    """A class's own file holds what its object stores, without the object's frame."""
    frame = len(text("ATestNode")) + 8
    return text("ATestNode") + made[frame:]


content = {
    "empty": b"",
    "pair": pair(-1, 300),
    "largest": pair(2**31 - 1, -(2**31)),
    "later_version": pair(1, 2, more=b"\3" + number(9)),
    "other_class": pair(1, 2, "AOtherPair"),
    "no_class": NULL,
    "half": pair(1, 2)[:-5],
    "another_tag": pair(1, 2)[:-5] + b"\7" + number(2),
    "length_beyond_the_end": text("AStoredPair") + b"\xff" * 8,
    "node": node_file(node(1, "Fill/Red")),
    "node_in_node": node_file(node(1, "outer", node(2, "inner"))),
    "node_half": node_file(node(1, "outer", node(2, "inner")))[:-3],
}

folder = pathlib.Path(__file__).parent / "corpus" / "prefs"
folder.mkdir(parents=True, exist_ok=True)
for name, bytes_ in content.items():
    (folder / name).write_bytes(b"\1" + bytes_)
(folder / "whole").write_bytes(b"\0" + whole(pair(400, 300)))
(folder / "whole_damaged").write_bytes(b"\0" + whole(pair(400, 300))[:-1] + b"\1")
(folder / "drawing").write_bytes(b"\0<svg xmlns='http://www.w3.org/2000/svg'/>")
