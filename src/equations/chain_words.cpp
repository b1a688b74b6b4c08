#include "equations/chain_words.h"

#include "analysis/result_labels.h"

#include <cstdlib>

namespace ampora {

namespace {

// The chain as traced from its other end has the same points in reverse.
std::string ReversedPath(const std::string& path) {
    std::string reversed;
    std::size_t end = path.size();
    while (end > 0) {
        const std::size_t cut = path.rfind(';', end - 1);
        const std::size_t begin = cut == std::string::npos ? 0 : cut + 1;
        reversed += reversed.empty() ? "" : ";";
        reversed.append(path, begin, end - begin);
        end = cut == std::string::npos ? 0 : cut;
    }
    return reversed;
}

// The devices on a chain or on its twin, in slot order.
std::vector<const Element*> DevicesOn(const Workspace& ws, int b) {
    const Branch& chain = ws.Topology.Branches[b];
    const std::string reversed = ReversedPath(chain.Path);
    std::vector<const Element*> devices;
    for (int slot = 1; slot <= ws.Circuit.NumElements; ++slot) {
        const Element& element = ws.Circuit.Elements[slot];
        const int on = std::abs(element.Branch);
        if (element.Kind == kEmpty || on == 0 || on > ws.Topology.NumBranches) {
            continue;
        }
        const Branch& other = ws.Topology.Branches[on];
        if (on == b || (other.StartNode == chain.EndNode && other.EndNode == chain.StartNode &&
                        other.Path == reversed)) {
            devices.push_back(&element);
        }
    }
    return devices;
}

// "the 30 Ω resistor", "the 10 Ω and 20 Ω resistors": the chain's devices of one sort.
std::string DevicesText(const Workspace& ws, int b, bool (*sort)(int), std::string_view one,
                        std::string_view several) {
    std::vector<std::string> values;
    for (const Element* element : DevicesOn(ws, b)) {
        if (sort(element->Kind)) {
            values.push_back(ValueWithUnit(*element));
        }
    }
    if (values.empty()) {
        return "";
    }
    std::string text = "the ";
    for (std::size_t k = 0; k < values.size(); ++k) {
        text += k == 0 ? "" : k + 1 == values.size() ? " and " : ", ";
        text += values[k];
    }
    text += ' ';
    text += values.size() > 1 ? several : one;
    return text;
}

} // namespace

std::string NodeName(const Workspace& ws, int slot) {
    return ws.Circuit.NodeLabels[slot].Name;
}

namespace {

std::string Between(const Workspace& ws, int b) {
    const Branch& chain = ws.Topology.Branches[b];
    return " between " + NodeName(ws, chain.StartNode) + " and " + NodeName(ws, chain.EndNode);
}

} // namespace

std::string ChainText(const Workspace& ws, int b) {
    const Branch& chain = ws.Topology.Branches[b];
    std::string devices =
        chain.SourceCurrent != 0
            ? DevicesText(ws, b, IsCurrentSource, "current source", "current sources")
            : DevicesText(ws, b, IsResistor, "resistor", "resistors");
    if (devices.empty()) {
        devices = "the chain";
    }
    return devices + Between(ws, b);
}

std::string BatteryText(const Workspace& ws, int b) {
    const std::string batteries = DevicesText(ws, b, IsBattery, "battery", "batteries");
    return batteries.empty() ? "the battery" : batteries;
}

} // namespace ampora
