// A value as the student types it, followed to every place it shows again: the file, the
// label of the reopened drawing, the Number tool's next answer, the views of step 3 and the
// equations. Each place must read as a person writes the number.

#include "analysis/result_labels.h"
#include "document/amq_file.h"
#include "editor/drawing_session.h"
#include "editor/value_labels.h"
#include "support/case_file.h"
#include "support/solve_session.h"
#include "support/test_files.h"

#include <gtest/gtest.h>

namespace ampora {
namespace {

// Two nodes, (80,0) and (80,160). Left: a battery over a resistor; middle: a current
// source; right: a 10 ohm resistor.
const char* const kThreeDevicesToType =
    "80,0-0,0 0,0-0,160 0,160-80,160 80,0-80,160 80,0-160,0 160,0-160,160 "
    "160,160-80,160 1@0,48=1 5@0,112=1 7@80,80=1 5@160,80=10";

// Types the text into the battery, the left resistor and the source with the Number tool,
// saves, reopens, and solves; then lists what each place shows.
std::string EveryPlace(const std::string& typed) {
    test::TempDir dir;
    Circuit drawn = test::ParseDrawing(kThreeDevicesToType);
    EditorState editor;
    test::ScriptedPrompts typing;
    for (int slot = 1; slot <= 3; ++slot) {
        typing.textAnswers.push_back(typed);
        RenumberDevice(drawn, editor, typing, slot);
    }
    const std::string path = (dir / "typed.amq").string();
    if (!SaveToIniFile(drawn, path).saved) {
        return "not saved";
    }
    const std::string file = test::ReadBytes(path);

    test::SolveSession session;
    test::Solve(session, file, 1);
    Workspace& ws = session.ws;
    const std::size_t from = file.find("\r\n0,48,") + 2;
    std::string out = "file " + file.substr(from, file.find("\r\n160,80,5,10") - from);
    out.replace(out.find("\r\n"), 2, " | ").replace(out.find("\r\n"), 2, " | ");
    out += "\nreopened " + ValueLabelText(ws.Circuit.Elements[1], "") + " | " +
           ValueLabelText(ws.Circuit.Elements[2], "") + " | " +
           ValueLabelText(ws.Circuit.Elements[3], "");
    EditorState reopened;
    test::ScriptedPrompts asking;
    RenumberDevice(ws.Circuit, reopened, asking, 2);
    out += "\nnumber tool " + asking.questions.at(0);
    if (!session.solved) {
        return out + "\nnot solved: " + session.prompts.messages.at(0);
    }
    ws.ViewMode = kViewValues;
    const std::vector<std::string> values = WriteLabels(ws, 3);
    ws.ViewMode = kViewVoltages;
    const std::vector<std::string> voltages = WriteLabels(ws, 3);
    out += "\nview 0 " + values[1] + " | " + values[2] + " | " + values[3];
    out += "\nview 2 battery " + voltages[1];
    out += "\nequation " + ws.Equations.FirstWritten.at(0);
    out += "\ncollected " + ws.Equations.Collected.at(0);
    return out + "\n";
}

// Each value of tests/data/editor/typed_values.txt and the places it showed, checked by hand.
TEST(TypedValues, ShowAsAPersonWritesThemWhereverTheyAppear) {
    const std::string name = "editor/typed_values.txt";
    const std::string dump = test::ReplayCases(name, {}, [](const std::string& title, const auto&) {
        return EveryPlace(title.substr(6));
    });
    ASSERT_GT(dump.size(), 500u);
    EXPECT_EQ(dump, test::ExpectedText(name, dump));
}

// Sums of singles carry rounding noise past the seventh digit; what is written shows the
// seven digits a single holds. Two batteries of 1.1 V and 2.2 V in series join V1 and V2;
// two resistors of 1.1 and 2.2 ohms in series lead from V2 to the reference. Checked by
// hand in tests/data/editor/sums_of_singles.txt.
TEST(TypedValues, SumsOfSinglesShowSevenDigitsAtMost) {
    test::SolveSession session;
    const Circuit circuit =
        test::ParseDrawing("80,0-0,0 0,0-0,160 0,160-80,160 80,0-80,160 80,0-240,0 240,0-240,160 "
                           "240,160-80,160 240,0-400,0 "
                           "400,0-400,160 400,160-240,160 7@0,80=0.0001 5@80,80=100000 4@128,0=1.1 "
                           "4@192,0=2.2 5@400,48=1.1 "
                           "5@400,112=2.2 5@240,80=1000000");
    test::Solve(session, CircuitFileText(circuit), 1);
    ASSERT_TRUE(session.solved) << session.prompts.messages.at(0);
    const Workspace& ws = session.ws;
    std::string out;
    for (std::size_t v = 0; v < ws.Equations.EqnVars.size(); ++v) {
        out += ws.Equations.FirstWritten[v] + "\n" + ws.Equations.Collected[v] + "\n";
    }
    const std::string& counting = ws.Equations.CountingText;
    const std::size_t fact = counting.find("by using the fact that ");
    ASSERT_NE(fact, std::string::npos);
    out += counting.substr(fact, counting.find(".  Doing", fact) - fact);
    EXPECT_EQ(out, test::ExpectedText("editor/sums_of_singles.txt", out));
}

} // namespace
} // namespace ampora
