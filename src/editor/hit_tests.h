#pragma once
// Where on the drawing a point lies: on which wire, whether a device may sit there,
// over which wire end, inside which device picture.

#include "editor/editor_state.h"
#include "tables/circuit.h"

namespace ampora {

enum SegmentDirection { kNoSegment = 0, kHorizontalSegment = 1, kVerticalSegment = 2 };

// Whether a device centred at (x, y) may sit there: on a live wire more than 20 units from
// both of its ends, and not within 36 units (in x and y at once) of another device.
// `ignoreElement` is the device being moved, 0 for none. Gives the direction of the first
// wire that carries the point.
SegmentDirection SegmentTest(const Circuit& circuit, float x, float y, int ignoreElement);

// The first live wire in slot order that contains the point, ends included; 0 for none.
int WireHit(const Circuit& circuit, float x, float y);

// Whether the point lies on the given wire, ends included, and where: 0 at the first
// end, 1 at the second.
bool PointOnWire(const Wire& wire, float x, float y, float& fraction);

// Fills ElementFraction for the devices on `wireSlot`; 0 for the others.
void FillElementFractions(const Circuit& circuit, EditorState& state, int wireSlot);

// The live device whose 32 by 32 picture covers the point, the topmost (highest slot)
// first; 0 for none.
int ElementAt(const Circuit& circuit, float x, float y);

constexpr float kStretchTolerance = 4;

// The first live wire with an end within 4 units (in x and y) of the point: its slot and
// which end (1 first, 2 second); 0 when none.
int WireEndNear(const Circuit& circuit, float x, float y, int& end);

} // namespace ampora
