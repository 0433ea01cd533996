#pragma once

#include <QDialog>
#include <QList>

class QPushButton;
class QTabWidget;
class Reporter;
class SetupPage;

// A property sheet of setup pages: one tab per page, OK and Cancel. OK confirms every page in
// order; a page with a problem (a VIN that can't be a file name) keeps the sheet open on it.
class SetupSheet : public QDialog
{
    Q_OBJECT
public:
    // The sheet takes the pages over.
    SetupSheet(const QString &title, const QList<SetupPage *> &pages, Reporter &reporter,
               QWidget *parent = nullptr);

    QTabWidget *tabs() const { return m_tabs; }
    QPushButton *okButton() const { return m_ok; }
    QPushButton *cancelButton() const { return m_cancel; }
    template<typename Page> Page *page() const
    {
        for (SetupPage *page : m_pages)
            if (auto *wanted = qobject_cast<Page *>(page))
                return wanted;
        return nullptr;
    }

    // Controls at least this high, the whole sheet within a 480x640 screen.
    static void fitSmallScreen(QDialog *dialog);

private:
    void okClicked();

    QList<SetupPage *> m_pages;
    Reporter &m_reporter;
    QTabWidget *m_tabs = nullptr;
    QPushButton *m_ok = nullptr;
    QPushButton *m_cancel = nullptr;
};
