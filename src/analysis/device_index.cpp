#include "analysis/device_index.h"

#include <algorithm>

namespace ampora {

DeviceIndex::DeviceIndex(const Circuit& circuit)
    : circuit_(circuit), indexed_(circuit.NumElements <= kMaxElements) {
    if (!indexed_) {
        return;
    }
    for (int slot = 1; slot <= circuit.NumElements; ++slot) {
        const Element& element = circuit.Elements[slot];
        const Point centre{element.X, element.Y};
        if (element.Kind != kEmpty && !HasNaN(centre)) { // NaN lies inside nothing
            rows_[count_] = Entry{RowKey(centre), static_cast<std::int16_t>(slot)};
            columns_[count_] = Entry{ColumnKey(centre), static_cast<std::int16_t>(slot)};
            ++count_;
        }
    }
    std::sort(rows_.begin(), rows_.begin() + static_cast<std::ptrdiff_t>(count_));
    std::sort(columns_.begin(), columns_.begin() + static_cast<std::ptrdiff_t>(count_));
}

int DeviceIndex::Inside(Point from, Point to, std::array<std::int16_t, kMaxElements>& slots) const {
    if (HasNaN(from) || HasNaN(to)) {
        return 0; // such a segment holds nothing
    }
    const bool vertical = from.X == to.X;
    if (!vertical && from.Y != to.Y) {
        return 0; // slanted
    }
    int count = 0;
    // Strictly between the ends along the segment's own line.
    Point low = from, high = to;
    if (vertical ? to.Y < from.Y : to.X < from.X) {
        std::swap(low, high);
    }
    const auto& sorted = vertical ? columns_ : rows_;
    const std::uint64_t lowKey = vertical ? ColumnKey(low) : RowKey(low);
    const std::uint64_t highKey = vertical ? ColumnKey(high) : RowKey(high);
    const auto last = sorted.begin() + static_cast<std::ptrdiff_t>(count_);
    for (auto it = std::upper_bound(sorted.begin(), last, Entry{lowKey, 0});
         it != last && it->key < highKey; ++it) {
        slots[static_cast<std::size_t>(count++)] = it->slot;
    }
    // Rarely more than one or two: sorted in place rather than through std::sort.
    for (int k = 1; k < count; ++k) {
        const std::int16_t slot = slots[static_cast<std::size_t>(k)];
        int at = k;
        for (; at > 0 && slots[static_cast<std::size_t>(at - 1)] > slot; --at) {
            slots[static_cast<std::size_t>(at)] = slots[static_cast<std::size_t>(at - 1)];
        }
        slots[static_cast<std::size_t>(at)] = slot;
    }
    return count;
}

} // namespace ampora
