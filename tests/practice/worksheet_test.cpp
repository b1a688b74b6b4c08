#include "practice/practice_circuit.h"
#include "practice/worksheet.h"
#include "report/rich_text_document.h"
#include "support/test_files.h"

#include <gtest/gtest.h>

namespace ampora {
namespace {

// Pictures named by what they show.
struct NamedPictures : ReportPictures {
    ReportPicture Circuit(const Workspace& ws) override {
        std::string names;
        for (int slot = 1; slot <= ws.Circuit.NumNodes; ++slot) {
            names += " " + ws.Circuit.NodeLabels[slot].Name;
        }
        return {"circuit in view " + std::to_string(ws.ViewMode) + ", nodes" + names, 10, 10};
    }
    ReportPicture Equation(const Workspace&, int which) override {
        return {"equations " + std::to_string(which), 10, 10};
    }
};

std::string Dump(const RichTextDocument& document) {
    std::string text;
    for (const RichTextRun& run : document.Runs()) {
        text += run.IsPicture() ? "[" + run.Png + "]" : run.Text;
    }
    std::string lines; // line ends as "\n", trailing blanks gone
    for (const char c : text) {
        if (c == '\r') {
            continue;
        }
        if (c == '\n') {
            while (!lines.empty() && lines.back() == ' ') {
                lines.pop_back();
            }
        }
        lines += c;
    }
    return lines;
}

TEST(Worksheet, TheSheetLeavesRoomToWorkAndTheKeyHoldsVoltagesEquationsAndMatrix) {
    std::vector<Workspace> circuits = MakeWorksheetCircuits(2, {3, 1, 1}, 5);
    NamedPictures pictures;
    RichTextDocument sheet, key;
    WriteWorksheet(circuits, sheet, pictures);
    WriteAnswerKey(circuits, key, pictures);
    // Room to work below each circuit on the sheet; voltages, equations and matrix in the key.
    const std::string dump = Dump(sheet) + "---- answer key ----\n" + Dump(key);
    EXPECT_EQ(dump, test::ExpectedText("practice/worksheet.txt", dump));
}

TEST(Worksheet, CountsNotGivenAreDrawnSmallEnoughToWorkByHand) {
    const struct {
        WorksheetShape given;
        int fewestNodes, mostNodes, mostSuperNodes, mostSources;
    } rows[] = {
        {{}, 2, 5, 1, 2},
        {{7, std::nullopt, std::nullopt}, 7, 7, 1, 2},
        {{std::nullopt, 3, std::nullopt}, 6, 6, 3, 0}, // the smallest circuit with 3 supernodes
        {{std::nullopt, std::nullopt, 4}, 5, 5, 1, 4},
        {{2, std::nullopt, std::nullopt}, 2, 2, 1, 2},
    };
    for (const auto& row : rows) {
        PracticeRandom random(9);
        for (int k = 0; k < 200; ++k) {
            const PracticeShape shape = DrawWorksheetShape(row.given, random);
            ASSERT_EQ(ShapeRefusal(shape), "");
            EXPECT_GE(shape.Nodes, row.fewestNodes);
            EXPECT_LE(shape.Nodes, row.mostNodes);
            EXPECT_LE(shape.SuperNodes, row.mostSuperNodes);
            EXPECT_LE(shape.Sources, row.mostSources);
            EXPECT_EQ(shape.SuperNodes, row.given.SuperNodes.value_or(shape.SuperNodes));
            EXPECT_EQ(shape.Sources, row.given.Sources.value_or(shape.Sources));
            EXPECT_TRUE(row.given.Nodes || shape.SuperNodes + 1 < shape.Nodes)
                << "nothing left to solve";
        }
    }
}

} // namespace
} // namespace ampora
