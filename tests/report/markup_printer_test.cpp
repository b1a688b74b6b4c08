#include "report/markup_printer.h"
#include "report/style_codes.h"
#include "support/recording_surface.h"
#include "support/test_files.h"

#include <gtest/gtest.h>

namespace ampora {
namespace {

using test::RecordingSurface;

// Font set 1 (Arial 10, large 18, small 8.25, lower 7, raise -2.67, line 19); the fake
// makes each character 5 pixels wide at 10 points. Checked by hand in
// tests/data/report/markup_printer.txt: spaces print one by one and never wrap; a word wider
// than the line starts a new one even at the left edge, one ending exactly at the edge stays;
// @e stops and hands back the rest; a word ends at the earliest layout code it holds; a
// subscript closed in its word returns to the baseline; @g prints one Symbol letter; @s
// toggles the large size without touching the raise; style letters toggle and persist; an
// unknown or missing letter is dropped with its @; a raise spanning words sits the words
// between at double the shift; a lower while raised adds both; @n returns to the baseline
// but keeps the shift on record.
TEST(MarkupPrinter, EachCodeAndEachWrapIsPrintedAsHandChecked) {
    const struct {
        const char* text;
        float rightEdge;
    } cases[] = {{"abcd   e", 20},    {"abcdefgh ab", 20},
                 {"ab abc", 30},      {"abc@e def", 100},
                 {"@eabc def", 100},  {"ab @e", 100},
                 {"a@pb@ec", 100},    {"x@py", 100},
                 {"a @p@pb", 100},    {"a @tb", 100},
                 {"a @pb@xc", 100},   {"H@l2@lO", 100},
                 {"@gp@g r", 100},    {"@sA@sB", 100},
                 {"@hA@sB", 100},     {"@b@ia@i b@u@c c@c@n d", 100},
                 {"a@zb@Bc@é@", 100}, {"a@hb c d@he f", 100},
                 {"@h@lx", 100},      {"@hA@n B", 100}};
    std::string dump;
    for (const auto& c : cases) {
        MarkupState state;
        state.FontIndex = 1;
        RecordingSurface surface(c.rightEdge);
        std::string text = c.text;
        PrintMarkup(surface, state, 1, 0, 0, text);
        dump += "== \"" + std::string(c.text) + "\" in " + test::ShortNumber(c.rightEdge) + "\n" +
                surface.Dump() + "rest \"" + text + "\", script " +
                std::to_string(state.ScriptState[1]) + ", shift " +
                test::ShortNumber(state.BaselineShift[1]) + "\n";
    }
    EXPECT_EQ(dump, test::ExpectedText("report/markup_printer.txt", dump));
}

TEST(MarkupPrinter, MeasuringRestoresTheFontButKeepsTheVerticalMovement) {
    MarkupState state;
    state.FontIndex = 1;
    RecordingSurface surface;
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

TEST(MarkupPrinter, WordWidthLeavesEverythingAsItWas) {
    MarkupState state;
    state.FontIndex = 1;
    RecordingSurface surface;
    surface.SetCurrentX(3);
    EXPECT_FLOAT_EQ(StyledWordWidth(surface, state, "@iV@la@l"), 5 + 4.125f);
    EXPECT_FALSE(surface.FontItalic());
    EXPECT_EQ(surface.CurrentX(), 3);
    EXPECT_EQ(surface.CurrentY(), 0);
    EXPECT_EQ(state.ScriptState[1], 0);
}

TEST(MarkupPrinter, EmptyTextMovesOnlyWhenAskedToPlaceFirst) {
    MarkupState state;
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
}

TEST(MarkupPrinter, PrintingContinuesWhereTheLastCallLeftOff) {
    MarkupState state;
    state.FontIndex = 1;
    RecordingSurface surface;
    std::string text = "ab@e cd";
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
