#include "analysis/drawing_warnings.h"

#include "tables/number_text.h"
#include "tables/wire_geometry.h"

#include <algorithm>

namespace ampora {

namespace {

// Wire ends at the point. Only asked about the few devices that lie on no chain.
int WireEndsAt(const Circuit& circuit, Point point) {
    int ends = 0;
    const int last = std::min<int>(circuit.NumWires, kMaxWires);
    for (int slot = 1; slot <= last; ++slot) {
        const Wire& wire = circuit.Wires[slot];
        if (wire.Used != 0) {
            ends += (FirstEnd(wire) == point ? 1 : 0) + (SecondEnd(wire) == point ? 1 : 0);
        }
    }
    return ends;
}

// What the analysis made of the device, or nullptr when it reads it as drawn.
const char* Misreading(const Circuit& circuit, const Element& element,
                       const ChainPlacement& placement) {
    if (placement.chain == 0) {
        // Every chain runs from node to node once the checks have passed, so a device on
        // none sits on a segment's end or off the wires altogether.
        return WireEndsAt(circuit, Point{element.X, element.Y}) >= 2 ? kWhereWiresMeet : kOnNoWire;
    }
    if (placement.counted > 2) {
        return kWhereWiresCross; // a branch and its twin count it twice; more means a crossing
    }
    if (IsCurrentSource(element.Kind) && element.Value == 0) {
        return kZeroCurrentSource;
    }
    return nullptr;
}

const char* KindName(int kind) {
    if (IsBattery(kind)) {
        return "battery";
    }
    return IsResistor(kind) ? "resistor" : "current source";
}

const char* UnitText(int kind) {
    if (IsBattery(kind)) {
        return " V";
    }
    return IsResistor(kind) ? " ohms" : " A";
}

} // namespace

std::string DescribeDevice(const Element& element) {
    return std::string("the ") + KindName(element.Kind) + " of " + ShortestText(element.Value) +
           UnitText(element.Kind) + " at (" + ShortestText(element.X) + ", " +
           ShortestText(element.Y) + ")";
}

std::vector<DrawingWarning> FindDrawingWarnings(const Circuit& circuit, const Topology& topology) {
    std::vector<DrawingWarning> warnings;
    const int last = std::min<int>(circuit.NumElements, kMaxElements);
    for (int slot = 1; slot <= last; ++slot) {
        const Element& element = circuit.Elements[slot];
        if (element.Kind == kEmpty) {
            continue;
        }
        const char* what =
            Misreading(circuit, element, topology.Placements.at(static_cast<std::size_t>(slot)));
        if (what == nullptr) {
            continue;
        }
        std::string text = DescribeDevice(element);
        text.front() = 'T';
        // The zero-current text is a sentence of its own; the others go on from the device.
        text += what == kZeroCurrentSource ? std::string(": ") + what : std::string(" ") + what;
        warnings.push_back(DrawingWarning{slot, text + "."});
    }
    return warnings;
}

} // namespace ampora
