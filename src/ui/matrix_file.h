#pragma once
// The matrix file other programs read: ampora.gj in the per-user data folder.

#include <QString>

namespace ampora {
struct Workspace;
}

namespace ampora::ui {

// $XDG_DATA_HOME/Ampora/ampora.gj, by default ~/.local/share/Ampora/ampora.gj.
QString MatrixFilePath();

// Writes the augmented matrix of the solved circuit there, unless the file already holds
// exactly that; the folder is made when missing. Like the other files the program keeps
// for itself, a failure is passed over without a word: the student's work does not depend
// on it. Nothing is written for a circuit without unknowns.
void UpdateMatrixFile(const Workspace& ws);

} // namespace ampora::ui
