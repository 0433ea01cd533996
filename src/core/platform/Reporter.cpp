#include "Reporter.h"

#include <QStringList>

void RecordingReporter::error(const QString &text, const QString &title)
{
    m_messages.append({ Kind::Error, text, title });
}

void RecordingReporter::warning(const QString &text, const QString &title)
{
    m_messages.append({ Kind::Warning, text, title });
}

void RecordingReporter::info(const QString &text, const QString &title)
{
    m_messages.append({ Kind::Info, text, title });
}

void RecordingReporter::plain(const QString &text, const QString &title)
{
    m_messages.append({ Kind::Plain, text, title });
}

bool RecordingReporter::ask(const QString &text, const QString &title, Buttons buttons)
{
    m_messages.append({ Kind::Question, text, title });
    // A box with one OK button has only one answer.
    if (buttons == Buttons::Ok)
        return true;
    return m_answers.isEmpty() ? false : m_answers.dequeue();
}

QStringList RecordingReporter::texts() const
{
    QStringList out;
    for (const Message &m : m_messages)
        out.append(m.text);
    return out;
}
