#pragma once
// The program's one 16-colour palette as the painter's colours.

#include "report/palette.h"

#include <QColor>

namespace ampora::ui {

inline QColor QBColor(int n) {
    return QColor(static_cast<QRgb>(::ampora::QBColor(n & 15)));
}

} // namespace ampora::ui
