#pragma once

namespace ampora::ui {

// Creates the application object and the main window and runs the event loop.
int RunApplication(int argc, char* argv[]);

} // namespace ampora::ui
