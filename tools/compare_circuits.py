#!/usr/bin/env python3
"""Writes the circuits tools/compare_outputs.sh runs both binaries over: random lattice
circuits (short wires, and long wires that other wires end on), ladders like the
benchmark's, random scribbles full of awkward drawing (overlaps, repeats, wires of no
length, slanted wires, minus zero, crossings) and damaged copies of the given files.

usage: compare_circuits.py OUT_DIR [--seed N] [--lattices N] [--scribbles N] FILE.amq...
"""

import argparse
import random
from pathlib import Path

CRLF = "\r\n"


def number(value):
    """A coordinate or value as the program writes it: whole numbers without a point."""
    if value == int(value) and abs(value) < 1e7:
        return "-0" if value == 0 and str(value).startswith("-") else str(int(value))
    return repr(float(value))


def amq(wires, elements, nodes=()):
    lines = [str(len(wires))]
    lines += [",".join(number(v) for v in w) for w in wires]
    lines.append(str(len(elements)))
    lines += [f"{number(x)},{number(y)},{kind},{number(value)}" for x, y, kind, value in elements]
    lines.append(str(len(nodes)))
    lines += [f'"{name}","{name}",{number(x)},{number(y)}' for name, x, y in nodes]
    return CRLF.join(lines) + CRLF


def lattice(rng):
    """Edges between neighbouring points of a small grid, each holding a resistor, a
    battery, a current source or nothing; points left with one edge are pruned."""
    columns, rows = rng.randint(2, 5), rng.randint(2, 4)
    edges = []
    for row in range(rows):
        for column in range(columns):
            p = row * columns + column
            for q, ok in ((p + 1, column + 1 < columns), (p + columns, row + 1 < rows)):
                if not ok or rng.random() < 0.15:
                    continue
                pick = rng.random()
                device = ("R" if pick < 0.55 else "B" if pick < 0.72 else "I" if pick < 0.82 else "")
                value = {"R": rng.randint(1, 1000) / 4, "B": rng.randint(1, 96) / 4,
                         "I": rng.randint(1, 39) / 8, "": 0}[device]
                if rng.random() < 0.3 and device:
                    value = round(rng.uniform(0.1, 100), rng.choice((2, 3)))
                edges.append((p, q, device, value, rng.random() < 0.5))
    changed = True
    while changed:
        changed = False
        for e in edges:
            degree = [sum((f == p) + (t == p) for f, t, *_ in edges) for p in e[:2]]
            if 1 in degree:
                edges.remove(e)
                changed = True
                break

    def xy(p):
        return 80 + 80 * (p % columns), 80 + 80 * (p // columns)

    has = {(f, t) for f, t, *_ in edges}
    wires = []
    if rng.random() < 0.3:  # one wire per straight run: T-junctions to split
        def across(p):
            c = p % columns
            return 0 < c < columns - 1 and (p - 1, p) in has and (p, p + 1) in has

        def down(p):
            r = p // columns
            return 0 < r < rows - 1 and (p - columns, p) in has and (p, p + columns) in has and not across(p)

        for f, t, *_ in edges:
            passes = across if t - f == 1 else down
            if passes(f):
                continue
            end = t
            while passes(end):
                end += t - f
            wires.append((*xy(f), *xy(end)))
    else:
        for f, t, *_ in edges:
            a, b = (xy(f), xy(t)) if rng.random() < 0.8 else (xy(t), xy(f))
            wires.append((*a, *b))
    elements = []
    for f, t, device, value, forward in edges:
        if not device:
            continue
        (x1, y1), (x2, y2) = xy(f), xy(t)
        vertical = x1 == x2
        kind = {"R": 5 if vertical else 6,
                "B": (2 if forward else 1) if vertical else (4 if forward else 3),
                "I": (8 if forward else 7) if vertical else (10 if forward else 9)}[device]
        elements.append(((x1 + x2) / 2, (y1 + y2) / 2, kind, value))
    return amq(wires[:100], elements[:60])


def ladder(rungs, rng):
    """Rails and rungs cut into short pieces until the wire table is full."""
    pieces = []
    for k in range(rungs):
        x = 96 * k
        pieces.append([x, 0, x, 320])
        if k > 0:
            pieces += [[x - 96, 0, x, 0], [x - 96, 320, x, 320]]
    while len(pieces) < 100:
        s = max(pieces, key=lambda s: max(s[2] - s[0], s[3] - s[1]))
        vertical = s[0] == s[2]
        middle = 8 * int(((s[1] + s[3]) if vertical else (s[0] + s[2])) / 2 / 8)
        rest = list(s)
        if vertical:
            s[3], rest[1] = middle, middle
        else:
            s[2], rest[0] = middle, middle
        pieces.append(rest)
    right = 96 * (rungs - 1)
    elements = [(0, 40, 7, 1), (right, 40, 8, 2), (40, 320, 3, 6), (right - 40, 0, 4, 9)]
    for x1, y1, x2, y2 in pieces:
        if len(elements) == 60:
            break
        x, y = (x1 + x2) / 2, (y1 + y2) / 2
        if x1 == x2 and x not in (0, right) and y > 100:
            elements.append((x, y, 5, rng.choice((100, 47, 220))))
        elif x1 != x2 and 100 < x < right - 100:
            elements.append((x, y, rng.choice((6, 6, 6, 3, 4)), rng.choice((47, 12, 5))))
    return amq(pieces, elements)


def scribble(rng):
    """Wires on a small grid, so that they meet, overlap, cross and repeat often."""
    wires = []
    for _ in range(rng.randint(3, 40)):
        x, y = 40 * rng.randint(0, 5), 40 * rng.randint(0, 5)
        w = [x, y, x, y]
        p = rng.random()
        w[2 if p < 0.45 else 3] += 40 * rng.randint(0, 3)
        if p >= 0.9:
            w[2] += 40  # slanted
        if rng.random() < 0.05 and w[0] == 0:
            w[0] = -0.0
        if rng.random() < 0.3:
            w = [w[2], w[3], w[0], w[1]]
        wires.append(w)
    elements = []
    for _ in range(rng.randint(0, len(wires))):
        x1, y1, x2, y2 = rng.choice(wires)
        kind = rng.randint(1, 10)
        if kind in (5, 6):
            kind = 5 if x1 == x2 else 6
        elements.append(((x1 + x2) / 2, (y1 + y2) / 2, kind, rng.randint(1, 100)))
    nodes = [(rng.choice(("0", "A", "B")), 40 * rng.randint(0, 5), 40 * rng.randint(0, 5))
             for _ in range(rng.randint(0, 3))]
    return amq(wires, elements[:60], nodes)


def damaged(text, rng):
    """A file cut short, a character changed, a line dropped or doubled, a field added."""
    lines = text.split("\n")
    how = rng.randint(0, 5)
    if how == 0:
        return text[: rng.randint(0, len(text))]
    if how == 1 and text:
        at = rng.randrange(len(text))
        return text[:at] + rng.choice('0123456789-.,"e+ \r\nxE') + text[at + 1:]
    if how == 2 and len(lines) > 1:
        del lines[rng.randrange(len(lines))]
    elif how == 3:
        at = rng.randrange(len(lines))
        lines.insert(at, lines[at])
    elif how == 4:
        at = rng.randrange(len(lines))
        lines[at] = lines[at].replace("\r", "") + rng.choice((",1", ',"x"', ", 2", "\r", ",,"))
    else:
        return text.replace("\r\n", "\n")
    return "\n".join(lines)


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("out")
    parser.add_argument("files", nargs="*")
    parser.add_argument("--seed", type=int, default=15)
    parser.add_argument("--lattices", type=int, default=400)
    parser.add_argument("--scribbles", type=int, default=300)
    parser.add_argument("--damaged", type=int, default=8, help="damaged copies per file")
    args = parser.parse_args()
    rng = random.Random(args.seed)
    out = Path(args.out)
    out.mkdir(parents=True, exist_ok=True)
    written = []

    def write(name, text):
        (out / name).write_bytes(text.encode("utf-8", "surrogateescape"))
        written.append(name)

    for k in range(args.lattices):
        write(f"lattice_{k:03}.amq", lattice(rng))
    for rungs in range(3, 11):
        write(f"ladder_{rungs:02}.amq", ladder(rungs, rng))
    for k in range(args.scribbles):
        write(f"scribble_{k:03}.amq", scribble(rng))
    originals = [Path(f).read_bytes().decode("utf-8", "surrogateescape") for f in args.files]
    originals += [(out / n).read_text() for n in written[:: max(1, len(written) // 40)]]
    for k, text in enumerate(originals):
        for d in range(args.damaged):
            write(f"damaged_{k:03}_{d}.amq", damaged(text, rng))


if __name__ == "__main__":
    main()
