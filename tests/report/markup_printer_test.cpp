#include "report/markup_printer.h"
#include "report/style_codes.h"
#include "support/recording_surface.h"

#include <gtest/gtest.h>

namespace ampora {
namespace {

using test::RecordingSurface;

// Font set 1 (Arial 10, large 18, small 8.25, lower 7, raise -2.67, line 19); the fake
// makes each character 5 pixels wide at 10 points.
struct Printed {
    std::string dump;
    std::string handedBack;
};

Printed Print(std::string text, float rightEdge = 100, MarkupState* shared = nullptr) {
    MarkupState own;
    MarkupState& state = shared != nullptr ? *shared : own;
    state.FontIndex = 1;
    RecordingSurface surface(rightEdge);
    PrintMarkup(surface, state, 1, 0, 0, text);
    return {surface.Dump(), text};
}

TEST(MarkupPrinter, SpacesArePrintedOneByOneAndNeverWrap) {
    EXPECT_EQ(Print("abcd   e", 20).dump, "print 'abcd' at 0,0 Arial 10\n"
                                          "print ' ' at 20,0 Arial 10\n"
                                          "print ' ' at 25,0 Arial 10\n"
                                          "print ' ' at 30,0 Arial 10\n"
                                          "print 'e' at 0,19 Arial 10\n");
}

TEST(MarkupPrinter, AWordWiderThanTheLineStartsANewLineEvenAtTheLeftEdge) {
    EXPECT_EQ(Print("abcdefgh ab", 20).dump, "print 'abcdefgh' at 0,19 Arial 10\n"
                                             "print ' ' at 40,19 Arial 10\n"
                                             "print 'ab' at 0,38 Arial 10\n");
}

TEST(MarkupPrinter, AWordEndingExactlyAtTheRightEdgeStaysOnTheLine) {
    EXPECT_EQ(Print("ab abc", 30).dump, "print 'ab' at 0,0 Arial 10\n"
                                        "print ' ' at 10,0 Arial 10\n"
                                        "print 'abc' at 15,0 Arial 10\n");
}

TEST(MarkupPrinter, EndCodeStopsAndHandsBackTheRest) {
    const Printed glued = Print("abc@e def");
    EXPECT_EQ(glued.dump, "print 'abc' at 0,0 Arial 10\n");
    EXPECT_EQ(glued.handedBack, " def");

    const Printed leading = Print("@eabc def");
    EXPECT_EQ(leading.dump, "");
    EXPECT_EQ(leading.handedBack, "abc def");

    const Printed alone = Print("ab @e");
    EXPECT_EQ(alone.dump, "print 'ab' at 0,0 Arial 10\nprint ' ' at 10,0 Arial 10\n");
    EXPECT_EQ(alone.handedBack, "");
}

TEST(MarkupPrinter, AWordEndsAtTheEarliestLayoutCodeItHolds) {
    const Printed printed = Print("a@pb@ec");
    EXPECT_EQ(printed.dump, "print 'a' at 0,0 Arial 10\n"
                            "print 'b' at 0,19 Arial 10\n");
    EXPECT_EQ(printed.handedBack, "c");
}

TEST(MarkupPrinter, LayoutCodesInsideAndBetweenWords) {
    EXPECT_EQ(Print("x@py").dump, "print 'x' at 0,0 Arial 10\n"
                                  "print 'y' at 0,19 Arial 10\n");
    EXPECT_EQ(Print("a @p@pb").dump, "print 'a' at 0,0 Arial 10\n"
                                     "print ' ' at 5,0 Arial 10\n"
                                     "print 'b' at 0,38 Arial 10\n");
    EXPECT_EQ(Print("a @tb").dump, "print 'a' at 0,0 Arial 10\n"
                                   "print ' ' at 5,0 Arial 10\n"
                                   "print '     ' at 0,19 Arial 10\n"
                                   "print 'b' at 25,19 Arial 10\n");
    EXPECT_EQ(Print("a @pb@xc").dump, "print 'a' at 0,0 Arial 10\n"
                                      "print ' ' at 5,0 Arial 10\n"
                                      "print 'b' at 0,19 Arial 10\n"
                                      "clear\n"
                                      "print 'c' at 0,0 Arial 10\n");
}

TEST(MarkupPrinter, SubscriptOpenedAndClosedInOneWordEndsOnTheBaseline) {
    EXPECT_EQ(Print("H@l2@lO").dump, "print 'H' at 0,0 Arial 10\n"
                                     "print '2' at 5,7 Arial 8.25\n"
                                     "print 'O' at 9.12,0 Arial 10\n");
}

TEST(MarkupPrinter, GreekCodePrintsTheSymbolFontLetterAndReturnsToTheSetsFont) {
    EXPECT_EQ(Print("@gp@g r").dump, "print 'π' at 0,0 Symbol 10\n"
                                     "print ' ' at 5,0 Arial 10\n"
                                     "print 'r' at 10,0 Arial 10\n");
}

TEST(MarkupPrinter, SizeCodeTogglesTheLargeSizeWithoutTouchingTheRaise) {
    EXPECT_EQ(Print("@sA@sB").dump, "print 'A' at 0,0 Arial 18\n"
                                    "print 'B' at 9,0 Arial 10\n");
    MarkupState state;
    EXPECT_EQ(Print("@hA@sB", 100, &state).dump, "print 'A' at 0,-5.33 Arial 8.25\n"
                                                 "print 'B' at 4.12,-5.33 Arial 18\n");
    EXPECT_EQ(state.ScriptState[1], 1);
}

TEST(MarkupPrinter, StyleLettersToggleAndPersistAcrossWords) {
    EXPECT_EQ(Print("@b@ia@i b@u@c c@c@n d").dump,
              "print 'a' at 0,0 Arial 10 bold italic\n"
              "print ' ' at 5,0 Arial 10 bold\n"
              "print 'b' at 10,0 Arial 10 bold\n"
              "print ' ' at 15,0 Arial 10 bold underline #0000ff\n"
              "print 'c' at 20,0 Arial 10 bold underline #0000ff\n"
              "print ' ' at 25,0 Arial 10\n"
              "print 'd' at 30,0 Arial 10\n");
}

TEST(MarkupPrinter, AnUnknownOrMissingLetterIsDroppedWithItsAt) {
    EXPECT_EQ(Print("a@zb@Bc@é@").dump, "print 'a' at 0,0 Arial 10\n"
                                        "print 'b' at 5,0 Arial 10\n"
                                        "print 'c' at 10,0 Arial 10\n");
}

TEST(MarkupPrinter, ARaiseSpanningWordsSitsTheWordsBetweenAtDoubleTheShift) {
    MarkupState state;
    EXPECT_EQ(Print("a@hb c d@he f", 100, &state).dump, "print 'a' at 0,-2.67 Arial 10\n"
                                                        "print 'b' at 5,-5.33 Arial 8.25\n"
                                                        "print ' ' at 9.12,-5.33 Arial 8.25\n"
                                                        "print 'c' at 13.25,-5.33 Arial 8.25\n"
                                                        "print ' ' at 17.38,-5.33 Arial 8.25\n"
                                                        "print 'd' at 21.5,-2.67 Arial 8.25\n"
                                                        "print 'e' at 25.62,0 Arial 10\n"
                                                        "print ' ' at 30.62,0 Arial 10\n"
                                                        "print 'f' at 35.62,0 Arial 10\n");
    EXPECT_EQ(state.ScriptState[1], 0);
    EXPECT_FLOAT_EQ(state.BaselineShift[1], 0);
}

TEST(MarkupPrinter, LowerWhileRaisedAddsBothShifts) {
    MarkupState state;
    Print("@h@lx", 100, &state);
    EXPECT_EQ(state.ScriptState[1], -1);
    EXPECT_FLOAT_EQ(state.BaselineShift[1], 7 - 40.0f / 15);
}

TEST(MarkupPrinter, NormalStyleReturnsToTheBaselineButKeepsTheShiftOnRecord) {
    MarkupState state;
    EXPECT_EQ(Print("@hA@n B", 100, &state).dump, "print 'A' at 0,-2.67 Arial 8.25\n"
                                                  "print ' ' at 4.12,0 Arial 10\n"
                                                  "print 'B' at 9.12,0 Arial 10\n");
    EXPECT_EQ(state.ScriptState[1], 0);
    EXPECT_FLOAT_EQ(state.BaselineShift[1], -40.0f / 15);
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
