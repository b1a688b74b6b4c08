#pragma once
// The tooltip and status-bar hint of each toolbar button, indexed by button number, and the
// hint shown before any tool is chosen.

namespace ampora::ui {

struct ToolButtonTexts {
    const char* tip;
    const char* hint;
};

inline constexpr ToolButtonTexts kToolButtons[9] = {
    {"", ""},
    {"Wire Tool", " Wire Tool.  When selected, click and drag to create a horizontal or vertical "
                  "segment of wire. "},
    {"Battery Tool",
     " Battery Tool.  When selected, click on a wire segment to create a battery. "},
    {"Resistor Tool",
     " Resistor Tool.  When selected, click on a wire segment to create a resistor. "},
    {"Current Source Tool", " Current Source Tool.  When selected, click on a wire segment to "
                            "create a current source. "},
    {"Number Tool", " Number Tool.  When selected, click on a device to enter a new value. "
                    "Negative reverses the direction. "},
    {"Move / Stretch Tool",
     " Move/Stretch Tool. Drag a component to move it or the end of a wire to stretch it. "},
    {"Erase Tool", " Erase Tool.  When selected, click a wire segment, battery, current source or "
                   "resistor to erase it. "},
    {"Undo Erase Tool",
     " UndoErase Tool.  Select it immediately after erasing an object to recover it. "},
};

inline constexpr const char* kStartHint =
    " To begin, select the first tool (the Wire Tool), then click and "
    "drag to create a horizontal or vertical segment of wire ";

} // namespace ampora::ui
