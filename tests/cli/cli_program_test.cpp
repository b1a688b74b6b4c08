// The real ampora-cli and its pictures, read back by programs that are not ours.

#include "analysis/result_labels.h"
#include "cli/cli.h"
#include "editor/value_labels.h"
#include "support/solve_session.h"
#include "support/test_files.h"
#include "support/wide_circuit.h"

#include <gtest/gtest.h>

#include <linux/filter.h>
#include <linux/seccomp.h>
#include <sys/prctl.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <cstdlib>
#include <regex>

namespace ampora {
namespace {

// The reports and pictures of an ampora-cli built with its graphics.
class CliReportProgram : public ::testing::Test {
  protected:
    void SetUp() override {
#ifndef AMPORA_CLI_DRAWS_REPORTS
        GTEST_SKIP() << "this build of ampora-cli has no report graphics";
#endif
    }
};

using CliPictureProgram = CliReportProgram;

std::string Example(const char* name) {
    return (test::ExamplesDir() / name).string();
}

int Shell(const std::string& command) {
    return std::system(command.c_str());
}

std::string Quoted(const std::filesystem::path& path) {
    return "'" + path.string() + "'";
}

TEST_F(CliReportProgram, TheRtfReadsBackWithItsTextAndItsSixPictures) {
    if (Shell("command -v unrtf > /dev/null 2>&1") != 0) {
        GTEST_SKIP() << "unrtf is not installed";
    }
    test::TempDir folder;
    ASSERT_EQ(Shell(std::string(AMPORA_CLI_PATH) + " report " +
                    Quoted(Example("wheatstone_bridge.amq")) + " -o " + Quoted(folder / "r.rtf")),
              0);
    ASSERT_EQ(Shell("cd " + Quoted(folder.Path()) + " && unrtf --html r.rtf > r.html 2> /dev/null"),
              0);
    const std::string html = test::ReadBytes(folder / "r.html");
    for (const char* text : {"Ampora", "The circuit:", "Counting unknowns and equations:",
                             "The equations and their solutions:", "0.035", "6.53",
                             "The voltage:", "The electric current:", "The electric power:"}) {
        EXPECT_NE(html.find(text), std::string::npos) << text;
    }
    // Three diagrams before the power one, the power one, and two equation pictures.
    const std::regex image("<img ");
    EXPECT_EQ(std::distance(std::sregex_iterator(html.begin(), html.end(), image),
                            std::sregex_iterator()),
              6);
}

// Runs command in a shell on a disk that is full: every write of 64 KiB or more fails with
// "No space left on device", as the first large write of a report does there. Smaller
// writes (messages, the program's own housekeeping) go through.
int RunOnFullDisk(const std::string& command) {
    const pid_t child = fork();
    if (child == -1) {
        return -1;
    }
    if (child == 0) {
        sock_filter filter[] = {
            BPF_STMT(BPF_LD | BPF_W | BPF_ABS, offsetof(seccomp_data, nr)),
            BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, SYS_write, 0, 3),
            BPF_STMT(BPF_LD | BPF_W | BPF_ABS, offsetof(seccomp_data, args[2])),
            BPF_JUMP(BPF_JMP | BPF_JGE | BPF_K, 65536, 0, 1),
            BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ERRNO | ENOSPC),
            BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ALLOW),
        };
        sock_fprog program{static_cast<unsigned short>(std::size(filter)), filter};
        if (prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) != 0 ||
            prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &program) != 0) {
            _exit(125);
        }
        execl("/bin/sh", "sh", "-c", command.c_str(), static_cast<char*>(nullptr));
        _exit(126);
    }
    int status = 0;
    waitpid(child, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

TEST_F(CliReportProgram, AReportThatCannotBeWrittenLeavesTheOldFileAndSaysWhy) {
    struct Case {
        const char* name;
        bool fullDisk;
        bool folder; // the output path is a folder
        const char* reason;
    };
    const Case cases[] = {
        {"r.html", true, false, "No space left on device"},
        {"r.rtf", true, false, "No space left on device"},
        {"r.pdf", true, false, "No space left on device"},
        {"r.pdf", false, true, "Is a directory"},
    };
    for (const Case& c : cases) {
        test::TempDir folder;
        test::TempDir messages;
        const std::filesystem::path out = folder / c.name;
        if (c.folder) {
            std::filesystem::create_directory(out);
        } else {
            test::WriteBytes(out, "the report handed out last week\n");
        }
        const std::string command = std::string(AMPORA_CLI_PATH) + " report " +
                                    Quoted(Example("two_supernodes.amq")) + " -o " + Quoted(out) +
                                    " 2> " + Quoted(messages / "err");
        const int code = c.fullDisk ? RunOnFullDisk(command) : Shell(command) >> 8;
        EXPECT_EQ(code, cli::kExitUsage) << c.name;
        EXPECT_EQ(test::ReadBytes(messages / "err"),
                  "ampora-cli: " + out.string() + ": cannot be written: " + c.reason + "\n")
            << c.name;
        if (!c.folder) {
            EXPECT_EQ(test::ReadBytes(out), "the report handed out last week\n") << c.name;
        }
        EXPECT_EQ(test::NamesIn(folder.Path()), std::vector<std::string>{c.name}) << c.name;
    }
}

TEST_F(CliReportProgram, TheReportOfTheLargestExampleIsSmall) {
    test::TempDir folder;
    const std::vector<std::pair<std::string, std::uintmax_t>> limits = {
        {"r.html", 1'500'000}, {"r.rtf", 3'000'000}, {"r.pdf", 3'000'000}};
    for (const auto& [name, limit] : limits) {
        ASSERT_EQ(Shell(std::string(AMPORA_CLI_PATH) + " report " +
                        Quoted(Example("two_supernodes.amq")) + " -o " + Quoted(folder / name)),
                  0);
        EXPECT_LE(std::filesystem::file_size(folder / name), limit) << name;
    }
}

// What pdftohtml finds on the pages of a PDF, in its own units (1.5 per point).
struct PdfItem {
    int page;
    double top, left, width, height;
    bool image;
    std::string text;
};

std::vector<PdfItem> PdfItems(const std::filesystem::path& pdf, const test::TempDir& work) {
    const std::filesystem::path xml = work / "pages.xml";
    if (Shell("pdftohtml -xml -q -nodrm " + Quoted(pdf) + " " + Quoted(work / "pages") +
              " > /dev/null 2>&1") != 0) {
        return {};
    }
    const std::string text = test::ReadBytes(xml);
    const std::regex item(
        R"re(<page number="(\d+)"|<image top="([\d.-]+)" left="([\d.-]+)" width="([\d.-]+)" height="([\d.-]+)"|<text top="([\d.-]+)" left="([\d.-]+)" width="([\d.-]+)" height="([\d.-]+)"[^>]*>(.*?)</text>)re");
    std::vector<PdfItem> items;
    int page = 0;
    for (auto it = std::sregex_iterator(text.begin(), text.end(), item);
         it != std::sregex_iterator(); ++it) {
        const std::smatch& m = *it;
        if (m[1].matched) {
            page = std::stoi(m[1]);
        } else if (m[2].matched) {
            items.push_back({page, std::stod(m[2]), std::stod(m[3]), std::stod(m[4]),
                             std::stod(m[5]), true, ""});
        } else {
            items.push_back({page, std::stod(m[6]), std::stod(m[7]), std::stod(m[8]),
                             std::stod(m[9]), false,
                             std::regex_replace(m[10].str(), std::regex("<[^>]*>"), "")});
        }
    }
    std::stable_sort(items.begin(), items.end(), [](const PdfItem& a, const PdfItem& b) {
        return a.page != b.page ? a.page < b.page : a.top < b.top;
    });
    return items;
}

TEST_F(CliReportProgram, EveryPdfPictureLiesInTheTextColumnOnThePageOfItsHeading) {
    if (Shell("command -v pdftohtml > /dev/null 2>&1") != 0) {
        GTEST_SKIP() << "pdftohtml is not installed";
    }
    test::TempDir folder;
    // The largest example stretched to 1440 units across, and every example in the largest
    // font, whose pages break most often.
    test::WriteBytes(
        folder / "wide.amq",
        test::StretchedAcross(test::ReadBytes(test::ExamplesDir() / "two_supernodes.amq"), 2));
    std::vector<std::pair<std::filesystem::path, std::string>> runs = {{folder / "wide.amq", "3"}};
    for (const std::filesystem::path& example : test::ExampleFiles()) {
        runs.push_back({example, "4"});
    }
    // A4 is 595.28 points wide with margins of 20 mm; the pictures stand one tab (48 pixels
    // of 96 to the inch) and the text's own 4-pixel margin in from the column's left edge.
    const double zoom = 1.5;
    const double columnLeft = 20 / 25.4 * 72 * zoom;
    const double columnRight = (595.28 - 20 / 25.4 * 72) * zoom;
    const double indent = (48 + 4) * 0.75 * zoom;
    for (const auto& [circuit, font] : runs) {
        test::TempDir work;
        const std::filesystem::path pdf = work / "r.pdf";
        ASSERT_EQ(Shell(std::string(AMPORA_CLI_PATH) + " report --font " + font + " " +
                        Quoted(circuit) + " -o " + Quoted(pdf)),
                  0)
            << circuit;
        const std::vector<PdfItem> items = PdfItems(pdf, work);
        int pictures = 0;
        for (const PdfItem& item : items) {
            if (item.image) {
                ++pictures;
                EXPECT_NEAR(item.left, columnLeft + indent, 2) << circuit << " page " << item.page;
                EXPECT_LE(item.left + item.width, columnRight + 1)
                    << circuit << " page " << item.page;
            }
        }
        EXPECT_GE(pictures, 4) << circuit;
        // Each diagram's heading, and the sentences before the equation pictures, on the page
        // of the picture they introduce.
        for (const char* heading : {"The circuit:", "The voltage:", "The electric current:",
                                    "The electric power:", "The equations and their solutions:"}) {
            const auto at = std::find_if(items.begin(), items.end(), [&](const PdfItem& item) {
                return !item.image && item.text.find(heading) != std::string::npos;
            });
            if (at == items.end()) {
                // Only a circuit with no unknowns has no equations.
                EXPECT_EQ(std::string(heading), "The equations and their solutions:") << circuit;
                continue;
            }
            const auto picture =
                std::find_if(at, items.end(), [](const PdfItem& item) { return item.image; });
            ASSERT_NE(picture, items.end()) << heading << " in " << circuit;
            EXPECT_EQ(picture->page, at->page) << heading << " in " << circuit;
        }
    }
}

TEST(CliProgram, CheckAndSolveNeverStartTheGraphics) {
    // A graphics platform that does not exist would stop any Qt start-up dead.
    const std::string run = "QT_QPA_PLATFORM=no-such-platform " + std::string(AMPORA_CLI_PATH);
    EXPECT_EQ(Shell(run + " check " + Quoted(Example("supernode.amq")) + " > /dev/null"), 0);
    EXPECT_EQ(Shell(run + " solve " + Quoted(Example("supernode.amq")) + " > /dev/null"), 0);
}

// Pixels per metre across and down, from a PNG file's pHYs chunk; "none" without one.
std::string PngResolution(const std::string& png) {
    const std::size_t at = png.find("pHYs");
    if (at == std::string::npos || at + 13 > png.size()) {
        return "none";
    }
    const auto number = [&](std::size_t from) {
        unsigned long value = 0;
        for (std::size_t k = from; k < from + 4; ++k) {
            value = value * 256 + static_cast<unsigned char>(png[k]);
        }
        return std::to_string(value);
    };
    return number(at + 4) + " x " + number(at + 8) + " per " +
           (png[at + 12] == 1 ? "metre" : "unit");
}

TEST_F(CliPictureProgram, EveryExampleInEveryViewHoldsEachDevicesLabelAsTextAndItsPngIs300Dpi) {
    test::TempDir folder;
    const char* views[] = {"values", "currents", "voltages", "power"};
    for (const std::filesystem::path& file : test::ExampleFiles()) {
        test::SolveSession session;
        test::Solve(session, test::ReadBytes(file), 1);
        ASSERT_TRUE(session.solved) << file;
        const Circuit& circuit = session.ws.Circuit;
        for (int view = 0; view < 4; ++view) {
            const std::string base = (folder / file.stem()).string() + "_" + views[view];
            for (const char* extension : {".svg", ".png"}) {
                ASSERT_EQ(Shell(std::string(AMPORA_CLI_PATH) + " picture --autoname --view " +
                                views[view] + " " + Quoted(file) + " -o " +
                                Quoted(base + extension)),
                          0)
                    << base << extension;
            }
            const std::string svg = test::ReadBytes(base + ".svg");
            std::string missing;
            for (int slot = 1; slot <= circuit.NumElements; ++slot) {
                const Element& e = circuit.Elements[slot];
                if (e.Kind == kEmpty) {
                    continue;
                }
                const std::string label =
                    view == 0 ? ValueLabelText(e, "") : ElementLabel(session.ws, slot, view, 3);
                if (svg.find(">" + label + "</text>") == std::string::npos) {
                    missing += " [" + label + "]";
                }
            }
            EXPECT_EQ(missing, "") << base << ".svg";
            EXPECT_EQ(PngResolution(test::ReadBytes(base + ".png")), "11811 x 11811 per metre")
                << base;
        }
    }
}

} // namespace
} // namespace ampora
