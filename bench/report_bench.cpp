// Building the whole report of the largest example, as "Print report" does: once through the
// core builder alone (pictures handed in ready-made), once with the diagrams and equations
// drawn and encoded as PNG by the window's code.

#include "document/amq_file.h"
#include "document/circuit_edit.h"
#include "report/report_builder.h"
#include "report/rich_text_document.h"
#include "report/rtf_writer.h"
#include "workflow/step_transitions.h"

#ifdef AMPORA_BENCH_WITH_UI
#include "ui/report_pictures.h"

#include <QGuiApplication>
#endif

#include <benchmark/benchmark.h>

#include <memory>

namespace {

using ampora::Workspace;

struct QuietPrompts : ampora::Prompts {
    void ShowMessage(const std::string&, ampora::MessageIcon) override {}
    bool AskYesNo(const std::string&) override { return false; }
    std::string AskText(const std::string&, const std::string&, float, float) override {
        return "";
    }
};

Workspace SolvedLargestExample() {
    Workspace ws;
    ampora::EraseWholeCircuit(ws.Circuit);
    ampora::LoadFromIniFile(ws.Circuit, AMPORA_SOURCE_DIR "/examples/two_supernodes.amq");
    QuietPrompts prompts;
    ampora::LeaveStep1(ws, prompts);
    ampora::LeaveStep2(ws, prompts);
    return ws;
}

// Pictures of the size the window makes (a 30 kB PNG each), ready before the clock starts.
struct ReadyPictures : ampora::ReportPictures {
    ampora::ReportPicture picture{std::string(30000, 'p'), 420, 300};
    ampora::ReportPicture Circuit(const Workspace&) override { return picture; }
    ampora::ReportPicture Equation(const Workspace&, int) override { return picture; }
};

void BM_ReportBuilder(benchmark::State& state) {
    Workspace ws = SolvedLargestExample();
    ReadyPictures pictures;
    for (auto _ : state) {
        ampora::RichTextDocument report;
        ampora::LoadRTBoxWithReport(ws, report, pictures);
        benchmark::DoNotOptimize(ampora::RtfText(report));
    }
}
BENCHMARK(BM_ReportBuilder)->Unit(benchmark::kMillisecond);

#ifdef AMPORA_BENCH_WITH_UI
void BM_ReportWithDrawnPictures(benchmark::State& state) {
    static std::unique_ptr<QGuiApplication> application = [] {
        qputenv("QT_QPA_PLATFORM", "offscreen");
        static int argc = 1;
        static char name[] = "ampora_bench";
        static char* argv[] = {name, nullptr};
        return std::make_unique<QGuiApplication>(argc, argv);
    }();
    Workspace ws = SolvedLargestExample();
    ampora::ui::QtReportPictures pictures;
    for (auto _ : state) {
        ampora::RichTextDocument report;
        ampora::LoadRTBoxWithReport(ws, report, pictures);
        benchmark::DoNotOptimize(ampora::RtfText(report));
    }
}
BENCHMARK(BM_ReportWithDrawnPictures)->Unit(benchmark::kMillisecond);
#endif

} // namespace
