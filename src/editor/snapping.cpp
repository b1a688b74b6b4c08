#include "editor/snapping.h"

#include <algorithm>
#include <cmath>

namespace ampora {

float Snap(float v) {
    if (std::isnan(v)) {
        return 0;
    }
    // Far beyond any canvas; the clamp keeps the conversion to an integer defined.
    const double shifted = std::clamp(static_cast<double>(v) + 3.0, -1e9, 1e9);
    // nearbyint rounds halves to even in the default rounding mode.
    const auto rounded = static_cast<long long>(std::nearbyint(shifted));
    return static_cast<float>(8 * (rounded / 8)); // integer division truncates, as div does
}

void ConstrainToAxis(float startX, float startY, float& endX, float& endY) {
    if (std::fabs(endY - startY) <= std::fabs(endX - startX)) {
        endY = startY;
    } else {
        endX = startX;
    }
}

} // namespace ampora
