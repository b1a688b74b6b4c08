#pragma once
// The whole report of a solved circuit, written into a rich-text sink: title, file name, the
// circuit, the counting text, the equations with their pictures and matrices, and the voltage,
// current and power diagrams with what their numbers mean.

#include "report/font_sets.h"
#include "report/rich_text_sink.h"
#include "tables/workspace.h"

#include <string>
#include <vector>

namespace ampora {

// A picture as the bytes of a PNG file and its size in pixels; no bytes when it could not
// be made.
struct ReportPicture {
    std::string Png;
    int Width = 0;
    int Height = 0;
};

// Where the report's pictures come from; the window renders them, tests hand in their own.
struct ReportPictures {
    virtual ~ReportPictures() = default;
    // The diagram as the main window shows it in the workspace's current view, cropped to
    // the circuit.
    virtual ReportPicture Circuit(const Workspace& ws) = 0;
    // Equation picture 1 (the equations as first written) or 2 (with terms collected).
    virtual ReportPicture Equation(const Workspace& ws, int which) = 0;
};

// Rows of cells, as the equations window's grids hold them.
using ReportGrid = std::vector<std::vector<std::string>>;

// Style words: bold, italic, underline as "T" in characters 1 to 3, then a palette number.
inline constexpr const char* kHeadingStyle = "TFF0";
inline constexpr const char* kBodyStyle = "FFF0";

void RTBText(RichTextSink& box, const std::string& text, int before, int after,
             const std::string& style);
void RTBTitle(RichTextSink& box, const FontSet& fontSet, const std::string& title, int before,
              int after);
// Indented by a tab; a picture without bytes is left out and the text goes on.
void RTBPicture(RichTextSink& box, const ReportPicture& picture, int before, int after);
// The grid as monospaced text in "Courier New", which stays in force afterwards.
void RTBTable(RichTextSink& box, const ReportGrid& grid);
// text cut or padded with spaces to exactly width characters.
std::string FillUp(const std::string& text, int width);

// The augmented matrix grid of `unknowns` rows (before or after the reduction).
ReportGrid MatrixGrid(const AugmentedMatrix& matrix, int unknowns, int sigFigs);
// One cell per unknown, "Va = 5", in the order of the equations.
ReportGrid SolutionsGrid(const Workspace& ws, int sigFigs);

inline constexpr const char* kDrawingWarningsHeading = "How the drawing was read:";

// The devices the analysis read differently from how they look, one paragraph each under a
// heading; nothing at all when there are none.
void WriteDrawingWarnings(RichTextSink& box, const std::vector<DrawingWarning>& warnings);

// Builds the report of the circuit solved in ws. The view is switched for each diagram and
// put back as it was at the end.
void LoadRTBoxWithReport(Workspace& ws, RichTextSink& box, ReportPictures& pictures);

// Heads the steps of the elimination, which the report holds when the user asks for them.
inline constexpr const char* kRowOperationsIntroduction =
    "Gauss-Jordan elimination works on this matrix one row operation at a time (Rk stands for "
    "row k).  Each step is followed by the matrix it leaves:";

inline constexpr const char* kVoltageExplanation =
    "The number beside each battery, current source or resistor is the voltage difference "
    "between the two ends of that battery, current source or resistor (in volts).  "
    "The head of the arrow gives the end with the higher voltage.  The number beside each node "
    "is the voltage at that node.";
inline constexpr const char* kCurrentExplanation =
    "The number beside each battery, current source or resistor is the magnitude of the "
    "current flowing through that battery, current source or resistor (in amperes).  "
    "The arrow gives the direction.";

// The power paragraph with the two totals as the number formatter writes them.
std::string PowerExplanation(const std::string& delivered, const std::string& dissipated);

} // namespace ampora
