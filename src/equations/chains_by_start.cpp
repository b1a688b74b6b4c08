#include "equations/chains_by_start.h"

namespace ampora {

ChainsByStart GroupChainsByStart(const Topology& topology) {
    ChainsByStart grouped;
    for (int b = 1; b <= topology.NumBranches; ++b) {
        const int start = topology.Branches[b].StartNode;
        if (Slots<NodeLabel, kMaxNodes>::Holds(start)) {
            const auto node = static_cast<std::size_t>(start);
            // At most kMaxChains chains exist: Branches[b] above throws past the table.
            grouped.chains[node][static_cast<std::size_t>(grouped.count[node]++)] =
                static_cast<std::uint8_t>(b);
        }
    }
    return grouped;
}

std::span<const std::uint8_t> ChainsFrom(const ChainsByStart& grouped, int nodeSlot) {
    if (!Slots<NodeLabel, kMaxNodes>::Holds(nodeSlot)) {
        return {};
    }
    const auto node = static_cast<std::size_t>(nodeSlot);
    return std::span(grouped.chains[node]).first(static_cast<std::size_t>(grouped.count[node]));
}

} // namespace ampora
