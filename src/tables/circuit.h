#pragma once
// The drawn circuit: wire segments, devices on them and the node labels,
// with the one-level memory of the last erase.

#include "tables/slots.h"

#include <cstdint>
#include <string>

namespace ampora {

constexpr int kMaxWires = 100;
constexpr int kMaxElements = 60;
constexpr int kMaxNodes = 20;

// Truth values stored in the tables use -1 for true.
constexpr std::int16_t kTrue = -1;
constexpr std::int16_t kFalse = 0;

struct Wire {
    float X1 = 0, Y1 = 0, X2 = 0, Y2 = 0;
    std::int16_t Used = 0; // non-zero: a live segment
};

// Element kinds: batteries 1 up, 2 down, 3 left, 4 right; resistors 5 vertical,
// 6 horizontal; current sources 7 up, 8 down, 9 left, 10 right. 0 is an empty slot.
enum ElementKind : std::int16_t {
    kEmpty = 0,
    kBatteryUp = 1,
    kBatteryDown = 2,
    kBatteryLeft = 3,
    kBatteryRight = 4,
    kResistorVertical = 5,
    kResistorHorizontal = 6,
    kSourceUp = 7,
    kSourceDown = 8,
    kSourceLeft = 9,
    kSourceRight = 10,
};

inline bool IsBattery(int kind) {
    return kind >= 1 && kind <= 4;
}
inline bool IsResistor(int kind) {
    return kind > 4 && kind < 7;
}
inline bool IsCurrentSource(int kind) {
    return kind >= 7 && kind <= 10;
}
inline bool IsVerticalKind(int kind) {
    return kind == 1 || kind == 2 || kind == 5 || kind == 7 || kind == 8;
}
// The other code of a direction pair (1<->2, 3<->4, 7<->8, 9<->10); a resistor has none.
inline std::int16_t ReversedKind(int kind) {
    if (IsResistor(kind) || kind < 1 || kind > 10) {
        return static_cast<std::int16_t>(kind);
    }
    return static_cast<std::int16_t>(kind % 2 == 1 ? kind + 1 : kind - 1);
}

struct Element {
    std::int16_t Kind = kEmpty;
    float Value = 0; // volts, ohms or amperes, as a magnitude of the kind's direction
    float X = 0, Y = 0;
    std::int16_t Branch = 0; // signed chain number, written by the analysis
    double Current = 999;    // screen-signed current; 999 means not known
};

struct NodeLabel {
    float X = 0, Y = 0;
    std::string Name;
    // Filled by node finding: the wire slots whose ends lie on the node, 0 when fewer.
    std::int16_t Wire1 = 0, Wire2 = 0, Wire3 = 0, Wire4 = 0;
    double Voltage = 0;
    // Supernode members other than the anchor: voltage through the anchor's.
    std::string Alias;
    float AliasOffset = 0;
};

struct Circuit {
    Slots<Wire, kMaxWires> Wires;
    std::int16_t NumWires = 0; // high-water mark of the wire slots
    Slots<Element, kMaxElements> Elements;
    std::int16_t NumElements = 0; // high-water mark of the element slots
    Slots<NodeLabel, kMaxNodes> NodeLabels;
    std::int16_t NumNodes = 0;

    // What the last erase removed: 1 per wire slot, the removed Kind per element slot.
    Slots<std::int16_t, kMaxWires> ErasedWire;
    Slots<std::int16_t, kMaxElements> ErasedKind;
};

} // namespace ampora
