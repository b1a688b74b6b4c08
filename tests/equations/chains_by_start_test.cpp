#include "equations/chains_by_start.h"

#include <gtest/gtest.h>

#include <string>

namespace ampora {
namespace {

// "node: chain chain ..." for every node slot from 0 to one past the table.
std::string Grouping(const Topology& topology) {
    std::string text;
    for (int node = 0; node <= kMaxNodes + 1; ++node) {
        const auto chains = ChainsFrom(topology, node);
        if (chains.empty()) {
            continue;
        }
        text += std::to_string(node) + ":";
        for (const int chain : chains) {
            text += " " + std::to_string(chain);
        }
        text += "\n";
    }
    return text;
}

Topology ChainsStartingAt(std::initializer_list<int> starts) {
    Topology topology;
    for (const int start : starts) {
        topology.Branches[++topology.NumBranches].StartNode = static_cast<std::int16_t>(start);
    }
    return topology;
}

// Chains from loose ends (negative starts), from no node and past the count are left out.
TEST(ChainsByStart, EachNodeListsTheChainsLeavingItInSlotOrderUpToAFullTable) {
    EXPECT_EQ(Grouping(ChainsStartingAt({3, 1, 3, 20, 1, 2, 3})), "1: 2 5\n"
                                                                  "2: 6\n"
                                                                  "3: 1 3 7\n"
                                                                  "20: 4\n");
    Topology topology = ChainsStartingAt({-1, 2, 0, 21, 2});
    topology.Branches[6].StartNode = 4; // traced, but not among the counted chains
    EXPECT_EQ(Grouping(topology), "2: 2 5\n");

    topology = Topology{}; // a full table of chains from one node fits, and more throws
    for (int k = 0; k < kMaxChains; ++k) {
        topology.Branches[++topology.NumBranches].StartNode = 7;
    }
    EXPECT_EQ(ChainsFrom(topology, 7).size(), std::size_t{kMaxChains});
    ++topology.NumBranches;
    EXPECT_THROW(ChainsFrom(topology, 7), SlotOutOfRange);
}

} // namespace
} // namespace ampora
