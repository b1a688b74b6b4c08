#!/usr/bin/env python3
"""Writes fuzz/seeds/editor_events/: each example drawn as editing events, in the byte
stream the editor_events target reads (see ExerciseEditorEvents): one operation byte
(0 button, 1 down, 2 move, 4 up, 6 answer), then its argument bytes."""
import pathlib

here = pathlib.Path(__file__).resolve().parent
ANSWERS = 28  # answers below this index are fixed texts; others give their value mod 64


def coordinate(value):
    quarters = round((float(value) + 40) * 4)
    assert 0 <= quarters < 3200, value
    return bytes([quarters >> 8, quarters & 0xFF])


def answer(value):
    whole = min(63, max(0, round(abs(float(value)))))
    return bytes([6, whole + 64 if whole < ANSWERS else whole])


def events(text):
    lines = [line.strip() for line in text.splitlines() if line.strip()]
    wires = int(lines[0])
    out = bytearray([0, 0])  # button 1: the Wire tool
    for line in lines[1:1 + wires]:
        x1, y1, x2, y2 = line.split(",")
        out += b"\x01" + coordinate(x1) + coordinate(y1)
        out += b"\x02" + coordinate(x2) + coordinate(y2)
        out += b"\x04" + coordinate(x2) + coordinate(y2)
    elements = int(lines[1 + wires])
    for line in lines[2 + wires:2 + wires + elements]:
        x, y, kind, value = line.split(",")
        kind = int(kind)
        tool = 2 if kind <= 4 else 3 if kind <= 6 else 4
        out += bytes([0, tool - 1]) + answer(value)
        out += b"\x01" + coordinate(x) + coordinate(y)
    return bytes(out)


for example in sorted((here.parent / "examples").glob("*.amq")):
    target = here / "seeds" / "editor_events" / (example.stem + ".events")
    target.write_bytes(events(example.read_text()))
