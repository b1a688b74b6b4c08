#pragma once
// Cases kept one a line as "INPUT -> OUTCOME" in tests/data/NAME, so that one file holds the
// inputs and their hand-checked outcomes; a line starting "# " is a note, kept as it is. Each input
// is played afresh and the file returned as it should read; compare it with ExpectedText(NAME,
// ...).

#include "support/test_files.h"

#include <filesystem>
#include <functional>
#include <sstream>
#include <string>

namespace ampora::test {

inline std::string ReplayArrowCases(const std::string& name,
                                    const std::function<std::string(const std::string&)>& play) {
    std::istringstream lines(
        ReadBytes(std::filesystem::path(AMPORA_SOURCE_DIR) / "tests/data" / name));
    std::string out, line;
    while (std::getline(lines, line)) {
        if (line.starts_with("# ")) {
            out += line + "\n";
            continue;
        }
        const std::string input = line.substr(0, line.find(" -> "));
        out += input + " -> " + play(input) + "\n";
    }
    return out;
}

} // namespace ampora::test
