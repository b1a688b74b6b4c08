#include "report/picture_fit.h"

#include <algorithm>

namespace ampora {

PictureSize FitPicture(double width, double height, double room) {
    if (width <= room || width <= 0) {
        return {width, height};
    }
    const double scale = std::max(room, 1.0) / width;
    return {width * scale, height * scale};
}

double PictureRoom(double textWidth, double tabStop) {
    // One unit of slack: a picture exactly as wide as the room would otherwise be pushed
    // onto a line of its own by rounding.
    return std::max(textWidth - tabStop - 1, 1.0);
}

} // namespace ampora
