#pragma once
// Step 2 points out the devices the analysis reads differently from how they look: a
// numbered list in the step-2 panel and a numbered ring around each device on the drawing.

#include "tables/analysis_tables.h"
#include "tables/workspace.h"

#include <vector>

class QLabel;
class QPainter;
class QWidget;

namespace ampora::ui {

// The list, scrolling inside the panel when it is long; empty and frameless when there is
// nothing to say. Returns the widget to lay out; `note` is the label to fill.
QWidget* MakeDrawingWarningsNote(QWidget* parent, QLabel*& note);

void ShowDrawingWarnings(QLabel* note, const std::vector<DrawingWarning>& warnings);

// The rings, numbered as the list is.
void PaintWarnedDevices(QPainter& painter, const Workspace& ws);

} // namespace ampora::ui
