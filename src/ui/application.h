#pragma once

#include <QString>
#include <QStringList>

namespace ampora::ui {

// Creates the application object and the main window and runs the event loop.
int RunApplication(int argc, char* argv[]);

// The circuit file the desktop asked the program to open (a double-click on an .amq file runs
// "ampora FILE"), as an absolute path; empty when the program was started on its own.
// arguments is the whole command line, program name first, Qt's own options already removed.
QString CircuitFileFromArguments(const QStringList& arguments);

} // namespace ampora::ui
