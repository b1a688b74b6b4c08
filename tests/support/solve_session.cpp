#include "support/solve_session.h"

#include "analysis/node_naming.h"
#include "document/amq_file.h"
#include "document/circuit_edit.h"
#include "support/test_files.h"
#include "workflow/step_transitions.h"

namespace ampora::test {

void Solve(SolveSession& session, const std::string& amqText, int autoName) {
    EraseWholeCircuit(session.ws.Circuit);
    if (!ReadCircuitText(session.ws.Circuit, amqText).complete) {
        return;
    }
    if (LeaveStep1(session.ws, session.prompts) != TransitionResult::Entered) {
        return;
    }
    if (autoName != 0) {
        session.ws.Preferences.AutoNamePattern = static_cast<std::int16_t>(autoName);
        if (!AutoName(session.ws, session.prompts)) {
            return;
        }
    }
    session.solved = LeaveStep2(session.ws, session.prompts) == TransitionResult::Entered;
}

std::string ExampleText(const std::string& name, const std::string& from, const std::string& to) {
    const std::string text = ReadBytes(ExamplesDir() / name);
    return from.empty() ? text : ReplaceAll(text, from, to);
}

} // namespace ampora::test
