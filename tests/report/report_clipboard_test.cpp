#include "report/report_clipboard.h"
#include "report/report_files.h"
#include "report/rtf_writer.h"
#include "support/scripted_prompts.h"

#include <gtest/gtest.h>

#include <deque>
#include <vector>

namespace ampora {
namespace {

// A clipboard that answers each call, clear or put, from a script: false while another
// program holds it; every call past the script gets through.
struct ScriptedClipboard : Clipboard {
    std::deque<bool> answers;
    std::vector<std::string> calls;
    std::string rtf;
    bool Clear() override { return Answer("clear"); }
    bool PutRtf(const std::string& text) override {
        const bool done = Answer("put");
        if (done) {
            rtf = text;
        }
        return done;
    }
    bool Answer(const std::string& call) {
        calls.push_back(call);
        if (answers.empty()) {
            return true;
        }
        const bool answer = answers.front();
        answers.pop_front();
        return answer;
    }
    void Busy(int calls, bool thenFree = true) {
        answers.insert(answers.end(), static_cast<std::size_t>(calls), false);
        if (thenFree) {
            answers.push_back(true);
        }
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

TEST(ReportClipboard, WithNothingSelectedTheWholeReportGoesAsRtf) {
    Copy copy;
    copy.Run(4, 4);
    EXPECT_TRUE(copy.done);
    EXPECT_EQ(copy.clipboard.calls, (std::vector<std::string>{"clear", "put"}));
    EXPECT_EQ(copy.clipboard.rtf, RtfText(TwoLines()));
    EXPECT_TRUE(copy.prompts.messages.empty());
}

TEST(ReportClipboard, ASelectionGoesAlone) {
    Copy copy;
    copy.Run(6, 17); // "line", the break, "second"
    EXPECT_EQ(copy.clipboard.rtf, RtfText(TwoLines(), 6, 17));
    EXPECT_NE(copy.clipboard.rtf.find("{\\f0\\fs20\\cf0 line\\par\nsecond}"), std::string::npos)
        << copy.clipboard.rtf;
    EXPECT_EQ(copy.clipboard.rtf.find("first"), std::string::npos);
}

TEST(ReportClipboard, TenRetriesAHundredMillisecondsApartSharedByClearingAndPutting) {
    struct Case {
        int busyClearing, busyPutting; // -1: held for good
        std::string outcome;
    };
    const std::vector<Case> cases = {
        {10, 0, "copied after 10 pauses, 12 calls"},
        {6, 4, "copied after 10 pauses, 12 calls"},
        {6, 5,
         "not copied after 10 pauses, 12 calls: Unable to access clipboard\r\nTry again later"},
        {-1, 0,
         "not copied after 10 pauses, 11 calls: Unable to access clipboard\r\nTry again later"},
    };
    for (const Case& c : cases) {
        Copy copy;
        copy.clipboard.Busy(c.busyClearing < 0 ? 1000 : c.busyClearing, c.busyClearing >= 0);
        copy.clipboard.Busy(c.busyPutting);
        copy.Run(0, 0);
        std::string outcome = (copy.done ? "copied after " : "not copied after ") +
                              std::to_string(copy.pauses.size()) + " pauses, " +
                              std::to_string(copy.clipboard.calls.size()) + " calls";
        for (const std::string& message : copy.prompts.messages) {
            outcome += ": " + message;
        }
        EXPECT_EQ(outcome, c.outcome) << c.busyClearing << " " << c.busyPutting;
        EXPECT_EQ(copy.pauses, std::vector<int>(copy.pauses.size(), 100));
        EXPECT_EQ(copy.clipboard.rtf, copy.done ? RtfText(TwoLines()) : "");
    }
}

TEST(ReportFiles, TheExtensionChoosesTheFormatInAnyCase) {
    EXPECT_EQ(ReportFormatOf("/tmp/a.html"), ReportFileFormat::Html);
    EXPECT_EQ(ReportFormatOf("a.HTM"), ReportFileFormat::Html);
    EXPECT_EQ(ReportFormatOf("class 3/report.Rtf"), ReportFileFormat::Rtf);
    EXPECT_EQ(ReportFormatOf("report.pdf"), ReportFileFormat::Pdf);
    EXPECT_EQ(ReportFormatOf("report.pdf.txt"), std::nullopt);
    EXPECT_EQ(ReportFormatOf("report"), std::nullopt);
    EXPECT_EQ(ReportFormatOf(".pdf"), std::nullopt); // a hidden file's name, not an extension
    EXPECT_EQ(ReportFormatOf(""), std::nullopt);
}

} // namespace
} // namespace ampora
