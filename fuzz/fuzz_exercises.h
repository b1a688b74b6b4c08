#pragma once
// What the fuzz targets do with one input, kept here so that a normal test can replay every
// input the fuzzers ever tripped over. Each returns "" when all went well and otherwise
// says which promise was broken; a crash or a sanitizer report is a finding by itself.

#include "tables/circuit.h"

#include <string>
#include <string_view>

namespace ampora::test {

// Reads the bytes as an .amq file; whatever was read is written out and read back, then
// taken through the whole analysis as a student would: leaving step 1, AutoName (the
// pattern and the significant figures come from the input's length), leaving step 2, the
// labels of the four views and the texts of the equations window.
std::string ExerciseAmqAnalysis(std::string_view bytes);

// Reads the bytes as a stream of editing events (tool buttons, mouse down, move and up,
// drops, answers for the value prompts), dispatched to the editing tools as the canvas
// does, and checks the tables after every event: wires horizontal or vertical and of some
// length, every device on a live wire of its axis more than 20 units from its ends, no
// two devices within 36 units in both x and y, counts within the tables.
// `drawn`, when given, receives the circuit as the events left it.
std::string ExerciseEditorEvents(std::string_view bytes, Circuit* drawn = nullptr);

// The table promises above, for any circuit; "" when all hold.
std::string CheckEditorInvariants(const Circuit& circuit);

} // namespace ampora::test
