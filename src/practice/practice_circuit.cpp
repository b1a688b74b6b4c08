#include "practice/practice_circuit.h"

#include "analysis/node_naming.h"
#include "workflow/step_transitions.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>
#include <numeric>
#include <stdexcept>
#include <vector>

namespace ampora {

namespace {

// The E12 series from 1 to 82 ohms, in tenths of an ohm.
const std::vector<int>& E12Tenths() {
    static const std::vector<int> values = {10,  12,  15,  18,  22,  27,  33,  39,
                                            47,  56,  68,  82,  100, 120, 150, 180,
                                            220, 270, 330, 390, 470, 560, 680, 820};
    return values;
}

struct SilentPrompts : Prompts {
    void ShowMessage(const std::string&, MessageIcon) override {}
    bool AskYesNo(const std::string&) override { return false; }
    std::string AskText(const std::string&, const std::string&, float, float) override {
        return "";
    }
};

int Sign(PracticeRandom& random) {
    return random.Percent(50) ? 1 : -1;
}

struct UnionFind {
    std::vector<int> parent;
    explicit UnionFind(std::size_t size) : parent(size) {
        std::iota(parent.begin(), parent.end(), 0);
    }
    int Root(int k) {
        while (parent[static_cast<std::size_t>(k)] != k) {
            k = parent[static_cast<std::size_t>(k)];
        }
        return k;
    }
    bool Join(int a, int b) {
        const int ra = Root(a), rb = Root(b);
        parent[static_cast<std::size_t>(ra)] = rb;
        return ra != rb;
    }
};

// Which chains carry what: the supernodes' batteries on chains with no node in common,
// a tree of battery and resistor chains that joins every node, the current sources on
// chains outside the tree, so that no node is cut off from the rest by sources alone.
struct BranchPlan {
    std::vector<PlannedBranch> branches;
    std::vector<bool> inTree;
};

std::optional<BranchPlan> PlanKinds(const PracticeMesh& mesh, const PracticeShape& shape,
                                    PracticeRandom& random) {
    const std::size_t chains = mesh.chains.size();
    BranchPlan plan{std::vector<PlannedBranch>(chains), std::vector<bool>(chains, false)};
    std::vector<int> order(chains);
    std::iota(order.begin(), order.end(), 0);
    random.Shuffle(order);
    std::vector<bool> used(mesh.nodes.size(), false);
    UnionFind groups(mesh.nodes.size());
    int batteries = 0;
    for (const int c : order) {
        const MeshChain& chain = mesh.chains[static_cast<std::size_t>(c)];
        if (batteries == shape.SuperNodes || used[static_cast<std::size_t>(chain.start)] ||
            used[static_cast<std::size_t>(chain.end)]) {
            continue;
        }
        used[static_cast<std::size_t>(chain.start)] = used[static_cast<std::size_t>(chain.end)] =
            true;
        plan.branches[static_cast<std::size_t>(c)].kind = BranchKind::Battery;
        plan.inTree[static_cast<std::size_t>(c)] = true;
        groups.Join(chain.start, chain.end);
        ++batteries;
    }
    if (batteries < shape.SuperNodes) {
        return std::nullopt;
    }
    random.Shuffle(order);
    std::vector<int> outside;
    for (const int c : order) {
        const MeshChain& chain = mesh.chains[static_cast<std::size_t>(c)];
        if (plan.inTree[static_cast<std::size_t>(c)]) {
            continue;
        }
        if (groups.Join(chain.start, chain.end)) {
            plan.inTree[static_cast<std::size_t>(c)] = true;
        } else {
            outside.push_back(c);
        }
    }
    const int resistors = static_cast<int>(chains) - shape.SuperNodes - shape.Sources;
    if (static_cast<int>(outside.size()) < shape.Sources || resistors < 1) {
        return std::nullopt;
    }
    for (int k = 0; k < shape.Sources; ++k) {
        plan.branches[static_cast<std::size_t>(outside[static_cast<std::size_t>(k)])].kind =
            BranchKind::Source;
    }
    return plan;
}

float RandomResistance(PracticeRandom& random) {
    return static_cast<float>(random.Pick(E12Tenths())) / 10.0f;
}

// Values drawn freely: E12 resistors, whole volts and amperes. Without a supernode or a
// current source, one resistor gets a battery beside it so that something drives the
// circuit.
void DrawFreeValues(BranchPlan& plan, const PracticeShape& shape, PracticeRandom& random) {
    std::vector<std::size_t> resistors;
    for (std::size_t c = 0; c < plan.branches.size(); ++c) {
        PlannedBranch& branch = plan.branches[c];
        switch (branch.kind) {
        case BranchKind::Battery:
            branch.emf = static_cast<float>(Sign(random) * random.Between(1, 24));
            break;
        case BranchKind::Source:
            branch.current = static_cast<float>(Sign(random) * random.Between(1, 5));
            break;
        default:
            branch.resistance = RandomResistance(random);
            resistors.push_back(c);
        }
    }
    if (shape.SuperNodes == 0 && shape.Sources == 0) {
        PlannedBranch& driven = plan.branches[random.Pick(resistors)];
        driven.kind = BranchKind::BatteryAndResistor;
        driven.emf = static_cast<float>(Sign(random) * random.Between(1, 24));
    }
}

constexpr long long kMostTenths = 1000; // as far from the reference as a node may be

// Values worked back from whole currents, so that every node voltage has at most one
// decimal: each chain outside the tree gets a whole current (a source's is its value),
// the tree's currents follow from them by Kirchhoff's current law, the node voltages from
// the tree's resistors and batteries, and each resistor outside the tree gets the battery
// beside it that makes its own current come out. Voltages in tenths of a volt.
bool WorkOutNiceValues(BranchPlan& plan, const PracticeMesh& mesh, PracticeRandom& random) {
    const std::size_t nodes = mesh.nodes.size();
    const int reference = static_cast<int>(nodes) - 1; // AutoName's: the last by location
    std::vector<long long> entering(nodes, 0);
    std::vector<long long> current(plan.branches.size(), 0);
    for (std::size_t c = 0; c < plan.branches.size(); ++c) {
        if (plan.inTree[c]) {
            continue;
        }
        const bool source = plan.branches[c].kind == BranchKind::Source;
        current[c] = Sign(random) * (source ? random.Between(1, 3) : 1);
        entering[static_cast<std::size_t>(mesh.chains[c].end)] += current[c];
        entering[static_cast<std::size_t>(mesh.chains[c].start)] -= current[c];
    }
    // The tree from the reference node outward.
    std::vector<int> order{reference};
    std::vector<int> parentChain(nodes, -1);
    std::vector<bool> reached(nodes, false);
    reached[static_cast<std::size_t>(reference)] = true;
    for (std::size_t k = 0; k < order.size(); ++k) {
        for (std::size_t c = 0; c < plan.branches.size(); ++c) {
            const MeshChain& chain = mesh.chains[c];
            const int at = order[k];
            const int other = chain.start == at ? chain.end : chain.end == at ? chain.start : -1;
            if (plan.inTree[c] && other >= 0 && !reached[static_cast<std::size_t>(other)]) {
                reached[static_cast<std::size_t>(other)] = true;
                parentChain[static_cast<std::size_t>(other)] = static_cast<int>(c);
                order.push_back(other);
            }
        }
    }
    if (order.size() != nodes) {
        return false;
    }
    const auto parentOf = [&](int node) {
        const MeshChain& chain = mesh.chains[static_cast<std::size_t>(parentChain[node])];
        return chain.start == node ? chain.end : chain.start;
    };
    // What flows from each node to its parent: all that enters the part of the tree below.
    std::vector<long long> towardParent = entering;
    for (std::size_t k = order.size() - 1; k > 0; --k) {
        const int node = order[k];
        towardParent[static_cast<std::size_t>(parentOf(node))] += towardParent[node];
    }
    std::vector<long long> volts(nodes, 0);
    for (std::size_t k = 1; k < order.size(); ++k) {
        const int node = order[k];
        const int parent = parentOf(node);
        const std::size_t c = static_cast<std::size_t>(parentChain[static_cast<std::size_t>(node)]);
        PlannedBranch& branch = plan.branches[c];
        if (branch.kind == BranchKind::Battery) {
            volts[node] = volts[parent] + 10 * Sign(random) * random.Between(1, 12);
        } else {
            // A resistor that keeps the node within 100 V of the reference.
            std::vector<int> fitting;
            for (const int tenths : E12Tenths()) {
                if (std::llabs(volts[parent] + towardParent[node] * tenths) <= kMostTenths) {
                    fitting.push_back(tenths);
                }
            }
            if (fitting.empty()) {
                return false;
            }
            const int tenths = random.Pick(fitting);
            branch.resistance = static_cast<float>(tenths) / 10.0f;
            volts[node] = volts[parent] + towardParent[node] * tenths;
        }
        const MeshChain& chain = mesh.chains[c];
        // From the start to the end of a battery chain the voltage rises by its EMF.
        branch.emf = branch.kind == BranchKind::Battery
                         ? static_cast<float>(volts[static_cast<std::size_t>(chain.end)] -
                                              volts[static_cast<std::size_t>(chain.start)]) /
                               10.0f
                         : 0.0f;
    }
    for (std::size_t c = 0; c < plan.branches.size(); ++c) {
        PlannedBranch& branch = plan.branches[c];
        if (plan.inTree[c]) {
            continue;
        }
        if (branch.kind == BranchKind::Source) {
            branch.current = static_cast<float>(current[c]);
            continue;
        }
        // Start to end: V(end) = V(start) + EMF - current x R.
        const long long rise = volts[static_cast<std::size_t>(mesh.chains[c].end)] -
                               volts[static_cast<std::size_t>(mesh.chains[c].start)];
        std::vector<int> tenths = E12Tenths();
        random.Shuffle(tenths);
        // A resistor that carries the current by itself needs no battery: tried first.
        std::stable_partition(tenths.begin(), tenths.end(),
                              [&](int r) { return rise + current[c] * r == 0; });
        bool found = false;
        for (const int r : tenths) {
            const long long emf = rise + current[c] * r;
            if (emf % 10 == 0 && std::llabs(emf) <= 300) {
                branch.resistance = static_cast<float>(r) / 10.0f;
                branch.emf = static_cast<float>(emf / 10);
                branch.kind = emf == 0 ? BranchKind::Resistor : BranchKind::BatteryAndResistor;
                found = true;
                break;
            }
        }
        if (!found) {
            return false;
        }
    }
    return true;
}

void AddWire(Circuit& circuit, float x1, float y1, float x2, float y2) {
    const int slot = circuit.NumWires + 1;
    circuit.Wires[slot] = Wire{x1, y1, x2, y2, kTrue};
    circuit.NumWires = static_cast<std::int16_t>(slot);
}

void AddElement(Circuit& circuit, std::int16_t kind, float value, float x, float y) {
    const int slot = circuit.NumElements + 1;
    circuit.Elements[slot] = Element{kind, value, x, y};
    circuit.NumElements = static_cast<std::int16_t>(slot);
}

enum class Travel { Up, Down, Left, Right };

Travel TravelFrom(const PracticeMesh& mesh, int from, int to) {
    if (mesh.X(to) != mesh.X(from)) {
        return mesh.X(to) > mesh.X(from) ? Travel::Right : Travel::Left;
    }
    return mesh.Y(to) > mesh.Y(from) ? Travel::Down : Travel::Up;
}

Travel Reversed(Travel travel) {
    switch (travel) {
    case Travel::Up:
        return Travel::Down;
    case Travel::Down:
        return Travel::Up;
    case Travel::Left:
        return Travel::Right;
    case Travel::Right:
        break;
    }
    return Travel::Left;
}

std::int16_t BatteryKind(Travel pointing) {
    constexpr std::array<std::int16_t, 4> kinds = {kBatteryUp, kBatteryDown, kBatteryLeft,
                                                   kBatteryRight};
    return kinds[static_cast<std::size_t>(pointing)];
}

std::int16_t SourceKind(Travel pointing) {
    constexpr std::array<std::int16_t, 4> kinds = {kSourceUp, kSourceDown, kSourceLeft,
                                                   kSourceRight};
    return kinds[static_cast<std::size_t>(pointing)];
}

// Devices sit on the middle link of their chain: one at its middle, a battery and its
// resistor 40 units in from either end, 48 apart, so that no two devices anywhere come
// within 36 units in both directions and every label has room.
void DrawBranch(Circuit& circuit, const PracticeMesh& mesh, const MeshChain& chain,
                const PlannedBranch& branch) {
    const std::size_t link = (chain.points.size() - 2) / 2;
    const int from = chain.points[link];
    const int to = chain.points[link + 1];
    const Travel travel = TravelFrom(mesh, from, to);
    const bool vertical = travel == Travel::Up || travel == Travel::Down;
    const auto at = [&](float share, float& x, float& y) {
        x = mesh.X(from) + (mesh.X(to) - mesh.X(from)) * share;
        y = mesh.Y(from) + (mesh.Y(to) - mesh.Y(from)) * share;
    };
    float x = 0, y = 0;
    const float nearShare = 40.0f / kMeshSpacing;
    const std::int16_t resistorKind = vertical ? kResistorVertical : kResistorHorizontal;
    switch (branch.kind) {
    case BranchKind::Resistor:
        at(0.5f, x, y);
        AddElement(circuit, resistorKind, branch.resistance, x, y);
        break;
    case BranchKind::Battery:
        at(0.5f, x, y);
        AddElement(circuit, BatteryKind(branch.emf > 0 ? travel : Reversed(travel)),
                   std::fabs(branch.emf), x, y);
        break;
    case BranchKind::Source:
        at(0.5f, x, y);
        AddElement(circuit, SourceKind(branch.current > 0 ? travel : Reversed(travel)),
                   std::fabs(branch.current), x, y);
        break;
    case BranchKind::BatteryAndResistor:
        at(nearShare, x, y);
        AddElement(circuit, BatteryKind(branch.emf > 0 ? travel : Reversed(travel)),
                   std::fabs(branch.emf), x, y);
        at(1 - nearShare, x, y);
        AddElement(circuit, resistorKind, branch.resistance, x, y);
        break;
    }
}

Circuit DrawCircuit(const PracticeMesh& mesh, const std::vector<PlannedBranch>& branches) {
    Circuit circuit;
    for (const MeshLink& link : mesh.links) {
        AddWire(circuit, mesh.X(link.from), mesh.Y(link.from), mesh.X(link.to), mesh.Y(link.to));
    }
    for (std::size_t c = 0; c < branches.size(); ++c) {
        DrawBranch(circuit, mesh, mesh.chains[c], branches[c]);
    }
    return circuit;
}

// Voltages a student works with by hand, as the worked-back values keep them.
constexpr double kMostVolts = 100;

// The circuit is what was asked for, as the program itself finds it.
bool Proven(const Circuit& drawn, const PracticeShape& shape, bool nice) {
    Workspace ws;
    if (!SolveLikeAStudent(ws, drawn) || ws.Circuit.NumNodes != shape.Nodes ||
        ws.Equations.NumSuperNodes != shape.SuperNodes || !ws.Topology.Warnings.empty()) {
        return false;
    }
    for (int slot = 1; slot <= ws.Circuit.NumNodes; ++slot) {
        if (!(std::fabs(ws.Circuit.NodeLabels[slot].Voltage) <= kMostVolts)) {
            return false;
        }
    }
    return !nice || HasNiceVoltages(ws);
}

// Tries with freely drawn values before working nice ones out: free values give fewer
// batteries, and on small circuits often come out nice by themselves.
constexpr int kFreeTriesWhenNice = 300;
constexpr int kMostTries = 200000;

} // namespace

bool SolveLikeAStudent(Workspace& ws, const Circuit& drawn) {
    SilentPrompts prompts;
    ws.Circuit = drawn;
    return LeaveStep1(ws, prompts) == TransitionResult::Entered && AutoName(ws, prompts) &&
           LeaveStep2(ws, prompts) == TransitionResult::Entered;
}

bool HasNiceVoltages(const Workspace& ws) {
    for (int slot = 1; slot <= ws.Circuit.NumNodes; ++slot) {
        const double tenths = ws.Circuit.NodeLabels[slot].Voltage * 10;
        // Resistances are single-precision, so a whole 16.4 V may come out as 16.3999996.
        if (std::fabs(tenths - std::round(tenths)) > 1e-3) {
            return false;
        }
    }
    return true;
}

PracticeCircuit MakePracticeCircuit(const PracticeShape& shape, std::uint32_t seed, bool nice) {
    PracticeRandom random(seed);
    int candidates = 0; // circuits drawn and put to the proof
    for (int tries = 0; tries < kMostTries; ++tries) {
        std::optional<PracticeMesh> mesh = TryPracticeMesh(random, shape.Nodes);
        if (!mesh) {
            continue;
        }
        std::optional<BranchPlan> plan = PlanKinds(*mesh, shape, random);
        if (!plan) {
            continue;
        }
        const bool workOut = nice && candidates++ >= kFreeTriesWhenNice;
        if (workOut) {
            if (!WorkOutNiceValues(*plan, *mesh, random)) {
                continue;
            }
        } else {
            DrawFreeValues(*plan, shape, random);
        }
        Circuit drawn = DrawCircuit(*mesh, plan->branches);
        if (Proven(drawn, shape, nice)) {
            return PracticeCircuit{drawn, std::move(*mesh), std::move(plan->branches)};
        }
    }
    throw std::runtime_error("no practice circuit of this shape came out");
}

} // namespace ampora
