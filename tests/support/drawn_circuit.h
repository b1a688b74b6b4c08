#pragma once
// Circuits written out in a test as a person draws them: wires, then devices.

#include "document/circuit_edit.h"

#include <vector>

namespace ampora::test {

struct W {
    float x1, y1, x2, y2;
};
struct E {
    std::int16_t kind;
    float value, x, y;
};

inline void Draw(Circuit& circuit, const std::vector<W>& wires,
                 const std::vector<E>& elements = {}) {
    for (const W& w : wires) {
        AddWire(circuit, w.x1, w.y1, w.x2, w.y2);
    }
    for (const E& e : elements) {
        AddElement(circuit, e.kind, e.value, e.x, e.y);
    }
}

inline Circuit Drawn(const std::vector<W>& wires, const std::vector<E>& elements = {}) {
    Circuit circuit;
    Draw(circuit, wires, elements);
    return circuit;
}

// Two nodes, (80,0) and (80,160), joined by three branches at x = 0, 80 and 160, each with
// its device halfway down.
inline Circuit ThreeBranches(std::int16_t left, float leftValue, std::int16_t middle,
                             float middleValue, std::int16_t right, float rightValue) {
    return Drawn(
        {{80, 0, 0, 0},
         {0, 0, 0, 160},
         {0, 160, 80, 160},
         {80, 0, 80, 160},
         {80, 0, 160, 0},
         {160, 0, 160, 160},
         {160, 160, 80, 160}},
        {{left, leftValue, 0, 80}, {middle, middleValue, 80, 80}, {right, rightValue, 160, 80}});
}

} // namespace ampora::test
