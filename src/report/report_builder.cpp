#include "report/report_builder.h"

#include "analysis/format_number.h"
#include "analysis/result_labels.h"
#include "equations/row_operation_steps.h"
#include "equations/supernode_queries.h"
#include "report/utf8_text.h"

#include <algorithm>
#include <charconv>

namespace ampora {

namespace {

constexpr std::size_t kGridRows = 20;
constexpr std::size_t kGridColumns = 21;

std::string Breaks(int count) {
    std::string breaks;
    for (int k = 0; k < count; ++k) {
        breaks += "\r\n";
    }
    return breaks;
}

void InsertBreaks(RichTextSink& box, int count) {
    if (count > 0) {
        box.InsertText(Breaks(count));
    }
}

// Characters 4 onward of a style word; anything that is not a palette number is black.
int StyleColour(const std::string& style) {
    if (style.size() <= 3) {
        return 0;
    }
    int colour = 0;
    const char* first = style.data() + 3;
    const char* last = style.data() + style.size();
    const auto [end, error] = std::from_chars(first, last, colour);
    if (error != std::errc() || end != last || colour < 0 || colour > 15) {
        return 0;
    }
    return colour;
}

void SetView(Workspace& ws, int viewMode) {
    ws.ViewMode = static_cast<std::int16_t>(viewMode);
    WriteLabels(ws, ws.Preferences.SigFigs);
}

} // namespace

void RTBText(RichTextSink& box, const std::string& text, int before, int after,
             const std::string& style) {
    InsertBreaks(box, before);
    TextFormat format = box.Format();
    format.Bold = style.size() > 0 && style[0] == 'T';
    format.Italic = style.size() > 1 && style[1] == 'T';
    format.Underline = style.size() > 2 && style[2] == 'T';
    format.Colour = StyleColour(style);
    box.SetFormat(format);
    if (!text.empty()) {
        box.InsertText(text);
    }
    format.Bold = format.Italic = format.Underline = false;
    format.Colour = 0;
    box.SetFormat(format);
    InsertBreaks(box, after);
}

void RTBTitle(RichTextSink& box, const FontSet& fontSet, const std::string& title, int before,
              int after) {
    TextFormat format = box.Format();
    if (before > 0) {
        format.FontSize = fontSet.NormalSize;
        box.SetFormat(format);
        InsertBreaks(box, before);
    }
    format.FontSize = fontSet.LargeSize;
    format.Bold = true;
    box.SetFormat(format);
    box.InsertText(title + "\r\n");
    format.FontSize = fontSet.NormalSize;
    format.Bold = false;
    box.SetFormat(format);
    InsertBreaks(box, after);
}

void RTBPicture(RichTextSink& box, const ReportPicture& picture, int before, int after) {
    box.InsertText(Breaks(before) + "\t");
    // A picture that could not be made leaves its line empty; the report goes on.
    if (!picture.Png.empty() && picture.Width > 0 && picture.Height > 0) {
        box.InsertPicture(picture.Png, picture.Width, picture.Height);
    }
    InsertBreaks(box, after + 1);
}

std::string FillUp(const std::string& text, int width) {
    const std::size_t wanted = width > 0 ? static_cast<std::size_t>(width) : 0;
    const std::size_t length = CharacterCount(text);
    if (length == wanted) {
        return text;
    }
    if (length < wanted) {
        return text + std::string(wanted - length, ' ');
    }
    return text.substr(0, ByteOffsetOfCharacter(text, wanted));
}

void RTBTable(RichTextSink& box, const ReportGrid& grid) {
    const std::size_t rows = std::min(grid.size(), kGridRows);
    std::size_t columns = 0;
    for (std::size_t r = 0; r < rows; ++r) {
        columns = std::max(columns, std::min(grid[r].size(), kGridColumns));
    }
    const auto cell = [&](std::size_t r, std::size_t c) -> const std::string& {
        static const std::string kEmptyCell;
        return c < grid[r].size() ? grid[r][c] : kEmptyCell;
    };
    std::vector<int> widths(columns, 0);
    for (std::size_t r = 0; r < rows; ++r) {
        for (std::size_t c = 0; c < columns; ++c) {
            widths[c] = std::max(widths[c], static_cast<int>(CharacterCount(cell(r, c))));
        }
    }
    std::string table;
    for (std::size_t r = 0; r < rows; ++r) {
        table += '\t';
        for (std::size_t c = 0; c < columns; ++c) {
            table += FillUp(cell(r, c), widths[c]);
            table += c + 1 < columns ? "    " : "\r\n";
        }
    }
    TextFormat format = box.Format();
    format.FontName = "Courier New";
    box.SetFormat(format);
    box.InsertText(table);
}

ReportGrid MatrixGrid(const AugmentedMatrix& matrix, int unknowns, int sigFigs) {
    ReportGrid grid;
    for (int row = 1; row <= unknowns; ++row) {
        std::vector<std::string> cells;
        for (int column = 1; column <= unknowns + 1; ++column) {
            cells.push_back(FormatNumber(matrix(row, column), sigFigs));
        }
        grid.push_back(std::move(cells));
    }
    return grid;
}

ReportGrid SolutionsGrid(const Workspace& ws, int sigFigs) {
    ReportGrid grid;
    for (const EqnVar& var : ws.Equations.EqnVars) {
        const double voltage = ws.Circuit.NodeLabels[NodeAt(ws, var.Node)].Voltage;
        grid.push_back({var.VarName + " = " + FormatNumber(voltage, sigFigs)});
    }
    return grid;
}

// Each step of the elimination in words, then the matrix it leaves.
void WriteRowOperations(RichTextSink& box, const Workspace& ws, int sigFigs) {
    const ShownSteps shown = ShowRowOperations(ws, false, sigFigs);
    const auto columns = static_cast<std::size_t>(ws.Equations.NumUnknowns + 1);
    RTBText(box, kRowOperationsIntroduction, 1, 2, kBodyStyle);
    for (std::size_t s = 1; s < shown.steps.size(); ++s) {
        const ShownStep& step = shown.steps[s];
        RTBText(box, "Step " + std::to_string(s) + ":  " + step.words.Joined(), 0, 1, kBodyStyle);
        ReportGrid grid;
        for (std::size_t at = 0; at + columns <= step.cells.size(); at += columns) {
            grid.emplace_back(step.cells.begin() + static_cast<std::ptrdiff_t>(at),
                              step.cells.begin() + static_cast<std::ptrdiff_t>(at + columns));
        }
        RTBTable(box, grid);
        RTBText(box, "", 0, 1, kBodyStyle); // a blank line before the next step
    }
}

std::string PowerExplanation(const std::string& delivered, const std::string& dissipated) {
    return "The number beside each battery or current source gives the power delivered to the "
           "circuit by that battery or current source (in watts).  "
           "The total power delivered by the sources is " +
           delivered +
           " watts.  The number beside each resistor gives the power dissipated by that "
           "resistor (again in watts).  "
           "The total power dissipated by the resistors is " +
           dissipated + " watts.";
}

void WriteDrawingWarnings(RichTextSink& box, const std::vector<DrawingWarning>& warnings) {
    if (warnings.empty()) {
        return; // a circuit drawn as it is read has nothing here
    }
    RTBText(box, kDrawingWarningsHeading, 0, 1, kHeadingStyle);
    for (std::size_t k = 0; k < warnings.size(); ++k) {
        RTBText(box, warnings[k].text, 0, k + 1 == warnings.size() ? 2 : 1, kBodyStyle);
    }
}

void LoadRTBoxWithReport(Workspace& ws, RichTextSink& box, ReportPictures& pictures) {
    const int sigFigs = ws.Preferences.SigFigs;
    const FontSet fontSet = InitFontSets()[ws.Preferences.FontIndex];
    const Equations& eq = ws.Equations;
    const std::int16_t viewBefore = ws.ViewMode;

    TextFormat font;
    font.FontName = fontSet.FontName;
    font.FontSize = fontSet.NormalSize;
    box.SetFormat(font);

    RTBTitle(box, fontSet, "Ampora", 0, 1);
    if (!ws.CurrentFileName.empty()) {
        RTBText(box, "Name of file containing circuit:", 0, 0, kHeadingStyle);
        RTBText(box, " " + ws.CurrentFileName, 0, 2, kBodyStyle);
    }
    RTBText(box, "The circuit:", 0, 1, kHeadingStyle);
    SetView(ws, kViewValues);
    RTBPicture(box, pictures.Circuit(ws), 1, 2);
    WriteDrawingWarnings(box, ws.Topology.Warnings);

    RTBText(box, "Counting unknowns and equations:", 0, 2, kHeadingStyle);
    RTBText(box, eq.CountingText, 0, 1, kBodyStyle);

    if (eq.NumUnknowns > 0) {
        RTBText(box, "The equations and their solutions:", 0, 2, kHeadingStyle);
        RTBText(box, eq.EqnText[0], 0, 1, kBodyStyle);
        RTBPicture(box, pictures.Equation(ws, 1), 1, 1);
        RTBText(box, eq.EqnText[2], 0, 1, kBodyStyle);
        RTBPicture(box, pictures.Equation(ws, 2), 1, 1);
        RTBText(box, eq.EqnText[3], 0, 2, kBodyStyle);
    }
    if (eq.NumUnknowns > 1) {
        RTBTable(box, MatrixGrid(eq.Augmented, eq.NumUnknowns, sigFigs));
        if (ws.Preferences.ReportRowOperations) {
            WriteRowOperations(box, ws, sigFigs);
        }
        RTBText(box, eq.EqnText[4], 1, 2, kBodyStyle);
        RTBTable(box, MatrixGrid(eq.Reduced, eq.NumUnknowns, sigFigs));
        RTBText(box, eq.EqnText[5], 1, 2, kBodyStyle);
        RTBTable(box, SolutionsGrid(ws, sigFigs));
    }

    RTBText(box, "The voltage:", 2, 1, kHeadingStyle);
    RTBText(box, kVoltageExplanation, 0, 1, kBodyStyle);
    SetView(ws, kViewVoltages);
    RTBPicture(box, pictures.Circuit(ws), 2, 2);

    RTBText(box, "The electric current:", 2, 1, kHeadingStyle);
    RTBText(box, kCurrentExplanation, 0, 1, kBodyStyle);
    SetView(ws, kViewCurrents);
    RTBPicture(box, pictures.Circuit(ws), 2, 2);

    RTBText(box, "The electric power:", 0, 1, kHeadingStyle);
    SetView(ws, kViewPower);
    RTBText(box,
            PowerExplanation(FormatNumber(ws.PowerIn, sigFigs), FormatNumber(ws.PowerOut, sigFigs)),
            0, 1, kBodyStyle);
    RTBPicture(box, pictures.Circuit(ws), 2, 2);

    SetView(ws, viewBefore);
}

} // namespace ampora
