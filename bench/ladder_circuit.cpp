#include "ladder_circuit.h"

#include "document/circuit_edit.h"

#include <algorithm>

namespace ampora::bench {

float Segment::Length() const {
    return std::max(x2 - x1, y2 - y1);
}

std::vector<Segment> LadderPieces(int rungs) {
    std::vector<Segment> pieces;
    for (int k = 0; k < rungs; ++k) {
        const float x = 96.0f * static_cast<float>(k);
        pieces.push_back({x, 0, x, 320});
        if (k > 0) {
            pieces.push_back({x - 96, 0, x, 0});
            pieces.push_back({x - 96, 320, x, 320});
        }
    }
    while (pieces.size() < kMaxWires) {
        auto longest =
            std::max_element(pieces.begin(), pieces.end(),
                             [](const auto& a, const auto& b) { return a.Length() < b.Length(); });
        Segment& s = *longest;
        const float middle = 8.0f * static_cast<float>(static_cast<int>(
                                        ((s.Vertical() ? s.y1 + s.y2 : s.x1 + s.x2) / 2) / 8));
        Segment rest = s;
        if (s.Vertical()) {
            s.y2 = middle;
            rest.y1 = middle;
        } else {
            s.x2 = middle;
            rest.x1 = middle;
        }
        pieces.push_back(rest);
    }
    return pieces;
}

Workspace Ladder(int rungs) {
    const std::vector<Segment> pieces = LadderPieces(rungs);
    Workspace workspace;
    Circuit& circuit = workspace.Circuit;
    for (const Segment& s : pieces) {
        AddWire(circuit, s.x1, s.y1, s.x2, s.y2);
    }
    const float right = 96.0f * static_cast<float>(rungs - 1);
    AddElement(circuit, kSourceUp, 1, 0, 40);
    AddElement(circuit, kSourceDown, 2, right, 40);
    AddElement(circuit, kBatteryLeft, 6, 40, 320);
    AddElement(circuit, kBatteryRight, 9, right - 40, 0);
    for (const Segment& s : pieces) {
        if (circuit.NumElements == kMaxElements) {
            break;
        }
        const float x = (s.x1 + s.x2) / 2, y = (s.y1 + s.y2) / 2;
        if (s.Vertical() && x != 0 && x != right && y > 100) {
            AddElement(circuit, kResistorVertical, 100, x, y);
        } else if (!s.Vertical() && x > 100 && x < right - 100) {
            AddElement(circuit, kResistorHorizontal, 47, x, y);
        }
    }
    return workspace;
}

Workspace SolvableLadder() {
    constexpr int kRungs = 8;
    constexpr float kRight = 96.0f * (kRungs - 1);
    const std::vector<Segment> pieces = LadderPieces(kRungs);
    Workspace workspace;
    Circuit& circuit = workspace.Circuit;
    for (const Segment& s : pieces) {
        AddWire(circuit, s.x1, s.y1, s.x2, s.y2);
    }
    // Rail chains between the inner rungs at 96 and 192 (top) and at 288 and 384 (bottom)
    // hold batteries only; the rung at 480 holds a battery and resistors.
    const auto batteryOnlyChain = [](const Segment& s) {
        return !s.Vertical() && ((s.y1 == 0 && s.x1 >= 96 && s.x2 <= 192) ||
                                 (s.y1 == 320 && s.x1 >= 288 && s.x2 <= 384));
    };
    int volts = 3;
    for (const Segment& s : pieces) {
        if (circuit.NumElements == kMaxElements) {
            break;
        }
        const float x = (s.x1 + s.x2) / 2, y = (s.y1 + s.y2) / 2;
        if (s.Vertical() && x == 0) {
            if (y < 40) {
                AddElement(circuit, kSourceUp, 0.25f, x, y);
            } else if (y > 240) {
                AddElement(circuit, kResistorVertical, 220, x, y);
            }
        } else if (s.Vertical() && x == kRight) {
            if (y < 40) {
                AddElement(circuit, kSourceDown, 0.5f, x, y);
            }
        } else if (batteryOnlyChain(s)) {
            AddElement(circuit, s.y1 == 0 ? kBatteryRight : kBatteryLeft, static_cast<float>(volts),
                       x, y);
            volts += 2;
        } else if (s.Vertical() && x == 480 && y < 40) {
            AddElement(circuit, kBatteryUp, 12, x, y);
        } else if (s.Vertical()) {
            AddElement(circuit, kResistorVertical, 100 + 10 * x / 96, x, y);
        } else {
            AddElement(circuit, kResistorHorizontal, 47 + y / 8, x, y);
        }
    }
    return workspace;
}

} // namespace ampora::bench
