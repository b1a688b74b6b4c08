#pragma once
// Small questions about supernodes and equation variables, and the texts that write a
// member's voltage through its anchor's.

#include "tables/workspace.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace ampora {

bool IsOnList(std::int16_t value, const std::vector<std::int16_t>& list);
bool IsBranchOfSN(const Equations& equations, int branch, int superNode);
// True for a node position that exists and belongs to no supernode.
bool IsNormalNode(const Workspace& ws, int position);
// True when the position is member 1 of a supernode, whose number goes to superNode.
bool IsAnchorNode(const Equations& equations, int position, int& superNode);
// The equation variable that carries the node at this position, 0 when none does.
int EqnVarWithNode(const Equations& equations, int position);

// Sorts (bubble sort) and removes repeated values.
void SortAndPack(std::vector<std::int16_t>& list, bool ascending);

// The alias as it reads after a minus sign: "Va-5" becomes "-Va+5", "5" becomes "-5".
std::string NegAlias(const std::string& alias);
// The same written at the end of `out`.
void AppendNegAlias(std::string& out, std::string_view alias);

// "Vb=Va+5", "Vc=12": the constraint of a member written through its anchor.
std::string SuperEqnString(const Workspace& ws, int member, int anchor, float offset);
// "Vb-Va=5", "Vc=12": the same with both voltages on the left.
std::string SuperAltEqnString(const Workspace& ws, int member, int anchor, float offset);

// The node slot at a NodeOrder position, and whether that position is the reference.
int NodeAt(const Workspace& ws, int position);
bool IsReferencePosition(const Workspace& ws, int position);

} // namespace ampora
