#include "tables/wire_geometry.h"

#include <algorithm>

namespace ampora {

void SetWireFromLine(Wire& wire, bool horizontal, float level, float low, float high) {
    if (horizontal) {
        wire.X1 = low;
        wire.X2 = high;
        wire.Y1 = level;
        wire.Y2 = level;
    } else {
        wire.X1 = level;
        wire.X2 = level;
        wire.Y1 = low;
        wire.Y2 = high;
    }
}

} // namespace ampora
