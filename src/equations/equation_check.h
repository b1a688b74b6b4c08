#pragma once
// Judges a student's work on a solved circuit: a node or supernode equation as typed, or
// the value found for an unknown. A wrong equation gets one hint, the most likely first.

#include "tables/workspace.h"

#include <string>
#include <string_view>
#include <vector>

namespace ampora {

struct EquationVerdict {
    std::string error; // the equation cannot be read: where and why
    bool equivalent = false;
    // The unknown whose node or supernode the equation is written at ("V1" for
    // "supernode V1"): the one asked for when right, another one when it is that one's
    // equation; empty when it is nobody's.
    std::string equationOf;
    std::string hint; // what is wrong, in one sentence; empty when right
};

struct AnswerVerdict {
    bool known = false; // the name is a node's or a battery current's
    bool right = false;
    std::string hint; // empty when right
};

// The number (from 1) of the unknown whose equation is written at the node named `name`:
// its own, or its supernode's for any member. 0 when no node is so named or the node has
// no equation (the reference, and the members of a supernode that holds it).
int EquationAtNode(const Workspace& ws, std::string_view name);

// Why EquationAtNode found none: "no node is named Vx", "0 is the reference node, which has
// no equation", "V5 is in the supernode of the reference node, which has no equation".
std::string WhyNoEquationAt(const Workspace& ws, std::string_view name);

// "supernode V1" or "node V2": how the equations window names unknown `variable`'s equation.
std::string EquationCaption(const Workspace& ws, int variable);

// The name of the node or supernode anchor each equation is written at, in unknown order.
std::vector<std::string> EquationAnchors(const Workspace& ws);

// The student's equation for unknown `variable`. It is compared to the precision its
// numbers are written with: exactly, or to three figures where it writes 0.333*V1 for V1/3.
EquationVerdict CheckEquation(const Workspace& ws, int variable, std::string_view text);

// The value found for a node voltage or a battery current, right when it rounds to the
// program's at `sigFigs` significant figures: within half a unit of the last figure.
AnswerVerdict CheckAnswer(const Workspace& ws, std::string_view name, double value, int sigFigs);

} // namespace ampora
