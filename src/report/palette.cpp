#include "report/palette.h"

#include <array>
#include <stdexcept>
#include <string>

namespace ampora {

std::uint32_t QBColor(int n) {
    static constexpr std::array<std::uint32_t, kPaletteSize> kColours = {
        0x000000, 0x000080, 0x008000, 0x008080, 0x800000, 0x800080, 0x808000, 0xC0C0C0,
        0x808080, 0x0000FF, 0x00FF00, 0x00FFFF, 0xFF0000, 0xFF00FF, 0xFFFF00, 0xFFFFFF};
    if (n < 0 || n >= kPaletteSize) {
        throw std::out_of_range("palette colour " + std::to_string(n) + " is outside 0..15");
    }
    return kColours[static_cast<std::size_t>(n)];
}

} // namespace ampora
