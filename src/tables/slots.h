#pragma once
// Fixed-capacity tables numbered from 1, as every table of the program is.
// Every access is checked: a slot outside 1..Capacity throws SlotOutOfRange
// instead of touching memory it does not own.

#include <array>
#include <cstdint>
#include <stdexcept>
#include <string>

namespace ampora {

struct SlotOutOfRange : std::out_of_range {
    using std::out_of_range::out_of_range;
};

// Kept out of line so that the check itself stays small enough to inline in inner loops.
[[noreturn, gnu::cold, gnu::noinline]] inline void ThrowSlotOutOfRange(int slot, int capacity) {
    throw SlotOutOfRange("slot " + std::to_string(slot) + " is outside 1.." +
                         std::to_string(capacity));
}

template <typename T, int Capacity> struct Slots {
    static constexpr int kCapacity = Capacity;
    std::array<T, Capacity> items{};

    T& operator[](int slot) { return items[Index(slot)]; }
    const T& operator[](int slot) const { return items[Index(slot)]; }

    static bool Holds(int slot) { return slot >= 1 && slot <= Capacity; }

  private:
    static std::size_t Index(int slot) {
        if (!Holds(slot)) [[unlikely]] {
            ThrowSlotOutOfRange(slot, Capacity);
        }
        return static_cast<std::size_t>(slot - 1);
    }
};

} // namespace ampora
