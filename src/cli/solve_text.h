#pragma once
// `ampora-cli solve --text`: the solution of a circuit as an answer key to read on a
// terminal, in aligned plain text: the node voltages, every device's current, voltage and
// power with units and the diagram's arrows, the power totals, the equations, the matrix
// before and after elimination, and the solutions.

#include "cli/solve_run.h"
#include "tables/workspace.h"

#include <string>

namespace ampora::cli {

// `fileName` heads the text. `ws` is the workspace `run` solved; the labels of the four views
// are written through it, as the window does, and its view is left on the element values.
std::string SolveText(Workspace& ws, const SolvedRun& run, const std::string& message,
                      const std::string& fileName);

} // namespace ampora::cli
