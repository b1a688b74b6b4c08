#pragma once
// A teacher's worksheet of practice circuits and its answer key, written into rich text
// with the report's own pieces: its headings, pictures and tables.

#include "practice/practice_random.h"
#include "practice/practice_shape.h"
#include "report/report_builder.h"
#include "report/rich_text_sink.h"
#include "tables/workspace.h"

#include <cstdint>
#include <optional>
#include <vector>

namespace ampora {

inline constexpr int kMaxWorksheetCircuits = 30;

// The shape of a worksheet's circuits: each count given, or drawn for every circuit.
struct WorksheetShape {
    std::optional<int> Nodes;
    std::optional<int> SuperNodes;
    std::optional<int> Sources;
};

// Why no circuit can have the given counts, as ShapeRefusal says it; "" when some can.
std::string WorksheetShapeRefusal(const WorksheetShape& shape);

// The counts of the next circuit: those given, the others drawn among the shapes a class
// works by hand (up to 5 nodes, 1 supernode and 2 current sources, or as few more as the
// given counts need).
PracticeShape DrawWorksheetShape(const WorksheetShape& shape, PracticeRandom& random);

// The circuits of a worksheet made from `seed`, each solved as a student solves it, with
// nice node voltages, named by AutoName.
std::vector<Workspace> MakeWorksheetCircuits(int count, const WorksheetShape& shape,
                                             std::uint32_t seed);

// The sheet: the task, then each circuit numbered, drawn with its values, its nodes named
// and the reference "0", with room to work below it.
void WriteWorksheet(std::vector<Workspace>& circuits, RichTextSink& box, ReportPictures& pictures);

// The key: for each circuit its picture again, its node voltages, its KCL equations as the
// equations window writes them, and its augmented matrix.
void WriteAnswerKey(std::vector<Workspace>& circuits, RichTextSink& box, ReportPictures& pictures);

inline constexpr const char* kWorksheetTitle = "Practice circuits";
inline constexpr const char* kAnswerKeyTitle = "Practice circuits: answer key";
inline constexpr const char* kWorksheetTask =
    "Find the voltage of every node by nodal analysis.  The node named 0 is the reference "
    "node, at 0 V.";

} // namespace ampora
