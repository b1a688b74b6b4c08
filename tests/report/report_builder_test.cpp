#include "analysis/result_labels.h"
#include "report/circuit_extents.h"
#include "report/report_builder.h"
#include "report/rich_text_document.h"
#include "support/drawn_circuit.h"
#include "support/solve_session.h"
#include "support/test_files.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace ampora {
namespace {

// Stands in for the window's renderer: each picture's bytes name what was asked for, with the
// view the workspace was in and the power totals known at that moment.
struct NamedPictures : ReportPictures {
    std::vector<std::string> asked;
    ReportPicture Circuit(const Workspace& ws) override {
        std::string name = "circuit in view " + std::to_string(ws.ViewMode);
        if (ws.ViewMode == kViewPower) {
            name += " (" + std::to_string(ws.PowerIn) + " in)";
        }
        asked.push_back(name);
        return {name, 100, 50};
    }
    ReportPicture Equation(const Workspace&, int which) override {
        const std::string name = "equations " + std::to_string(which);
        asked.push_back(name);
        return {name, 80, 40};
    }
};

std::string FormatName(const TextFormat& f) {
    std::string name = f.FontName + " " + std::to_string(static_cast<int>(f.FontSize));
    name += f.Bold ? " b" : "";
    name += f.Italic ? " i" : "";
    name += f.Underline ? " u" : "";
    name += f.Colour != 0 ? " colour " + std::to_string(f.Colour) : "";
    return name;
}

// The document as readable text: [format] where the format changes, <TAB> for a tab,
// [picture: its bytes] for a picture, paragraph breaks as line ends.
std::string Dump(const RichTextDocument& document) {
    std::string dump;
    const TextFormat* last = nullptr;
    for (const RichTextRun& run : document.Runs()) {
        if (run.IsPicture()) {
            dump += "[picture: " + run.Png + "]";
            continue;
        }
        if (last == nullptr || !(*last == run.Format)) {
            dump += "[" + FormatName(run.Format) + "]";
            last = &run.Format;
        }
        for (const char c : run.Text) {
            dump += c == '\t' ? std::string("<TAB>") : std::string(1, c);
        }
    }
    return dump;
}

struct Case {
    const char* what;
    std::string amq;
    const char* fileName;
    int fontIndex;
    bool rowOperations;
};

// The whole report of each case as readable text, checked by hand in
// tests/data/report/reports.txt. The counting text is the equations window's own; here it
// only has to be in its place.
std::string Report(const Case& c) {
    test::SolveSession session;
    session.ws.Preferences.FontIndex = static_cast<std::int16_t>(c.fontIndex);
    session.ws.Preferences.ReportRowOperations = c.rowOperations;
    test::Solve(session, c.amq, 0);
    if (!session.solved) {
        return "not solved\n";
    }
    session.ws.CurrentFileName = c.fileName;
    NamedPictures pictures;
    RichTextDocument document;
    LoadRTBoxWithReport(session.ws, document, pictures);
    std::string dump = Dump(document);
    std::string counting = session.ws.Equations.CountingText;
    for (std::size_t at = 0; (at = counting.find("\r\n", at)) != std::string::npos;) {
        counting.erase(at, 1);
    }
    const std::size_t at = dump.find(counting);
    if (at == std::string::npos) {
        return "no counting text in\n" + dump;
    }
    dump.replace(at, counting.size(), "<counting text>");
    dump += "\n-- pictures asked:";
    for (const std::string& picture : pictures.asked) {
        dump += " [" + picture + "]";
    }
    return dump + "\n";
}

TEST(ReportBuilder, WholeReportsReadAsHandChecked) {
    std::string misread = test::ExampleText("voltage_divider.amq");
    misread.replace(misread.find("240,160,5,2000"), 14, "240,160,7,0");
    misread.replace(misread.find("4\r\n160,80"), 3, "5\r\n400,240,3,1.5\r\n");
    const Case cases[] = {
        // 12 V through 1000 ohms into two 2000-ohm resistors in parallel: V1 = 6 V, 6 mA,
        // 72 mW delivered and 36 + 18 + 18 mW dissipated.
        {"an untitled circuit with one equation", test::ExampleText("voltage_divider.amq"), "", 3,
         false},
        // The left 2000-ohm resistor becomes a source of 0 A, and a battery sits on a corner.
        {"devices read differently are listed under the circuit", misread, "", 3, false},
        {"a titled circuit in the first font set", test::ExampleText("voltage_divider.amq"),
         "/home/class/divider.amq", 1, false},
        // The battery alone fixes the only node that is not the reference.
        {"no unknowns, no equations",
         test::ExampleText("voltage_divider.amq", "4\r\n160,80,6,1000\r\n", "3\r\n"), "", 3, false},
        // By hand: row V2 is 1/100 + 1/200 + 1/50 = 0.035, -1/50, 10/100; row V3 is -1/50,
        // 1/150 + 1/250 + 1/50 = 0.0307, 10/150; solving gives V2 = 6.53 and V3 = 6.44. The
        // text after a table carries on in Courier New.
        {"several equations bring the matrices", test::ExampleText("wheatstone_bridge.amq"), "", 3,
         false},
        // The steps worked by hand in tests/data/row_operations, in decimals: 4/7 = 0.571,
        // 20/7 = 2.86, 101/5250 = 0.0192, 13/105 = 0.124.
        {"asked for, each row operation with its matrix",
         test::ExampleText("wheatstone_bridge.amq"), "", 3, true},
    };
    std::string dump;
    for (const Case& c : cases) {
        dump += std::string("==== ") + c.what + "\n" + Report(c);
    }
    EXPECT_EQ(dump, test::ExpectedText("report/reports.txt", dump));
}

TEST(ReportBuilder, TheViewTheWindowShowedComesBackAfterwards) {
    test::SolveSession session;
    test::Solve(session, test::ExampleText("supernode.amq"), 0);
    ASSERT_TRUE(session.solved);
    for (const int view : {kViewValues, kViewCurrents, kViewVoltages, kViewPower}) {
        session.ws.ViewMode = static_cast<std::int16_t>(view);
        const std::vector<std::string> labelsBefore = WriteLabels(session.ws, 3);
        const double powerInBefore = session.ws.PowerIn;
        NamedPictures pictures;
        RichTextDocument document;
        LoadRTBoxWithReport(session.ws, document, pictures);
        EXPECT_EQ(session.ws.ViewMode, view);
        EXPECT_EQ(session.ws.PowerIn, powerInBefore) << "view " << view;
        EXPECT_EQ(WriteLabels(session.ws, 3), labelsBefore) << "view " << view;
    }
}

// Style words set bold, italic, underline and colour for their text only; a title is large
// and bold and ends its own line; a picture is indented and ends its line with one more break;
// tables line their columns up four spaces apart. Checked by hand in tests/data/report/writers.txt.
TEST(ReportWriters, EachPieceIsWrittenInItsFormat) {
    RichTextDocument text, title, pictures, tables;
    RTBText(text, "heading", 1, 1, "TFF0");
    RTBText(text, "all", 0, 0, "TTT12");
    RTBText(text, "odd", 0, 0, "xTx");
    RTBText(text, "", 2, 1, "TTT9");
    RTBText(text, "bad colour", 0, 0, "FFFz");
    RTBTitle(title, InitFontSets()[4], "Ampora", 2, 1);
    RTBPicture(pictures, {"png", 4, 3}, 1, 2);
    RTBPicture(pictures, {"", 0, 0}, 0, 0);
    RTBTable(tables, {{"1", "-0.25", "x"}, {"100", "2"}, {}});
    RTBTable(tables, {{"V1 = 5"}, {"Va = 10.5"}});
    RTBTable(tables, {});
    const std::string dump = "== text\n" + Dump(text) + "\n== a title\n" + Dump(title) +
                             "\n== pictures\n" + Dump(pictures) + "\n== tables\n" + Dump(tables);
    EXPECT_EQ(dump, test::ExpectedText("report/writers.txt", dump));
    EXPECT_EQ(pictures.Length(), 8u);
}

TEST(ReportWriters, FillUpPadsOrCutsToTheWidthInCharacters) {
    std::string out;
    const std::pair<const char*, int> cases[] = {{"ab", 4}, {"abcd", 4}, {"abcdef", 4}, {"10 Ω", 4},
                                                 {"Ω", 3},  {"ΩΩΩ", 2},  {"ab", 0},     {"ab", -3}};
    for (const auto& [text, width] : cases) {
        out += "[" + FillUp(text, width) + "]";
    }
    EXPECT_EQ(out, "[ab  ][abcd][abcd][10 Ω][Ω  ][ΩΩ][][]");
}

TEST(ReportWriters, ATableKeepsToTwentyRowsOfTwentyOneColumns) {
    ReportGrid grid(25, std::vector<std::string>(30, "7"));
    grid[20][0] = "row 21";
    grid[0][21] = "column 22";
    RichTextDocument box;
    RTBTable(box, grid);
    const std::string dump = Dump(box);
    EXPECT_EQ(dump.find("row 21"), std::string::npos);
    EXPECT_EQ(dump.find("column 22"), std::string::npos);
    EXPECT_EQ(box.Length(), 20u * (1 + 21 + 20 * 4 + 1));
}

TEST(CircuitExtents, WiresDevicesAndLabelsWidenTheBoxWithAMarginOfSix) {
    // An erased wire counts for nothing; the resistor's picture covers 144..176 by 64..96.
    Circuit circuit =
        test::Drawn({{80, 80, 240, 80}, {0, 0, 900, 900}}, {{kResistorHorizontal, 1, 160, 80}});
    EraseWireSlot(circuit, 2);
    float top = 0, bottom = 0, left = 0, right = 0;
    GetCircuitExtents(circuit, {{170, 100, 20, 10}, {60, 70, 5, 5}}, top, bottom, left, right);
    EXPECT_EQ((std::vector<float>{left, top, right, bottom}),
              (std::vector<float>{54, 58, 246, 116}));

    GetCircuitExtents(Circuit{}, {}, top, bottom, left, right);
    EXPECT_EQ((std::vector<float>{left, top, right, bottom}),
              (std::vector<float>{9994, 9994, 6, 6}));
}

} // namespace
} // namespace ampora
