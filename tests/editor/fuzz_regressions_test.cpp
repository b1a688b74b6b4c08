#include "document/amq_file.h"
#include "document/circuit_edit.h"
#include "fuzz/fuzz_exercises.h"
#include "support/test_files.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>

namespace ampora {
namespace {

namespace fs = std::filesystem;

std::vector<fs::path> FilesIn(const fs::path& folder) {
    std::vector<fs::path> files;
    for (const auto& entry : fs::directory_iterator(folder)) {
        if (entry.is_regular_file() && entry.path().filename() != "README") {
            files.push_back(entry.path());
        }
    }
    std::sort(files.begin(), files.end());
    return files;
}

TEST(FuzzRegressions, EveryKeptEditingSequenceKeepsTheTablesSound) {
    const auto kept =
        FilesIn(fs::path(AMPORA_SOURCE_DIR) / "fuzz" / "regressions" / "editor_events");
    ASSERT_FALSE(kept.empty());
    for (const fs::path& input : kept) {
        EXPECT_EQ(test::ExerciseEditorEvents(test::ReadBytes(input)), "") << input;
    }
}

// The seeds draw the examples with the mouse; were they to draw nothing, the fuzzer would
// start from an empty canvas.
TEST(FuzzRegressions, TheEditorSeedsDrawTheExamplesWiresAndDevices) {
    const auto seeds = FilesIn(fs::path(AMPORA_SOURCE_DIR) / "fuzz" / "seeds" / "editor_events");
    ASSERT_EQ(seeds.size(), test::ExampleFiles().size());
    for (std::size_t k = 0; k < seeds.size(); ++k) {
        Circuit drawn;
        EXPECT_EQ(test::ExerciseEditorEvents(test::ReadBytes(seeds[k]), &drawn), "") << seeds[k];
        Circuit example;
        ASSERT_TRUE(LoadFromIniFile(example, test::ExampleFiles()[k].string()).complete);
        EXPECT_EQ(CountLiveWires(drawn), CountLiveWires(example)) << seeds[k];
        EXPECT_EQ(CountLiveElements(drawn), CountLiveElements(example)) << seeds[k];
    }
}

} // namespace
} // namespace ampora
