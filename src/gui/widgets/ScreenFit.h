#pragma once

#include <QSize>

class QWidget;

namespace ScreenFit {

// Room left on the screen a window opens on (its parent's screen when it has one): the available
// area less what a window frame's title bar takes.
QSize room(const QWidget *window);

// Resizes the window to the size it prefers, but never beyond the room on its screen.
void resize(QWidget *window, QSize preferred);

} // namespace ScreenFit
