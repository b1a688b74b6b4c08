#pragma once
// Random circuits on a lattice, drawn as the editor would draw them, together with an
// independent solver that works on the lattice graph itself (plain modified nodal
// analysis), so the program's answers can be checked against physics rather than itself.

#include "document/circuit.h"

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

    float X(int point) const { return 80.0f + 80.0f * static_cast<float>(point % columns); }
    float Y(int point) const { return 80.0f + 80.0f * static_cast<float>(point / columns); }
};

// A random lattice circuit in which every used point joins at least two edges. Values are
// multiples of 1/8, so sums along a chain stay exact in single precision and the
// comparison measures the solution, not the rounding of the tables.
LatticeCircuit RandomLatticeCircuit(std::mt19937& random);

// One wire per edge and one device at the middle of each edge that has one.
Circuit DrawLattice(const LatticeCircuit& lattice);

struct OracleSolution {
    std::vector<double> voltage;       // per lattice point, the ground point at 0
    std::vector<double> screenCurrent; // per edge: positive up (vertical) or left (horizontal)
};

// Modified nodal analysis with `ground` at 0 V. Nothing when the system is singular.
std::optional<OracleSolution> SolveLattice(const LatticeCircuit& lattice, int ground);

std::string DescribeLattice(const LatticeCircuit& lattice);

} // namespace ampora::test
