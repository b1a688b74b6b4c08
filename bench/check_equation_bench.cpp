// What a student waits for after pressing Check in "Check my work", on the largest circuit
// the tables hold: an equation that is right, and a wrong one, which is compared with every
// single mistake the hint could name before the likeliest is chosen.

#include "analysis/node_naming.h"
#include "equations/equation_check.h"
#include "ladder_circuit.h"
#include "workflow/step_transitions.h"

#include <benchmark/benchmark.h>

namespace {

using ampora::Workspace;

bool Solve(Workspace& ws) {
    ampora::bench::QuietPrompts prompts;
    return ampora::LeaveStep1(ws, prompts) == ampora::TransitionResult::Entered &&
           ampora::AutoName(ws, prompts) &&
           ampora::LeaveStep2(ws, prompts) == ampora::TransitionResult::Entered;
}

void CheckEveryEquation(benchmark::State& state, const std::string& change) {
    Workspace ws = ampora::bench::SolvableLadder();
    if (!Solve(ws) || ws.Equations.NumUnknowns == 0) {
        state.SkipWithError("the ladder does not solve");
        return;
    }
    std::vector<std::string> texts;
    for (const std::string& equation : ws.Equations.FirstWritten) {
        texts.push_back(equation.substr(0, equation.rfind(" = 0")) + change + " = 0");
    }
    int right = 0;
    for (auto _ : state) {
        right = 0;
        for (std::size_t v = 0; v < texts.size(); ++v) {
            const ampora::EquationVerdict verdict =
                ampora::CheckEquation(ws, static_cast<int>(v + 1), texts[v]);
            right += verdict.equivalent ? 1 : 0;
            benchmark::DoNotOptimize(verdict.hint.data());
        }
    }
    state.counters["unknowns"] = ws.Equations.NumUnknowns;
    state.counters["chains"] = ws.Topology.NumBranches;
    state.counters["right"] = right;
    state.SetItemsProcessed(state.iterations() * static_cast<long>(texts.size()));
}

void BM_CheckEquation_Right(benchmark::State& state) {
    CheckEveryEquation(state, "");
}
BENCHMARK(BM_CheckEquation_Right);

void BM_CheckEquation_WrongConstant(benchmark::State& state) {
    CheckEveryEquation(state, " + 1");
}
BENCHMARK(BM_CheckEquation_WrongConstant);

} // namespace
