#pragma once
// The help pages quote what the program writes for their example circuits. Each quote is
// marked in the page with the circuit and what it quotes, for example
//   <span data-quote="wheatstone_bridge collected 1">(1/100+1/200+1/50)*V2-(1/50)*V3=10/100</span>
// and these helpers find the quotes and compare them with what the program writes for the
// same circuit, solved as `ampora-cli solve` solves it.
//
// What a quote can name (N counts from 1):
//   equation N, collected N   the KCL equation of unknown N as first written / collected
//   caption N                 caption N of the equations tab
//   counting N                paragraph N of the counting text
//   voltage NAME              the voltage of the node NAME, as the program rounds it
//   label SLOT VIEW           the label of element SLOT in view value|current|voltage|power
//   matrix R C, rref R C      an entry of the augmented matrix before / after Gauss-Jordan
//   power                     the status-bar totals of the power view
//   message                   the message shown when the circuit is refused
//   arithmetic                hand-worked arithmetic "a = b = c" whose sides must agree, the
//                             node voltages of the circuit usable as names
// In place of a circuit, "typing DEVICE ANSWER" (DEVICE battery, resistor or source; "number
// DEVICE" for the Number tool) quotes the warning shown for a typed value, or the value kept.
// A data-sigfigs="N" attribute beside data-quote sets the significant figures (3 otherwise).

#include <filesystem>
#include <string>
#include <vector>

namespace ampora::test {

struct HelpQuote {
    std::string circuit; // a file name without .amq, in examples/ or tests/data/help/
    std::string what;    // the rest of the data-quote attribute
    int sigFigs = 3;
    std::string text; // the quote as a reader sees it: tags dropped, entities decoded, blanks
                      // collapsed
};

// Every quote of a page, in page order.
std::vector<HelpQuote> FindQuotes(const std::string& html);

// "" when the program writes what the quote says, otherwise one line saying what differs.
std::string QuoteMismatch(const HelpQuote& quote);

// The text of the page's equation blocks (class "eq") that lies outside any quote: a block
// of class "eq" holds nothing but quotes.
std::string UnquotedEquationText(const std::string& html);

// Where the help's own example circuits live.
std::filesystem::path HelpCircuitsDir();

} // namespace ampora::test
