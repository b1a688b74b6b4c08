#include "report/equation_drawing.h"
#include "report/palette.h"
#include "support/recording_surface.h"
#include "support/test_files.h"

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

// Checked by hand in tests/data/report/equation_drawing.txt: a first-written equation sets each
// branch as a stacked fraction; the collected form sets coefficients at the text's size in tall
// parentheses; constraints between supernodes stay on one line; names longer than a short
// subscript stay whole; text that is no equation is printed as it stands, at signs included.
TEST(EquationDrawing, EachFormOfEquationIsSetAsHandChecked) {
    const struct {
        const char* text;
        float rightEdge;
    } cases[] = {{"(Va-Vb)/10 + (Va-Vc+2)/5 - 0.5 = 0", 1000},
                 {"(1/10+1/5)*Va-(1/10)*Vb-(1/5)*Vc=-2/5+0.5", 1000},
                 {"Vb=Va+5", 1000},
                 {"Vb-Va=-2.5", 1000},
                 {"(Va-Vd-5)/10", 1000},
                 {" = 0", 1000},
                 {"Vout1=X", 1000},
                 {"Va + @x (b", 1000},
                 {"(Va-Vb", 20},
                 {"", 1000},
                 {"   ", 1000}};
    std::string dump;
    for (const auto& c : cases) {
        dump += "== \"" + std::string(c.text) + "\" in " + ShortNumber(c.rightEdge) + "\n" +
                Drawn(c.text, c.rightEdge);
    }
    EXPECT_EQ(dump, test::ExpectedText("report/equation_drawing.txt", dump));
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
