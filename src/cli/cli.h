#pragma once
// ampora-cli: the batch companion of the program. Commands write their JSON or file
// to `out`, messages to `err`, and return the process exit code.

#include "report/report_builder.h"
#include "report/report_files.h"
#include "report/rich_text_document.h"
#include "tables/workspace.h"

#include <ostream>
#include <string>
#include <vector>

namespace ampora::cli {

constexpr int kExitOk = 0;
constexpr int kExitRejected = 1;
constexpr int kExitUsage = 2;

// What the report and the picture need beyond the core: the report's pictures and PDF pages,
// the drawing's file. ampora-cli gets one from the window's code when it is built with it.
struct ReportRenderer {
    virtual ~ReportRenderer() = default;
    virtual ReportPictures& Pictures() = 0;
    // The report as the bytes of a PDF file; empty when it cannot be drawn.
    virtual std::string PdfBytes(const RichTextDocument& report) = 0;
    // The drawing as the window shows it in ws's step and view, as the bytes of an SVG or
    // PNG file; empty when it cannot be drawn (an empty drawing).
    virtual std::string DrawingBytes(const Workspace& ws, DrawingFileFormat format) = 0;
};

int RunCli(const std::vector<std::string>& args, std::ostream& out, std::ostream& err,
           ReportRenderer* renderer = nullptr);

int RunCheck(const std::vector<std::string>& args, std::ostream& out, std::ostream& err);

int RunSolve(const std::vector<std::string>& args, std::ostream& out, std::ostream& err);

// A student's equation at a node or supernode, judged: exit 0 when right, 1 when wrong.
int RunCheckEquation(const std::vector<std::string>& args, std::ostream& out, std::ostream& err);

// A student's file of equations ("AT: EQUATION") and values ("NAME = VALUE"), each line
// judged, then the score.
int RunGrade(const std::vector<std::string>& args, std::ostream& out, std::ostream& err);

// Without a renderer the report cannot be drawn: a message and the usage exit code.
int RunReport(const std::vector<std::string>& args, std::ostream& out, std::ostream& err,
              ReportRenderer* renderer);

// A new practice circuit as a .amq file.
int RunGenerate(const std::vector<std::string>& args, std::ostream& out, std::ostream& err);

// A worksheet of practice circuits and its answer key; like the report, drawn by a renderer.
int RunWorksheet(const std::vector<std::string>& args, std::ostream& out, std::ostream& err,
                 ReportRenderer* renderer);

// Without a renderer the drawing cannot be drawn either.
int RunPicture(const std::vector<std::string>& args, std::ostream& out, std::ostream& err,
               ReportRenderer* renderer);

} // namespace ampora::cli
