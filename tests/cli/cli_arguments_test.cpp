#include "support/cli_run.h"
#include "support/test_files.h"

#include <gtest/gtest.h>

namespace ampora {
namespace {

const std::string kCheckUsage = "usage: ampora-cli check FILE.amq\n";
const std::string kSolveUsage =
    "usage: ampora-cli solve [--autoname[=1|2|3]] [--sigfigs N] [--text] [--exact]\n"
    "                        [--gj FILE.gj] FILE.amq\n";
const std::string kReportUsage =
    "usage: ampora-cli report [--autoname[=1|2|3]] [--sigfigs N] [--font 1..4] FILE.amq\n"
    "                         -o OUT.(html|rtf|pdf)\n";
const std::string kAllUsage = "usage: ampora-cli check FILE.amq\n"
                              "       ampora-cli solve [--autoname[=1|2|3]] [--sigfigs N] "
                              "[--text] [--exact]\n"
                              "                        [--gj FILE.gj] FILE.amq\n"
                              "       ampora-cli report [--autoname[=1|2|3]] [--sigfigs N] "
                              "[--font 1..4] FILE.amq\n"
                              "                         -o OUT.(html|rtf|pdf)\n";

struct MalformedCase {
    std::vector<std::string> args;
    std::string message; // the line before the usage
    const std::string* usage;
};

// Every argument error names the argument and why, then shows the command's usage, before any
// file is opened: a.amq need not exist.
TEST(CliArguments, EachWrongArgumentIsNamedWithItsReasonAndTheUsageFollows) {
    const std::vector<MalformedCase> cases = {
        {{}, "no command given", &kAllUsage},
        {{"slove", "a.amq"},
         "slove: no such command; the commands are check, solve and report",
         &kAllUsage},
        {{"check"}, "no circuit file (FILE.amq) given", &kCheckUsage},
        {{"check", "a.amq", "b.amq"},
         "b.amq: a second circuit file, after a.amq; one file is read at a time",
         &kCheckUsage},
        {{"check", "--sigfigs", "3", "a.amq"},
         "--sigfigs: only solve and report take this option",
         &kCheckUsage},
        {{"solve"}, "no circuit file (FILE.amq) given", &kSolveUsage},
        {{"solve", ""}, "\"\": an empty argument names no circuit file", &kSolveUsage},
        {{"solve", "--autoname=4", "a.amq"},
         "--autoname=4: the naming pattern is 1, 2 or 3",
         &kSolveUsage},
        {{"solve", "--autoname=", "a.amq"},
         "--autoname=: the naming pattern is 1, 2 or 3",
         &kSolveUsage},
        {{"solve", "--sigfigs", "0", "a.amq"},
         "--sigfigs 0: the significant figures run from 1 to 17",
         &kSolveUsage},
        {{"solve", "--sigfigs", "a.amq"},
         "--sigfigs a.amq: the significant figures run from 1 to 17",
         &kSolveUsage},
        {{"solve", "a.amq", "--sigfigs"},
         "--sigfigs: a number of significant figures from 1 to 17 must follow it",
         &kSolveUsage},
        {{"solve", "--sigfigs=5", "a.amq"},
         "--sigfigs=5: write --sigfigs and its value apart",
         &kSolveUsage},
        {{"solve", "--text=yes", "a.amq"}, "--text=yes: --text takes no value", &kSolveUsage},
        {{"solve", "--exact=1", "a.amq"}, "--exact=1: --exact takes no value", &kSolveUsage},
        {{"solve", "a.amq", "--gj"},
         "--gj: the name of the matrix file must follow it",
         &kSolveUsage},
        {{"solve", "--gj", "", "a.amq"},
         "--gj \"\": the matrix file's name is empty",
         &kSolveUsage},
        {{"report", "--exact", "a.amq", "-o", "r.pdf"},
         "--exact: only solve takes this option",
         &kReportUsage},
        {{"solve", "--font", "2", "a.amq"}, "--font: only report takes this option", &kSolveUsage},
        {{"solve", "-o", "r.pdf", "a.amq"}, "-o: only report takes this option", &kSolveUsage},
        {{"solve", "--verbose", "a.amq"}, "--verbose: no such option", &kSolveUsage},
        {{"solve", "-", "a.amq"}, "-: no such option", &kSolveUsage},
        {{"report", "a.amq", "-o", "r.pdf", "--font", "5"},
         "--font 5: the font set runs from 1 to 4",
         &kReportUsage},
        {{"report", "a.amq", "-o", "r.pdf", "--font"},
         "--font: a font set from 1 to 4 must follow it",
         &kReportUsage},
        {{"report", "a.amq", "-o"},
         "-o: the name of the report's file must follow it",
         &kReportUsage},
        {{"report", "a.amq", "-o", ""}, "-o \"\": the report's file name is empty", &kReportUsage},
        {{"report", "a.amq", "-o", "r.docx"},
         "-o r.docx: the report is written as .html, .rtf or .pdf",
         &kReportUsage},
        {{"report", "a.amq"}, "no -o OUT given: the report needs a file to write", &kReportUsage},
        {{"report", "-o", "r.pdf"}, "no circuit file (FILE.amq) given", &kReportUsage},
        {{"report", "--text", "a.amq", "-o", "r.pdf"},
         "--text: only solve takes this option",
         &kReportUsage},
    };
    for (const MalformedCase& row : cases) {
        const test::CliRun run = test::Cli(row.args);
        std::string shown;
        for (const std::string& arg : row.args) {
            shown += " [" + arg + "]";
        }
        EXPECT_EQ(run.code, 2) << shown;
        EXPECT_EQ(run.out, "") << shown;
        EXPECT_EQ(run.err, "ampora-cli: " + row.message + "\n" + *row.usage) << shown;
    }
}

TEST(CliArguments, RightArgumentsInAnyOrderAreTaken) {
    const std::string file = (test::ExamplesDir() / "supernode.amq").string();
    for (const std::vector<std::string>& args :
         {std::vector<std::string>{"solve", "--sigfigs", "8", "--autoname=1", file},
          std::vector<std::string>{"solve", file, "--autoname", "--text", "--sigfigs", "17"},
          std::vector<std::string>{"check", file}}) {
        const test::CliRun run = test::Cli(args);
        EXPECT_EQ(run.code, 0) << args.size() << run.err;
        EXPECT_EQ(run.err, "");
    }
}

} // namespace
} // namespace ampora
