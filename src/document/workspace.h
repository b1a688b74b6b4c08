#pragma once
// Every table the windows share. The application owns one Workspace and hands it
// around by reference; a test builds its own.

#include "analysis/analysis_tables.h"
#include "document/circuit.h"
#include "equations/equation_tables.h"

#include <cstdint>
#include <string>

namespace ampora {

struct Preferences {
    std::int16_t SigFigs = 3;
    std::int16_t FontIndex = 3;
    std::int16_t AutoNamePattern = 1;
    bool ShowInstructions = true;
    bool ReportRowOperations = false; // the report lists the steps of the elimination
};

struct Workspace {
    Circuit circuit;
    Topology topology;
    NodeNaming naming;
    AugmentedMatrix Matrix;
    Equations equations;
    Preferences preferences;

    std::int16_t Step = 1;     // 1 edit, 2 name the nodes, 3 results
    std::int16_t ViewMode = 0; // 0 values, 1 currents, 2 voltages, 3 power
    double PowerIn = 0;
    double PowerOut = 0;
    std::string CurrentFileName; // empty while untitled
};

} // namespace ampora
