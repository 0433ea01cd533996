#pragma once

#include "app/HelpLauncher.h"

#include <QByteArray>
#include <QString>

class QWidget;

// Where the GUI tests leave their pictures for a person to look at (made when missing).
QString screenshotFolder();

// Shows the widget, waits until it is on screen and saves it as <name>.png in that folder.
bool saveScreenshot(QWidget *widget, const QString &name);

// A file's bytes, or "<missing>" so a comparison says what went wrong.
QByteArray readAll(const QString &path);

// Writes a file whole, making its folder; fails the running test otherwise.
void put(const QString &path, const QByteArray &bytes);

// Help that is never shown: the walks are not about help.
class NoHelp : public HelpLauncher
{
public:
    bool showHelp(QWidget *, const QString &) override { return true; }
};
