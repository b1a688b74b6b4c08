#pragma once
// Runs a circuit the way a student does: open, "Next >", optionally AutoName, "Next >".

#include "support/scripted_prompts.h"
#include "tables/workspace.h"

#include <string>

namespace ampora::test {

struct SolveSession {
    Workspace ws;
    ScriptedPrompts prompts;
    bool solved = false;
};

// Reads .amq text (New first, as Open does) and leaves steps 1 and 2; `autoName` 0 keeps
// the names from the file, 1..3 runs AutoName with that pattern in step 2.
void Solve(SolveSession& session, const std::string& amqText, int autoName);

// The example's file text, with every occurrence of `from` replaced by `to`.
std::string ExampleText(const std::string& name, const std::string& from = "",
                        const std::string& to = "");

} // namespace ampora::test
