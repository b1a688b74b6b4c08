#pragma once
// What `solve` and `report` share: their options, and running a circuit file the way a
// student does (open, "Next >", AutoName when asked, "Next >").

#include "cli/cli_arguments.h"
#include "tables/workspace.h"
#include "workflow/step_transitions.h"

#include <cstdint>
#include <optional>
#include <ostream>
#include <string>
#include <vector>

namespace ampora::cli {

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

// Opens options.path into workspace (in step 1, as the window shows a file just opened) with
// the options' preferences. False (and a message on err) when the file cannot be read whole.
bool OpenCircuit(Workspace& workspace, const RunOptions& options, std::ostream& err);

// Opens options.path into workspace and runs the steps. Nothing (and a message on err)
// when the file cannot be read whole.
std::optional<SolvedRun> OpenAndSolve(Workspace& workspace, const RunOptions& options,
                                      RecordedPrompts& prompts, std::ostream& err);

// As OpenAndSolve, for the commands that need the solution: false (and on err the file's
// trouble or the student's message) unless the circuit was solved.
bool OpenAndSolveWhole(Workspace& workspace, const RunOptions& options, std::ostream& err);

} // namespace ampora::cli
