#pragma once
// The four font sets the user picks from for equations and the report.

#include "tables/slots.h"

#include <string>

namespace ampora {

struct FontSet {
    std::string FontName;
    float NormalSize = 0; // points
    float LargeSize = 0;  // points
    float SmallSize = 0;  // points
    float LowerShift = 0; // pixels added to y when text is lowered
    float RaiseShift = 0; // pixels added to y when text is raised (negative: up)
    float LineStep = 0;   // pixels added to y at each new line
};

inline constexpr int kFontSetCount = 4;
using FontSetTable = Slots<FontSet, kFontSetCount>;

// The fixed table, rows 1..4.
FontSetTable InitFontSets();

// The font menu's caption of set 1..4 ("Arial 10 pt" ...); throws SlotOutOfRange outside.
std::string FontSetCaption(int fontIndex);

} // namespace ampora
