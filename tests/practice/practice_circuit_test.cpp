// Practice circuits over every shape that can be made: solved by the program as a student
// solves them into the shape asked for, drawn by the editor's rules. Whether the solution is
// right is the ngspice oracle's to judge, on random lattices: the plan a practice circuit is
// made from is never shown, only what is drawn. AMPORA_PRACTICE_SEEDS raises the number of
// seeds per shape (2 by default).

#include "editor/value_labels.h"
#include "fuzz/fuzz_exercises.h"
#include "practice/practice_circuit.h"
#include "tables/number_text.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>

namespace ampora {
namespace {

int SeedsPerShape() {
    const char* text = std::getenv("AMPORA_PRACTICE_SEEDS");
    const auto value = text ? ParseInteger(text) : std::nullopt;
    return value ? static_cast<int>(*value) : 2;
}

// The canvas of a window at its first size, below the toolbar that lies over its top.
constexpr LabelBox kFirstCanvas{0, 40, 512, 380};

bool Inside(const LabelBox& box, const LabelBox& room) {
    return box.Left >= room.Left && box.Top >= room.Top &&
           box.Left + box.Width <= room.Left + room.Width &&
           box.Top + box.Height <= room.Top + room.Height;
}

// The editor's rules and the textbook's, "" when the drawing keeps them all. Circuits of up
// to 8 nodes fit the first canvas, labels and all.
std::string LayoutFault(const Circuit& c, bool fitsCanvas) {
    // Wires straight, devices well inside a wire of their axis and apart, as the editor keeps
    // them.
    if (const std::string broken = test::CheckEditorInvariants(c); !broken.empty()) {
        return broken;
    }
    for (int w = 1; w <= c.NumWires; ++w) {
        const Wire& wire = c.Wires[w];
        for (const float v : {wire.X1, wire.Y1, wire.X2, wire.Y2}) {
            if (std::fmod(v, 8.0f) != 0) {
                return "wire " + std::to_string(w) + " ends off the grid";
            }
        }
        for (int o = 1; o < w; ++o) { // wires meet only at their ends
            const Wire& other = c.Wires[o];
            const bool across = (wire.Y1 == wire.Y2) != (other.Y1 == other.Y2);
            const Wire& h = wire.Y1 == wire.Y2 ? wire : other;
            const Wire& v = wire.Y1 == wire.Y2 ? other : wire;
            if (across && std::min(h.X1, h.X2) < v.X1 && v.X1 < std::max(h.X1, h.X2) &&
                std::min(v.Y1, v.Y2) < h.Y1 && h.Y1 < std::max(v.Y1, v.Y2)) {
                return "wires " + std::to_string(o) + " and " + std::to_string(w) + " cross";
            }
        }
    }
    std::vector<LabelBox> labels;
    for (int e = 1; e <= c.NumElements; ++e) {
        const Element& d = c.Elements[e];
        // A label as wide as "8.2 Ω" or "24 V" in the canvas font.
        const LabelBox box = PlaceValueLabel(c, e, 40, 16, labels);
        if (!BoxIsFree(c, e, box, labels)) {
            return "the label of device " + std::to_string(e) + " has no room";
        }
        labels.push_back(box);
        if (fitsCanvas && !(Inside(box, kFirstCanvas) &&
                            Inside(LabelBox{d.X - 16, d.Y - 16, 32, 32}, kFirstCanvas))) {
            return "device " + std::to_string(e) + " or its label is off the first canvas";
        }
    }
    return "";
}

int CountSources(const Circuit& c) {
    int sources = 0;
    for (int e = 1; e <= c.NumElements; ++e) {
        sources += IsCurrentSource(c.Elements[e].Kind);
    }
    return sources;
}

TEST(PracticeCircuit, EveryShapeSolvesAsAskedAndKeepsTheDrawingRules) {
    const int seeds = SeedsPerShape();
    int made = 0, failures = 0;
    for (int n = kMinPracticeNodes; n <= kMaxPracticeNodes; ++n) {
        for (int s = 0; s <= kMaxPracticeSuperNodes; ++s) {
            for (int k = 0; k <= kMaxPracticeSources && failures < 5; ++k) {
                const PracticeShape shape{n, s, k};
                if (!ShapeRefusal(shape).empty()) {
                    continue;
                }
                for (int seed = 1; seed <= seeds; ++seed) {
                    const bool nice = (seed + n + s + k) % 2 == 0;
                    SCOPED_TRACE(std::to_string(n) + " nodes, " + std::to_string(s) +
                                 " supernodes, " + std::to_string(k) + " sources, seed " +
                                 std::to_string(seed) + (nice ? " nice" : ""));
                    PracticeCircuit p;
                    try {
                        p = MakePracticeCircuit(shape, static_cast<std::uint32_t>(seed), nice);
                    } catch (const std::exception& e) {
                        ADD_FAILURE() << e.what();
                        ++failures;
                        continue;
                    }
                    Workspace ws;
                    ASSERT_TRUE(SolveLikeAStudent(ws, p.drawn));
                    const std::string fault = LayoutFault(p.drawn, n <= 8);
                    EXPECT_EQ(ws.Circuit.NumNodes, n);
                    EXPECT_EQ(ws.Equations.NumSuperNodes, s);
                    EXPECT_EQ(CountSources(p.drawn), k);
                    EXPECT_EQ(fault, "");
                    if (nice) {
                        EXPECT_TRUE(HasNiceVoltages(ws));
                    }
                    failures += !fault.empty();
                    ++made;
                }
            }
        }
    }
    std::cout << made << " practice circuits\n";
}

} // namespace
} // namespace ampora
