#pragma once

#include <QString>

class QWidget;

// Shows the program's help page. The main window is handed one so tests can watch the request
// without a browser starting.
class HelpLauncher
{
public:
    virtual ~HelpLauncher() = default;
    // False when the page could not be shown.
    virtual bool showHelp(QWidget *parent) = 0;

    // The help page compiled into the program.
    static QString resourcePath();
    // Copies the page into folder (created when missing, atomically written) and returns the file's
    // path; empty on failure.
    static QString extractTo(const QString &folder);
};

// Extracts the page to the user's cache folder and hands it to the desktop's browser.
class DesktopHelpLauncher : public HelpLauncher
{
public:
    // An empty folder means the cache location.
    explicit DesktopHelpLauncher(const QString &folder = QString());
    bool showHelp(QWidget *parent) override;

private:
    QString m_folder;
};
