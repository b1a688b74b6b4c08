#include "fuzz/fuzz_exercises.h"
#include "support/test_files.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>

namespace ampora {
namespace {

namespace fs = std::filesystem;

// Every input that ever tripped the fuzzer, and the examples it starts from.
std::vector<fs::path> ReplayedInputs(const std::string& target) {
    std::vector<fs::path> inputs = test::ExampleFiles();
    const fs::path kept = fs::path(AMPORA_SOURCE_DIR) / "fuzz" / "regressions" / target;
    for (const auto& entry : fs::directory_iterator(kept)) {
        if (entry.is_regular_file() && entry.path().filename() != "README") {
            inputs.push_back(entry.path());
        }
    }
    std::sort(inputs.begin(), inputs.end());
    return inputs;
}

TEST(FuzzRegressions, EveryKeptAmqInputReadsAndAnalysesWithoutBreakingAPromise) {
    const auto inputs = ReplayedInputs("amq_analysis");
    ASSERT_GT(inputs.size(), test::ExampleFiles().size());
    for (const fs::path& input : inputs) {
        EXPECT_EQ(test::ExerciseAmqAnalysis(test::ReadBytes(input)), "") << input;
    }
}

} // namespace
} // namespace ampora
