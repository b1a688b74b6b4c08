// Leaving step 1 on the largest circuits the tables hold: 100 wires and 60 devices, drawn
// as a ladder whose rails and rungs are cut into short pieces as a student draws them.
// Copying the prepared workspace is left out of the timing.

#include "ladder_circuit.h"
#include "workflow/step_transitions.h"

#include <benchmark/benchmark.h>

namespace {

using ampora::Workspace;

void Run(benchmark::State& state, const Workspace& drawn, ampora::TransitionResult expected) {
    if (drawn.Circuit.NumWires != ampora::kMaxWires ||
        drawn.Circuit.NumElements != ampora::kMaxElements) {
        state.SkipWithError("the ladder does not fill the wire and element tables");
        return;
    }
    ampora::bench::QuietPrompts prompts;
    for (auto _ : state) {
        state.PauseTiming();
        Workspace workspace = drawn;
        state.ResumeTiming();
        const ampora::TransitionResult result = ampora::LeaveStep1(workspace, prompts);
        if (result != expected) {
            state.SkipWithError("the ladder did not end as expected");
            break;
        }
        benchmark::DoNotOptimize(workspace.Topology.NumBranches);
        state.counters["nodes"] = workspace.Circuit.NumNodes;
        state.counters["chains"] = workspace.Topology.NumBranches;
    }
}

// 20 nodes, as many as the node table holds: 60 chain traces (20 nodes of three wires), the
// whole way into step 2.
void BM_LeaveStep1_TwentyNodes(benchmark::State& state) {
    static const Workspace drawn = ampora::bench::Ladder(12);
    Run(state, drawn, ampora::TransitionResult::Entered);
}
BENCHMARK(BM_LeaveStep1_TwentyNodes);

// 12 nodes and 18 branches, 36 chain traces: the whole way into step 2.
void BM_LeaveStep1_TwelveNodesIntoStep2(benchmark::State& state) {
    static const Workspace drawn = ampora::bench::Ladder(8);
    Run(state, drawn, ampora::TransitionResult::Entered);
}
BENCHMARK(BM_LeaveStep1_TwelveNodesIntoStep2);

} // namespace
