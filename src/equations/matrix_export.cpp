#include "equations/matrix_export.h"

#include "document/safe_file_write.h"
#include "tables/number_text.h"

#include <filesystem>

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
    const Equations& eq = ws.Equations;
    std::string text;
    for (const EqnVar& var : eq.EqnVars) {
        text += CsvField(var.VarName) + ',';
    }
    text += "Constant\r\n";
    AppendRows(text, eq.Augmented, eq.NumUnknowns);
    return text;
}

bool ExportMatrix(DocumentContext& context) {
    const Workspace& ws = context.workspace;
    if (ws.Step != 3 || ws.Equations.NumUnknowns <= 0) {
        return false;
    }
    const std::string folder =
        ws.CurrentFileName.empty()
            ? DialogFolder(context)
            : std::filesystem::path(ws.CurrentFileName).parent_path().string();
    const auto path = context.dialogs.AskCsvPath(folder);
    if (!path || path->empty()) {
        return false;
    }
    const FileWriteResult written = WriteFileSafely(*path, MatrixCsvText(ws));
    if (!written.written) {
        context.prompts.ShowMessage("The matrix could not be saved as " + *path + ". " +
                                        written.reason,
                                    MessageIcon::Exclamation);
    }
    return written.written;
}

} // namespace ampora
