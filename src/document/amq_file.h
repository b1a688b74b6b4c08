#pragma once
// The .amq circuit file: wire count and wires, element count and elements, node count
// and node labels, one record a line, comma-separated, CR LF line ends.

#include "tables/circuit.h"

#include <string>
#include <string_view>

namespace ampora {

struct ReadResult {
    bool complete = true; // false when reading stopped early
    int line = 0;         // the line at which it stopped (1-based), 0 when no line was read
    std::string reason;   // why it stopped, for people
};

struct SaveResult {
    bool saved = true;
    std::string reason; // why the file could not be written
};

// The file's text for the circuit: only live slots, packed, in slot order.
std::string CircuitFileText(const Circuit& circuit);

// Reads file text into the tables, which the caller has cleared (New). Reading stops at the
// first line it cannot take; what was read by then stays in the tables.
ReadResult ReadCircuitText(Circuit& circuit, std::string_view text);
ReadResult LoadFromIniFile(Circuit& circuit, const std::string& path);

// Writes the file safely (see WriteFileSafely): a save that fails or dies half-way never
// destroys the previous file.
SaveResult SaveToIniFile(const Circuit& circuit, const std::string& path);

// True when the circuit differs from what `currentFileName` holds. An empty drawing never
// needs saving; an untitled one with wires always does; a file that cannot be opened
// counts as different, so that nothing is lost without asking. Of a damaged file, the part
// read before the damage is what the circuit is compared with.
bool NeedFileSave(const Circuit& circuit, const std::string& currentFileName);

} // namespace ampora
