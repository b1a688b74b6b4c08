#include "analysis/diagram_descriptions.h"

#include "analysis/format_number.h"
#include "analysis/result_labels.h"
#include "tables/number_text.h"
#include "tables/wire_geometry.h"

#include <cctype>
#include <cmath>
#include <cstdlib>

namespace ampora {

namespace {

std::string PointText(float x, float y) {
    return "(" + ShortestText(x) + ", " + ShortestText(y) + ")";
}

std::string KindNoun(int kind) {
    if (IsBattery(kind)) {
        return "Battery";
    }
    return IsResistor(kind) ? "Resistor" : "Current source";
}

std::string NodeName(const Circuit& circuit, int node) {
    if (node < 1 || node > circuit.NumNodes) {
        return "an unknown node";
    }
    const std::string& name = circuit.NodeLabels[node].Name;
    return name.empty() ? "an unnamed node" : name;
}

// The chain a device lies on, signed as Element::Branch is (its travel runs up or left at
// the device where positive); 0 when the analysis has not placed it.
int DeviceChain(const Workspace& ws, int slot) {
    const Element& e = ws.Circuit.Elements[slot];
    if (e.Branch != 0) {
        return e.Branch;
    }
    const ChainPlacement placement = ws.Topology.Placements.at(static_cast<std::size_t>(slot));
    if (ws.Step < kStepName || placement.chain < 1 || placement.chain > ws.Topology.NumBranches) {
        return 0;
    }
    return placement.chain;
}

bool Known(double current) {
    return current != kUnknownCurrent && std::isfinite(current);
}

std::string Direction(bool vertical, bool upOrLeft) {
    if (vertical) {
        return upOrLeft ? "upward" : "downward";
    }
    return upOrLeft ? "leftward" : "rightward";
}

} // namespace

std::string DescribeWire(const Circuit& circuit, int slot,
                         const std::vector<std::string>& valueTexts) {
    const Wire& w = circuit.Wires[slot];
    std::string text = "Wire from " + PointText(w.X1, w.Y1) + " to " + PointText(w.X2, w.Y2);
    std::string carried;
    for (int e = 1; e <= circuit.NumElements; ++e) {
        const Element& element = circuit.Elements[e];
        if (element.Kind == kEmpty ||
            !LiesStrictlyInside({element.X, element.Y}, {w.X1, w.Y1}, {w.X2, w.Y2})) {
            continue;
        }
        carried += carried.empty() ? ", carrying the " : " and the ";
        std::string noun = KindNoun(element.Kind);
        noun[0] = static_cast<char>(std::tolower(static_cast<unsigned char>(noun[0])));
        carried += noun;
        if (static_cast<std::size_t>(e) < valueTexts.size() &&
            !valueTexts[static_cast<std::size_t>(e)].empty()) {
            carried += " " + valueTexts[static_cast<std::size_t>(e)];
        }
    }
    return text + carried;
}

std::string DescribeDevice(const Workspace& ws, int slot, const std::string& valueText,
                           int sigFigs) {
    const Element& e = ws.Circuit.Elements[slot];
    const bool vertical = IsVerticalKind(e.Kind);
    std::string text = KindNoun(e.Kind) + ", ";
    text += ws.Step == kStepEdit && !valueText.empty() ? valueText : ValueWithUnit(e);
    const int chain = DeviceChain(ws, slot);
    if (ws.Step == kStepEdit || chain == 0) {
        return text + (vertical ? ", vertical, at " : ", horizontal, at ") + PointText(e.X, e.Y);
    }
    const Branch& branch = ws.Topology.Branches[std::abs(chain)];
    const std::string start = NodeName(ws.Circuit, branch.StartNode);
    const std::string end = NodeName(ws.Circuit, branch.EndNode);
    if (ws.Step == kStepName || !Known(e.Current)) {
        return text + ", between " + start + " and " + end +
               (ws.Step == kStepResults ? "; current unknown" : "");
    }
    if (e.Current == 0) {
        return text + ", between " + start + " and " + end + "; current 0 A";
    }
    // The chain travels from its start node to its end node, up or left at the device
    // where `chain` is positive; the current flows up or left where it is positive.
    const bool upOrLeft = e.Current > 0;
    const bool alongTravel = upOrLeft == (chain > 0);
    return text + ", from " + (alongTravel ? start : end) + " to " + (alongTravel ? end : start) +
           "; current " + FormatNumber(std::fabs(e.Current), sigFigs) + " A " +
           Direction(vertical, upOrLeft);
}

std::string DescribeNode(const Workspace& ws, int slot, int sigFigs) {
    const NodeLabel& node = ws.Circuit.NodeLabels[slot];
    std::string text = node.Name.empty() ? "Unnamed node" : "Node " + node.Name;
    if (node.Name == "0") {
        text += ", the reference";
    }
    if (ws.Step == kStepResults) {
        return text + ", " + FormatNumber(node.Voltage, sigFigs) + " V";
    }
    int wires = 0;
    for (const int w : {node.Wire1, node.Wire2, node.Wire3, node.Wire4}) {
        wires += w != 0 ? 1 : 0;
    }
    return text + ", at " + PointText(node.X, node.Y) +
           (wires > 0 ? ", joining " + std::to_string(wires) + " wires" : "");
}

} // namespace ampora
