// The clean-up, node finding and chain sums find their pairs through positions sorted as
// keys. These tests hold them to the pairwise rules, written out here the slow way, on
// random scribbles full of the awkward cases: overlaps, T-junctions, repeats, wires of no
// length, slanted wires, minus zero and NaN.

#include "analysis/branch_sums.h"
#include "analysis/branch_tracing.h"
#include "analysis/chain_path.h"
#include "analysis/node_finding.h"
#include "analysis/wire_cleanup.h"
#include "support/circuit_dump.h"
#include "support/topology_dump.h"
#include "tables/wire_geometry.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <random>

namespace ampora {
namespace {

// The clean-up as its header states it, comparing every pair.
bool SplitPointByRule(const WireLine& i, const WireLine& j, float& at) {
    if (i.Horizontal == j.Horizontal) {
        if (i.Level != j.Level) {
            return false;
        }
        if (j.Low < i.Low && i.Low < j.High) {
            at = i.Low;
            return true;
        }
        if (j.Low < i.High && i.High < j.High) {
            at = i.High;
            return true;
        }
        return false;
    }
    if ((i.Low != j.Level && i.High != j.Level) || !(j.Low < i.Level && i.Level < j.High)) {
        return false;
    }
    at = i.Level;
    return true;
}

void RemoveDuplicatesByRule(Circuit& c) {
    for (int i = 1; i <= c.NumWires; ++i) {
        Wire& w = c.Wires[i];
        if (w.Used != 0 && w.X1 == w.X2 && w.Y1 == w.Y2) {
            w.Used = 0;
        }
    }
    for (int i = 1; i <= c.NumWires; ++i) {
        for (int j = i + 1; c.Wires[i].Used != 0 && j <= c.NumWires; ++j) {
            if (c.Wires[j].Used != 0 && LineOf(c.Wires[j]) == LineOf(c.Wires[i])) {
                c.Wires[j].Used = 0;
            }
        }
    }
}

void CleanUpByRule(Circuit& c) {
    RemoveDuplicatesByRule(c);
    CompactWires(c);
    for (bool split = true; split;) {
        split = false;
        for (int i = 1; i <= c.NumWires && !split; ++i) {
            for (int j = 1; j <= c.NumWires && !split; ++j) {
                float at = 0;
                if (i != j && c.Wires[i].Used != 0 && c.Wires[j].Used != 0 &&
                    SplitPointByRule(LineOf(c.Wires[i]), LineOf(c.Wires[j]), at)) {
                    const WireLine line = LineOf(c.Wires[j]);
                    int added = 1;
                    while (added <= c.NumWires && c.Wires[added].Used != 0) {
                        ++added;
                    }
                    Wire& piece = c.Wires[added]; // past the table: throws, nothing changed
                    c.NumWires = static_cast<std::int16_t>(std::max<int>(c.NumWires, added));
                    piece.Used = kTrue;
                    SetWireFromLine(c.Wires[j], line.Horizontal, line.Level, line.Low, at);
                    SetWireFromLine(piece, line.Horizontal, line.Level, at, line.High);
                    split = true;
                }
            }
        }
    }
    RemoveDuplicatesByRule(c);
    CompactWires(c);
}

// Wires on a small grid, so that they meet, overlap and repeat often.
Circuit Scribble(std::mt19937& random, bool oddValues, int maxWires = 30) {
    std::uniform_int_distribution<int> grid(0, 5), length(0, 3), kind(1, 10), pick(0, 99);
    Circuit c;
    const int wires = 3 + pick(random) % (maxWires - 2);
    for (int k = 0; k < wires; ++k) {
        float x = 40.0f * static_cast<float>(grid(random));
        float y = 40.0f * static_cast<float>(grid(random));
        Wire w{x, y, x, y, kTrue};
        const int p = pick(random);
        (p < 45 ? w.X2 : w.Y2) += 40.0f * static_cast<float>(length(random));
        if (p >= 90) {
            w.X2 += 40; // slanted
        }
        if (oddValues && pick(random) < 5) {
            w.X1 = w.X1 == 0 ? -0.0f : std::numeric_limits<float>::quiet_NaN();
        }
        if (pick(random) < 30) {
            std::swap(w.X1, w.X2);
            std::swap(w.Y1, w.Y2);
        }
        c.NumWires = static_cast<std::int16_t>(k + 1);
        c.Wires[k + 1] = w;
    }
    const int devices = pick(random) % (std::min(wires, kMaxElements) + 1);
    for (int k = 1; k <= devices; ++k) {
        const Wire& w = c.Wires[1 + pick(random) % wires];
        Element e;
        const bool vertical = w.X1 == w.X2;
        const int chosen = kind(random);
        e.Kind = static_cast<std::int16_t>(IsResistor(chosen) ? (vertical ? 5 : 6) : chosen);
        e.Value = static_cast<float>(1 + pick(random));
        e.X = (w.X1 + w.X2) / 2;
        e.Y = (w.Y1 + w.Y2) / 2;
        c.NumElements = static_cast<std::int16_t>(k);
        c.Elements[k] = e;
    }
    return c;
}

TEST(PairwiseRules, TheCleanUpMatchesThePairwiseRuleOnRandomScribbles) {
    std::mt19937 random(4242);
    for (int round = 0; round < 400; ++round) {
        const Circuit drawn = Scribble(random, round % 2 == 1);
        Circuit fast = drawn, slow = drawn;
        CleanUpWires(fast);
        CleanUpByRule(slow);
        ASSERT_EQ(test::DumpCircuit(fast), test::DumpCircuit(slow)) << "round " << round;
    }
}

TEST(PairwiseRules, ASplitPastTheFullTableKeepsTheSplitsTheRuleMadeBeforeIt) {
    std::mt19937 random(31);
    int overflowed = 0;
    for (int round = 0; round < 200; ++round) {
        const Circuit drawn = Scribble(random, round % 2 == 1, kMaxWires);
        Circuit fast = drawn, slow = drawn;
        bool fastFull = false, slowFull = false;
        try {
            CleanUpWires(fast);
        } catch (const SlotOutOfRange&) {
            fastFull = true;
        }
        try {
            CleanUpByRule(slow);
        } catch (const SlotOutOfRange&) {
            slowFull = true;
        }
        ASSERT_EQ(fastFull, slowFull) << "round " << round;
        ASSERT_EQ(test::DumpCircuit(fast), test::DumpCircuit(slow)) << "round " << round;
        overflowed += fastFull ? 1 : 0;
    }
    EXPECT_GT(overflowed, 20);
}

// Nodes by counting every end against every other; then chains and their sums, whose
// devices are found by testing every device against every path segment.
std::string NodesByRule(const Circuit& c) {
    std::string out;
    std::vector<Point> seen;
    for (int end = 1; end <= 2 * c.NumWires; ++end) {
        const Wire& w = c.Wires[(end + 1) / 2];
        const Point p = end % 2 == 1 ? FirstEnd(w) : SecondEnd(w);
        int count = 0;
        for (int other = 1; other <= 2 * c.NumWires; ++other) {
            const Wire& o = c.Wires[(other + 1) / 2];
            count += (other % 2 == 1 ? FirstEnd(o) : SecondEnd(o)) == p;
        }
        const bool known = std::find(seen.begin(), seen.end(), p) != seen.end();
        if (count == 1 || (count >= 3 && !known)) {
            out += (count == 1 ? "loose " : "node ") + std::to_string(p.X) + "," +
                   std::to_string(p.Y) + "\n";
        }
        if (count >= 3) {
            seen.push_back(p);
        }
    }
    return out;
}

std::string NodesFound(const Circuit& c, const Topology& t) {
    std::string out;
    int node = 1, loose = 1;
    for (int end = 1; end <= 2 * c.NumWires; ++end) {
        const Wire& w = c.Wires[(end + 1) / 2];
        const Point p = end % 2 == 1 ? FirstEnd(w) : SecondEnd(w);
        if (loose <= t.NumLooseEnds && t.LooseEnds[loose].X == p.X && t.LooseEnds[loose].Y == p.Y) {
            out += "loose " + std::to_string(p.X) + "," + std::to_string(p.Y) + "\n";
            ++loose;
        } else if (node <= c.NumNodes && c.NodeLabels[node].X == p.X &&
                   c.NodeLabels[node].Y == p.Y) {
            out += "node " + std::to_string(p.X) + "," + std::to_string(p.Y) + "\n";
            ++node;
        }
    }
    return out;
}

TEST(PairwiseRules, NodesAndLooseEndsMatchCountingEveryEndOnRandomScribbles) {
    std::mt19937 random(777);
    int compared = 0;
    for (int round = 0; round < 400; ++round) {
        Circuit c = Scribble(random, round % 2 == 1);
        CleanUpWires(c);
        Topology t;
        FoundPoints found;
        try {
            found = FindNodes(c, t);
        } catch (const SlotOutOfRange&) {
            continue; // too many ends at a point: a refusal, not a result
        }
        if (found.nodes > kMaxNodes || found.looseEnds > kMaxLooseEnds) {
            continue; // past a table only the counts are kept
        }
        ASSERT_EQ(NodesFound(c, t), NodesByRule(c)) << "round " << round;
        ++compared;
    }
    EXPECT_GT(compared, 200);
}

TEST(PairwiseRules, ChainSumsTakeEveryDeviceInsideASegmentInSlotOrder) {
    std::mt19937 random(99);
    int summed = 0;
    for (int round = 0; round < 400; ++round) {
        Circuit c = Scribble(random, false);
        Topology t;
        try {
            CleanUpWires(c);
            FindNodes(c, t);
            TraceBranches(c, t);
            SumBranches(c, t);
        } catch (...) {
            continue;
        }
        for (int b = 1; b <= t.NumBranches; ++b) {
            const Branch& chain = t.Branches[b];
            const std::vector<Point> points = PathPoints(chain.Path);
            float resistance = 0;
            for (std::size_t k = 1; k < points.size(); ++k) {
                for (int slot = 1; slot <= c.NumElements; ++slot) {
                    const Element& e = c.Elements[slot];
                    if (IsResistor(e.Kind) &&
                        LiesStrictlyInside({e.X, e.Y}, points[k - 1], points[k])) {
                        resistance += e.Value;
                    }
                }
            }
            ASSERT_EQ(chain.Resistance, resistance) << "round " << round << " chain " << b;
            ++summed;
        }
    }
    EXPECT_GT(summed, 100);
}

} // namespace
} // namespace ampora
