#include "report/markup_printer.h"
#include "report/style_codes.h"
#include "support/case_file.h"
#include "support/recording_surface.h"
#include "support/test_files.h"

#include <gtest/gtest.h>

namespace ampora {
namespace {

using test::RecordingSurface;

// A title "TEXT" in WIDTH: the text printed from the left edge of a line WIDTH wide.
std::pair<std::string, float> TextAndWidth(const std::string& title) {
    const std::size_t in = title.rfind("\" in ");
    return {title.substr(1, in - 1), std::stof(title.substr(in + 5))};
}

// The cases and what each printed, checked by hand: tests/data/report/markup_printer.txt.
TEST(MarkupPrinter, EachCodeAndEachWrapIsPrintedAsHandChecked) {
    const std::string name = "report/markup_printer.txt";
    const std::string dump = test::ReplayCases(name, {}, [](const std::string& title, const auto&) {
        auto [text, width] = TextAndWidth(title);
        MarkupState state;
        state.FontIndex = 1;
        RecordingSurface surface(width);
        PrintMarkup(surface, state, 1, 0, 0, text);
        return surface.Dump() + "rest \"" + text + "\", script " +
               std::to_string(state.ScriptState[1]) + ", shift " +
               test::ShortNumber(state.BaselineShift[1]) + "\n";
    });
    ASSERT_GT(dump.size(), 1000u);
    EXPECT_EQ(dump, test::ExpectedText(name, dump));
}

TEST(MarkupPrinter, MeasuringRestoresTheFontButKeepsTheVerticalMovement) {
    MarkupState state;
    state.FontIndex = 1;
    RecordingSurface surface;
    surface.SetCurrentX(3);
    // A word's width alone leaves everything as it was.
    EXPECT_FLOAT_EQ(StyledWordWidth(surface, state, "@iV@la@l"), 5 + 4.125f);
    EXPECT_FALSE(surface.FontItalic());
    EXPECT_EQ(surface.CurrentX(), 3);
    EXPECT_EQ(surface.CurrentY(), 0);
    EXPECT_EQ(state.ScriptState[1], 0);
    surface.SetFontBold(true);
    KeepFontState(surface, state, 1);
    const float width = MeasureStyledWord(surface, state, "@ba@lb@sc");
    EXPECT_FLOAT_EQ(width, 5 + 4.125f + 9);
    EXPECT_FLOAT_EQ(surface.CurrentY(), 7);
    KeepFontState(surface, state, 2);
    EXPECT_TRUE(surface.FontBold());
    EXPECT_EQ(surface.FontSize(), 10);
    EXPECT_EQ(state.ScriptState[1], 0);
    EXPECT_FLOAT_EQ(surface.CurrentY(), 7);
    EXPECT_EQ(surface.operations.size(), 0u);
}

// Empty text moves only when asked to place first; printing carries on where it left off.
TEST(MarkupPrinter, PrintingContinuesWhereTheLastCallLeftOff) {
    MarkupState state;
    state.FontIndex = 1;
    RecordingSurface surface;
    surface.SetCurrentX(12);
    std::string text;
    PrintMarkup(surface, state, 0, 40, 50, text);
    EXPECT_EQ(surface.CurrentX(), 12);
    EXPECT_EQ(surface.CurrentY(), 0);
    PrintMarkup(surface, state, 1, 40, 50, text);
    EXPECT_EQ(surface.CurrentX(), 40);
    EXPECT_EQ(surface.CurrentY(), 50);
    EXPECT_EQ(surface.operations.size(), 0u);
    text = "ab@e cd";
    PrintMarkup(surface, state, 1, 10, 20, text);
    PrintMarkup(surface, state, 0, 0, 0, text);
    EXPECT_EQ(surface.Dump(), "print 'ab' at 10,20 Arial 10\n"
                              "print ' ' at 20,20 Arial 10\n"
                              "print 'cd' at 25,20 Arial 10\n");
}

TEST(MarkupPrinter, AFontIndexOutsideTheFourSetsThrowsInsteadOfReadingPastTheTable) {
    for (const std::int16_t index : {0, 5, -1}) {
        MarkupState state;
        state.FontIndex = index;
        RecordingSurface surface;
        std::string text = "abc";
        EXPECT_THROW(PrintMarkup(surface, state, 1, 0, 0, text), SlotOutOfRange);
    }
}

} // namespace
} // namespace ampora
