#include "analysis/row_operation_text.h"

#include "analysis/format_number.h"

namespace ampora {

namespace {

constexpr int kMostFractionDigits = 12;

std::string RowName(int row) {
    return "R" + std::to_string(row);
}

// `number` is the signed divisor of a scale, or the size of an add's multiple.
RowOperationWords Words(const RowOperation& operation, bool negative, std::string number) {
    const std::string row = RowName(operation.row);
    const std::string source = RowName(operation.source);
    switch (operation.kind) {
    case RowOperationKind::Swap:
        return {row + " \u2194 " + source, "", ""};
    case RowOperationKind::Scale:
        return {row + " \u2190 " + row + " \u00f7 ", negative ? "(" + number + ")" : number, ""};
    case RowOperationKind::Add:
        return {row + " \u2190 " + row + (negative ? " \u2212 " : " + "), number,
                "\u00b7" + source};
    }
    return {};
}

} // namespace

std::string FractionOrDecimal(const Rational& value, int sigFigs) {
    if (RationalDigits(value) > kMostFractionDigits) {
        return FormatNumber(value.convert_to<double>(), sigFigs);
    }
    return RationalText(value);
}

RowOperationWords DescribeRowOperation(const RowOperation& operation, int sigFigs) {
    const double number = operation.number;
    if (operation.kind == RowOperationKind::Add) {
        return Words(operation, number < 0, FormatNumber(number < 0 ? -number : number, sigFigs));
    }
    return Words(operation, number < 0, FormatNumber(number, sigFigs));
}

RowOperationWords DescribeRowOperation(const RowOperation& operation, const Rational& factor,
                                       int sigFigs) {
    if (operation.kind == RowOperationKind::Scale && factor != 0) {
        const Rational pivot = 1 / factor;
        return Words(operation, pivot < 0, FractionOrDecimal(pivot, sigFigs));
    }
    const Rational size = factor < 0 ? Rational(-factor) : factor;
    return Words(operation, factor < 0, FractionOrDecimal(size, sigFigs));
}

} // namespace ampora
