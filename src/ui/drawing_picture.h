#pragma once
// The drawing as a picture for a page, an exam sheet or a worksheet: the diagram the canvas
// shows in the workspace's step and view, with its labels, cropped to the circuit with a small
// margin and without the grid. As an image and SVG for the clipboard, as an SVG file (text
// kept as text) or a PNG file at 300 dpi.

#include "editor/diagram_labels.h"
#include "editor/editor_state.h"
#include "report/report_files.h"

#include <QImage>
#include <string>

class QMimeData;

namespace ampora {
struct Workspace;
}

namespace ampora::ui {

// The labels the canvas shows: in step 1 each device's value as it was typed (`editor`), or as
// stored when there is no editor (a file just read); from step 2 on the node names too, and
// in step 3 the view's quantities, unless the results are hidden for practice.
DiagramLabels StepLabels(const Workspace& ws, const EditorState* editor,
                         bool resultsHidden = false);

// The pixels of a PNG file per inch, and of the screen the drawing is measured in.
inline constexpr double kPictureDpi = 300;

QImage DrawingImage(const Workspace& ws, const DiagramLabels& labels, qreal scale);
// The file's bytes; empty for an empty drawing or when it cannot be drawn.
std::string DrawingSvg(const Workspace& ws, const DiagramLabels& labels);
std::string DrawingPng(const Workspace& ws, const DiagramLabels& labels);
std::string DrawingBytes(const Workspace& ws, const DiagramLabels& labels,
                         DrawingFileFormat format);

// The drawing for the clipboard, as an image and as SVG; null for an empty drawing.
QMimeData* DrawingMimeData(const Workspace& ws, const DiagramLabels& labels);

} // namespace ampora::ui
