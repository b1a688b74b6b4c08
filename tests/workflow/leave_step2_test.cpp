#include "support/solve_session.h"
#include "workflow/step_transitions.h"

#include <gtest/gtest.h>

namespace ampora {
namespace {

using test::SolveSession;

// Two nodes, (240,80) and (240,240), joined by three columns at x = 80, 240 and 400 with
// one device each.
std::string ThreeColumns(const std::string& left, const std::string& middle,
                         const std::string& right) {
    return "7\r\n80,80,240,80\r\n240,80,400,80\r\n80,80,80,240\r\n240,80,240,240\r\n"
           "400,80,400,240\r\n80,240,240,240\r\n240,240,400,240\r\n3\r\n80,160," +
           left + "\r\n240,160," + middle + "\r\n400,160," + right + "\r\n0\r\n";
}

std::string Outcome(const std::string& text) {
    SolveSession session;
    test::Solve(session, text, 1);
    std::string outcome = "step " + std::to_string(session.ws.Step);
    for (const std::string& message : session.prompts.messages) {
        outcome += ": " + message;
    }
    return outcome;
}

// The divider twice, the copy 480 units to the right: only one of them has the reference.
std::string TwoDividers() {
    const std::string divider = test::ExampleText("voltage_divider.amq");
    const std::string wires = divider.substr(3, divider.find("\r\n4\r\n") - 1);
    std::string shifted;
    for (std::size_t at = 0; at < wires.size();) {
        const std::size_t end = wires.find("\r\n", at);
        int x1, y1, x2, y2;
        std::sscanf(wires.substr(at, end - at).c_str(), "%d,%d,%d,%d", &x1, &y1, &x2, &y2);
        shifted += std::to_string(x1 + 480) + "," + std::to_string(y1) + "," +
                   std::to_string(x2 + 480) + "," + std::to_string(y2) + "\r\n";
        at = end + 2;
    }
    return "14\r\n" + wires + shifted +
           "8\r\n160,80,6,1000\r\n80,160,1,12\r\n240,160,5,2000\r\n400,160,5,2000\r\n"
           "640,80,6,1000\r\n560,160,1,12\r\n720,160,5,2000\r\n880,160,5,2000\r\n0\r\n";
}

TEST(LeavingStep2, EachRefusalShowsItsOwnMessageAndStaysInStep2) {
    const std::string different = "step 2: You have a supernode with different voltages in "
                                  "parallel, which is a contradiction.  You must go back and "
                                  "correct this situation.";
    const std::string cannotSolve = "step 2: Error:  The program can't solve this circuit.  Go "
                                    "back and look for short circuits or other error conditions.";
    // The middle resistor taken out: its column becomes a bare wire between the two nodes.
    std::string shorted = ThreeColumns("1,5", "5,10", "5,20");
    shorted.replace(shorted.find("\r\n3\r\n"), 5, "\r\n2\r\n");
    shorted.erase(shorted.find("240,160,5,10\r\n"), 14);
    const std::vector<std::pair<std::string, std::string>> cases = {
        {ThreeColumns("1,5", "1,5", "5,10"),
         "step 2: You have a supernode with identical branches in parallel, which the program "
         "can't handle.  You must go back and delete one of them."},
        {ThreeColumns("1,5", "1,6", "5,10"), different},
        {ThreeColumns("1,5", "2,5", "5,10"), different},    // pointing the other way
        {ThreeColumns("1,5", "1,5.01", "5,10"), different}, // a fifth of a percent apart
        {shorted, different},
        {ThreeColumns("7,1", "8,1", "7,2"), cannotSolve}, // a node reached only through sources
        {TwoDividers(), cannotSolve},                     // floating against each other
    };
    for (const auto& [text, outcome] : cases) {
        EXPECT_EQ(Outcome(text), outcome) << text;
    }
}

TEST(LeavingStep2, AFailedMoveKeepsTheNamesAndCanBeRetriedAfterRenaming) {
    SolveSession session;
    test::Solve(session, test::ExampleText("voltage_divider.amq", "\"V1\"", "\"0\""), 0);
    EXPECT_EQ(session.ws.Step, 2);
    EXPECT_EQ(session.prompts.messages.at(0),
              "You can only have one reference node named 0.  You must rename the other ones.");
    EXPECT_EQ(session.ws.circuit.NodeLabels[1].Name, "0");
    session.ws.circuit.NodeLabels[1].Name = "Vout";
    EXPECT_EQ(LeaveStep2(session.ws, session.prompts), TransitionResult::Entered);
    EXPECT_EQ(session.ws.Step, 3);
    EXPECT_EQ(session.ws.circuit.NodeLabels[1].Voltage, 6);
}

TEST(LeavingStep2, BatteryCurrentsComeFromTheCurrentLawAtTheSupernodeMembers) {
    SolveSession session;
    test::Solve(session, test::ExampleText("supernode.amq"), 1);
    ASSERT_TRUE(session.solved);
    // The 6 V battery carries what leaves V2 through its two resistors: 7/6 + 7/12 A,
    // flowing to the right, so its screen-signed current is negative.
    const Element& battery = session.ws.circuit.Elements[1];
    EXPECT_DOUBLE_EQ(battery.Current, -(7.0 / 6 + 7.0 / 12));
    EXPECT_NE(battery.Branch, 0);
}

} // namespace
} // namespace ampora
