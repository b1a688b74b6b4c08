#include "report/font_sets.h"

#include <array>

namespace ampora {

FontSetTable InitFontSets() {
    // Shifts and steps were chosen in twips; the surface works in pixels (15 twips each).
    // Row 3 keeps the large and small sizes of rows 1 and 2 although its normal size is 12.
    constexpr auto px = [](float twips) { return twips / 15.0f; };
    FontSetTable sets;
    sets[1] = {"Arial", 10, 18, 8.25f, px(105), px(-40), px(285)};
    sets[2] = {"Times New Roman", 10, 18, 8.25f, px(105), px(-40), px(285)};
    sets[3] = {"Times New Roman", 12, 18, 8.25f, px(120), px(-40), px(315)};
    sets[4] = {"Times New Roman", 16, 24, 12, px(120), px(-40), px(405)};
    return sets;
}

std::string FontSetCaption(int fontIndex) {
    static const Slots<std::string, kFontSetCount> kCaptions = {
        {"Arial 10 pt", "Times Roman 10 pt", "Times Roman 12 pt", "Times Roman 16 pt"}};
    return kCaptions[fontIndex];
}

} // namespace ampora
