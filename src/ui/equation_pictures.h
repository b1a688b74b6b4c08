#pragma once
// The pictures of the equations tab: every equation of a list set one under another as a
// textbook prints it, in one of the four font sets. The report copies the same pictures.

#include <QImage>
#include <string>
#include <vector>

namespace ampora {
struct Workspace;
}

namespace ampora::ui {

// One equation under another, a blank line between them, on white, cropped to what was drawn
// with a small margin. No equations give a null image. `scale` device pixels per pixel give
// the report a picture that prints sharply; its size in pixels stays the same.
QImage RenderEquationPicture(const std::vector<std::string>& equations, int fontIndex,
                             qreal scale = 1);

// Picture 1 holds the equations as first written, picture 2 the collected ones, in the
// workspace's font set.
QImage EquationPicture(const Workspace& ws, int which, qreal scale = 1);

} // namespace ampora::ui
