#pragma once
// What the analysis finds in the drawn circuit: loose ends, traced chains, the
// node order of the last name check and the augmented matrix.

#include "tables/slots.h"
#include "tables/travel.h"
#include "tables/wire_geometry.h"

#include <array>
#include <cstdint>
#include <string>
#include <vector>

namespace ampora {

constexpr int kMaxLooseEnds = 20;
// Room for every chain a circuit that fits the node table can have: up to four from each
// node (a branch between two nodes is held from both ends), one from each loose end, and
// the node-free loops, each at least four wires long.
constexpr int kMaxChains = 4 * kMaxNodes + kMaxLooseEnds + kMaxWires / 4;
constexpr int kMatrixRows = 20;
constexpr int kMatrixColumns = 21;

// A current of this value is not known.
constexpr double kUnknownCurrent = 999;

struct LooseEnd {
    float X = 0, Y = 0;
};

// One traced chain of wires. StartNode is a node slot, or -k for the k-th chain from a
// loose end or the k-th closed loop; EndNode is 0 when the trace reached no node.
struct Branch {
    std::int16_t StartNode = 0;
    std::int16_t EndNode = 0;
    std::string Path; // "x,y;x,y;..." in trace order
    float Resistance = 0;
    float EMF = 0;
    float SourceCurrent = 0;
    std::string CurrentName; // "I3" for a chain of batteries and wire only, "-I3" for its twin
    double Current = kUnknownCurrent;
};

// Where a device sits: the first chain (in slot order) with a path segment that holds its
// centre strictly between its ends, and which way that chain travels there.
struct ChainPlacement {
    int chain = 0; // 0 when the device lies on no chain
    Travel travel = Travel::None;
    // How many chains count the device: two for a device on one branch (the branch and its
    // twin), more when wires cross at its centre.
    std::uint8_t counted = 0;
};

// A ChainPlacement for every element slot (index 0 unused).
using DevicePlacements = std::array<ChainPlacement, kMaxElements + 1>;

// A device that the analysis takes for something other than it seems to be.
struct DrawingWarning {
    int slot = 0;
    std::string text;
};

struct Topology {
    Slots<LooseEnd, kMaxLooseEnds> LooseEnds;
    std::int16_t NumLooseEnds = 0;
    Slots<Branch, kMaxChains> Branches;
    std::int16_t NumBranches = 0;      // node-to-node chains
    std::int16_t NumStubs = 0;         // from a node to nowhere
    std::int16_t NumLooseBranches = 0; // from a loose end
    std::int16_t NumLoops = 0;         // closed loops touching no node
    std::int16_t NumCurrents = 0;      // named chain currents
    // Where each device lies on the node-to-node chains, found while they are summed: like
    // their sums, it holds until the chains or the devices change.
    DevicePlacements Placements{};
    // What the analysis reads differently from how it looks, one text per device in slot
    // order; found when step 2 begins.
    std::vector<DrawingWarning> Warnings;
};

struct NodeNaming {
    std::int16_t HasReference = 0; // -1 when exactly one node is named "0"
    Slots<std::int16_t, 20> NodeOrder;
    Slots<std::int16_t, 20> NodeRank;
};

[[noreturn, gnu::cold, gnu::noinline]] inline void ThrowCellOutOfRange(int row, int column) {
    throw SlotOutOfRange("matrix cell (" + std::to_string(row) + ", " + std::to_string(column) +
                         ") is outside 20 x 21");
}

// The augmented matrix, rows 1..20 and columns 1..21, reduced in place.
struct AugmentedMatrix {
    std::array<double, kMatrixRows * kMatrixColumns> cells{};

    double& operator()(int row, int column) { return cells[Index(row, column)]; }
    double operator()(int row, int column) const { return cells[Index(row, column)]; }

  private:
    static std::size_t Index(int row, int column) {
        if (row < 1 || row > kMatrixRows || column < 1 || column > kMatrixColumns) [[unlikely]] {
            ThrowCellOutOfRange(row, column);
        }
        return static_cast<std::size_t>((row - 1) * kMatrixColumns + (column - 1));
    }
};

enum class RowOperationKind : std::uint8_t { Swap, Scale, Add };

// One elementary row operation as the elimination performed it; rows and columns from 1.
struct RowOperation {
    RowOperationKind kind = RowOperationKind::Swap;
    std::int8_t row = 0;    // the row that changes; for a swap, the pivot's row to be
    std::int8_t source = 0; // a swap: the row exchanged with `row`; an add: the pivot row
    std::int8_t column = 0; // the column of the pivot this step works towards
    // A scale divides `row` by this number, the pivot, and sets the pivot to exactly 1; an
    // add adds this multiple of `source` to `row` and sets its entry in `column` to exactly 0.
    double number = 0;

    bool operator==(const RowOperation&) const = default;
};

using RowOperations = std::vector<RowOperation>;

} // namespace ampora
