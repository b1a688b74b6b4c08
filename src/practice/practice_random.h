#pragma once
// The random numbers of practice circuits. std::mt19937's sequence is the same everywhere,
// but the standard distributions are not, so the draws are made here: the same seed gives
// the same circuit with any compiler and library.

#include <cstdint>
#include <random>
#include <vector>

namespace ampora {

class PracticeRandom {
  public:
    explicit PracticeRandom(std::uint32_t seed) : engine_(seed) {}

    // A whole number from low to high, both included, every one equally likely.
    int Between(int low, int high);
    // True with the chance percent / 100.
    bool Percent(int percent) { return Between(1, 100) <= percent; }
    // The next raw 32-bit number, to seed another generator with.
    std::uint32_t Next() { return static_cast<std::uint32_t>(engine_()); }

    template <typename T> const T& Pick(const std::vector<T>& items) {
        return items[static_cast<std::size_t>(Between(0, static_cast<int>(items.size()) - 1))];
    }
    template <typename T> void Shuffle(std::vector<T>& items) {
        for (int k = static_cast<int>(items.size()) - 1; k > 0; --k) {
            std::swap(items[static_cast<std::size_t>(k)],
                      items[static_cast<std::size_t>(Between(0, k))]);
        }
    }

  private:
    std::mt19937 engine_;
};

} // namespace ampora
