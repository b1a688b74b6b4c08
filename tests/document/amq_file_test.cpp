#include "document/amq_file.h"
#include "document/circuit_edit.h"
#include "support/circuit_dump.h"
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

const std::string kOneBattery = "1\r\n"
                                "40,80,200,80\r\n"
                                "1\r\n"
                                "120,80,3,12\r\n"
                                "2\r\n"
                                "\"A\",\"A\",40,80\r\n"
                                "\"0\",\"0\",200,80\r\n";

TEST(CircuitFile, TheDocumentedExampleIsWrittenByteForByte) {
    Circuit circuit;
    AddWire(circuit, 40, 80, 200, 80);
    AddElement(circuit, kBatteryLeft, 12, 120, 80);
    circuit.NumNodes = 2;
    circuit.NodeLabels[1].Name = "A";
    circuit.NodeLabels[1].X = 40;
    circuit.NodeLabels[1].Y = 80;
    circuit.NodeLabels[2].Name = "0";
    circuit.NodeLabels[2].X = 200;
    circuit.NodeLabels[2].Y = 80;
    EXPECT_EQ(CircuitFileText(circuit), kOneBattery);
}

TEST(CircuitFile, ErasedSlotsArePackedOutAndReadBackWithoutHoles) {
    Circuit circuit;
    for (int i = 1; i <= 5; ++i) {
        AddWire(circuit, 0, 16.0f * i, 96, 16.0f * i);
    }
    AddElement(circuit, kResistorHorizontal, 10, 48, 16);
    AddElement(circuit, kResistorHorizontal, 20, 48, 32);
    AddElement(circuit, kSourceLeft, 0.5f, 48, 48);
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
        EXPECT_FALSE(NeedFileSave(session.ws.circuit, example.string()));
    }
    EXPECT_GE(test::ExampleFiles().size(), 6u);
}

// What each text reads as, checked by hand in tests/data/document/amq_reads.txt: packed
// slots; every way of writing a number (bare short whole numbers take the quick path; blanks,
// signs, points, long digit runs and lines cut short at the end of the text take the careful
// one, and both must agree); the last lines with or without their line end; lines ending in
// LF alone; and a damaged file, which stops where it stands and keeps what was read.
TEST(CircuitFile, EachTextReadsAsHandChecked) {
    const char* const texts[] = {
        "3\r\n0,16,96,16\r\n0,48,96,48\r\n0,80,96,80\r\n2\r\n48,16,6,10\r\n48,48,9,0.5\r\n0\r\n",
        "6\r\n0,-0,0007,-1234567\r\n 5 "
        ",\t-3\t,+4,12345678\r\n2.5,1e3,99999999,-12345678901\n8,16,24,32\n"
        "-8,-16,-24,-32\r\n1,2,3,16777217\r\n2\r\n40,80,06,12\r\n 120 , 80 , 7 , 0.5 \r\n0\r\n",
        "1\r\n0,0,96,-1\r\n0\r\n0",
        "1\r\n0,0,96,-1\r\n0\r\n0\r",
        "1\r\n0,0,96,-1\r\n0\r\n0 ",
        "1\r\n0,0,96,-1\r\n0\r\n0\n",
        "1\r\n0,0,96,-1\r\n0\r\n0\r\n",
        "1\n40,80,200,80\n1\n120,80,3,12\n2\n\"A\",\"A\",40,80\n\"0\",\"0\",200,80\n",
        "2\r\n0,0,80,0\r\n0,0,0,80\r\n3\r\n40,0,6,5\r\n0,x,1,1\r\n",
    };
    std::string dump;
    for (const std::string text : texts) {
        std::string shown;
        for (const char c : text) {
            shown += c == '\r' ? "\\r" : c == '\n' ? "\\n" : c == '\t' ? "\\t" : std::string(1, c);
        }
        Circuit circuit;
        const ReadResult result = ReadCircuitText(circuit, text);
        dump += "== " + shown + "\n" +
                (result.complete ? ""
                                 : "stopped at line " + std::to_string(result.line) + ": " +
                                       result.reason + "\n") +
                DumpCircuit(circuit);
    }
    EXPECT_EQ(dump, test::ExpectedText("document/amq_reads.txt", dump));
}

TEST(NeedFileSave, AnEmptyDrawingNeverNeedsSavingButAnUntitledWireDoes) {
    Circuit circuit;
    EXPECT_FALSE(NeedFileSave(circuit, "/nonexistent/folder/file.amq"));
    EXPECT_FALSE(NeedFileSave(circuit, ""));
    AddWire(circuit, 0, 0, 80, 0);
    EXPECT_TRUE(NeedFileSave(circuit, ""));
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

// The tolerant reader: one malformed input per row, each with its exact reason.
TEST(MalformedFile, EachStopsWithItsReason) {
    const struct {
        std::string bytes;
        const char* reason;
    } cases[] = {
        {"", "the file ends where the wire count should follow (line 1)"},
        {"\x01\xff garbage", "line 1: the wire count is not a whole number: \"\x01\xff garbage\""},
        {"-5\r\n", "line 1: the wire count -5 is outside 0..100"},
        {"0\r\n70000\r\n", "line 2: the element count 70000 is outside 0..60"}, // beyond 16 bits
        {"0\r\n0\r\n21\r\n", "line 3: the node count 21 is outside 0..20"},
        {"2\r\n0,0,80,0\r\n", "the file ends where wire 2 should follow (line 3)"},
        {"1\r\n0,0,80\r\n", "line 2: wire 1 needs 4 fields, found 3"},
        {"1\r\n0,0,80,0,5\r\n", "line 2: wire 1 needs 4 fields, found 5"},
        {"1\r\n-,0,80,0\r\n", "line 2: wire 1 X1 is not a finite single-precision number: \"-\""},
        {"1\r\n0,0,80,0\r5\r\n",
         "line 2: wire 1 Y2 is not a finite single-precision number: \"0\r5\""},
        {"1\r\n0,NaN,80,0\r\n",
         "line 2: wire 1 Y1 is not a finite single-precision number: \"NaN\""},
        {"0\r\n1\r\n0,0,5,inf\r\n",
         "line 3: element 1 value is not a finite single-precision number: \"inf\""},
        {"1\r\n0,0,1e999,0\r\n",
         "line 2: wire 1 X2 is not a finite single-precision number: \"1e999\""},
        {"0\r\n1\r\n8,8,11,5\r\n", "line 3: element 1 has kind \"11\"; kinds run from 1 to 10"},
        {"0\r\n0\r\n1\r\n\"A\",\"A,0,0\r\n", "line 4: node 1: a quoted text is not closed"},
        {"0\r\n0\r\n1\r\n\"A\"x,\"A\",0,0\r\n", "line 4: node 1: text follows a closing quote"},
        {"1\r\n" + std::string(10 * 1024 * 1024, '7') + "\r\n",
         "line 2: wire 1 needs 4 fields, found 1"},
    };
    for (const auto& c : cases) {
        Circuit circuit;
        const ReadResult result = ReadCircuitText(circuit, c.bytes);
        EXPECT_EQ(result.complete ? "whole" : result.reason, c.reason) << c.bytes.substr(0, 40);
    }
}

TEST(MalformedFile, AFileThatCannotBeOpened) {
    Circuit circuit;
    const ReadResult result = LoadFromIniFile(circuit, "/nonexistent/c.amq");
    EXPECT_FALSE(result.complete);
    EXPECT_EQ(result.line, 0);
    EXPECT_EQ(result.reason, "the file cannot be opened");
}

} // namespace
} // namespace ampora
