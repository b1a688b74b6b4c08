#include "analysis/key_numbering.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>

namespace ampora {
namespace {

TEST(KeyNumbering, KeysAreNumberedInTheOrderTheyFirstComeAndKeepTheirNumbers) {
    KeyNumbering<std::uint64_t, 8> numbers;
    std::string seen;
    for (const std::uint64_t key : {7u, 3u, 7u, 0u, 3u, 1u << 31, 0u}) {
        seen += std::to_string(numbers.Number(key)) + " ";
    }
    EXPECT_EQ(seen, "1 2 1 3 2 4 3 ");
    EXPECT_EQ(numbers.Count(), 4);
    EXPECT_EQ(numbers.Find(1u << 31), 4);
    EXPECT_EQ(numbers.Find(5), 0);
}

TEST(KeyNumbering, ATableFullButForOneSlotStillFindsEveryKeyAndRefusesOneMore) {
    // Keys on a coarse grid, as coordinates are, crowd the probes; the search must wrap
    // around the end of the table and stop at its one empty slot.
    KeyNumbering<std::uint64_t, 64> numbers;
    for (std::uint64_t k = 0; k < 63; ++k) {
        ASSERT_EQ(numbers.Number(k << 35), static_cast<int>(k + 1));
    }
    for (std::uint64_t k = 0; k < 63; ++k) {
        ASSERT_EQ(numbers.Find(k << 35), static_cast<int>(k + 1));
    }
    EXPECT_EQ(numbers.Find(63u << 2), 0);
    EXPECT_THROW(numbers.Number(1), std::length_error);
    EXPECT_EQ(numbers.Number(std::uint64_t{62} << 35), 63);
}

} // namespace
} // namespace ampora
