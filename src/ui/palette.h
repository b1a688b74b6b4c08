#pragma once
// The sixteen-colour palette the drawing uses (QBColor numbers).

#include <QColor>

namespace ampora::ui {

inline QColor QBColor(int n) {
    static const QRgb colours[16] = {0x000000, 0x0000AA, 0x00AA00, 0x00AAAA, 0xAA0000, 0xAA00AA,
                                     0xAA5500, 0xAAAAAA, 0x555555, 0x5555FF, 0x55FF55, 0x55FFFF,
                                     0xFF5555, 0xFF55FF, 0xFFFF55, 0xFFFFFF};
    return QColor(colours[n & 15]);
}

} // namespace ampora::ui
