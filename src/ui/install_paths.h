#pragma once
// Where the program finds the files it ships with: next to its binary once installed
// (<prefix>/bin/ampora reads <prefix>/share/ampora/...), or in the source tree when it
// runs from a build folder.

#include <QString>

namespace ampora::ui {

// The folder holding index.htm and "dc cct help/theory.htm".
QString HelpDir();
// The folder of the sample circuits; file dialogs start here while no file is recent.
QString ExamplesDir();

// The folder `name` (help, examples) for a program whose binary lies in binaryDir: the installed
// <binaryDir>/../share/ampora/<name> when it exists, else the folder in the source tree.
QString ShippedDir(const QString& binaryDir, const QString& name);

} // namespace ampora::ui
