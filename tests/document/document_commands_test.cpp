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

// A damaged file opens with what was read before the damage, says where reading stopped,
// and is left alone: closing or starting anew does not offer to write over it.
TEST(DocumentCommands, ADamagedFileOpensWithWhatWasReadAndIsLeftAlone) {
    struct Case {
        const char* bytes;
        const char* opened;  // the drawing afterwards
        const char* message; // after "(!) The file <path> could not be read whole ("
    };
    // The dumps mark "(undo)" what Undo Erase would bring back (the drawing before New).
    const Case cases[] = {
        {"2\r\n0,0,80,0\r\n",
         "NumWires 2\nwire 1 live(undo) 0,0 80,0\nwire 2 empty 0,0 0,0\nNumElements 0\n"
         "NumNodes 0\n",
         "the file ends where wire 2 should follow (line 3)"},
        {"1\r\n0,0,80,0\r\n1\r\n40,0,6,5k\r\n0\r\n",
         "NumWires 1\nwire 1 live(undo) 0,0 80,0\nNumElements 0\nNumNodes 0\n",
         "line 4: element 1 value is not a finite single-precision number: \"5k\""},
        {"1\r\n0,0,80,0\r\n1\r\n40,0,6,5\r\n2\r\n\"A\",\"A\",0,0\r\n\"0\"\r\n",
         "NumWires 1\nwire 1 live(undo) 0,0 80,0\nNumElements 1\nelement 1 kind 6 5 at 40,0\n"
         "NumNodes 1\nnode 1 \"A\" at 0,0\n",
         "line 7: node 2 needs 4 fields, found 1"},
        {"",
         // Nothing read: the drawing before stays only in the undo memory.
         "NumWires 1\nwire 1 empty(undo) 40,80 200,80\nNumElements 0\nNumNodes 0\n",
         "the file ends where the wire count should follow (line 1)"},
    };
    for (const Case& c : cases) {
        Session s;
        s.DrawOneWire();
        const std::string path = s.PathOf("damaged.amq");
        test::WriteBytes(path, c.bytes);
        s.dialogs.answers = {path};
        s.prompts.yesNoAnswers = {false};
        EXPECT_TRUE(FileOpen(s.context).fileRead) << c.bytes;
        EXPECT_EQ(DumpCircuit(s.workspace.circuit), c.opened) << c.bytes;
        EXPECT_EQ(s.prompts.messages,
                  std::vector<std::string>{"(!) The file " + path + " could not be read whole (" +
                                           c.message +
                                           "). What was read before that line is open; the "
                                           "file stays as it is unless you save the circuit."});
        EXPECT_EQ(s.workspace.CurrentFileName, path);
        s.prompts.questions.clear();
        FileNew(s.context);
        EXPECT_EQ(s.prompts.questions, std::vector<std::string>{}) << c.bytes;
        EXPECT_EQ(test::ReadBytes(path), c.bytes);
    }
}

TEST(DocumentCommands, AFileThatCannotBeOpenedIsReportedAndTheDrawingStays) {
    Session s;
    s.DrawOneWire();
    const std::string before = DumpCircuit(s.workspace.circuit);
    s.dialogs.answers = {s.PathOf("missing.amq")};
    EXPECT_FALSE(FileOpen(s.context).cleared);
    EXPECT_EQ(s.prompts.messages,
              std::vector<std::string>{"(!) The file " + s.PathOf("missing.amq") +
                                       " cannot be read: the file cannot be opened."});
    EXPECT_EQ(DumpCircuit(s.workspace.circuit), before);
    EXPECT_EQ(s.workspace.CurrentFileName, "");
}

// Saving a circuit opened through a link writes the file the link names, with the
// permissions that file had, and the link stays a link.
TEST(DocumentCommands, SavingThroughALinkWritesItsTargetAndKeepsLinkAndPermissions) {
    namespace fs = std::filesystem;
    Session s;
    fs::copy_file(kDivider, s.dir / "divider.amq");
    fs::permissions(s.dir / "divider.amq",
                    fs::perms::owner_read | fs::perms::owner_write | fs::perms::group_read);
    fs::create_symlink("divider.amq", s.dir / "link.amq");
    s.dialogs.answers = {s.PathOf("link.amq")};
    ASSERT_TRUE(FileOpen(s.context).fileRead);
    s.workspace.circuit.Elements[1].Value = 1500;
    EXPECT_TRUE(NeedFileSave(s.workspace.circuit, s.workspace.CurrentFileName));
    EXPECT_TRUE(FileSave(s.context));
    EXPECT_TRUE(fs::is_symlink(s.dir / "link.amq"));
    EXPECT_EQ(fs::status(s.dir / "divider.amq").permissions(),
              fs::perms::owner_read | fs::perms::owner_write | fs::perms::group_read);
    EXPECT_EQ(test::ReadBytes(s.dir / "divider.amq"),
              test::ReadBytes(kDivider).replace(test::ReadBytes(kDivider).find("1000"), 4, "1500"));
    EXPECT_FALSE(NeedFileSave(s.workspace.circuit, s.workspace.CurrentFileName));
    EXPECT_EQ(s.prompts.messages, std::vector<std::string>{});
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
