#include "practice/practice_circuit.h"
#include "practice/worksheet.h"
#include "report/rich_text_document.h"

#include <gtest/gtest.h>

namespace ampora {
namespace {

// Pictures named by what they show.
struct NamedPictures : ReportPictures {
    ReportPicture Circuit(const Workspace& ws) override {
        std::string names;
        for (int slot = 1; slot <= ws.circuit.NumNodes; ++slot) {
            names += " " + ws.circuit.NodeLabels[slot].Name;
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
    EXPECT_EQ(Dump(sheet), "Practice circuits\n"
                           "\n"
                           "Name: ______________________________    Date: ______________\n"
                           "\n"
                           "Find the voltage of every node by nodal analysis.  The node named 0 "
                           "is the reference node, at 0 V.\n"
                           "\n"
                           "Circuit 1:\n"
                           "\t[circuit in view 0, nodes V1 V2 0]\n"
                           "\n\n\n\n\n\n\n\n\n"
                           "Circuit 2:\n"
                           "\t[circuit in view 0, nodes V1 V2 0]\n"
                           "\n\n\n\n\n\n\n\n\n");
    EXPECT_EQ(Dump(key), "Practice circuits: answer key\n"
                         "\n\n"
                         "Circuit 1:\n"
                         "\t[circuit in view 0, nodes V1 V2 0]\n"
                         "\n"
                         "The node voltages:\n"
                         "\tV1 = 66.6 V\n"
                         "\tV2 = 50.6 V\n"
                         "\n"
                         "The KCL equations:\n"
                         "\t[equations 1]\n"
                         "\n"
                         "The augmented matrix:\n"
                         "\t0.0673    4.48\n"
                         "\n\n"
                         "Circuit 2:\n"
                         "\t[circuit in view 0, nodes V1 V2 0]\n"
                         "\n"
                         "The node voltages:\n"
                         "\tV1 = 0 V\n"
                         "\tV2 = 3 V\n"
                         "\n"
                         "The KCL equations:\n"
                         "\t[equations 1]\n"
                         "\n"
                         "The augmented matrix:\n"
                         "\t1.12    0\n"
                         "\n\n");
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
