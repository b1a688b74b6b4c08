// The undo history at its largest: 100 steps of the fullest drawing the tables hold (100
// wires, 60 devices with typed values, 20 named nodes), each a whole copy of the tables.
// Timed: recording one step and undoing one. Counted: the bytes the full history holds, from
// the allocator itself, so that the strings' own blocks are counted too.

#include "editor/edit_history.h"
#include "ladder_circuit.h"
#include "workflow/step_transitions.h"

#include <benchmark/benchmark.h>

#include <malloc.h>
#include <string>

namespace {

using namespace ampora;

// The 12-rung ladder after "Next >": full tables, 20 nodes with names of two letters, and a
// value typed for every device as a student types it.
struct FullDrawing {
    Workspace workspace = bench::Ladder(12);
    EditorState editor;

    FullDrawing() {
        bench::QuietPrompts prompts;
        LeaveStep1(workspace, prompts);
        for (int slot = 1; slot <= workspace.Circuit.NumNodes; ++slot) {
            workspace.Circuit.NodeLabels[slot].Name = "N" + std::to_string(slot);
        }
        for (int slot = 1; slot <= kMaxElements; ++slot) {
            editor.ValueText[slot] = std::to_string(100 + slot) + ".5";
        }
    }
    // Each step changes one device's value, as the Number tool does.
    void Change(int step) {
        Element& e = workspace.Circuit.Elements[1 + step % kMaxElements];
        e.Value += 1;
        editor.ValueText[1 + step % kMaxElements] = std::to_string(e.Value);
    }
};

std::size_t HeapInUse() {
    return mallinfo2().uordblks;
}

void BM_EditHistory_FullHistoryBytes(benchmark::State& state) {
    FullDrawing drawing;
    if (drawing.workspace.Circuit.NumNodes != kMaxNodes) {
        state.SkipWithError("the ladder does not fill the node table");
        return;
    }
    for (auto _ : state) {
        const std::size_t before = HeapInUse();
        EditHistory history;
        StartHistory(history, drawing.workspace.Circuit, drawing.editor);
        for (int step = 0; step < static_cast<int>(kHistorySteps) + 20; ++step) {
            drawing.Change(step);
            RecordStep(history, "Change resistor value", drawing.workspace.Circuit, drawing.editor);
        }
        const std::size_t after = HeapInUse();
        state.counters["steps"] = static_cast<double>(history.Steps.size());
        state.counters["bytes"] = static_cast<double>(after - before);
        state.counters["bytes_per_step"] =
            static_cast<double>(after - before) / static_cast<double>(history.Steps.size());
        state.counters["snapshot_sizeof"] = sizeof(DrawingSnapshot);
        benchmark::DoNotOptimize(history.Steps.back().After.NumWires);
    }
}
BENCHMARK(BM_EditHistory_FullHistoryBytes)->Iterations(3);

// One step added to a full history: the copy of the tables, the comparison with the present
// step and the oldest step dropped.
void BM_EditHistory_RecordStepWhenFull(benchmark::State& state) {
    FullDrawing drawing;
    EditHistory history;
    StartHistory(history, drawing.workspace.Circuit, drawing.editor);
    int step = 0;
    for (; step < static_cast<int>(kHistorySteps); ++step) {
        drawing.Change(step);
        RecordStep(history, "Change resistor value", drawing.workspace.Circuit, drawing.editor);
    }
    for (auto _ : state) {
        drawing.Change(step++);
        benchmark::DoNotOptimize(RecordStep(history, "Change resistor value",
                                            drawing.workspace.Circuit, drawing.editor));
    }
}
BENCHMARK(BM_EditHistory_RecordStepWhenFull);

// Undo then Redo of one step of a full history: two copies back into the tables.
void BM_EditHistory_UndoAndRedo(benchmark::State& state) {
    FullDrawing drawing;
    EditHistory history;
    StartHistory(history, drawing.workspace.Circuit, drawing.editor);
    for (int step = 0; step < static_cast<int>(kHistorySteps); ++step) {
        drawing.Change(step);
        RecordStep(history, "Change resistor value", drawing.workspace.Circuit, drawing.editor);
    }
    for (auto _ : state) {
        UndoStep(history, 1, drawing.workspace.Circuit, drawing.editor);
        RedoStep(history, 1, drawing.workspace.Circuit, drawing.editor);
        benchmark::DoNotOptimize(drawing.workspace.Circuit.Elements[1].Value);
    }
}
BENCHMARK(BM_EditHistory_UndoAndRedo);

} // namespace
