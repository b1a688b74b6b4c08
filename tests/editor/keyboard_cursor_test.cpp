#include "editor/editing_tools.h"
#include "editor/keyboard_cursor.h"
#include "support/circuit_dump.h"
#include "support/scripted_prompts.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace ampora {
namespace {

using test::DumpCircuit;
using test::ScriptedPrompts;

const CursorBounds kBounds{0, 40, 400, 300};

// Plays keys as the canvas hands them over: a letter chooses its toolbar button, < > ^ v are
// the arrows (a following + holds Shift), . is Space and x is Escape. Returns the cursor
// after each Space, so a script shows where it acted.
struct Session {
    Circuit circuit;
    EditorState state;
    ScriptedPrompts prompts;
    KeyboardCursor cursor;

    std::string Play(const std::string& keys) {
        std::string acted;
        for (std::size_t i = 0; i < keys.size(); ++i) {
            const char k = keys[i];
            const bool shift = i + 1 < keys.size() && keys[i + 1] == '+';
            CanvasKey key = CanvasKey::kAct;
            switch (k) {
            case '<':
                key = CanvasKey::kLeft;
                break;
            case '>':
                key = CanvasKey::kRight;
                break;
            case '^':
                key = CanvasKey::kUp;
                break;
            case 'v':
                key = CanvasKey::kDown;
                break;
            case '.':
                acted += "(" + std::to_string(static_cast<int>(cursor.X)) + "," +
                         std::to_string(static_cast<int>(cursor.Y)) + ")";
                break;
            case 'x':
                key = CanvasKey::kCancel;
                break;
            case '+':
            case ' ':
                continue;
            default: {
                const int button = ToolButtonForLetter(k);
                if (button == kUndoEraseButton) {
                    UndoErase(circuit, state);
                } else {
                    SelectTool(state, button);
                }
                continue;
            }
            }
            ActOnKey(circuit, state, prompts, cursor, kBounds, key, shift);
        }
        return acted;
    }
};

// The square 64..160 drawn with four Wire drags, a resistor on its top and a battery on its
// left side, 64 below the resistor: any nearer and their pictures would crowd.
const char* const kSquareKeys = "W . >+>+>+ . . v+v+v+ . . <+<+<+ . . ^+^+^+ . "
                                "R >+ . B v+v+<+ .";

TEST(KeyboardCursor, KeysAloneDrawAWholeCircuitAsTheMouseWould) {
    Session s;
    s.prompts.textAnswers = {"100", "-12"};
    EXPECT_EQ(s.Play(kSquareKeys), "(64,64)(160,64)(160,64)(160,160)(160,160)(64,160)(64,160)"
                                   "(64,64)(96,64)(64,128)");
    EXPECT_EQ(DumpCircuit(s.circuit), "NumWires 4\n"
                                      "wire 1 live 64,64 160,64\n"
                                      "wire 2 live 160,64 160,160\n"
                                      "wire 3 live 160,160 64,160\n"
                                      "wire 4 live 64,160 64,64\n"
                                      "NumElements 2\n"
                                      "element 1 kind 6 100 at 96,64\n"
                                      "element 2 kind 2 12 at 64,128\n"
                                      "NumNodes 0\n");
}

TEST(KeyboardCursor, EachToolActsAtTheCursorAsItsButtonDoes) {
    struct Case {
        const char* keys;
        std::vector<std::string> answers;
        const char* changed; // the dump's lines after the square's, or what differs
    };
    const Case cases[] = {
        // Escape abandons a wire half drawn; the next Space starts afresh where the cursor is.
        {"W v+ . >+>+ x . >+ .", {}, "NumWires 5\nwire 5 live 128,96 160,96\n"},
        // A wire needs two different points.
        {"W >+>+>+>+ . .", {}, ""},
        // Number asks again with the present value; a negative answer turns the battery.
        {"N v+v+ .", {"-5"}, "element 2 kind 1 5 at 64,128\n"},
        // Move/Stretch carries the resistor 32 along its wire.
        {"M >+ . >+ .", {}, "element 1 kind 6 100 at 128,64\n"},
        // Escape puts a carried device back.
        {"M >+ . >+ x", {}, ""},
        // The bottom wire's second end stretched outward; a stretch across its axis stays
        // on it.
        {"M v+v+v+ . <+ .", {}, "wire 3 live 160,160 32,160\n"},
        {"M v+v+v+ . v+ .", {}, ""},
        // Erase takes the top wire and the resistor on it; U brings both back.
        {"E >+>+ .",
         {},
         "wire 1 empty(undo) 64,64 160,64\nelement 1 kind 0(undo 6) 100 at 96,64\n"},
        {"E >+>+ . U",
         {},
         "wire 1 live(undo) 64,64 160,64\nelement 1 kind 6(undo 6) 100 at 96,64\n"},
    };
    for (const Case& c : cases) {
        Session s;
        s.prompts.textAnswers = {"100", "-12"};
        s.Play(kSquareKeys);
        const std::string before = DumpCircuit(s.circuit);
        s.cursor = KeyboardCursor{};
        for (const std::string& answer : c.answers) {
            s.prompts.textAnswers.push_back(answer);
        }
        s.Play(c.keys);
        // Only the lines that changed or were added.
        std::string changed;
        std::size_t from = 0;
        const std::string after = DumpCircuit(s.circuit);
        while (from < after.size()) {
            const std::size_t end = after.find('\n', from) + 1;
            const std::string line = after.substr(from, end - from);
            if (before.find(line) == std::string::npos) {
                changed += line;
            }
            from = end;
        }
        EXPECT_EQ(changed, c.changed) << c.keys;
    }
}

TEST(KeyboardCursor, TheCursorStaysOnTheGridInsideTheCanvas) {
    struct Case {
        const char* keys;
        const char* acted;
    };
    const Case cases[] = {
        {".", "(64,64)"},
        {"> .", "(72,64)"},
        {">+ .", "(96,64)"},
        {"^ ^ ^ ^ .", "(64,40)"}, // the top edge of the free part
        {"^+^+^+ <+<+<+ .", "(0,40)"},
        {">+>+>+>+>+>+>+>+>+>+>+>+>+ v+v+v+v+v+v+v+v+v+ .", "(400,296)"},
    };
    for (const Case& c : cases) {
        Session s;
        EXPECT_EQ(s.Play(c.keys), c.acted) << c.keys;
    }
    KeyboardCursor offGrid{13, 1000};
    KeepCursorInside(offGrid, CursorBounds{4, 4, 500.5f, 500.5f});
    EXPECT_EQ(offGrid.X, 16);
    EXPECT_EQ(offGrid.Y, 496);
}

TEST(KeyboardCursor, LettersChooseTheToolbarButtonsInEitherCase) {
    std::string out;
    for (const char c : std::string("WBRINMEUwbrinmeuXZ 1")) {
        out += std::to_string(ToolButtonForLetter(c));
    }
    EXPECT_EQ(out, "12345678123456780000");
}

TEST(KeyboardCursor, TheHintSaysWhatSpaceWillDoNext) {
    struct Case {
        const char* keys;
        const char* hint;
    };
    const Case cases[] = {
        {"", " Cursor at (64, 64). Choose a tool: W Wire, B Battery, R Resistor, I Current Source, "
             "N Number, M Move/Stretch, E Erase, U Undo Erase. "},
        {"W", " Cursor at (64, 64). Space starts a wire here. "},
        {"W .", " Cursor at (64, 64). Move with the arrows; Space here makes no wire; Escape "
                "abandons it. "},
        {"W . >+v", " Cursor at (96, 72). Space ends the wire from (64, 64) at (96, 64); Escape "
                    "abandons it. "},
        {"R >+", " Cursor at (96, 64). No room for a resistor here: it needs a wire more than 20 "
                 "units from both ends and clear of other devices. "},
        {"R >+>+", " Cursor at (128, 64). No room for a resistor here: it needs a wire more than "
                   "20 units from both ends and clear of other devices. "},
        {"I >+>+>+ v+vv", " Cursor at (160, 112). Space places a current source here. "},
        {"N >+", " Cursor at (96, 64). Space asks for a new value of the resistor (100 Ω). "},
        {"N", " Cursor at (64, 64). No device here to give a value. "},
        {"M v+v+", " Cursor at (64, 128). Space picks up the battery (12 V). "},
        {"M v+v+ . ^+", " Cursor at (64, 96). No room here: Space puts the battery (12 V) back; "
                        "Escape abandons the move. "},
        {"M v+v+ . ^", " Cursor at (64, 120). Space drops the battery (12 V) here; Escape "
                       "abandons the move. "},
        {"M", " Cursor at (64, 64). Space picks up the wire end here. "},
        {"M . v", " Cursor at (64, 72). Space ends the stretch at (64, 64); Escape abandons it. "},
        {"M >+>+", " Cursor at (128, 64). Nothing here to move: go to a device or a wire end. "},
        {"E >+>+", " Cursor at (128, 64). Space erases the wire here and the devices on it. "},
        {"E >+>+v+", " Cursor at (128, 96). Nothing here to erase. "},
    };
    for (const Case& c : cases) {
        Session s;
        s.prompts.textAnswers = {"100", "-12"};
        s.Play(kSquareKeys);
        s.cursor = KeyboardCursor{};
        SelectTool(s.state, kWireTool);
        s.state.CurrentTool = kNoTool;
        s.Play(c.keys);
        EXPECT_EQ(KeyboardHint(s.circuit, s.state, s.cursor), c.hint) << c.keys;
    }
}

} // namespace
} // namespace ampora
