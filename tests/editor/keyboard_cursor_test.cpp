// The canvas driven by keys alone. Each script starts from the square the keys draw below
// and lists where Space acted, the drawing after and the hint it leaves; the outcomes are
// checked by hand in tests/data/editor/keyboard_cursor.txt.

#include "editor/drawing_session.h"
#include "editor/keyboard_cursor.h"
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
                ActOnKey(ws.circuit, editor, prompts, cursor, kBounds, codes[arrows.find(k)],
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

TEST(KeyboardCursor, KeysAloneDrawActAndHintAsTheMouseWould) {
    const char* const scripts[] = {
        // Where the cursor goes: by 8, by 32 with Shift, and never off the canvas.
        ".", "> .", ">+ .", "^ ^ ^ ^ .", "^+^+^+ <+<+<+ .",
        ">+>+>+>+>+>+>+>+>+>+>+>+>+ v+v+v+v+v+v+v+v+v+ .",
        // Escape abandons a wire half drawn; the next Space starts afresh where the cursor is.
        "W", "W .", "W . >+v", "W v+ . >+>+ x . >+ .",
        // A wire needs two different points.
        "W >+>+>+>+ . .",
        // Devices need room on a wire.
        "R >+", "R >+>+", "I >+>+>+ v+vv",
        // Number asks with the present value; a negative answer turns the battery.
        "N", "N >+", "N v+v+ .",
        // Move/Stretch carries a device along its wire; Escape puts it back.
        "M", "M >+>+", "M v+v+", "M v+v+ . ^+", "M v+v+ . ^", "M >+ . >+ .", "M >+ . >+ x",
        // A wire end stretched outward; a stretch across its axis stays on it.
        "M . v", "M v+v+v+ . <+ .", "M v+v+v+ . v+ .",
        // Erase takes the top wire and the resistor on it; U brings both back.
        "E >+>+", "E >+>+v+", "E >+>+ .", "E >+>+ . U"};
    Session square;
    square.prompts.textAnswers = {"100", "-12"};
    std::string dump = "== " + std::string(kSquareKeys) + "\nacted " + square.Play(kSquareKeys);
    dump += "\nafter " + ShowDrawing(square.ws.circuit) + "\n";
    for (const char* keys : scripts) {
        Session s;
        s.prompts.textAnswers = {"100", "-12", "-5"};
        s.Play(kSquareKeys);
        SelectTool(s.editor, kWireTool);
        s.editor.CurrentTool = kNoTool;
        const std::string before = ShowDrawing(s.ws.circuit);
        s.cursor = KeyboardCursor{};
        dump += "== " + std::string(keys) + "\nacted " + s.Play(keys) + "\n";
        const std::string after = ShowDrawing(s.ws.circuit);
        dump += after == before ? "" : "after " + after + "\n";
        dump += "hint " + KeyboardHint(s.ws.circuit, s.editor, s.cursor) + "\n";
    }
    EXPECT_EQ(dump, test::ExpectedText("editor/keyboard_cursor.txt", dump));
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
