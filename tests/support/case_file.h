#pragma once
// Cases kept as data under tests/data, each with what it gave, so that one file holds both
// the inputs and their hand-checked outcomes:
//     # a note, kept as it is
//     == the case's title (often its input)
//     before ...        lines starting with one of the input words belong to the case
//     after ...         every other line is what the case gave, written afresh each run
// ReplayCases plays every case and returns the file as it should read; compare it with
// ExpectedText(name, ...) (AMPORA_UPDATE_TEST_DATA=1 rewrites the outcomes, never the inputs).

#include <functional>
#include <string>
#include <vector>

namespace ampora::test {

using CasePlayer =
    std::function<std::string(const std::string& title, const std::vector<std::string>& inputs)>;

std::string ReplayCases(const std::string& name, const std::vector<std::string>& inputWords,
                        const CasePlayer& play);

// "\r", "\n", "\t" and "\\" written out, and back: bytes kept readable on one line.
std::string EscapedLine(const std::string& bytes);
std::string UnescapedLine(const std::string& line);

} // namespace ampora::test
