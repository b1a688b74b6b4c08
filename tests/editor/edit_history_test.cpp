#include "analysis/node_naming.h"
#include "document/amq_file.h"
#include "editor/drawing_session.h"
#include "editor/edit_history.h"
#include "support/test_files.h"
#include "workflow/step_transitions.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

namespace ampora {
namespace {

// The drawing as its file holds it, and each live device's slot with the text its label shows.
std::string Written(const Workspace& ws, const EditorState& editor) {
    std::string out = CircuitFileText(ws.Circuit);
    for (int slot = 1; slot <= ws.Circuit.NumElements; ++slot) {
        if (ws.Circuit.Elements[slot].Kind != kEmpty) {
            out += "typed " + std::to_string(slot) + " \"" + editor.ValueText[slot] + "\"\n";
        }
    }
    return out;
}

struct Session : test::DrawingSession {
    EditHistory history;
    Session() { StartHistory(history, ws.Circuit, editor); }
    // The drawing's commands, and those of step 2.
    void Act(const std::string& command) {
        if (command == "autoname") {
            AutoName(ws, prompts);
        } else if (command.rfind("rename", 0) == 0) {
            if (command.size() > 7) {
                prompts.textAnswers.push_back(command.substr(7));
            }
            RenameNode(ws, prompts, 1, 0, 0);
        } else if (command == "clear names") {
            ClearNames(ws.Circuit);
        } else {
            Do(command);
        }
    }
};

// One edit of a drawing session and the name its step gets; an empty name: no step.
struct Edit {
    std::string name;
    int tool; // the tool the step is named after; 0 for the named commands
    std::string command;
};

const std::vector<Edit> kDrawing = {
    {"Draw wire", kWireTool, "wire 80,80 240,80"},
    {"Draw wire", kWireTool, "wire 240,80 240,240"},
    {"Draw wire", kWireTool, "wire 240,240 80,240"},
    {"Draw wire", kWireTool, "wire 80,240 80,80"},
    {"", kWireTool, "wire 300,300 297,299"}, // a click draws nothing
    {"Place battery", kBatteryTool, "place B 80,160 9"},
    {"Place resistor", kResistorTool, "place R 120,80 100"},
    {"Place current source", kSourceTool, "place I 240,160 -2"},
    {"", kResistorTool, "place R 136,80"}, // too near the resistor: refused, and nothing asked
    {"Change resistor value", kNumberTool, "number 2 2.2e3"},
    {"Change battery value", kNumberTool, "number 1 -9"},
    {"Move battery", kMoveStretchTool, "move 1 80,160 80,200"},
    {"Draw wire", kWireTool, "wire 240,240 320,240"},
    {"Stretch wire", kMoveStretchTool, "stretch 320,240 400,240"},
    {"Erase wire", kEraseTool, "erase 360,240"},
    {"Undo Erase", 0, "undo"},
    {"Erase wire", kEraseTool, "erase 320,240"},
    {"Draw wire", kWireTool, "wire 160,80 160,240"},
    {"Place resistor", kResistorTool, "place R 160,160 47"},
    {"Erase resistor", kEraseTool, "erase #4"},
    {"Undo Erase", 0, "undo"},
    {"Center the circuit", 0, "center 800,40,560"},
};

// After "Next >" (which cleans the wires up and finds the nodes), the steps of step 2.
const std::vector<Edit> kNaming = {
    {"AutoName", 0, "autoname"},
    {"Rename node", 0, "rename Vtop"},
    {"", 0, "rename"}, // cancelled
    {"Clear Names", 0, "clear names"},
};

bool Record(Session& s, const Edit& edit) {
    return edit.tool != 0 ? RecordToolStep(s.history, edit.tool, s.ws.Circuit, s.editor)
                          : RecordStep(s.history, edit.name, s.ws.Circuit, s.editor);
}

TEST(EditHistory, ASessionOfEveryEditWalksBackToEmptyAndForwardAgainTableForTable) {
    Session s;
    std::vector<std::string> states = {Written(s.ws, s.editor)};
    std::string names;
    const auto play = [&](const std::vector<Edit>& edits) {
        for (const Edit& edit : edits) {
            s.Act(edit.command);
            const bool recorded = Record(s, edit);
            EXPECT_EQ(recorded, !edit.name.empty()) << edit.name;
            if (recorded) {
                names += edit.name + "\n";
                states.push_back(Written(s.ws, s.editor));
            }
        }
    };
    play(kDrawing);
    ASSERT_EQ(LeaveStep1(s.ws, s.prompts), TransitionResult::Entered) << s.prompts.messages.at(0);
    ReplacePresent(s.history, s.ws.Circuit, s.editor);
    states.back() = Written(s.ws, s.editor);
    const std::size_t step2Starts = states.size() - 1;
    play(kNaming);
    EXPECT_TRUE(s.prompts.textAnswers.empty()); // every answer was asked for

    // Back through step 2: only the names, then it stops at the drawing's last step.
    std::string undone;
    std::size_t at = states.size() - 1;
    while (CanUndo(s.history, 2)) {
        undone += UndoName(s.history) + "\n";
        ASSERT_TRUE(UndoStep(s.history, 2, s.ws.Circuit, s.editor));
        EXPECT_EQ(Written(s.ws, s.editor), states[--at]) << undone;
    }
    EXPECT_EQ(at, step2Starts);
    EXPECT_EQ(UndoName(s.history), "Center the circuit");
    BackToStep1(s.ws);
    while (UndoStep(s.history, 1, s.ws.Circuit, s.editor)) {
        EXPECT_EQ(Written(s.ws, s.editor), states[--at]) << "after undoing to step " << at;
    }
    EXPECT_EQ(at, 0U);
    EXPECT_EQ(Written(s.ws, s.editor), "0\r\n0\r\n0\r\n");
    std::string redone;
    while (CanRedo(s.history, 1)) {
        redone += RedoName(s.history) + "\n";
        ASSERT_TRUE(RedoStep(s.history, 1, s.ws.Circuit, s.editor));
        EXPECT_EQ(Written(s.ws, s.editor), states[++at]) << redone;
    }
    EXPECT_EQ(at, states.size() - 1);
    EXPECT_EQ(redone, names);
    EXPECT_EQ(undone, "Clear Names\nRename node\nAutoName\n");
}

TEST(EditHistory, UndoEndsADragAndTheChanceToUndoAnEraseAndNothingIsReachableInStep3) {
    Session s;
    s.Do("wire 80,80 240,80");
    Record(s, kDrawing[0]);
    s.Do("erase 160,80");
    RecordToolStep(s.history, kEraseTool, s.ws.Circuit, s.editor);
    BeginWire(s.editor, 0, 0);
    EXPECT_FALSE(CanUndo(s.history, 3));
    EXPECT_FALSE(UndoStep(s.history, 3, s.ws.Circuit, s.editor));
    ASSERT_TRUE(UndoStep(s.history, 1, s.ws.Circuit, s.editor));
    EXPECT_FALSE(s.editor.DrawingWire);
    EXPECT_FALSE(UndoErase(s.ws.Circuit, s.editor)); // it would bring back a wire that is there
    EXPECT_EQ(CircuitFileText(s.ws.Circuit), "1\r\n80,80,240,80\r\n0\r\n0\r\n");
    EXPECT_EQ(RedoName(s.history), "Erase wire");
}

// Undoing or redoing back to the saved drawing leaves nothing to save.
TEST(EditHistory, KeepsTheLastHundredStepsAndANewEditDropsWhatCouldBeRedone) {
    test::TempDir dir;
    const std::string path = (dir / "saved.amq").string();
    Session s;
    s.Do("wire 0,0 320,0");
    s.Do("place R 80,0 0");
    for (int k = 1; k <= 130; ++k) {
        s.Do("number 1 " + std::to_string(k));
        RecordToolStep(s.history, kNumberTool, s.ws.Circuit, s.editor);
    }
    ASSERT_TRUE(SaveToIniFile(s.ws.Circuit, path).saved);
    UndoStep(s.history, 1, s.ws.Circuit, s.editor);
    EXPECT_TRUE(NeedFileSave(s.ws.Circuit, path));
    RedoStep(s.history, 1, s.ws.Circuit, s.editor);
    EXPECT_FALSE(NeedFileSave(s.ws.Circuit, path));
    int undone = 0;
    while (UndoStep(s.history, 1, s.ws.Circuit, s.editor)) {
        ++undone;
    }
    EXPECT_EQ(undone, 100);
    EXPECT_EQ(s.ws.Circuit.Elements[1].Value, 30);
    EXPECT_EQ(s.editor.ValueText[1], "30");
    RedoStep(s.history, 1, s.ws.Circuit, s.editor);
    s.Do("place R 240,0 1");
    EXPECT_TRUE(RecordToolStep(s.history, kResistorTool, s.ws.Circuit, s.editor));
    EXPECT_FALSE(CanRedo(s.history, 1));
    EXPECT_EQ(UndoName(s.history), "Place resistor");
}

} // namespace
} // namespace ampora
