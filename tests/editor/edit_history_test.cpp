#include "analysis/node_naming.h"
#include "document/amq_file.h"
#include "editor/drawing_session.h"
#include "editor/edit_history.h"
#include "support/case_file.h"
#include "support/test_files.h"
#include "workflow/step_transitions.h"

#include <gtest/gtest.h>

#include <map>
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

// The tool a command's step is named after; 0 for the commands the window names itself.
int ToolOf(const std::string& command) {
    const std::string verb = command.substr(0, command.find(' '));
    return verb == "wire"                        ? kWireTool
           : verb == "place"                     ? ToolButtonForLetter(command.at(6))
           : verb == "number"                    ? kNumberTool
           : verb == "move" || verb == "stretch" ? kMoveStretchTool
           : verb == "erase"                     ? kEraseTool
                                                 : 0;
}

const std::map<std::string, std::string> kNamedSteps = {{"undo", "Undo Erase"},
                                                        {"center", "Center the circuit"},
                                                        {"autoname", "AutoName"},
                                                        {"rename", "Rename node"},
                                                        {"clear", "Clear Names"}};

// The session of tests/data/editor/edit_history.txt, each step's name checked by hand.
TEST(EditHistory, ASessionOfEveryEditWalksBackToEmptyAndForwardAgainTableForTable) {
    Session s;
    std::vector<std::string> states = {Written(s.ws, s.editor)};
    std::string names;
    std::size_t step2Starts = 0;
    const std::string file = "editor/edit_history.txt";
    const std::string dump = test::ReplayCases(file, {}, [&](const std::string& command, auto&) {
        if (command == "next") {
            if (LeaveStep1(s.ws, s.prompts) != TransitionResult::Entered) {
                return "refused: " + s.prompts.messages.at(0) + "\n";
            }
            ReplacePresent(s.history, s.ws.Circuit, s.editor);
            states.back() = Written(s.ws, s.editor);
            step2Starts = states.size() - 1;
            return std::string("step 2\n");
        }
        s.Act(command);
        const int tool = ToolOf(command);
        const bool recorded =
            tool != 0 ? RecordToolStep(s.history, tool, s.ws.Circuit, s.editor)
                      : RecordStep(s.history, kNamedSteps.at(command.substr(0, command.find(' '))),
                                   s.ws.Circuit, s.editor);
        if (!recorded) {
            return std::string("no step\n");
        }
        names += UndoName(s.history) + "\n";
        states.push_back(Written(s.ws, s.editor));
        return "step " + UndoName(s.history) + "\n";
    });
    EXPECT_EQ(dump, test::ExpectedText(file, dump));
    EXPECT_TRUE(s.prompts.textAnswers.empty()); // every answer was asked for
    ASSERT_NE(step2Starts, 0U);

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
    RecordToolStep(s.history, kWireTool, s.ws.Circuit, s.editor);
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
