#include "analysis/result_labels.h"
#include "report/circuit_extents.h"
#include "report/report_builder.h"
#include "report/rich_text_document.h"
#include "support/solve_session.h"

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

std::string Between(const std::string& text, const std::string& from, const std::string& to) {
    const std::size_t start = text.find(from);
    const std::size_t end = text.find(to, start);
    if (start == std::string::npos || end == std::string::npos) {
        return "(no section from \"" + from + "\" to \"" + to + "\" in:\n" + text + ")";
    }
    return text.substr(start, end - start);
}

struct BuiltReport {
    test::SolveSession session;
    NamedPictures pictures;
    RichTextDocument document;
    std::string dump;
};

void Build(BuiltReport& report, const std::string& amqText, const std::string& fileName = "") {
    test::Solve(report.session, amqText, 0);
    ASSERT_TRUE(report.session.solved);
    report.session.ws.CurrentFileName = fileName;
    LoadRTBoxWithReport(report.session.ws, report.document, report.pictures);
    report.dump = Dump(report.document);
    // The counting text is the equations window's own; here it only has to be in its place.
    std::string counting = report.session.ws.equations.CountingText;
    for (std::size_t at = 0; (at = counting.find("\r\n", at)) != std::string::npos;) {
        counting.erase(at, 1);
    }
    ASSERT_NE(report.dump.find(counting), std::string::npos);
    report.dump.replace(report.dump.find(counting), counting.size(), "<counting text>");
}

const std::string kVoltageTail =
    "\n\n[Times New Roman 12 b]The voltage:[Times New Roman 12]\n"
    "The number beside each battery, current source or resistor is the voltage difference "
    "between the two ends of that battery, current source or resistor (in volts).  The head of "
    "the arrow gives the end with the higher voltage.  The number beside each node is the "
    "voltage at that node.\n\n\n<TAB>[picture: circuit in view 2]\n\n\n"
    "\n\n[Times New Roman 12 b]The electric current:[Times New Roman 12]\n"
    "The number beside each battery, current source or resistor is the magnitude of the "
    "current flowing through that battery, current source or resistor (in amperes).  The "
    "arrow gives the direction.\n\n\n<TAB>[picture: circuit in view 1]\n\n\n";

TEST(ReportBuilder, AnUntitledCircuitWithOneEquationReadsInFull) {
    BuiltReport report;
    Build(report, test::ExampleText("voltage_divider.amq"));
    // 12 V through 1000 ohms into two 2000-ohm resistors in parallel: V1 = 6 V, 6 mA,
    // 72 mW delivered and 36 + 18 + 18 mW dissipated.
    EXPECT_EQ(report.dump,
              "[Times New Roman 18 b]Ampora\n"
              "[Times New Roman 12]\n"
              "[Times New Roman 12 b]The circuit:[Times New Roman 12]\n"
              "\n<TAB>[picture: circuit in view 0]\n\n\n"
              "[Times New Roman 12 b]Counting unknowns and equations:[Times New Roman 12]\n\n"
              "<counting text>\n"
              "[Times New Roman 12 b]The equations and their solutions:[Times New Roman 12]\n\n"
              "Applying Kirchhoff's current law at node V1 results in this equation:\n"
              "\n<TAB>[picture: equations 1]\n\n"
              "Collecting terms in the above equation then results in this equation:\n"
              "\n<TAB>[picture: equations 2]\n\n"
              "Solving this equation gives  V1 = 6\n\n" +
                  kVoltageTail +
                  "[Times New Roman 12 b]The electric power:[Times New Roman 12]\n"
                  "The number beside each battery or current source gives the power delivered "
                  "to the circuit by that battery or current source (in watts).  The total "
                  "power delivered by the sources is 0.072 watts.  The number beside each "
                  "resistor gives the power dissipated by that resistor (again in watts).  The "
                  "total power dissipated by the resistors is 0.072 watts.\n"
                  "\n\n<TAB>[picture: circuit in view 3 (0.072000 in)]\n\n\n");
}

TEST(ReportBuilder, DevicesReadDifferentlyAreListedUnderTheCircuit) {
    BuiltReport report;
    std::string text = test::ExampleText("voltage_divider.amq");
    // The left 2000-ohm resistor becomes a source of 0 A, and a battery sits on a corner.
    text.replace(text.find("240,160,5,2000"), 14, "240,160,7,0");
    text.replace(text.find("4\r\n160,80"), 3, "5\r\n400,240,3,1.5\r\n");
    Build(report, text);
    EXPECT_EQ(
        Between(report.dump, "[picture: circuit in view 0]", "Counting"),
        "[picture: circuit in view 0]\n\n\n"
        "[Times New Roman 12 b]How the drawing was read:[Times New Roman 12]\n"
        "The battery of 1.5 V at (400, 240) lies where wires meet, so it belongs to no branch "
        "and is treated as wire.\n"
        "The current source of 0 A at (240, 160): a current source of 0 A is analysed as a "
        "plain wire; give it a value or erase it.\n\n"
        "[Times New Roman 12 b]");
}

TEST(ReportBuilder, ATitledCircuitNamesItsFileAfterTheHeadingOnOneLine) {
    BuiltReport report;
    Build(report, test::ExampleText("voltage_divider.amq"), "/home/class/divider.amq");
    EXPECT_EQ(Between(report.dump, "Ampora", "The circuit:"),
              "Ampora\n[Times New Roman 12]\n"
              "[Times New Roman 12 b]Name of file containing circuit:[Times New Roman 12] "
              "/home/class/divider.amq\n\n[Times New Roman 12 b]");
}

TEST(ReportBuilder, SeveralEquationsBringTheMatricesAsMonospacedTables) {
    BuiltReport report;
    Build(report, test::ExampleText("wheatstone_bridge.amq"));
    // By hand: row V2 is 1/100 + 1/200 + 1/50 = 0.035, -1/50, 10/100; row V3 is -1/50,
    // 1/150 + 1/250 + 1/50 = 0.0307, 10/150; solving gives V2 = 6.53 and V3 = 6.44.
    EXPECT_EQ(
        Between(report.dump, "The equations and their solutions:", "The voltage:"),
        "The equations and their solutions:[Times New Roman 12]\n\n"
        "Applying Kirchhoff's current law at node V2, node V3, respectively, results in these "
        "equations:\n\n<TAB>[picture: equations 1]\n\n"
        "Collecting terms in the above equations then results in these equations:\n"
        "\n<TAB>[picture: equations 2]\n\n"
        "Converting fractions to decimal form and setting up the augmented matrix which "
        "describes this system of equations gives:\n\n"
        "[Courier New 12]<TAB>0.035    -0.02     0.1   \n"
        "<TAB>-0.02    0.0307    0.0667\n"
        "\nCarrying out Gauss-Jordan elimination reduces the augmented matrix to this reduced "
        "row echelon form (RREF):\n\n"
        "<TAB>1    0    6.53\n"
        "<TAB>0    1    6.44\n"
        "\nInterpreting the RREF form gives the following solutions:\n\n"
        "<TAB>V2 = 6.53\n"
        "<TAB>V3 = 6.44\n"
        "\n\n[Courier New 12 b]");
}

TEST(ReportBuilder, AskedForItTheReportListsEachRowOperationWithItsMatrix) {
    BuiltReport report;
    Build(report, test::ExampleText("wheatstone_bridge.amq"));
    report.document = RichTextDocument();
    report.session.ws.preferences.ReportRowOperations = true;
    LoadRTBoxWithReport(report.session.ws, report.document, report.pictures);
    // The steps worked by hand in tests/data/row_operations, in decimals: 4/7 = 0.571,
    // 20/7 = 2.86, 101/5250 = 0.0192, 13/105 = 0.124.
    EXPECT_EQ(Between(Dump(report.document), "Gauss-Jordan elimination works", "Carrying out"),
              "Gauss-Jordan elimination works on this matrix one row operation at a time (Rk "
              "stands for row k).  Each step is followed by the matrix it leaves:\n\n"
              "Step 1:  R1 ← R1 ÷ 0.035\n"
              "<TAB>1        -0.571    2.86  \n"
              "<TAB>-0.02    0.0307    0.0667\n\n"
              "Step 2:  R2 ← R2 + 0.02·R1\n"
              "<TAB>1    -0.571    2.86 \n"
              "<TAB>0    0.0192    0.124\n\n"
              "Step 3:  R2 ← R2 ÷ 0.0192\n"
              "<TAB>1    -0.571    2.86\n"
              "<TAB>0    1         6.44\n\n"
              "Step 4:  R1 ← R1 + 0.571·R2\n"
              "<TAB>1    0    6.53\n"
              "<TAB>0    1    6.44\n\n\n");
    // Off, as it starts, the report stays as it was.
    EXPECT_EQ(Between(report.dump, "Converting", "Carrying").find("Step"), std::string::npos);
}

TEST(ReportBuilder, TextAfterATableCarriesOnInCourierNew) {
    BuiltReport report;
    Build(report, test::ExampleText("wheatstone_bridge.amq"));
    EXPECT_EQ(Between(report.dump, "The voltage:", "The number beside"),
              "The voltage:[Courier New 12]\n");
    EXPECT_EQ(report.document.Runs().back().Format.FontName, "Courier New");
}

TEST(ReportBuilder, WithoutUnknownsThereIsNoEquationSection) {
    BuiltReport report;
    // The battery alone fixes the only node that is not the reference.
    Build(report, test::ExampleText("voltage_divider.amq", "4\r\n160,80,6,1000\r\n", "3\r\n"));
    EXPECT_EQ(report.session.ws.equations.NumUnknowns, 0);
    EXPECT_EQ(Between(report.dump, "Counting unknowns", "The voltage:"),
              "Counting unknowns and equations:[Times New Roman 12]\n\n<counting text>\n"
              "\n\n[Times New Roman 12 b]");
    EXPECT_EQ(report.pictures.asked,
              (std::vector<std::string>{"circuit in view 0", "circuit in view 2",
                                        "circuit in view 1", "circuit in view 3 (0.144000 in)"}));
}

TEST(ReportBuilder, TheViewTheWindowShowedComesBackAfterwards) {
    for (const int view : {kViewValues, kViewCurrents, kViewVoltages, kViewPower}) {
        test::SolveSession session;
        test::Solve(session, test::ExampleText("supernode.amq"), 0);
        ASSERT_TRUE(session.solved);
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

TEST(ReportBuilder, TheFontSetDecidesTheFaceAndSizes) {
    BuiltReport report;
    report.session.ws.preferences.FontIndex = 1;
    Build(report, test::ExampleText("voltage_divider.amq"));
    EXPECT_EQ(report.dump.substr(0, 40), "[Arial 18 b]Ampora\n[Arial 10]\n[Arial 10 ");
}

TEST(ReportWriters, StyleWordsSetBoldItalicUnderlineAndColourForTheTextOnly) {
    RichTextDocument box;
    RTBText(box, "heading", 1, 1, "TFF0");
    RTBText(box, "all", 0, 0, "TTT12");
    RTBText(box, "odd", 0, 0, "xTx");
    RTBText(box, "", 2, 1, "TTT9");
    RTBText(box, "bad colour", 0, 0, "FFFz");
    EXPECT_EQ(Dump(box), "[Arial 10]\n[Arial 10 b]heading[Arial 10]\n"
                         "[Arial 10 b i u colour 12]all[Arial 10 i]odd[Arial 10]\n\n\nbad colour");
}

TEST(ReportWriters, ATitleIsLargeAndBoldAndEndsItsOwnLine) {
    RichTextDocument box;
    const FontSet set = InitFontSets()[4];
    RTBTitle(box, set, "Ampora", 2, 1);
    EXPECT_EQ(Dump(box), "[Arial 16]\n\n[Arial 24 b]Ampora\n[Arial 16]\n");
}

TEST(ReportWriters, APictureIsIndentedAndEndsItsLineWithOneMoreBreak) {
    RichTextDocument box;
    RTBPicture(box, {"png", 4, 3}, 1, 2);
    RTBPicture(box, {"", 0, 0}, 0, 0);
    EXPECT_EQ(Dump(box), "[Arial 10]\n<TAB>[picture: png]\n\n\n<TAB>\n");
    EXPECT_EQ(box.Length(), 8u);
}

TEST(ReportWriters, FillUpPadsOrCutsToTheWidthInCharacters) {
    EXPECT_EQ(FillUp("ab", 4), "ab  ");
    EXPECT_EQ(FillUp("abcd", 4), "abcd");
    EXPECT_EQ(FillUp("abcdef", 4), "abcd");
    EXPECT_EQ(FillUp("10 Ω", 4), "10 Ω");
    EXPECT_EQ(FillUp("Ω", 3), "Ω  ");
    EXPECT_EQ(FillUp("ΩΩΩ", 2), "ΩΩ");
    EXPECT_EQ(FillUp("ab", 0), "");
    EXPECT_EQ(FillUp("ab", -3), "");
}

TEST(ReportWriters, TablesLineUpTheirColumnsFourSpacesApart) {
    RichTextDocument box;
    RTBTable(box, {{"1", "-0.25", "x"}, {"100", "2"}, {}});
    RTBTable(box, {{"V1 = 5"}, {"Va = 10.5"}});
    RTBTable(box, {});
    EXPECT_EQ(Dump(box), "[Courier New 10]<TAB>1      -0.25    x\n"
                         "<TAB>100    2         \n"
                         "<TAB>                 \n"
                         "<TAB>V1 = 5   \n"
                         "<TAB>Va = 10.5\n");
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

} // namespace
} // namespace ampora

namespace ampora {
namespace {

TEST(CircuitExtents, WiresDevicesAndLabelsWidenTheBoxWithAMarginOfSix) {
    Circuit circuit;
    circuit.Wires[1] = {80, 80, 240, 80, 1};
    circuit.Wires[2] = {0, 0, 900, 900, 0}; // an erased slot counts for nothing
    circuit.NumWires = 2;
    circuit.Elements[2].Kind = kResistorHorizontal;
    circuit.Elements[2].X = 160;
    circuit.Elements[2].Y = 80; // its picture covers 144..176 by 64..96
    circuit.NumElements = 2;
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
