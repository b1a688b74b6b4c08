#pragma once
// What `solve` and `report` share: their options, and running a circuit file the way a
// student does (open, "Next >", AutoName when asked, "Next >").

#include "analysis/step_transitions.h"
#include "document/workspace.h"

#include <cstdint>
#include <optional>
#include <ostream>
#include <string>
#include <vector>

namespace ampora::cli {

struct RunOptions {
    std::optional<std::int16_t> autoNamePattern;
    std::int16_t sigFigs = Preferences{}.SigFigs;
    std::int16_t fontIndex = Preferences{}.FontIndex;
    std::string path;
    std::string output; // -o, for report only
};

// --autoname[=1|2|3] and --sigfigs N and one FILE; with reportOptions also --font 1..4 and
// -o OUT, which is then required. Nothing when the arguments are wrong.
std::optional<RunOptions> ParseRunOptions(const std::vector<std::string>& args, bool reportOptions);

// Stands in for the message boxes: keeps the text of the last message shown.
struct RecordedPrompts : Prompts {
    std::string message;
    void ShowMessage(const std::string& text, MessageIcon) override { message = text; }
    bool AskYesNo(const std::string&) override { return false; }
    std::string AskText(const std::string&, const std::string&, float, float) override {
        return "";
    }
};

struct SolvedRun {
    TransitionResult leftStep1 = TransitionResult::Stopped;
    bool solved = false;
};

// Opens options.path into workspace and runs the steps. Nothing (and a message on err)
// when the file cannot be read whole.
std::optional<SolvedRun> OpenAndSolve(Workspace& workspace, const RunOptions& options,
                                      RecordedPrompts& prompts, std::ostream& err);

} // namespace ampora::cli
