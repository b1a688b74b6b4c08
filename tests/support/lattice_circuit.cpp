#include "support/lattice_circuit.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <numeric>

namespace ampora::test {

std::vector<int> Degrees(const LatticeCircuit& lattice) {
    std::vector<int> degree(lattice.columns * lattice.rows);
    for (const auto& edge : lattice.edges) {
        ++degree[edge.from];
        ++degree[edge.to];
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
    // Edges hanging from points of one edge go, until none is left.
    for (bool pruned = true; pruned;) {
        const std::vector<int> degree = Degrees(lattice);
        pruned = std::erase_if(lattice.edges, [&](const LatticeEdge& edge) {
                     return degree[edge.from] == 1 || degree[edge.to] == 1;
                 }) > 0;
    }
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
    return std::any_of(lattice.edges.begin(), lattice.edges.end(),
                       [&](const LatticeEdge& edge) { return edge.from == from && edge.to == to; });
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
        const bool f = edge.forward;
        const std::int16_t kind =
            edge.device == LatticeDevice::Resistor
                ? (vertical ? kResistorVertical : kResistorHorizontal)
            : edge.device == LatticeDevice::Battery
                ? (vertical ? (f ? kBatteryDown : kBatteryUp) : (f ? kBatteryRight : kBatteryLeft))
                : (vertical ? (f ? kSourceDown : kSourceUp) : (f ? kSourceRight : kSourceLeft));
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

namespace {

bool SameVoltage(double a, double b) {
    return std::fabs(a - b) <= 1e-6 * std::max({std::fabs(a), std::fabs(b), 1e-9});
}

// Walks from `point` along edge `first` through points of two edges until a node or the
// start is reached, marking the edges walked.
LatticeChain Walk(const LatticeCircuit& lattice, int point, int first, std::vector<bool>& walked,
                  const std::vector<int>& degree) {
    LatticeChain chain;
    chain.start = degree[point] >= 3 ? point : -1;
    const int origin = point;
    int edgeIndex = first;
    while (true) {
        const LatticeEdge& edge = lattice.edges[edgeIndex];
        walked[edgeIndex] = true;
        chain.edges.push_back(edgeIndex);
        const bool forward = edge.from == point;
        if (edge.device == LatticeDevice::Battery) {
            chain.emf += (edge.forward == forward) ? edge.value : -edge.value;
        }
        chain.sources += edge.device == LatticeDevice::CurrentSource;
        chain.batteryOnly = chain.batteryOnly && (edge.device == LatticeDevice::None ||
                                                  edge.device == LatticeDevice::Battery);
        point = forward ? edge.to : edge.from;
        if (degree[point] >= 3 || point == origin) {
            break;
        }
        int next = -1;
        for (std::size_t e = 0; e < lattice.edges.size(); ++e) {
            const auto& other = lattice.edges[e];
            if (!walked[e] && (other.from == point || other.to == point)) {
                next = static_cast<int>(e);
            }
        }
        if (next < 0) {
            break;
        }
        edgeIndex = next;
    }
    chain.end = chain.start < 0 ? -1 : point;
    return chain;
}

} // namespace

LatticeFacts AnalyseLattice(const LatticeCircuit& lattice) {
    LatticeFacts facts;
    const int points = lattice.columns * lattice.rows;
    const std::vector<int> degree = Degrees(lattice);
    facts.nodes =
        static_cast<int>(std::count_if(degree.begin(), degree.end(), [](int d) { return d >= 3; }));
    std::vector<bool> walked(lattice.edges.size());
    for (int p = 0; p < points; ++p) {
        if (degree[p] < 3) {
            continue;
        }
        for (std::size_t e = 0; e < lattice.edges.size(); ++e) {
            const auto& edge = lattice.edges[e];
            if (!walked[e] && (edge.from == p || edge.to == p)) {
                facts.chains.push_back(Walk(lattice, p, static_cast<int>(e), walked, degree));
            }
        }
    }
    for (std::size_t e = 0; e < lattice.edges.size(); ++e) {
        if (!walked[e]) {
            facts.chains.push_back(
                Walk(lattice, lattice.edges[e].from, static_cast<int>(e), walked, degree));
            ++facts.nodeFreeLoops;
        }
    }

    // Battery-only chains fix the voltage between their ends; give every node reached that
    // way a voltage above the first node of its group and look for loops among them.
    std::map<int, double> offset;
    for (const LatticeChain& chain : facts.chains) {
        facts.chainWithTwoSources = facts.chainWithTwoSources || chain.sources >= 2;
        if (chain.start < 0 || !chain.batteryOnly) {
            continue;
        }
        for (const LatticeChain& other : facts.chains) {
            if (&other != &chain && other.start >= 0 && other.batteryOnly &&
                std::minmax(other.start, other.end) == std::minmax(chain.start, chain.end) &&
                SameVoltage(other.start == chain.start ? other.emf : -other.emf, chain.emf)) {
                facts.identicalBatteryChains = true;
            }
        }
    }
    for (const LatticeChain& seed : facts.chains) {
        if (seed.start < 0 || !seed.batteryOnly || offset.count(seed.start)) {
            continue;
        }
        offset[seed.start] = 0;
        std::vector<int> reached{seed.start};
        while (!reached.empty()) {
            const int node = reached.back();
            reached.pop_back();
            for (const LatticeChain& chain : facts.chains) {
                if (chain.start < 0 || !chain.batteryOnly) {
                    continue;
                }
                const bool outward = chain.start == node;
                const int other = outward ? chain.end : chain.start;
                if ((outward || chain.end == node) && !offset.count(other)) {
                    offset[other] = offset[node] + (outward ? chain.emf : -chain.emf);
                    reached.push_back(other);
                }
            }
        }
    }
    for (const LatticeChain& chain : facts.chains) {
        if (chain.start >= 0 && chain.batteryOnly &&
            !SameVoltage(offset[chain.end] - offset[chain.start], chain.emf)) {
            facts.contradictoryBatteryLoop = true;
        }
    }
    std::vector<int> group(points);
    std::iota(group.begin(), group.end(), 0);
    const auto root = [&](int p) {
        while (group[p] != p) {
            p = group[p];
        }
        return p;
    };
    for (const LatticeDevice joining : {LatticeDevice::Battery, LatticeDevice::Resistor}) {
        for (const LatticeEdge& edge : lattice.edges) {
            const bool batteryOrWire =
                edge.device == LatticeDevice::Battery || edge.device == LatticeDevice::None;
            if ((joining == LatticeDevice::Battery) != batteryOrWire ||
                edge.device == LatticeDevice::CurrentSource) {
                continue;
            }
            const int a = root(edge.from), b = root(edge.to);
            facts.singular = facts.singular || (a == b && batteryOrWire);
            group[a] = b;
        }
    }
    for (int p = 0; p < points; ++p) {
        facts.singular =
            facts.singular || (degree[p] > 0 && root(p) != root(lattice.edges.front().from));
    }
    return facts;
}

} // namespace ampora::test
