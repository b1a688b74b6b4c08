#include "support/cli_run.h"
#include "support/test_files.h"

#include <gtest/gtest.h>

namespace ampora {
namespace {

using test::Cli;
using test::CliRun;

std::string Example(const char* name) {
    return (test::ExamplesDir() / name).string();
}

TEST(CliSolve, ASolvedCircuitReportsItsVoltagesAndChainCurrents) {
    const CliRun run = Cli({"solve", "--autoname=2", Example("voltage_divider.amq")});
    EXPECT_EQ(run.code, 0);
    EXPECT_EQ(run.err, "");
    const std::string out = test::OneLine(run.out);
    EXPECT_EQ(out.substr(0, out.find(",{\"slot\": 2,\"start\"")),
              "{\"status\": \"solved\",\"step\": 3,\"message\": \"\","
              "\"nodes\": [{\"slot\": 1,\"name\": \"A\",\"x\": 240,\"y\": 80,\"voltage\": 6},"
              "{\"slot\": 2,\"name\": \"0\",\"x\": 240,\"y\": 240,\"voltage\": 0}],"
              "\"branches\": [{\"slot\": 1,\"start\": 1,\"end\": 2,"
              "\"path\": \"240,80;80,80;80,240;240,240\",\"resistance\": 1000,\"emf\": -12,"
              "\"source_current\": 0,\"current_name\": \"\",\"current\": -0.0060000000000000001}");
    EXPECT_NE(run.out.find("\"slot\": 6"), std::string::npos);
}

TEST(CliSolve, WithoutAutoNameTheNamesOfTheFileCarryOverAndTheirCheckDecides) {
    test::TempDir dir;
    const std::string path = (dir / "c.amq").string();
    test::WriteBytes(path, "4\r\n0,0,80,0\r\n80,0,160,0\r\n80,0,80,80\r\n0,0,0,80\r\n0\r\n"
                           "1\r\n\"V1\",\"V1\",80,0\r\n");
    // A wire leading nowhere: refused on leaving step 1, nodes and chains still shown.
    CliRun run = Cli({"solve", path});
    EXPECT_EQ(run.code, 1);
    EXPECT_NE(run.out.find("\"status\": \"rejected\",\n  \"step\": 1,\n  \"message\": \"You have "
                           "branches that lead nowhere and current cannot flow in them.  You must "
                           "go back and delete them.\",\n  \"nodes\": [\n    {\n      \"slot\": "
                           "1,\n      \"name\": \"V1\""),
              std::string::npos)
        << run.out;

    const std::string twoReferences = (dir / "r.amq").string();
    std::string text = test::ReadBytes(Example("wheatstone_bridge.amq"));
    text.replace(text.find("\"V2\",\"V2\""), 9, "\"0\",\"0\"");
    test::WriteBytes(twoReferences, text);
    for (const std::vector<std::string>& args :
         {std::vector<std::string>{"solve", twoReferences},
          std::vector<std::string>{"solve", "--autoname", twoReferences}}) {
        run = Cli(args);
        EXPECT_EQ(run.code, 1);
        EXPECT_NE(run.out.find("\"status\": \"rejected\",\n  \"step\": 2,\n  \"message\": \"You "
                               "can only have one reference node named 0.  You must rename the "
                               "other ones.\""),
                  std::string::npos)
            << run.out;
    }
}

TEST(CliSolve, ACircuitWithoutWiresStopsSilentlyAtStep1) {
    test::TempDir dir;
    const std::string path = (dir / "empty.amq").string();
    test::WriteBytes(path, "0\r\n0\r\n0\r\n");
    const CliRun run = Cli({"solve", "--autoname=3", path});
    EXPECT_EQ(run.code, 1);
    EXPECT_EQ(run.out, "{\n  \"status\": \"rejected\",\n  \"step\": 1,\n  \"message\": \"\"\n}\n");
}

TEST(CliSolve, MisreadDevicesAreListedAsWarningsAndAWellDrawnCircuitHasNone) {
    test::TempDir dir;
    const std::string path = (dir / "c.amq").string();
    std::string text = test::ReadBytes(Example("voltage_divider.amq"));
    EXPECT_NE(Cli({"solve", "--autoname", Example("voltage_divider.amq")})
                  .out.find("}\n  ],\n  \"warnings\": [],"),
              std::string::npos);
    text.replace(text.find("400,160,5,2000"), 14, "400,160,7,0");
    test::WriteBytes(path, text);
    const CliRun run = Cli({"solve", "--autoname", path});
    EXPECT_EQ(run.code, 0);
    EXPECT_NE(run.out.find("\"warnings\": [\n    \"The current source of 0 A at (400, 160): a "
                           "current source of 0 A is analysed as a plain wire; give it a value or "
                           "erase it.\"\n  ],"),
              std::string::npos)
        << run.out;
}

TEST(CliSolve, WrongArgumentsAndFilesThatCannotBeReadWholeExitTwo) {
    test::TempDir dir;
    const std::string broken = (dir / "broken.amq").string();
    test::WriteBytes(broken, "2\r\n0,0,80,0\r\n");
    const std::string good = Example("supernode.amq");
    for (const std::vector<std::string>& args : {std::vector<std::string>{"solve"},
                                                 {"solve", "--autoname=4", good},
                                                 {"solve", "--sigfigs", good},
                                                 {"solve", "--sigfigs", "0", good},
                                                 {"solve", good, good},
                                                 {"solve", "--font", good}}) {
        const CliRun run = Cli(args);
        EXPECT_EQ(run.code, 2) << args.size();
        EXPECT_EQ(run.out, "");
        EXPECT_EQ(run.err, "usage: ampora-cli solve [--autoname[=1|2|3]] [--sigfigs N] FILE.amq\n");
    }
    const CliRun run = Cli({"solve", broken});
    EXPECT_EQ(run.code, 2);
    EXPECT_EQ(run.out, "");
    EXPECT_EQ(run.err,
              "ampora-cli: " + broken + ": the file ends where wire 2 should follow (line 3)\n");
    EXPECT_EQ(Cli({"solve", "--sigfigs", "8", "--autoname=1", good}).code, 0);
}

} // namespace
} // namespace ampora
