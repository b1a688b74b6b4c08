#pragma once
// Prints marked-up text word by word with line wrapping. "@p" new line, "@t" new line and
// indent, "@x" clear, "@e" stop, at the beginning of a word; "@" + a style letter anywhere
// (see style_codes.h).

#include "report/drawing_surface.h"
#include "report/markup_state.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace ampora {

// Prints text, first moving to (x, y) when placeFirst is 1. On return text holds what was
// left after an "@e" code, or is empty when everything was printed.
void PrintMarkup(DrawingSurface& surface, MarkupState& state, std::int16_t placeFirst, float x,
                 float y, std::string& text);

// The measuring pass over one word: applies its style letters as it meets them and keeps
// their effect (y movements included); returns the width of its text.
float MeasureStyledWord(DrawingSurface& surface, MarkupState& state, std::string_view word);

// The printing pass over one word: applies its style letters and prints its text, with no
// wrap test.
void PrintStyledWord(DrawingSurface& surface, MarkupState& state, std::string_view word);

// Width of one word as PrintStyledWord would print it, leaving font, script state and print
// position exactly as they were.
float StyledWordWidth(DrawingSurface& surface, MarkupState& state, std::string_view word);

} // namespace ampora
