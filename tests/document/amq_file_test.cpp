#include "document/amq_file.h"
#include "document/circuit_edit.h"
#include "support/case_file.h"
#include "support/circuit_dump.h"
#include "support/drawn_circuit.h"
#include "support/solve_session.h"
#include "support/test_files.h"

#include <gtest/gtest.h>

#include <functional>

namespace ampora {
namespace {

using test::DumpCircuit;
using test::ReadBytes;
using test::TempDir;
using test::WriteBytes;

// A battery on a wire between two named nodes.
const std::string kOneBattery =
    "1\r\n40,80,200,80\r\n1\r\n120,80,3,12\r\n2\r\n\"A\",\"A\",40,80\r\n\"0\",\"0\",200,80\r\n";

TEST(CircuitFile, ErasedSlotsArePackedOutAndReadBackWithoutHoles) {
    Circuit circuit = test::Drawn(
        {{0, 16, 96, 16}, {0, 32, 96, 32}, {0, 48, 96, 48}, {0, 64, 96, 64}, {0, 80, 96, 80}},
        {{kResistorHorizontal, 10, 48, 16},
         {kResistorHorizontal, 20, 48, 32},
         {kSourceLeft, 0.5f, 48, 48}});
    ClearUndoMemory(circuit);
    EraseWireSlot(circuit, 2);
    EraseWireSlot(circuit, 4);
    EraseElementSlot(circuit, 2);
    const std::string text = CircuitFileText(circuit);
    EXPECT_EQ(text, "3\r\n0,16,96,16\r\n0,48,96,48\r\n0,80,96,80\r\n"
                    "2\r\n48,16,6,10\r\n48,48,9,0.5\r\n0\r\n");
}

TEST(CircuitFile, ReadingFewerElementsNeverLowersTheElementCount) {
    Circuit circuit;
    for (int i = 0; i < 6; ++i) {
        AddElement(circuit, kResistorVertical, 1, 8, 48.0f * i);
    }
    EraseWholeCircuit(circuit);
    ASSERT_TRUE(ReadCircuitText(circuit, kOneBattery).complete);
    EXPECT_EQ(circuit.NumElements, 6);
    EXPECT_EQ(CountLiveElements(circuit), 1);
    EXPECT_EQ(circuit.Elements[1].Kind, kBatteryLeft);
}

TEST(CircuitFile, AwkwardValuesAndNamesSurviveASaveAndARead) {
    TempDir dir;
    const std::string path = (dir / "awkward.amq").string();
    Circuit circuit;
    AddWire(circuit, -8, 0.1f, 1e-7f, 3.4e38f);
    AddElement(circuit, kBatteryUp, 0.1f, 1.17549435e-38f, 123456792);
    AddElement(circuit, kSourceRight, 1e-7f, 16777217.0f, -0.0f);
    AddElement(circuit, kResistorVertical, 3.4e38f, 1.0f / 3.0f, 2.0f / 3.0f);
    circuit.NumNodes = 3;
    circuit.NodeLabels[1].Name = "a,b";
    circuit.NodeLabels[2].Name = "say \"hi\"";
    circuit.NodeLabels[3].Name = "\",\"";
    circuit.NodeLabels[3].X = 0.3f;

    ASSERT_TRUE(SaveToIniFile(circuit, path).saved);
    EXPECT_FALSE(NeedFileSave(circuit, path));

    Circuit read;
    ASSERT_TRUE(LoadFromIniFile(read, path).complete);
    EXPECT_EQ(DumpCircuit(read), DumpCircuit(circuit));
    EXPECT_EQ(ReadBytes(path), CircuitFileText(read));
}

TEST(CircuitFile, EveryExampleReadsWholeAndSavesBackToTheSameBytes) {
    TempDir dir;
    for (const auto& example : test::ExampleFiles()) {
        SCOPED_TRACE(example.filename().string());
        Circuit circuit;
        ASSERT_TRUE(LoadFromIniFile(circuit, example.string()).complete);
        EXPECT_FALSE(NeedFileSave(circuit, example.string()));
        const std::string copy = (dir / example.filename().string()).string();
        ASSERT_TRUE(SaveToIniFile(circuit, copy).saved);
        EXPECT_EQ(ReadBytes(copy), ReadBytes(example));
        // Stored as the program keeps it after its wire clean-up: solving it changes
        // nothing that would ask to save.
        test::SolveSession session;
        test::Solve(session, ReadBytes(example), 0);
        EXPECT_TRUE(session.solved);
        EXPECT_FALSE(NeedFileSave(session.ws.Circuit, example.string()));
    }
    EXPECT_GE(test::ExampleFiles().size(), 6u);
}

// Each text of tests/data/document/amq_reads.txt and what it reads as, checked by hand.
TEST(CircuitFile, EachTextReadsAsHandChecked) {
    const std::string name = "document/amq_reads.txt";
    const std::string dump = test::ReplayCases(name, {}, [](const std::string& text, const auto&) {
        Circuit circuit;
        const ReadResult result = ReadCircuitText(circuit, test::UnescapedLine(text));
        return (result.complete ? ""
                                : "stopped at line " + std::to_string(result.line) + ": " +
                                      result.reason + "\n") +
               DumpCircuit(circuit);
    });
    ASSERT_GT(dump.size(), 1000u);
    EXPECT_EQ(dump, test::ExpectedText(name, dump));
}

TEST(NeedFileSave, SeesEachKindOfChangeAgainstTheFile) {
    TempDir dir;
    const std::string path = (dir / "c.amq").string();
    WriteBytes(path, kOneBattery);
    Circuit saved;
    ASSERT_TRUE(LoadFromIniFile(saved, path).complete);
    EXPECT_FALSE(NeedFileSave(saved, path));

    const std::function<void(Circuit&)> changes[] = {
        [](Circuit& c) { c.Wires[1].X2 = 208; },
        [](Circuit& c) { c.Elements[1].Value = 12.000001f; },
        [](Circuit& c) { c.Elements[1].Kind = kBatteryRight; },
        [](Circuit& c) { c.NodeLabels[1].Name = "B"; },
        [](Circuit& c) { AddWire(c, 200, 80, 200, 160); },
        [](Circuit& c) { EraseElementSlot(c, 1); },
    };
    for (const auto& change : changes) {
        Circuit changed = saved;
        change(changed);
        EXPECT_TRUE(NeedFileSave(changed, path)) << DumpCircuit(changed);
    }
    // A file that no longer reads whole is treated as changed, so nothing is lost.
    EXPECT_TRUE(NeedFileSave(saved, (dir / "gone.amq").string()));
}

// The tolerant reader on inputs the data file cannot hold; the other malformed files are cases
// of tests/data/document/amq_reads.txt, each with its exact reason.
TEST(MalformedFile, BinaryAndHugeInputsStopWithTheirReasons) {
    for (const auto& [bytes, reason] : std::vector<std::pair<std::string, std::string>>{
             {"\x01\xff garbage",
              "line 1: the wire count is not a whole number: \"\x01\xff garbage\""},
             {"1\r\n" + std::string(10 * 1024 * 1024, '7') + "\r\n",
              "line 2: wire 1 needs 4 fields, found 1"}}) {
        Circuit circuit;
        const ReadResult result = ReadCircuitText(circuit, bytes);
        EXPECT_EQ(result.complete ? "whole" : result.reason, reason);
    }
}

} // namespace
} // namespace ampora
