#pragma once

#include <QDialog>
#include <QObject>
#include <QString>

class QTextBrowser;
class QWidget;

// Shows the program's help page. The main window is handed one so tests can watch the request.
class HelpLauncher
{
public:
    virtual ~HelpLauncher() = default;
    // Shows the page at a section (an anchor of the page; empty: its top). False when it could
    // not be shown.
    virtual bool showHelp(QWidget *parent, const QString &section = QString()) = 0;

    // The help page compiled into the program.
    static QString resourcePath();
    // The section of a window: its "helpSection" property when set, else its title in lower case
    // with a dash for every run of other characters ("Edit List" gives "edit-list").
    static QString sectionFor(const QWidget *window);
};

// The shipped page in the program's own viewer: works without a web browser and writes nothing.
class HelpViewerLauncher : public HelpLauncher
{
public:
    bool showHelp(QWidget *parent, const QString &section = QString()) override;
};

// The viewer: the page in a text browser whose links work inside it, sized to the screen.
class HelpDialog : public QDialog
{
    Q_OBJECT
public:
    explicit HelpDialog(const QString &section, QWidget *parent = nullptr);
    QTextBrowser *browser() const { return m_browser; }

private:
    QTextBrowser *m_browser = nullptr;
};

// F1 in any dialog opens the help at that dialog's section. Installed on the application.
class HelpKeyFilter : public QObject
{
public:
    explicit HelpKeyFilter(HelpLauncher &help, QObject *parent = nullptr);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    HelpLauncher &m_help;
};
