#pragma once
// Text written for the Symbol font shows Greek letters and mathematical signs where the
// Latin letters would be. We draw it in an ordinary font, so those letters become the
// Unicode characters the Symbol font puts in their places.

#include <string>
#include <string_view>

namespace ampora {

inline constexpr std::string_view kSymbolFontName = "Symbol";

// UTF-8 in, UTF-8 out: ASCII letters and signs are replaced by what the Symbol font shows
// for them (a α, p π, W Ω, V ς, - −, * ∗ ...); digits, blanks, most punctuation and every
// non-ASCII character pass unchanged.
std::string SymbolToUnicode(std::string_view text);

} // namespace ampora
