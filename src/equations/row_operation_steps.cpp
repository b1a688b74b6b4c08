#include "equations/row_operation_steps.h"

#include "analysis/format_number.h"
#include "analysis/gauss_jordan.h"
#include "equations/exact_node_matrix.h"

namespace ampora {

namespace {

std::vector<std::string> DecimalCells(const AugmentedMatrix& matrix, int n, int sigFigs) {
    std::vector<std::string> cells;
    for (int row = 1; row <= n; ++row) {
        for (int column = 1; column <= n + 1; ++column) {
            const double value = matrix(row, column);
            cells.push_back(FormatNumber(value == 0 ? 0.0 : value, sigFigs)); // no "-0"
        }
    }
    return cells;
}

std::vector<std::string> ExactCells(const ExactMatrix& matrix, int sigFigs) {
    std::vector<std::string> cells;
    for (const Rational& value : matrix.cells) {
        cells.push_back(FractionOrDecimal(value, sigFigs));
    }
    return cells;
}

void MarkRows(ShownStep& step, const RowOperation& operation) {
    step.changedRow = operation.row;
    step.otherChangedRow = operation.kind == RowOperationKind::Swap ? operation.source : 0;
    step.pivotRow = operation.kind == RowOperationKind::Add ? operation.source : operation.row;
    step.pivotColumn = operation.column;
}

// "Name=value" for each unknown, read from rows whose one coefficient is a leading 1.
std::vector<std::string> Solutions(const Workspace& ws, const std::vector<std::string>& cells,
                                   const std::vector<bool>& zero) {
    const int n = ws.Equations.NumUnknowns;
    std::vector<std::string> solutions;
    for (int row = 1; row <= n; ++row) {
        const auto at = [n, row](int column) {
            return static_cast<std::size_t>((row - 1) * (n + 1) + column - 1);
        };
        int lead = 0;
        int others = 0;
        for (int column = 1; column <= n; ++column) {
            if (!zero[at(column)]) {
                others += lead != 0 ? 1 : 0;
                lead = lead == 0 ? column : lead;
            }
        }
        if (lead == 0 || others != 0) {
            return {};
        }
        solutions.push_back(ws.Equations.EqnVars[static_cast<std::size_t>(lead - 1)].VarName + "=" +
                            cells[at(n + 1)]);
    }
    return solutions;
}

} // namespace

ShownSteps ShowRowOperations(const Workspace& ws, bool fractions, int sigFigs) {
    const Equations& eq = ws.Equations;
    const int n = eq.NumUnknowns;
    ShownSteps shown;
    if (n <= 0) {
        return shown;
    }
    std::optional<ExactMatrix> start;
    std::optional<ExactElimination> exact;
    if (fractions) {
        start = ExactNodeMatrix(ws);
        exact = start ? EliminateExactly(*start, eq.RowOps) : std::nullopt;
    }
    shown.fractions = exact.has_value();
    ShownStep first;
    first.words.before = kSetUpWords;
    first.cells = exact ? ExactCells(*start, sigFigs) : DecimalCells(eq.Augmented, n, sigFigs);
    shown.steps.push_back(std::move(first));
    RowOperationReplay replay(eq.Augmented, n, n);
    for (std::size_t s = 0; s < eq.RowOps.size(); ++s) {
        const RowOperation& operation = eq.RowOps[s];
        ShownStep step;
        MarkRows(step, operation);
        if (exact) {
            step.words = DescribeRowOperation(operation, exact->steps[s].factor, sigFigs);
            step.cells = ExactCells(exact->steps[s].after, sigFigs);
        } else {
            replay.Apply(operation);
            step.words = DescribeRowOperation(operation, sigFigs);
            step.cells = DecimalCells(replay.Matrix(), n, sigFigs);
        }
        shown.steps.push_back(std::move(step));
    }
    std::vector<bool> zero;
    if (exact) {
        for (const Rational& value : exact->reduced.cells) {
            zero.push_back(value == 0);
        }
    } else {
        for (int row = 1; row <= n; ++row) {
            for (int column = 1; column <= n + 1; ++column) {
                zero.push_back(eq.Reduced(row, column) == 0);
            }
        }
    }
    shown.solutions = Solutions(ws, shown.steps.back().cells, zero);
    return shown;
}

} // namespace ampora
