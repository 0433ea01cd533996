#pragma once

#include <QTextStream>

#include "platform/Reporter.h"

// Messages for the terminal: information on stdout, errors and warnings on stderr;
// questions are printed on stderr and answered by --yes (else No).
class StreamReporter : public Reporter
{
public:
    StreamReporter(QTextStream &out, QTextStream &err, bool assumeYes)
        : m_out(out)
        , m_err(err)
        , m_assumeYes(assumeYes)
    { }

    void error(const QString &text, const QString &title = QString()) override;
    void warning(const QString &text, const QString &title = QString()) override;
    void info(const QString &text, const QString &title = QString()) override;
    void plain(const QString &text, const QString &title = QString()) override;
    bool ask(const QString &text, const QString &title = QString(),
             Buttons buttons = Buttons::YesNo) override;

    int errorCount() const { return m_errors; }

private:
    QTextStream &m_out;
    QTextStream &m_err;
    bool m_assumeYes;
    int m_errors = 0;
};
