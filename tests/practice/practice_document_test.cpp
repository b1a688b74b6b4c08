#include "document/amq_file.h"
#include "document/circuit_edit.h"
#include "practice/practice_circuit.h"
#include "practice/practice_document.h"
#include "support/memory_settings_store.h"
#include "support/scripted_prompts.h"
#include "workflow/step_transitions.h"

#include <gtest/gtest.h>

namespace ampora {
namespace {

TEST(NewPracticeCircuit, AsksToSaveThenOpensTheCircuitUntitledInStepOne) {
    Workspace ws;
    test::ScriptedPrompts prompts;
    test::ScriptedFileDialogs dialogs;
    test::MemorySettingsStore store;
    DocumentContext context{ws, prompts, dialogs, store, "/tmp"};
    AddWire(ws.Circuit, 40, 80, 200, 80); // an unsaved drawing; No drops it
    ws.CurrentFileName = "";
    ws.Step = 2;

    const CommandResult result = NewPracticeCircuit(context, {4, 1, 1}, 21);
    EXPECT_EQ(prompts.questions, std::vector<std::string>{
                                     "The circuit has changed.  Do you want to save the changes?"});
    EXPECT_TRUE(result.cleared);
    EXPECT_FALSE(result.undoAvailable);
    EXPECT_TRUE(result.fileRead);
    EXPECT_EQ(ws.Step, 1);
    EXPECT_EQ(ws.CurrentFileName, "");
    EXPECT_EQ(CircuitFileText(ws.Circuit),
              CircuitFileText(MakePracticeCircuit({4, 1, 1}, 21, true).drawn));
    ASSERT_EQ(LeaveStep1(ws, prompts), TransitionResult::Entered);
    EXPECT_EQ(ws.Circuit.NumNodes, 4);
}

} // namespace
} // namespace ampora
