#pragma once
// The icons of the eight toolbar buttons, painted as vectors at whatever size is asked.

#include <QIcon>

namespace ampora::ui {

// `tool` 1..8: Wire, Battery, Resistor, Current Source, Number, Move/Stretch, Erase,
// Undo Erase.
QIcon ToolIcon(int tool);

} // namespace ampora::ui
