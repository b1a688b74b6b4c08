// libFuzzer target: bytes as an .amq file, then the whole analysis.

#include "fuzz/fuzz_exercises.h"

#include <cstdint>
#include <cstdio>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string problem = ampora::test::ExerciseAmqAnalysis(
        std::string_view(reinterpret_cast<const char*>(data), size));
    if (!problem.empty()) {
        std::fprintf(stderr, "broken promise: %s\n", problem.c_str());
        std::abort();
    }
    return 0;
}
