#include "settings/recent_files.h"
#include "support/memory_settings_store.h"
#include "support/test_files.h"

#include <gtest/gtest.h>

namespace ampora {
namespace {

using test::MemorySettingsStore;

std::string Joined(const RecentFiles& files) {
    return files[0] + "|" + files[1] + "|" + files[2] + "|" + files[3];
}

TEST(RecentFiles, NewestFirstTheOldestDropsAndARepeatMovesToTheTop) {
    MemorySettingsStore store;
    AddRecentFile(store, "/c/a.amq");
    AddRecentFile(store, "/c/b.amq");
    AddRecentFile(store, "/c/c.amq");
    EXPECT_EQ(Joined(AddRecentFile(store, "/c/d.amq")), "/c/d.amq|/c/c.amq|/c/b.amq|/c/a.amq");
    EXPECT_EQ(Joined(AddRecentFile(store, "/c/d.amq")), "/c/d.amq|/c/c.amq|/c/b.amq|/c/a.amq");
    EXPECT_EQ(Joined(AddRecentFile(store, "/c/b.amq")), "/c/b.amq|/c/d.amq|/c/c.amq|/c/a.amq");
    EXPECT_EQ(Joined(AddRecentFile(store, "/c/e.amq")), "/c/e.amq|/c/b.amq|/c/d.amq|/c/c.amq");
    EXPECT_EQ(Joined(AddRecentFile(store, "/c/E.amq")), "/c/E.amq|/c/e.amq|/c/b.amq|/c/d.amq");
    EXPECT_EQ(store.Dump(), "Recent Files/RecentFile1=/c/E.amq\n"
                            "Recent Files/RecentFile2=/c/e.amq\n"
                            "Recent Files/RecentFile3=/c/b.amq\n"
                            "Recent Files/RecentFile4=/c/d.amq\n");
}

TEST(RecentFiles, TheStoreNotTheMenuIsAuthoritative) {
    MemorySettingsStore store;
    store.Set("Recent Files", "RecentFile1", "/x/one.amq");
    store.Set("Recent Files", "RecentFile3", "/x/three.amq");
    EXPECT_EQ(Joined(AddRecentFile(store, "/x/new.amq")), "/x/new.amq|/x/one.amq||/x/three.amq");
}

TEST(RecentFiles, DialogsStartInTheNewestFilesFolderOrTheProgramFolder) {
    MemorySettingsStore store;
    EXPECT_EQ(RecentFolder(store, "/usr/share/ampora/examples"), "/usr/share/ampora/examples");
    AddRecentFile(store, "/home/kim/circuits/divider.amq");
    EXPECT_EQ(RecentFolder(store, "/p"), "/home/kim/circuits");
    AddRecentFile(store, "/home/kim/a.amq/a.amq");
    EXPECT_EQ(RecentFolder(store, "/p"), "/home/kim"); // cut at the first "a.amq"
    AddRecentFile(store, "/root.amq");
    EXPECT_EQ(RecentFolder(store, "/p"), "/");
}

TEST(RecentFiles, AFileExistsOnlyWhenItCanBeRead) {
    test::TempDir dir;
    test::WriteBytes(dir / "here.amq", "0\r\n0\r\n0\r\n");
    EXPECT_TRUE(FileExists((dir / "here.amq").string()));
    EXPECT_FALSE(FileExists((dir / "gone.amq").string()));
    EXPECT_FALSE(FileExists(dir.Path().string()));
    EXPECT_FALSE(FileExists(""));
}

} // namespace
} // namespace ampora
