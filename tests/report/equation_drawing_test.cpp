#include "report/equation_drawing.h"
#include "report/palette.h"
#include "support/case_file.h"
#include "support/recording_surface.h"
#include "support/test_files.h"

#include <gtest/gtest.h>

namespace ampora {
namespace {

using test::RecordingSurface;
using test::ShortNumber;

std::string Drawn(std::string_view text, float rightEdge) {
    MarkupState state;
    state.FontIndex = 1;
    RecordingSurface surface(rightEdge);
    const EquationExtent extent = DrawEquation(surface, state, text);
    return surface.Dump() + "extent " + ShortNumber(extent.Width) + " x " +
           ShortNumber(extent.Height) + ", next at " + ShortNumber(surface.CurrentX()) + "," +
           ShortNumber(surface.CurrentY()) + "\n";
}

// The cases and how each was set, checked by hand: tests/data/report/equation_drawing.txt.
TEST(EquationDrawing, EachFormOfEquationIsSetAsHandChecked) {
    const std::string name = "report/equation_drawing.txt";
    const std::string dump = test::ReplayCases(name, {}, [](const std::string& title, const auto&) {
        const std::size_t in = title.rfind("\" in ");
        return Drawn(title.substr(1, in - 1), std::stof(title.substr(in + 5)));
    });
    ASSERT_GT(dump.size(), 1000u);
    EXPECT_EQ(dump, test::ExpectedText(name, dump));
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
