#include "equations/chains_by_start.h"

namespace ampora {

ChainsByStart GroupChainsByStart(const Topology& topology) {
    ChainsByStart grouped;
    std::array<std::int8_t, kMaxNodes + 2> count{};
    for (int b = 1; b <= topology.NumBranches; ++b) {
        const int start = topology.Branches[b].StartNode;
        if (Slots<NodeLabel, kMaxNodes>::Holds(start)) {
            ++count[static_cast<std::size_t>(start)];
        }
    }
    for (std::size_t n = 1; n <= kMaxNodes; ++n) {
        grouped.first[n + 1] = static_cast<std::int8_t>(grouped.first[n] + count[n]);
    }
    std::array<std::int8_t, kMaxNodes + 2> next = grouped.first;
    for (int b = 1; b <= topology.NumBranches; ++b) {
        const int start = topology.Branches[b].StartNode;
        if (Slots<NodeLabel, kMaxNodes>::Holds(start)) {
            const auto at = static_cast<std::size_t>(next[static_cast<std::size_t>(start)]++);
            grouped.chains[at] = static_cast<std::int8_t>(b);
        }
    }
    return grouped;
}

std::span<const std::int8_t> ChainsFrom(const ChainsByStart& grouped, int nodeSlot) {
    if (!Slots<NodeLabel, kMaxNodes>::Holds(nodeSlot)) {
        return {};
    }
    const auto n = static_cast<std::size_t>(nodeSlot);
    return std::span(grouped.chains)
        .subspan(static_cast<std::size_t>(grouped.first[n]),
                 static_cast<std::size_t>(grouped.first[n + 1] - grouped.first[n]));
}

} // namespace ampora
