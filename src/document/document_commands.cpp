#include "document/document_commands.h"

#include "document/amq_file.h"
#include "document/circuit_edit.h"
#include "settings/recent_files.h"

namespace ampora {

namespace {

// Reads the file into a scratch circuit first, so that a file that cannot be opened at
// all leaves the open drawing exactly as it was. A damaged file opens with what was read
// before the damage, and says where reading stopped; the file itself is left alone until
// the user saves.
CommandResult OpenPath(DocumentContext& context, const std::string& path) {
    Circuit scratch;
    const ReadResult check = LoadFromIniFile(scratch, path);
    if (check.line == 0) {
        context.prompts.ShowMessage("The file " + path + " cannot be read: " + check.reason + ".",
                                    MessageIcon::Exclamation);
        return CommandResult{};
    }
    CommandResult result = FileNew(context, true);
    LoadFromIniFile(context.workspace.Circuit, path);
    if (!check.complete) {
        context.prompts.ShowMessage("The file " + path + " could not be read whole (" +
                                        check.reason +
                                        "). What was read before that line is open; the file "
                                        "stays as it is unless you save the circuit.",
                                    MessageIcon::Exclamation);
    }
    context.workspace.CurrentFileName = path;
    AddRecentFile(context.store, path);
    result.fileRead = true;
    result.undoAvailable = false;
    return result;
}

bool WriteTo(DocumentContext& context, const std::string& path) {
    const SaveResult saved = SaveToIniFile(context.workspace.Circuit, path);
    if (!saved.saved) {
        context.prompts.ShowMessage("The circuit could not be saved as " + path + ". " +
                                        saved.reason,
                                    MessageIcon::Exclamation);
    }
    return saved.saved;
}

} // namespace

void RunSavePrompt(DocumentContext& context) {
    const Workspace& ws = context.workspace;
    if (!NeedFileSave(ws.Circuit, ws.CurrentFileName)) {
        return;
    }
    if (context.prompts.AskYesNo(kSavePromptText)) {
        FileSave(context);
    }
}

CommandResult FileNew(DocumentContext& context, bool opening) {
    if (!opening) {
        RunSavePrompt(context);
    }
    Workspace& ws = context.workspace;
    CommandResult result;
    result.cleared = true;
    if (ws.Circuit.NumWires != 0) {
        result.undoAvailable = EraseWholeCircuit(ws.Circuit);
    }
    ws.Step = kStepEdit;
    ws.ViewMode = kViewValues;
    ws.CurrentFileName.clear();
    return result;
}

CommandResult FileOpen(DocumentContext& context) {
    RunSavePrompt(context);
    const auto path = context.dialogs.AskOpenPath(DialogFolder(context));
    if (!path || path->empty()) {
        return CommandResult{};
    }
    return OpenPath(context, *path);
}

CommandResult OpenRecent(DocumentContext& context, const std::string& path) {
    RunSavePrompt(context);
    if (!FileExists(path)) {
        context.prompts.ShowMessage("File no longer exists.", MessageIcon::Exclamation);
        return CommandResult{};
    }
    return OpenPath(context, path);
}

bool FileSave(DocumentContext& context) {
    if (context.workspace.CurrentFileName.empty()) {
        return FileSaveAs(context);
    }
    return WriteTo(context, context.workspace.CurrentFileName);
}

bool FileSaveAs(DocumentContext& context) {
    const auto path = context.dialogs.AskSavePath(DialogFolder(context));
    if (!path || path->empty()) {
        return false;
    }
    // The name changes only once the file is written, so a failed save keeps the old one.
    if (!WriteTo(context, *path)) {
        return false;
    }
    context.workspace.CurrentFileName = *path;
    AddRecentFile(context.store, *path);
    return true;
}

std::string DialogFolder(const DocumentContext& context) {
    return RecentFolder(context.store, context.programFolder);
}

} // namespace ampora
