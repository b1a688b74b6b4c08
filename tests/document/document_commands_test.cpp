// New, Open, Open Recent, Save and Save As, each as one case: the files beforehand, the answers
// given, the command, and then everything it did (questions, dialogs, messages, the drawing, the
// name, the files in the folder, the store). The outcomes are checked by hand in
// tests/data/document/file_commands.txt; the folder shows as DIR and the examples as EXAMPLES.

#include "document/amq_file.h"
#include "document/circuit_edit.h"
#include "document/document_commands.h"
#include "settings/recent_files.h"
#include "support/circuit_dump.h"
#include "support/memory_settings_store.h"
#include "support/scripted_prompts.h"
#include "support/test_files.h"

#include <gtest/gtest.h>

#include <sys/stat.h>

#include <filesystem>
#include <functional>

namespace ampora {
namespace {

namespace fs = std::filesystem;

struct Session {
    Workspace workspace;
    test::ScriptedPrompts prompts;
    test::ScriptedFileDialogs dialogs;
    test::MemorySettingsStore store;
    test::TempDir dir;
    DocumentContext context{workspace, prompts, dialogs, store, test::ExamplesDir().string()};

    std::string PathOf(const std::string& name) const { return (dir / name).string(); }
};

std::string Replaced(std::string text, const std::string& from, const std::string& to) {
    for (std::size_t at = 0; (at = text.find(from, at)) != std::string::npos; at += to.size()) {
        text.replace(at, from.size(), to);
    }
    return text;
}

// Each file of the folder: a link with its target, a file with its permissions and bytes.
std::string Listing(const fs::path& folder) {
    std::vector<std::string> lines;
    for (const auto& entry : fs::recursive_directory_iterator(folder)) {
        const std::string name = entry.path().lexically_relative(folder).string();
        if (entry.is_symlink()) {
            lines.push_back(name + " -> " + fs::read_symlink(entry.path()).string());
        } else if (entry.is_regular_file()) {
            const auto perms = static_cast<unsigned>(entry.status().permissions());
            lines.push_back(name + " " + std::to_string(perms >> 6 & 7) +
                            std::to_string(perms >> 3 & 7) + std::to_string(perms & 7) + " \"" +
                            Replaced(test::ReadBytes(entry.path()), "\r\n", "\\r\\n") + "\"");
        }
    }
    std::sort(lines.begin(), lines.end());
    std::string out;
    for (const std::string& line : lines) {
        out += "file   " + line + "\n";
    }
    return out;
}

std::string Outcome(Session& s, const std::string& result) {
    std::string out = "result " + result + "\n";
    for (const std::string& question : s.prompts.questions) {
        out += "asked  " + question + "\n";
    }
    for (const std::string& dialog : s.dialogs.shown) {
        out += "dialog " + dialog + "\n";
    }
    for (const std::string& message : s.prompts.messages) {
        out += "said   " + message + "\n";
    }
    out += "name   \"" + s.workspace.CurrentFileName + "\"\n" +
           test::DumpCircuit(s.workspace.Circuit) + Listing(s.dir.Path());
    out += s.store.Dump();
    out = Replaced(out, s.dir.Path().string(), "DIR");
    return Replaced(out, test::ExamplesDir().string(), "EXAMPLES");
}

std::string Did(const CommandResult& r) {
    return std::string(r.cleared ? "cleared" : "kept") + (r.undoAvailable ? ", undo offered" : "") +
           (r.fileRead ? ", file read" : "");
}
std::string Did(bool saved) {
    return saved ? "saved" : "not saved";
}

const std::string kDivider = (test::ExamplesDir() / "voltage_divider.amq").string();

void OneWire(Session& s) {
    AddWire(s.workspace.Circuit, 40, 80, 200, 80);
}

// A damaged file opens with what was read before the damage, says where reading stopped, and
// is left alone: starting anew afterwards does not offer to write over it.
std::string OpenDamaged(Session& s, const std::string& bytes) {
    OneWire(s);
    test::WriteBytes(s.dir / "damaged.amq", bytes);
    s.dialogs.answers = {s.PathOf("damaged.amq")};
    const std::string opened = Did(FileOpen(s.context));
    const std::string read =
        s.workspace.CurrentFileName + "\n" + test::DumpCircuit(s.workspace.Circuit);
    return opened + ", opened as\n" + read + "then New: " + Did(FileNew(s.context));
}

struct Case {
    const char* what;
    std::function<std::string(Session&)> run;
};

const Case kCases[] = {
    {"New on an empty canvas never asks", [](Session& s) { return Did(FileNew(s.context)); }},
    {"New on an unsaved drawing asks, and Yes opens Save As",
     [](Session& s) {
         OneWire(s);
         s.prompts.yesNoAnswers = {true};
         s.dialogs.answers = {s.PathOf("first.amq")};
         return Did(FileNew(s.context));
     }},
    {"No drops the drawing without saving",
     [](Session& s) {
         OneWire(s);
         return Did(FileNew(s.context));
     }},
    {"Open asks once before the dialog and reads the file",
     [](Session& s) {
         OneWire(s);
         s.dialogs.answers = {kDivider};
         return Did(FileOpen(s.context));
     }},
    {"a cancelled dialog changes nothing",
     [](Session& s) {
         OneWire(s);
         s.workspace.CurrentFileName = "/somewhere/kept.amq";
         const std::string opened = Did(FileOpen(s.context));
         return opened + "; " + Did(FileSaveAs(s.context));
     }},
    {"a damaged file: a wire missing",
     [](Session& s) { return OpenDamaged(s, "2\r\n0,0,80,0\r\n"); }},
    {"a damaged file: a value with a suffix",
     [](Session& s) { return OpenDamaged(s, "1\r\n0,0,80,0\r\n1\r\n40,0,6,5k\r\n0\r\n"); }},
    {"a damaged file: a node cut short",
     [](Session& s) {
         return OpenDamaged(s,
                            "1\r\n0,0,80,0\r\n1\r\n40,0,6,5\r\n2\r\n\"A\",\"A\",0,0\r\n\"0\"\r\n");
     }},
    // Nothing read: the drawing before stays only in the undo memory.
    {"a damaged file: empty", [](Session& s) { return OpenDamaged(s, ""); }},
    {"a file that cannot be opened leaves the drawing",
     [](Session& s) {
         OneWire(s);
         s.dialogs.answers = {s.PathOf("missing.amq")};
         return Did(FileOpen(s.context));
     }},
    // Saving a circuit opened through a link writes the file the link names, with the
    // permissions that file had, and the link stays a link.
    {"saving through a link",
     [](Session& s) {
         fs::copy_file(kDivider, s.dir / "divider.amq");
         fs::permissions(s.dir / "divider.amq",
                         fs::perms::owner_read | fs::perms::owner_write | fs::perms::group_read);
         fs::create_symlink("divider.amq", s.dir / "link.amq");
         s.dialogs.answers = {s.PathOf("link.amq")};
         const std::string opened = Did(FileOpen(s.context));
         s.workspace.Circuit.Elements[1].Value = 1500;
         const bool before = NeedFileSave(s.workspace.Circuit, s.workspace.CurrentFileName);
         const std::string saved = Did(FileSave(s.context));
         return opened + "; " + saved + ", needed saving " + std::to_string(before) + " then " +
                std::to_string(NeedFileSave(s.workspace.Circuit, s.workspace.CurrentFileName));
     }},
    {"a recent file that is gone stays in the list",
     [](Session& s) {
         OneWire(s);
         AddRecentFile(s.store, s.PathOf("gone.amq"));
         return Did(OpenRecent(s.context, s.PathOf("gone.amq")));
     }},
    // The second dialog starts where the file went.
    {"Save As names the document and saving again needs no dialog",
     [](Session& s) {
         OneWire(s);
         s.dialogs.answers = {s.PathOf("named.amq")};
         std::string result = Did(FileSave(s.context));
         result += ", needs saving " +
                   std::to_string(NeedFileSave(s.workspace.Circuit, s.workspace.CurrentFileName));
         AddWire(s.workspace.Circuit, 200, 80, 200, 160);
         result += "; " + Did(FileSave(s.context));
         return result + "; " + Did(FileSaveAs(s.context));
     }},
    {"Save As into a folder that is not there keeps the name",
     [](Session& s) {
         OneWire(s);
         s.workspace.CurrentFileName = s.PathOf("kept.amq");
         s.dialogs.answers = {s.PathOf("no such folder/x.amq")};
         return Did(FileSaveAs(s.context));
     }},
    // Nothing was saved, so leaving still offers to save.
    {"Save over a file whose folder vanished",
     [](Session& s) {
         OneWire(s);
         s.workspace.CurrentFileName = s.PathOf("gone/c.amq");
         const std::string saved = Did(FileSave(s.context));
         return saved + ", needs saving " +
                std::to_string(NeedFileSave(s.workspace.Circuit, s.workspace.CurrentFileName));
     }},
};

TEST(DocumentCommands, EachCommandDoesAsHandChecked) {
    const mode_t umaskBefore = umask(022); // the permissions new files get, as listed
    std::string dump;
    for (const Case& c : kCases) {
        Session s;
        const std::string result = c.run(s);
        dump += std::string("== ") + c.what + "\n" + Outcome(s, result);
    }
    umask(umaskBefore);
    EXPECT_EQ(dump, test::ExpectedText("document/file_commands.txt", dump));
}

} // namespace
} // namespace ampora
