// Leaving step 1 on the largest circuits the tables hold: 100 wires and 60 devices, drawn
// as a ladder whose rails and rungs are cut into short pieces as a student draws them.

#include "analysis/step_transitions.h"
#include "document/circuit_edit.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <vector>

namespace {

using ampora::Workspace;

struct Segment {
    float x1, y1, x2, y2;
    float Length() const { return std::max(x2 - x1, y2 - y1); }
};

struct QuietPrompts : ampora::Prompts {
    void ShowMessage(const std::string&, ampora::MessageIcon) override {}
    bool AskYesNo(const std::string&) override { return false; }
    std::string AskText(const std::string&, const std::string&, float, float) override {
        return "";
    }
};

// A ladder of `rungs` rungs 96 units apart and 320 high: its inner rungs meet the rails in
// 2 x (rungs - 2) nodes. The longest pieces are halved on the grid until there are 100
// wires; resistors sit in the middle of 56 pieces, two sources on the two end rungs and
// two batteries on rail pieces.
Workspace Ladder(int rungs) {
    std::vector<Segment> pieces;
    for (int k = 0; k < rungs; ++k) {
        const float x = 96.0f * static_cast<float>(k);
        pieces.push_back({x, 0, x, 320});
        if (k > 0) {
            pieces.push_back({x - 96, 0, x, 0});
            pieces.push_back({x - 96, 320, x, 320});
        }
    }
    while (pieces.size() < ampora::kMaxWires) {
        auto longest =
            std::max_element(pieces.begin(), pieces.end(),
                             [](const auto& a, const auto& b) { return a.Length() < b.Length(); });
        Segment& s = *longest;
        const bool vertical = s.x1 == s.x2;
        const float middle =
            8.0f *
            static_cast<float>(static_cast<int>(((vertical ? s.y1 + s.y2 : s.x1 + s.x2) / 2) / 8));
        Segment rest = s;
        if (vertical) {
            s.y2 = middle;
            rest.y1 = middle;
        } else {
            s.x2 = middle;
            rest.x1 = middle;
        }
        pieces.push_back(rest);
    }
    Workspace workspace;
    ampora::Circuit& circuit = workspace.circuit;
    for (const Segment& s : pieces) {
        ampora::AddWire(circuit, s.x1, s.y1, s.x2, s.y2);
    }
    const float right = 96.0f * static_cast<float>(rungs - 1);
    ampora::AddElement(circuit, ampora::kSourceUp, 1, 0, 40);
    ampora::AddElement(circuit, ampora::kSourceDown, 2, right, 40);
    ampora::AddElement(circuit, ampora::kBatteryLeft, 6, 40, 320);
    ampora::AddElement(circuit, ampora::kBatteryRight, 9, right - 40, 0);
    for (const Segment& s : pieces) {
        if (circuit.NumElements == ampora::kMaxElements) {
            break;
        }
        const float x = (s.x1 + s.x2) / 2, y = (s.y1 + s.y2) / 2;
        if (s.x1 == s.x2 && x != 0 && x != right && y > 100) {
            ampora::AddElement(circuit, ampora::kResistorVertical, 100, x, y);
        } else if (s.y1 == s.y2 && x > 100 && x < right - 100) {
            ampora::AddElement(circuit, ampora::kResistorHorizontal, 47, x, y);
        }
    }
    return workspace;
}

void Run(benchmark::State& state, const Workspace& drawn, ampora::TransitionResult expected) {
    if (drawn.circuit.NumWires != ampora::kMaxWires ||
        drawn.circuit.NumElements != ampora::kMaxElements) {
        state.SkipWithError("the ladder does not fill the wire and element tables");
        return;
    }
    QuietPrompts prompts;
    for (auto _ : state) {
        state.PauseTiming();
        Workspace workspace = drawn;
        state.ResumeTiming();
        const ampora::TransitionResult result = ampora::LeaveStep1(workspace, prompts);
        if (result != expected) {
            state.SkipWithError("the ladder did not end as expected");
            break;
        }
        benchmark::DoNotOptimize(workspace.topology.NumBranches);
        state.counters["nodes"] = workspace.circuit.NumNodes;
        state.counters["chains"] = workspace.topology.NumBranches;
    }
}

// 20 nodes: every chain is traced until the 41st overflows the chain table, which ends the
// move quietly (20 nodes of three wires make 60 chain traces).
void BM_LeaveStep1_TwentyNodes(benchmark::State& state) {
    static const Workspace drawn = Ladder(12);
    Run(state, drawn, ampora::TransitionResult::Stopped);
}
BENCHMARK(BM_LeaveStep1_TwentyNodes);

// 12 nodes and 18 branches, 36 of the 40 chain slots: the whole way into step 2.
void BM_LeaveStep1_TwelveNodesIntoStep2(benchmark::State& state) {
    static const Workspace drawn = Ladder(8);
    Run(state, drawn, ampora::TransitionResult::Entered);
}
BENCHMARK(BM_LeaveStep1_TwelveNodesIntoStep2);

} // namespace
