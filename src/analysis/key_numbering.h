#pragma once
// Numbers distinct keys 1, 2, ... in the order they first come. The wire clean-up and the
// node finder group a hundred wires or two hundred ends by position with it: a hash table
// on the stack finds a key's company in a few steps, where sorting them all costs far more.

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <stdexcept>
#include <type_traits>

namespace ampora {

// Capacity is the number of hash slots; it must be a power of two and at least one more
// than the number of distinct keys, so that a probe always meets an empty slot. Callers
// give twice their item count, which keeps the probes short.
template <typename Key, std::size_t Capacity> class KeyNumbering {
    static_assert(std::is_unsigned_v<Key> && sizeof(Key) <= sizeof(std::uint64_t));
    static_assert(Capacity >= 2 && std::has_single_bit(Capacity));

  public:
    // The key's number, the next one when the key is new.
    int Number(Key key) {
        std::size_t at = Home(key);
        while (numbers_[at] != 0) {
            if (keys_[at] == key) {
                return numbers_[at];
            }
            at = (at + 1) % Capacity;
        }
        if (count_ + 1 == static_cast<int>(Capacity)) {
            throw std::length_error("more distinct keys than the numbering was made for");
        }
        keys_[at] = key;
        numbers_[at] = static_cast<std::uint16_t>(++count_);
        return count_;
    }

    // The key's number, or 0 when it has none.
    int Find(Key key) const {
        for (std::size_t at = Home(key); numbers_[at] != 0; at = (at + 1) % Capacity) {
            if (keys_[at] == key) {
                return numbers_[at];
            }
        }
        return 0;
    }

    int Count() const { return count_; }

  private:
    // Multiplying by a constant with well-spread bits carries every bit of the key into the
    // top bits, which pick the slot: grid coordinates differ only in a few bits.
    static std::size_t Home(Key key) {
        constexpr std::uint64_t kSpread = 0x9E3779B97F4A7C15u;
        return static_cast<std::size_t>((std::uint64_t{key} * kSpread) >>
                                        (64 - std::bit_width(Capacity - 1)));
    }

    std::array<Key, Capacity> keys_; // read only where numbers_ is not 0
    std::array<std::uint16_t, Capacity> numbers_{};
    int count_ = 0;
};

} // namespace ampora
