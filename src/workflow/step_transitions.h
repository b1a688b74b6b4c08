#pragma once
// The moves between the three steps, as far as they change the tables. The window and
// ampora-cli both call these; drawing and panels are the window's business.

#include "tables/prompts.h"
#include "tables/workspace.h"

namespace ampora {

enum class TransitionResult {
    Entered, // the next step began
    Refused, // a check failed and its message has been shown
    Stopped, // nothing drawn: nothing to do and nothing to say
};

// "Next >" on step 1: cleans up the wires, finds nodes, loose ends and chains, runs the
// step-1 checks and the branch sums, notes the devices the analysis reads differently
// (Topology::Warnings) and enters step 2. Every element's Branch and Current are reset
// first. The wire clean-up stays even when the circuit is refused; a circuit beyond the
// tables is refused with a message like any other.
TransitionResult LeaveStep1(Workspace& workspace, Prompts& prompts);

// The name checks that open "Next >" on step 2: one reference node at most, unique names,
// nodes ordered by name.
bool CheckNamesOnLeavingStep2(Workspace& workspace, Prompts& prompts);

// "Next >" on step 2: the name checks, then supernodes, equations and their matrix, its
// Gauss-Jordan reduction, node voltages, every current, the counting text and captions.
// Any failure shows its message and leaves the circuit in step 2.
TransitionResult LeaveStep2(Workspace& workspace, Prompts& prompts);

// "< Prev" on step 3: back to naming, showing element values again.
void BackToStep2(Workspace& workspace);

// "< Prev" on step 2: the circuit and its node names stay.
void BackToStep1(Workspace& workspace);

inline constexpr const char* kStep1Status = " Step 1: Edit the circuit. ";
inline constexpr const char* kStep2EntryStatus =
    " Step 2: Click a node's label to name it.  Unnamed nodes are marked [ ]  ";

inline constexpr const char* kStep2ReturnStatus =
    " Step 2: Click the label of a node to give it a name.  Unamed ones are marked [ ]  ";
inline constexpr const char* kStep3Status =
    " Step 3: Click a button above or click a tab on the report.  ";

} // namespace ampora
