#include "StreamReporter.h"

using namespace Qt::StringLiterals;

void StreamReporter::error(const QString &text, const QString &)
{
    ++m_errors;
    m_err << text << '\n';
    m_err.flush();
}

void StreamReporter::warning(const QString &text, const QString &)
{
    m_err << text << '\n';
    m_err.flush();
}

void StreamReporter::info(const QString &text, const QString &)
{
    m_out << text << '\n';
    m_out.flush();
}

void StreamReporter::plain(const QString &text, const QString &)
{
    // Notices about the program's own state go with the errors, away from a command's output.
    m_err << text << '\n';
    m_err.flush();
}

bool StreamReporter::ask(const QString &text, const QString &, Buttons buttons)
{
    if (buttons == Buttons::Ok) {
        m_err << text << u" [OK]\n"_s;
        m_err.flush();
        return true;
    }
    const QString answer = m_assumeYes ? (buttons == Buttons::YesNo ? u"Yes"_s : u"OK"_s)
                                       : (buttons == Buttons::YesNo ? u"No"_s : u"Cancel"_s);
    m_err << text << u" ["_s << answer << u"]\n"_s;
    m_err.flush();
    return m_assumeYes;
}
