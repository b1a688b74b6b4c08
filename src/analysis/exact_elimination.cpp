#include "analysis/exact_elimination.h"

#include <cctype>
#include <utility>

namespace ampora {

namespace {

using boost::multiprecision::cpp_int;

bool IsDigit(char c) {
    return std::isdigit(static_cast<unsigned char>(c)) != 0;
}

// 10 to the power, as a whole number; exponents beyond what any double needs are refused.
std::optional<cpp_int> PowerOfTen(long exponent) {
    if (exponent > 400) {
        return std::nullopt;
    }
    cpp_int power = 1;
    for (long k = 0; k < exponent; ++k) {
        power *= 10;
    }
    return power;
}

std::size_t DigitCount(cpp_int value) {
    if (value < 0) {
        value = -value;
    }
    return value.str().size();
}

} // namespace

std::optional<Rational> RationalFromDecimal(std::string_view text) {
    std::size_t at = 0;
    const bool negative =
        at < text.size() && (text[at] == '-' || text[at] == '+') && text[at++] == '-';
    cpp_int digits = 0;
    long scale = 0; // digits after the point
    bool any = false;
    bool point = false;
    for (; at < text.size(); ++at) {
        const char c = text[at];
        if (IsDigit(c)) {
            digits = digits * 10 + (c - '0');
            scale += point ? 1 : 0;
            any = true;
        } else if (c == '.' && !point) {
            point = true;
        } else {
            break;
        }
    }
    if (!any) {
        return std::nullopt;
    }
    long exponent = 0;
    if (at < text.size() && (text[at] == 'E' || text[at] == 'e')) {
        ++at;
        const bool down =
            at < text.size() && (text[at] == '-' || text[at] == '+') && text[at++] == '-';
        if (at == text.size()) {
            return std::nullopt;
        }
        for (; at < text.size() && IsDigit(text[at]); ++at) {
            exponent = exponent * 10 + (text[at] - '0');
            if (exponent > 1000) {
                return std::nullopt;
            }
        }
        exponent = down ? -exponent : exponent;
    }
    if (at != text.size()) {
        return std::nullopt;
    }
    const long shift = exponent - scale;
    const auto power = PowerOfTen(shift < 0 ? -shift : shift);
    if (!power) {
        return std::nullopt;
    }
    Rational value = shift < 0 ? Rational(digits, *power) : Rational(digits * *power);
    return negative ? Rational(-value) : value;
}

std::string RationalText(const Rational& value) {
    const cpp_int denominator = boost::multiprecision::denominator(value);
    std::string text = boost::multiprecision::numerator(value).str();
    if (denominator != 1) {
        text += '/';
        text += denominator.str();
    }
    return text;
}

int RationalDigits(const Rational& value) {
    const cpp_int denominator = boost::multiprecision::denominator(value);
    const std::size_t digits = DigitCount(boost::multiprecision::numerator(value)) +
                               (denominator == 1 ? 0 : DigitCount(denominator));
    return static_cast<int>(digits);
}

ExactMatrix::ExactMatrix(int rowCount, int columnCount)
    : rows(rowCount), columns(columnCount),
      cells(static_cast<std::size_t>(rowCount) * static_cast<std::size_t>(columnCount + 1)) {}

std::size_t ExactMatrix::Index(int row, int column) const {
    if (row < 1 || row > rows || column < 1 || column > columns + 1) {
        ThrowCellOutOfRange(row, column);
    }
    return static_cast<std::size_t>((row - 1) * (columns + 1) + (column - 1));
}

std::optional<ExactElimination> EliminateExactly(const ExactMatrix& start,
                                                 const RowOperations& operations) {
    ExactElimination result;
    ExactMatrix matrix = start;
    const int width = matrix.columns + 1;
    const auto inside = [&matrix](int row) { return row >= 1 && row <= matrix.rows; };
    result.steps.reserve(operations.size());
    for (const RowOperation& operation : operations) {
        const int row = operation.row;
        const int source = operation.source;
        const int column = operation.column;
        if (!inside(row) || !inside(source) || column < 1 || column > matrix.columns) {
            return std::nullopt;
        }
        Rational factor = 1;
        switch (operation.kind) {
        case RowOperationKind::Swap:
            for (int k = 1; k <= width; ++k) {
                std::swap(matrix(row, k), matrix(source, k));
            }
            break;
        case RowOperationKind::Scale: {
            const Rational pivot = matrix(row, column);
            if (pivot == 0) {
                return std::nullopt;
            }
            factor = 1 / pivot;
            for (int k = 1; k <= width; ++k) {
                matrix(row, k) *= factor;
            }
            break;
        }
        case RowOperationKind::Add:
            factor = -matrix(row, column);
            for (int k = 1; k <= width; ++k) {
                matrix(row, k) += factor * matrix(source, k);
            }
            break;
        }
        result.steps.push_back({std::move(factor), matrix});
    }
    if (!IsReducedRowEchelon(matrix)) {
        return std::nullopt;
    }
    result.reduced = std::move(matrix);
    return result;
}

bool IsReducedRowEchelon(const ExactMatrix& matrix) {
    int lastLead = 0;
    bool zeroRowSeen = false;
    for (int row = 1; row <= matrix.rows; ++row) {
        int lead = 0;
        for (int k = 1; k <= matrix.columns && lead == 0; ++k) {
            lead = matrix(row, k) != 0 ? k : 0;
        }
        if (lead == 0) {
            zeroRowSeen = true;
            continue;
        }
        // A leading 1 right of the one above, below no row of zero coefficients, alone in
        // its column.
        if (zeroRowSeen || lead <= lastLead || matrix(row, lead) != 1) {
            return false;
        }
        for (int other = 1; other <= matrix.rows; ++other) {
            if (other != row && matrix(other, lead) != 0) {
                return false;
            }
        }
        lastLead = lead;
    }
    return true;
}

} // namespace ampora
