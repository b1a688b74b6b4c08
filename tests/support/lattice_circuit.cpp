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

std::optional<OracleSolution> SolveLattice(const LatticeCircuit& lattice, int ground) {
    const int points = lattice.columns * lattice.rows;
    // Unknowns: every point's voltage (the ground's row is replaced by V = 0), then the
    // current from `from` to `to` of each battery and each bare wire.
    std::vector<int> sourceIndex(lattice.edges.size(), -1);
    int n = points;
    for (std::size_t e = 0; e < lattice.edges.size(); ++e) {
        const auto device = lattice.edges[e].device;
        if (device == LatticeDevice::None || device == LatticeDevice::Battery) {
            sourceIndex[e] = n++;
        }
    }
    std::vector<std::vector<long double>> a(
        static_cast<std::size_t>(n), std::vector<long double>(static_cast<std::size_t>(n) + 1, 0));
    const auto at = [&](int r, int c) -> long double& {
        return a[static_cast<std::size_t>(r)][static_cast<std::size_t>(c)];
    };
    for (std::size_t e = 0; e < lattice.edges.size(); ++e) {
        const auto& edge = lattice.edges[e];
        const int i = edge.from, j = edge.to;
        switch (edge.device) {
        case LatticeDevice::Resistor: {
            const long double g = 1.0L / edge.value;
            at(i, i) += g, at(j, j) += g, at(i, j) -= g, at(j, i) -= g;
            break;
        }
        case LatticeDevice::CurrentSource: {
            const long double push =
                edge.forward ? edge.value : -static_cast<long double>(edge.value);
            at(i, n) -= push; // leaves `from`
            at(j, n) += push; // arrives at `to`
            break;
        }
        default: {
            const int k = sourceIndex[e];
            at(i, k) += 1, at(j, k) -= 1; // the source's current leaves `from`
            const long double emf = edge.device == LatticeDevice::Battery ? edge.value : 0;
            // V(to) - V(from) = emf when the + terminal is at `to`.
            at(k, j) += 1, at(k, i) -= 1, at(k, n) = edge.forward ? emf : -emf;
        }
        }
    }
    // Points that no edge touches, and the ground, are pinned to 0 V.
    for (int p = 0; p < points; ++p) {
        bool used = false;
        for (const auto& edge : lattice.edges) {
            used = used || edge.from == p || edge.to == p;
        }
        if (p == ground || !used) {
            std::fill(a[static_cast<std::size_t>(p)].begin(), a[static_cast<std::size_t>(p)].end(),
                      0);
            at(p, p) = 1;
        }
    }
    for (int c = 0; c < n; ++c) {
        int best = c;
        for (int r = c + 1; r < n; ++r) {
            if (std::fabs(at(r, c)) > std::fabs(at(best, c))) {
                best = r;
            }
        }
        if (std::fabs(at(best, c)) < 1e-12L) {
            return std::nullopt;
        }
        std::swap(a[static_cast<std::size_t>(c)], a[static_cast<std::size_t>(best)]);
        for (int r = 0; r < n; ++r) {
            if (r == c || at(r, c) == 0) {
                continue;
            }
            const long double f = at(r, c) / at(c, c);
            for (int k = c; k <= n; ++k) {
                at(r, k) -= f * at(c, k);
            }
        }
    }
    OracleSolution solution;
    std::vector<long double> x(static_cast<std::size_t>(n));
    for (int r = 0; r < n; ++r) {
        x[static_cast<std::size_t>(r)] = at(r, n) / at(r, r);
    }
    for (int p = 0; p < points; ++p) {
        solution.voltage.push_back(static_cast<double>(x[static_cast<std::size_t>(p)]));
    }
    for (std::size_t e = 0; e < lattice.edges.size(); ++e) {
        const auto& edge = lattice.edges[e];
        long double forward = 0; // from `from` to `to`: rightward or downward
        switch (edge.device) {
        case LatticeDevice::Resistor:
            forward =
                (x[static_cast<std::size_t>(edge.from)] - x[static_cast<std::size_t>(edge.to)]) /
                edge.value;
            break;
        case LatticeDevice::CurrentSource:
            forward = edge.forward ? edge.value : -static_cast<long double>(edge.value);
            break;
        default:
            forward = x[static_cast<std::size_t>(sourceIndex[e])];
        }
        solution.screenCurrent.push_back(static_cast<double>(-forward));
    }
    return solution;
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
