// Faults injected into saving: the process killed between writing the new file and
// renaming it over the old one, and folders that cannot be written.

#include "document/amq_file.h"
#include "document/circuit_edit.h"
#include "document/document_commands.h"
#include "support/memory_settings_store.h"
#include "support/scripted_prompts.h"
#include "support/test_files.h"

#include <gtest/gtest.h>

#include <linux/filter.h>
#include <linux/seccomp.h>
#include <sys/prctl.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstddef>
#include <filesystem>

namespace ampora {
namespace {

namespace fs = std::filesystem;

// From here on the kernel kills this process the moment it asks to rename a file: the
// closest a test gets to the power failing between the write and the rename.
bool KillOnRename() {
    sock_filter filter[] = {
        BPF_STMT(BPF_LD | BPF_W | BPF_ABS, offsetof(seccomp_data, nr)),
        BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, SYS_rename, 3, 0),
        BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, SYS_renameat, 2, 0),
        BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, SYS_renameat2, 1, 0),
        BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ALLOW),
        BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_KILL_PROCESS),
    };
    sock_fprog program{static_cast<unsigned short>(std::size(filter)), filter};
    return prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) == 0 &&
           prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &program) == 0;
}

Circuit TwoWires() {
    Circuit circuit;
    AddWire(circuit, 40, 80, 200, 80);
    AddWire(circuit, 200, 80, 200, 160);
    return circuit;
}

TEST(SaveFaults, ASaveKilledBetweenWritingAndRenamingLeavesTheOldFileWhole) {
    const test::TempDir dir;
    const fs::path path = dir / "circuit.amq";
    const std::string old = "1\r\n40,80,200,80\r\n0\r\n0\r\n";
    test::WriteBytes(path, old);

    const pid_t child = fork();
    ASSERT_NE(child, -1);
    if (child == 0) {
        if (!KillOnRename()) {
            _exit(3); // no seccomp here: the parent reports it
        }
        SaveToIniFile(TwoWires(), path.string());
        _exit(0); // the rename was allowed: the fault was not injected
    }
    int status = 0;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    ASSERT_TRUE(WIFSIGNALED(status)) << "the saving process was not killed; exit status "
                                     << (WIFEXITED(status) ? WEXITSTATUS(status) : -1);
    EXPECT_EQ(WTERMSIG(status), SIGSYS);

    EXPECT_EQ(test::ReadBytes(path), old);
    // The new text was written in full beside it before the kill; only that is left over.
    std::vector<std::string> leftovers;
    for (const auto& entry : fs::directory_iterator(dir.Path())) {
        if (entry.path() != path) {
            leftovers.push_back(test::ReadBytes(entry.path()));
        }
    }
    EXPECT_EQ(leftovers, std::vector<std::string>{CircuitFileText(TwoWires())});
    Circuit reread;
    EXPECT_TRUE(LoadFromIniFile(reread, path.string()).complete);
    EXPECT_FALSE(NeedFileSave(reread, path.string()));
}

TEST(SaveFaults, SaveAsIntoAReadOnlyFolderSaysSoAndKeepsTheCircuitAndItsName) {
    const test::TempDir dir;
    fs::create_directory(dir / "locked");
    fs::permissions(dir / "locked", fs::perms::owner_read | fs::perms::owner_exec);
    // Permissions do not stop root; /proc takes no new files from anyone.
    const bool root = geteuid() == 0;
    const std::string target = root ? "/proc/ampora-test.amq" : (dir / "locked" / "x.amq").string();

    Workspace workspace;
    workspace.circuit = TwoWires();
    workspace.CurrentFileName = (dir / "named.amq").string();
    test::ScriptedPrompts prompts;
    test::ScriptedFileDialogs dialogs;
    dialogs.answers = {target};
    test::MemorySettingsStore store;
    DocumentContext context{workspace, prompts, dialogs, store, dir.Path().string()};
    const std::string before = CircuitFileText(workspace.circuit);

    EXPECT_FALSE(FileSaveAs(context));
    EXPECT_EQ(prompts.messages, std::vector<std::string>{
                                    "(!) The circuit could not be saved as " + target + ". " +
                                    (root ? "No such file or directory." : "Permission denied.")});
    EXPECT_EQ(workspace.CurrentFileName, (dir / "named.amq").string());
    EXPECT_EQ(CircuitFileText(workspace.circuit), before);
    EXPECT_EQ(store.Dump(), "");
    EXPECT_FALSE(fs::exists(target));
    fs::permissions(dir / "locked", fs::perms::owner_all);
}

TEST(SaveFaults, ASaveOverAFileWhoseFolderVanishedKeepsTheDrawingAndAsksAgainLater) {
    const test::TempDir dir;
    fs::create_directory(dir / "gone");
    Workspace workspace;
    workspace.circuit = TwoWires();
    workspace.CurrentFileName = (dir / "gone" / "c.amq").string();
    test::ScriptedPrompts prompts;
    test::ScriptedFileDialogs dialogs;
    test::MemorySettingsStore store;
    DocumentContext context{workspace, prompts, dialogs, store, dir.Path().string()};
    fs::remove(dir / "gone");

    EXPECT_FALSE(FileSave(context));
    EXPECT_EQ(prompts.messages.size(), 1u);
    EXPECT_EQ(workspace.CurrentFileName, (dir / "gone" / "c.amq").string());
    EXPECT_EQ(CountLiveWires(workspace.circuit), 2);
    // Nothing was saved, so leaving still offers to save.
    EXPECT_TRUE(NeedFileSave(workspace.circuit, workspace.CurrentFileName));
}

} // namespace
} // namespace ampora
