// The rules of the drawing tools as one table, kept in tests/data/editor/editing_rules.txt: a
// drawing, the commands (see drawing_session.h), and what follows: whether each acted, the
// drawing after, what was asked and said. The file's cases are read, played and written out
// again with their outcomes; the outcomes there are checked by hand.

#include "editor/drawing_session.h"
#include "editor/hit_tests.h"
#include "editor/snapping.h"
#include "support/case_file.h"
#include "support/test_files.h"
#include "workflow/step_transitions.h"

#include <gtest/gtest.h>

#include <limits>

namespace ampora {
namespace {

using test::DrawingSession;
using test::ParseDrawing;
using test::ShowDrawing;

// Plays one case of the file: its "before" drawing and its "do" commands.
std::string Played(const std::string&, const std::vector<std::string>& inputs) {
    DrawingSession s;
    const std::string before = inputs.at(0).size() > 7 ? inputs.at(0).substr(7) : "";
    s.ws.Circuit = ParseDrawing(before);
    std::string result;
    for (std::size_t k = 1; k < inputs.size(); ++k) {
        result += (k > 1 ? ", " : "") + std::string(s.Do(inputs[k].substr(7)) ? "done" : "refused");
    }
    const std::string after = ShowDrawing(s.ws.Circuit);
    std::string out =
        ShowDrawing(ParseDrawing(before)) == before ? "" : "before does not read back\n";
    out += "result " + result + "\nafter  " + (after == before ? "unchanged" : after) + "\n";
    std::string typed;
    for (int slot = 1; slot <= s.ws.Circuit.NumElements; ++slot) {
        typed += s.editor.ValueText[slot].empty() ? "" : "[" + s.editor.ValueText[slot] + "]";
    }
    out += typed.empty() ? "" : "typed  " + typed + "\n";
    for (const std::string& question : s.prompts.questions) {
        out += "asked  " + test::EscapedLine(question) + "\n";
    }
    for (const std::string& message : s.prompts.messages) {
        out += "said   " + message + "\n";
    }
    return out + "editor tool " + std::to_string(s.editor.CurrentTool) + ", drag " +
           std::to_string(s.editor.DragState) + ", undo " + std::to_string(s.editor.UndoAvailable) +
           ", end " + ShortestText(s.editor.EndX) + "," + ShortestText(s.editor.EndY) + "\n";
}

TEST(EditingTools, EachRuleOfTheToolsHoldsAsHandChecked) {
    const std::string name = "editor/editing_rules.txt";
    const std::string dump = test::ReplayCases(name, {"before", "do "}, Played);
    ASSERT_GT(dump.size(), 1000u);
    EXPECT_EQ(dump, test::ExpectedText(name, dump));
}

TEST(Snapping, PointsSnapFromThreeAndAHalfBelowAGridLineToFourAndAHalfAbove) {
    std::string out;
    for (const float v : {0.0f, 4.0f, 4.4f, 4.5f, 5.0f, 12.4f, 12.5f, 16.0f, 20.4f, 20.5f, 161.0f,
                          164.0f, 165.0f}) {
        out += ShortestText(v) + "->" + ShortestText(Snap(v)) + " ";
    }
    EXPECT_EQ(out,
              "0->0 4->0 4.4->0 4.5->8 5->8 12.4->8 12.5->16 16->16 20.4->16 20.5->24 161->160 "
              "164->160 165->168 ");
    EXPECT_EQ(Snap(1e30f), 1e9f);
    EXPECT_EQ(Snap(std::numeric_limits<float>::quiet_NaN()), 0.0f);
}

TEST(HitTests, AClickOnAWireEndOrItsLengthHitsItAndAZeroLengthWireIsSafe) {
    const Circuit circuit = ParseDrawing("80,80-80,80 240,160-240,80 5@240,120=1");
    EXPECT_EQ(std::to_string(WireHit(circuit, 80, 80)) + std::to_string(WireHit(circuit, 240, 80)) +
                  std::to_string(WireHit(circuit, 240, 120)) +
                  std::to_string(WireHit(circuit, 240, 168)),
              "1220");
    EXPECT_EQ(ElementAt(circuit, 224, 104), 1);
    EXPECT_EQ(ElementAt(circuit, 256, 120), 0);
}

// After a refused "Next >" the wire clean-up renumbers the wires: an erase that held a wire
// can no longer be undone, one of a device alone still can.
TEST(EraseTool, AfterARefusedNextUndoBringsBackAWholeEraseOrNothing) {
    const std::string square =
        "80,80-240,80 240,80-240,240 80,240-240,240 80,80-80,240 3@160,80=12 5@240,160=100";
    for (const char* erase : {"erase 120,80", "erase #2"}) {
        DrawingSession s;
        s.ws.Circuit = ParseDrawing(square);
        ASSERT_TRUE(s.Do(erase));
        ASSERT_EQ(LeaveStep1(s.ws, s.prompts), TransitionResult::Refused);
        MatchUndoToMemory(s.ws.Circuit, s.editor);
        const bool offered = s.editor.UndoAvailable == 1;
        const bool undone = s.Do("undo");
        const std::string outcome = offered && undone     ? "undone"
                                    : !offered && !undone ? "undo unavailable"
                                                          : "inconsistent";
        EXPECT_EQ(
            outcome + "; " + ShowDrawing(s.ws.Circuit),
            erase[6] == '#'
                ? "undone; " + square
                : "undo unavailable; 240,80-240,240 80,240-240,240 80,80-80,240 5@240,160=100");
    }
}

} // namespace
} // namespace ampora
