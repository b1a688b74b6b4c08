#pragma once
// Equations as vectors of numbers, so that a student's equation and the program's can be
// compared whatever their order, side or scale: the forms, the terms of the program's
// equations, and the tests of one form against another.

#include "equations/chains_by_start.h"
#include "equations/student_equation.h"
#include "tables/workspace.h"

#include <optional>
#include <string>
#include <vector>

namespace ampora {

// An equation as "coefficients . unknowns = constant" over the node unknowns, then the
// battery currents, then the constant: the layout of a row of the augmented matrix, with
// room for the battery currents that a student may write but no node equation holds.
using Form = std::vector<double>;

// What the names in a student's equation stand for.
struct Names {
    std::vector<std::string> texts;
    std::vector<int> nodeSlot;     // the node named, 0 for a battery current
    std::vector<int> currentChain; // the battery chain whose current it is, 0 for a node
};

// Every node's name ("" for the reference's "0", which reads as the number), then the
// battery currents' names.
Names EquationNames(const Workspace& ws);
int CurrentCount(const Names& names);

// A node's voltage in the unknowns: the unknown that carries it (0 for none) plus an offset.
// A member of a supernode is its anchor plus the batteries between them; the reference,
// and a member of the supernode that holds it, is a number.
struct Voltage {
    int variable = 0;
    double offset = 0;
};

Voltage VoltageOf(const Workspace& ws, int slot);

struct Problem {
    int unknowns = 0;
    int currents = 0;
    std::size_t Size() const { return static_cast<std::size_t>(unknowns + currents + 1); }
};

// The student's equation with every member of a supernode put through its anchor.
Form StudentForm(const Workspace& ws, const Names& names, const Problem& problem,
                 const LinearSum& sum);
// Row `row` of the augmented matrix as set up.
Form ProgramForm(const Workspace& ws, const Problem& problem, int row);

// One chain's current out of its start node, and its parts that a student may get wrong.
struct Term {
    int chain = 0;
    Form whole;
    Form battery; // the series batteries' share, E/R; empty without one
    Form end;     // the end node's share, -V(end)/R
    // The members' offsets from their anchors, written through the anchors' voltages.
    Form startOffset;
    Form endOffset;
};

Term TermOf(const Workspace& ws, const Problem& problem, int chain);

// The NodeOrder positions of the node or supernode of unknown `variable`.
std::vector<int> MembersOf(const Workspace& ws, int variable);
// The chains whose currents the equation of `variable` adds up: those leaving its node, or
// every member of its supernode but for the chains that stay inside the supernode.
std::vector<int> ChainsOf(const Workspace& ws, int variable);

struct Tolerance {
    double relative;
};

// True when every entry of `form` agrees with `target`: within the relative tolerance of
// the larger of the two, or both negligible beside the largest entry of the target.
bool Agrees(const Form& form, const Form& target, Tolerance tolerance);
// The nonzero multiple of `target` that `form` is, if it is one.
std::optional<double> MultipleOf(const Form& form, const Form& target, Tolerance tolerance);
bool IsMultipleOf(const Form& form, const Form& target, Tolerance tolerance);
// a + times * b
Form Plus(const Form& a, const Form& b, double times);
// The lambda of form = lambda * a + mu * b, mu not zero, when there are such numbers.
std::optional<double> InPlane(const Form& form, const Form& a, const Form& b, Tolerance tolerance);

} // namespace ampora
