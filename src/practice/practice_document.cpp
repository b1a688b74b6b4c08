#include "practice/practice_document.h"

#include "document/amq_file.h"
#include "practice/practice_circuit.h"

namespace ampora {

CommandResult NewPracticeCircuit(DocumentContext& context, const PracticeShape& shape,
                                 std::uint32_t seed) {
    const PracticeCircuit practice = MakePracticeCircuit(shape, seed, true);
    CommandResult result = FileNew(context);
    // Read as a file is read, so that the tables and their counts are exactly as after Open.
    ReadCircuitText(context.workspace.Circuit, CircuitFileText(practice.drawn));
    result.undoAvailable = false;
    result.fileRead = true;
    return result;
}

} // namespace ampora
