#include "equations/matrix_export.h"

#include "document/number_text.h"

namespace ampora {

namespace {

void AppendRows(std::string& text, const AugmentedMatrix& matrix, int unknowns) {
    for (int row = 1; row <= unknowns; ++row) {
        for (int column = 1; column <= unknowns + 1; ++column) {
            if (column > 1) {
                text += ',';
            }
            text += ShortestText(matrix(row, column));
        }
        text += "\r\n";
    }
}

std::string CsvField(const std::string& text) {
    if (text.find_first_of(",\"\r\n") == std::string::npos) {
        return text;
    }
    std::string quoted = "\"";
    for (const char c : text) {
        quoted += c;
        if (c == '"') {
            quoted += '"';
        }
    }
    return quoted + '"';
}

} // namespace

std::string GjText(const AugmentedMatrix& matrix, int unknowns) {
    std::string text = std::to_string(unknowns) + "\r\n";
    AppendRows(text, matrix, unknowns);
    return text;
}

std::string MatrixCsvText(const Workspace& ws) {
    const Equations& eq = ws.equations;
    std::string text;
    for (const EqnVar& var : eq.EqnVars) {
        text += CsvField(var.VarName) + ',';
    }
    text += "Constant\r\n";
    AppendRows(text, eq.Augmented, eq.NumUnknowns);
    return text;
}

} // namespace ampora
