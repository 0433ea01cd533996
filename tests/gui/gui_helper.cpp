#include "gui_helper.h"

#include <QCoreApplication>
#include <QDir>
#include <QTest>
#include <QWidget>

using namespace Qt::StringLiterals;

QString screenshotFolder()
{
    const QString folder
        = qEnvironmentVariable("TARVANE_SCREENSHOTS", QStringLiteral(TARVANE_BINARY_DIR "/screenshots"));
    QDir().mkpath(folder);
    return folder;
}

bool saveScreenshot(QWidget *widget, const QString &name)
{
    widget->show();
    if (!QTest::qWaitForWindowExposed(widget))
        return false;
    QCoreApplication::processEvents();
    return widget->grab().save(screenshotFolder() + u'/' + name + u".png"_s);
}
