#include "support/lattice_circuit.h"

#include <cmath>

namespace ampora::test {

int Degree(const LatticeCircuit& lattice, int point) {
    int degree = 0;
    for (const auto& edge : lattice.edges) {
        degree += (edge.from == point) + (edge.to == point);
    }
    return degree;
}

int PointAt(const LatticeCircuit& lattice, float x, float y) {
    for (int p = 0; p < lattice.columns * lattice.rows; ++p) {
        if (lattice.X(p) == x && lattice.Y(p) == y) {
            return p;
        }
    }
    return -1;
}

namespace {

// Removes edges hanging from points with one edge until none is left.
void PruneLooseEdges(LatticeCircuit& lattice) {
    for (bool changed = true; changed;) {
        changed = false;
        for (std::size_t e = 0; e < lattice.edges.size(); ++e) {
            const auto& edge = lattice.edges[e];
            if (Degree(lattice, edge.from) == 1 || Degree(lattice, edge.to) == 1) {
                lattice.edges.erase(lattice.edges.begin() + static_cast<long>(e));
                changed = true;
                break;
            }
        }
    }
}

} // namespace

LatticeCircuit RandomLatticeCircuit(std::mt19937& random) {
    return RandomLatticeCircuit(random, LatticeOptions{});
}

LatticeCircuit RandomLatticeCircuit(std::mt19937& random, const LatticeOptions& options) {
    LatticeCircuit lattice;
    std::uniform_int_distribution<int> size(2, options.maxPoints > 12 ? 5 : 4);
    do {
        lattice.columns = size(random);
        lattice.rows = size(random);
    } while (lattice.columns * lattice.rows > options.maxPoints);
    std::uniform_real_distribution<double> unit(0, 1);
    // Multiples of 1/8 by default; with decimals, hundredths or thousandths.
    const auto pickValue = [&](double low, double high, double eighthsLow, double eighthsHigh,
                               double step) {
        if (!options.decimals) {
            return static_cast<float>(
                std::round(unit(random) * (eighthsHigh - eighthsLow) + eighthsLow) / step);
        }
        const double per = step >= 8 ? 1000 : 100;
        return static_cast<float>(std::round((low + unit(random) * (high - low)) * per) / per);
    };
    const auto addEdge = [&](int from, int to) {
        if (unit(random) < 0.15) {
            return;
        }
        LatticeEdge edge{from, to};
        const double pick = unit(random);
        if (pick < 0.55) {
            edge.device = LatticeDevice::Resistor;
            edge.value = pickValue(0.1, 1000, 4, 4000, 4);
        } else if (pick < 0.72) {
            edge.device = LatticeDevice::Battery;
            edge.value = pickValue(0.1, 24, 4, 96, 4);
        } else if (pick < 0.82) {
            edge.device = LatticeDevice::CurrentSource;
            edge.value = pickValue(0.01, 5, 1, 39, 8);
        }
        edge.forward = unit(random) < 0.5;
        lattice.edges.push_back(edge);
    };
    for (int row = 0; row < lattice.rows; ++row) {
        for (int column = 0; column < lattice.columns; ++column) {
            const int point = row * lattice.columns + column;
            if (column + 1 < lattice.columns) {
                addEdge(point, point + 1);
            }
            if (row + 1 < lattice.rows) {
                addEdge(point, point + lattice.columns);
            }
        }
    }
    PruneLooseEdges(lattice);
    if (options.longWireShare > 0) {
        lattice.longWires = unit(random) < options.longWireShare;
    }
    return lattice;
}

namespace {

void AddWire(Circuit& circuit, float x1, float y1, float x2, float y2) {
    const int slot = circuit.NumWires + 1;
    circuit.Wires[slot] = Wire{x1, y1, x2, y2, kTrue};
    circuit.NumWires = static_cast<std::int16_t>(slot);
}

bool HasEdge(const LatticeCircuit& lattice, int from, int to) {
    for (const auto& edge : lattice.edges) {
        if (edge.from == from && edge.to == to) {
            return true;
        }
    }
    return false;
}

// One wire per straight run of edges. A run goes on through a point where it has an edge
// on both sides; where a horizontal and a vertical run could both go on, the horizontal
// one does and the two vertical wires end on it, so that wires never merely cross.
void DrawLongWires(const LatticeCircuit& lattice, Circuit& circuit) {
    const int columns = lattice.columns;
    const auto passesAcross = [&](int p) {
        const int column = p % columns;
        return column > 0 && column + 1 < columns && HasEdge(lattice, p - 1, p) &&
               HasEdge(lattice, p, p + 1);
    };
    const auto passesDown = [&](int p) {
        const int row = p / columns;
        return row > 0 && row + 1 < lattice.rows && HasEdge(lattice, p - columns, p) &&
               HasEdge(lattice, p, p + columns) && !passesAcross(p);
    };
    for (const auto& edge : lattice.edges) {
        const int step = edge.to - edge.from;
        const bool across = step == 1;
        const auto passes = [&](int p) { return across ? passesAcross(p) : passesDown(p); };
        if (passes(edge.from)) {
            continue; // the run was drawn from its first edge
        }
        int end = edge.to;
        while (passes(end)) {
            end += step;
        }
        AddWire(circuit, lattice.X(edge.from), lattice.Y(edge.from), lattice.X(end),
                lattice.Y(end));
    }
}

} // namespace

Circuit DrawLattice(const LatticeCircuit& lattice) {
    Circuit circuit;
    if (lattice.longWires) {
        DrawLongWires(lattice, circuit);
    } else {
        for (const auto& edge : lattice.edges) {
            AddWire(circuit, lattice.X(edge.from), lattice.Y(edge.from), lattice.X(edge.to),
                    lattice.Y(edge.to));
        }
    }
    for (const auto& edge : lattice.edges) {
        if (edge.device == LatticeDevice::None) {
            continue;
        }
        const float x1 = lattice.X(edge.from), y1 = lattice.Y(edge.from);
        const float x2 = lattice.X(edge.to), y2 = lattice.Y(edge.to);
        const bool vertical = x1 == x2;
        std::int16_t kind = 0;
        switch (edge.device) {
        case LatticeDevice::Resistor:
            kind = vertical ? kResistorVertical : kResistorHorizontal;
            break;
        case LatticeDevice::Battery:
            kind = vertical ? (edge.forward ? kBatteryDown : kBatteryUp)
                            : (edge.forward ? kBatteryRight : kBatteryLeft);
            break;
        default:
            kind = vertical ? (edge.forward ? kSourceDown : kSourceUp)
                            : (edge.forward ? kSourceRight : kSourceLeft);
        }
        const int element = circuit.NumElements + 1;
        circuit.Elements[element] = Element{kind, edge.value, (x1 + x2) / 2, (y1 + y2) / 2, 0, 999};
        circuit.NumElements = static_cast<std::int16_t>(element);
    }
    return circuit;
}

std::string DescribeLattice(const LatticeCircuit& lattice) {
    std::string text = std::to_string(lattice.columns) + "x" + std::to_string(lattice.rows) +
                       (lattice.longWires ? " long wires:" : ":");
    for (const auto& edge : lattice.edges) {
        const char* kind = edge.device == LatticeDevice::Resistor        ? "R"
                           : edge.device == LatticeDevice::Battery       ? "V"
                           : edge.device == LatticeDevice::CurrentSource ? "I"
                                                                         : "-";
        text += " " + std::to_string(edge.from) + "-" + std::to_string(edge.to) + kind +
                (edge.device == LatticeDevice::None ? "" : std::to_string(edge.value)) +
                (edge.forward ? "" : "'");
    }
    return text;
}

} // namespace ampora::test
