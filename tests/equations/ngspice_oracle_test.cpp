// Random lattice circuits solved by the program and by ngspice (tools/oracle.sh runs many
// more with AMPORA_ORACLE_CIRCUITS and AMPORA_ORACLE_SEED), and as a student does: the power
// put in is the power taken out; the equations the program writes, rearranged, are judged
// right, and with a term's sign flipped or the constant moved wrong; the record of the
// elimination replays to the reduced form to the bit, the exact fractions follow the same
// steps to the same answers, and the last step shown reads as the reduced form does.

#include "analysis/circuit_checks.h"
#include "analysis/gauss_jordan.h"
#include "analysis/node_naming.h"
#include "analysis/result_labels.h"
#include "equations/equation_check.h"
#include "equations/exact_node_matrix.h"
#include "equations/row_operation_steps.h"
#include "support/lattice_circuit.h"
#include "support/ngspice_oracle.h"
#include "support/scripted_prompts.h"
#include "support/test_files.h"
#include "tables/number_text.h"
#include "workflow/step_transitions.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <iostream>
#include <map>

namespace ampora {
namespace {

using test::LatticeCircuit;
using test::LatticeEdge;
using test::LatticeFacts;

long long Setting(const char* name, long long fallback) {
    const char* text = std::getenv(name);
    const auto value = text ? ParseInteger(text) : std::nullopt;
    return value ? *value : fallback;
}

double Largest(const std::vector<double>& values) {
    return values.empty() ? 0 : std::fabs(*std::ranges::max_element(values, {}, [](double v) {
        return std::fabs(v);
    }));
}

bool Close(double value, double expected, double scale) {
    return std::fabs(value - expected) <= 1e-6 * std::max(scale, 1e-9);
}

// Compares node-voltage differences (every node against the reference) and the current of
// every device, each relative to the largest of its kind; "" when all agree.
std::string CompareWithNgspice(const LatticeCircuit& lattice, const Workspace& ws,
                               const test::TempDir& folder) {
    int ground = -1;
    for (int slot = 1; slot <= ws.Circuit.NumNodes; ++slot) {
        const NodeLabel& node = ws.Circuit.NodeLabels[slot];
        if (node.Name == "0") {
            ground = test::PointAt(lattice, node.X, node.Y);
        }
    }
    std::string log;
    const auto spice = test::SolveWithNgspice(lattice, ground, folder.Path().string(), log);
    if (!spice) {
        return "ngspice gave no operating point:\n" + log;
    }
    const double voltageScale = Largest(spice->voltage);
    for (int slot = 1; slot <= ws.Circuit.NumNodes; ++slot) {
        const NodeLabel& node = ws.Circuit.NodeLabels[slot];
        const double expected =
            spice->voltage[static_cast<std::size_t>(test::PointAt(lattice, node.X, node.Y))];
        if (!Close(node.Voltage, expected, voltageScale)) {
            return "node " + node.Name + ": " + ShortestText(node.Voltage) + " V, ngspice " +
                   ShortestText(expected);
        }
    }
    const double currentScale = Largest(spice->screenCurrent);
    int element = 0;
    for (std::size_t e = 0; e < lattice.edges.size(); ++e) {
        if (lattice.edges[e].device == test::LatticeDevice::None) {
            continue;
        }
        const double current = ws.Circuit.Elements[++element].Current;
        if (!Close(current, spice->screenCurrent[e], currentScale)) {
            return "element " + std::to_string(element) + ": " + ShortestText(current) +
                   " A, ngspice " + ShortestText(spice->screenCurrent[e]);
        }
    }
    return "";
}

// Every refusal falls under its rule: "" when the circuit really does, else why not.
std::string CheckRefusal(const std::string& message, const LatticeFacts& facts) {
    const struct {
        const char* message;
        bool applies;
        const char* otherwise;
    } rules[] = {
        {kNoNodesMessage, facts.nodes == 0, "the drawing has a node"},
        {kLoopsMessage, facts.nodeFreeLoops > 0, "no loop is free of nodes"},
        {kTwoCurrentSourcesMessage, facts.chainWithTwoSources, "no chain has two current sources"},
        {kIdenticalParallelBranchesMessage, facts.identicalBatteryChains,
         "no two battery chains are alike"},
        {kDifferentParallelVoltagesMessage, facts.contradictoryBatteryLoop,
         "the battery voltages agree"},
        {kCannotSolveMessage, facts.singular, "the nodal equations have one solution"},
    };
    for (const auto& rule : rules) {
        if (message == rule.message) {
            return rule.applies ? "" : std::string("refused, but ") + rule.otherwise;
        }
    }
    return "refused with an unexpected message: " + message;
}

// Each chain's current out of the equation's nodes, written as a student would: the nodes by
// their own names, every member of a supernode included.
struct StudentTerm {
    std::string text;
    double current = 0; // at the solution
};

std::vector<StudentTerm> StudentTerms(const Workspace& ws, int variable) {
    const EqnVar& var = ws.Equations.EqnVars[static_cast<std::size_t>(variable - 1)];
    std::vector<int> members = {ws.Naming.NodeOrder[var.Node]};
    if (var.SuperNode > 0) {
        members.clear();
        for (const int position : ws.Equations.SuperNodes[var.SuperNode].Nodes) {
            members.push_back(ws.Naming.NodeOrder[position]);
        }
    }
    const auto isMember = [&](int slot) {
        return std::ranges::find(members, slot) != members.end();
    };
    std::vector<StudentTerm> terms;
    for (int b = 1; b <= ws.Topology.NumBranches; ++b) {
        const Branch& chain = ws.Topology.Branches[b];
        if (!isMember(chain.StartNode) || isMember(chain.EndNode)) {
            continue;
        }
        const NodeLabel& start = ws.Circuit.NodeLabels[chain.StartNode];
        const NodeLabel& end = ws.Circuit.NodeLabels[chain.EndNode];
        terms.push_back(
            chain.SourceCurrent != 0
                ? StudentTerm{"(" + ShortestText(chain.SourceCurrent) + ")", chain.SourceCurrent}
                : StudentTerm{"(" + start.Name + "-" + end.Name + "+(" + ShortestText(chain.EMF) +
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

void CheckTheEquations(const Workspace& ws, int& flips, int& flipsNamed) {
    const Equations& eq = ws.Equations;
    for (int v = 1; v <= eq.NumUnknowns; ++v) {
        const std::size_t row = static_cast<std::size_t>(v - 1);
        const std::string& first = eq.FirstWritten[row];
        const std::string left = first.substr(0, first.rfind(" = 0"));
        const std::vector<StudentTerm> terms = StudentTerms(ws, v);
        const std::string named = Joined(terms, terms.size());
        for (const std::string& text :
             {first, eq.Collected[row], "0 = -(" + left + ")", "-2.5*(" + left + ") = 0",
              "(" + left + ")/7 = 0", named + " = 0", "0 = 4(" + named + ")"}) {
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

// `exact`: the chain values are eighths, so the fractions solve the very same system.
void CheckTheElimination(const Workspace& ws, bool exact) {
    const Equations& eq = ws.Equations;
    const int n = eq.NumUnknowns;
    RowOperationReplay replay(eq.Augmented, n, n);
    for (const RowOperation& operation : eq.RowOps) {
        replay.Apply(operation);
    }
    replay.ClearNegligible();
    ASSERT_EQ(std::memcmp(&replay.Matrix(), &eq.Reduced, sizeof eq.Reduced), 0);
    Workspace settled = ws;
    settled.Equations.RowOps.clear();
    settled.Equations.Augmented = eq.Reduced;
    EXPECT_EQ(ShowRowOperations(ws, false, 6).steps.back().cells,
              ShowRowOperations(settled, false, 6).steps.front().cells);
    if (!exact) {
        return;
    }
    const auto fractions = ExactNodeElimination(ws);
    ASSERT_TRUE(fractions);
    for (int row = 1; row <= n; ++row) {
        const double rhs = fractions->reduced(row, n + 1).convert_to<double>();
        EXPECT_NEAR(rhs, eq.Reduced(row, n + 1), 1e-9 * std::max(1.0, std::fabs(rhs)));
    }
}

// A ladder of 12 rungs on a lattice of 2 rows: its 20 inner rail points are the nodes the
// node table holds. `device` chooses what sits on edge e (rails first, then rungs).
LatticeCircuit Ladder(const std::function<LatticeEdge(int from, int to, int e)>& device) {
    LatticeCircuit ladder;
    ladder.columns = 12;
    ladder.rows = 2;
    int e = 0;
    for (int row = 0; row < 2; ++row) {
        for (int column = 0; column + 1 < 12; ++column) {
            ladder.edges.push_back(device(12 * row + column, 12 * row + column + 1, e++));
        }
    }
    for (int column = 0; column < 12; ++column) {
        ladder.edges.push_back(device(column, 12 + column, e++));
    }
    return ladder;
}

// The first circuits are two ladders of 20 nodes, the most the node table holds; then random
// ones, every other in eighths, the others with decimals rounded in single precision.
TEST(NgspiceOracle, SolvedCircuitsAgreeAndAreWorkedAsAStudentDoesAndEachRefusalFallsUnderItsRule) {
    using enum test::LatticeDevice;
    const LatticeCircuit ladders[] = {
        // Resistors on every rail and rung, a battery on the first rung.
        Ladder([&](int from, int to, int e) {
            return e == 22 ? LatticeEdge(from, to, Battery, 12, false)
                           : LatticeEdge(from, to, Resistor, 1.0f + 0.5f * (e % 7), true);
        }),
        // Batteries along the top rail join supernodes, current sources on two rungs.
        Ladder([&](int from, int to, int e) {
            if (e < 11 && e % 3 == 1) {
                return LatticeEdge(from, to, Battery, 1.5f * static_cast<float>(e), true);
            }
            if (e == 25 || e == 30) {
                return LatticeEdge(from, to, CurrentSource, 0.25f, e == 25);
            }
            return LatticeEdge(from, to, Resistor, 2.0f + static_cast<float>(e % 5), true);
        }),
    };
    const long long circuits = Setting("AMPORA_ORACLE_CIRCUITS", 400);
    const auto seed = static_cast<std::mt19937::result_type>(Setting("AMPORA_ORACLE_SEED", 1703));
    std::mt19937 random(seed);
    const test::TempDir folder;
    std::map<std::string, int> refusals;
    int solved = 0, solvedWithLongWires = 0, inEighths = 0, failures = 0, flips = 0, flipsNamed = 0;
    for (long long trial = 0; trial < circuits && failures < 10; ++trial) {
        const test::LatticeOptions options{20, trial >= 2 && trial % 2 == 0, 0.5};
        const LatticeCircuit lattice =
            trial < 2 ? ladders[trial] : test::RandomLatticeCircuit(random, options);
        if (lattice.edges.empty()) {
            --trial; // nothing drawn: nothing to compare
            continue;
        }
        SCOPED_TRACE("circuit " + std::to_string(trial) + ": " + test::DescribeLattice(lattice));
        Workspace ws;
        ws.Circuit = test::DrawLattice(lattice);
        test::ScriptedPrompts prompts;
        if (LeaveStep1(ws, prompts) != TransitionResult::Entered || !AutoName(ws, prompts) ||
            LeaveStep2(ws, prompts) != TransitionResult::Entered) {
            const std::string message = prompts.messages.empty() ? "(silent)" : prompts.messages[0];
            ++refusals[message];
            EXPECT_GE(trial, 2) << "a ladder refused: " << message;
            const std::string wrong = CheckRefusal(message, test::AnalyseLattice(lattice));
            EXPECT_EQ(wrong, "");
            failures += !wrong.empty();
            continue;
        }
        ++solved;
        EXPECT_TRUE(trial >= 2 || ws.Circuit.NumNodes == 20);
        solvedWithLongWires += lattice.longWires;
        const std::string disagreement = CompareWithNgspice(lattice, ws, folder);
        EXPECT_EQ(disagreement, "");
        failures += !disagreement.empty();
        CheckTheEquations(ws, flips, flipsNamed);
        ws.ViewMode = kViewPower; // the power view adds up what goes in and what comes out
        WriteLabels(ws, 3);
        // Decimals are summed in single precision, which only 1e-6 tolerates.
        EXPECT_NEAR(ws.PowerIn, ws.PowerOut,
                    (options.decimals ? 1e-6 : 1e-9) * std::max(1.0, std::fabs(ws.PowerIn)));
        if (ws.Equations.NumUnknowns > 0) {
            inEighths += !options.decimals;
            CheckTheElimination(ws, !options.decimals);
        }
    }
    std::cout << "seed " << seed << ": " << circuits << " circuits, " << solved << " solved ("
              << solvedWithLongWires << " drawn with long wires, " << inEighths
              << " with unknowns in eighths)\n";
    for (const auto& [message, count] : refusals) {
        std::cout << count << " x " << message << "\n";
    }
    // The comparison must mostly compare: a generator gone wrong would refuse everything.
    EXPECT_GT(solved, circuits / 3);
    EXPECT_GT(solvedWithLongWires, solved / 4);
    EXPECT_GT(inEighths, solved / 4);
    // A flipped term is named as such unless the flip also makes another equation, or
    // two terms of the equation are the same.
    EXPECT_GT(flipsNamed, flips * 9 / 10) << flipsNamed << " of " << flips;
}

} // namespace
} // namespace ampora
