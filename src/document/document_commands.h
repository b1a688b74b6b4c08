#pragma once
// New, Open, open recent, Save, Save As and the question before a drawing is dropped.
// "Changed" is never a flag: it is decided by comparing the tables with the file.

#include "document/file_dialogs.h"
#include "settings/settings_store.h"
#include "tables/prompts.h"
#include "tables/workspace.h"

#include <string>

namespace ampora {

struct DocumentContext {
    Workspace& workspace;
    Prompts& prompts;
    FileDialogs& dialogs;
    SettingsStore& store;      // holds the recent-files list
    std::string programFolder; // where the dialogs start while no file is recent
};

// What a command did to the drawing, so that the window can bring its editor along.
struct CommandResult {
    bool cleared = false;       // New ran: no tool, no drag, back to step 1
    bool undoAvailable = false; // after New: Undo Erase can bring the old drawing back
    bool fileRead = false;      // a file was read: its labels show the stored values
};

inline constexpr const char* kSavePromptText =
    "The circuit has changed.  Do you want to save the changes?";

// Asks to save when the circuit differs from its file; Yes saves (Save As while
// untitled). There is no Cancel: the caller always goes on.
void RunSavePrompt(DocumentContext& context);

// New; `opening` is set by Open and open recent, which have asked already.
CommandResult FileNew(DocumentContext& context, bool opening = false);
CommandResult FileOpen(DocumentContext& context);
CommandResult OpenRecent(DocumentContext& context, const std::string& path);
// Both return true when the circuit was written.
bool FileSave(DocumentContext& context);
bool FileSaveAs(DocumentContext& context);

// Where the file dialogs start: the folder of the most recent file, else the program's own.
std::string DialogFolder(const DocumentContext& context);

} // namespace ampora
