#include "equations/equation_check.h"

#include "analysis/node_naming.h"
#include "support/lattice_circuit.h"
#include "support/scripted_prompts.h"
#include "support/solve_session.h"
#include "support/test_files.h"
#include "tables/number_text.h"
#include "workflow/step_transitions.h"

#include <gtest/gtest.h>

#include <cmath>

namespace ampora {
namespace {

std::string Verdict(const Workspace& ws, const std::string& at, const std::string& text) {
    const int variable = EquationAtNode(ws, at);
    if (variable == 0) {
        return "no equation at " + at;
    }
    const EquationVerdict verdict = CheckEquation(ws, variable, text);
    if (!verdict.error.empty()) {
        return "unreadable: " + verdict.error;
    }
    if (verdict.equivalent) {
        return "right (" + verdict.equationOf + ")";
    }
    return "wrong" + (verdict.equationOf.empty() ? "" : " (" + verdict.equationOf + ")") + ": " +
           verdict.hint;
}

// Two supernodes: V1 with V4 = V1 - 10, V3 with V5 = V3 + 5; a 2 A source and a 25 ohm
// resistor each join two members of one supernode. The verdicts, hints and answers worked by
// hand are in tests/data/equations/equation_check.txt.
TEST(EquationCheck, EquationsAndAnswersForTheTwoSupernodesAreJudgedAsWorkedByHand) {
    test::SolveSession session;
    test::Solve(session, test::ExampleText("two_supernodes.amq"), 1);
    ASSERT_TRUE(session.solved);
    const std::pair<const char*, const char*> equations[] = {
        {"V1", "(V1-V2)/10 + V4/30 = 0"},
        {"V4", "V4/30 = (V2 - V1)/10"},
        {"V1", "3(V1-V2) + (V1-10) = 0"},
        {"V1", "0.1333V1 - 0.1V2 = 0.333"},
        {"V1", "0.13V1 - 0.1V2 = 0.33"},
        {"V1", "(V1-V2)/10 - V4/30 = 0"},
        {"V1", "(V1-V2)/10 = 0"},
        {"V1", "(V1+V2)/10 + V4/30 = 0"},
        {"V1", "(V1-V2)/10 + (V1+10)/30 = 0"},
        {"V1", "(V1-V2)/10 + V4/30 + 2 = 0"},
        {"V1", "(V1-V2)/10 + V4/20 = 0"},
        {"V1", "(V1-V2)/10 + V4/30 + I1 = 0"},
        {"V1", "(V2-V1)/10 + (V2-V3)/20 + V2/40 = 0"},
        {"V1", "V4 = V1 - 10"},
        {"V1", "V4 = V1 + 10"},
        {"V1", "(V1-V2)/10 + V4/30 + (V2-V3)/20 = 0"},
        {"V3", "(V3-V2)/20 + (V3+5)/50 = 0"},
        {"V3", "(V3-V2)/20 + (V3-5)/50 = 0"},
        {"V3", "(V3-V2)/20 + V5/50 + (V3-V5)/25 = 0"},
        {"V2", "(V2-V1)/10 + (V2-V3)/20 + V2/40 = 0"},
        {"V2", "(V2-V1)/10 + (V2-V3)/20 + V2/40 - 2 = 0"},
        {"V2", "(V2-V1)/10 + (V2-V3)/20 + V2/40 + V3 = 0"},
        {"V2", "(V2-V1)/10 + (V2-V3)/20 + V2/40 = 0 = 1"},
        {"0", "V1 = 0"},
    };
    std::string dump;
    for (const auto& [at, text] : equations) {
        dump += std::string(at) + " | " + text + " | " + Verdict(session.ws, at, text) + "\n";
    }
    // V1 = 4.58333, V2 = 2.77778, V4 = -5.41667.
    const struct {
        const char* name;
        double value;
        int sigFigs;
    } answers[] = {{"V1", 4.58, 3}, {"V1", 4.583333, 3}, {"V1", 4.59, 3}, {"V1", 4.6, 2},
                   {"V1", 4.58, 4}, {"V1", -4.58, 3},    {"V1", 2.78, 3}, {"V4", -5.42, 3},
                   {"0", 0, 3},     {"0", 0.001, 3},     {"Vx", 1, 3}};
    for (const auto& c : answers) {
        const AnswerVerdict verdict = CheckAnswer(session.ws, c.name, c.value, c.sigFigs);
        dump += std::string(c.name) + " = " + ShortestText(c.value) + " at " +
                std::to_string(c.sigFigs) + ": " +
                (!verdict.known  ? "no such name"
                 : verdict.right ? "right"
                                 : verdict.hint) +
                "\n";
    }
    EXPECT_EQ(dump, test::ExpectedText("equations/equation_check.txt", dump));
    // I1 runs through the 10 V battery.
    const AnswerVerdict current =
        CheckAnswer(session.ws, "I1", session.ws.topology.Branches[3].Current * 1.0001, 3);
    EXPECT_TRUE(current.known && current.right);
}

// Each chain's current out of the equation's nodes, written as a student would: the nodes by
// their own names, every member of a supernode included.
struct StudentTerm {
    std::string text;
    double current = 0; // at the solution
};

std::vector<StudentTerm> StudentTerms(const Workspace& ws, int variable) {
    const EqnVar& var = ws.equations.EqnVars[static_cast<std::size_t>(variable - 1)];
    std::vector<int> members;
    if (var.SuperNode > 0) {
        for (const int position : ws.equations.SuperNodes[var.SuperNode].Nodes) {
            members.push_back(ws.naming.NodeOrder[position]);
        }
    } else {
        members.push_back(ws.naming.NodeOrder[var.Node]);
    }
    const auto isMember = [&](int slot) {
        return std::find(members.begin(), members.end(), slot) != members.end();
    };
    std::vector<StudentTerm> terms;
    for (int b = 1; b <= ws.topology.NumBranches; ++b) {
        const Branch& chain = ws.topology.Branches[b];
        if (!isMember(chain.StartNode) || isMember(chain.EndNode)) {
            continue;
        }
        if (chain.SourceCurrent != 0) {
            terms.push_back({"(" + ShortestText(chain.SourceCurrent) + ")", chain.SourceCurrent});
            continue;
        }
        const NodeLabel& start = ws.circuit.NodeLabels[chain.StartNode];
        const NodeLabel& end = ws.circuit.NodeLabels[chain.EndNode];
        terms.push_back({"(" + start.Name + "-" + end.Name + "+(" + ShortestText(chain.EMF) +
                             "))/" + ShortestText(chain.Resistance),
                         (start.Voltage - end.Voltage + chain.EMF) / chain.Resistance});
    }
    return terms;
}

std::string Joined(const std::vector<StudentTerm>& terms, std::size_t flipped) {
    std::string text;
    for (std::size_t k = 0; k < terms.size(); ++k) {
        text += (k == flipped ? " - " : " + ") + terms[k].text;
    }
    return text;
}

TEST(EquationCheck, TheProgramsOwnEquationsRearrangedAreRightAndChangedOnesWrong) {
    std::mt19937 random(20261125);
    int solved = 0;
    int flips = 0;
    int flipsNamed = 0;
    for (int trial = 0; trial < 400 && solved < 120; ++trial) {
        const test::LatticeCircuit lattice = test::RandomLatticeCircuit(random);
        Workspace ws;
        ws.circuit = test::DrawLattice(lattice);
        test::ScriptedPrompts prompts;
        if (LeaveStep1(ws, prompts) != TransitionResult::Entered || !AutoName(ws, prompts) ||
            LeaveStep2(ws, prompts) != TransitionResult::Entered) {
            continue;
        }
        ++solved;
        SCOPED_TRACE(test::DescribeLattice(lattice));
        const Equations& eq = ws.equations;
        for (int v = 1; v <= eq.NumUnknowns; ++v) {
            const std::size_t row = static_cast<std::size_t>(v - 1);
            const std::string& first = eq.FirstWritten[row];
            const std::string left = first.substr(0, first.rfind(" = 0"));
            const std::vector<StudentTerm> terms = StudentTerms(ws, v);
            const std::string named = Joined(terms, terms.size());
            const std::string right[] = {
                first,
                eq.Collected[row],
                "0 = -(" + left + ")",
                "-2.5*(" + left + ") = 0",
                "(" + left + ")/7 = 0",
                named + " = 0",
                "0 = 4(" + named + ")",
            };
            for (const std::string& text : right) {
                const EquationVerdict verdict = CheckEquation(ws, v, text);
                EXPECT_TRUE(verdict.equivalent) << text << ": " << verdict.error << verdict.hint;
                EXPECT_EQ(verdict.equationOf, eq.EqnVars[row].VarName);
            }
            const EquationVerdict shifted = CheckEquation(ws, v, left + " + 1 = 0");
            EXPECT_FALSE(shifted.equivalent) << left;
            EXPECT_FALSE(shifted.hint.empty());
            for (std::size_t k = 0; k < terms.size(); ++k) {
                if (std::fabs(terms[k].current) < 1e-9) {
                    continue; // a term of no current is the same with either sign
                }
                const std::string text = Joined(terms, k) + " = 0";
                const EquationVerdict verdict = CheckEquation(ws, v, text);
                EXPECT_FALSE(verdict.equivalent) << text;
                EXPECT_FALSE(verdict.hint.empty()) << text;
                ++flips;
                flipsNamed += verdict.hint.find("wrong sign") != std::string::npos;
            }
        }
    }
    EXPECT_EQ(solved, 120);
    // A flipped term is named as such unless the flip also makes another equation, or
    // two terms of the equation are the same.
    EXPECT_GT(flipsNamed, flips * 9 / 10) << flipsNamed << " of " << flips;
}

} // namespace
} // namespace ampora
