#pragma once
// Ladder circuits that fill the wire and element tables (100 wires, 60 devices), drawn with
// their rails and rungs cut into short pieces as a student draws them. Shared by the
// benchmarks.

#include "tables/prompts.h"
#include "tables/workspace.h"

#include <vector>

namespace ampora::bench {

// Answers every question with No and shows nothing: the benchmarks time the analysis only.
struct QuietPrompts : Prompts {
    void ShowMessage(const std::string&, MessageIcon) override {}
    bool AskYesNo(const std::string&) override { return false; }
    std::string AskText(const std::string&, const std::string&, float, float) override {
        return "";
    }
};

struct Segment {
    float x1, y1, x2, y2;
    float Length() const;
    bool Vertical() const { return x1 == x2; }
};

// A ladder of `rungs` rungs 96 units apart and 320 high: its inner rungs meet the rails in
// 2 x (rungs - 2) nodes. The longest pieces are halved on the grid until there are 100.
std::vector<Segment> LadderPieces(int rungs);

// The ladder with two sources on its end rungs, two batteries on rail pieces next to them
// and resistors in the middle of inner pieces until the element table is full.
Workspace Ladder(int rungs);

// A ladder of 8 rungs (12 nodes, 18 branches, 36 chain traces), devices chosen so that it
// solves: a current source on each end
// loop, two rail chains of batteries only that make two supernodes, a battery in series
// with a resistor, and resistors everywhere else.
Workspace SolvableLadder();

} // namespace ampora::bench
