#include "cli/cli.h"
#include "support/cli_run.h"
#include "support/solve_session.h"
#include "support/test_files.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <regex>

namespace ampora {
namespace {

// Pictures whose bytes say what they show; the PDF is a text file naming its first run.
struct FakeRenderer : cli::ReportRenderer {
    struct : ReportPictures {
        ReportPicture Circuit(const Workspace& ws) override {
            return {"view " + std::to_string(ws.ViewMode), 10, 10};
        }
        ReportPicture Equation(const Workspace&, int which) override {
            return {"equations " + std::to_string(which), 10, 10};
        }
    } pictures;
    ReportPictures& Pictures() override { return pictures; }
    bool WritePdf(const RichTextDocument& report, const std::string& path) override {
        test::WriteBytes(path, "pdf of " + report.Runs().front().Text);
        return true;
    }
};

test::CliRun Report(const std::vector<std::string>& args, cli::ReportRenderer* renderer) {
    std::vector<std::string> all = {"report"};
    all.insert(all.end(), args.begin(), args.end());
    return test::Cli(all, renderer);
}

std::string Example(const char* name) {
    return (test::ExamplesDir() / name).string();
}

TEST(CliReport, TheExtensionOfTheOutputChoosesTheFormat) {
    test::TempDir folder;
    FakeRenderer renderer;
    for (const char* name : {"r.rtf", "r.html", "r.pdf"}) {
        const test::CliRun run =
            Report({Example("wheatstone_bridge.amq"), "-o", (folder / name).string()}, &renderer);
        EXPECT_EQ(run.code, 0) << name << run.err;
        EXPECT_EQ(run.out + run.err, "") << name;
    }
    const std::string rtf = test::ReadBytes(folder / "r.rtf");
    EXPECT_EQ(rtf.rfind("{\\rtf1", 0), 0u);
    EXPECT_NE(rtf.find("Name of file containing circuit:"), std::string::npos);
    EXPECT_NE(rtf.find("wheatstone_bridge.amq"), std::string::npos);
    const std::string html = test::ReadBytes(folder / "r.html");
    EXPECT_NE(html.find("<title>DC Ampora - wheatstone_bridge.amq</title>"), std::string::npos);
    EXPECT_NE(html.find("Interpreting the RREF form gives the following solutions:"),
              std::string::npos);
    EXPECT_EQ(test::ReadBytes(folder / "r.pdf"), "pdf of Ampora\n");
}

TEST(CliReport, OptionsReachTheReport) {
    test::TempDir folder;
    FakeRenderer renderer;
    const std::string out = (folder / "r.rtf").string();
    ASSERT_EQ(Report({"--font", "1", "--sigfigs", "5", "--autoname=2",
                      Example("wheatstone_bridge.amq"), "-o", out},
                     &renderer)
                  .code,
              0);
    const std::string rtf = test::ReadBytes(out);
    // Arial 10 pt, five figures, and the nodes renamed A, B, C ... before solving.
    EXPECT_NE(rtf.find("{\\f0\\fs36\\b\\cf0 Ampora"), std::string::npos) << rtf.substr(0, 600);
    EXPECT_NE(rtf.find("6.5347"), std::string::npos);
    EXPECT_NE(rtf.find("Applying Kirchhoff's current law at node B, node C, respectively"),
              std::string::npos);
}

TEST(CliReport, ACircuitThatIsNotSolvedHasNoReport) {
    test::TempDir folder;
    // Two nodes named "0": step 2 refuses it with its message.
    test::WriteBytes(folder / "two_refs.amq",
                     test::ExampleText("wheatstone_bridge.amq", "\"V1\",\"V1\"", "\"0\",\"0\""));
    FakeRenderer renderer;
    const std::string out = (folder / "r.rtf").string();
    const test::CliRun run = Report({(folder / "two_refs.amq").string(), "-o", out}, &renderer);
    EXPECT_EQ(run.code, cli::kExitRejected);
    EXPECT_EQ(run.err.rfind("ampora-cli: " + (folder / "two_refs.amq").string() +
                                ": not solved, so there is no report: ",
                            0),
              0u)
        << run.err;
    EXPECT_FALSE(std::filesystem::exists(out));
}

TEST(CliReport, WithoutItsGraphicsTheReportCannotBeMade) {
    const test::CliRun run = Report({Example("voltage_divider.amq"), "-o", "r.pdf"}, nullptr);
    EXPECT_EQ(run.code, cli::kExitUsage);
    EXPECT_EQ(run.err,
              "ampora-cli: this ampora-cli was built without the graphics the report needs\n");
}

// The real program, with its real pictures, read back by programs that are not ours.
#ifdef AMPORA_CLI_DRAWS_REPORTS
constexpr bool kCliDrawsReports = true;
#else
constexpr bool kCliDrawsReports = false;
#endif

int Shell(const std::string& command) {
    return std::system(command.c_str());
}

std::string Quoted(const std::filesystem::path& path) {
    return "'" + path.string() + "'";
}

TEST(CliReportProgram, TheRtfReadsBackWithItsTextAndItsSixPictures) {
    if (!kCliDrawsReports) {
        GTEST_SKIP() << "this build of ampora-cli has no report graphics";
    }
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

TEST(CliReportProgram, ThePdfHasPagesWithTheReportOnThem) {
    if (!kCliDrawsReports) {
        GTEST_SKIP() << "this build of ampora-cli has no report graphics";
    }
    if (Shell("command -v pdftotext > /dev/null 2>&1") != 0) {
        GTEST_SKIP() << "pdftotext is not installed";
    }
    test::TempDir folder;
    ASSERT_EQ(Shell(std::string(AMPORA_CLI_PATH) + " report " + Quoted(Example("supernode.amq")) +
                    " -o " + Quoted(folder / "r.pdf")),
              0);
    EXPECT_EQ(test::ReadBytes(folder / "r.pdf").substr(0, 5), "%PDF-");
    ASSERT_EQ(Shell("pdftotext " + Quoted(folder / "r.pdf") + " " + Quoted(folder / "r.txt")), 0);
    const std::string text = test::ReadBytes(folder / "r.txt");
    for (const char* expected :
         {"Ampora", "Counting unknowns and equations:", "The electric power:"}) {
        EXPECT_NE(text.find(expected), std::string::npos) << expected << "\n" << text;
    }
}

TEST(CliReportProgram, CheckAndSolveNeverStartTheGraphics) {
    // A graphics platform that does not exist would stop any Qt start-up dead.
    const std::string run = "QT_QPA_PLATFORM=no-such-platform " + std::string(AMPORA_CLI_PATH);
    EXPECT_EQ(Shell(run + " check " + Quoted(Example("supernode.amq")) + " > /dev/null"), 0);
    EXPECT_EQ(Shell(run + " solve " + Quoted(Example("supernode.amq")) + " > /dev/null"), 0);
}

} // namespace
} // namespace ampora
