#pragma once
// The style letters that follow "@" in marked-up text, and the font snapshot the printer
// takes around its measuring pass.

#include "report/drawing_surface.h"
#include "report/markup_state.h"

#include <cstdint>
#include <string_view>

namespace ampora {

SavedFontState CaptureFontState(const DrawingSurface& surface, const MarkupState& state);
// Puts back bold, italic, underline, fore colour, font name, font size, then the current
// set's BaselineShift and ScriptState. The print position is not part of the snapshot.
void RestoreFontState(DrawingSurface& surface, MarkupState& state, const SavedFontState& saved);

// Mode 1 captures into state.Saved; any other mode restores from it.
void KeepFontState(DrawingSurface& surface, MarkupState& state, std::int16_t mode);

// One letter (b i u n c g s h l, case-sensitive); any other is ignored.
void ApplyStyleCode(DrawingSurface& surface, MarkupState& state, std::string_view letter);

// The letter "n": the set's font at its normal size, plain, black, y moved back by the set's
// BaselineShift (which itself stays), ScriptState 0.
void SetNormalStyle(DrawingSurface& surface, MarkupState& state);

} // namespace ampora
