#include "ScreenFit.h"

#include <QScreen>
#include <QWidget>

namespace {
constexpr int TitleBar = 32;
}

QSize ScreenFit::room(const QWidget *window)
{
    const QWidget *anchor = window->parentWidget() ? window->parentWidget() : window;
    const QSize available = anchor->screen()->availableSize();
    return QSize(available.width(), qMax(1, available.height() - TitleBar));
}

void ScreenFit::resize(QWidget *window, QSize preferred)
{
    window->resize(preferred.boundedTo(room(window)));
}
