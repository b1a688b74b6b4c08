// The rules of the drawing tools as one table: a drawing, one action, and what follows (the
// drawing after, or "refused"; what was asked and said). The outcomes are checked by hand in
// tests/data/editor/editing_rules.txt.

#include "editor/drawing_session.h"
#include "editor/hit_tests.h"
#include "editor/snapping.h"
#include "support/test_files.h"
#include "workflow/step_transitions.h"

#include <gtest/gtest.h>

#include <functional>
#include <limits>

namespace ampora {
namespace {

using test::DrawingSession;
using test::ParseDrawing;
using test::ShowDrawing;

// A square 80..240 and a 40-unit stub, too short to hold a device.
const std::string kSquare = "80,80-240,80 240,80-240,240 80,240-240,240 80,80-80,240 300,80-340,80";
const std::string kBar = "80,80-240,80";

struct Rule {
    const char* what;
    std::string before;
    std::function<bool(DrawingSession&)> act;
};

using S = DrawingSession;
const Rule kRules[] = {
    {"a drag draws one snapped wire along the nearer axis", "",
     [](S& s) { return s.Wire(81, 79, 243, 110); }},
    {"a drag as steep as it is wide stays horizontal", "",
     [](S& s) { return s.Wire(80, 80, 160, 160); }},
    {"a drag mostly down draws a vertical wire", kBar,
     [](S& s) { return s.Wire(240, 80, 250, 230); }},
    {"a click draws no wire", "", [](S& s) { return s.Wire(297, 300, 300, 298); }},
    // Placing: the device takes the wire's axis and, for a negative value, its second direction.
    {"battery on a horizontal wire", kSquare,
     [](S& s) { return s.Place(kBatteryTool, 161, 79, "12"); }},
    {"negative battery on a vertical wire", kSquare,
     [](S& s) { return s.Place(kBatteryTool, 240, 120, "-1.5"); }},
    {"a resistor with a suffix", kSquare,
     [](S& s) { return s.Place(kResistorTool, 240, 200, "2k"); }},
    {"a negative resistor", kSquare, [](S& s) { return s.Place(kResistorTool, 160, 240, "-3"); }},
    {"a resistor left unanswered", kSquare, [](S& s) { return s.Place(kResistorTool, 80, 120); }},
    {"a current source", kSquare, [](S& s) { return s.Place(kSourceTool, 80, 200, "0.25"); }},
    {"a negative current source", kSquare,
     [](S& s) { return s.Place(kSourceTool, 208, 240, "-2"); }},
    {"a battery of words", kSquare, [](S& s) { return s.Place(kBatteryTool, 160, 80, "twelve"); }},
    {"a source of a bare minus", kSquare,
     [](S& s) { return s.Place(kSourceTool, 240, 160, "-x"); }},
    {"a source beyond single precision", kSquare,
     [](S& s) { return s.Place(kSourceTool, 80, 160, "1e99"); }},
    {"the wire tool places nothing", kSquare, [](S& s) { return s.Place(kWireTool, 120, 80); }},
    {"a 40-unit wire holds no device", kSquare, [](S& s) { return s.Place(kSourceTool, 320, 80); }},
    {"exactly 20 from a wire's end", kSquare, [](S& s) { return s.Place(kResistorTool, 100, 80); }},
    {"24 from a wire's end", kSquare, [](S& s) { return s.Place(kResistorTool, 104, 80, "1"); }},
    {"32 from another device", kSquare + " 6@136,80=1",
     [](S& s) { return s.Place(kResistorTool, 168, 80); }},
    {"40 from another device", kSquare + " 6@136,80=1",
     [](S& s) { return s.Place(kResistorTool, 176, 80, "1"); }},
    // Number tool: a negative value turns a source round; a resistor refuses one.
    {"a negative battery value turns it", kBar + " 3@160,80=9",
     [](S& s) { return s.Number(1, "-5"); }},
    {"turned twice it is back", kBar + " 3@160,80=9",
     [](S& s) { return s.Number(1, "-5") && s.Number(1, "-5"); }},
    {"an empty answer keeps the value", kBar + " 3@160,80=9", [](S& s) { return s.Number(1, ""); }},
    {"a word keeps the value", kBar + " 3@160,80=9", [](S& s) { return s.Number(1, "abc"); }},
    {"a resistor refuses a minus", kBar + " 6@160,80=9", [](S& s) { return s.Number(1, "-4"); }},
    {"a resistor renumbered", kBar + " 6@160,80=9", [](S& s) { return s.Number(1, "470"); }},
    // Move: grabbed 5 right and 7 down of the picture's corner, dropped by that same point.
    {"moved along its wire", kSquare + " 4@160,80=9",
     [](S& s) { return s.Move(1, 149, 71, 189, 71); }},
    {"moved a little, it does not crowd itself", kSquare + " 4@160,80=9",
     [](S& s) { return s.Move(1, 149, 71, 157, 71); }},
    {"a battery dropped on a vertical wire points up", kSquare + " 4@160,80=9",
     [](S& s) { return s.Move(1, 149, 71, 229, 111); }},
    {"a source dropped on a horizontal wire points left", kSquare + " 8@80,160=2",
     [](S& s) { return s.Move(1, 64, 144, 88, 224); }},
    {"dropped too near another device", kSquare + " 9@104,240=2 6@160,240=100",
     [](S& s) { return s.Move(2, 144, 224, 104, 224); }},
    {"dropped off the wires", kSquare + " 6@160,240=100",
     [](S& s) { return s.Move(1, 144, 224, 300, 300); }},
    {"a resistor dropped on a vertical wire", kSquare + " 6@160,240=100",
     [](S& s) { return s.Move(1, 144, 224, 64, 184); }},
    // Stretch: carried devices keep their fraction of the wire, and must still fit there.
    {"hover over a wire end", kBar,
     [](S& s) {
         HoverStretch(s.ws.circuit, s.editor, 243, 77);
         return true;
     }},
    {"hover beside a wire end", kBar,
     [](S& s) {
         HoverStretch(s.ws.circuit, s.editor, 234, 80);
         return true;
     }},
    {"stretched longer", kBar + " 6@120,80=10 3@200,80=5",
     [](S& s) { return s.Stretch(242, 82, 400, 84); }},
    {"stretched to a point", kBar + " 10@160,80=1",
     [](S& s) { return s.Stretch(80, 80, 240, 80); }},
    {"turned onto the other axis", kBar + " 10@160,80=1",
     [](S& s) { return s.Stretch(80, 80, 240, 240); }},
    {"shrunk until its devices come 35 apart", kBar + " 6@120,80=10 3@160,80=5",
     [](S& s) { return s.Stretch(240, 80, 220, 80); }},
    {"shrunk until a device is 18 from the end", kBar + " 6@120,80=10 3@160,80=5",
     [](S& s) { return s.Stretch(80, 80, 168, 80); }},
    {"stretched until a device lands on another's",
     kBar + " 400,40-400,120 6@120,80=10 5@400,80=20",
     [](S& s) { return s.Stretch(80, 80, 480, 80); }},
    {"stretched leftward", kBar + " 6@120,80=10 3@160,80=5",
     [](S& s) { return s.Stretch(80, 80, 16, 80); }},
    {"a carried device exactly 20 from the end", kBar + " 6@120,80=10",
     [](S& s) { return s.Stretch(80, 80, 160, 80); }},
    {"a carried device 22 from the end", kBar + " 6@120,80=10",
     [](S& s) { return s.Stretch(80, 80, 152, 80); }},
    {"a carried device exactly 20 from the lower end", "80,80-80,240 5@80,120=10",
     [](S& s) { return s.Stretch(80, 80, 80, 160); }},
    // Erase and Undo Erase: only the latest erase comes back, once, until a tool is chosen.
    {"erasing nothing", kSquare, [](S& s) { return s.EraseAt(300, 300); }},
    {"a wire goes with its devices", kSquare + " 3@120,80=12 6@200,80=470 5@240,160=100",
     [](S& s) { return s.EraseAt(151, 81); }},
    {"and comes back with them, once", kSquare + " 3@120,80=12 6@200,80=470 5@240,160=100",
     [](S& s) { return s.EraseAt(151, 81) && s.Undo() && !s.Undo(); }},
    {"only the latest erase comes back", kSquare + " 3@120,80=12 5@240,160=100",
     [](S& s) { return s.Erase(1) && s.Erase(2) && s.Undo(); }},
    {"choosing a tool ends the chance", kSquare + " 5@240,160=100",
     [](S& s) {
         s.Erase(1);
         SelectTool(s.editor, kWireTool);
         SelectTool(s.editor, kUndoEraseButton); // runs Undo Erase, keeps the tool
         s.Undo();
         return true;
     }},
    {"centred by whole grid steps", "16,16-96,16 16,16-16,64 3@56,16=1 n@16,16",
     [](S& s) {
         // dx = (500 - 80) / 2 - 16 = 194 -> 192; dy = 40 + (300 - 48) / 2 - 16 = 150 -> 152
         CenterCircuit(s.ws.circuit, 500, 40, 300);
         return true;
     }},
    {"an empty drawing is not centred", "n@0,0",
     [](S& s) {
         CenterCircuit(s.ws.circuit, 500, 40, 300);
         return true;
     }},
};

std::string Escaped(std::string text) {
    for (std::size_t at = 0; (at = text.find("\r\n", at)) != std::string::npos;) {
        text.replace(at, 2, "\\r\\n");
    }
    return text;
}

TEST(EditingTools, EachRuleOfTheToolsHoldsAsHandChecked) {
    std::string dump;
    for (const Rule& rule : kRules) {
        DrawingSession s;
        s.ws.circuit = ParseDrawing(rule.before);
        ASSERT_EQ(ShowDrawing(s.ws.circuit), rule.before) << rule.what;
        const bool acted = rule.act(s);
        const std::string after = ShowDrawing(s.ws.circuit);
        dump += std::string("== ") + rule.what + "\nbefore " + rule.before + "\n";
        dump += acted                  ? "after  " + after
                : after == rule.before ? "refused"
                                       : "refused yet changed " + after;
        dump += "\n";
        std::string typed;
        for (int slot = 1; slot <= s.ws.circuit.NumElements; ++slot) {
            typed += s.editor.ValueText[slot].empty() ? "" : "[" + s.editor.ValueText[slot] + "]";
        }
        dump += typed.empty() ? "" : "typed  " + typed + "\n";
        for (const std::string& question : s.prompts.questions) {
            dump += "asked  " + Escaped(question) + "\n";
        }
        for (const std::string& message : s.prompts.messages) {
            dump += "said   " + message + "\n";
        }
        dump += "editor tool " + std::to_string(s.editor.CurrentTool) + ", drag " +
                std::to_string(s.editor.DragState) + ", undo " +
                std::to_string(s.editor.UndoAvailable) + ", end " + ShortestText(s.editor.EndX) +
                "," + ShortestText(s.editor.EndY) + "\n";
    }
    EXPECT_EQ(dump, test::ExpectedText("editor/editing_rules.txt", dump));
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
    struct Case {
        bool eraseWire; // the top wire with its battery, or the resistor alone
        std::string afterUndo;
    };
    for (const Case& c :
         {Case{true, "undo unavailable; 240,80-240,240 80,240-240,240 80,80-80,240 300,80-340,80 "
                     "5@240,160=100"},
          Case{false, "undone; " + kSquare + " 3@160,80=12 5@240,160=100"}}) {
        DrawingSession s;
        s.ws.circuit = ParseDrawing(kSquare + " 3@160,80=12 5@240,160=100");
        ASSERT_TRUE(c.eraseWire ? s.EraseAt(120, 80) : s.Erase(2));
        ASSERT_EQ(LeaveStep1(s.ws, s.prompts), TransitionResult::Refused);
        MatchUndoToMemory(s.ws.circuit, s.editor);
        const bool offered = s.editor.UndoAvailable == 1;
        const bool undone = s.Undo();
        const std::string outcome = offered && undone     ? "undone"
                                    : !offered && !undone ? "undo unavailable"
                                                          : "inconsistent";
        EXPECT_EQ(outcome + "; " + ShowDrawing(s.ws.circuit), c.afterUndo);
    }
}

} // namespace
} // namespace ampora
