#include "report/markup_printer.h"

#include "report/style_codes.h"
#include "report/symbol_font.h"

#include <array>

namespace ampora {

namespace {

// Bytes in the UTF-8 character that starts with lead, so that an unknown style letter
// outside ASCII is dropped whole.
std::size_t CharLength(char lead) {
    const auto c = static_cast<unsigned char>(lead);
    if (c >= 0xF0) {
        return 4;
    }
    if (c >= 0xE0) {
        return 3;
    }
    if (c >= 0xC0) {
        return 2;
    }
    return 1;
}

std::string ShownText(const DrawingSurface& surface, std::string_view run) {
    if (surface.FontName() == kSymbolFontName) {
        return SymbolToUnicode(run);
    }
    return std::string(run);
}

// Walks a word: style letters are applied, each run of text between them goes to onRun as
// it will be shown.
template <typename OnRun>
void WalkWord(DrawingSurface& surface, MarkupState& state, std::string_view word, OnRun onRun) {
    std::size_t i = 0;
    while (i < word.size()) {
        if (word[i] == '@') {
            std::string_view letter;
            if (i + 1 < word.size()) {
                letter = word.substr(i + 1, CharLength(word[i + 1]));
            }
            ApplyStyleCode(surface, state, letter);
            i += 1 + letter.size();
            continue;
        }
        const std::size_t next = word.find('@', i);
        const std::size_t end = next == std::string_view::npos ? word.size() : next;
        onRun(ShownText(surface, word.substr(i, end - i)));
        i = end;
    }
}

void NewLine(DrawingSurface& surface, const MarkupState& state) {
    surface.SetCurrentX(0);
    surface.SetCurrentY(surface.CurrentY() + CurrentFontSet(state).LineStep);
}

bool StartsWith(std::string_view text, std::string_view prefix) {
    return text.substr(0, prefix.size()) == prefix;
}

} // namespace

float MeasureStyledWord(DrawingSurface& surface, MarkupState& state, std::string_view word) {
    float width = 0;
    WalkWord(surface, state, word,
             [&](const std::string& run) { width += surface.TextWidth(run); });
    return width;
}

void PrintStyledWord(DrawingSurface& surface, MarkupState& state, std::string_view word) {
    WalkWord(surface, state, word, [&](const std::string& run) {
        if (!run.empty()) {
            surface.Print(run);
        }
    });
}

float StyledWordWidth(DrawingSurface& surface, MarkupState& state, std::string_view word) {
    const SavedFontState saved = CaptureFontState(surface, state);
    const float x = surface.CurrentX();
    const float y = surface.CurrentY();
    const float width = MeasureStyledWord(surface, state, word);
    RestoreFontState(surface, state, saved);
    surface.SetCurrentX(x);
    surface.SetCurrentY(y);
    return width;
}

void PrintMarkup(DrawingSurface& surface, MarkupState& state, std::int16_t placeFirst, float x,
                 float y, std::string& text) {
    if (placeFirst == 1) {
        surface.SetCurrentX(x);
        surface.SetCurrentY(y);
    }
    while (!text.empty()) {
        if (text.front() == ' ') {
            surface.Print(" ");
            text.erase(0, 1);
            continue;
        }
        const std::size_t space = text.find(' ');
        std::string word = text.substr(0, space);
        text.erase(0, space == std::string::npos ? text.size() : space);

        // The word ends at the earliest layout code it holds behind its first character.
        for (const std::string_view code : {"@e", "@p", "@t", "@x"}) {
            const std::size_t at = word.find(code);
            if (at != std::string::npos && at > 0) {
                text.insert(0, word, at);
                word.resize(at);
            }
        }

        if (StartsWith(word, "@e")) {
            text.insert(0, word, 2);
            return;
        }
        if (StartsWith(word, "@p") || StartsWith(word, "@t") || StartsWith(word, "@x")) {
            text.insert(0, word, 2);
            if (word[1] == 'x') {
                surface.Clear();
            } else {
                NewLine(surface, state);
                if (word[1] == 't') {
                    surface.Print("     ");
                }
            }
            continue;
        }

        KeepFontState(surface, state, 1);
        const float wordEnd = surface.CurrentX() + MeasureStyledWord(surface, state, word);
        if (surface.RightEdge() < wordEnd) {
            NewLine(surface, state);
        }
        KeepFontState(surface, state, 2);
        PrintStyledWord(surface, state, word);
    }
}

} // namespace ampora
