// Node finding looks the wire ends up by their points, sorted. This holds it to counting
// every end against every other, on random scribbles full of the awkward cases: overlaps,
// T-junctions, repeats, wires of no length, slanted wires, minus zero and NaN.

#include "analysis/node_finding.h"
#include "analysis/wire_cleanup.h"
#include "tables/wire_geometry.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <random>

namespace ampora {
namespace {

// Wires on a small grid, so that they meet, overlap and repeat often.
Circuit Scribble(std::mt19937& random, bool oddValues) {
    std::uniform_int_distribution<int> grid(0, 5), length(0, 3), pick(0, 99);
    Circuit c;
    const int wires = 3 + pick(random) % 28;
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
    return c;
}

// Nodes and loose ends by counting every end against every other.
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

TEST(NodeFinding, NodesAndLooseEndsMatchCountingEveryEndOnRandomScribbles) {
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

} // namespace
} // namespace ampora
