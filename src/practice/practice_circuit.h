#pragma once
// Practice circuits: made from a seed, drawn as the editor draws and a textbook prints, and
// proven solvable by running the student's steps on them before they are handed out.

#include "practice/practice_mesh.h"
#include "practice/practice_shape.h"
#include "tables/circuit.h"
#include "tables/workspace.h"

#include <cstdint>
#include <vector>

namespace ampora {

enum class BranchKind { Resistor, BatteryAndResistor, Battery, Source };

// What one chain of the mesh holds. The battery's EMF is the rise in voltage from the
// chain's start node to its end node; the source's current flows from start to end.
struct PlannedBranch {
    BranchKind kind = BranchKind::Resistor;
    float resistance = 0;
    float emf = 0;
    float current = 0;
};

struct PracticeCircuit {
    Circuit drawn; // wires and devices, no node found yet: as it opens in step 1
    PracticeMesh mesh;
    std::vector<PlannedBranch> branches; // one per mesh chain
};

// The circuit of `shape` made from `seed`: the same seed gives the same circuit. With
// `nice` every node voltage comes out whole or with one decimal. The shape must be one
// that ShapeRefusal accepts.
PracticeCircuit MakePracticeCircuit(const PracticeShape& shape, std::uint32_t seed, bool nice);

// Runs "Next >", AutoName and "Next >" on the drawn circuit as a student would. False, with
// the workspace as far as it got, when a step refused it.
bool SolveLikeAStudent(Workspace& ws, const Circuit& drawn);

// Whether every node voltage of a solved workspace is whole or has one decimal.
bool HasNiceVoltages(const Workspace& ws);

} // namespace ampora
