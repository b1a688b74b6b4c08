#pragma once
// The prose of the equations window: how many unknowns, how the reference node and the
// batteries reduce them, how many equations are needed; and the captions of the
// equations tab.

#include "tables/workspace.h"

#include <array>
#include <string>

namespace ampora {

std::string LoadTextboxWithCounting(const Workspace& ws);

// Captions 1 to 7 (entry 2 stays empty). Caption 4 of a single unknown quotes its solved
// voltage, so this runs after the node voltages are known.
std::array<std::string, 7> ChooseEqnText(const Workspace& ws, int sigFigs);

} // namespace ampora
