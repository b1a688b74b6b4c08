#pragma once
// The arguments of ampora-cli's commands: their usage lines and the reading of their options.
// A wrong argument is named with the reason, as in "--font 5: the font set runs from 1 to 4",
// and the command's usage follows it.

#include "tables/workspace.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace ampora::cli {

enum class Command { Check, Solve, Report, Picture, CheckEquation, Grade };

// The usage lines of every command, and of one.
std::string_view Usage();
std::string_view UsageOf(Command command);

struct RunOptions {
    std::optional<std::int16_t> autoNamePattern;
    std::int16_t sigFigs = Preferences{}.SigFigs;
    std::int16_t fontIndex = Preferences{}.FontIndex;
    bool text = false;  // solve: an aligned plain-text answer key instead of JSON
    bool exact = false; // solve: the matrices and row operations in exact fractions as well
    std::string gjPath; // solve --gj: where to write the augmented matrix as ampora.gj
    std::string path;
    std::int16_t viewMode = 0; // --view, for picture only: 0 values .. 3 power
    std::string output;        // -o, for report and picture
    std::string at;            // check-equation: the node or supernode the equation is written at
    std::string equation;      // check-equation: the student's equation
    std::string answers;       // grade: the student's file of answers
};

struct ParsedArguments {
    RunOptions options;
    std::string error; // empty when every argument is right

    bool Valid() const { return error.empty(); }
};

// Reads one command's arguments (those after the command's name): its options and the one
// circuit file every command takes; report also requires -o OUT.(html|rtf|pdf), picture
// -o OUT.(svg|png), check-equation --at NAME and the equation after the file, grade the
// answers file.
ParsedArguments ParseArguments(const std::vector<std::string>& args, Command command);

// Writes "ampora-cli: " + the error and then the command's usage to err; returns the exit
// code of a usage error.
int ReportArgumentError(std::ostream& err, const std::string& error, Command command);

} // namespace ampora::cli
