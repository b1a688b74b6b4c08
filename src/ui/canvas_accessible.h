#pragma once
// The canvas as a screen reader hears it: one accessible child for each wire, device and
// (from step 2 on) node, named by a sentence; in step 2 the node names can be pressed.

class QAccessibleInterface;
class QObject;
class QString;

namespace ampora::ui {

// The factory Qt asks for the canvas's interface; installed once by the first canvas.
QAccessibleInterface* CanvasAccessibleFactory(const QString& className, QObject* object);

} // namespace ampora::ui
