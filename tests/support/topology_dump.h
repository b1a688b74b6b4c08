#pragma once
// Readable dumps of what the topology found, so that a failing comparison shows it all.

#include "tables/analysis_tables.h"
#include "tables/circuit.h"

#include <string>

namespace ampora::test {

// Live wires, nodes with their wires, loose ends, every chain with its path and sums, and
// the counts:
//   wire 1 80,80 240,80
//   node 1 "[ ]" 240,80 wires 1 2 5
//   loose 1 80,240
//   chain 1 1->2 240,80;240,240 R 10 EMF -5 J 0 "I1"
//   branches 6 stubs 0 loose 0 loops 0 currents 1
std::string DumpTopology(const Circuit& circuit, const Topology& topology);

// Only the wires: "wire 1 80,80 240,80", one line per slot up to NumWires.
std::string DumpWires(const Circuit& circuit);

} // namespace ampora::test
