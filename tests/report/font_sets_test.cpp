#include "report/font_sets.h"
#include "report/symbol_font.h"
#include "support/recording_surface.h"

#include <gtest/gtest.h>

namespace ampora {
namespace {

using test::ShortNumber;

TEST(FontSets, TheFourRowsAreFixedAndRowThreeKeepsTheSmallerLargeSize) {
    const FontSetTable sets = InitFontSets();
    std::string dump;
    for (int row = 1; row <= kFontSetCount; ++row) {
        const FontSet& set = sets[row];
        dump += FontSetCaption(row) + ": " + set.FontName + " " + ShortNumber(set.NormalSize) +
                " " + ShortNumber(set.LargeSize) + " " + ShortNumber(set.SmallSize) + " " +
                ShortNumber(set.LowerShift) + " " + ShortNumber(set.RaiseShift) + " " +
                ShortNumber(set.LineStep) + "\n";
    }
    EXPECT_EQ(dump, "Arial 10 pt: Arial 10 18 8.25 7 -2.67 19\n"
                    "Times Roman 10 pt: Times New Roman 10 18 8.25 7 -2.67 19\n"
                    "Times Roman 12 pt: Times New Roman 12 18 8.25 8 -2.67 21\n"
                    "Times Roman 16 pt: Times New Roman 16 24 12 8 -2.67 27\n");
    EXPECT_THROW(FontSetCaption(5), SlotOutOfRange);
}

TEST(SymbolFont, LatinLettersBecomeTheGreekTheSymbolFontShows) {
    EXPECT_EQ(SymbolToUnicode("abpWVJjvfq"), "αβπΩςϑϕϖφθ");
    EXPECT_EQ(SymbolToUnicode("ABGDQ"), "ΑΒΓΔΘ");
    EXPECT_EQ(SymbolToUnicode("2*x-y=1 ä."), "2∗ξ−ψ=1 ä.");
    EXPECT_EQ(SymbolToUnicode(""), "");
}

} // namespace
} // namespace ampora
