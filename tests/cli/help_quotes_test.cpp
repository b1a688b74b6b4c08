// The help pages quote what the program writes for their example circuits. Each quote is
// marked in the page with the circuit and what it quotes, for example
//   <span data-quote="wheatstone_bridge collected 1">(1/100+1/200+1/50)*V2-(1/50)*V3=10/100</span>
// and this test finds the quotes and compares them with what the program writes for the
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

#include "analysis/format_number.h"
#include "analysis/result_labels.h"
#include "cli/solve_run.h"
#include "document/circuit_edit.h"
#include "editor/editing_tools.h"
#include "equations/equation_parse.h"
#include "support/scripted_prompts.h"
#include "support/test_files.h"
#include "tables/number_text.h"

#include <gtest/gtest.h>

#include <cmath>
#include <map>
#include <optional>
#include <regex>
#include <set>
#include <sstream>

namespace ampora {
namespace {

struct HelpQuote {
    std::string circuit; // a file name without .amq, in examples/ or tests/data/help/
    std::string what;    // the rest of the data-quote attribute
    int sigFigs = 3;
    std::string text; // the quote as a reader sees it: tags dropped, entities decoded, blanks
                      // collapsed
};

// An element marked as a quote, with what lies inside up to its closing tag (the help nests
// no element in one of its own name), and an equation block the same way.
const std::regex kQuote(
    R"re(<(\w+)[^>]* data-quote="([^"]*)"(?: data-sigfigs="(\d+)")?[^>]*>([\s\S]*?)</\1>)re");
const std::regex kEquationBlock(R"re(<(\w+) class="eq"[^>]*>([\s\S]*?)</\1>)re");

// "&amp;" last, so that "&amp;lt;" stays "&lt;" as a browser shows it.
const std::pair<const char*, const char*> kEntities[] = {
    {"lt", "<"},         {"gt", ">"},          {"quot", "\""},      {"nbsp", " "},
    {"Omega", "\u03A9"}, {"times", "\u00D7"},  {"minus", "\u2212"}, {"middot", "\u00B7"},
    {"uarr", "\u2191"},  {"darr", "\u2193"},   {"larr", "\u2190"},  {"rarr", "\u2192"},
    {"harr", "\u2194"},  {"divide", "\u00F7"}, {"ndash", "\u2013"}, {"amp", "&"}};

// Blanks, tabs and line breaks in runs become one blank, none at either end: what a reader
// of the page (and of the program's window) sees.
std::string Collapse(const std::string& text) {
    const std::string one = std::regex_replace(text, std::regex("[ \t\r\n]+"), " ");
    const std::size_t begin = one.find_first_not_of(' ');
    return begin == std::string::npos ? ""
                                      : one.substr(begin, one.find_last_not_of(' ') + 1 - begin);
}

// The text a browser shows for an HTML fragment: tags dropped (those that end a line or a
// cell keep the words on either side apart), entities decoded.
std::string ReaderText(const std::string& html) {
    std::string text =
        std::regex_replace(html, std::regex("</?(br|p|div|td|th|tr|li|table|ul|ol)\\b[^>]*>"), " ");
    text = std::regex_replace(text, std::regex("<[^>]*>"), "");
    for (const auto& [name, shown] : kEntities) {
        text = test::ReplaceAll(text, std::string("&") + name + ";", shown);
    }
    return Collapse(text);
}

std::vector<std::string> Split(const std::string& text, const std::string& separator) {
    std::vector<std::string> parts;
    std::size_t begin = 0;
    for (std::size_t at; (at = text.find(separator, begin)) != std::string::npos;
         begin = at + separator.size()) {
        parts.push_back(text.substr(begin, at - begin));
    }
    parts.push_back(text.substr(begin));
    return parts;
}

// How far a written number may lie from the exact one: half a unit of its last written
// digit for a rounded decimal, next to nothing for an expression.
double Tolerance(const std::string& side, double exact) {
    const std::string number = Collapse(side);
    if (number.find_first_not_of("-0123456789.") == std::string::npos) {
        const std::size_t point = number.find('.');
        const int decimals =
            point == std::string::npos ? 0 : static_cast<int>(number.size() - point - 1);
        return 0.5 * std::pow(10.0, -decimals) * 1.000001;
    }
    return 1e-9 * std::max(1.0, std::fabs(exact));
}

// The value of one side of an equation as the program's own equation reader reads it;
// nothing when it is not arithmetic or names something unknown.
std::optional<double> NodeValue(const EquationNode& node,
                                const std::map<std::string, double>& names) {
    using Kind = EquationNode::Kind;
    if (node.kind == Kind::Number) {
        return ParseDouble(node.text);
    }
    if (node.kind == Kind::Name) {
        const auto found = names.find(node.text);
        return found == names.end() ? std::nullopt : std::optional(found->second);
    }
    std::vector<double> parts;
    for (const EquationNode& child : node.children) {
        const std::optional<double> part = NodeValue(child, names);
        if (!part) {
            return std::nullopt;
        }
        parts.push_back(*part);
    }
    if (node.kind == Kind::Group) {
        return parts.at(0);
    }
    if (node.kind == Kind::Multiply || node.kind == Kind::Divide) {
        return node.kind == Kind::Multiply ? parts[0] * parts[1] : parts[0] / parts[1];
    }
    double sum = 0;
    for (std::size_t k = 0; k < parts.size(); ++k) {
        sum += node.signs[k] == '-' ? -parts[k] : parts[k];
    }
    return parts.empty() ? std::nullopt : std::optional(sum);
}

std::string ArithmeticMismatch(const Workspace& ws, const std::string& text) {
    std::map<std::string, double> names;
    for (int slot = 1; slot <= ws.Circuit.NumNodes; ++slot) {
        names[ws.Circuit.NodeLabels[slot].Name] = ws.Circuit.NodeLabels[slot].Voltage;
    }
    std::string plain = text;
    for (const auto& [from, to] : {std::pair{"\u00D7", "*"}, std::pair{"\u2212", "-"}}) {
        plain = test::ReplaceAll(plain, from, to);
    }
    const std::vector<std::string> sides = Split(plain, "=");
    if (sides.size() < 2) {
        return "\"" + text + "\" states no equality";
    }
    std::optional<double> exact;
    for (const std::string& side : sides) {
        const auto parsed = ParseEquation(Collapse(side));
        const std::optional<double> value =
            parsed && parsed->size() == 1 ? NodeValue(parsed->front(), names) : std::nullopt;
        if (!value) {
            return "\"" + Collapse(side) + "\" is not arithmetic";
        }
        if (!exact) {
            exact = value;
        } else if (std::fabs(*value - *exact) > Tolerance(side, *exact)) {
            std::ostringstream line;
            line << "in \"" << text << "\", " << Collapse(side) << " is not " << *exact;
            return line.str();
        }
    }
    return "";
}

// The text the program writes for `what`, or why there is none (starting with "!").
std::string ProgramText(Workspace& ws, const std::string& message, bool solved,
                        const std::string& what, int sigFigs) {
    std::istringstream words(what);
    std::string kind;
    words >> kind;
    if (kind == "message") {
        return message;
    }
    if (!solved) {
        return "!the circuit is refused: " + message;
    }
    const Equations& eq = ws.Equations;
    const std::map<std::string, std::vector<std::string>> texts = {
        {"equation", eq.FirstWritten},
        {"collected", eq.Collected},
        {"caption", {eq.EqnText.begin(), eq.EqnText.end()}},
        {"counting", Split(eq.CountingText, "\r\n\r\n")}};
    int n = 0;
    int m = 0;
    std::string name;
    if (texts.count(kind) != 0 && words >> n) {
        const std::vector<std::string>& list = texts.at(kind);
        return n >= 1 && static_cast<std::size_t>(n) <= list.size()
                   ? list[static_cast<std::size_t>(n - 1)]
                   : "!there is no such text";
    }
    if (kind == "voltage" && words >> name) {
        for (int slot = 1; slot <= ws.Circuit.NumNodes; ++slot) {
            if (ws.Circuit.NodeLabels[slot].Name == name) {
                return FormatNumber(ws.Circuit.NodeLabels[slot].Voltage, sigFigs);
            }
        }
        return "!there is no node " + name;
    }
    if ((kind == "matrix" || kind == "rref") && words >> n >> m) {
        if (n < 1 || n > eq.NumUnknowns || m < 1 || m > eq.NumUnknowns + 1) {
            return "!there is no such entry";
        }
        return FormatNumber(kind == "matrix" ? eq.Augmented(n, m) : eq.Reduced(n, m), sigFigs);
    }
    if (kind == "label" && words >> n >> name) {
        const std::map<std::string, int> views = {{"value", kViewValues},
                                                  {"current", kViewCurrents},
                                                  {"voltage", kViewVoltages},
                                                  {"power", kViewPower}};
        if (n < 1 || n > ws.Circuit.NumElements || ws.Circuit.Elements[n].Kind == kEmpty ||
            views.count(name) == 0) {
            return "!there is no such label";
        }
        return ElementLabel(ws, n, views.at(name), sigFigs);
    }
    if (kind == "power") {
        ws.ViewMode = kViewPower;
        WriteLabels(ws, sigFigs);
        return ResultsStatusText(ws, sigFigs);
    }
    return "!the help asks for something the test does not know";
}

// What the program answers when `answer` is typed for a new device of the kind named first
// in `what` ("battery", "resistor" or "source"), or, with "number" in front, typed with the
// Number tool for a device placed with the value 10: the warning shown, or else the value
// kept.
std::string TypingText(const std::string& what) {
    std::istringstream words(what);
    std::string device;
    words >> device;
    const bool numberTool = device == "number";
    if (numberTool) {
        words >> device;
    }
    std::string answer;
    std::getline(words >> std::ws, answer);
    const std::map<std::string, int> tools = {
        {"battery", kBatteryTool}, {"resistor", kResistorTool}, {"source", kSourceTool}};
    if (tools.count(device) == 0) {
        return "!there is no device " + device;
    }
    Circuit circuit;
    AddWire(circuit, 40, 80, 200, 80);
    EditorState state;
    test::ScriptedPrompts prompts;
    prompts.textAnswers = {numberTool ? "10" : answer, answer};
    const int slot = PlaceDevice(circuit, state, prompts, tools.at(device), 120, 80);
    if (numberTool) {
        RenumberDevice(circuit, state, prompts, slot);
    }
    if (!prompts.messages.empty()) {
        const std::string& shown = prompts.messages.back();
        return shown.rfind("(!) ", 0) == 0 ? shown.substr(4) : shown;
    }
    return ShortestText(circuit.Elements[slot].Value);
}

std::vector<HelpQuote> FindQuotes(const std::string& html) {
    std::vector<HelpQuote> quotes;
    for (auto it = std::sregex_iterator(html.begin(), html.end(), kQuote);
         it != std::sregex_iterator(); ++it) {
        HelpQuote quote;
        std::istringstream words((*it)[2].str());
        words >> quote.circuit;
        std::getline(words >> std::ws, quote.what);
        quote.sigFigs = (*it)[3].matched ? std::stoi((*it)[3]) : 3;
        quote.text = ReaderText((*it)[4]);
        quotes.push_back(quote);
    }
    return quotes;
}

// What the program writes where the quote stands, or why there is nothing (starting with "!").
std::string Written(const HelpQuote& quote) {
    if (quote.circuit == "typing") {
        return TypingText(quote.what);
    }
    std::filesystem::path path = test::ExamplesDir() / (quote.circuit + ".amq");
    if (!std::filesystem::exists(path)) {
        path = test::DataDir() / "help" / (quote.circuit + ".amq");
    }
    if (quote.circuit.empty() || !std::filesystem::exists(path)) {
        return "!there is no such circuit";
    }
    Workspace ws;
    cli::RunOptions options;
    options.path = path.string();
    options.sigFigs = static_cast<std::int16_t>(quote.sigFigs);
    cli::RecordedPrompts prompts;
    std::ostringstream err;
    const std::optional<cli::SolvedRun> run = cli::OpenAndSolve(ws, options, prompts, err);
    if (!run) {
        return "!the circuit cannot be read: " + err.str();
    }
    if (quote.what == "arithmetic") {
        const std::string wrong = ArithmeticMismatch(ws, quote.text);
        return wrong.empty() ? quote.text : "!" + wrong;
    }
    return ProgramText(ws, prompts.message, run->solved, quote.what, quote.sigFigs);
}

std::string QuoteMismatch(const HelpQuote& quote) {
    const std::string name = quote.circuit + " " + quote.what;
    const std::string written = Written(quote);
    if (!written.empty() && written[0] == '!') {
        return name + ": " + written.substr(1);
    }
    // A typed value's warning is shown as the program words it, blanks and all.
    const std::string shown = quote.circuit == "typing" ? written : Collapse(written);
    return Collapse(written) == quote.text ? ""
                                           : name + ": the help says \"" + quote.text +
                                                 "\", the program writes \"" + shown + "\"";
}

// What an equation block holds besides its quotes, blocks apart by " | ".
std::string UnquotedEquationText(const std::string& html) {
    std::string unquoted;
    for (auto it = std::sregex_iterator(html.begin(), html.end(), kEquationBlock);
         it != std::sregex_iterator(); ++it) {
        const std::string left = ReaderText(std::regex_replace((*it)[2].str(), kQuote, ""));
        if (!left.empty()) {
            unquoted += (unquoted.empty() ? "" : " | ") + left;
        }
    }
    return unquoted;
}

const char* const kPages[] = {"index.htm", "dc cct help/theory.htm"};

TEST(HelpQuotes, EveryQuoteOfTheHelpIsWhatTheProgramWritesForItsCircuit) {
    std::string wrong;
    std::set<std::string> kinds;
    for (const char* name : kPages) {
        const std::string html =
            test::ReadBytes(std::filesystem::path(AMPORA_SOURCE_DIR) / "help" / name);
        const auto quotes = FindQuotes(html);
        // A page whose marks were lost would otherwise pass by checking nothing.
        EXPECT_GE(quotes.size(), 10u) << name;
        // A mark on an element that is never closed would be skipped.
        EXPECT_EQ(quotes.size(), Split(html, " data-quote=\"").size() - 1) << name;
        for (const HelpQuote& quote : quotes) {
            kinds.insert(quote.circuit == "typing" ? quote.circuit
                                                   : quote.what.substr(0, quote.what.find(' ')));
            const std::string line = QuoteMismatch(quote);
            wrong += line.empty() ? "" : std::string(name) + ": " + line + "\n";
        }
        // An equation block holds nothing but quotes.
        EXPECT_EQ(UnquotedEquationText(html), "") << name;
    }
    EXPECT_EQ(wrong, "");
    EXPECT_EQ(kinds, (std::set<std::string>{"arithmetic", "caption", "collected", "counting",
                                            "equation", "label", "matrix", "message", "power",
                                            "rref", "typing", "voltage"}));
}

// The checker itself, on quotes that are each wrong in one way (tests/data/help/checker.txt):
// every snippet is followed by the lines it gives, "=> agrees" when it gives none.
TEST(HelpQuotes, EachWrongQuoteIsNamedWithWhatTheProgramWrites) {
    const std::string kept = test::ReadBytes(test::DataDir() / "help" / "checker.txt");
    std::string replayed, html;
    std::istringstream lines(kept);
    for (std::string line; std::getline(lines, line);) {
        if (line.rfind("=> ", 0) == 0) {
            continue;
        }
        if (!line.empty()) {
            html += line + "\n";
            replayed += line + "\n";
            continue;
        }
        std::string given;
        for (const HelpQuote& quote : FindQuotes(html)) {
            const std::string wrong = QuoteMismatch(quote);
            given += wrong.empty() ? "" : "=> " + wrong + "\n";
        }
        const std::string unquoted = UnquotedEquationText(html);
        given += unquoted.empty() ? "" : "=> outside the quotes: " + unquoted + "\n";
        replayed += (given.empty() ? "=> agrees\n" : given) + "\n";
        html.clear();
    }
    EXPECT_GE(replayed.size(), 1000u);
    EXPECT_EQ(replayed, test::ExpectedText("help/checker.txt", replayed));
}

} // namespace
} // namespace ampora
