#pragma once
// What a practice circuit is asked to have: its nodes (the reference included), its
// supernodes and its current sources. The batteries and resistors follow from these.

#include <string>

namespace ampora {

struct PracticeShape {
    int Nodes = 3;
    int SuperNodes = 0;
    int Sources = 1;
};

inline constexpr int kMinPracticeNodes = 2;
inline constexpr int kMaxPracticeNodes = 10;
inline constexpr int kMaxPracticeSuperNodes = 3;
inline constexpr int kMaxPracticeSources = 4;

// The most current sources a circuit of this many nodes and supernodes can hold while its
// node voltages stay fixed: every node needs three branches, and the branches without a
// current source must still join all the nodes and hold a resistor.
int MaxPracticeSources(int nodes, int superNodes);

// Why the shape cannot be made, in words for the user; "" when it can. The counts are taken
// to lie within their limits above.
std::string ShapeRefusal(const PracticeShape& shape);

} // namespace ampora
