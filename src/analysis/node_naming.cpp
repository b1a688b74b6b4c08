#include "analysis/node_naming.h"

#include "analysis/circuit_checks.h"
#include "analysis/node_finding.h"

#include <array>
#include <charconv>
#include <cmath>

namespace ampora {

namespace {

// A coordinate with the pattern "0000": rounded (ties to even, as everywhere the program
// rounds), at least four digits, zero-padded after the sign.
std::string FourDigitText(float value) {
    const double rounded = std::nearbyint(static_cast<double>(value)) + 0.0; // no "-0"
    char buffer[64];
    const auto written =
        std::to_chars(buffer, buffer + sizeof buffer, rounded, std::chars_format::fixed, 0);
    std::string text(buffer, written.ptr);
    const std::size_t sign = !text.empty() && text.front() == '-' ? 1 : 0;
    if (text.size() - sign < 4) {
        text.insert(sign, 4 - (text.size() - sign), '0');
    }
    return text;
}

std::string PatternName(int pattern, int counter) {
    switch (pattern) {
    case 2:
        return std::string(1, static_cast<char>(64 + counter));
    case 3:
        return std::string(1, static_cast<char>(96 + counter));
    default:
        return "V" + std::to_string(counter);
    }
}

} // namespace

std::string LocationKey(float x, float y) {
    return FourDigitText(y) + FourDigitText(x);
}

bool CheckNames(const Circuit& circuit, NodeNaming& naming, NodeOrdering ordering,
                Prompts& prompts) {
    const int count = circuit.NumNodes;
    int references = 0;
    for (int slot = 1; slot <= count; ++slot) {
        if (circuit.NodeLabels[slot].Name == "0") {
            ++references;
        }
    }
    if (references > 1) {
        ShowCheckMessage(prompts, kTwoReferencesMessage);
        return false;
    }
    naming.HasReference = references == 1 ? kTrue : kFalse;

    std::array<std::string, kMaxNodes + 1> keys;
    std::array<std::int16_t, kMaxNodes + 1> order{};
    for (int k = 1; k <= count; ++k) {
        const NodeLabel& node = circuit.NodeLabels[k];
        keys.at(static_cast<std::size_t>(k)) =
            ordering == NodeOrdering::ByName ? node.Name : LocationKey(node.X, node.Y);
        order.at(static_cast<std::size_t>(k)) = static_cast<std::int16_t>(k);
    }
    // A bubble sort keeps equal keys in their slot order, which the duplicate check and
    // the student's listing both rely on.
    int limit = count - 1;
    bool swapped = true;
    while (swapped) {
        swapped = false;
        for (int k = 1; k <= limit; ++k) {
            const auto here = static_cast<std::size_t>(k);
            if (keys[here].compare(keys[here + 1]) > 0) {
                std::swap(keys[here], keys[here + 1]);
                std::swap(order[here], order[here + 1]);
                swapped = true;
            }
        }
        --limit;
    }
    for (int k = 2; k <= count; ++k) {
        if (keys[static_cast<std::size_t>(k - 1)] == keys[static_cast<std::size_t>(k)]) {
            ShowCheckMessage(prompts, kDuplicateNamesMessage);
            return false;
        }
    }
    for (int k = 1; k <= count; ++k) {
        const std::int16_t slot = order[static_cast<std::size_t>(k)];
        naming.NodeOrder[k] = slot;
        naming.NodeRank[slot] = static_cast<std::int16_t>(k);
    }
    return true;
}

bool AutoName(Workspace& workspace, Prompts& prompts) {
    Circuit& circuit = workspace.circuit;
    NodeNaming& naming = workspace.naming;
    if (!CheckNames(circuit, naming, NodeOrdering::ByLocation, prompts)) {
        return false;
    }
    int counter = 0;
    for (int k = 1; k <= circuit.NumNodes; ++k) {
        NodeLabel& node = circuit.NodeLabels[naming.NodeOrder[k]];
        if (node.Name != "0") {
            ++counter;
            node.Name = PatternName(workspace.preferences.AutoNamePattern, counter);
        }
    }
    if (naming.HasReference != kTrue && circuit.NumNodes > 0) {
        circuit.NodeLabels[naming.NodeOrder[circuit.NumNodes]].Name = "0";
    }
    return true;
}

void ClearNames(Circuit& circuit) {
    for (int slot = 1; slot <= circuit.NumNodes; ++slot) {
        circuit.NodeLabels[slot].Name = kUnnamedNode;
    }
}

bool RenameNode(Workspace& workspace, Prompts& prompts, int slot, float left, float top) {
    if (workspace.Step != 2 || slot < 1 || slot > workspace.circuit.NumNodes) {
        return false;
    }
    NodeLabel& node = workspace.circuit.NodeLabels[slot];
    const std::string answer = prompts.AskText(kRenamePrompt, node.Name, left, top);
    if (answer.empty() || answer == node.Name) {
        return false;
    }
    node.Name = answer;
    return true;
}

} // namespace ampora
