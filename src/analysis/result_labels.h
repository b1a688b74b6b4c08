#pragma once
// What each device's label shows in the four views of the diagram: its value, its
// current, its voltage or its power, with an arrow giving the direction on the screen.

#include "tables/workspace.h"

#include <string>
#include <vector>

namespace ampora {

// "12 V", "1000 Ω", "0.5 A": a device's value with its unit.
std::string ValueWithUnit(const Element& element);

// The voltage rise across a current source along its chain, or NaN when unknown.
double SourceVoltageRise(const Workspace& ws, const Element& element);

// The label of one live element in a view; "?" where the analysis left a quantity unknown.
std::string ElementLabel(const Workspace& ws, int slot, int viewMode, int sigFigs);

// Labels of element slots 1..NumElements (empty for empty slots) in ws.ViewMode; in the
// power view this also sums PowerIn and PowerOut.
std::vector<std::string> WriteLabels(Workspace& ws, int sigFigs);

// The text beside each node (by slot, 0 unused): its name, and in the voltage view its name
// with its voltage, such as "V1 = 6".
std::vector<std::string> NodeLabelTexts(const Workspace& ws, int viewMode, int sigFigs);

// The status-bar text of step 3 for the current view.
std::string ResultsStatusText(const Workspace& ws, int sigFigs);

// The status text each view button puts up.
std::string ViewButtonStatusText(int viewMode);

} // namespace ampora
