#pragma once
// The augmented matrix as it stands before elimination, written for other programs: the
// ampora.gj file that the equations window keeps up to date, and a CSV for a spreadsheet.

#include "document/document_commands.h"
#include "tables/workspace.h"

#include <string>

namespace ampora {

// CR LF lines: the number of unknowns, then one line per row of the matrix, its numbers
// separated by commas, each in the shortest text that reads back to the same double.
std::string GjText(const AugmentedMatrix& matrix, int unknowns);

// A header of the unknowns' names and "Constant", then the rows as in GjText; CR LF lines,
// a name quoted when it holds a comma, a quote or a line break.
std::string MatrixCsvText(const Workspace& ws);

// File > Export matrix...: asks for a .csv name, starting in the circuit file's folder (or
// where the file dialogs last were), and writes MatrixCsvText there; a failure is told in a
// message. False when cancelled, failed, or there is no solved system to export.
bool ExportMatrix(DocumentContext& context);

} // namespace ampora
