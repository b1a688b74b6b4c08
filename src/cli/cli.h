#pragma once
// ampora-cli: the batch companion of the program. Commands write their JSON or file
// to `out`, messages to `err`, and return the process exit code.

#include "report/report_builder.h"
#include "report/rich_text_document.h"

#include <ostream>
#include <string>
#include <vector>

namespace ampora::cli {

constexpr int kExitOk = 0;
constexpr int kExitRejected = 1;
constexpr int kExitUsage = 2;

// What the report needs beyond the core: its pictures and PDF pages. ampora-cli gets one
// from the window's code when it is built with it.
struct ReportRenderer {
    virtual ~ReportRenderer() = default;
    virtual ReportPictures& Pictures() = 0;
    // The report as the bytes of a PDF file; empty when it cannot be drawn.
    virtual std::string PdfBytes(const RichTextDocument& report) = 0;
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

} // namespace ampora::cli
