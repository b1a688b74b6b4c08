#include "analysis/result_labels.h"
#include "cli/cli.h"
#include "editor/value_labels.h"
#include "support/cli_run.h"
#include "support/solve_session.h"
#include "support/test_files.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>

namespace ampora {
namespace {

// A drawing whose bytes say which step and view it shows, in which format.
struct FakeRenderer : cli::ReportRenderer {
    struct : ReportPictures {
        ReportPicture Circuit(const Workspace&) override { return {}; }
        ReportPicture Equation(const Workspace&, int) override { return {}; }
    } pictures;
    ReportPictures& Pictures() override { return pictures; }
    std::string PdfBytes(const RichTextDocument&) override { return {}; }
    std::string DrawingBytes(const Workspace& ws, DrawingFileFormat format) override {
        if (ws.circuit.NumWires == 0) {
            return {};
        }
        return "step " + std::to_string(ws.Step) + " view " + std::to_string(ws.ViewMode) +
               (format == DrawingFileFormat::Svg ? " svg" : " png");
    }
};

std::string Example(const char* name) {
    return (test::ExamplesDir() / name).string();
}

struct PictureCase {
    std::vector<std::string> args; // OUT stands for the output file, REFUSED for a refused circuit
    int code;
    std::string written; // the output file's bytes; empty: none written
    std::string err;     // its start
};

TEST(CliPicture, EachViewIsDrawnFromItsStepAndAViewThatNeedsSolvingNeedsASolvedCircuit) {
    test::TempDir folder;
    const std::string refused = (folder / "two_refs.amq").string();
    test::WriteBytes(refused,
                     test::ExampleText("wheatstone_bridge.amq", "\"V1\",\"V1\"", "\"0\",\"0\""));
    const std::string empty = (folder / "empty.amq").string();
    test::WriteBytes(empty, "0\r\n0\r\n0\r\n");
    const std::string bridge = Example("wheatstone_bridge.amq");
    const std::vector<PictureCase> cases = {
        {{bridge, "-o", "OUT.svg"}, 0, "step 1 view 0 svg", ""},
        {{"--view", "values", refused, "-o", "OUT.PNG"}, 0, "step 1 view 0 png", ""},
        {{"--view", "currents", bridge, "-o", "OUT.png"}, 0, "step 3 view 1 png", ""},
        {{"--autoname=2", "--view", "voltages", bridge, "-o", "OUT.svg"},
         0,
         "step 3 view 2 svg",
         ""},
        {{"--view", "power", "-o", "OUT.svg", bridge}, 0, "step 3 view 3 svg", ""},
        {{"--view", "power", refused, "-o", "OUT.svg"},
         1,
         "",
         "ampora-cli: " + refused + ": not solved, so there is no such view: "},
        {{empty, "-o", "OUT.svg"},
         1,
         "",
         "ampora-cli: " + empty + ": the drawing is empty, so there is no picture\n"},
        {{(folder / "gone.amq").string(), "-o", "OUT.svg"}, 2, "", "ampora-cli: "},
    };
    FakeRenderer renderer;
    for (const PictureCase& row : cases) {
        const std::string out = (folder / "picture").string();
        std::filesystem::remove(out + ".svg");
        std::filesystem::remove(out + ".png");
        std::filesystem::remove(out + ".PNG");
        std::vector<std::string> args = {"picture"};
        std::string output;
        for (const std::string& arg : row.args) {
            args.push_back(arg.rfind("OUT", 0) == 0 ? out + arg.substr(3) : arg);
            if (arg.rfind("OUT", 0) == 0) {
                output = args.back();
            }
        }
        const test::CliRun run = test::Cli(args, &renderer);
        EXPECT_EQ(run.code, row.code) << args[1] << " " << run.err;
        EXPECT_EQ(run.err.substr(0, row.err.size()), row.err) << args[1];
        EXPECT_EQ(std::filesystem::exists(output), !row.written.empty()) << args[1];
        if (!row.written.empty()) {
            EXPECT_EQ(test::ReadBytes(output), row.written);
        }
    }
}

TEST(CliPicture, WrongArgumentsAreNamedWithThePictureUsage) {
    const std::string usage = "usage: ampora-cli picture [--autoname[=1|2|3]] [--sigfigs N]\n"
                              "                          [--view values|currents|voltages|power] "
                              "FILE.amq\n"
                              "                          -o OUT.(svg|png)\n";
    const std::vector<std::pair<std::vector<std::string>, std::string>> cases = {
        {{"a.amq"}, "no -o OUT given: the picture needs a file to write"},
        {{"a.amq", "-o", "a.pdf"}, "-o a.pdf: the picture is written as .svg or .png"},
        {{"a.amq", "-o", ""}, "-o \"\": the picture's file name is empty"},
        {{"a.amq", "-o"}, "-o: the name of the picture's file must follow it"},
        {{"a.amq", "-o", "a.svg", "--view", "current"},
         "--view current: the view is values, currents, voltages or power"},
        {{"a.amq", "-o", "a.svg", "--view"},
         "--view: a view (values, currents, voltages or power) must follow it"},
        {{"a.amq", "-o", "a.svg", "--font", "2"}, "--font: only report takes this option"},
        {{"a.amq", "-o", "a.svg", "--text"}, "--text: only solve takes this option"},
    };
    for (const auto& [args, message] : cases) {
        std::vector<std::string> all = {"picture"};
        all.insert(all.end(), args.begin(), args.end());
        const test::CliRun run = test::Cli(all);
        EXPECT_EQ(run.code, 2) << message;
        EXPECT_EQ(run.err, "ampora-cli: " + message + "\n" + usage);
    }
    const auto firstLine = [](const std::string& text) { return text.substr(0, text.find('\n')); };
    EXPECT_EQ(firstLine(test::Cli({"solve", "--view", "power", "a.amq"}).err),
              "ampora-cli: --view: only picture takes this option");
    EXPECT_EQ(firstLine(test::Cli({"check", "--autoname", "a.amq"}).err),
              "ampora-cli: --autoname: only solve, report and picture take this option");
}

// The real program, drawing with the window's code.
#ifdef AMPORA_CLI_DRAWS_REPORTS
constexpr bool kCliDraws = true;
#else
constexpr bool kCliDraws = false;
#endif

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

TEST(CliPictureProgram, EveryExampleInEveryViewHoldsEachDevicesLabelAsTextAndItsPngIs300Dpi) {
    if (!kCliDraws) {
        GTEST_SKIP() << "this build of ampora-cli has no graphics";
    }
    test::TempDir folder;
    const char* views[] = {"values", "currents", "voltages", "power"};
    for (const std::filesystem::path& file : test::ExampleFiles()) {
        test::SolveSession session;
        test::Solve(session, test::ReadBytes(file), 1);
        ASSERT_TRUE(session.solved) << file;
        const Circuit& circuit = session.ws.circuit;
        for (int view = 0; view < 4; ++view) {
            const std::string base = (folder / file.stem()).string() + "_" + views[view];
            for (const char* extension : {".svg", ".png"}) {
                const std::string command = std::string(AMPORA_CLI_PATH) + " picture --autoname " +
                                            "--view " + views[view] + " '" + file.string() +
                                            "' -o '" + base + extension + "'";
                ASSERT_EQ(std::system(command.c_str()), 0) << command;
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
