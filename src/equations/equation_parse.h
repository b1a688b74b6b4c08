#pragma once
// Reads an equation text as the equation sets write them ("(Va-Vb)/10 + 0.5 = 0",
// "(1/10+1/5)*Va-(1/10)*Vb=-2/5", "Vb=Va+5") into a small expression tree, so that it can be
// set as a textbook would set it.

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace ampora {

struct EquationNode {
    enum class Kind {
        Number,   // text as written: "10", "0.5", "1E-03"
        Name,     // a node or current name: "Va", "V1", "I2"
        Group,    // one child in parentheses
        Sum,      // children with their signs: '+', '-', or 0 for a first term without one
        Multiply, // two children, written with "*"
        Divide    // two children, written with "/"
    };
    Kind kind = Kind::Sum;
    std::string text;
    std::vector<char> signs;
    std::vector<EquationNode> children;
};

// The sides between "=" signs, left to right; a side may be an empty Sum (" = 0").
// Nothing when the text is not such an equation (unknown characters, unbalanced
// parentheses, an operator without an operand, nesting deeper than any equation needs).
std::optional<std::vector<EquationNode>> ParseEquation(std::string_view text);

} // namespace ampora
