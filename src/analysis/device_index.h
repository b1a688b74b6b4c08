#pragma once
// The devices of a circuit sorted by position, along rows and along columns, so that the
// ones lying strictly inside a path segment are found without looking at every device.

#include "tables/circuit.h"
#include "tables/wire_geometry.h"

#include <array>
#include <cstdint>

namespace ampora {

class DeviceIndex {
  public:
    explicit DeviceIndex(const Circuit& circuit);

    // Calls f(slot) for each live device whose centre lies strictly inside the segment (as
    // LiesStrictlyInside decides), in slot order. A table whose count runs past its
    // capacity is scanned slot by slot, as the rule reads, and reports that on the way.
    template <typename F> void ForEachInside(Point from, Point to, F f) const {
        if (!indexed_) {
            for (int slot = 1; slot <= circuit_.NumElements; ++slot) {
                const Element& element = circuit_.Elements[slot]; // throws past the table
                if (element.Kind != kEmpty &&
                    LiesStrictlyInside({element.X, element.Y}, from, to)) {
                    f(slot);
                }
            }
            return;
        }
        std::array<std::int16_t, kMaxElements> slots;
        const int count = Inside(from, to, slots);
        for (int k = 0; k < count; ++k) {
            f(static_cast<int>(slots[static_cast<std::size_t>(k)]));
        }
    }

  private:
    // The slots inside the segment, in slot order, and their number.
    int Inside(Point from, Point to, std::array<std::int16_t, kMaxElements>& slots) const;

    struct Entry {
        std::uint64_t key;
        std::int16_t slot;
        friend bool operator<(const Entry& a, const Entry& b) { return a.key < b.key; }
    };

    const Circuit& circuit_;
    bool indexed_;
    std::array<Entry, kMaxElements> rows_{}, columns_{};
    std::size_t count_ = 0;
};

} // namespace ampora
