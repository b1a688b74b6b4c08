#pragma once
// File > New practice circuit...: New, then a practice circuit in the tables, untitled and in
// step 1, ready to be named and solved.

#include "document/document_commands.h"
#include "practice/practice_shape.h"

#include <cstdint>

namespace ampora {

// Asks to save first as New does. The circuit's voltages are nice, so that a student can
// check a hand solution. Undo Erase does not bring the old drawing back over it: as after
// Open, the new circuit stands alone.
CommandResult NewPracticeCircuit(DocumentContext& context, const PracticeShape& shape,
                                 std::uint32_t seed);

} // namespace ampora
