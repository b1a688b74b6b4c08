// Everything a student waits for between opening the largest circuit the tables hold and
// seeing its results: the file's bytes read into a fresh workspace, leaving step 1, naming
// the nodes automatically, leaving step 2, and the device labels of all four views.

#include "analysis/node_naming.h"
#include "analysis/result_labels.h"
#include "document/amq_file.h"
#include "document/circuit_edit.h"
#include "ladder_circuit.h"
#include "workflow/step_transitions.h"

#include <benchmark/benchmark.h>

#include <string>
#include <vector>

namespace {

using ampora::TransitionResult;
using ampora::Workspace;

// The labels of the four views, in view order, or an empty list when the circuit was not
// solved on the way.
std::vector<std::string> OpenAndSolve(Workspace& ws, const std::string& fileText,
                                      ampora::Prompts& prompts) {
    ampora::EraseWholeCircuit(ws.Circuit); // what Open does before reading
    if (!ampora::ReadCircuitText(ws.Circuit, fileText).complete ||
        ampora::LeaveStep1(ws, prompts) != TransitionResult::Entered ||
        !ampora::AutoName(ws, prompts) ||
        ampora::LeaveStep2(ws, prompts) != TransitionResult::Entered) {
        return {};
    }
    std::vector<std::string> labels;
    for (std::int16_t view = 0; view < 4; ++view) {
        ws.ViewMode = view;
        for (std::string& label : ampora::WriteLabels(ws, ws.Preferences.SigFigs)) {
            labels.push_back(std::move(label));
        }
    }
    return labels;
}

void BM_SolvePipeline_LargestSolvableCircuit(benchmark::State& state) {
    const Workspace drawn = ampora::bench::SolvableLadder();
    const std::string fileText = ampora::CircuitFileText(drawn.Circuit);
    ampora::bench::QuietPrompts prompts;
    std::size_t expected = 0;
    {
        Workspace first;
        expected = OpenAndSolve(first, fileText, prompts).size();
        if (drawn.Circuit.NumWires != ampora::kMaxWires ||
            drawn.Circuit.NumElements != ampora::kMaxElements || expected == 0) {
            state.SkipWithError("the ladder does not fill the tables or does not solve");
            return;
        }
        state.counters["nodes"] = first.Circuit.NumNodes;
        state.counters["chains"] = first.Topology.NumBranches;
        state.counters["supernodes"] = first.Equations.NumSuperNodes;
        state.counters["unknowns"] = first.Equations.NumUnknowns;
    }
    for (auto _ : state) {
        Workspace ws; // constructing it is part of the timing; see BM_FreshWorkspace
        const std::vector<std::string> labels = OpenAndSolve(ws, fileText, prompts);
        if (labels.size() != expected) {
            state.SkipWithError("the circuit did not solve the same way twice");
            break;
        }
        benchmark::DoNotOptimize(labels.data());
    }
}
BENCHMARK(BM_SolvePipeline_LargestSolvableCircuit);

// The share of the pipeline that is only the making and unmaking of an empty workspace.
void BM_FreshWorkspace(benchmark::State& state) {
    for (auto _ : state) {
        Workspace ws;
        benchmark::DoNotOptimize(&ws);
        benchmark::ClobberMemory();
    }
}
BENCHMARK(BM_FreshWorkspace);

} // namespace
