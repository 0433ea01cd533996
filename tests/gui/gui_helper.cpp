#include "gui_helper.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
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

QByteArray readAll(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("<missing>");
}

void put(const QString &path, const QByteArray &bytes)
{
    QVERIFY(QDir().mkpath(QFileInfo(path).path()));
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
    QCOMPARE(file.write(bytes), bytes.size());
}
