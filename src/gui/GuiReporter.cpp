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

void GuiReporter::warning(const QString &text, const QString &title)
{
    QMessageBox::warning(m_parent, caption(title), text);
}

void GuiReporter::info(const QString &text, const QString &title)
{
    QMessageBox::information(m_parent, caption(title), text);
}

bool GuiReporter::ask(const QString &text, const QString &title, Buttons buttons)
{
    if (buttons == Buttons::YesNo)
        return QMessageBox::question(m_parent, caption(title), text, QMessageBox::Yes | QMessageBox::No)
            == QMessageBox::Yes;
    return QMessageBox::question(m_parent, caption(title), text, QMessageBox::Ok | QMessageBox::Cancel)
        == QMessageBox::Ok;
}
