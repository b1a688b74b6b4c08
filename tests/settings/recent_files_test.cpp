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

// Each file added and the list after, then the store: tests/data/settings/recent_files.txt.
TEST(RecentFiles, NewestFirstTheOldestDropsAndARepeatMovesToTheTop) {
    MemorySettingsStore store;
    std::string dump;
    for (const char* file : {"a", "b", "c", "d", "d", "b", "e", "E"}) {
        dump += std::string(file) + ": " +
                Joined(AddRecentFile(store, "/c/" + std::string(file) + ".amq")) + "\n";
    }
    dump += store.Dump();
    EXPECT_EQ(dump, test::ExpectedText("settings/recent_files.txt", dump));
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
