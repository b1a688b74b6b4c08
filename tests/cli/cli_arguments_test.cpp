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
const std::string kPictureUsage =
    "usage: ampora-cli picture [--autoname[=1|2|3]] [--sigfigs N]\n"
    "                          [--view values|currents|voltages|power] FILE.amq\n"
    "                          -o OUT.(svg|png)\n";
const std::string kCheckEquationUsage =
    "usage: ampora-cli check-equation [--autoname[=1|2|3]] FILE.amq --at NAME \"EQUATION\"\n";
const std::string kGradeUsage =
    "usage: ampora-cli grade [--autoname[=1|2|3]] [--sigfigs N] FILE.amq ANSWERS.txt\n";
const std::string kAllUsage =
    "usage: ampora-cli check FILE.amq\n"
    "       ampora-cli solve [--autoname[=1|2|3]] [--sigfigs N] [--text] [--exact]\n"
    "                        [--gj FILE.gj] FILE.amq\n"
    "       ampora-cli report [--autoname[=1|2|3]] [--sigfigs N] [--font 1..4] FILE.amq\n"
    "                         -o OUT.(html|rtf|pdf)\n"
    "       ampora-cli picture [--autoname[=1|2|3]] [--sigfigs N]\n"
    "                          [--view values|currents|voltages|power] FILE.amq\n"
    "                          -o OUT.(svg|png)\n"
    "       ampora-cli check-equation [--autoname[=1|2|3]] FILE.amq --at NAME \"EQUATION\"\n"
    "       ampora-cli grade [--autoname[=1|2|3]] [--sigfigs N] FILE.amq ANSWERS.txt\n"
    "       ampora-cli generate --nodes N --supernodes S --sources K [--seed X] [--nice]\n"
    "                           -o FILE.amq\n"
    "       ampora-cli worksheet --count C [--nodes N --supernodes S --sources K] [--seed X]\n"
    "                            -o SHEET.(pdf|html) --key KEY.(pdf|html)\n";

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
         "slove: no such command; the commands are check, solve, report, picture, check-equation, "
         "grade, generate and worksheet",
         &kAllUsage},
        {{"check"}, "no circuit file (FILE.amq) given", &kCheckUsage},
        {{"check", "a.amq", "b.amq"},
         "b.amq: a second circuit file, after a.amq; one file is read at a time",
         &kCheckUsage},
        {{"check", "--sigfigs", "3", "a.amq"},
         "--sigfigs: only solve, report, picture and grade take this option",
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
        {{"solve", "-o", "r.pdf", "a.amq"},
         "-o: only report and picture take this option",
         &kSolveUsage},
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
        {{"report", "--view", "power", "a.amq", "-o", "r.pdf"},
         "--view: only picture takes this option",
         &kReportUsage},
        {{"picture", "a.amq"},
         "no -o OUT given: the picture needs a file to write",
         &kPictureUsage},
        {{"picture", "a.amq", "-o", "a.pdf"},
         "-o a.pdf: the picture is written as .svg or .png",
         &kPictureUsage},
        {{"picture", "a.amq", "-o", ""},
         "-o \"\": the picture's file name is empty",
         &kPictureUsage},
        {{"picture", "a.amq", "-o", "a.svg", "--view", "current"},
         "--view current: the view is values, currents, voltages or power",
         &kPictureUsage},
        {{"check-equation", "a.amq", "V1 = 0"},
         "no --at NAME given: name the node or supernode the equation is written at",
         &kCheckEquationUsage},
        {{"check-equation", "a.amq", "--at", "V1"},
         "no equation given: write it in quotes after the circuit file",
         &kCheckEquationUsage},
        {{"check-equation", "a.amq", "--at"},
         "--at: the name of a node must follow it",
         &kCheckEquationUsage},
        {{"check-equation", "a.amq", "--at", "", "V1 = 0"},
         "--at \"\": the node's name is empty",
         &kCheckEquationUsage},
        {{"check-equation", "a.amq", "--at", "V1", "V1 = 0", "V1 = 2"},
         "V1 = 2: a second equation; one equation is checked at a time",
         &kCheckEquationUsage},
        {{"check-equation", "--sigfigs", "3", "a.amq", "--at", "V1", "V1 = 0"},
         "--sigfigs: only solve, report, picture and grade take this option",
         &kCheckEquationUsage},
        {{"check-equation", "--at", "V1", "V1 = 0"}, // read as the circuit file
         "no equation given: write it in quotes after the circuit file",
         &kCheckEquationUsage},
        {{"grade", "a.amq"}, "no answers file (ANSWERS.txt) given", &kGradeUsage},
        {{"grade", "a.amq", "b.txt", "c.txt"},
         "c.txt: a third file; grade reads a circuit file and a file of answers",
         &kGradeUsage},
        {{"grade", "--at", "V1", "a.amq", "b.txt"},
         "--at: only check-equation takes this option",
         &kGradeUsage},
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
