#include "GuiReporter.h"

#include <QMessageBox>

using namespace Qt::StringLiterals;

namespace {
QString caption(const QString &title)
{
    return title.isEmpty() ? u"Tarvane"_s : title;
}
} // namespace

void GuiReporter::error(const QString &text, const QString &title)
{
    QMessageBox::critical(m_parent, caption(title), text);
}

void GuiReporter::errorWithDetail(const QString &text, const QString &detail, const QString &title)
{
    QMessageBox box(QMessageBox::Critical, caption(title), text, QMessageBox::Ok, m_parent);
    box.setDetailedText(detail);
    box.exec();
}

void GuiReporter::warning(const QString &text, const QString &title)
{
    QMessageBox::warning(m_parent, caption(title), text);
}

void GuiReporter::info(const QString &text, const QString &title)
{
    QMessageBox::information(m_parent, caption(title), text);
}

void GuiReporter::plain(const QString &text, const QString &title)
{
    QMessageBox box(QMessageBox::NoIcon, caption(title), text, QMessageBox::Ok, m_parent);
    box.exec();
}

bool GuiReporter::ask(const QString &text, const QString &title, Buttons buttons)
{
    if (buttons == Buttons::Ok) {
        // A notice that asks nothing: one OK button, whatever the user does the caller goes on.
        QMessageBox box(QMessageBox::Question, caption(title), text, QMessageBox::Ok, m_parent);
        box.exec();
        return true;
    }
    if (buttons == Buttons::YesNo)
        return QMessageBox::question(m_parent, caption(title), text, QMessageBox::Yes | QMessageBox::No)
            == QMessageBox::Yes;
    return QMessageBox::question(m_parent, caption(title), text, QMessageBox::Ok | QMessageBox::Cancel)
        == QMessageBox::Ok;
}
