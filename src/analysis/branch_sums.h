#pragma once
// What lies on each node-to-node chain: total resistance, the battery voltages and the
// current source, signed by the direction of travel, and the names of the chain currents
// that become unknowns of the equations.

#include "tables/analysis_tables.h"
#include "tables/circuit.h"

namespace ampora {

// Fills Resistance, EMF, SourceCurrent and CurrentName of chains 1..NumBranches, sets
// NumCurrents and places every device lying on them (Topology::Placements). Throws
// AnalysisFailure::TwoCurrentSources at a second current source on one chain.
void SumBranches(const Circuit& circuit, Topology& topology);

} // namespace ampora
