#include "analysis/node_naming.h"

#include "analysis/circuit_checks.h"
#include "analysis/node_finding.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <string_view>

namespace ampora {

namespace {

// A coordinate with the pattern "0000": rounded (ties to even, as everywhere the program
// rounds), at least four digits, zero-padded after the sign.
// Written at `out`, which holds 64 characters; returns the end.
char* WriteFourDigits(char* out, float value) {
    const double rounded = std::nearbyint(static_cast<double>(value)) + 0.0; // no "-0"
    // Drawings lie on a grid of everyday size: most coordinates are whole numbers of at
    // most four digits, quicker written digit by digit than through to_chars.
    if (rounded >= 0 && rounded < 10000) {
        int whole = static_cast<int>(rounded);
        for (int k = 3; k >= 0; --k) {
            out[k] = static_cast<char>('0' + whole % 10);
            whole /= 10;
        }
        return out + 4;
    }
    char buffer[64];
    // A whole number of fewer than 16 digits has the same text as an integer, which is
    // much quicker to write; floats as large as the rest are rare.
    const char* const end =
        std::fabs(rounded) < 1e15
            ? std::to_chars(buffer, buffer + sizeof buffer, static_cast<long long>(rounded)).ptr
            : std::to_chars(buffer, buffer + sizeof buffer, rounded, std::chars_format::fixed, 0)
                  .ptr;
    const bool negative = end != buffer && buffer[0] == '-';
    const char* digits = buffer + (negative ? 1 : 0);
    if (negative) {
        *out++ = '-';
    }
    out = std::fill_n(out, std::max<std::ptrdiff_t>(4 - (end - digits), 0), '0');
    return std::copy(digits, end, out);
}

// Written over the node's old name, whose room it reuses.
void WritePatternName(std::string& name, int pattern, int counter) {
    switch (pattern) {
    case 2:
        name.assign(1, static_cast<char>(64 + counter));
        return;
    case 3:
        name.assign(1, static_cast<char>(96 + counter));
        return;
    default:
        char text[16] = "V";
        name.assign(text, std::to_chars(text + 1, text + sizeof text, counter).ptr);
        return;
    }
}

// The order of string_view::compare, characters as unsigned bytes and then the length,
// without a call to memcmp for keys of a few characters.
bool SortsAfter(std::string_view a, std::string_view b) {
    const std::size_t common = std::min(a.size(), b.size());
    for (std::size_t k = 0; k < common; ++k) {
        if (a[k] != b[k]) {
            return static_cast<unsigned char>(a[k]) > static_cast<unsigned char>(b[k]);
        }
    }
    return a.size() > b.size();
}

constexpr std::size_t kLocationKeyRoom = 128; // two coordinates of 64 characters at most

// The location key written at `out`, which holds kLocationKeyRoom characters; returns the
// end.
char* WriteLocationKey(char* out, float x, float y) {
    return WriteFourDigits(WriteFourDigits(out, y), x);
}

} // namespace

std::string LocationKey(float x, float y) {
    char text[kLocationKeyRoom];
    return std::string(text, WriteLocationKey(text, x, y));
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

    // Names are compared where they are; only location keys need writing.
    std::array<std::array<char, kLocationKeyRoom>, kMaxNodes + 1> locations;
    std::array<std::string_view, kMaxNodes + 1> keys;
    std::array<std::int16_t, kMaxNodes + 1> order{};
    for (int k = 1; k <= count; ++k) {
        const NodeLabel& node = circuit.NodeLabels[k];
        if (ordering == NodeOrdering::ByName) {
            keys.at(static_cast<std::size_t>(k)) = node.Name;
        } else {
            char* const location = locations.at(static_cast<std::size_t>(k)).data();
            keys[static_cast<std::size_t>(k)] =
                std::string_view(location, WriteLocationKey(location, node.X, node.Y));
        }
        order.at(static_cast<std::size_t>(k)) = static_cast<std::int16_t>(k);
    }
    // Sorted by insertion, which keeps equal keys in their slot order: the duplicate check
    // and the student's listing both rely on it.
    for (int k = 2; k <= count; ++k) {
        const std::string_view key = keys[static_cast<std::size_t>(k)];
        const std::int16_t slot = order[static_cast<std::size_t>(k)];
        auto at = static_cast<std::size_t>(k);
        for (; at > 1 && SortsAfter(keys[at - 1], key); --at) {
            keys[at] = keys[at - 1];
            order[at] = order[at - 1];
        }
        keys[at] = key;
        order[at] = slot;
    }
    for (int k = 2; k <= count; ++k) {
        if (!SortsAfter(keys[static_cast<std::size_t>(k)], keys[static_cast<std::size_t>(k - 1)])) {
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
    Circuit& circuit = workspace.Circuit;
    NodeNaming& naming = workspace.Naming;
    if (!CheckNames(circuit, naming, NodeOrdering::ByLocation, prompts)) {
        return false;
    }
    int counter = 0;
    for (int k = 1; k <= circuit.NumNodes; ++k) {
        NodeLabel& node = circuit.NodeLabels[naming.NodeOrder[k]];
        if (node.Name != "0") {
            ++counter;
            WritePatternName(node.Name, workspace.Preferences.AutoNamePattern, counter);
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
    if (workspace.Step != kStepName || slot < 1 || slot > workspace.Circuit.NumNodes) {
        return false;
    }
    NodeLabel& node = workspace.Circuit.NodeLabels[slot];
    const std::string answer = prompts.AskText(kRenamePrompt, node.Name, left, top);
    if (answer.empty() || answer == node.Name) {
        return false;
    }
    node.Name = answer;
    return true;
}

} // namespace ampora
