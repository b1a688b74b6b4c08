#include "document/amq_file.h"
#include "document/circuit_edit.h"
#include "document/document_commands.h"
#include "settings/recent_files.h"
#include "support/circuit_dump.h"
#include "support/memory_settings_store.h"
#include "support/scripted_prompts.h"
#include "support/test_files.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace ampora {
namespace {

using test::DumpCircuit;

struct Session {
    Workspace workspace;
    test::ScriptedPrompts prompts;
    test::ScriptedFileDialogs dialogs;
    test::MemorySettingsStore store;
    DocumentContext context{workspace, prompts, dialogs, store, "/opt/ampora/examples"};
    test::TempDir dir;

    std::string PathOf(const std::string& name) const { return (dir / name).string(); }
    void DrawOneWire() { AddWire(workspace.circuit, 40, 80, 200, 80); }
};

const std::string kDivider = (test::ExamplesDir() / "voltage_divider.amq").string();

TEST(DocumentCommands, NewOnAnEmptyCanvasNeverAsks) {
    Session s;
    const CommandResult result = FileNew(s.context);
    EXPECT_TRUE(s.prompts.questions.empty());
    EXPECT_TRUE(result.cleared);
    EXPECT_FALSE(result.undoAvailable);
}

TEST(DocumentCommands, NewOnAnUnsavedDrawingAsksAndYesOpensSaveAs) {
    Session s;
    s.DrawOneWire();
    s.prompts.yesNoAnswers = {true};
    s.dialogs.answers = {s.PathOf("first.amq")};
    const CommandResult result = FileNew(s.context);
    EXPECT_EQ(
        s.prompts.questions,
        std::vector<std::string>{"The circuit has changed.  Do you want to save the changes?"});
    EXPECT_EQ(s.dialogs.shown, std::vector<std::string>{"save in /opt/ampora/examples"});
    EXPECT_EQ(test::ReadBytes(s.PathOf("first.amq")), "1\r\n40,80,200,80\r\n0\r\n0\r\n");
    EXPECT_TRUE(result.undoAvailable);
    EXPECT_EQ(s.workspace.CurrentFileName, "");
    EXPECT_EQ(CountLiveWires(s.workspace.circuit), 0);
    RestoreErased(s.workspace.circuit); // what Undo Erase does right after New
    EXPECT_EQ(CountLiveWires(s.workspace.circuit), 1);
}

TEST(DocumentCommands, NoAnswerDropsTheDrawingWithoutSaving) {
    Session s;
    s.DrawOneWire();
    s.prompts.yesNoAnswers = {false};
    FileNew(s.context);
    EXPECT_EQ(s.prompts.questions.size(), 1u);
    EXPECT_TRUE(s.dialogs.shown.empty());
}

TEST(DocumentCommands, OpenAsksOnceBeforeTheDialogAndReadsTheFile) {
    Session s;
    s.DrawOneWire();
    s.dialogs.answers = {kDivider};
    const CommandResult result = FileOpen(s.context);
    EXPECT_EQ(s.prompts.questions.size(), 1u);
    EXPECT_TRUE(result.fileRead);
    EXPECT_FALSE(result.undoAvailable);
    EXPECT_EQ(s.workspace.CurrentFileName, kDivider);
    EXPECT_EQ(CircuitFileText(s.workspace.circuit), test::ReadBytes(kDivider));
    EXPECT_EQ(LoadRecentFiles(s.store)[0], kDivider);
}

TEST(DocumentCommands, ACancelledDialogChangesNothing) {
    Session s;
    s.DrawOneWire();
    s.workspace.CurrentFileName = "/somewhere/kept.amq";
    const std::string before = DumpCircuit(s.workspace.circuit);
    s.prompts.yesNoAnswers = {false};
    EXPECT_FALSE(FileOpen(s.context).cleared);
    EXPECT_FALSE(FileSaveAs(s.context));
    EXPECT_EQ(DumpCircuit(s.workspace.circuit), before);
    EXPECT_EQ(s.workspace.CurrentFileName, "/somewhere/kept.amq");
    EXPECT_EQ(s.store.Dump(), "");
}

TEST(DocumentCommands, AFileThatCannotBeReadIsReportedAndTheDrawingStays) {
    Session s;
    s.DrawOneWire();
    test::WriteBytes(s.PathOf("broken.amq"), "2\r\n0,0,80,0\r\n");
    const std::string before = DumpCircuit(s.workspace.circuit);
    s.dialogs.answers = {s.PathOf("broken.amq")};
    EXPECT_FALSE(FileOpen(s.context).cleared);
    EXPECT_EQ(s.prompts.messages,
              std::vector<std::string>{"(!) The file " + s.PathOf("broken.amq") +
                                       " cannot be read: the file ends where wire 2 should "
                                       "follow (line 3)."});
    EXPECT_EQ(DumpCircuit(s.workspace.circuit), before);
    EXPECT_EQ(s.workspace.CurrentFileName, "");
}

TEST(DocumentCommands, ARecentFileThatIsGoneIsReportedAndStaysInTheList) {
    Session s;
    s.DrawOneWire();
    AddRecentFile(s.store, s.PathOf("gone.amq"));
    s.prompts.yesNoAnswers = {false};
    EXPECT_FALSE(OpenRecent(s.context, s.PathOf("gone.amq")).cleared);
    EXPECT_EQ(s.prompts.messages, std::vector<std::string>{"(!) File no longer exists."});
    EXPECT_EQ(CountLiveWires(s.workspace.circuit), 1);
    EXPECT_EQ(LoadRecentFiles(s.store)[0], s.PathOf("gone.amq"));
}

TEST(DocumentCommands, SaveAsNamesTheDocumentAndSavingAgainNeedsNoDialog) {
    Session s;
    s.DrawOneWire();
    s.dialogs.answers = {s.PathOf("named.amq")};
    EXPECT_TRUE(FileSave(s.context));
    EXPECT_EQ(s.workspace.CurrentFileName, s.PathOf("named.amq"));
    EXPECT_FALSE(NeedFileSave(s.workspace.circuit, s.workspace.CurrentFileName));
    AddWire(s.workspace.circuit, 200, 80, 200, 160);
    EXPECT_TRUE(FileSave(s.context));
    EXPECT_EQ(s.dialogs.shown.size(), 1u);
    EXPECT_EQ(test::ReadBytes(s.PathOf("named.amq")),
              "2\r\n40,80,200,80\r\n200,80,200,160\r\n0\r\n0\r\n");
    // The second dialog starts where the file went.
    s.dialogs.answers = {std::nullopt};
    FileSaveAs(s.context);
    EXPECT_EQ(s.dialogs.shown.back(), "save in " + s.dir.Path().string());
}

TEST(DocumentCommands, SaveAsIntoAFolderThatCannotBeWrittenKeepsTheName) {
    Session s;
    s.DrawOneWire();
    s.workspace.CurrentFileName = s.PathOf("kept.amq");
    s.dialogs.answers = {s.PathOf("no such folder/x.amq")};
    EXPECT_FALSE(FileSaveAs(s.context));
    ASSERT_EQ(s.prompts.messages.size(), 1u);
    EXPECT_EQ(s.prompts.messages[0], "(!) The circuit could not be saved as " +
                                         s.PathOf("no such folder/x.amq") +
                                         ". No such file or directory.");
    EXPECT_EQ(s.workspace.CurrentFileName, s.PathOf("kept.amq"));
    EXPECT_EQ(CountLiveWires(s.workspace.circuit), 1);
    EXPECT_EQ(s.store.Dump(), "");
}

} // namespace
} // namespace ampora
