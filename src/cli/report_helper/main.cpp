// The program ampora-cli runs for `report` and `picture`: the same commands, with the report's
// pictures and PDF pages and the drawing drawn by the window's own code on Qt's offscreen
// platform.
#include "cli/cli.h"
#include "ui/drawing_picture.h"
#include "ui/report_pictures.h"
#include "ui/text_cursor_sink.h"

#include <QGuiApplication>

#include <iostream>

namespace {

struct QtReportRenderer : ampora::cli::ReportRenderer {
    ampora::ui::QtReportPictures pictures;
    ampora::ReportPictures& Pictures() override { return pictures; }
    std::string PdfBytes(const ampora::RichTextDocument& report) override {
        return ampora::ui::ReportPdf(report);
    }
    std::string DrawingBytes(const ampora::Workspace& ws,
                             ampora::DrawingFileFormat format) override {
        return ampora::ui::DrawingBytes(ws, ampora::ui::StepLabels(ws, nullptr), format);
    }
};

} // namespace

int main(int argc, char* argv[]) {
    const std::vector<std::string> args(argv + 1, argv + argc);
    qputenv("QT_QPA_PLATFORM", "offscreen"); // no window, so no display is needed
    // Qt's notes about the desktop session mean nothing to someone making a report.
    qInstallMessageHandler([](QtMsgType type, const QMessageLogContext&, const QString& text) {
        if (type == QtCriticalMsg || type == QtFatalMsg) {
            std::cerr << text.toStdString() << "\n";
        }
    });
    QGuiApplication application(argc, argv);
    QtReportRenderer renderer;
    return ampora::cli::RunCli(args, std::cout, std::cerr, &renderer);
}
