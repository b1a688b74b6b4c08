#include "analysis/result_labels.h"
#include "document/amq_file.h"
#include "support/lattice_circuit.h"
#include "support/solve_session.h"

#include <gtest/gtest.h>

#include <random>
#include <string>

namespace ampora {
namespace {

// One line per device: its slot and its labels in the four views, then the power totals as
// the status bar shows them.
std::string LabelTable(Workspace& ws, int sigFigs) {
    std::vector<std::string> views[4];
    for (int view = 0; view < 4; ++view) {
        ws.ViewMode = static_cast<std::int16_t>(view);
        views[view] = WriteLabels(ws, sigFigs);
    }
    std::string table;
    for (int slot = 1; slot <= ws.circuit.NumElements; ++slot) {
        table += std::to_string(slot);
        for (const auto& labels : views) {
            table += " | " + labels[static_cast<std::size_t>(slot)];
        }
        table += "\n";
    }
    return table + ResultsStatusText(ws, sigFigs); // the power view's, with the totals
}

// Every kind of device in every direction is in the dump of two_supernodes_every_direction
// (tests/data/examples/).

// A source whose chain is not known, a resistor and a battery whose currents are not known,
// and a resistor carrying exactly nothing.
TEST(ResultLabels, UnknownQuantitiesShowAQuestionMarkAndNoCurrentAPlainZero) {
    test::SolveSession session;
    test::Solve(session, test::ExampleText("current_source.amq"), 0);
    ASSERT_TRUE(session.solved);
    Circuit& circuit = session.ws.circuit;
    circuit.Elements[1].Branch = 0;
    circuit.Elements[2].Current = kUnknownCurrent;
    circuit.Elements[3].Current = 0;
    circuit.Elements[4].Current = kUnknownCurrent;
    EXPECT_EQ(LabelTable(session.ws, 3), "1 | 2 A | \u2191 2 | ? | ?\n"
                                         "2 | 10 \u03A9 | ? | ? | ?\n"
                                         "3 | 20 \u03A9 | 0 | 0 | 0\n"
                                         "4 | 5 V | ? | \u2191 5 | ?\n"
                                         " Power in = 0 watts, Power out = 0 watts.  ");
}

// A view repeats numbers (a chain's current on each of its devices) and writes each text
// once; sharing must never give a device the text of another number.
TEST(ResultLabels, EachLabelOfAViewIsTheLabelTheDeviceHasOnItsOwn) {
    std::mt19937 random(7);
    test::LatticeOptions options;
    options.decimals = true;
    std::string differences;
    int compared = 0;
    for (int trial = 0; trial < 200; ++trial) {
        test::SolveSession session;
        test::Solve(session,
                    CircuitFileText(test::DrawLattice(test::RandomLatticeCircuit(random, options))),
                    1);
        if (!session.solved) {
            continue;
        }
        Workspace& ws = session.ws;
        for (int view = 0; view < 4; ++view) {
            ws.ViewMode = static_cast<std::int16_t>(view);
            for (const int sigFigs : {1, 3, 8, 17, 30}) {
                const std::vector<std::string> labels = WriteLabels(ws, sigFigs);
                for (int slot = 1; slot <= ws.circuit.NumElements; ++slot) {
                    const std::string alone = ElementLabel(ws, slot, view, sigFigs);
                    ++compared;
                    if (labels[static_cast<std::size_t>(slot)] != alone) {
                        differences += "trial " + std::to_string(trial) + " view " +
                                       std::to_string(view) + " device " + std::to_string(slot) +
                                       ": " + labels[static_cast<std::size_t>(slot)] +
                                       " instead of " + alone + "\n";
                    }
                }
            }
        }
    }
    EXPECT_EQ(differences, "");
    EXPECT_GT(compared, 10000);
}

} // namespace
} // namespace ampora
