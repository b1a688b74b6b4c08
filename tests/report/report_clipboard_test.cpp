#include "report/report_clipboard.h"
#include "report/report_files.h"
#include "report/rtf_writer.h"
#include "support/scripted_prompts.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

namespace ampora {
namespace {

// A clipboard that answers each call, clear or put, from a script: F while another program
// holds it, T when free; every call past the script gets through.
struct ScriptedClipboard : Clipboard {
    std::string answers;
    std::vector<std::string> calls;
    std::string rtf;
    bool Clear() override { return Answer("clear"); }
    bool PutRtf(const std::string& text) override {
        const bool done = Answer("put");
        rtf = done ? text : rtf;
        return done;
    }
    bool Answer(const std::string& call) {
        calls.push_back(call);
        return calls.size() > answers.size() || answers[calls.size() - 1] == 'T';
    }
};

RichTextDocument TwoLines() {
    RichTextDocument document;
    document.InsertText("first line\r\nsecond line");
    return document;
}

struct Copy {
    ScriptedClipboard clipboard;
    test::ScriptedPrompts prompts;
    std::vector<int> pauses;
    bool done = false;
    void Run(std::size_t start, std::size_t end) {
        done = CopyReportToClipboard(TwoLines(), start, end, clipboard, prompts,
                                     [this](int ms) { pauses.push_back(ms); });
    }
};

// With nothing selected the whole report goes as RTF, a selection alone. A clipboard held by
// another program is tried ten times, a hundred milliseconds apart, clearing and putting
// sharing the tries.
TEST(ReportClipboard, TheReportOrItsSelectionGoesAsRtfAfterAtMostTenRetries) {
    struct Case {
        std::size_t start, end;
        std::string answers;
        std::string outcome;
    };
    const std::vector<Case> cases = {
        {4, 4, "", "copied after 0 pauses: 1 clear, 1 put"},
        {6, 17, "", "copied after 0 pauses: 1 clear, 1 put"}, // "line", the break, "second"
        {0, 0, "FFFFFFFFFFT", "copied after 10 pauses: 11 clear, 1 put"},
        {0, 0, "FFFFFFTFFFFT", "copied after 10 pauses: 7 clear, 5 put"},
        {0, 0, "FFFFFFTFFFFFT",
         "not copied after 10 pauses: 7 clear, 5 put; Unable to access clipboard\r\nTry again "
         "later"},
        {0, 0, std::string(1000, 'F'),
         "not copied after 10 pauses: 11 clear, 0 put; Unable to access clipboard\r\nTry again "
         "later"},
    };
    for (const Case& c : cases) {
        Copy copy;
        copy.clipboard.answers = c.answers;
        copy.Run(c.start, c.end);
        std::string outcome = (copy.done ? "copied after " : "not copied after ") +
                              std::to_string(copy.pauses.size()) + " pauses:";
        const auto clears =
            std::count(copy.clipboard.calls.begin(), copy.clipboard.calls.end(), "clear");
        outcome += " " + std::to_string(clears) + " clear, " +
                   std::to_string(copy.clipboard.calls.size() - clears) + " put";
        for (const std::string& message : copy.prompts.messages) {
            outcome += "; " + message;
        }
        EXPECT_EQ(outcome, c.outcome) << c.answers.substr(0, 20);
        EXPECT_EQ(copy.pauses, std::vector<int>(copy.pauses.size(), 100));
        const bool selected = c.start != c.end;
        EXPECT_EQ(copy.clipboard.rtf, !copy.done ? ""
                                      : selected ? RtfText(TwoLines(), c.start, c.end)
                                                 : RtfText(TwoLines()));
    }
    EXPECT_NE(RtfText(TwoLines(), 6, 17).find("{\\f0\\fs20\\cf0 line\\par\nsecond}\n}"),
              std::string::npos);
}

TEST(ReportFiles, TheExtensionChoosesTheFormatInAnyCase) {
    std::string formats;
    // ".pdf" alone is a hidden file's name, not an extension.
    for (const char* name : {"/tmp/a.html", "a.HTM", "class 3/report.Rtf", "report.pdf",
                             "report.pdf.txt", "report", ".pdf", ""}) {
        const auto format = ReportFormatOf(name);
        formats += !format                             ? "- "
                   : *format == ReportFileFormat::Html ? "html "
                   : *format == ReportFileFormat::Rtf  ? "rtf "
                                                       : "pdf ";
    }
    EXPECT_EQ(formats, "html html rtf pdf - - - - ");
}

} // namespace
} // namespace ampora
