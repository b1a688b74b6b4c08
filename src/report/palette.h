#pragma once
// The 16-colour console palette every coloured text of the program picks from.

#include <cstdint>

namespace ampora {

inline constexpr int kPaletteSize = 16;

// 0xRRGGBB of palette entry n (0 black, 9 light blue, 15 white); throws std::out_of_range
// outside 0..15.
std::uint32_t QBColor(int n);

} // namespace ampora
