#include "report/symbol_font.h"

#include <array>

namespace ampora {

namespace {

// What the Symbol font shows for the printable ASCII codes 0x20..0x7E; empty where it shows
// the ASCII character itself.
constexpr std::array<std::string_view, 95> kSymbolGlyphs = {
    "",  "",  "∀", "",  "∃", "",  "",  "∋", "",  "",  "∗", "",  "",  "−", "",  "",  // 20-2F
    "",  "",  "",  "",  "",  "",  "",  "",  "",  "",  "",  "",  "",  "",  "",  "",  // 30-3F
    "≅", "Α", "Β", "Χ", "Δ", "Ε", "Φ", "Γ", "Η", "Ι", "ϑ", "Κ", "Λ", "Μ", "Ν", "Ο", // 40-4F
    "Π", "Θ", "Ρ", "Σ", "Τ", "Υ", "ς", "Ω", "Ξ", "Ψ", "Ζ", "",  "∴", "",  "⊥", "",  // 50-5F
    "",  "α", "β", "χ", "δ", "ε", "φ", "γ", "η", "ι", "ϕ", "κ", "λ", "μ", "ν", "ο", // 60-6F
    "π", "θ", "ρ", "σ", "τ", "υ", "ϖ", "ω", "ξ", "ψ", "ζ", "",  "",  "",  "∼"};     // 70-7E

} // namespace

std::string SymbolToUnicode(std::string_view text) {
    std::string shown;
    shown.reserve(text.size() * 2);
    for (const char c : text) {
        const auto code = static_cast<unsigned char>(c);
        if (code >= 0x20 && code <= 0x7E && !kSymbolGlyphs[code - 0x20].empty()) {
            shown += kSymbolGlyphs[code - 0x20];
        } else {
            shown += c;
        }
    }
    return shown;
}

} // namespace ampora
