#include "support/cli_run.h"
#include "support/solve_session.h"
#include "support/test_files.h"

#include <gtest/gtest.h>

namespace ampora {
namespace {

// supernode.amq worked by hand: the 6 V battery joins V1 to V2 (V2 = V1 + 6); KCL at the
// supernode, with the 2 A source pushing into V1, gives V1/4 + (V1 + 6)/6 + (V1 + 6)/12 = 2,
// so V1 = 1 and V2 = 7. Resistor currents 1/4, 7/6 and 7/12 A flow down to the reference;
// the battery carries 7/6 + 7/12 = 1.75 A rightward into V2 and delivers 6 x 1.75 = 10.5 W,
// the source 2 A x 1 V = 2 W; the resistors absorb 0.25 + 49/6 + 49/12 = 12.5 W.
const char* const kSupernodeAnswerKey = R"(Circuit: supernode.amq
Solved, numbers to 3 significant figures.

Node voltages
  V1  1 V
  V2  7 V
  0   0 V

Devices
  device          value  at        between  current    voltage  power
  battery         6 V    320, 80   V1, V2   1.75 A →   6 V →    10.5 W
  current source  2 A    80, 160   V1, 0    ↑ 2 A      ↑ 1 V    2 W
  resistor        4 Ω    240, 160  V1, 0    ↓ 0.25 A   ↑ 1 V    0.25 W
  resistor        6 Ω    400, 160  V2, 0    ↓ 1.17 A   ↑ 7 V    8.17 W
  resistor        12 Ω   560, 200  V2, 0    ↓ 0.583 A  ↑ 7 V    4.08 W
  Arrows point as on the diagram: a current the way it flows, a voltage towards the
  higher potential. A source's power is what it delivers, a resistor's what it
  absorbs.

Power
  delivered by the sources   12.5 W
  absorbed by the resistors  12.5 W

Equations
  through batteries    V2=V1+6
  KCL at supernode V1  -2 + (V1-0)/4 + (V1+6-0)/12 + (V1+6-0)/6 = 0
  collected            (1/4+1/12+1/6)*V1=2-6/12-6/6

Augmented matrix
   V1
  0.5  |  0.5

Reduced row echelon form
  V1
   1  |  1

Solutions
  V1  =    1 V
  I1  = 1.75 A  from V1 to V2 through batteries
)";

TEST(CliSolveText, TheAnswerKeyOfTheSupernodeExampleReadsAsWorkedByHand) {
    const test::CliRun run =
        test::Cli({"solve", "--text", (test::ExamplesDir() / "supernode.amq").string()});
    EXPECT_EQ(run.code, 0);
    EXPECT_EQ(run.err, "");
    EXPECT_EQ(run.out, kSupernodeAnswerKey);
}

TEST(CliSolveText, ACircuitThatIsNotSolvedSaysWhereItStoppedAndWhy) {
    test::TempDir dir;
    const std::string twoReferences = (dir / "two_refs.amq").string();
    test::WriteBytes(twoReferences,
                     test::ExampleText("wheatstone_bridge.amq", "\"V2\",\"V2\"", "\"0\",\"0\""));
    const std::string empty = (dir / "empty.amq").string();
    test::WriteBytes(empty, "0\r\n0\r\n0\r\n");
    struct Case {
        std::string path;
        std::string text;
    };
    for (const Case& row : std::vector<Case>{
             {twoReferences, "Circuit: two_refs.amq\nNot solved: stopped at step 2: You can only "
                             "have one reference node named 0.  You must rename the other "
                             "ones.\n"},
             {empty, "Circuit: empty.amq\nNot solved: stopped at step 1.\n"}}) {
        const test::CliRun run = test::Cli({"solve", "--text", row.path});
        EXPECT_EQ(run.code, 1);
        EXPECT_EQ(run.out, row.text);
    }
}

} // namespace
} // namespace ampora
