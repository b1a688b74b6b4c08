#include "report/equation_drawing.h"
#include "report/palette.h"
#include "support/recording_surface.h"

#include <gtest/gtest.h>

namespace ampora {
namespace {

using test::RecordingSurface;
using test::ShortNumber;

// Font set 1: Arial 10, small 8.25, large 18, line 19, lowered 7. In the fake every
// character is size x 0.5 wide, so a cell is 15.2 high with its axis 8.36 below the top.
std::string Drawn(std::string_view text, float rightEdge = 1000) {
    MarkupState state;
    state.FontIndex = 1;
    RecordingSurface surface(rightEdge);
    const EquationExtent extent = DrawEquation(surface, state, text);
    return surface.Dump() + "extent " + ShortNumber(extent.Width) + " x " +
           ShortNumber(extent.Height) + ", next at " + ShortNumber(surface.CurrentX()) + "," +
           ShortNumber(surface.CurrentY()) + "\n";
}

TEST(EquationDrawing, FirstWrittenKclSetsEachBranchAsAStackedFraction) {
    EXPECT_EQ(Drawn("(Va-Vb)/10 + (Va-Vc+2)/5 - 0.5 = 0"),
              "print 'V' at 1.9,0 Arial 10 italic\n"
              "print 'a' at 6.9,7 Arial 8.25\n"
              "print '−' at 14.06,0 Arial 10\n"
              "print 'V' at 22.11,0 Arial 10 italic\n"
              "print 'b' at 27.11,7 Arial 8.25\n"
              "line 0,21.44 to 33.13,21.44\n"
              "print '10' at 11.57,23.34 Arial 10\n"
              "print '+' at 36.17,13.08 Arial 10\n"
              "print 'V' at 46.11,0 Arial 10 italic\n"
              "print 'a' at 51.11,7 Arial 8.25\n"
              "print '−' at 58.28,0 Arial 10\n"
              "print 'V' at 66.32,0 Arial 10 italic\n"
              "print 'c' at 71.32,7 Arial 8.25\n"
              "print '+' at 78.48,0 Arial 10\n"
              "print '2' at 86.52,0 Arial 10\n"
              "line 44.21,21.44 to 93.42,21.44\n"
              "print '5' at 66.32,23.34 Arial 10\n"
              "print '−' at 96.46,13.08 Arial 10\n"
              "print '0.5' at 104.5,13.08 Arial 10\n"
              "print '=' at 124.44,13.08 Arial 10\n"
              "print '0' at 134.38,13.08 Arial 10\n"
              "extent 139.38 x 38.54, next at 0,38.54\n");
}

TEST(EquationDrawing, CollectedFormSetsCoefficientsAtTheTextSizeInTallParentheses) {
    EXPECT_EQ(Drawn("(1/10+1/5)*Va-(1/10)*Vb-(1/5)*Vc=-2/5+0.5"),
              "print '(' at 0,2.05 Arial 18\n"
              "print '1' at 13.4,0 Arial 10\n"
              "line 9,17.1 to 22.8,17.1\n"
              "print '10' at 10.9,19 Arial 10\n"
              "print '+' at 25.84,8.74 Arial 10\n"
              "print '1' at 35.78,0 Arial 10\n"
              "line 33.88,17.1 to 42.68,17.1\n"
              "print '5' at 35.78,19 Arial 10\n"
              "print ')' at 42.68,2.05 Arial 18\n"
              "print 'V' at 53.58,8.74 Arial 10 italic\n"
              "print 'a' at 58.58,15.74 Arial 8.25\n"
              "print '\xE2\x88\x92' at 65.75,8.74 Arial 10\n"
              "print '(' at 73.79,2.05 Arial 18\n"
              "print '1' at 87.19,0 Arial 10\n"
              "line 82.79,17.1 to 96.59,17.1\n"
              "print '10' at 84.69,19 Arial 10\n"
              "print ')' at 96.59,2.05 Arial 18\n"
              "print 'V' at 107.49,8.74 Arial 10 italic\n"
              "print 'b' at 112.49,15.74 Arial 8.25\n"
              "print '\xE2\x88\x92' at 119.65,8.74 Arial 10\n"
              "print '(' at 127.69,2.05 Arial 18\n"
              "print '1' at 138.59,0 Arial 10\n"
              "line 136.69,17.1 to 145.49,17.1\n"
              "print '5' at 138.59,19 Arial 10\n"
              "print ')' at 145.49,2.05 Arial 18\n"
              "print 'V' at 156.39,8.74 Arial 10 italic\n"
              "print 'c' at 161.39,15.74 Arial 8.25\n"
              "print '=' at 170.46,8.74 Arial 10\n"
              "print '\xE2\x88\x92' at 180.4,8.74 Arial 10\n"
              "print '2' at 187.29,0 Arial 10\n"
              "line 185.4,17.1 to 194.2,17.1\n"
              "print '5' at 187.29,19 Arial 10\n"
              "print '+' at 197.24,8.74 Arial 10\n"
              "print '0.5' at 205.28,8.74 Arial 10\n"
              "extent 220.28 x 34.2, next at 0,34.2\n");
}

TEST(EquationDrawing, SupernodeConstraintsStayOnOneLine) {
    EXPECT_EQ(Drawn("Vb=Va+5"), "print 'V' at 0,0 Arial 10 italic\n"
                                "print 'b' at 5,7 Arial 8.25\n"
                                "print '=' at 14.06,0 Arial 10\n"
                                "print 'V' at 24,0 Arial 10 italic\n"
                                "print 'a' at 29,7 Arial 8.25\n"
                                "print '+' at 36.17,0 Arial 10\n"
                                "print '5' at 44.21,0 Arial 10\n"
                                "extent 49.21 x 19.54, next at 0,19.54\n");
    EXPECT_EQ(Drawn("Vb-Va=-2.5"), "print 'V' at 0,0 Arial 10 italic\n"
                                   "print 'b' at 5,7 Arial 8.25\n"
                                   "print '−' at 12.16,0 Arial 10\n"
                                   "print 'V' at 20.21,0 Arial 10 italic\n"
                                   "print 'a' at 25.21,7 Arial 8.25\n"
                                   "print '=' at 34.27,0 Arial 10\n"
                                   "print '−' at 44.21,0 Arial 10\n"
                                   "print '2.5' at 49.21,0 Arial 10\n"
                                   "extent 64.21 x 19.54, next at 0,19.54\n");
}

TEST(EquationDrawing, ALoneTermAndANodeWithoutBranches) {
    EXPECT_EQ(Drawn("(Va-Vd-5)/10"), "print 'V' at 1.9,0 Arial 10 italic\n"
                                     "print 'a' at 6.9,7 Arial 8.25\n"
                                     "print '−' at 14.06,0 Arial 10\n"
                                     "print 'V' at 22.11,0 Arial 10 italic\n"
                                     "print 'd' at 27.11,7 Arial 8.25\n"
                                     "print '−' at 34.27,0 Arial 10\n"
                                     "print '5' at 42.31,0 Arial 10\n"
                                     "line 0,21.44 to 49.21,21.44\n"
                                     "print '10' at 19.61,23.34 Arial 10\n"
                                     "extent 49.21 x 38.54, next at 0,38.54\n");
    EXPECT_EQ(Drawn(" = 0"), "print '=' at 0,0 Arial 10\n"
                             "print '0' at 9.94,0 Arial 10\n"
                             "extent 14.94 x 15.2, next at 0,15.2\n");
}

TEST(EquationDrawing, NamesLongerThanAShortSubscriptStayWholeInItalic) {
    EXPECT_EQ(Drawn("Vout1=X"), "print 'Vout1' at 0,0 Arial 10 italic\n"
                                "print '=' at 29.94,0 Arial 10\n"
                                "print 'X' at 39.88,0 Arial 10 italic\n"
                                "extent 44.88 x 15.2, next at 0,15.2\n");
}

TEST(EquationDrawing, TextThatIsNoEquationIsPrintedAsItStandsAtSignsIncluded) {
    EXPECT_EQ(Drawn("Va + @x (b"), "print 'Va' at 0,0 Arial 10\n"
                                   "print ' ' at 10,0 Arial 10\n"
                                   "print '+' at 15,0 Arial 10\n"
                                   "print ' ' at 20,0 Arial 10\n"
                                   "print '@' at 25,0 Arial 10\n"
                                   "print 'x' at 30,0 Arial 10\n"
                                   "print ' ' at 35,0 Arial 10\n"
                                   "print '(b' at 40,0 Arial 10\n"
                                   "extent 50 x 15.2, next at 0,15.2\n");
    EXPECT_EQ(Drawn("(Va-Vb", 20), "print '(Va-Vb' at 0,19 Arial 10\n"
                                   "extent 30 x 34.2, next at 0,34.2\n");
}

TEST(EquationDrawing, EmptyTextDrawsNothingAndTakesNoRoom) {
    EXPECT_EQ(Drawn(""), "extent 0 x 0, next at 0,0\n");
    EXPECT_EQ(Drawn("   "), "extent 0 x 0, next at 0,0\n");
}

TEST(EquationDrawing, TheCallersFontAndScriptStateComeBack) {
    MarkupState state;
    state.FontIndex = 2;
    state.ScriptState[2] = -1;
    state.BaselineShift[2] = 7;
    RecordingSurface surface;
    surface.SetFontName("Courier New");
    surface.SetFontSize(18);
    surface.SetFontBold(true);
    surface.SetForeColor(QBColor(9));
    surface.SetCurrentX(30);
    surface.SetCurrentY(40);
    const EquationExtent extent = DrawEquation(surface, state, "(Va-Vb)/10 = 0");
    EXPECT_EQ(surface.FontName(), "Courier New");
    EXPECT_EQ(surface.FontSize(), 18);
    EXPECT_TRUE(surface.FontBold());
    EXPECT_EQ(surface.ForeColor(), QBColor(9));
    EXPECT_EQ(state.ScriptState[2], -1);
    EXPECT_EQ(state.BaselineShift[2], 7);
    EXPECT_EQ(surface.CurrentX(), 30);
    EXPECT_EQ(surface.CurrentY(), 40 + extent.Height);
}

} // namespace
} // namespace ampora
