#pragma once
// Which way a trace runs along a segment of its path, on the screen (y grows downward).

#include "tables/wire_geometry.h"

namespace ampora {

enum class Travel { None, Up, Down, Left, Right };

Travel TravelAlong(Point from, Point to);

// True when the device's direction on the screen (a battery from its negative to its
// positive terminal, a current source along its arrow) is the direction of travel.
bool AgreesWithTravel(int kind, Travel travel);

// A device current counts as positive when it flows up or left on the screen.
inline bool TravelIsScreenPositive(Travel travel) {
    return travel == Travel::Up || travel == Travel::Left;
}

} // namespace ampora
