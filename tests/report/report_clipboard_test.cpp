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

TEST(ReportClipboard, AClipboardFreedWithinTenRetriesTakesTheCopySilently) {
    Copy copy;
    copy.clipboard.Busy(10);
    copy.Run(0, 0);
    EXPECT_TRUE(copy.done);
    EXPECT_EQ(copy.pauses, std::vector<int>(10, 100));
    EXPECT_EQ(copy.clipboard.calls.size(), 12u); // 11 clears, then the put
    EXPECT_EQ(copy.clipboard.rtf, RtfText(TwoLines()));
    EXPECT_TRUE(copy.prompts.messages.empty());
}

TEST(ReportClipboard, TheTenRetriesAreSharedByClearingAndPutting) {
    Copy freedInTime;
    freedInTime.clipboard.Busy(6); // clear: 6 retries
    freedInTime.clipboard.Busy(4); // put: the last 4
    freedInTime.Run(0, 0);
    EXPECT_TRUE(freedInTime.done);
    EXPECT_EQ(freedInTime.pauses.size(), 10u);

    Copy freedTooLate;
    freedTooLate.clipboard.Busy(6);
    freedTooLate.clipboard.Busy(5);
    freedTooLate.Run(0, 0);
    EXPECT_FALSE(freedTooLate.done);
    EXPECT_EQ(freedTooLate.pauses.size(), 10u);
    EXPECT_EQ(freedTooLate.clipboard.rtf, "");
    EXPECT_EQ(freedTooLate.prompts.messages.size(), 1u);
}

TEST(ReportClipboard, AClipboardHeldLongerGivesTheMessageOnce) {
    Copy copy;
    copy.clipboard.Busy(1000, false);
    copy.Run(0, 0);
    EXPECT_FALSE(copy.done);
    EXPECT_EQ(copy.pauses.size(), 10u);
    EXPECT_EQ(copy.clipboard.calls, std::vector<std::string>(11, "clear"));
    EXPECT_EQ(copy.prompts.messages,
              std::vector<std::string>{"Unable to access clipboard\r\nTry again later"});
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
