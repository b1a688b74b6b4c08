#include "equations/equation_parse.h"
#include "support/arrow_cases.h"

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
// with their exponent and names with their digits, then what is unreadable, and nesting
// ("N deep"); worked by hand in tests/data/equations/equation_parse.txt.
TEST(EquationParse, EachTextReadsAsTheTreeWorkedByHand) {
    const std::string dump = test::ReplayArrowCases(
        "equations/equation_parse.txt", [](const std::string& text) -> std::string {
            if (!text.ends_with(" deep")) {
                return Parsed(text);
            }
            // Nesting stops long before the stack would.
            const std::size_t depth = std::stoul(text);
            const std::string nested = std::string(depth, '(') + "1" + std::string(depth, ')');
            return Parsed(nested) == "unreadable" ? "unreadable" : "read";
        });
    ASSERT_GT(dump.size(), 600u);
    EXPECT_EQ(dump, test::ExpectedText("equations/equation_parse.txt", dump));
}

} // namespace
} // namespace ampora
