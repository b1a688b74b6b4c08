#pragma once
// The checks that refuse circuits nodal analysis cannot handle, and their messages.

#include "tables/analysis_failure.h"
#include "tables/analysis_tables.h"
#include "tables/circuit.h"
#include "tables/prompts.h"

#include <string>

namespace ampora {

inline constexpr const char* kNoNodesMessage =
    "You can't do nodal analysis since there are no nodes.";
inline constexpr const char* kLooseEndsMessage =
    "You have branches that lead nowhere and current cannot flow in them.  "
    "You must go back and delete them.";
inline constexpr const char* kLoopsMessage =
    "You have simple current loops containing no nodes.  They should be analyzed with Ohm's law, "
    "not nodal analysis.  You must go back and delete them.";
inline constexpr const char* kTwoCurrentSourcesMessage =
    "You have two current sources in the same branch.  You must go back and delete one of them.";
inline constexpr const char* kTwoReferencesMessage =
    "You can only have one reference node named 0.  You must rename the other ones.";
inline constexpr const char* kDuplicateNamesMessage =
    "Names must be unique.  You must rename the duplicate ones.";
inline constexpr const char* kIdenticalParallelBranchesMessage =
    "You have a supernode with identical branches in parallel, which the program can't "
    "handle.  You must go back and delete one of them.";
inline constexpr const char* kDifferentParallelVoltagesMessage =
    "You have a supernode with different voltages in parallel, which is a contradiction.  You "
    "must go back and correct this situation.";
inline constexpr const char* kCannotSolveMessage =
    "Error:  The program can't solve this circuit.  Go back and look for short circuits or "
    "other error conditions.";

// A drawing with more nodes than the node table holds; the count is told, as the student
// cannot see which points count.
std::string TooManyNodesMessage(int nodes);

// Splitting the wires where they meet needs more slots than the wire table has.
inline constexpr const char* kTooManyWiresMessage =
    "Your circuit needs more than 100 wire pieces once its wires are divided where they meet, "
    "which is more than the program can handle.  You must go back and simplify it.";

// The message of the first failed check on the found topology (no nodes, loose ends,
// loops without nodes), or "" when the circuit may go on to its branch sums.
std::string TopologyCheckMessage(const Circuit& circuit, const Topology& topology);

// The message shown for a failure; CannotSolve's for any code without one of its own.
std::string FailureMessage(AnalysisFailure failure);

// Every check message is shown the same way: the program's title and an OK button.
void ShowCheckMessage(Prompts& prompts, const std::string& text);

} // namespace ampora
