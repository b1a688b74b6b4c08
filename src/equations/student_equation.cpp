#include "equations/student_equation.h"

#include <cmath>
#include <cstdint>
#include <optional>
#include <string_view>
#include <system_error>

#include <charconv>

namespace ampora {

namespace {

enum class TokenKind { Number, Name, Plus, Minus, Times, Divide, Open, Close, Equals, End };

struct Token {
    TokenKind kind = TokenKind::End;
    std::size_t begin = 0; // byte offsets in the text
    std::size_t end = 0;
    double value = 0; // a number's value
    int name = -1;    // a name's index
};

// Signs a student may paste from a word processor, read as the ASCII ones.
struct Alternative {
    std::string_view text;
    TokenKind kind;
};
constexpr Alternative kAlternatives[] = {{"\u2212", TokenKind::Minus}, // minus sign
                                         {"\u2013", TokenKind::Minus}, // en dash
                                         {"\u00D7", TokenKind::Times}, // multiplication sign
                                         {"\u00B7", TokenKind::Times}, // middle dot
                                         {"\u00F7", TokenKind::Divide}};

bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}

bool IsWordStart(char c) {
    return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || c == '_';
}

bool IsWordChar(char c) {
    return IsWordStart(c) || IsDigit(c);
}

// How many bytes the UTF-8 character starting with `lead` takes (1 for a broken one).
std::size_t CharacterBytes(unsigned char lead) {
    if (lead >= 0xF0 && lead < 0xF8) {
        return 4;
    }
    if (lead >= 0xE0) {
        return lead < 0xF0 ? 3 : 1;
    }
    return lead >= 0xC0 ? 2 : 1;
}

struct Failure {
    std::string message;
};

class Reader {
  public:
    Reader(std::string_view text, const std::vector<std::string>& names)
        : text_(text), names_(names) {}

    StudentEquation Read() {
        StudentEquation result;
        try {
            Tokenize();
            result.sum = Equation();
            result.decimals = decimals_;
        } catch (const Failure& failure) {
            result.error = failure.message;
            result.sum = LinearSum{};
        }
        return result;
    }

  private:
    struct Value {
        std::vector<double> coefficients;
        double constant = 0;
        bool HasUnknown() const {
            for (const double c : coefficients) {
                if (c != 0) {
                    return true;
                }
            }
            return false;
        }
    };

    // The character number (from 1) of a byte offset: UTF-8 continuation bytes do not count.
    std::size_t CharacterAt(std::size_t byte) const {
        std::size_t count = 1;
        for (std::size_t b = 0; b < byte && b < text_.size(); ++b) {
            if ((static_cast<unsigned char>(text_[b]) & 0xC0) != 0x80) {
                ++count;
            }
        }
        return count;
    }

    [[noreturn]] void Fail(std::size_t byte, const std::string& why) const {
        throw Failure{"at character " + std::to_string(CharacterAt(byte)) + ": " + why};
    }

    std::string Quoted(std::size_t begin, std::size_t end) const {
        return "\"" + std::string(text_.substr(begin, end - begin)) + "\"";
    }

    // The longest name that the text spells at `at`: its index and length, or -1 and 0.
    std::pair<int, std::size_t> NameAt(std::size_t at) const {
        std::pair<int, std::size_t> best{-1, 0};
        const std::string_view rest = text_.substr(at);
        for (std::size_t k = 0; k < names_.size(); ++k) {
            const std::string& name = names_[k];
            if (!name.empty() && name.size() > best.second && rest.starts_with(name)) {
                best = {static_cast<int>(k), name.size()};
            }
        }
        return best;
    }

    // The length of the number written at `at`, 0 when none is: digits with at most one
    // point, then an exponent only when digits follow its letter.
    std::size_t NumberLength(std::size_t at) const {
        std::size_t k = at;
        std::size_t digits = 0;
        while (k < text_.size() && IsDigit(text_[k])) {
            ++k;
            ++digits;
        }
        if (k < text_.size() && text_[k] == '.') {
            ++k;
            while (k < text_.size() && IsDigit(text_[k])) {
                ++k;
                ++digits;
            }
        }
        if (digits == 0) {
            return 0;
        }
        if (k < text_.size() && (text_[k] == 'e' || text_[k] == 'E')) {
            std::size_t e = k + 1;
            if (e < text_.size() && (text_[e] == '+' || text_[e] == '-')) {
                ++e;
            }
            if (e < text_.size() && IsDigit(text_[e])) {
                while (e < text_.size() && IsDigit(text_[e])) {
                    ++e;
                }
                k = e;
            }
        }
        return k - at;
    }

    void Tokenize() {
        std::size_t at = 0;
        while (at < text_.size()) {
            const char c = text_[at];
            if (c == ' ' || c == '\t' || c == '\r' || c == '\n') {
                ++at;
                continue;
            }
            const std::size_t number = NumberLength(at);
            const auto [name, nameLength] = NameAt(at);
            if (number > 0 && number > nameLength) {
                AddNumber(at, at + number);
                at += number;
                continue;
            }
            if (nameLength > 0) {
                std::size_t word = at;
                while (word < text_.size() && IsWordChar(text_[word])) {
                    ++word;
                }
                // "V12" where only V1 is a node is a name misspelt, not V1 then 2.
                if (IsWordStart(c) && word - at > nameLength) {
                    Fail(at, Quoted(at, word) + " is not the name of a node");
                }
                tokens_.push_back(Token{TokenKind::Name, at, at + nameLength, 0, name});
                at += nameLength;
                continue;
            }
            if (IsWordStart(c)) {
                std::size_t word = at;
                while (word < text_.size() && IsWordChar(text_[word])) {
                    ++word;
                }
                Fail(at, Quoted(at, word) + " is not the name of a node");
            }
            at = Symbol(at);
        }
        tokens_.push_back(Token{TokenKind::End, text_.size(), text_.size()});
    }

    void AddNumber(std::size_t begin, std::size_t end) {
        if (end < text_.size() && text_[end] == '.') {
            Fail(end, "a number has a second decimal point");
        }
        double value = 0;
        const char* first = text_.data() + begin;
        const char* last = text_.data() + end;
        // from_chars does not read a leading point.
        std::string padded;
        if (*first == '.') {
            padded = "0" + std::string(first, last);
            first = padded.data();
            last = padded.data() + padded.size();
        }
        const auto [ptr, ec] = std::from_chars(first, last, value);
        const std::string_view written(first, static_cast<std::size_t>(last - first));
        const std::size_t exponent = written.find_first_of("eE");
        const bool tiny =
            exponent != std::string_view::npos && written.substr(exponent + 1).starts_with('-');
        if (ec == std::errc::result_out_of_range && tiny) {
            value = 0; // too small to tell from zero
        } else if (ec != std::errc() || ptr != last || !std::isfinite(value)) {
            Fail(begin, "the number " + Quoted(begin, end) + " is too large");
        }
        tokens_.push_back(Token{TokenKind::Number, begin, end, value});
        NoteDecimal(text_.substr(begin, end - begin), value);
    }

    void NoteDecimal(std::string_view number, double value) {
        const std::size_t exponent = number.find_first_of("eE");
        const std::string_view mantissa = number.substr(0, exponent);
        if (mantissa.find('.') == std::string_view::npos) {
            return;
        }
        int digits = 0;
        for (const char c : mantissa) {
            if (IsDigit(c) && (digits > 0 || c != '0')) {
                ++digits;
            }
        }
        if (digits > 0) {
            decimals_.push_back(WrittenDecimal{value, digits});
        }
    }

    // One sign, operator or parenthesis at `at`; returns the offset after it.
    std::size_t Symbol(std::size_t at) {
        TokenKind kind = TokenKind::End;
        switch (text_[at]) {
        case '+':
            kind = TokenKind::Plus;
            break;
        case '-':
            kind = TokenKind::Minus;
            break;
        case '*':
            kind = TokenKind::Times;
            break;
        case '/':
            kind = TokenKind::Divide;
            break;
        case '(':
            kind = TokenKind::Open;
            break;
        case ')':
            kind = TokenKind::Close;
            break;
        case '=':
            kind = TokenKind::Equals;
            break;
        default:
            break;
        }
        if (kind != TokenKind::End) {
            tokens_.push_back(Token{kind, at, at + 1});
            return at + 1;
        }
        for (const Alternative& alternative : kAlternatives) {
            if (text_.substr(at).starts_with(alternative.text)) {
                tokens_.push_back(Token{alternative.kind, at, at + alternative.text.size()});
                return at + alternative.text.size();
            }
        }
        const std::size_t bytes =
            std::min(CharacterBytes(static_cast<unsigned char>(text_[at])), text_.size() - at);
        Fail(at, Quoted(at, at + bytes) + " cannot be part of an equation");
    }

    const Token& Peek() const { return tokens_[next_]; }
    const Token& Take() { return tokens_[next_++]; }

    bool EndsSide(const Token& token) const {
        return token.kind == TokenKind::Equals || token.kind == TokenKind::End;
    }

    Value Zero() const { return Value{std::vector<double>(names_.size(), 0.0), 0}; }

    LinearSum Equation() {
        std::size_t equals = 0;
        int count = 0;
        for (std::size_t k = 0; k < tokens_.size(); ++k) {
            if (tokens_[k].kind == TokenKind::Equals && ++count == 1) {
                equals = k;
            } else if (tokens_[k].kind == TokenKind::Equals) {
                Fail(tokens_[k].begin, "a second \"=\"; an equation has exactly one");
            }
        }
        if (tokens_.size() == 1) {
            throw Failure{"the equation is empty"};
        }
        if (count == 0) {
            Fail(text_.size(), "the equation ends without \"=\"");
        }
        if (equals == 0) {
            Fail(tokens_[0].begin, "there is nothing before \"=\"");
        }
        if (tokens_[equals + 1].kind == TokenKind::End) {
            Fail(text_.size(), "there is nothing after \"=\"");
        }
        const Value left = Side();
        ++next_; // the "="
        const Value right = Side();
        LinearSum sum;
        sum.coefficients.resize(names_.size());
        for (std::size_t k = 0; k < names_.size(); ++k) {
            sum.coefficients[k] = left.coefficients[k] - right.coefficients[k];
            if (!std::isfinite(sum.coefficients[k])) {
                Fail(0, "the numbers grow too large to work with");
            }
        }
        sum.constant = left.constant - right.constant;
        if (!std::isfinite(sum.constant)) {
            Fail(0, "the numbers grow too large to work with");
        }
        return sum;
    }

    // A whole side: a sum that must end at "=" or at the end of the text.
    Value Side() {
        Value value = Sum();
        const Token& after = Peek();
        if (after.kind == TokenKind::Close) {
            Fail(after.begin, "this closing parenthesis has no opening one");
        }
        if (!EndsSide(after)) {
            Fail(after.begin, "an operator is missing before " + Quoted(after.begin, after.end));
        }
        return value;
    }

    Value Sum() {
        Value sum = Product();
        while (Peek().kind == TokenKind::Plus || Peek().kind == TokenKind::Minus) {
            const double sign = Take().kind == TokenKind::Minus ? -1 : 1;
            const Value term = Product();
            for (std::size_t k = 0; k < sum.coefficients.size(); ++k) {
                sum.coefficients[k] += sign * term.coefficients[k];
            }
            sum.constant += sign * term.constant;
        }
        return sum;
    }

    Value Product() {
        Value product = Unary();
        while (Peek().kind == TokenKind::Times || Peek().kind == TokenKind::Divide) {
            const Token& op = Take();
            const Value factor = Unary();
            if (op.kind == TokenKind::Times) {
                product = Multiply(product, factor, op.begin);
                continue;
            }
            if (factor.HasUnknown()) {
                Fail(op.begin, "the divisor holds an unknown; divide only by numbers");
            }
            if (factor.constant == 0) {
                Fail(op.begin, "division by zero");
            }
            for (double& c : product.coefficients) {
                c /= factor.constant;
            }
            product.constant /= factor.constant;
        }
        return product;
    }

    Value Multiply(const Value& a, const Value& b, std::size_t at) const {
        if (a.HasUnknown() && b.HasUnknown()) {
            Fail(at, "two unknowns are multiplied; multiply an unknown only by a number");
        }
        const Value& number = a.HasUnknown() ? b : a;
        Value product = a.HasUnknown() ? a : b;
        for (double& c : product.coefficients) {
            c *= number.constant;
        }
        product.constant *= number.constant;
        return product;
    }

    Value Unary() {
        if (Peek().kind == TokenKind::Plus || Peek().kind == TokenKind::Minus) {
            const bool minus = Take().kind == TokenKind::Minus;
            Nest();
            Value value = Unary();
            --depth_;
            if (minus) {
                for (double& c : value.coefficients) {
                    c = -c;
                }
                value.constant = -value.constant;
            }
            return value;
        }
        return Primary();
    }

    void Nest() {
        if (++depth_ > kMaxDepth) {
            Fail(Peek().begin, "the equation is nested too deeply");
        }
    }

    Value Primary() {
        const Token& token = Take();
        switch (token.kind) {
        case TokenKind::Number: {
            Value value = Zero();
            value.constant = token.value;
            // "0.5V1", "2(V1-V2)": a number written before a name or a parenthesis.
            if (Peek().kind == TokenKind::Name || Peek().kind == TokenKind::Open) {
                const std::size_t at = Peek().begin;
                const Value factor = Primary();
                return Multiply(value, factor, at);
            }
            return value;
        }
        case TokenKind::Name: {
            Value value = Zero();
            value.coefficients[static_cast<std::size_t>(token.name)] = 1;
            return value;
        }
        case TokenKind::Open: {
            Nest();
            Value value = Sum();
            --depth_;
            const Token& close = Peek();
            if (EndsSide(close)) {
                Fail(close.begin, "a closing parenthesis is missing");
            }
            if (close.kind != TokenKind::Close) {
                Fail(close.begin,
                     "an operator is missing before " + Quoted(close.begin, close.end));
            }
            ++next_;
            return value;
        }
        default:
            Fail(token.begin, "a number or a name is missing");
        }
    }

    static constexpr int kMaxDepth = 200;

    std::string_view text_;
    const std::vector<std::string>& names_;
    std::vector<Token> tokens_;
    std::size_t next_ = 0;
    int depth_ = 0;
    std::vector<WrittenDecimal> decimals_;
};

} // namespace

StudentEquation ReadStudentEquation(std::string_view text, const std::vector<std::string>& names) {
    return Reader(text, names).Read();
}

} // namespace ampora
