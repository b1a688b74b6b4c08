#pragma once
// Supernodes, the unknowns of the node equations, and everything the equations window
// and the report show about them.

#include "tables/analysis_tables.h"
#include "tables/slots.h"

#include <array>
#include <cstdint>
#include <string>
#include <vector>

namespace ampora {

constexpr int kMaxSuperNodes = 10;
constexpr int kMaxUnknowns = 20;

struct SuperNode {
    std::vector<std::int16_t> Nodes;      // NodeOrder positions; member 1 is the anchor
    std::vector<std::int16_t> SNBranches; // chain slots of the batteries joining the members
};

struct EqnVar {
    std::int16_t SuperNode = 0; // 0 for an ordinary node
    std::int16_t Node = 0;      // NodeOrder position (the anchor's for a supernode)
    std::string VarName;
};

// A member voltage that a battery path fixes through its anchor's voltage.
struct BatteryConstraint {
    std::int16_t Position = 0; // NodeOrder position of the eliminated member
    std::string Text;          // such as "Vb=Va+5"
};

struct Equations {
    Slots<SuperNode, kMaxSuperNodes> SuperNodes;
    std::int16_t NumSuperNodes = 0;
    std::vector<EqnVar> EqnVars; // EqnVars[0] is variable 1
    std::int16_t NumUnknowns = 0;
    std::vector<BatteryConstraint> Constraints;

    std::vector<std::string> FirstWritten; // the KCL equation of each variable
    std::vector<std::string> Collected;    // the same with terms collected
    AugmentedMatrix Augmented;             // the system as set up
    AugmentedMatrix Reduced;               // after Gauss-Jordan elimination
    RowOperations RowOps;                  // how the elimination went from one to the other
    std::string CountingText;
    std::array<std::string, 7> EqnText; // the captions of the equations tab
};

} // namespace ampora
