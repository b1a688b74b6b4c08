#include "practice/worksheet.h"

#include "analysis/format_number.h"
#include "analysis/result_labels.h"
#include "equations/supernode_queries.h"
#include "practice/practice_circuit.h"
#include "report/font_sets.h"

#include <algorithm>
#include <cmath>
#include <stdexcept>

namespace ampora {

namespace {

// The sizes a class works by hand, unless a given count needs more.
constexpr int kHandNodes = 5;
constexpr int kHandSuperNodes = 1;
constexpr int kHandSources = 2;

std::vector<PracticeShape> ShapesFor(const WorksheetShape& shape, bool byHand) {
    std::vector<PracticeShape> shapes;
    for (int n = kMinPracticeNodes; n <= kMaxPracticeNodes; ++n) {
        for (int s = 0; s <= kMaxPracticeSuperNodes; ++s) {
            for (int k = 0; k <= kMaxPracticeSources; ++k) {
                const bool given = shape.Nodes.value_or(n) == n &&
                                   shape.SuperNodes.value_or(s) == s &&
                                   shape.Sources.value_or(k) == k;
                // Two nodes joined by a battery leave nothing to solve.
                const bool small = (shape.Nodes || (n <= kHandNodes && s + 1 < n)) &&
                                   (shape.SuperNodes || s <= kHandSuperNodes) &&
                                   (shape.Sources || k <= kHandSources);
                if (given && (small || !byHand) && ShapeRefusal({n, s, k}).empty()) {
                    shapes.push_back({n, s, k});
                }
            }
        }
    }
    return shapes;
}

void StartFont(RichTextSink& box, const FontSet& fontSet) {
    TextFormat font;
    font.FontName = fontSet.FontName;
    font.FontSize = fontSet.NormalSize;
    box.SetFormat(font);
}

// The diagram with element values and node names, as the report shows the circuit.
ReportPicture CircuitWithValues(Workspace& ws, ReportPictures& pictures) {
    ws.ViewMode = kViewValues;
    WriteLabels(ws, ws.Preferences.SigFigs);
    return pictures.Circuit(ws);
}

// The student finds the supernodes: the sheet's drawing does not mark their batteries red.
Workspace WithoutSupernodeMarks(const Workspace& ws) {
    Workspace unmarked = ws;
    for (int b = 1; b <= unmarked.Topology.NumBranches; ++b) {
        unmarked.Topology.Branches[b].CurrentName.clear();
    }
    return unmarked;
}

// A fixed-width table small enough for its widest line to fit the text column of A4 and
// Letter paper beside its tab, rather than wrap in the middle of a matrix row.
constexpr float kTableRoomPoints = 460;
constexpr float kFixedWidthShare = 0.6f; // of the font size, for each character

void WriteFittingTable(RichTextSink& box, const ReportGrid& grid, const FontSet& fontSet) {
    std::vector<std::size_t> widths;
    for (const auto& row : grid) {
        widths.resize(std::max(widths.size(), row.size()), 0);
        for (std::size_t c = 0; c < row.size(); ++c) {
            widths[c] = std::max(widths[c], row[c].size());
        }
    }
    std::size_t line = 0;
    for (const std::size_t width : widths) {
        line += width + 4; // the cells' gap, as the report writes its tables
    }
    TextFormat format = box.Format();
    const float fitting = kTableRoomPoints / (kFixedWidthShare * static_cast<float>(line));
    format.FontSize = std::min(fontSet.NormalSize, std::floor(fitting * 2) / 2);
    box.SetFormat(format);
    RTBTable(box, grid);
    StartFont(box, fontSet); // the table leaves its font behind
}

std::string CircuitHeading(std::size_t k) {
    return "Circuit " + std::to_string(k + 1);
}

} // namespace

std::string WorksheetShapeRefusal(const WorksheetShape& shape) {
    if (!ShapesFor(shape, false).empty()) {
        return "";
    }
    // The counts given, with the others as small as they go, say why.
    return ShapeRefusal({shape.Nodes.value_or(kMinPracticeNodes), shape.SuperNodes.value_or(0),
                         shape.Sources.value_or(0)});
}

PracticeShape DrawWorksheetShape(const WorksheetShape& shape, PracticeRandom& random) {
    std::vector<PracticeShape> shapes = ShapesFor(shape, true);
    if (shapes.empty()) {
        // The given counts need more than a class works by hand: the smallest that take them.
        shapes = ShapesFor(shape, false);
        shapes.resize(std::min<std::size_t>(shapes.size(), 1));
    }
    if (shapes.empty()) {
        throw std::invalid_argument(WorksheetShapeRefusal(shape));
    }
    return random.Pick(shapes);
}

std::vector<Workspace> MakeWorksheetCircuits(int count, const WorksheetShape& shape,
                                             std::uint32_t seed) {
    PracticeRandom random(seed);
    std::vector<Workspace> circuits(static_cast<std::size_t>(count));
    for (Workspace& ws : circuits) {
        const PracticeShape drawn = DrawWorksheetShape(shape, random);
        const PracticeCircuit circuit = MakePracticeCircuit(drawn, random.Next(), true);
        SolveLikeAStudent(ws, circuit.drawn);
    }
    return circuits;
}

void WriteWorksheet(std::vector<Workspace>& circuits, RichTextSink& box, ReportPictures& pictures) {
    const FontSet fontSet = InitFontSets()[Preferences{}.FontIndex];
    StartFont(box, fontSet);
    RTBTitle(box, fontSet, kWorksheetTitle, 0, 1);
    RTBText(box, "Name: ______________________________    Date: ______________", 0, 2, kBodyStyle);
    RTBText(box, kWorksheetTask, 0, 2, kBodyStyle);
    for (std::size_t k = 0; k < circuits.size(); ++k) {
        RTBText(box, CircuitHeading(k) + ":", 0, 1, kHeadingStyle);
        Workspace unmarked = WithoutSupernodeMarks(circuits[k]);
        RTBPicture(box, CircuitWithValues(unmarked, pictures), 0, 1);
        // Room to write the equations and the voltages: a line for each unknown and more.
        RTBText(box, "", 0, 6 + 2 * circuits[k].Equations.NumUnknowns, kBodyStyle);
    }
}

void WriteAnswerKey(std::vector<Workspace>& circuits, RichTextSink& box, ReportPictures& pictures) {
    const FontSet fontSet = InitFontSets()[Preferences{}.FontIndex];
    StartFont(box, fontSet);
    RTBTitle(box, fontSet, kAnswerKeyTitle, 0, 2);
    for (std::size_t k = 0; k < circuits.size(); ++k) {
        Workspace& ws = circuits[k];
        const int sigFigs = ws.Preferences.SigFigs;
        const Equations& eq = ws.Equations;
        RTBText(box, CircuitHeading(k) + ":", 0, 1, kHeadingStyle);
        RTBPicture(box, CircuitWithValues(ws, pictures), 0, 1);
        RTBText(box, "The node voltages:", 0, 1, kBodyStyle);
        ReportGrid voltages;
        for (int position = 1; position <= ws.Circuit.NumNodes; ++position) {
            const NodeLabel& node = ws.Circuit.NodeLabels[NodeAt(ws, position)];
            if (node.Name != "0") {
                voltages.push_back(
                    {node.Name + " = " + FormatNumber(node.Voltage, sigFigs) + " V"});
            }
        }
        WriteFittingTable(box, voltages, fontSet);
        if (eq.NumUnknowns == 0) {
            RTBText(box, "The batteries fix every node voltage: there is no equation to solve.", 1,
                    3, kBodyStyle);
            continue;
        }
        RTBText(box, "The KCL equations:", 1, 1, kBodyStyle);
        RTBPicture(box, pictures.Equation(ws, 1), 0, 1);
        RTBText(box, "The augmented matrix:", 0, 1, kBodyStyle);
        WriteFittingTable(box, MatrixGrid(eq.Augmented, eq.NumUnknowns, sigFigs), fontSet);
        RTBText(box, "", 0, 2, kBodyStyle);
    }
}

} // namespace ampora
