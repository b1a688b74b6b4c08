#!/usr/bin/env python3
"""Whole-process speed of `ampora-cli solve --autoname` against `ngspice -b` on the same
circuits: the largest example and a random circuit of 25 devices.

For each circuit the script writes a SPICE netlist from the drawing in the .amq file (the wires
joined where their ends meet, each device between the wire pieces on either side of it), checks
that ngspice's node voltages agree with ampora-cli's, so that both solve the same circuit, then
runs the two programs alternately in pairs and prints the median wall times and their ratio.

    bench/cli_vs_ngspice.py [--cli build/src/ampora-cli] [--pairs 101] [--keep DIR]
"""

import argparse
import json
import os
import random
import statistics
import subprocess
import sys
import tempfile
import time
from pathlib import Path

HERE = Path(__file__).resolve().parent
SOURCE = HERE.parent

BATTERY_UP, BATTERY_DOWN, BATTERY_LEFT, BATTERY_RIGHT = 1, 2, 3, 4
RESISTOR_VERTICAL, RESISTOR_HORIZONTAL = 5, 6
SOURCE_UP, SOURCE_DOWN, SOURCE_LEFT, SOURCE_RIGHT = 7, 8, 9, 10


def read_amq(path):
    """The wires (x1, y1, x2, y2) and devices (x, y, kind, value) of a circuit file."""
    lines = [line.strip() for line in Path(path).read_text().splitlines()]
    at = 0

    def records(width):
        nonlocal at
        count = int(lines[at])
        at += 1
        rows = [lines[at + k].split(",")[:width] for k in range(count)]
        at += count
        return rows

    wires = [tuple(float(v) for v in row) for row in records(4)]
    devices = [(float(x), float(y), int(kind), float(value)) for x, y, kind, value in records(4)]
    return wires, devices


class Nets:
    """Union-find over the points of the drawing: ideal wire makes one net of what it joins."""

    def __init__(self):
        self.parent = {}

    def find(self, key):
        self.parent.setdefault(key, key)
        while self.parent[key] != key:
            self.parent[key] = self.parent[self.parent[key]]
            key = self.parent[key]
        return key

    def join(self, a, b):
        self.parent[self.find(a)] = self.find(b)


def on_segment(x, y, wire):
    """Whether (x, y) lies strictly inside the wire; the distance along it when it does."""
    x1, y1, x2, y2 = wire
    if x1 == x2 and x == x1 and min(y1, y2) < y < max(y1, y2):
        return y - min(y1, y2)
    if y1 == y2 and y == y1 and min(x1, x2) < x < max(x1, x2):
        return x - min(x1, x2)
    return None


def netlist(wires, devices, ground_point):
    """A SPICE netlist of the drawing; `ground_point` is where the reference node lies.

    A device splits the wire it sits on: its first terminal (top, or left) joins the wire
    before it, its second (bottom, or right) the wire after it."""
    nets = Nets()
    ends = {(x, y) for x1, y1, x2, y2 in wires for x, y in ((x1, y1), (x2, y2))}
    for wire in wires:
        x1, y1, x2, y2 = wire
        start = (min(x1, x2), min(y1, y2))
        stops = [(0.0, "point", start)]
        stops += [(on_segment(x, y, wire), "point", (x, y)) for x, y in ends
                  if on_segment(x, y, wire) is not None]
        stops += [(on_segment(x, y, wire), "device", k) for k, (x, y, _, _) in enumerate(devices)
                  if on_segment(x, y, wire) is not None]
        stops.append((abs(x2 - x1) + abs(y2 - y1), "point", (max(x1, x2), max(y1, y2))))
        stops.sort(key=lambda stop: stop[0])
        here = ("point", start)
        for _, what, key in stops:
            if what == "point":
                nets.join(here, ("point", key))
                here = ("point", key)
            else:
                nets.join(here, ("first", key))
                here = ("second", key)

    names = {}

    def net(key):
        root = nets.find(key)
        if root == nets.find(("point", ground_point)):
            return "0"
        return names.setdefault(root, "n%d" % (len(names) + 1))

    lines = ["* written from the drawing by bench/cli_vs_ngspice.py"]
    for k, (x, y, kind, value) in enumerate(devices):
        first, second = net(("first", k)), net(("second", k))  # top or left, bottom or right
        if kind in (RESISTOR_VERTICAL, RESISTOR_HORIZONTAL):
            lines.append("R%d %s %s %r" % (k, first, second, value))
        elif kind in (BATTERY_UP, BATTERY_LEFT):  # + terminal first
            lines.append("V%d %s %s DC %r" % (k, first, second, value))
        elif kind in (BATTERY_DOWN, BATTERY_RIGHT):
            lines.append("V%d %s %s DC %r" % (k, second, first, value))
        elif kind in (SOURCE_UP, SOURCE_LEFT):  # pushes its current out of the first terminal
            lines.append("I%d %s %s DC %r" % (k, second, first, value))
        else:
            lines.append("I%d %s %s DC %r" % (k, first, second, value))
    # Tight tolerances and enough printed digits to compare the voltages to a microvolt.
    lines += [".options reltol=1e-12 abstol=1e-18 vntol=1e-15",
              ".control", "set numdgt=16", "op", "print all", ".endc", ".end", ""]
    return "\n".join(lines), lambda point: net(("point", point))


def solve_json(cli, path):
    result = subprocess.run([cli, "solve", "--autoname", str(path)], capture_output=True,
                            text=True)
    return result.returncode, (json.loads(result.stdout) if result.stdout else None)


def random_circuit(seed, devices_wanted=25):
    """A 4 x 3 lattice of wires 160 units long, with two places for a device on each wire and
    `devices_wanted` of them filled: mostly resistors, some batteries and current sources."""
    rng = random.Random(seed)
    columns, rows, step = 4, 3, 160
    wires = []
    for r in range(rows):
        for c in range(columns):
            x, y = 80 + step * c, 80 + step * r
            if c + 1 < columns:
                wires.append((x, y, x + step, y))
            if r + 1 < rows:
                wires.append((x, y, x, y + step))
    places = []
    for x1, y1, x2, y2 in wires:
        for offset in (48, 112):
            places.append((x1 + offset, y1, False) if y1 == y2 else (x1, y1 + offset, True))
    devices = []
    for x, y, vertical in rng.sample(places, devices_wanted):
        roll = rng.random()
        if roll < 0.7:
            devices.append((x, y, RESISTOR_VERTICAL if vertical else RESISTOR_HORIZONTAL,
                            rng.choice([1, 2, 4, 5, 10, 20, 22, 47, 50, 100])))
        elif roll < 0.85:
            kind = rng.choice([BATTERY_UP, BATTERY_DOWN] if vertical else
                              [BATTERY_LEFT, BATTERY_RIGHT])
            devices.append((x, y, kind, rng.choice([1.5, 3, 5, 6, 9, 12])))
        else:
            kind = rng.choice([SOURCE_UP, SOURCE_DOWN] if vertical else
                              [SOURCE_LEFT, SOURCE_RIGHT])
            devices.append((x, y, kind, rng.choice([0.5, 1, 2, 0.25])))
    text = ["%d" % len(wires)] + ["%g,%g,%g,%g" % wire for wire in wires]
    text += ["%d" % len(devices)] + ["%g,%g,%d,%g" % device for device in devices]
    text += ["0", ""]
    return "\r\n".join(text)


def solvable_random_circuit(cli, folder, seed):
    """The first random circuit from `seed` on that ampora-cli solves, and its seed."""
    while True:
        path = folder / "random25.amq"
        path.write_bytes(random_circuit(seed).encode())
        code, _ = solve_json(cli, path)
        if code == 0:
            return path, seed
        seed += 1


def ngspice_voltages(netlist_path):
    out = subprocess.run(["ngspice", "-b", str(netlist_path)], capture_output=True, text=True)
    values = {}
    for line in out.stdout.splitlines():
        name, equals, value = line.partition(" = ")
        if equals and " " not in name.strip():
            try:
                values[name.strip()] = float(value)
            except ValueError:
                pass
    return values


def check_same_circuit(cli, amq, cir):
    """Writes the netlist and returns the largest node-voltage difference between the two."""
    code, result = solve_json(cli, amq)
    if code != 0:
        sys.exit("%s: ampora-cli does not solve it" % amq)
    reference = next(node for node in result["nodes"] if node["name"] == "0")
    wires, devices = read_amq(amq)
    text, net_of = netlist(wires, devices, (reference["x"], reference["y"]))
    cir.write_text(text)
    spice = ngspice_voltages(cir)
    worst = 0.0
    for node in result["nodes"]:
        net = net_of((node["x"], node["y"]))
        spice_voltage = 0.0 if net == "0" else spice.get(net)
        if spice_voltage is None:
            sys.exit("%s: ngspice printed no voltage for %s" % (cir, net))
        worst = max(worst, abs(spice_voltage - node["voltage"]))
    return worst, len(devices)


def wall_time(command):
    # ngspice -b ends with status 1 after a .control section ("no simulations run" of the
    # netlist's own), having printed the operating point: its status says nothing here.
    start = time.perf_counter()
    subprocess.run(command, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
    return time.perf_counter() - start


def paired_runs(cli, amq, cir, pairs):
    """Alternate runs, which half starts a pair switching each time, so that a slow spell of
    the machine falls on both programs alike."""
    ours, theirs = [], []
    ampora = [cli, "solve", "--autoname", str(amq)]
    spice = ["ngspice", "-b", str(cir)]
    for _ in range(3):  # warm the page cache for both
        wall_time(ampora)
        wall_time(spice)
    for k in range(pairs):
        if k % 2 == 0:
            ours.append(wall_time(ampora))
            theirs.append(wall_time(spice))
        else:
            theirs.append(wall_time(spice))
            ours.append(wall_time(ampora))
    return ours, theirs


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--cli", default=str(SOURCE / "build" / "src" / "ampora-cli"))
    parser.add_argument("--pairs", type=int, default=101)
    parser.add_argument("--seed", type=int, default=14)
    parser.add_argument("--keep", help="a folder to keep the circuits and netlists in")
    arguments = parser.parse_args()

    folder = Path(arguments.keep or tempfile.mkdtemp(prefix="ampora-bench-"))
    folder.mkdir(parents=True, exist_ok=True)
    examples = sorted((SOURCE / "examples").glob("*.amq"),
                      key=lambda path: len(read_amq(path)[1]))
    largest = examples[-1]
    random25, seed = solvable_random_circuit(arguments.cli, folder, arguments.seed)

    print("%d pairs per circuit, run alternately; median wall time of each program" %
          arguments.pairs)
    print("%-22s %7s %10s %12s %11s %7s" %
          ("circuit", "devices", "|dV| max", "ampora-cli", "ngspice -b", "ratio"))
    for name, amq in ((largest.name, largest), ("random25.amq (seed %d)" % seed, random25)):
        cir = folder / (Path(amq).stem + ".cir")
        worst, count = check_same_circuit(arguments.cli, amq, cir)
        if worst > 1e-6:
            sys.exit("%s: ngspice and ampora-cli disagree by %g V" % (name, worst))
        ours, theirs = paired_runs(arguments.cli, amq, cir, arguments.pairs)
        ours_ms, theirs_ms = statistics.median(ours) * 1e3, statistics.median(theirs) * 1e3
        print("%-22s %7d %10.1e %9.2f ms %8.2f ms %7.3f" %
              (name, count, worst, ours_ms, theirs_ms, ours_ms / theirs_ms))
    if not arguments.keep:
        for path in folder.iterdir():
            path.unlink()
        folder.rmdir()


if __name__ == "__main__":
    main()
