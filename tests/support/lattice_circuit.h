#pragma once
// Random circuits on a lattice, drawn as the editor would draw them, so that the program's
// answers can be checked against an independent simulator (ngspice_oracle.h) and the facts
// of the lattice graph itself rather than against itself.

#include "tables/circuit.h"

#include <optional>
#include <random>
#include <string>
#include <vector>

namespace ampora::test {

enum class LatticeDevice { None, Resistor, Battery, CurrentSource };

// An edge between two neighbouring lattice points; `to` lies right of or below `from`.
struct LatticeEdge {
    int from = 0;
    int to = 0;
    LatticeDevice device = LatticeDevice::None;
    float value = 0;
    bool forward = true; // battery + terminal, or source arrow, towards `to`
};

struct LatticeCircuit {
    int columns = 0;
    int rows = 0;
    std::vector<LatticeEdge> edges;
    // Drawn with one wire per straight run of edges instead of one per edge, so that wires
    // pass through points where other wires end (T-junctions) as a person draws them.
    bool longWires = false;

    float X(int point) const { return 80.0f + 80.0f * static_cast<float>(point % columns); }
    float Y(int point) const { return 80.0f + 80.0f * static_cast<float>(point / columns); }
};

struct LatticeOptions {
    int maxPoints = 12; // up to 20 points, as many nodes as the node table holds
    // Values with two or three decimals instead of multiples of 1/8; chain sums are then
    // rounded in single precision, which only a comparison at 1e-6 tolerates.
    bool decimals = false;
    double longWireShare = 0; // the share of circuits drawn with long wires
};

// A random lattice circuit in which every used point joins at least two edges. Values are
// multiples of 1/8, so sums along a chain stay exact in single precision and the
// comparison measures the solution, not the rounding of the tables.
LatticeCircuit RandomLatticeCircuit(std::mt19937& random, const LatticeOptions& options);

// One wire per edge (or per straight run, see longWires) and one device at the middle of
// each edge that has one, the devices in edge order.
Circuit DrawLattice(const LatticeCircuit& lattice);

// How many edges meet at each lattice point.
std::vector<int> Degrees(const LatticeCircuit& lattice);

// The lattice point at a canvas position, or -1.
int PointAt(const LatticeCircuit& lattice, float x, float y);

// What the simulator finds for a lattice.
struct OracleSolution {
    std::vector<double> voltage;       // per lattice point, the ground point at 0
    std::vector<double> screenCurrent; // per edge: positive up (vertical) or left (horizontal)
};

std::string DescribeLattice(const LatticeCircuit& lattice);

// The chains of a lattice circuit worked out on the lattice graph itself: the facts that
// decide whether nodal analysis, as the program does it, can take a circuit at all.
struct LatticeChain {
    int start = -1; // a node (a point of three or more edges); -1 for a node-free loop
    int end = -1;
    std::vector<int> edges;
    double emf = 0;          // battery voltages gained from start to end
    int sources = 0;         // current sources on the chain
    bool batteryOnly = true; // nothing but batteries and bare wire
};

struct LatticeFacts {
    int nodes = 0;
    std::vector<LatticeChain> chains; // each chain once, node-free loops included
    int nodeFreeLoops = 0;
    bool chainWithTwoSources = false;
    // Two battery-only chains join the same two nodes with the same voltage.
    bool identicalBatteryChains = false;
    // Battery-only chains close a loop whose voltages do not add up to zero.
    bool contradictoryBatteryLoop = false;
    // The nodal equations have no single solution: a loop of batteries and bare wire alone
    // (its current is free), or without the current sources the points fall apart (a part
    // floats, or hangs on sources alone).
    bool singular = false;
};

LatticeFacts AnalyseLattice(const LatticeCircuit& lattice);

} // namespace ampora::test
