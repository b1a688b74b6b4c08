#pragma once
// Readable dumps of the circuit tables, so that a failing comparison shows every slot.

#include "tables/circuit.h"

#include <string>

namespace ampora::test {

// One line per slot up to the counts: "wire 3 erased(undo) 0,0 16,0".
std::string DumpCircuit(const Circuit& circuit);

} // namespace ampora::test
