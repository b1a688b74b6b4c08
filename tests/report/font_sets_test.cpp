#include "report/font_sets.h"
#include "report/symbol_font.h"
#include "support/recording_surface.h"
#include "support/test_files.h"

#include <gtest/gtest.h>

namespace ampora {
namespace {

using test::ShortNumber;

// Checked by hand in tests/data/report/font_sets.txt.
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
    EXPECT_EQ(dump, test::ExpectedText("report/font_sets.txt", dump));
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
