#include "tables/travel.h"

#include "tables/circuit.h"

namespace ampora {

Travel TravelAlong(Point from, Point to) {
    if (to.Y < from.Y) {
        return Travel::Up;
    }
    if (to.Y > from.Y) {
        return Travel::Down;
    }
    if (to.X < from.X) {
        return Travel::Left;
    }
    if (to.X > from.X) {
        return Travel::Right;
    }
    return Travel::None;
}

bool AgreesWithTravel(int kind, Travel travel) {
    switch (kind) {
    case kBatteryUp:
    case kSourceUp:
        return travel == Travel::Up;
    case kBatteryDown:
    case kSourceDown:
        return travel == Travel::Down;
    case kBatteryLeft:
    case kSourceLeft:
        return travel == Travel::Left;
    case kBatteryRight:
    case kSourceRight:
        return travel == Travel::Right;
    default:
        return false;
    }
}

} // namespace ampora
