#pragma once
// Copying the report to the clipboard as RTF, holding on while another program has the
// clipboard for a moment.

#include "report/rich_text_document.h"
#include "tables/prompts.h"

#include <cstddef>
#include <functional>
#include <string>

namespace ampora {

// The clipboard as the copy command sees it; each call says whether it got through.
struct Clipboard {
    virtual ~Clipboard() = default;
    virtual bool Clear() = 0;
    virtual bool PutRtf(const std::string& rtf) = 0;
};

inline constexpr int kClipboardRetries = 10;
inline constexpr int kClipboardRetryPauseMs = 100;
inline constexpr const char* kClipboardBusyMessage =
    "Unable to access clipboard\r\nTry again later";

// Clears the clipboard and puts on it the characters from selectionStart to selectionEnd, or
// the whole report when nothing is selected. A step that fails is tried again after a pause,
// up to ten times in all for one copy; then the message is shown and false returned.
bool CopyReportToClipboard(const RichTextDocument& report, std::size_t selectionStart,
                           std::size_t selectionEnd, Clipboard& clipboard, Prompts& prompts,
                           const std::function<void(int milliseconds)>& pause);

} // namespace ampora
