#include "equations/equation_parse.h"
#include "support/test_files.h"

#include <gtest/gtest.h>

namespace ampora {
namespace {

// The tree in prefix form: [sum a -b], (group), [* a b], [/ a b].
std::string Tree(const EquationNode& node) {
    switch (node.kind) {
    case EquationNode::Kind::Number:
    case EquationNode::Kind::Name:
        return node.text;
    case EquationNode::Kind::Group:
        return "(" + Tree(node.children[0]) + ")";
    case EquationNode::Kind::Multiply:
    case EquationNode::Kind::Divide:
        return std::string("[") + (node.kind == EquationNode::Kind::Divide ? "/ " : "* ") +
               Tree(node.children[0]) + " " + Tree(node.children[1]) + "]";
    case EquationNode::Kind::Sum: {
        std::string text = "[sum";
        for (std::size_t i = 0; i < node.children.size(); ++i) {
            text += " ";
            text += node.signs[i] != 0 ? std::string(1, node.signs[i]) : "";
            text += Tree(node.children[i]);
        }
        return text + "]";
    }
    }
    return "?";
}

std::string Parsed(std::string_view text) {
    const auto sides = ParseEquation(text);
    if (!sides) {
        return "unreadable";
    }
    std::string joined;
    for (const EquationNode& side : *sides) {
        joined += (joined.empty() ? "" : " = ") + Tree(side);
    }
    return joined;
}

// The forms the equation sets write, products and quotients grouped from the left, numbers
// with their exponent and names with their digits, then what is unreadable, and nesting; worked by
// hand in tests/data/equations/equation_parse.txt.
TEST(EquationParse, EachTextReadsAsTheTreeWorkedByHand) {
    std::string dump;
    for (const std::string_view text :
         {"(Va-Vb)/10 + (Va-Vc+2)/5 - 0.5 = 0", "(1/10+1/5)*Va-(1/10)*Vb=-2/5+0.5", " = 0",
          "Vb-Va=-2.5", "a*b/c", "1/2/3", "(V1-V2)/2.2E+03=1e-5", "Ω2=x_1", "(Va-Vb", "Va-Vb)",
          "Va+", "Va**2", "2Va", "Va @b", "Va^2", "()", "Va--5", "=+"}) {
        dump += std::string(text) + " -> " + Parsed(text) + "\n";
    }
    for (const std::size_t depth : {20, 40, 100000}) { // nesting stops long before the stack would
        const std::string nested = std::string(depth, '(') + "1" + std::string(depth, ')');
        dump += std::to_string(depth) + " deep -> " +
                (Parsed(nested) == "unreadable" ? "unreadable" : "read") + "\n";
    }
    EXPECT_EQ(dump, test::ExpectedText("equations/equation_parse.txt", dump));
}

} // namespace
} // namespace ampora
