#include "support/expression_value.h"

#include <cctype>
#include <cstdlib>

namespace ampora::test {

namespace {

class Parser {
  public:
    Parser(const std::string& text, const std::map<std::string, double>& names)
        : text_(text), names_(names) {}

    std::optional<double> Run() {
        const auto value = Sum();
        Skip();
        if (!value || pos_ != text_.size()) {
            return std::nullopt;
        }
        return value;
    }

  private:
    void Skip() {
        while (pos_ < text_.size() && text_[pos_] == ' ') {
            ++pos_;
        }
    }

    bool Take(char c) {
        Skip();
        if (pos_ < text_.size() && text_[pos_] == c) {
            ++pos_;
            return true;
        }
        return false;
    }

    std::optional<double> Sum() {
        auto value = Product();
        while (value) {
            if (Take('+')) {
                const auto rhs = Product();
                value = rhs ? std::optional(*value + *rhs) : std::nullopt;
            } else if (Take('-')) {
                const auto rhs = Product();
                value = rhs ? std::optional(*value - *rhs) : std::nullopt;
            } else {
                break;
            }
        }
        return value;
    }

    std::optional<double> Product() {
        auto value = Unary();
        while (value) {
            if (Take('*')) {
                const auto rhs = Unary();
                value = rhs ? std::optional(*value * *rhs) : std::nullopt;
            } else if (Take('/')) {
                const auto rhs = Unary();
                value = rhs ? std::optional(*value / *rhs) : std::nullopt;
            } else {
                break;
            }
        }
        return value;
    }

    std::optional<double> Unary() {
        if (Take('-')) {
            const auto value = Unary();
            return value ? std::optional(-*value) : std::nullopt;
        }
        if (Take('+')) {
            return Unary();
        }
        if (Take('(')) {
            const auto value = Sum();
            return Take(')') ? value : std::nullopt;
        }
        Skip();
        if (pos_ >= text_.size()) {
            return std::nullopt;
        }
        if (std::isalpha(static_cast<unsigned char>(text_[pos_]))) {
            const std::size_t start = pos_;
            while (pos_ < text_.size() && std::isalnum(static_cast<unsigned char>(text_[pos_]))) {
                ++pos_;
            }
            const auto found = names_.find(text_.substr(start, pos_ - start));
            return found == names_.end() ? std::nullopt : std::optional(found->second);
        }
        char* end = nullptr;
        const double value = std::strtod(text_.c_str() + pos_, &end);
        if (end == text_.c_str() + pos_) {
            return std::nullopt;
        }
        pos_ = static_cast<std::size_t>(end - text_.c_str());
        return value;
    }

    const std::string& text_;
    const std::map<std::string, double>& names_;
    std::size_t pos_ = 0;
};

} // namespace

std::optional<double> ExpressionValue(const std::string& text,
                                      const std::map<std::string, double>& names) {
    return Parser(text, names).Run();
}

} // namespace ampora::test
