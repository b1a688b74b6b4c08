#pragma once
// The wiring of a practice circuit: a rectangular lattice of points on which some of the
// links between neighbours are wires. Points where three or four wires meet are the nodes;
// a chain is the run of wires from one node to the next, through corners and straight
// joints, and becomes one branch of the circuit.

#include "practice/practice_random.h"

#include <optional>
#include <vector>

namespace ampora {

// A link between two neighbouring lattice points; `to` lies right of or below `from`.
struct MeshLink {
    int from = 0;
    int to = 0;
};

struct MeshChain {
    int start = 0; // index into PracticeMesh::nodes
    int end = 0;
    std::vector<int> points; // lattice points from the start node's to the end node's
};

struct PracticeMesh {
    int columns = 0;
    int rows = 0;
    int firstColumn = 0; // the first column and row that hold a wire: drawn at the top left
    int firstRow = 0;
    std::vector<MeshLink> links;
    std::vector<int> nodes; // lattice points where three or four links meet, in point order
    std::vector<MeshChain> chains;

    // Lattice points on the 8-unit grid, far enough apart for two devices and their
    // labels on one link.
    float X(int point) const;
    float Y(int point) const;
};

// The top row leaves room for the labels above it below the toolbar, which lies over the
// top of the canvas; four columns and three rows fit the canvas of a window at its first size.
inline constexpr float kMeshLeft = 64;
inline constexpr float kMeshTop = 96;
inline constexpr float kMeshSpacing = 128;
inline constexpr int kColumnsOnCanvas = 4;

// One try at a lattice with exactly `nodes` nodes, all joined, every link on a chain
// between two different nodes; nothing when this try did not come out so.
std::optional<PracticeMesh> TryPracticeMesh(PracticeRandom& random, int nodes);

} // namespace ampora
