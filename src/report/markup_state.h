#pragma once
// The markup printer's running values. The caller owns one MarkupState for as long as the
// program runs and hands it to every call, with the chosen font set in FontIndex.

#include "report/font_sets.h"
#include "tables/slots.h"

#include <cstdint>
#include <string>

namespace ampora {

// A snapshot of the surface's font and the current set's script state, taken before a word
// is measured and put back before it is printed.
struct SavedFontState {
    bool Bold = false;
    bool Italic = false;
    bool Underline = false;
    std::uint32_t ForeColor = 0;
    std::string FontName;
    float FontSize = 0;
    float BaselineShift = 0;
    std::int16_t ScriptState = 0;
};

struct MarkupState {
    FontSetTable FontSets = InitFontSets();
    // Per font set: the raise and lower shifts now in force, and 0 normal, 1 raised,
    // -1 lowered. Switching sets leaves the old set's values behind.
    Slots<float, kFontSetCount> BaselineShift{};
    Slots<std::int16_t, kFontSetCount> ScriptState{};
    SavedFontState Saved;
    std::int16_t FontIndex = 3; // 1..4; anything else throws SlotOutOfRange on use
};

// The row of FontSets chosen by FontIndex.
inline const FontSet& CurrentFontSet(const MarkupState& state) {
    return state.FontSets[state.FontIndex];
}

} // namespace ampora
