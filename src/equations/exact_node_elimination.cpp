#include "equations/exact_node_matrix.h"

namespace ampora {

std::optional<ExactElimination> ExactNodeElimination(const Workspace& ws) {
    const std::optional<ExactMatrix> start = ExactNodeMatrix(ws);
    if (!start) {
        return std::nullopt;
    }
    return EliminateExactly(*start, ws.Equations.RowOps);
}

} // namespace ampora
