#pragma once
// Every table the windows share. The application owns one Workspace and hands it
// around by reference; a test builds its own.

#include "tables/analysis_tables.h"
#include "tables/circuit.h"
#include "tables/equation_tables.h"

#include <cstdint>
#include <string>

namespace ampora {

struct Preferences {
    std::int16_t SigFigs = 3;
    std::int16_t FontIndex = 3;
    std::int16_t AutoNamePattern = 1;
    bool ShowInstructions = true;
    // Step 3 keeps the results hidden until the student's equations are right.
    bool PracticeHideAnswers = false;
    bool ReportRowOperations = false; // the report lists the steps of the elimination
};

// The three steps the window is always in one of.
enum Steps : std::int16_t { kStepEdit = 1, kStepName = 2, kStepResults = 3 };

// What the labels of step 3 show.
enum ViewModes : std::int16_t {
    kViewValues = 0,
    kViewCurrents = 1,
    kViewVoltages = 2,
    kViewPower = 3
};

struct Workspace {
    ampora::Circuit Circuit;
    ampora::Topology Topology;
    NodeNaming Naming;
    AugmentedMatrix Matrix;
    ampora::Equations Equations;
    ampora::Preferences Preferences;

    std::int16_t Step = kStepEdit;
    std::int16_t ViewMode = kViewValues;
    double PowerIn = 0;
    double PowerOut = 0;
    std::string CurrentFileName; // empty while untitled
};

} // namespace ampora
