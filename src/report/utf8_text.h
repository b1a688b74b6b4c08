#pragma once
// Counting characters, not bytes, in UTF-8 text: the report's lengths and column widths are
// in characters, as a reader sees them.

#include <cstddef>
#include <string_view>

namespace ampora {

std::size_t CharacterCount(std::string_view text);

// Byte offset of the given character, or the text's size when there are fewer characters.
std::size_t ByteOffsetOfCharacter(std::string_view text, std::size_t character);

} // namespace ampora
