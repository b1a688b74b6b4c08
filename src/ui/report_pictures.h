#pragma once
// The report's pictures rendered with Qt: the diagram in each view and the two equation
// pictures, handed to the report builder as PNG bytes.

#include "report/report_builder.h"

#include <QImage>

namespace ampora::ui {

// A picture for the report: PNG bytes and the size it is shown at (device-independent
// pixels); a null image gives no bytes.
ReportPicture ToReportPicture(const QImage& image);

class QtReportPictures : public ReportPictures {
  public:
    ReportPicture Circuit(const Workspace& ws) override;
    ReportPicture Equation(const Workspace& ws, int which) override;
};

} // namespace ampora::ui
