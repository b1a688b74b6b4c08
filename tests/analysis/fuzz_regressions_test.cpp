#include "fuzz/fuzz_exercises.h"
#include "support/test_files.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace ampora {
namespace {

// Every input that ever tripped the fuzzer, and the examples it starts from.
TEST(FuzzRegressions, EveryKeptAmqInputReadsAndAnalysesWithoutBreakingAPromise) {
    std::vector<std::filesystem::path> inputs = test::ExampleFiles();
    for (const auto& entry : std::filesystem::directory_iterator(
             std::filesystem::path(AMPORA_SOURCE_DIR) / "fuzz" / "regressions" / "amq_analysis")) {
        if (entry.is_regular_file() && entry.path().filename() != "README") {
            inputs.push_back(entry.path());
        }
    }
    ASSERT_GT(inputs.size(), test::ExampleFiles().size());
    for (const auto& input : inputs) {
        EXPECT_EQ(test::ExerciseAmqAnalysis(test::ReadBytes(input)), "") << input;
    }
}

} // namespace
} // namespace ampora
