// What a safe write keeps: the old file on failure, and a file in a folder that takes no new
// files.

#include "document/safe_file_write.h"
#include "support/test_files.h"

#include <gtest/gtest.h>

#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

namespace ampora {
namespace {

namespace fs = std::filesystem;

// The names in a folder, so a test sees that no temporary file was left behind.
std::vector<std::string> Names(const fs::path& folder) {
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(folder)) {
        names.push_back(entry.path().filename().string());
    }
    std::sort(names.begin(), names.end());
    return names;
}

// The exit status of RUN in a child process, so that a limit or another user stays there.
int InChild(const std::function<int()>& run) {
    const pid_t child = fork();
    if (child == 0) {
        _exit(run());
    }
    int status = 0;
    return child != -1 && waitpid(child, &status, 0) == child && WIFEXITED(status)
               ? WEXITSTATUS(status)
               : -1;
}

TEST(WriteFileSafely, AWriteThatFailsPartWayKeepsTheOldFileAndLeavesNoTemporary) {
    const test::TempDir dir;
    test::WriteBytes(dir / "c.amq", "old");
    // A file size limit makes the write fail after a few bytes, as a full disk would.
    EXPECT_EQ(InChild([&] {
                  std::signal(SIGXFSZ, SIG_IGN);
                  const rlimit limit{8, 8};
                  setrlimit(RLIMIT_FSIZE, &limit);
                  const FileWriteResult result =
                      WriteFileSafely((dir / "c.amq").string(), std::string(100, 'x'));
                  return !result.written && result.reason == "File too large" ? 0 : 1;
              }),
              0);
    EXPECT_EQ(test::ReadBytes(dir / "c.amq"), "old");
    EXPECT_EQ(Names(dir.Path()), std::vector<std::string>{"c.amq"});
}

// A link, the permissions of the file it names, and a new file's permissions are seen whole
// in tests/data/document/file_commands.txt; so is a folder that is not there.
TEST(WriteFileSafely, AFolderAsTargetSaysWhyAndLeavesNothing) {
    const test::TempDir dir;
    fs::create_directory(dir / "folder");
    EXPECT_EQ(WriteFileSafely((dir / "folder").string(), "x").reason, "Is a directory");
    EXPECT_EQ(Names(dir.Path()), std::vector<std::string>{"folder"});
}

TEST(WriteFileSafely, AWritableFileInAFolderThatTakesNoNewFilesIsRewrittenInPlace) {
    const test::TempDir dir;
    fs::create_directory(dir / "locked");
    const fs::path file = dir / "locked" / "c.amq";
    test::WriteBytes(file, "old text");
    // Folder permissions do not stop root, so root writes as nobody in a child process.
    const uid_t nobody = 65534;
    const bool root = geteuid() == 0;
    if (root) {
        for (const fs::path& path : {dir.Path(), dir / "locked", file}) {
            ASSERT_EQ(chown(path.c_str(), nobody, nobody), 0);
        }
    }
    fs::permissions(dir / "locked", fs::perms::owner_read | fs::perms::owner_exec);

    const int status = InChild([&] {
        if (root && (setgid(nobody) != 0 || setuid(nobody) != 0)) {
            return 3;
        }
        return WriteFileSafely(file.string(), "new").written ? 0 : 1;
    });
    fs::permissions(dir / "locked", fs::perms::owner_all);
    EXPECT_EQ(status, 0);
    EXPECT_EQ(test::ReadBytes(file), "new");
    EXPECT_EQ(Names(dir / "locked"), std::vector<std::string>{"c.amq"});
}

} // namespace
} // namespace ampora
