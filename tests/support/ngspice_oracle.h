#pragma once
// A second, wholly independent solver for lattice circuits: ngspice's DC operating point.
// Each edge gets a 0 V source in series so that ngspice itself measures its current.

#include "support/lattice_circuit.h"

#include <optional>
#include <string>

namespace ampora::test {

// The netlist of the lattice with `ground` as ngspice's node 0. Values are written as the
// exact double of the single-precision value the program stores.
std::string NgspiceNetlist(const LatticeCircuit& lattice, int ground);

// Runs `ngspice -b` in `folder` and reads back every point's voltage and every edge's
// screen current. Nothing when ngspice gives no operating point; `log` then holds its
// output.
std::optional<OracleSolution> SolveWithNgspice(const LatticeCircuit& lattice, int ground,
                                               const std::string& folder, std::string& log);

} // namespace ampora::test
