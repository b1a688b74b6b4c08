#pragma once
// Sets one equation text the way a textbook prints it: stacked fractions with a bar,
// italic variable letters with subscripts, true minus signs and spaced operators.

#include "report/drawing_surface.h"
#include "report/markup_state.h"

#include <string_view>

namespace ampora {

struct EquationExtent {
    float Width = 0;
    float Height = 0;
};

// Draws the equation with its top-left corner at the print position, in the current font
// set, and moves the print position down to the left end of the line below it. A text that
// is not a readable equation is printed as it stands. The surface's font comes back as it
// was; an empty text draws nothing and takes no room.
EquationExtent DrawEquation(DrawingSurface& surface, MarkupState& state, std::string_view text);

} // namespace ampora
