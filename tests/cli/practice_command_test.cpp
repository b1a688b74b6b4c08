#include "cli/cli.h"
#include "support/cli_run.h"
#include "support/test_files.h"

#include <gtest/gtest.h>

#include <regex>

namespace ampora {
namespace {

const std::string kGenerateUsage =
    "usage: ampora-cli generate --nodes N --supernodes S --sources K [--seed X] [--nice]\n"
    "                           -o FILE.amq\n";
const std::string kWorksheetUsage =
    "usage: ampora-cli worksheet --count C [--nodes N --supernodes S --sources K] [--seed X]\n"
    "                            -o SHEET.(pdf|html) --key KEY.(pdf|html)\n";

TEST(CliPractice, EachWrongArgumentIsNamedWithItsReasonAndTheUsageFollows) {
    const std::vector<std::string> shape = {"--nodes", "3", "--supernodes", "0", "--sources", "1"};
    const auto generate = [&](std::vector<std::string> args) {
        args.insert(args.begin(), "generate");
        return args;
    };
    const struct {
        std::vector<std::string> args;
        std::string message;
        const std::string* usage;
    } rows[] = {
        {generate({"--supernodes", "0", "--sources", "1", "-o", "a.amq"}),
         "no --nodes N given: the circuit needs its number of nodes", &kGenerateUsage},
        {generate({"--nodes", "3", "--sources", "1", "-o", "a.amq"}),
         "no --supernodes S given: the circuit needs its number of supernodes", &kGenerateUsage},
        {generate({"--nodes", "3", "--supernodes", "1", "-o", "a.amq"}),
         "no --sources K given: the circuit needs its number of current sources", &kGenerateUsage},
        {generate(shape), "no -o FILE.amq given: the circuit needs a file to write",
         &kGenerateUsage},
        {generate({"--nodes", "11"}), "--nodes 11: the nodes run from 2 to 10", &kGenerateUsage},
        {generate({"--nodes", "1"}), "--nodes 1: the nodes run from 2 to 10", &kGenerateUsage},
        {generate({"--supernodes", "4"}), "--supernodes 4: the supernodes run from 0 to 3",
         &kGenerateUsage},
        {generate({"--sources", "-1"}), "--sources -1: the current sources run from 0 to 4",
         &kGenerateUsage},
        {generate({"--seed", "4294967296"}),
         "--seed 4294967296: the seed is a whole number from 0 to 4294967295", &kGenerateUsage},
        {generate({"--seed", "x"}), "--seed x: the seed is a whole number from 0 to 4294967295",
         &kGenerateUsage},
        {generate({"--nodes"}), "--nodes: a number of nodes from 2 to 10 must follow it",
         &kGenerateUsage},
        {generate({"-o", "a.txt"}), "-o a.txt: the circuit is written as .amq", &kGenerateUsage},
        {generate({"-o", ""}), "-o \"\": the file name is empty", &kGenerateUsage},
        {generate({"--count", "2"}), "--count: only worksheet takes this option", &kGenerateUsage},
        {generate({"a.amq"}), "\"a.amq\": generate reads no circuit file; it makes its own",
         &kGenerateUsage},
        {generate({"--nice=1"}), "--nice=1: no such option", &kGenerateUsage},
        {{"worksheet", "-o", "s.pdf", "--key", "k.pdf"},
         "no --count C given: the worksheet needs its number of circuits",
         &kWorksheetUsage},
        {{"worksheet", "--count", "31"},
         "--count 31: the circuits run from 1 to 30",
         &kWorksheetUsage},
        {{"worksheet", "--count", "2", "--key", "k.pdf"},
         "no -o SHEET given: the worksheet needs a file to write",
         &kWorksheetUsage},
        {{"worksheet", "--count", "2", "-o", "s.pdf"},
         "no --key KEY given: the answer key needs a file to write",
         &kWorksheetUsage},
        {{"worksheet", "--count", "2", "-o", "s.rtf"},
         "-o s.rtf: the worksheet is written as .pdf or .html",
         &kWorksheetUsage},
        {{"worksheet", "--count", "2", "--key", "k.amq"},
         "--key k.amq: the answer key is written as .pdf or .html",
         &kWorksheetUsage},
        {{"worksheet", "--nice"}, "--nice: only generate takes this option", &kWorksheetUsage},
    };
    for (const auto& row : rows) {
        const test::CliRun run = test::Cli(row.args);
        EXPECT_EQ(run.code, 2) << row.message;
        EXPECT_EQ(run.err, "ampora-cli: " + row.message + "\n" + *row.usage);
        EXPECT_EQ(run.out, "");
    }
}

TEST(CliPractice, AShapeThatCannotBeMadeIsRefusedAndNothingIsWritten) {
    const test::TempDir folder;
    const std::string out = (folder / "c.amq").string();
    const struct {
        std::vector<std::string> args;
        std::string err;
    } rows[] = {
        {{"generate", "--nodes", "3", "--supernodes", "2", "--sources", "0", "-o", out},
         "ampora-cli: 3 nodes hold at most 1 supernode: a supernode joins two nodes of its own by "
         "a battery.\n"},
        {{"generate", "--nodes", "2", "--supernodes", "0", "--sources", "4", "-o", out},
         "ampora-cli: A circuit of 2 nodes has room for at most 2 current sources.\n"},
        {{"worksheet", "--count", "3", "--nodes", "5", "--supernodes", "3", "-o", out + ".pdf",
          "--key", out + ".html"},
         "ampora-cli: 5 nodes hold at most 2 supernodes: a supernode joins two nodes of its own "
         "by a battery.\n"},
    };
    for (const auto& row : rows) {
        const test::CliRun run = test::Cli(row.args);
        EXPECT_EQ(run.code, 2);
        EXPECT_EQ(run.err, row.err);
    }
    EXPECT_TRUE(std::filesystem::is_empty(folder.Path()));
}

// The bytes of a seed's circuit are pinned: a change to the drawing of random numbers, or a
// library whose generator differed, would make other circuits from the seeds teachers noted.
TEST(CliPractice, ASeedMakesTheSameBytesAndAMissingSeedIsToldSoItCanBeGivenAgain) {
    const test::TempDir folder;
    const auto make = [&](const std::string& name, std::vector<std::string> seed) {
        std::vector<std::string> args = {"generate",  "--nodes", "2",  "--supernodes",          "0",
                                         "--sources", "1",       "-o", (folder / name).string()};
        args.insert(args.end(), seed.begin(), seed.end());
        const test::CliRun run = test::Cli(args);
        EXPECT_EQ(run.code, 0) << run.err;
        return std::pair{test::ReadBytes(folder / name), run.err};
    };
    EXPECT_EQ(make("a.amq", {"--seed", "1"}).first,
              "7\r\n64,96,192,96\r\n64,96,64,224\r\n192,96,320,96\r\n192,96,192,224\r\n"
              "320,96,320,224\r\n64,224,192,224\r\n192,224,320,224\r\n3\r\n64,160,5,2.7\r\n"
              "320,160,7,4\r\n192,160,5,47\r\n0\r\n");
    EXPECT_EQ(make("b.amq", {"--seed", "1"}).first, make("a.amq", {"--seed", "1"}).first);
    EXPECT_NE(make("c.amq", {"--seed", "2"}).first, make("a.amq", {"--seed", "1"}).first);

    const auto [unseeded, told] = make("d.amq", {});
    std::smatch seed;
    ASSERT_TRUE(std::regex_match(told, seed, std::regex("ampora-cli: made with --seed (\\d+)\n")))
        << told;
    EXPECT_EQ(make("e.amq", {"--seed", seed[1]}).first, unseeded);
}

} // namespace
} // namespace ampora
