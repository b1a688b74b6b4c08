// The canvas driven by keys alone. Each script starts from the square the keys draw below
// and lists where Space acted, the drawing after and the hint it leaves; the outcomes are
// checked by hand in tests/data/editor/keyboard_cursor.txt.

#include "editor/drawing_session.h"
#include "editor/keyboard_cursor.h"
#include "support/case_file.h"
#include "support/test_files.h"

#include <gtest/gtest.h>

namespace ampora {
namespace {

using test::ShowDrawing;

const CursorBounds kBounds{0, 40, 400, 300};

// Plays keys as the canvas hands them over: a letter chooses its toolbar button, < > ^ v are
// the arrows (a following + holds Shift), . is Space and x is Escape. Returns the cursor
// at each Space, so a script shows where it acted.
struct Session : test::DrawingSession {
    KeyboardCursor cursor;

    std::string Play(const std::string& keys) {
        std::string acted;
        for (std::size_t i = 0; i < keys.size(); ++i) {
            const char k = keys[i];
            const bool shift = i + 1 < keys.size() && keys[i + 1] == '+';
            const std::string arrows = "<>^v.x";
            const CanvasKey codes[] = {CanvasKey::kLeft, CanvasKey::kRight, CanvasKey::kUp,
                                       CanvasKey::kDown, CanvasKey::kAct,   CanvasKey::kCancel};
            if (k == '.') {
                acted += "(" + ShortestText(cursor.X) + "," + ShortestText(cursor.Y) + ")";
            }
            if (arrows.find(k) != std::string::npos) {
                ActOnKey(ws.Circuit, editor, prompts, cursor, kBounds, codes[arrows.find(k)],
                         shift);
            } else if (k != '+' && k != ' ') {
                const int button = ToolButtonForLetter(k);
                button == kUndoEraseButton ? (void)Do("undo") : SelectTool(editor, button);
            }
        }
        return acted;
    }
};

// The square 64..160 drawn with four Wire drags, a resistor on its top and a battery on its
// left side, 64 below the resistor: any nearer and their pictures would crowd.
const char* const kSquareKeys = "W . >+>+>+ . . v+v+v+ . . <+<+<+ . . ^+^+^+ . "
                                "R >+ . B v+v+<+ .";

// Each script of tests/data/editor/keyboard_cursor.txt plays on the square with no tool
// chosen; the file holds where Space acted, the drawing after and the hint, checked by hand.
TEST(KeyboardCursor, KeysAloneDrawActAndHintAsTheMouseWould) {
    Session square;
    square.prompts.textAnswers = {"100", "-12"};
    EXPECT_EQ(square.Play(kSquareKeys),
              "(64,64)(160,64)(160,64)(160,160)(160,160)(64,160)(64,160)(64,64)(96,64)(64,128)");
    EXPECT_EQ(ShowDrawing(square.ws.Circuit),
              "64,64-160,64 160,64-160,160 160,160-64,160 64,160-64,64 6@96,64=100 2@64,128=12");
    const std::string name = "editor/keyboard_cursor.txt";
    const std::string dump = test::ReplayCases(name, {}, [](const std::string& keys, const auto&) {
        Session s;
        s.prompts.textAnswers = {"100", "-12", "-5"};
        s.Play(kSquareKeys);
        SelectTool(s.editor, kWireTool);
        s.editor.CurrentTool = kNoTool;
        const std::string before = ShowDrawing(s.ws.Circuit);
        s.cursor = KeyboardCursor{};
        std::string out = "acted " + s.Play(keys) + "\n";
        const std::string after = ShowDrawing(s.ws.Circuit);
        out += after == before ? "" : "after " + after + "\n";
        return out + "hint " + KeyboardHint(s.ws.Circuit, s.editor, s.cursor) + "\n";
    });
    ASSERT_GT(dump.size(), 1000u);
    EXPECT_EQ(dump, test::ExpectedText(name, dump));
}

TEST(KeyboardCursor, LettersChooseTheToolbarButtonsInEitherCaseAndTheCursorKeepsInside) {
    std::string out;
    for (const char c : std::string("WBRINMEUwbrinmeuXZ 1")) {
        out += std::to_string(ToolButtonForLetter(c));
    }
    EXPECT_EQ(out, "12345678123456780000");
    KeyboardCursor offGrid{13, 1000};
    KeepCursorInside(offGrid, CursorBounds{4, 4, 500.5f, 500.5f});
    EXPECT_EQ(offGrid.X, 16);
    EXPECT_EQ(offGrid.Y, 496);
}

} // namespace
} // namespace ampora
