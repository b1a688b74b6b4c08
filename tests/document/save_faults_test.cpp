// A fault injected into saving: the process killed between writing the new file and
// renaming it over the old one.

#include "document/amq_file.h"
#include "document/circuit_edit.h"
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

} // namespace
} // namespace ampora
