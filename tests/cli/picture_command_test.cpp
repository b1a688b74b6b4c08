#include "analysis/result_labels.h"
#include "cli/cli.h"
#include "editor/value_labels.h"
#include "support/cli_run.h"
#include "support/solve_session.h"
#include "support/test_files.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <sstream>

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

// Values are drawn as step 1 shows them, even of a circuit that does not solve; the other
// views only of a solved circuit.
TEST(CliPicture, EachViewIsDrawnFromItsStepAndOnlyASolvedCircuitHasTheOthers) {
    test::TempDir folder;
    test::WriteBytes(folder / "refused.amq",
                     test::ExampleText("wheatstone_bridge.amq", "\"V1\",\"V1\"", "\"0\",\"0\""));
    test::WriteBytes(folder / "empty.amq", "0\r\n0\r\n0\r\n");
    test::WriteBytes(folder / "bridge.amq", test::ExampleText("wheatstone_bridge.amq"));
    FakeRenderer renderer;
    std::string dump;
    for (const char* row : {"values refused.amq p.PNG", "power bridge.amq p.svg",
                            "power refused.amq q.svg", "values empty.amq r.svg"}) {
        std::istringstream words(row);
        std::string view, file, out;
        words >> view >> file >> out;
        const test::CliRun run = test::Cli(
            {"picture", "--view", view, (folder / file).string(), "-o", (folder / out).string()},
            &renderer);
        std::string err = run.err;
        if (const auto at = err.find(folder.Path().string()); at != std::string::npos) {
            err.erase(at, folder.Path().string().size() + 1);
        }
        dump +=
            std::to_string(run.code) + " " +
            (std::filesystem::exists(folder / out) ? test::ReadBytes(folder / out) + "\n" : err);
    }
    EXPECT_EQ(dump, "0 step 1 view 0 png\n"
                    "0 step 3 view 3 svg\n"
                    "1 ampora-cli: refused.amq: not solved, so there is no such view: You can only "
                    "have one reference node named 0.  You must rename the other ones.\n"
                    "1 ampora-cli: empty.amq: the drawing is empty, so there is no picture\n");
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
