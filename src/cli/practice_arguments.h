#pragma once
// The arguments of `generate` and `worksheet`, the commands that make practice circuits
// instead of reading one.

#include "practice/practice_shape.h"
#include "practice/worksheet.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace ampora::cli {

enum class PracticeCommand { Generate, Worksheet };

std::string_view PracticeUsage(PracticeCommand command);

struct PracticeOptions {
    WorksheetShape shape;
    std::optional<std::uint32_t> seed;
    bool nice = false;
    int count = 0;
    std::string output; // -o
    std::string key;    // --key, worksheet only
};

struct ParsedPracticeArguments {
    PracticeOptions options;
    std::string error; // empty when every argument is right

    bool Valid() const { return error.empty(); }
};

// Reads the arguments after the command's name; generate needs all three counts and
// -o FILE.amq, worksheet --count, -o and --key, each a .pdf or .html.
ParsedPracticeArguments ParsePracticeArguments(const std::vector<std::string>& args,
                                               PracticeCommand command);

} // namespace ampora::cli
