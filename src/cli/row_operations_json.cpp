#include "cli/row_operations_json.h"

#include "analysis/gauss_jordan.h"
#include "equations/exact_node_matrix.h"

namespace ampora::cli {

namespace {

const char* OperationName(RowOperationKind kind) {
    switch (kind) {
    case RowOperationKind::Swap:
        return "swap";
    case RowOperationKind::Scale:
        return "scale";
    case RowOperationKind::Add:
        break;
    }
    return "add";
}

// What the row is multiplied by, or the multiple of the source added to it.
double Factor(const RowOperation& operation) {
    switch (operation.kind) {
    case RowOperationKind::Swap:
        return 1;
    case RowOperationKind::Scale:
        return 1 / operation.number;
    case RowOperationKind::Add:
        break;
    }
    return operation.number;
}

void WriteExactMatrix(JsonWriter& json, const ExactMatrix& matrix) {
    json.BeginArray();
    for (int row = 1; row <= matrix.rows; ++row) {
        json.BeginArray();
        for (int column = 1; column <= matrix.columns + 1; ++column) {
            json.String(RationalText(matrix(row, column)));
        }
        json.EndArray();
    }
    json.EndArray();
}

} // namespace

void WriteRowOperations(JsonWriter& json, const Workspace& ws, bool exact) {
    const Equations& eq = ws.Equations;
    const int n = eq.NumUnknowns;
    std::optional<ExactMatrix> exactStart;
    std::optional<ExactElimination> exactSteps;
    if (exact) {
        exactStart = ExactNodeMatrix(ws);
        exactSteps = exactStart ? EliminateExactly(*exactStart, eq.RowOps) : std::nullopt;
    }
    json.Key("row_operations");
    json.BeginArray();
    RowOperationReplay replay(eq.Augmented, n, n);
    for (std::size_t s = 0; s < eq.RowOps.size(); ++s) {
        const RowOperation& operation = eq.RowOps[s];
        replay.Apply(operation);
        json.BeginObject();
        json.Member("op", OperationName(operation.kind));
        json.Member("row", operation.row);
        json.Member("source", operation.source);
        json.Member("factor", Factor(operation));
        json.Key("matrix");
        WriteMatrix(json, replay.Matrix(), n);
        if (exact) {
            json.Key("factor_exact");
            if (exactSteps) {
                json.String(RationalText(exactSteps->steps[s].factor));
            } else {
                json.Null();
            }
            json.Key("matrix_exact");
            if (exactSteps) {
                WriteExactMatrix(json, exactSteps->steps[s].after);
            } else {
                json.Null();
            }
        }
        json.EndObject();
    }
    json.EndArray();
    if (!exact) {
        return;
    }
    json.Key("matrix_exact");
    if (exactStart) {
        WriteExactMatrix(json, *exactStart);
    } else {
        json.Null();
    }
    json.Key("rref_exact");
    if (exactSteps) {
        WriteExactMatrix(json, exactSteps->reduced);
    } else {
        json.Null();
    }
}

void WriteMatrix(JsonWriter& json, const AugmentedMatrix& matrix, int n) {
    json.BeginArray();
    for (int row = 1; row <= n; ++row) {
        json.BeginArray();
        for (int column = 1; column <= n + 1; ++column) {
            json.Number(matrix(row, column));
        }
        json.EndArray();
    }
    json.EndArray();
}

} // namespace ampora::cli
