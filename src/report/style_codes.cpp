#include "report/style_codes.h"

#include "report/palette.h"
#include "report/symbol_font.h"

namespace ampora {

namespace {

constexpr int kBlack = 0;
constexpr int kLightBlue = 9;

// "h" and "l" differ only in the state they stand for and the shift they use.
void ToggleScript(DrawingSurface& surface, MarkupState& state, std::int16_t script, float shift) {
    const FontSet& set = CurrentFontSet(state);
    float& baseline = state.BaselineShift[state.FontIndex];
    std::int16_t& current = state.ScriptState[state.FontIndex];
    if (current == script) {
        surface.SetFontSize(set.NormalSize);
        baseline -= shift;
        surface.SetCurrentY(surface.CurrentY() - shift);
        current = 0;
    } else {
        surface.SetFontSize(set.SmallSize);
        baseline += shift;
        surface.SetCurrentY(surface.CurrentY() + shift);
        current = script;
    }
}

} // namespace

SavedFontState CaptureFontState(const DrawingSurface& surface, const MarkupState& state) {
    return {surface.FontBold(),
            surface.FontItalic(),
            surface.FontUnderline(),
            surface.ForeColor(),
            surface.FontName(),
            surface.FontSize(),
            state.BaselineShift[state.FontIndex],
            state.ScriptState[state.FontIndex]};
}

void RestoreFontState(DrawingSurface& surface, MarkupState& state, const SavedFontState& saved) {
    surface.SetFontBold(saved.Bold);
    surface.SetFontItalic(saved.Italic);
    surface.SetFontUnderline(saved.Underline);
    surface.SetForeColor(saved.ForeColor);
    surface.SetFontName(saved.FontName);
    surface.SetFontSize(saved.FontSize);
    state.BaselineShift[state.FontIndex] = saved.BaselineShift;
    state.ScriptState[state.FontIndex] = saved.ScriptState;
}

void KeepFontState(DrawingSurface& surface, MarkupState& state, std::int16_t mode) {
    if (mode == 1) {
        state.Saved = CaptureFontState(surface, state);
    } else {
        RestoreFontState(surface, state, state.Saved);
    }
}

void SetNormalStyle(DrawingSurface& surface, MarkupState& state) {
    const FontSet& set = CurrentFontSet(state);
    surface.SetFontName(set.FontName);
    surface.SetFontSize(set.NormalSize);
    surface.SetFontBold(false);
    surface.SetFontItalic(false);
    surface.SetFontUnderline(false);
    surface.SetForeColor(QBColor(kBlack));
    surface.SetCurrentY(surface.CurrentY() - state.BaselineShift[state.FontIndex]);
    state.ScriptState[state.FontIndex] = 0;
}

void ApplyStyleCode(DrawingSurface& surface, MarkupState& state, std::string_view letter) {
    const FontSet& set = CurrentFontSet(state);
    if (letter == "b") {
        surface.SetFontBold(!surface.FontBold());
    } else if (letter == "i") {
        surface.SetFontItalic(!surface.FontItalic());
    } else if (letter == "u") {
        surface.SetFontUnderline(!surface.FontUnderline());
    } else if (letter == "n") {
        SetNormalStyle(surface, state);
    } else if (letter == "c") {
        const bool lightBlue = surface.ForeColor() == QBColor(kLightBlue);
        surface.SetForeColor(QBColor(lightBlue ? kBlack : kLightBlue));
    } else if (letter == "g") {
        const bool greek = surface.FontName() == kSymbolFontName;
        surface.SetFontName(greek ? set.FontName : std::string(kSymbolFontName));
    } else if (letter == "s") {
        surface.SetFontSize(surface.FontSize() != set.LargeSize ? set.LargeSize : set.NormalSize);
    } else if (letter == "h") {
        ToggleScript(surface, state, 1, set.RaiseShift);
    } else if (letter == "l") {
        ToggleScript(surface, state, -1, set.LowerShift);
    }
}

} // namespace ampora
