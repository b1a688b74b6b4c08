#include "equations/equation_parse.h"

#include <cctype>

namespace ampora {

namespace {

struct Token {
    enum class Kind { Number, Name, Symbol } kind;
    std::string text;
};

bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}

// Letters, digits, "_" and anything outside ASCII may make up a name.
bool IsNameChar(char c) {
    return IsDigit(c) || c == '_' || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') ||
           static_cast<unsigned char>(c) >= 0x80;
}

std::optional<std::vector<Token>> Tokenize(std::string_view text) {
    std::vector<Token> tokens;
    std::size_t i = 0;
    while (i < text.size()) {
        const char c = text[i];
        if (c == ' ') {
            ++i;
        } else if (IsDigit(c) || c == '.') {
            std::size_t end = i;
            while (end < text.size() && (IsDigit(text[end]) || text[end] == '.')) {
                ++end;
            }
            // An exponent as the general number form writes it: 1E-03, 2.5E+07.
            if (end < text.size() && (text[end] == 'E' || text[end] == 'e')) {
                std::size_t digits = end + 1;
                if (digits < text.size() && (text[digits] == '+' || text[digits] == '-')) {
                    ++digits;
                }
                if (digits < text.size() && IsDigit(text[digits])) {
                    end = digits;
                    while (end < text.size() && IsDigit(text[end])) {
                        ++end;
                    }
                }
            }
            tokens.push_back({Token::Kind::Number, std::string(text.substr(i, end - i))});
            i = end;
        } else if (IsNameChar(c)) {
            std::size_t end = i;
            while (end < text.size() && IsNameChar(text[end])) {
                ++end;
            }
            tokens.push_back({Token::Kind::Name, std::string(text.substr(i, end - i))});
            i = end;
        } else if (std::string_view("+-*/=()").find(c) != std::string_view::npos) {
            tokens.push_back({Token::Kind::Symbol, std::string(1, c)});
            ++i;
        } else {
            return std::nullopt;
        }
    }
    return tokens;
}

// Recursive descent over the tokens; any mismatch gives up on the whole text.
class Parser {
  public:
    explicit Parser(std::vector<Token> tokens) : tokens_(std::move(tokens)) {}

    std::optional<std::vector<EquationNode>> Equation() {
        std::vector<EquationNode> sides;
        while (true) {
            EquationNode side;
            if (!AtSymbol("=") && !AtEnd()) {
                if (!Sum(side)) {
                    return std::nullopt;
                }
            }
            sides.push_back(std::move(side));
            if (AtEnd()) {
                return sides;
            }
            if (!AtSymbol("=")) {
                return std::nullopt;
            }
            ++next_;
        }
    }

  private:
    static constexpr int kDeepest = 32;

    bool AtEnd() const { return next_ >= tokens_.size(); }
    bool AtSymbol(std::string_view symbol) const {
        return !AtEnd() && tokens_[next_].kind == Token::Kind::Symbol &&
               tokens_[next_].text == symbol;
    }

    bool Sum(EquationNode& sum) {
        sum = EquationNode{};
        sum.kind = EquationNode::Kind::Sum;
        char sign = 0;
        if (AtSymbol("+") || AtSymbol("-")) {
            sign = tokens_[next_++].text[0];
        }
        while (true) {
            EquationNode term;
            if (!Product(term)) {
                return false;
            }
            sum.signs.push_back(sign);
            sum.children.push_back(std::move(term));
            if (!AtSymbol("+") && !AtSymbol("-")) {
                return true;
            }
            sign = tokens_[next_++].text[0];
        }
    }

    bool Product(EquationNode& product) {
        if (!Factor(product)) {
            return false;
        }
        while (AtSymbol("*") || AtSymbol("/")) {
            const bool divide = tokens_[next_++].text == "/";
            EquationNode right;
            if (!Factor(right)) {
                return false;
            }
            EquationNode joined;
            joined.kind = divide ? EquationNode::Kind::Divide : EquationNode::Kind::Multiply;
            joined.children.push_back(std::move(product));
            joined.children.push_back(std::move(right));
            product = std::move(joined);
        }
        return true;
    }

    bool Factor(EquationNode& factor) {
        if (AtEnd()) {
            return false;
        }
        const Token& token = tokens_[next_];
        if (token.kind == Token::Kind::Number || token.kind == Token::Kind::Name) {
            factor = EquationNode{};
            factor.kind = token.kind == Token::Kind::Number ? EquationNode::Kind::Number
                                                            : EquationNode::Kind::Name;
            factor.text = token.text;
            ++next_;
            return true;
        }
        if (!AtSymbol("(") || depth_ >= kDeepest) {
            return false;
        }
        ++next_;
        ++depth_;
        EquationNode inner;
        const bool read = Sum(inner) && AtSymbol(")");
        --depth_;
        if (!read) {
            return false;
        }
        ++next_;
        factor = EquationNode{};
        factor.kind = EquationNode::Kind::Group;
        factor.children.push_back(std::move(inner));
        return true;
    }

    std::vector<Token> tokens_;
    std::size_t next_ = 0;
    int depth_ = 0;
};

} // namespace

std::optional<std::vector<EquationNode>> ParseEquation(std::string_view text) {
    std::optional<std::vector<Token>> tokens = Tokenize(text);
    if (!tokens) {
        return std::nullopt;
    }
    return Parser(std::move(*tokens)).Equation();
}

} // namespace ampora
