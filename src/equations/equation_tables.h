#pragma once
// Supernodes and the unknowns of the node equations.

#include "document/slots.h"

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
    std::int16_t Node = 0;      // NodeOrder position when SuperNode is 0
    std::string VarName;
};

struct Equations {
    Slots<SuperNode, kMaxSuperNodes> SuperNodes;
    std::int16_t NumSuperNodes = 0;
    std::vector<EqnVar> EqnVars; // index 0 is variable 1
    std::int16_t NumUnknowns = 0;
};

} // namespace ampora
