#pragma once
// The 8-unit editing grid and the rule that keeps every wire horizontal or vertical.

namespace ampora {

constexpr float kGridStep = 8;

// s(v) = 8 * (round(v + 3) div 8): a point snaps to 8k from 8k - 3.5 to 8k + 4.5.
float Snap(float v);

// Makes (endX, endY) axis-parallel to (startX, startY); a tie, even a zero drag, gives
// a horizontal segment.
void ConstrainToAxis(float startX, float startY, float& endX, float& endY);

} // namespace ampora
