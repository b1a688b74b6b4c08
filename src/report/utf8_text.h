#pragma once
// Counting characters, not bytes, in UTF-8 text: the report's lengths and column widths are
// in characters, as a reader sees them.

#include <cstddef>
#include <string_view>

namespace ampora {

std::size_t CharacterCount(std::string_view text);

// Byte offset of the given character, or the text's size when there are fewer characters.
std::size_t ByteOffsetOfCharacter(std::string_view text, std::size_t character);

// Positions as a text box counts them: UTF-16 code units, so that a character outside the
// Basic Multilingual Plane (an emoji, a four-byte sequence) counts two.
std::size_t Utf16Length(std::string_view text);
// Byte offset of the character at the given UTF-16 position (a position inside a character
// counts as its start), or the text's size when the text is shorter.
std::size_t ByteOffsetOfUtf16Position(std::string_view text, std::size_t position);

} // namespace ampora
