#include "support/topology_dump.h"

#include "analysis/branch_tracing.h"
#include "tables/number_text.h"

namespace ampora::test {

namespace {

std::string PointText(float x, float y) {
    return ShortestText(x) + "," + ShortestText(y);
}

} // namespace

std::string DumpWires(const Circuit& circuit) {
    std::string out;
    for (int slot = 1; slot <= circuit.NumWires; ++slot) {
        const Wire& w = circuit.Wires[slot];
        out += "wire " + std::to_string(slot) + (w.Used != 0 ? " " : " (free) ") +
               PointText(w.X1, w.Y1) + " " + PointText(w.X2, w.Y2) + "\n";
    }
    return out;
}

std::string DumpTopology(const Circuit& circuit, const Topology& topology) {
    std::string out = DumpWires(circuit);
    for (int slot = 1; slot <= circuit.NumNodes; ++slot) {
        const NodeLabel& n = circuit.NodeLabels[slot];
        out += "node " + std::to_string(slot) + " \"" + n.Name + "\" " + PointText(n.X, n.Y) +
               " wires";
        for (const int wire : {n.Wire1, n.Wire2, n.Wire3, n.Wire4}) {
            if (wire != 0) {
                out += " " + std::to_string(wire);
            }
        }
        out += "\n";
    }
    for (int k = 1; k <= topology.NumLooseEnds; ++k) {
        out += "loose " + std::to_string(k) + " " +
               PointText(topology.LooseEnds[k].X, topology.LooseEnds[k].Y) + "\n";
    }
    for (int b = 1; b <= NumChains(topology); ++b) {
        const Branch& c = topology.Branches[b];
        out += "chain " + std::to_string(b) + " " + std::to_string(c.StartNode) + "->" +
               std::to_string(c.EndNode) + " " + c.Path + " R " + ShortestText(c.Resistance) +
               " EMF " + ShortestText(c.EMF) + " J " + ShortestText(c.SourceCurrent) + " \"" +
               c.CurrentName + "\"\n";
    }
    out += "branches " + std::to_string(topology.NumBranches) + " stubs " +
           std::to_string(topology.NumStubs) + " loose " +
           std::to_string(topology.NumLooseBranches) + " loops " +
           std::to_string(topology.NumLoops) + " currents " + std::to_string(topology.NumCurrents) +
           "\n";
    return out;
}

} // namespace ampora::test
