#pragma once

#include "app/HelpLauncher.h"

#include <QString>

class QWidget;

// Where the GUI tests leave their pictures for a person to look at (made when missing).
QString screenshotFolder();

// Shows the widget, waits until it is on screen and saves it as <name>.png in that folder.
bool saveScreenshot(QWidget *widget, const QString &name);

// Help that is never shown: the walks are not about help.
class NoHelp : public HelpLauncher
{
public:
    bool showHelp(QWidget *, const QString &) override { return true; }
};
