#include "support/cli_run.h"
#include "support/test_files.h"

#include <gtest/gtest.h>

namespace ampora {
namespace {

using test::Cli;
using test::CliRun;

TEST(CliCheck, PrintsTheTablesOfAFileReadWhole) {
    test::TempDir dir;
    const std::string path = (dir / "c.amq").string();
    test::WriteBytes(path, "1\r\n40,80,200,80\r\n1\r\n120,80,3,0.1\r\n1\r\n\"A\",\"A\",40,80\r\n");
    const CliRun run = Cli({"check", path});
    EXPECT_EQ(run.code, 0);
    EXPECT_EQ(run.err, "");
    EXPECT_EQ(test::OneLine(run.out),
              "{\"complete\": true,"
              "\"wires\": [{\"slot\": 1,\"x1\": 40,\"y1\": 80,\"x2\": 200,\"y2\": 80}],"
              "\"elements\": [{\"slot\": 1,\"kind\": 3,\"value\": 0.10000000149011612,"
              "\"x\": 120,\"y\": 80}],"
              "\"nodes\": [{\"slot\": 1,\"name\": \"A\",\"x\": 40,\"y\": 80}]}");
}

TEST(CliCheck, ReadsEveryExampleWhole) {
    for (const auto& example : test::ExampleFiles()) {
        const CliRun run = Cli({"check", example.string()});
        EXPECT_EQ(run.code, 0) << example << run.err;
    }
}

TEST(CliCheck, AFileThatStopsEarlySaysWhereAndExitsOne) {
    test::TempDir dir;
    const std::string path = (dir / "c.amq").string();
    test::WriteBytes(path, "2\r\n0,0,80,0\r\n");
    const CliRun run = Cli({"check", path});
    EXPECT_EQ(run.code, 1);
    EXPECT_EQ(run.err,
              "ampora-cli: " + path +
                  ": reading stopped: the file ends where wire 2 should follow (line 3)\n");
    EXPECT_NE(run.out.find("\"complete\": false"), std::string::npos);
}

TEST(CliCheck, AMissingFileExitsTwo) {
    const CliRun missing = Cli({"check", "/nonexistent/c.amq"});
    EXPECT_EQ(missing.code, 2);
    EXPECT_EQ(missing.err, "ampora-cli: /nonexistent/c.amq: no such file\n");
}

} // namespace
} // namespace ampora
