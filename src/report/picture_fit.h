#pragma once
// How large a report picture is shown where the room beside its tab stop is limited: a page's
// text column, the report window's box.

namespace ampora {

struct PictureSize {
    double Width = 0;
    double Height = 0;
};

// The picture as it is when it is no wider than room; otherwise scaled down as a whole to
// room's width, keeping its proportions. Sizes in any one unit.
PictureSize FitPicture(double width, double height, double room);

// The room a picture has on a line of textWidth: what is left after the tab that indents it.
double PictureRoom(double textWidth, double tabStop);

} // namespace ampora
