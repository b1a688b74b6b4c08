#include "equations/chains_by_start.h"

#include "tables/circuit.h"

namespace ampora {

std::vector<int> ChainsFrom(const Topology& topology, int nodeSlot) {
    std::vector<int> chains;
    if (!Slots<NodeLabel, kMaxNodes>::Holds(nodeSlot)) {
        return chains;
    }
    for (int b = 1; b <= topology.NumBranches; ++b) {
        if (topology.Branches[b].StartNode == nodeSlot) {
            chains.push_back(b);
        }
    }
    return chains;
}

} // namespace ampora
