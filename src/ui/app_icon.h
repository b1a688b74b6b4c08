#pragma once
// The application's icon, the same drawing the desktop shows in its menus.

#include <QIcon>

namespace ampora::ui {

QIcon AppIcon();

} // namespace ampora::ui
