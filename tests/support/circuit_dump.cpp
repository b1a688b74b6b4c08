#include "support/circuit_dump.h"

#include "tables/number_text.h"

namespace ampora::test {

std::string DumpCircuit(const Circuit& circuit) {
    std::string out = "NumWires " + std::to_string(circuit.NumWires) + "\n";
    for (int slot = 1; slot <= circuit.NumWires; ++slot) {
        const Wire& w = circuit.Wires[slot];
        out += "wire " + std::to_string(slot) + (w.Used != 0 ? " live" : " empty") +
               (circuit.ErasedWire[slot] != 0 ? "(undo)" : "") + " " + ShortestText(w.X1) + "," +
               ShortestText(w.Y1) + " " + ShortestText(w.X2) + "," + ShortestText(w.Y2) + "\n";
    }
    out += "NumElements " + std::to_string(circuit.NumElements) + "\n";
    for (int slot = 1; slot <= circuit.NumElements; ++slot) {
        const Element& e = circuit.Elements[slot];
        out += "element " + std::to_string(slot) + " kind " + std::to_string(e.Kind) +
               (circuit.ErasedKind[slot] != 0
                    ? "(undo " + std::to_string(circuit.ErasedKind[slot]) + ")"
                    : "") +
               " " + ShortestText(e.Value) + " at " + ShortestText(e.X) + "," + ShortestText(e.Y) +
               "\n";
    }
    out += "NumNodes " + std::to_string(circuit.NumNodes) + "\n";
    for (int slot = 1; slot <= circuit.NumNodes; ++slot) {
        const NodeLabel& n = circuit.NodeLabels[slot];
        out += "node " + std::to_string(slot) + " \"" + n.Name + "\" at " + ShortestText(n.X) +
               "," + ShortestText(n.Y) + "\n";
    }
    return out;
}

} // namespace ampora::test
