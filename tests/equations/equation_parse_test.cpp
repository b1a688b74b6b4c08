#include "equations/equation_parse.h"

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

TEST(EquationParse, TheFormsTheEquationSetsWrite) {
    EXPECT_EQ(Parsed("(Va-Vb)/10 + (Va-Vc+2)/5 - 0.5 = 0"),
              "[sum [/ ([sum Va -Vb]) 10] +[/ ([sum Va -Vc +2]) 5] -0.5] = [sum 0]");
    EXPECT_EQ(Parsed("(1/10+1/5)*Va-(1/10)*Vb=-2/5+0.5"),
              "[sum [* ([sum [/ 1 10] +[/ 1 5]]) Va] -[* ([sum [/ 1 10]]) Vb]] = "
              "[sum -[/ 2 5] +0.5]");
    EXPECT_EQ(Parsed(" = 0"), "[sum] = [sum 0]");
    EXPECT_EQ(Parsed("Vb-Va=-2.5"), "[sum Vb -Va] = [sum -2.5]");
}

TEST(EquationParse, ProductsAndQuotientsGroupFromTheLeft) {
    EXPECT_EQ(Parsed("a*b/c"), "[sum [/ [* a b] c]]");
    EXPECT_EQ(Parsed("1/2/3"), "[sum [/ [/ 1 2] 3]]");
}

TEST(EquationParse, NumbersKeepTheirExponentAndNamesTheirDigits) {
    EXPECT_EQ(Parsed("(V1-V2)/2.2E+03=1e-5"), "[sum [/ ([sum V1 -V2]) 2.2E+03]] = [sum 1e-5]");
    EXPECT_EQ(Parsed("Ω2=x_1"), "[sum Ω2] = [sum x_1]");
}

TEST(EquationParse, AnythingElseIsUnreadable) {
    for (const std::string_view text :
         {"(Va-Vb", "Va-Vb)", "Va+", "Va**2", "2Va", "Va @b", "Va^2", "()", "Va--5", "=+"}) {
        EXPECT_EQ(Parsed(text), "unreadable") << text;
    }
}

TEST(EquationParse, NestingStopsLongBeforeTheStackWould) {
    const auto nested = [](int depth) {
        return std::string(static_cast<std::size_t>(depth), '(') + "1" +
               std::string(static_cast<std::size_t>(depth), ')');
    };
    EXPECT_NE(Parsed(nested(20)), "unreadable");
    EXPECT_EQ(Parsed(nested(40)), "unreadable");
    EXPECT_EQ(Parsed(nested(100000)), "unreadable");
}

} // namespace
} // namespace ampora
