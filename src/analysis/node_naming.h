#pragma once
// Naming the nodes in step 2: the name check that also puts the nodes in order, AutoName,
// Clear Names and renaming one node by clicking its label.

#include "tables/analysis_tables.h"
#include "tables/prompts.h"
#include "tables/workspace.h"

#include <string>

namespace ampora {

enum class NodeOrdering { ByName, ByLocation };

// Checks that at most one node is named "0" and that the sort keys are unique, and orders
// the nodes by name or by location (top to bottom, then left to right). Sets HasReference,
// NodeOrder and NodeRank on success. On failure the message has been shown and false is
// returned; the order of the last successful check stays.
bool CheckNames(const Circuit& circuit, NodeNaming& naming, NodeOrdering ordering,
                Prompts& prompts);

// The location key: Y, then X, each rounded to a whole number and written with at least
// four digits ("02400080").
std::string LocationKey(float x, float y);

// Names every node except a reference "0" in location order with the pattern (1 "V1, V2,
// ...", 2 "A, B, ...", 3 "a, b, ..."; anything else counts as 1); without a reference
// the last node in location order becomes "0". Returns false, having shown the message,
// when the name check fails first.
bool AutoName(Workspace& workspace, Prompts& prompts);

// Every node becomes unnamed, the reference node too.
void ClearNames(Circuit& circuit);

// Asks for a new name with the old one as default, the dialog's top-left corner at
// (left, top). Only in step 2; an empty answer keeps the old name. Returns true when the
// name changed.
bool RenameNode(Workspace& workspace, Prompts& prompts, int slot, float left, float top);

inline constexpr const char* kRenamePrompt = "Enter new name:";

} // namespace ampora
