#include "practice/practice_random.h"

namespace ampora {

int PracticeRandom::Between(int low, int high) {
    if (high <= low) {
        return low;
    }
    const std::uint64_t range = static_cast<std::uint64_t>(high - low) + 1;
    // Draws beyond the last whole multiple of the range are thrown away, so that no number
    // comes up more often than another.
    const std::uint64_t limit = (std::uint64_t{1} << 32) - (std::uint64_t{1} << 32) % range;
    std::uint64_t draw = 0;
    do {
        draw = static_cast<std::uint32_t>(engine_());
    } while (draw >= limit);
    return low + static_cast<int>(draw % range);
}

} // namespace ampora
