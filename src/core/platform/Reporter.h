#pragma once

#include <QList>
#include <QQueue>
#include <QString>

// Where the core's messages go: a message box in the program, stderr in the CLI,
// a recording in the tests. The texts are always the system's own.
class Reporter
{
public:
    enum class Kind { Error, Warning, Info, Question, Plain };
    enum class Buttons { Ok, YesNo, OkCancel };

    virtual ~Reporter() = default;

    virtual void error(const QString &text, const QString &title = QString()) = 0;
    // A failure whose details (which file, the system's reason) come under the system's text:
    // the detail text of a message box, the lines after the text elsewhere.
    virtual void errorWithDetail(const QString &text, const QString &detail, const QString &title = QString())
    {
        error(detail.isEmpty() ? text : text + u'\n' + detail, title);
    }
    virtual void warning(const QString &text, const QString &title = QString()) = 0;
    virtual void info(const QString &text, const QString &title = QString()) = 0;
    // A plain box with an OK button and no icon; where there are no icons it is a notice.
    virtual void plain(const QString &text, const QString &title = QString()) { info(text, title); }
    // Returns true for Yes / OK. Buttons::Ok shows a single OK button and always returns true.
    virtual bool ask(const QString &text, const QString &title = QString(), Buttons buttons = Buttons::YesNo)
        = 0;
};

// Keeps every message and answers questions from a queue (No when the queue is empty).
class RecordingReporter : public Reporter
{
public:
    struct Message
    {
        Kind kind;
        QString text;
        QString title;
        bool operator==(const Message &other) const = default;
    };

    void error(const QString &text, const QString &title = QString()) override;
    void warning(const QString &text, const QString &title = QString()) override;
    void info(const QString &text, const QString &title = QString()) override;
    void plain(const QString &text, const QString &title = QString()) override;
    bool ask(const QString &text, const QString &title = QString(),
             Buttons buttons = Buttons::YesNo) override;

    void setNextAnswer(bool answer) { m_answers.enqueue(answer); }
    const QList<Message> &messages() const { return m_messages; }
    // Only the texts, in order: handy for QCOMPARE against an expected list.
    QStringList texts() const;
    void clear() { m_messages.clear(); }

private:
    QList<Message> m_messages;
    QQueue<bool> m_answers;
};

// Discards everything and answers No.
class NullReporter : public Reporter
{
public:
    void error(const QString &, const QString & = QString()) override { }
    void warning(const QString &, const QString & = QString()) override { }
    void info(const QString &, const QString & = QString()) override { }
    bool ask(const QString &, const QString & = QString(), Buttons = Buttons::YesNo) override
    {
        return false;
    }
};
