// Sessions with ampora-cli, kept as transcripts under tests/data/cli/: each "$ " line is run
// again and what it writes replaces the lines after it, up to its "[exit N]"; the whole text
// must come out as the file holds it. Lines starting with "#" between the sessions say why a
// case matters and are kept as they are.
//
//   $ ampora-cli ARGS [> /dev/null] [| grep [-c] [-e] TEXT [-e TEXT ...]]
//   $ cat FILE        $ ls FOLDER        $ grep [-c] [-e] TEXT [-e TEXT ...] FILE
//
// Arguments are split at blanks, "..." or '...' keeps one together (also an empty one);
// $EXAMPLES, $DATA (tests/data/cli) and $TMP (a fresh folder for each transcript) stand for
// folders.
// What goes to stderr is shown with "2> " in front, a carriage return as \r.

#include "support/cli_run.h"
#include "support/test_files.h"

#include <gtest/gtest.h>

#include <regex>
#include <sstream>

namespace ampora {
namespace {

// Pictures and drawings whose bytes say what they show; the PDF names its first run.
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
    std::string PdfBytes(const RichTextDocument& report) override {
        return "pdf of " + report.Runs().front().Text;
    }
    std::string DrawingBytes(const Workspace& ws, DrawingFileFormat format) override {
        if (ws.Circuit.NumWires == 0) {
            return {};
        }
        return "step " + std::to_string(ws.Step) + " view " + std::to_string(ws.ViewMode) +
               (format == DrawingFileFormat::Svg ? " svg\n" : " png\n");
    }
};

std::vector<std::string> Words(const std::string& line) {
    static const std::regex word(R"re("([^"]*)"|'([^']*)'|([^ ]+))re");
    std::vector<std::string> words;
    for (auto it = std::sregex_iterator(line.begin(), line.end(), word);
         it != std::sregex_iterator(); ++it) {
        words.push_back((*it)[1].matched ? (*it)[1] : (*it)[2].matched ? (*it)[2] : (*it)[3]);
    }
    return words;
}

// Each line of `text` with `prefix` in front, a missing last line end added and marked.
std::string Shown(const std::string& text, const std::string& prefix = "") {
    std::string shown;
    std::istringstream lines(test::ReplaceAll(text, "\r", "\\r"));
    for (std::string line; std::getline(lines, line);) {
        shown += prefix + line + "\n";
    }
    return text.empty() || text.back() == '\n' ? shown : shown + "[no line end]\n";
}

class Transcript {
  public:
    // The folders' names stand for them in the command and in what it writes.
    std::string Run(const std::string& command) {
        const std::pair<std::string, std::string> folders[] = {
            {"$TMP", tmp_.Path().string()},
            {"$DATA", (test::DataDir() / "cli").string()},
            {"$EXAMPLES", test::ExamplesDir().string()}};
        std::vector<std::string> words = Words(command);
        for (std::string& word : words) {
            for (const auto& [name, folder] : folders) {
                word = test::ReplaceAll(word, name, folder);
            }
        }
        std::string shown = Result(words);
        for (const auto& [name, folder] : folders) {
            shown = test::ReplaceAll(shown, folder, name);
        }
        return shown;
    }

  private:
    std::string Result(std::vector<std::string> words) {
        if (words.size() == 2 && words[0] == "cat") {
            const bool found = std::filesystem::is_regular_file(words[1]);
            return found ? Shown(test::ReadBytes(words[1])) + "[exit 0]\n"
                         : "2> no such file\n[exit 1]\n";
        }
        if (words.size() == 2 && words[0] == "ls") {
            std::string shown;
            for (const std::string& name : test::NamesIn(words[1])) {
                shown += name + "\n";
            }
            return shown + "[exit 0]\n";
        }
        if (words.size() >= 3 && words[0] == "grep") {
            const std::string file = words.back();
            words.pop_back();
            return Grep(words, Shown(test::ReadBytes(file))) + "[exit 0]\n";
        }
        if (words.empty() || words[0] != "ampora-cli") {
            return "2> the transcript names no known command\n[exit 1]\n";
        }
        const auto pipe = std::find(words.begin(), words.end(), "|");
        const std::vector<std::string> grep(pipe == words.end() ? pipe : pipe + 1, words.end());
        words.erase(pipe, words.end());
        const bool quiet = words.size() >= 2 && words[words.size() - 2] == ">";
        words.resize(quiet ? words.size() - 2 : words.size());
        const test::CliRun run =
            test::Cli(std::vector<std::string>(words.begin() + 1, words.end()), &renderer_);
        const std::string out = quiet ? "" : Shown(run.out);
        return (grep.empty() ? out : Grep(grep, out)) + Shown(run.err, "2> ") + "[exit " +
               std::to_string(run.code) + "]\n";
    }

    // The lines of `text` holding any of the patterns of "grep [-c] [-e] TEXT [-e TEXT ...]",
    // or with -c how many there are.
    static std::string Grep(std::vector<std::string> patterns, const std::string& text) {
        const bool count = patterns.size() > 1 && patterns[1] == "-c";
        std::erase(patterns, "-c");
        std::erase(patterns, "-e");
        patterns.erase(patterns.begin()); // grep
        std::string kept;
        int matches = 0;
        std::istringstream lines(text);
        for (std::string line; std::getline(lines, line);) {
            for (const std::string& pattern : patterns) {
                if (line.find(pattern) != std::string::npos) {
                    kept += line + "\n";
                    ++matches;
                    break;
                }
            }
        }
        return count ? std::to_string(matches) + "\n" : kept;
    }

    test::TempDir tmp_;
    FakeRenderer renderer_;
};

// The file with every session run again; comments and commands stay as written.
std::string Replayed(const std::string& text) {
    Transcript transcript;
    std::string replayed;
    bool inOutput = false;
    std::istringstream lines(text);
    for (std::string line; std::getline(lines, line);) {
        if (line.rfind("$ ", 0) == 0) {
            replayed += line + "\n" + transcript.Run(line.substr(2));
            inOutput = true;
        } else if (inOutput) {
            inOutput = line.rfind("[exit ", 0) != 0;
        } else {
            replayed += line + "\n";
        }
    }
    return replayed;
}

TEST(CliTranscripts, EachSessionWritesWhatItsTranscriptHolds) {
    const auto folder = test::DataDir() / "cli";
    for (const char* name : {"arguments.txt", "check_and_solve.txt", "check_work.txt",
                             "report_and_picture.txt", "practice.txt"}) {
        SCOPED_TRACE(name);
        const std::string kept = test::ReadBytes(folder / name);
        const std::string replayed = Replayed(kept);
        EXPECT_EQ(replayed, test::ExpectedText(std::string("cli/") + name, replayed));
        // A transcript that lost its sessions would otherwise pass by running nothing.
        EXPECT_NE(kept.find("\n$ ampora-cli "), std::string::npos);
    }
}

// Without a renderer there are no pictures, so no report.
TEST(CliTranscripts, WithoutItsGraphicsTheReportCannotBeMade) {
    const test::CliRun run = test::Cli(
        {"report", (test::ExamplesDir() / "voltage_divider.amq").string(), "-o", "r.pdf"});
    EXPECT_EQ(run.code, cli::kExitUsage);
    EXPECT_EQ(run.err,
              "ampora-cli: this ampora-cli was built without the graphics the report needs\n");
}

// Without --seed the seed is told, so that the same circuit can be made again.
TEST(CliTranscripts, AMissingSeedIsToldAndMakesTheSameBytesAgain) {
    const test::TempDir folder;
    const auto make = [&](const std::string& name, const std::vector<std::string>& seed) {
        std::vector<std::string> args = {"generate",  "--nodes", "2",  "--supernodes",          "0",
                                         "--sources", "1",       "-o", (folder / name).string()};
        args.insert(args.end(), seed.begin(), seed.end());
        const test::CliRun run = test::Cli(args);
        EXPECT_EQ(run.code, 0) << run.err;
        return std::pair{test::ReadBytes(folder / name), run.err};
    };
    const auto [unseeded, told] = make("a.amq", {});
    std::smatch seed;
    ASSERT_TRUE(std::regex_match(told, seed, std::regex("ampora-cli: made with --seed (\\d+)\n")))
        << told;
    EXPECT_EQ(make("b.amq", {"--seed", seed[1]}).first, unseeded);
}

} // namespace
} // namespace ampora
