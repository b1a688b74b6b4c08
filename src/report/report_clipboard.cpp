#include "report/report_clipboard.h"

#include "report/rtf_writer.h"

namespace ampora {

bool CopyReportToClipboard(const RichTextDocument& report, std::size_t selectionStart,
                           std::size_t selectionEnd, Clipboard& clipboard, Prompts& prompts,
                           const std::function<void(int milliseconds)>& pause) {
    const std::string rtf = selectionEnd > selectionStart
                                ? RtfText(report, selectionStart, selectionEnd)
                                : RtfText(report);
    int retries = 0;
    int step = 0; // 0 clear, 1 put the report, 2 done
    while (step < 2) {
        const bool done = step == 0 ? clipboard.Clear() : clipboard.PutRtf(rtf);
        if (done) {
            ++step;
            continue;
        }
        if (retries == kClipboardRetries) {
            prompts.ShowMessage(kClipboardBusyMessage, MessageIcon::None);
            return false;
        }
        ++retries;
        pause(kClipboardRetryPauseMs);
    }
    return true;
}

} // namespace ampora
