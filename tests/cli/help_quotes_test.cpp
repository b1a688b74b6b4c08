// The help pages quote the program: every equation, number and message they show for an
// example circuit must be what the program writes for that circuit.

#include "support/help_quotes.h"
#include "support/test_files.h"

#include <gtest/gtest.h>

#include <set>

namespace ampora {
namespace {

const char* const kPages[] = {"index.htm", "dc cct help/theory.htm"};

std::string Page(const std::string& name) {
    return test::ReadBytes(std::filesystem::path(AMPORA_SOURCE_DIR) / "help" / name);
}

// Every disagreement between a snippet's quotes and the program, one line each.
std::string Mismatches(const std::string& html) {
    std::string lines;
    for (const test::HelpQuote& quote : test::FindQuotes(html)) {
        const std::string wrong = test::QuoteMismatch(quote);
        lines += wrong.empty() ? "" : wrong + "\n";
    }
    return lines;
}

TEST(HelpQuotes, EveryQuoteOfTheHelpIsWhatTheProgramWritesForItsCircuit) {
    std::string wrong;
    std::set<std::string> kinds;
    for (const char* name : kPages) {
        const std::string html = Page(name);
        const auto quotes = test::FindQuotes(html);
        // A page whose marks were lost would otherwise pass by checking nothing.
        EXPECT_GE(quotes.size(), 10u) << name;
        for (const test::HelpQuote& quote : quotes) {
            kinds.insert(quote.circuit == "typing" ? quote.circuit
                                                   : quote.what.substr(0, quote.what.find(' ')));
            const std::string line = test::QuoteMismatch(quote);
            wrong += line.empty() ? "" : std::string(name) + ": " + line + "\n";
        }
    }
    EXPECT_EQ(wrong, "");
    EXPECT_EQ(kinds, (std::set<std::string>{"arithmetic", "caption", "collected", "counting",
                                            "equation", "label", "matrix", "message", "power",
                                            "rref", "typing", "voltage"}));
}

TEST(HelpQuotes, TheEquationBlocksOfTheHelpHoldNothingButQuotes) {
    for (const char* name : kPages) {
        EXPECT_EQ(test::UnquotedEquationText(Page(name)), "") << name;
    }
}

// The checker itself: a quote that is wrong in one way per row, with the exact line it
// gives; rows that agree give nothing.
TEST(HelpQuotes, EachWrongQuoteIsNamedWithWhatTheProgramWrites) {
    struct Row {
        const char* html;
        const char* expected;
    };
    const Row rows[] = {
        {R"(<span data-quote="wheatstone_bridge equation 1">(V2-10)/100 = 0</span>)",
         "wheatstone_bridge equation 1: the help says \"(V2-10)/100 = 0\", the program writes "
         "\"(V2-10)/100 + (V2-0)/200 + (V2-V3)/50 = 0\"\n"},
        {R"(<span data-quote="wheatstone_bridge voltage V2">6.5347</span>)",
         "wheatstone_bridge voltage V2: the help says \"6.5347\", the program writes \"6.53\"\n"},
        {R"(<span data-quote="wheatstone_bridge voltage V2" data-sigfigs="5">6.5347</span>)", ""},
        {R"(<span data-quote="wheatstone_bridge voltage V9">1</span>)",
         "wheatstone_bridge voltage V9: there is no node V9\n"},
        {R"(<td data-quote="wheatstone_bridge label 6 voltage">0.099 &rarr;</td>)",
         "wheatstone_bridge label 6 voltage: the help says \"0.099 \u2192\", the program writes "
         "\"\u2190 0.099\"\n"},
        {R"(<td data-quote="wheatstone_bridge label 7 value">1 V</td>)",
         "wheatstone_bridge label 7 value: there is no such label\n"},
        {R"(<span data-quote="wheatstone_bridge matrix 3 1">0</span>)",
         "wheatstone_bridge matrix 3 1: there is no such entry\n"},
        {R"(<span data-quote="wheatstone_bridge equation 3">= 0</span>)",
         "wheatstone_bridge equation 3: there is no such text\n"},
        {R"(<p data-quote="wheatstone_bridge caption 1">Applying Kirchhoff's current law at
            <b>node V2</b>, node V3,  respectively, results in these equations:</p>)",
         ""},
        {R"(<span data-quote="wheatstone_bridge power">Power in = 0.584 watts, Power out = 0.585 watts.</span>)",
         "wheatstone_bridge power: the help says \"Power in = 0.584 watts, Power out = 0.585 "
         "watts.\", the program writes \"Power in = 0.584 watts, Power out = 0.584 watts.\"\n"},
        {R"(<span data-quote="single_loop equation 1">(V1-0)/100 = 0</span>)",
         "single_loop equation 1: the circuit is refused: You can't do nodal analysis since "
         "there are no nodes.\n"},
        {R"(<span data-quote="wheatstone_bridge message">Error</span>)",
         "wheatstone_bridge message: the help says \"Error\", the program writes \"\"\n"},
        {R"(<span data-quote="no_such_circuit equation 1">V1 = 0</span>)",
         "no_such_circuit equation 1: there is no such circuit\n"},
        {R"(<span data-quote="wheatstone_bridge tension V2">6.53</span>)",
         "wheatstone_bridge tension V2: the help asks for something the test does not know\n"},
        {R"(<span data-quote="wheatstone_bridge arithmetic">1/100 + 1/200 + 1/50 = 7/200 = 0.035</span>)",
         ""},
        {R"(<span data-quote="wheatstone_bridge arithmetic">(V2 &minus; V3)/50 = 0.00198</span>)",
         ""},
        {R"(<span data-quote="wheatstone_bridge arithmetic">1/150 + 1/250 = 0.0108</span>)",
         "wheatstone_bridge arithmetic: in \"1/150 + 1/250 = 0.0108\", 0.0108 is not "
         "0.0106667\n"},
        {R"(<span data-quote="wheatstone_bridge arithmetic">1/50 &times; 200/7 = 4 over 7</span>)",
         "wheatstone_bridge arithmetic: \"4 over 7\" is not arithmetic\n"},
        {R"(<span data-quote="wheatstone_bridge arithmetic">0.035</span>)",
         "wheatstone_bridge arithmetic: \"0.035\" states no equality\n"},
        {R"(<span data-quote="typing number battery -1.5">1.5</span>)", ""},
        {R"(<span data-quote="typing resistor 1k">1000</span>)",
         "typing resistor 1k: the help says \"1000\", the program writes \"Warning: Invalid "
         "entry.  Resistance changed to 0.\"\n"},
        {R"(<span data-quote="typing capacitor 1">1</span>)",
         "typing capacitor 1: there is no device capacitor\n"},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(Mismatches(row.html), row.expected) << row.html;
    }
}

TEST(HelpQuotes, TextOutsideTheQuotesOfAnEquationBlockIsShown) {
    EXPECT_EQ(test::UnquotedEquationText(
                  R"(<p class="eq"><span data-quote="a equation 1">(V1-0)/2 = 0</span>&nbsp;
                     <br>V1 = 3</p><p class="eq">&nbsp;</p><p class="eq">I = V/R</p>)"),
              "V1 = 3 | I = V/R");
}

} // namespace
} // namespace ampora
