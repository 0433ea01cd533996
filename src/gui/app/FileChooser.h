#pragma once

#include <QQueue>
#include <QString>
#include <QStringList>

class QFileDialog;
class QWidget;

// The file browser: a folder to write into, or a file to read. The program uses the platform's
// dialog; tests queue the answers so the flows that need one run unattended.
class FileChooser
{
public:
    virtual ~FileChooser() = default;

    // A folder ending in "/", or an empty string when the user cancels.
    virtual QString chooseFolder(QWidget *parent, const QString &caption, const QString &startFolder) = 0;
    // An existing file's full path, or an empty string when the user cancels. proposedName is
    // preselected in startFolder.
    virtual QString chooseOpenFile(QWidget *parent, const QString &caption, const QString &startFolder,
                                   const QString &proposedName, const QString &filter)
        = 0;
    // The full path of a file to write (it may exist), or an empty string when the user cancels.
    virtual QString chooseSaveFile(QWidget *parent, const QString &caption, const QString &startFolder,
                                   const QString &proposedName, const QString &filter)
        = 0;
};

// QFileDialog.
class DialogFileChooser : public FileChooser
{
public:
    QString chooseFolder(QWidget *parent, const QString &caption, const QString &startFolder) override;
    QString chooseOpenFile(QWidget *parent, const QString &caption, const QString &startFolder,
                           const QString &proposedName, const QString &filter) override;
    QString chooseSaveFile(QWidget *parent, const QString &caption, const QString &startFolder,
                           const QString &proposedName, const QString &filter) override;

    // Sizes a file dialog to the screen it opens on (a 480x640 screen included).
    static void fitToScreen(QFileDialog &dialog);
};

// Answers from a queue (an empty answer, or an empty queue, is a cancel) and remembers what it
// was asked, one line per request: "folder <start>", "file <start> <proposed name>" or
// "save <start> <proposed name>".
class ScriptedFileChooser : public FileChooser
{
public:
    void enqueue(const QString &path) { m_answers.enqueue(path); }
    void enqueueCancel() { m_answers.enqueue(QString()); }
    QStringList requests() const { return m_requests; }
    int pending() const { return int(m_answers.size()); }

    QString chooseFolder(QWidget *parent, const QString &caption, const QString &startFolder) override;
    QString chooseOpenFile(QWidget *parent, const QString &caption, const QString &startFolder,
                           const QString &proposedName, const QString &filter) override;
    QString chooseSaveFile(QWidget *parent, const QString &caption, const QString &startFolder,
                           const QString &proposedName, const QString &filter) override;

private:
    QString next();

    QQueue<QString> m_answers;
    QStringList m_requests;
};
